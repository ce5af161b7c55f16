#include "mapview/PreviewHeights.h"

#include "mapview/Relief.h"
#include "pictures/Blending.h"
#include "platform/Clock.h"
#include "platform/DebugLog.h"
#include "support/RecordingProgress.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vardenix {
namespace {

constexpr int Side = 32;

// A theater of random heights, and its height picture as the window has it.
class PreviewHeights : public testing::Test {
protected:
    PreviewHeights() {
        terrain_.MapWidth = Side;
        terrain_.LxArr = PostArray(int64_t{Side} * Side);
        for (TerrainPost& post : terrain_.LxArr.Values())
            post.Elevation =
                static_cast<int16_t>(static_cast<int>(random_() % 8000) - 500);
        picture_ = WholePicture();
    }

    // As it is painted when a theater is opened.
    Raster WholePicture() {
        tests::RecordingProgress progress;
        SystemClock clock;
        DebugLog log(clock);
        const HeightPicture heights = ShowLFile(terrain_, colors_, progress, log);
        Raster picture(Side, Side);
        for (int y = 0; y < Side; ++y)
            for (int x = 0; x < Side; ++x) {
                const uint32_t color =
                    heights
                        .Pixels[static_cast<size_t>(y) * Side + static_cast<size_t>(x)];
                picture.View().Row(y)[x] = 0xFF000000 | (color & 0xFF) << 16 |
                                           (color & 0xFF00) | (color >> 16 & 0xFF);
            }
        return picture;
    }
    bool Same(Raster& a, Raster& b) {
        for (int y = 0; y < Side; ++y)
            for (int x = 0; x < Side; ++x)
                if (a.View().Row(y)[x] != b.View().Row(y)[x])
                    return false;
        return true;
    }
    void Edit(int x, int y, int16_t elevation) {
        terrain_.LxArr(y * Side + x + 1).Elevation = elevation;
    }
    bool Update(int x, int y, int across, int down) {
        return UpdateHeights(terrain_, colors_, {x, y}, across, down, picture_.View());
    }

    std::mt19937 random_{7};
    Terrain terrain_;
    PreviewColors colors_{0x720000, {1, 2, 3, 4, 5, 6, 7, 8}};
    Raster picture_;
};

TEST_F(PreviewHeights, EditsInThePartAreShownAsThoughPaintedAnew) {
    for (int i = 0; i < 200; ++i) {
        const int x = static_cast<int>(random_() % Side);
        const int y = static_cast<int>(random_() % Side);
        Edit(x, y, static_cast<int16_t>(random_() % 3 == 0 ? 0 : random_() % 8000));
        Update(x - 2, y - 2, 5, 5);
        Raster whole = WholePicture();
        ASSERT_TRUE(Same(picture_, whole)) << x << ", " << y;
    }
}

TEST_F(PreviewHeights, WhatLiesOutsideThePartStays) {
    Edit(10, 10, 0);
    EXPECT_FALSE(Update(11, 10, 9, 9));
    EXPECT_FALSE(Update(10, 11, 9, 9));
    EXPECT_FALSE(Update(2, 2, 8, 20));
    EXPECT_FALSE(Update(2, 2, 20, 8));
    EXPECT_TRUE(Update(10, 10, 1, 1));
    EXPECT_FALSE(Update(0, 0, Side, Side)); // all is as it should be now
}

TEST_F(PreviewHeights, PartsMayReachBeyondTheTerrain) {
    Edit(31, 31, 0);
    EXPECT_TRUE(Update(-5, -5, 2000000000, 2000000000));
    EXPECT_FALSE(Update(40, 40, 5, 5));
    EXPECT_FALSE(Update(-40, -40, 5, 5));
    EXPECT_FALSE(Update(5, 5, 0, 0));
}

TEST_F(PreviewHeights, TheLowestRowOfPostsHasNoPixels) {
    Edit(4, 0, 0);
    EXPECT_FALSE(Update(0, 0, Side, Side));
}

TEST_F(PreviewHeights, ThePictureOfAnotherTheaterIsLeftAlone) {
    Edit(4, 4, 0);
    Raster other(Side * 2, Side * 2);
    EXPECT_FALSE(UpdateHeights(terrain_, colors_, {0, 0}, Side, Side, other.View()));
    terrain_.LxArr = PostArray(16);
    EXPECT_FALSE(Update(0, 0, Side, Side));
}

TEST_F(PreviewHeights, ReliefAndContoursAreThoseOfASlowPainter) {
    Raster plain = WholePicture();
    const PreviewLooks looks{.Relief = 70, .ContourStep = 900};
    EXPECT_TRUE(
        UpdateHeights(terrain_, colors_, {0, 0}, Side, Side, picture_.View(), looks));
    const HeightField heights(terrain_, Layer::Posts);
    for (int y = 1; y < Side; ++y)
        for (int x = 0; x < Side; ++x) {
            const auto level = [&](int across, int up) {
                return std::floor(heights.At(x + across, y + up) / 900.0);
            };
            const ReliefTint tint = TintOf(ShadeAt(heights, x, y), 70);
            const uint32_t shaded =
                BlendPixel(plain.Row(Side - y)[x], OpaquePixel(tint.Color), tint.Alpha);
            const bool line = level(1, 0) != level(0, 0) || level(0, 1) != level(0, 0);
            ASSERT_EQ(picture_.Row(Side - y)[x], line ? 0xFF78461E : shaded)
                << x << " " << y;
        }
    // And away again.
    EXPECT_TRUE(UpdateHeights(terrain_, colors_, {0, 0}, Side, Side, picture_.View()));
    EXPECT_TRUE(Same(picture_, plain));
}

} // namespace
} // namespace vardenix
