#include "search/ReplaceWish.h"

#include "program/ProgramState.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace vardenix {
namespace {

// Tiles 0 "Lake", 1 "Coast" (water), 2 "Wheat" (plains); number 3 has no tile.
class ReplaceWishTest : public testing::Test {
protected:
    ReplaceWishTest() {
        state_.Catalogue.Lookup.resize(16);
        const auto tile = [this](size_t number, const char* name, int16_t kind) {
            state_.Catalogue.Lookup[number].Name = name;
            state_.Catalogue.Lookup[number].Terrain = kind;
        };
        tile(0, "Lake", 1);
        tile(1, "Coast", 1);
        tile(2, "Wheat", 4);
        state_.Terrain.MapWidth = 16;
        state_.Terrain.LxArr = PostArray(256);
        for (int32_t serial = 1; serial <= 256; ++serial)
            state_.Terrain.LxArr(serial).TileOffset = serial % 4;
    }

    ReplacePlan Plan(const ReplaceWish& wish) {
        return PlanOf(state_.Terrain, state_.Catalogue.Lookup,
                      {state_.Search.Results, selected_}, wish);
    }
    int64_t Replace(const ReplaceWish& wish, const FittingTiles& fitting = {}) {
        return ReplaceTiles(state_.Terrain, state_.Catalogue.Lookup,
                            {state_.Search.Results, selected_}, wish, state_.Changes,
                            fitting);
    }
    int32_t Tile(int32_t serial) { return state_.Terrain.LxArr(serial).TileOffset; }

    ProgramState state_;
    std::vector<RowSpan> selected_;
};

TEST_F(ReplaceWishTest, TilesAreNumbersNamesAndKinds) {
    const ReplacePlan plan = Plan({.Old = "wheat, 3", .New = "water"});
    EXPECT_EQ(plan.Old, (std::vector<int32_t>{2, 3}));
    EXPECT_EQ(plan.New, (std::vector<int32_t>{0, 1}));
    EXPECT_EQ(plan.Posts, 128);
    EXPECT_TRUE(plan.Possible());
}

TEST_F(ReplaceWishTest, AWordThatMeansNoTileMakesItImpossible) {
    const ReplacePlan plan = Plan({.Old = "lake, rye, oats", .New = "3"});
    EXPECT_EQ(plan.UnknownOld, "RYE");
    EXPECT_EQ(plan.UnknownNew, "3"); // it may give way, but nobody could paint it
    EXPECT_FALSE(plan.Possible());
    EXPECT_EQ(Replace({.Old = "lake, rye", .New = "2"}), 0);
    EXPECT_EQ(Replace({.Old = "lake", .New = ""}), 0);
    EXPECT_EQ(state_.Changes.Count(), 0U);
    EXPECT_FALSE(Plan({.Old = "99999999", .New = "2"}).Possible()); // beyond all numbers
    EXPECT_FALSE(Plan({.Old = "", .New = "2"}).Possible());
}

TEST_F(ReplaceWishTest, IsOneStepOfTheLog) {
    EXPECT_EQ(Replace({.Old = "0", .New = "2"}), 64);
    EXPECT_EQ(Tile(4), 2);
    EXPECT_EQ(Tile(1), 1);
    ASSERT_EQ(state_.Changes.Count(), 1U);
    EXPECT_EQ(state_.Changes.At(0).Name, "Replace 64 posts");
    state_.Changes.Back();
    EXPECT_EQ(Tile(4), 0);
    state_.Changes.Again();
    EXPECT_EQ(Tile(4), 2);
}

TEST_F(ReplaceWishTest, InHitsOnlyThoseGiveWay) {
    state_.Search.Results = {0, 1, 4, 8, 9, 200};
    EXPECT_EQ(Plan({.Old = "0", .New = "2", .Where = ReplaceWhere::Hits}).Posts, 3);
    EXPECT_EQ(Replace({.Old = "0", .New = "2", .Where = ReplaceWhere::Hits}), 3);
    for (int32_t serial = 1; serial <= 256; ++serial)
        EXPECT_EQ(Tile(serial),
                  serial == 4 || serial == 8 || serial == 200 ? 2 : serial % 4);
}

// Of the serials 1 to 8 and 33 to 36.
TEST_F(ReplaceWishTest, InASelectionOnlyThoseGiveWay) {
    selected_ = {{0, 0, 7}, {2, 0, 3}};
    const ReplaceWish wish{.Old = "0", .New = "2", .Where = ReplaceWhere::Selection};
    EXPECT_EQ(Plan(wish).Posts, 3);
    EXPECT_EQ(Replace(wish), 3);
    for (int32_t serial = 1; serial <= 256; ++serial)
        EXPECT_EQ(Tile(serial),
                  serial == 4 || serial == 8 || serial == 36 ? 2 : serial % 4);
    selected_.clear();
    EXPECT_FALSE(
        Plan({.Old = "1", .New = "2", .Where = ReplaceWhere::Selection}).Possible());
}

// The post beside the last one is a transition then.
TEST_F(ReplaceWishTest, WhatFitsIsAskedForWithThePostsThatGiveWay) {
    selected_ = {{0, 2, 8}};
    std::vector<RowSpan> asked;
    const FittingTiles fitting = [&](std::span<const RowSpan> posts, int32_t tile,
                                     uint32_t seed) {
        asked.assign(posts.begin(), posts.end());
        EXPECT_EQ(tile, 2);
        EXPECT_EQ(seed, 9U);
        return RunsOf<int32_t>(
            std::vector<RowSpan>{{0, 3, 4}}, 16, [this](int32_t s) { return Tile(s); },
            [](int32_t) { return 2; });
    };
    ReplaceWish wish{.Old = "0",
                     .New = "2",
                     .Seed = 9,
                     .Where = ReplaceWhere::Selection,
                     .Fitting = true};
    EXPECT_EQ(Replace(wish, fitting), 2);
    EXPECT_EQ(asked, (std::vector<RowSpan>{{0, 3, 3}, {0, 7, 7}}));
    EXPECT_EQ(Tile(4), 2);
    EXPECT_EQ(Tile(5), 2);
    EXPECT_EQ(Tile(8), 0);
    state_.Changes.Back();
    EXPECT_EQ(Tile(5), 1);
    wish.New = "2,1"; // several are drawn
    EXPECT_EQ(Replace(wish, fitting), 2);
    EXPECT_EQ(Tile(5), 1);
}

TEST_F(ReplaceWishTest, AnotherSeedDrawsAnew) {
    const auto drawn = [this](uint32_t seed) {
        Replace({.Old = "3", .New = "0,1,2", .Seed = seed});
        std::vector<int32_t> tiles;
        for (int32_t serial = 3; serial <= 256; serial += 4)
            tiles.push_back(Tile(serial));
        state_.Changes.Back();
        return tiles;
    };
    EXPECT_EQ(drawn(1), drawn(1));
    EXPECT_NE(drawn(1), drawn(2));
    const auto tiles = drawn(1);
    EXPECT_EQ((std::set<int32_t>(tiles.begin(), tiles.end())),
              (std::set<int32_t>{0, 1, 2}));
}

} // namespace
} // namespace vardenix
