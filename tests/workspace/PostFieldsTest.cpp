#include "workspace/PostFields.h"

#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

Terrain FilledTerrain(int32_t width, const TerrainPost& post) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    for (TerrainPost& each : terrain.LxArr.Values())
        each = post;
    return terrain;
}

constexpr TerrainPost Meadow{100, 250, 3, 4, 5};

TEST(PostFields, OnlyTheFieldsThatAreToldChange) {
    TerrainPost post = Meadow;
    ApplyChange(post, {});
    EXPECT_TRUE(post == Meadow);
    ApplyChange(post, {.TileOffset = 7});
    EXPECT_TRUE(post == (TerrainPost{7, 250, 3, 4, 5}));
    ApplyChange(post, {.Elevation = -20});
    EXPECT_TRUE(post == (TerrainPost{7, -20, 3, 4, 5}));
    ApplyChange(post, {.Palette = 255});
    EXPECT_TRUE(post == (TerrainPost{7, -20, 255, 4, 5}));
    ApplyChange(post, {.X1 = 0});
    EXPECT_TRUE(post == (TerrainPost{7, -20, 255, 0, 5}));
    ApplyChange(post, {.TileOffset = 0, .Elevation = 0, .X2 = 9});
    EXPECT_TRUE(post == (TerrainPost{0, 0, 255, 0, 9}));
}

TEST(PostFields, AChangeIsEmptyUntilAFieldIsTold) {
    EXPECT_TRUE(PostChange{}.Empty());
    // 0 is a value like any other.
    EXPECT_FALSE(PostChange{.TileOffset = 0}.Empty());
    EXPECT_FALSE(PostChange{.Elevation = 0}.Empty());
    EXPECT_FALSE(PostChange{.Palette = 0}.Empty());
    EXPECT_FALSE(PostChange{.X1 = 0}.Empty());
    EXPECT_FALSE(PostChange{.X2 = 0}.Empty());
}

// The serials whose tile is 7.
std::vector<int32_t> Painted(const Terrain& terrain) {
    std::vector<int32_t> serials;
    for (int32_t serial = 1; serial <= terrain.LxArr.UpperBound(); ++serial)
        if (terrain.LxArr(serial).TileOffset == 7)
            serials.push_back(serial);
    return serials;
}

TEST(PostFields, AFillCoversBothCornersWhicheverLiesWhere) {
    // Columns 1 to 3 of rows 2 and 3, from 0, 16 posts a row.
    const std::vector<int32_t> expected{34, 35, 36, 50, 51, 52};
    for (const PostBox& corners :
         {PostBox{1, 2, 3, 3}, {3, 3, 1, 2}, {1, 3, 3, 2}, {3, 2, 1, 3}}) {
        Terrain terrain = FilledTerrain(16, Meadow);
        EXPECT_EQ(FillPosts(terrain, corners, {.TileOffset = 7}), 6);
        EXPECT_EQ(Painted(terrain), expected);
        EXPECT_TRUE(terrain.LxArr(34) == (TerrainPost{7, 250, 3, 4, 5}));
    }
}

TEST(PostFields, AFillOfOnePostAndOfAllPosts) {
    Terrain terrain = FilledTerrain(32, Meadow);
    EXPECT_EQ(FillPosts(terrain, {31, 31, 31, 31}, {.TileOffset = 7}), 1);
    EXPECT_EQ(Painted(terrain), std::vector<int32_t>{1024});
    EXPECT_EQ(FillPosts(terrain, {0, 0, 31, 31}, {.TileOffset = 7}), 1024);
    EXPECT_EQ(Painted(terrain).size(), 1024U);
}

TEST(PostFields, AFillThatReachesPastTheTerrainChangesNothing) {
    for (const PostBox& corners :
         {PostBox{-1, 0, 1, 1}, {0, -1, 1, 1}, {2, 2, 16, 2}, {2, 16, 2, 2}}) {
        Terrain terrain = FilledTerrain(16, Meadow);
        try {
            FillPosts(terrain, corners, {.TileOffset = 7});
            ADD_FAILURE() << corners.X1 << ", " << corners.Y1;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.NumberValue(), 9);
            EXPECT_NE(error.Detail().find("of 0 to 15"), std::string::npos);
        }
        EXPECT_TRUE(Painted(terrain).empty());
    }
}

TEST(PostFields, PostsOutsideWholeSegmentsAreNotPainted) {
    EXPECT_EQ(SavedWidth(33), 32);
    EXPECT_EQ(SavedWidth(32), 32);
    EXPECT_EQ(SavedWidth(8), 0);
    // A save would lose them without a word.
    Terrain terrain = FilledTerrain(33, Meadow);
    EXPECT_EQ(FillPosts(terrain, {31, 0, 31, 0}, {.TileOffset = 7}), 1);
    EXPECT_THROW(FillPosts(terrain, {32, 0, 32, 0}, {.TileOffset = 7}), RuntimeError);
    EXPECT_EQ(Painted(terrain), std::vector<int32_t>{32});
}

TEST(PostFields, SeaSegmentsAreCountedWhereTheRectangleReaches) {
    Terrain terrain = FilledTerrain(48, {0, 0, 1, 2, 3});
    EXPECT_EQ(SeaSegments(terrain, {0, 0, 47, 47}), 9);
    EXPECT_EQ(SeaSegments(terrain, {15, 16, 16, 16}), 2);
    EXPECT_EQ(SeaSegments(terrain, {16, 16, 15, 15}), 4);
    terrain.LxArr(1).Elevation = -1;
    EXPECT_EQ(SeaSegments(terrain, {0, 0, 47, 47}), 8);
    EXPECT_EQ(SeaSegments(terrain, {15, 15, 15, 15}), 0);
    EXPECT_EQ(SeaSegments(terrain, {16, 15, 16, 15}), 1);
}

} // namespace
} // namespace vardenix
