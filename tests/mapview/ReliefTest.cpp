#include "mapview/Relief.h"

#include "pictures/Blending.h"
#include "support/MapWorld.h"
#include "support/MemorySurface.h"
#include "support/RecordingSurface.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>
#include <utility>

namespace vardenix {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Terrain LandOf(int32_t width) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    return terrain;
}

// Heights by x and y.
template <typename Height>
Terrain LandOf(int32_t width, Height height) {
    Terrain terrain = LandOf(width);
    for (int32_t y = 0; y < width; ++y)
        for (int32_t x = 0; x < width; ++x)
            terrain.LxArr(y * width + x + 1).Elevation =
                static_cast<int16_t>(height(x, y));
    return terrain;
}

TEST(Relief, FlatGroundHasNoShade) {
    const Terrain terrain = LandOf(3, [](int32_t, int32_t) { return 900; });
    EXPECT_EQ(ShadeAt({terrain, Layer::Posts}, 1, 1), 0);
}

TEST(Relief, SlopesTowardsTheNorthWestAreLight) {
    const auto shadeOf = [](int32_t eastward, int32_t northward) {
        const Terrain terrain = LandOf(
            3, [=](int32_t x, int32_t y) { return 1000 + x * eastward + y * northward; });
        return ShadeAt({terrain, Layer::Posts}, 1, 1);
    };
    // It rises to the east and falls to the north: its face is to the north west.
    EXPECT_GT(shadeOf(200, -200), 0.5);
    EXPECT_LT(shadeOf(-200, 200), -0.2);
    EXPECT_GT(shadeOf(200, 0), 0.2);
    EXPECT_GT(shadeOf(0, -200), 0.2);
    EXPECT_LT(shadeOf(0, 200), 0);
    // Along the light's way nothing is gained.
    EXPECT_LT(std::abs(shadeOf(100, 100)), 0.05);
}

TEST(Relief, TheEdgeGoesOnAsItIs) {
    const Terrain terrain = LandOf(2, [](int32_t x, int32_t) { return x * 100; });
    const HeightField heights(terrain, Layer::Posts);
    EXPECT_EQ(heights.At(-5, 0), 0);
    EXPECT_EQ(heights.At(5, 9), 100);
    EXPECT_EQ(HeightField(Terrain(), Layer::Posts).At(0, 0), 0);
}

// By vectors along the slope and their cross product, as a book has it.
double SlowShade(const Terrain& terrain, int32_t x, int32_t y) {
    const int32_t last = terrain.MapWidth - 1;
    const auto feet = [&](int32_t column, int32_t row) {
        column = std::min(std::max(column, 0), last);
        row = std::min(std::max(row, 0), last);
        return static_cast<double>(
            terrain.LxArr(row * terrain.MapWidth + column + 1).Elevation);
    };
    using Vector = std::array<double, 3>;
    const Vector east{2 * 3280.84, 0, 4 * (feet(x + 1, y) - feet(x - 1, y))};
    const Vector north{0, 2 * 3280.84, 4 * (feet(x, y + 1) - feet(x, y - 1))};
    Vector upright{east[1] * north[2] - east[2] * north[1],
                   east[2] * north[0] - east[0] * north[2],
                   east[0] * north[1] - east[1] * north[0]};
    const double length = std::hypot(upright[0], upright[1], upright[2]);
    const double angle = std::numbers::pi / 4; // half height, and north west
    const Vector light{-std::cos(angle) * std::sin(angle),
                       std::cos(angle) * std::cos(angle), std::sin(angle)};
    double lit = 0;
    for (size_t i = 0; i < 3; ++i)
        lit += upright[i] / length * light[i];
    const double flat = std::sin(angle);
    return lit > flat ? (lit - flat) / (1 - flat) : std::max(-1.0, (lit - flat) / flat);
}

TEST(Relief, IsThatOfASlowOneByVectors) {
    std::mt19937 random(4);
    const Terrain terrain = LandOf(
        24, [&](int32_t, int32_t) { return static_cast<int>(random() % 9000) - 1000; });
    const HeightField heights(terrain, Layer::Posts);
    for (int32_t y = 0; y < 24; ++y)
        for (int32_t x = 0; x < 24; ++x)
            EXPECT_NEAR(ShadeAt(heights, x, y), SlowShade(terrain, x, y), 1e-9)
                << x << " " << y;
}

TEST(Relief, TintsByStrength) {
    EXPECT_EQ(TintOf(1, 100).Color, 0xFFFFFFU);
    EXPECT_EQ(TintOf(1, 100).Alpha, 200);
    EXPECT_EQ(TintOf(-0.5, 50).Color, 0U);
    EXPECT_EQ(TintOf(-0.5, 50).Alpha, 50);
    EXPECT_EQ(TintOf(0.7, 0).Alpha, 0);
}

