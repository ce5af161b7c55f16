#include "search/Statistics.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <set>

namespace vardenix {
namespace {

Terrain Land(int32_t width) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    return terrain;
}

TileInfo Tile(int16_t terrain, bool picture = true) {
    TileInfo tile;
    tile.Terrain = terrain;
    tile.HasImage = picture ? 1 : 0;
    return tile;
}

// Sets of water and plains with two tiles each; tile 17 has no picture.
TileLookup TwoSets() {
    TileLookup lookup(32);
    lookup[0] = Tile(1);
    lookup[1] = Tile(1);
    lookup[16] = Tile(4);
    lookup[17] = Tile(4, false);
    return lookup;
}

TEST(Statistics, CountKindsSetsTilesAndWhatIsWrong) {
    Terrain terrain = Land(3);
    terrain.LxArr(1) = {16, 100, 0, 0, 0};
    terrain.LxArr(2) = {16, 250, 0, 0, 0};
    terrain.LxArr(3) = {0, 10, 0, 0, 0}; // a lake
    terrain.LxArr(4) = {5, -20, 0, 0, 0};
    terrain.LxArr(5) = {99, 0, 0, 0, 0};
    const Statistics told = StatisticsOf(terrain, TwoSets());
    EXPECT_EQ(told.Posts, 9);
    EXPECT_EQ(told.Kinds, (std::vector<CountedPosts>{{1, 5}, {4, 2}}));
    EXPECT_EQ(told.Sets, (std::vector<CountedPosts>{{1, 5}, {2, 2}}));
    EXPECT_EQ(told.Tiles, (std::vector<CountedPosts>{{0, 5}, {16, 2}}));
    EXPECT_EQ(told.UnusedTiles, (std::vector<int32_t>{1, 17}));
    EXPECT_EQ(told.Unknown, (std::vector<CountedPosts>{{5, 1}, {99, 1}}));
    EXPECT_EQ(told.NoPicture, (std::vector<int32_t>{17}));
    EXPECT_EQ(told.SeaPosts, 4);
    EXPECT_EQ(told.Lowest, -20);
    EXPECT_EQ(told.Highest, 250);
    EXPECT_DOUBLE_EQ(told.MeanHeight, 340 / 9.0);
    EXPECT_EQ(told.BarStep, 10);
    ASSERT_EQ(told.Heights.size(), 28U);
    EXPECT_EQ(told.Heights.front(), (HeightBar{-20, 1}));
    EXPECT_EQ(told.Heights[2], (HeightBar{0, 5}));
    EXPECT_EQ(told.Heights[3], (HeightBar{10, 1}));
    EXPECT_EQ(told.Heights.back(), (HeightBar{250, 1}));
}

TEST(Statistics, OfNothingAreNothing) {
    const Statistics told = StatisticsOf(Terrain(), TwoSets());
    EXPECT_EQ(told.Posts, 0);
    EXPECT_EQ(told.UnusedTiles.size(), 4U);
    EXPECT_TRUE(told.Heights.empty());
}

TEST(Statistics, BarsHaveRoundStepsAndAreFew) {
    EXPECT_EQ(BarStepFor(0, 0), 1);
    EXPECT_EQ(BarStepFor(0, 39), 1);
    EXPECT_EQ(BarStepFor(0, 40), 2);
    EXPECT_EQ(BarStepFor(-1, 198), 10); // by fives, -5 makes them 41
    EXPECT_EQ(BarStepFor(0, 8509), 500);
    EXPECT_EQ(BarStepFor(-32768, 32767), 2000);
}

// Post by post, with a map for each question.
Statistics SlowStatistics(const Terrain& terrain, const TileLookup& lookup) {
    Statistics told;
    std::map<int32_t, int64_t> uses, kinds, unknown, heights;
    int64_t sum = 0;
    for (size_t number = 0; number < lookup.size(); ++number)
        if (lookup[number].Terrain != -1)
            kinds[lookup[number].Terrain] += 0;
    for (size_t set = 0; set < lookup.size() / 16; ++set)
        told.Sets.push_back({static_cast<int32_t>(set) + 1, 0});
    for (const TerrainPost& post : terrain.LxArr.Values()) {
        ++told.Posts;
        sum += post.Elevation;
        ++heights[post.Elevation];
        const int32_t number = post.TileOffset;
        if (number < 0 || static_cast<size_t>(number) >= lookup.size() ||
            lookup[static_cast<size_t>(number)].Terrain == -1) {
            ++unknown[number];
            continue;
        }
        const int32_t kind = lookup[static_cast<size_t>(number)].Terrain;
        ++uses[number];
        ++kinds[kind];
        ++told.Sets[static_cast<size_t>(number) / 16].Posts;
        told.SeaPosts += kind == 1 && post.Elevation <= 0;
    }
    std::multimap<int64_t, int32_t> byUse;
    for (size_t i = 0; i < lookup.size(); ++i) {
        const auto number = static_cast<int32_t>(i);
        if (lookup[i].Terrain == -1)
            continue;
        if (uses.count(number) == 0)
            told.UnusedTiles.push_back(number);
        else
            byUse.emplace(-uses[number], number);
        if (lookup[i].HasImage == 0)
            told.NoPicture.push_back(number);
    }
    for (const auto& [use, number] : byUse)
        told.Tiles.push_back({number, -use});
    for (const auto& [code, posts] : kinds)
        told.Kinds.push_back({code, posts});
    for (const auto& [number, posts] : unknown)
        told.Unknown.push_back({number, posts});
    told.Lowest = static_cast<int16_t>(heights.begin()->first);
    told.Highest = static_cast<int16_t>(heights.rbegin()->first);
    told.MeanHeight = static_cast<double>(sum) / static_cast<double>(told.Posts);
    told.BarStep = 2000; // of heights from end to end
    for (int32_t from = -34000; from < 34000; from += 2000) {
        int64_t posts = 0;
        for (const auto& [feet, count] : heights)
            posts += feet >= from && feet < from + 2000 ? count : 0;
        told.Heights.push_back({from, posts});
    }
    return told;
}

TEST(Statistics, AreThoseOfASlowCountThatKnowsNoTables) {
    std::mt19937 random(7);
    TileLookup lookup(320);
    for (TileInfo& tile : lookup)
        tile = Tile(random() % 5 == 0 ? int16_t{-1} : static_cast<int16_t>(random() % 9),
                    random() % 4 != 0);
    Terrain terrain = Land(1457); // two pieces, of an odd number of posts
    for (TerrainPost& post : terrain.LxArr.Values()) {
        post.TileOffset = static_cast<int32_t>(random() % 330);
        post.Elevation = static_cast<int16_t>(random());
    }
    terrain.LxArr(77).TileOffset = -5;
    terrain.LxArr(78).Elevation = -32768;
    terrain.LxArr(79).Elevation = 32767;
    EXPECT_EQ(StatisticsOf(terrain, lookup), SlowStatistics(terrain, lookup));
}

} // namespace
} // namespace vardenix
