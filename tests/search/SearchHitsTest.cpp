#include "search/SearchHits.h"

#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

Terrain Flat(int32_t width) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    return terrain;
}

TEST(HitFieldText, AnEmptyTextBecomesZero) {
    for (size_t field = 0; field < HitFields; ++field) {
        EXPECT_EQ(HitFieldText(field, ""), "0");
        EXPECT_EQ(HitFieldText(field, "17"), "17");
    }
}

TEST(HitFieldText, ValuesThatDoNotFitBecomeZero) {
    EXPECT_EQ(HitFieldText(0, "999999999"), "999999999");
    EXPECT_EQ(HitFieldText(1, "32767"), "32767");
    EXPECT_EQ(HitFieldText(1, "32768"), "0");
    for (size_t field = 2; field < HitFields; ++field) {
        EXPECT_EQ(HitFieldText(field, "255"), "255") << field;
        EXPECT_EQ(HitFieldText(field, "256"), "0") << field;
    }
}

TEST(HitChange, TakesTheCheckedFieldsOnly) {
    PostChange change =
        HitChange({false, true, false, false, true}, {"1", "2", "3", "4", "5"});
    EXPECT_FALSE(change.TileOffset || change.Palette || change.X1);
    EXPECT_EQ(change.Elevation, 2);
    EXPECT_EQ(change.X2, 5);
    change = HitChange({true, false, true, true, false}, {"1", "2", "3", "4", "5"});
    EXPECT_EQ(change.TileOffset, 1);
    EXPECT_EQ(change.Palette, 3);
    EXPECT_EQ(change.X1, 4);
    EXPECT_FALSE(change.Elevation || change.X2);
}

TEST(SetHits, ChangesTheMarkedHits) {
    Terrain terrain = Flat(16);
    PostChange change;
    change.TileOffset = 9;
    change.X2 = 8;
    EXPECT_EQ(SetHits(terrain, {0, 3, 5, 200}, std::vector<uint8_t>{1, 1, 0, 1}, change),
              2);
    for (int32_t serial = 1; serial <= 256; ++serial) {
        const bool set = serial == 3 || serial == 200;
        EXPECT_EQ(terrain.LxArr(serial).TileOffset, set ? 9 : 0) << serial;
        EXPECT_EQ(terrain.LxArr(serial).X2, set ? 8 : 0) << serial;
        EXPECT_EQ(terrain.LxArr(serial).Elevation, 0) << serial;
    }
}

TEST(SetHits, TheFirstAndTheLastPostAreOnTheTerrain) {
    Terrain terrain = Flat(16);
    PostChange change;
    change.X1 = 7;
    const std::vector<uint8_t> marks{0, 1, 1};
    EXPECT_EQ(SetHits(terrain, {0, 1, 256}, marks, change), 2);
    EXPECT_EQ(terrain.LxArr(1).X1 + terrain.LxArr(256).X1, 14);
}

TEST(SetHits, AHitOutsideTheTerrainChangesNothing) {
    Terrain terrain = Flat(16);
    PostChange change;
    change.TileOffset = 9;
    const std::vector<uint8_t> marks{0, 1, 1};
    EXPECT_THROW(SetHits(terrain, {0, 1, 257}, marks, change), RuntimeError);
    EXPECT_THROW(SetHits(terrain, {0, 257, 1}, marks, change), RuntimeError);
    EXPECT_THROW(SetHits(terrain, {0, 0, 1}, marks, change), RuntimeError);
    EXPECT_EQ(terrain.LxArr(1).TileOffset, 0);
}

TEST(HitsInside, FindsTheHitsOfARectangle) {
    // Width 4: rows 1-4, 5-8, 9-12, 13-16.
    const SearchResults results{0, 1, 4, 5, 6, 7, 8, 10, 16};
    EXPECT_EQ(HitsInside(results, 4, 2, 2, 3, 3), (std::vector<int32_t>{6, 7, 10}));
    EXPECT_EQ(HitsInside(results, 4, -5, -5, 99, 99),
              (std::vector<int32_t>{1, 4, 5, 6, 7, 8, 10, 16}));
    EXPECT_EQ(HitsInside(results, 4, 4, 1, 4, 1), std::vector<int32_t>{4});
    EXPECT_TRUE(HitsInside({0}, 4, 1, 1, 4, 4).empty());
}

} // namespace
} // namespace vardenix
