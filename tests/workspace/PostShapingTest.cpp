#include "workspace/PostShaping.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vardenix {
namespace {

Terrain Level(int32_t width, int16_t feet) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    for (TerrainPost& post : terrain.LxArr.Values())
        post = {7, feet, 1, 2, 3};
    return terrain;
}

using Rows = std::vector<std::vector<int>>;

// Rows from the lowest.
Rows HeightsAfter(const Terrain& before, const PostDelta& delta) {
    Terrain terrain = Level(before.MapWidth, 0);
    std::ranges::copy(before.LxArr.Values(), terrain.LxArr.Values().begin());
    WriteNew(terrain.LxArr, delta);
    Rows rows;
    for (int32_t y = 0; y < terrain.MapWidth; ++y) {
        rows.emplace_back();
        for (int32_t x = 0; x < terrain.MapWidth; ++x) {
            const TerrainPost post = terrain.LxArr(y * terrain.MapWidth + x + 1);
            EXPECT_EQ(post, (TerrainPost{7, post.Elevation, 1, 2, 3}));
            rows.back().push_back(post.Elevation);
        }
    }
    return rows;
}

TEST(PostShaping, AHardBrushRaisesASquareOnceAStroke) {
    const Terrain terrain = Level(4, 100);
    EXPECT_EQ(HeightsAfter(terrain, BrushedHeights(terrain, {{0, 0}, {1, 0}, {1, 0}},
                                                   {PostShape::Raise, 50, 3, false})),
              (Rows{{150, 150, 150, 100},
                    {150, 150, 150, 100},
                    {100, 100, 100, 100},
                    {100, 100, 100, 100}}));
    EXPECT_TRUE(BrushedHeights(terrain, {}, {}).Empty());
}

TEST(PostShaping, ASoftBrushFadesToItsEdge) {
    const Terrain terrain = Level(5, 0);
    // Radius 2: a half of it left at distance 1; at 1.414 (1 + cos(127.3)) / 2 = 0.1972.
    EXPECT_EQ(HeightsAfter(terrain, BrushedHeights(terrain, {{2, 2}},
                                                   {PostShape::Set, 1000, 3, true})),
              (Rows{{0, 0, 0, 0, 0},
                    {0, 197, 500, 197, 0},
                    {0, 500, 1000, 500, 0},
                    {0, 197, 500, 197, 0},
                    {0, 0, 0, 0, 0}}));
}

TEST(PostShaping, FlattensToTheFirstPostAndSmoothsWhatWasBefore) {
    Terrain terrain = Level(3, 90);
    terrain.LxArr(1).Elevation = 0;
    terrain.LxArr(5).Elevation = 450;
    EXPECT_EQ(HeightsAfter(terrain, BrushedHeights(terrain, {{0, 0}, {1, 1}},
                                                   {PostShape::Flatten, 5, 1, false})),
              (Rows{{0, 90, 90}, {90, 0, 90}, {90, 90, 90}}));
    // The corner has (0 + 90 + 90 + 450) / 4 = 157.5, half to even; the middle
    // (0 + 7 * 90 + 450) / 9 = 120.
    EXPECT_EQ(HeightsAfter(terrain, BrushedHeights(terrain, {{0, 0}, {1, 1}},
                                                   {PostShape::Smooth, 5, 1, false})),
              (Rows{{158, 90, 90}, {90, 120, 90}, {90, 90, 90}}));
}

TEST(PostShaping, StopsAtTheEndsOf16Bits) {
    const Terrain terrain = Level(1, 32000);
    EXPECT_EQ(HeightsAfter(terrain, BrushedHeights(terrain, {{0, 0}},
                                                   {PostShape::Raise, 32000, 1, false})),
              (Rows{{32767}}));
    EXPECT_EQ(HeightsAfter(Level(1, -32000),
                           BrushedHeights(Level(1, -32000), {{0, 0}},
                                          {PostShape::Lower, 32000, 1, false})),
              (Rows{{-32768}}));
}

TEST(PostShaping, StaysWithinTheBounds) {
    const Terrain terrain = Level(3, 0);
    const Selection right = SelectedBox({2, 0, 2, 2}, 3);
    EXPECT_EQ(
        HeightsAfter(terrain, BrushedHeights(terrain, {{1, 1}},
                                             {PostShape::Set, 9, 3, false}, &right)),
        (Rows{{0, 0, 9}, {0, 0, 9}, {0, 0, 9}}));
    EXPECT_EQ(
        HeightsAfter(terrain, SlopedHeights(terrain, {0, 0}, {2, 2}, 9, false, &right)),
        (Rows{{0, 0, 0}, {0, 0, 0}, {0, 0, 0}}));
}

TEST(PostShaping, ASelectionIsShapedAlike) {
    Terrain terrain = Level(2, 10);
    terrain.LxArr(2).Elevation = 41;
    const Selection lower = SelectedBox({0, 0, 1, 0}, 2);
    EXPECT_EQ(HeightsAfter(terrain, ShapedHeights(terrain, lower, PostShape::Lower, 20)),
              (Rows{{-10, 21}, {10, 10}}));
    // The mean is 25.5, half to even.
    EXPECT_EQ(HeightsAfter(terrain, ShapedHeights(terrain, lower, PostShape::Flatten, 0)),
              (Rows{{26, 26}, {10, 10}}));
}

TEST(PostShaping, ASlopeLeadsEvenlyFromOnePostToTheOther) {
    Terrain terrain = Level(5, 0);
    terrain.LxArr(2 * 5 + 5).Elevation = 1000; // the post 4, 2
    EXPECT_EQ(HeightsAfter(terrain, SlopedHeights(terrain, {0, 2}, {4, 2}, 1, false)),
              (Rows{{0, 0, 0, 0, 0},
                    {0, 0, 0, 0, 0},
                    {0, 250, 500, 750, 1000},
                    {0, 0, 0, 0, 0},
                    {0, 0, 0, 0, 0}}));
    // Soft, three across: half of it one post beside the line; the end counts there, too.
    EXPECT_EQ(HeightsAfter(terrain, SlopedHeights(terrain, {0, 2}, {4, 2}, 3, true)),
              (Rows{{0, 0, 0, 0, 0},
                    {0, 125, 250, 375, 500},
                    {0, 250, 500, 750, 1000},
                    {0, 125, 250, 375, 500},
                    {0, 0, 0, 0, 0}}));
    EXPECT_TRUE(SlopedHeights(terrain, {0, 2}, {5, 2}, 1, false).Empty());
}

TEST(PostShaping, ASlopeToItselfIsTheHeightOfItsPost) {
    Terrain terrain = Level(5, 0);
    terrain.LxArr(13).Elevation = 800;
    EXPECT_EQ(HeightsAfter(terrain, SlopedHeights(terrain, {2, 2}, {2, 2}, 3, true)),
              HeightsAfter(terrain, BrushedHeights(terrain, {{2, 2}},
                                                   {PostShape::Set, 800, 3, true})));
}

} // namespace
} // namespace vardenix
