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
        return PlanOf(state_.Terrain, state_.Catalogue.Lookup, state_.Search.Results,
                      wish);
    }
    int64_t Replace(const ReplaceWish& wish) {
        return ReplaceTiles(state_.Terrain, state_.Catalogue.Lookup,
                            state_.Search.Results, wish, state_.Changes);
    }
    int32_t Tile(int32_t serial) { return state_.Terrain.LxArr(serial).TileOffset; }

    ProgramState state_;
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
