#include "search/StatisticsRows.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

// Water 0 "LAKE" and 1 "SEA", plains 16 "WHEAT" without a picture.
TileLookup ThreeTiles() {
    TileLookup lookup(32);
    const auto tile = [&lookup](size_t number, const char* name, int16_t kind) {
        lookup[number].Name = name;
        lookup[number].Terrain = kind;
        lookup[number].HasImage = number == 16 ? 0 : 1;
    };
    tile(0, "LAKE", 1);
    tile(1, "SEA", 1);
    tile(16, "WHEAT", 4);
    return lookup;
}

Terrain FourPosts() {
    Terrain terrain;
    terrain.MapWidth = 2;
    terrain.LxArr = PostArray(4);
    terrain.LxArr(1) = {0, 0, 0, 0, 0};
    terrain.LxArr(2) = {0, 12, 0, 0, 0};
    terrain.LxArr(3) = {16, -5, 0, 0, 0};
    terrain.LxArr(4) = {7, 3, 0, 0, 0};
    return terrain;
}

std::string Listed(const StatisticsGroup& group) {
    std::string text = group.Title + ":";
    for (const StatisticsRow& row : group.Rows)
        text += " [" + row.What + "] " + std::to_string(row.Posts);
    return text;
}

TEST(StatisticsRows, AreGroupedAndNamed) {
    const TileLookup lookup = ThreeTiles();
    const auto groups = GroupsOf(StatisticsOf(FourPosts(), lookup), lookup);
    ASSERT_EQ(groups.size(), 8U);
    EXPECT_EQ(Listed(groups[0]), "Sea: [Water at 0 feet or below] 1");
    EXPECT_EQ(Listed(groups[1]), "Kinds: [Water] 2 [Plains] 1");
    EXPECT_EQ(Listed(groups[2]), "Sets: [0] 2 [1] 1");
    EXPECT_EQ(Listed(groups[3]), "Tiles by use: [0 LAKE] 2 [16 WHEAT] 1");
    EXPECT_EQ(Listed(groups[4]), "Unused tiles: [1 SEA] 0");
    EXPECT_EQ(Listed(groups[5]), "Unknown numbers: [7] 1");
    EXPECT_EQ(Listed(groups[6]), "Tiles without a picture: [16 WHEAT] 1");
    EXPECT_EQ(groups[7].Rows.front().What, "-5 feet"); // 18 feet, a bar for each
    EXPECT_EQ(groups[7].Rows.size(), 18U);
}

// Every row finds as many posts as it counts.
TEST(StatisticsRows, FindWhatTheyCount) {
    const TileLookup lookup = ThreeTiles();
    Terrain terrain = FourPosts();
    terrain.LxArr(4).TileOffset = -9;
    terrain.LxArr(2).Elevation = 3000; // bars of several feet
    for (const auto& group : GroupsOf(StatisticsOf(terrain, lookup), lookup))
        for (const StatisticsRow& row : group.Rows)
            EXPECT_EQ(PostsOfRow(terrain, lookup, row).size(),
                      static_cast<size_t>(row.Posts) + 1)
                << group.Title << " " << row.What;
    EXPECT_EQ(PostsOfRow(terrain, lookup, {"", 0, RowCounts::Sea, 0, 0}),
              (SearchResults{0, 1}));
}

TEST(StatisticsRows, SharesAreShort) {
    EXPECT_EQ(ShareOf(0, 0), "0.0 %");
    EXPECT_EQ(ShareOf(1, 3), "33.3 %");
    EXPECT_EQ(ShareOf(1, 10000), "0.010 %");
    EXPECT_EQ(StatisticsInWords(StatisticsOf(FourPosts(), ThreeTiles())),
              "4 posts, 25.0 % of them sea (1 square km); -5 to 12 feet, 2.5 on average");
}

} // namespace
} // namespace vardenix
