// Relief and contour lines over an overview, held to a painter that goes pixel by pixel
// and knows neither rows nor bands.
#include "mapview/Relief.h"
#include "pictures/Blending.h"
#include "support/MapWorld.h"
#include "support/MemorySurface.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vardenix {
namespace {

constexpr int Side = 128; // pixels

class OverviewRelief : public testing::Test {
protected:
    // 50 posts along a side of the picture, of which 40 are land.
    OverviewRelief() {
        world_.View.GridCells = 2;
        world_.View.TilePixels = 64;
        world_.View.ZoomPosts = 25;
        std::mt19937 random(3);
        for (TerrainPost& post : world_.Terrain.LxArr.Values())
            post.Elevation = static_cast<int16_t>(static_cast<int>(random() % 6000) - 99);
    }

    Raster Paint() {
        tests::MemorySurface surface(Side);
        NoScreen screen;
        world_.Renderer().RefreshPicArray(world_.View, surface, screen, {});
        Raster picture(Side, Side);
        for (int y = 0; y < Side; ++y)
            std::copy_n(surface.Picture().Row(y), Side, picture.Row(y));
        return picture;
    }
    // Post of a pixel; -1 beyond the terrain.
    int Column(int x) const {
        const int post = static_cast<int>(std::floor((x + 0.5) * 50 / Side));
        return post >= 0 && post < 40 ? post : -1;
    }
    int Row(int y) const { return Column(Side - 1 - y); }

    tests::MapWorld world_{40};
};

TEST_F(OverviewRelief, IsThatOfASlowPainter) {
    const Raster plain = Paint();
    MapView& view = world_.View;
    view.ShowRelief = view.ShowContours = true;
    view.ReliefStrength = 80;
    view.ContourStep = 1000;
    const Raster painted = Paint();
    const HeightField heights(world_.Terrain, Layer::Posts);
    int lines = 0;
    for (int y = 0; y < Side; ++y)
        for (int x = 0; x < Side; ++x) {
            const int column = Column(x);
            const int row = Row(y);
            uint32_t expected = plain.Row(y)[x];
            if (column >= 0 && row >= 0) {
                const ReliefTint tint = TintOf(ShadeAt(heights, column, row), 80);
                expected = BlendPixel(expected, OpaquePixel(tint.Color), tint.Alpha);
                const auto level = [&](int c, int r) {
                    return std::floor(heights.At(c, r) / 1000.0);
                };
                const int right = x + 1 < Side ? Column(x + 1) : column;
                const int above = Row(y - 1);
                if ((right >= 0 && level(right, row) != level(column, row)) ||
                    (above >= 0 && level(column, above) != level(column, row))) {
                    expected = 0xFF78461E;
                    ++lines;
                }
            }
            ASSERT_EQ(painted.Row(y)[x], expected) << x << " " << y;
        }
    EXPECT_GT(lines, 500);
}

TEST_F(OverviewRelief, AloneHasBareGround) {
    for (TerrainPost& post : world_.Terrain.LxArr.Values())
        post.Elevation = 700;
    world_.View.ShowRelief = world_.View.ReliefAlone = true;
    const Raster painted = Paint();
    EXPECT_EQ(painted.Row(100)[10], 0xFFB4B4B4);
    EXPECT_EQ(painted.Row(2)[10], 0xFF404040); // beyond the terrain
}

TEST_F(OverviewRelief, FollowsTheFinestHeightsWhileTheyAreEdited) {
    for (TerrainPost& post : world_.Terrain.LxArr.Values())
        post.Elevation = 0;
    world_.View.ShowRelief = true;
    const Raster flat = Paint();
    world_.View.L0Mode = true;
    world_.Terrain.Elevations.EMapWidth = 160;
    world_.Terrain.Elevations.L0ElvArr = HeightArray(160 * 160);
    world_.Terrain.Elevations.At(4 * 10 + 3, 4 * 10 + 2) = 100; // right of its middle
    const Raster painted = Paint();
    int changed = 0;
    for (int y = 0; y < Side; ++y)
        for (int x = 0; x < Side; ++x)
            changed += painted.Row(y)[x] != flat.Row(y)[x] ? 1 : 0;
    EXPECT_GT(changed, 0);
    EXPECT_LT(changed, 30); // of one post or two
}

TEST(ContourLevels, AreRoundedDown) {
    EXPECT_EQ(ContourLevel(0, 500), 0);
    EXPECT_EQ(ContourLevel(499, 500), 0);
    EXPECT_EQ(ContourLevel(500, 500), 1);
    EXPECT_EQ(ContourLevel(-1, 500), -1);
    EXPECT_EQ(ContourLevel(-500, 500), -1);
    EXPECT_EQ(ContourLevel(-501, 500), -2);
}

} // namespace
} // namespace vardenix