TEST(Contours, OfASlopeAreStraight) {
    // 100 feet a post to the east: 150 feet lie half way between the posts 1 and 2.
    const Terrain terrain = LandOf(4, [](int32_t x, int32_t) { return x * 100; });
    const HeightField heights(terrain, Layer::Posts);
    EXPECT_THAT(ContoursAt(heights, 1, 1, 1000), IsEmpty());
    const auto pieces = ContoursAt(heights, 1, 1, 60); // 50 to 150 feet: 60 and 120
    double length60 = 0;
    double length120 = 0;
    for (const ContourPiece& piece : pieces) {
        const double at = piece.Feet == 60 ? 0.1 : 0.7;
        (piece.Feet == 60 ? length60 : length120) += std::abs(piece.To.Y - piece.From.Y);
        EXPECT_NEAR(piece.From.X, at, 1e-9);
        EXPECT_NEAR(piece.To.X, at, 1e-9);
        EXPECT_TRUE(piece.Feet == 60 || piece.Feet == 120);
    }
    EXPECT_NEAR(length60, 1, 1e-9);
    EXPECT_NEAR(length120, 1, 1e-9);
}

// Feet of the surface at a place of a square, found triangle by triangle from its middle.
double SurfaceAt(const Terrain& terrain, int32_t x, int32_t y, double u, double v) {
    const HeightField heights(terrain, Layer::Posts);
    const auto corner = [&](int32_t right, int32_t up) {
        double sum = 0;
        for (int32_t dy = up - 1; dy <= up; ++dy)
            for (int32_t dx = right - 1; dx <= right; ++dx)
                sum += heights.At(x + dx, y + dy);
        return sum / 4;
    };
    const double a = u - 0.5;
    const double b = v - 0.5;
    const double out = std::max(std::abs(a), std::abs(b)) * 2; // 0 in the middle
    if (out == 0)
        return heights.At(x, y);
    // Along the side that is met, from its lower or left corner on.
    const bool upright = std::abs(a) >= std::abs(b);
    const double along = (upright ? b : a) / out + 0.5;
    const int32_t side = (upright ? a : b) > 0 ? 1 : 0;
    const double from = upright ? corner(side, 0) : corner(0, side);
    const double to = upright ? corner(side, 1) : corner(1, side);
    return heights.At(x, y) * (1 - out) + (from + (to - from) * along) * out;
}

TEST(Contours, LieWhereTheSurfaceHasTheirHeight) {
    std::mt19937 random(8);
    const Terrain terrain = LandOf(
        12, [&](int32_t, int32_t) { return static_cast<int>(random() % 3000) - 500; });
    const HeightField heights(terrain, Layer::Posts);
    size_t pieces = 0;
    for (int32_t y = 0; y < 12; ++y)
        for (int32_t x = 0; x < 12; ++x)
            for (const ContourPiece& piece : ContoursAt(heights, x, y, 250)) {
                ++pieces;
                EXPECT_EQ(piece.Feet % 250, 0);
                for (const double part : {0.0, 0.3, 1.0})
                    EXPECT_NEAR(
                        SurfaceAt(terrain, x, y,
                                  piece.From.X + (piece.To.X - piece.From.X) * part,
                                  piece.From.Y + (piece.To.Y - piece.From.Y) * part),
                        piece.Feet, 1e-6);
            }
    EXPECT_GT(pieces, 1000U);
}

TEST(Contours, CrossTheEdgeOfASquareAsOftenAsItsHeightsDo) {
    std::mt19937 random(9);
    const Terrain terrain =
        LandOf(8, [&](int32_t, int32_t) { return static_cast<int>(random() % 2000); });
    const HeightField heights(terrain, Layer::Posts);
    for (int32_t x = 1; x < 6; ++x) {
        // The lines that leave one square over its right edge enter the next one.
        std::vector<double> out;
        std::vector<double> in;
        const auto take = [](const std::vector<ContourPiece>& pieces, double edge,
                             std::vector<double>& ends) {
            for (const ContourPiece& piece : pieces)
                for (const PicturePoint& end : {piece.From, piece.To})
                    if (std::abs(end.X - edge) < 1e-12)
                        ends.push_back(end.Y);
            std::ranges::sort(ends);
        };
        take(ContoursAt(heights, x, 3, 100), 1, out);
        take(ContoursAt(heights, x + 1, 3, 100), 0, in);
        ASSERT_EQ(out.size(), in.size());
        for (size_t i = 0; i < out.size(); ++i)
            EXPECT_NEAR(out[i], in[i], 1e-9);
    }
}

class ReliefOnMap : public testing::Test {
protected:
    // Of `side` pixels, in plain memory; there are no pictures.
    Raster Paint(int32_t side) {
        tests::MemorySurface surface(side);
        NoScreen screen;
        world_.Renderer().RefreshPicArray(world_.View, surface, screen, {});
        Raster picture(side, side);
        for (int32_t y = 0; y < side; ++y)
            std::copy_n(surface.Picture().Row(y), side, picture.Row(y));
        return picture;
    }
    std::vector<std::string> Recorded(const std::string& word) {
        world_.Renderer().RefreshPicArray(world_.View, surface_, screen_, {});
        return story_.Lines(word);
    }
    void MakeHills(unsigned seed) {
        std::mt19937 random(seed);
        for (TerrainPost& post : world_.Terrain.LxArr.Values())
            post.Elevation = static_cast<int16_t>(random() % 4000);
    }
    // The relief over `plain`, pixel by pixel: `place` says which height a pixel shows.
    template <typename Place>
    void ExpectRelief(const Raster& plain, const Raster& painted,
                      const HeightField& heights, Place place) {
        for (int32_t y = 0; y < plain.Height(); ++y)
            for (int32_t x = 0; x < plain.Width(); ++x) {
                const auto [across, up] = place(x, y);
                const ReliefTint tint =
                    TintOf(ShadeAt(heights, across, up), world_.View.ReliefStrength);
                ASSERT_EQ(
                    painted.Row(y)[x],
                    BlendPixel(plain.Row(y)[x], OpaquePixel(tint.Color), tint.Alpha))
                    << x << " " << y;
            }
    }

    tests::MapWorld world_;
    tests::Story story_;
    tests::RecordingSurface surface_{story_};
    tests::RecordingScreen screen_{story_};
};

TEST_F(ReliefOnMap, LaysLightAndShadeOverTheTiles) {
    MakeHills(5);
    world_.View.MapLeftX = 3;
    world_.View.MapBottomY = 2;
    world_.View.TilePixels = 39; // of three posts, in cells of 13 pixels
    world_.View.ZoomPosts = 3;
    const Raster plain = Paint(78);
    world_.View.ShowRelief = true;
    world_.View.ReliefStrength = 85;
    ExpectRelief(
        plain, Paint(78), {world_.Terrain, Layer::Posts},
        [](int32_t x, int32_t y) { return std::pair(3 + x / 13, 2 + (77 - y) / 13); });
}

TEST_F(ReliefOnMap, BeyondTheTerrainThereIsNone) {
    MakeHills(6);
    world_.View.MapLeftX = 15; // the last column
    const Raster plain = Paint(256);
    world_.View.ShowRelief = true;
    const Raster painted = Paint(256);
    EXPECT_EQ(painted.Row(200)[200], plain.Row(200)[200]);
    EXPECT_NE(painted.Row(200)[20], plain.Row(200)[20]);
}

TEST_F(ReliefOnMap, AloneHasBareGroundForTiles) {
    world_.View.ShowRelief = true;
    world_.View.ReliefAlone = true;
    EXPECT_THAT(Recorded("tile"), IsEmpty());
    EXPECT_THAT(story_.Lines("blend"), ElementsAre("blend B4B4B4 255 0,128 128x128",
                                                   "blend B4B4B4 255 128,128 128x128",
                                                   "blend B4B4B4 255 0,0 128x128",
                                                   "blend B4B4B4 255 128,0 128x128"));
}

TEST_F(ReliefOnMap, FollowsTheFinestHeightsWhileTheyAreEdited) {
    world_.View.L0Mode = true;
    world_.Terrain.Elevations.EMapWidth = 64;
    world_.Terrain.Elevations.L0ElvArr = HeightArray(64 * 64);
    std::mt19937 random(8);
    for (int16_t& feet : world_.Terrain.Elevations.L0ElvArr.Values())
        feet = static_cast<int16_t>(random() % 900);
    const Raster plain = Paint(256);
    world_.View.ShowRelief = true;
    const HeightField heights(world_.Terrain, Layer::Heights);
    ExpectRelief(plain, Paint(256), heights,
                 [](int32_t x, int32_t y) { return std::pair(x / 32, (255 - y) / 32); });

    // Cells of five pixels show one height of each post.
    world_.View.ShowRelief = false;
    world_.View.TilePixels = 20;
    world_.View.ZoomPosts = 4;
    const Raster small = Paint(40);
    world_.View.ShowRelief = true;
    ExpectRelief(small, Paint(40), heights, [](int32_t x, int32_t y) {
        return std::pair(x / 5 * 4 + 2, (39 - y) / 5 * 4 + 2);
    });
}

} // namespace
} // namespace vardenix
