#include "world/HeightsIn.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>

namespace vardenix {
namespace {

constexpr float None = std::numeric_limits<float>::quiet_NaN();

struct Put {
    std::map<std::pair<int32_t, int32_t>, int16_t> Feet;
    HeightsTaken Taken;
};

Put Take(const WorldRaster& raster, const HeightUnits& units,
         WithoutData without = WithoutData::Leave) {
    Put put;
    put.Taken =
        TakeHeights(raster, {5, 7}, units, without, [&](PostPlace place, int16_t feet) {
            put.Feet[{place.X, place.Y}] = feet;
        });
    return put;
}

TEST(TakeHeights, LaysTheRasterFromItsSouthWestCorner) {
    const Put put = Take({2, 2, {1, 2, 3, 4}}, {.Metres = false});
    EXPECT_EQ(put.Feet, (std::map<std::pair<int32_t, int32_t>, int16_t>{
                            {{5, 7}, 1}, {{6, 7}, 2}, {{5, 8}, 3}, {{6, 8}, 4}}));
    EXPECT_EQ(put.Taken.Set, 4);
}

TEST(TakeHeights, MakesFeetOfMetresAfterScaleAndOffset) {
    // 304.8 metres are 1000 feet; (100 * 3 + 4.8) metres the same.
    EXPECT_EQ(Take({1, 1, {304.8F}}, {}).Feet.begin()->second, 1000);
    EXPECT_EQ(Take({1, 1, {100}}, {.Scale = 3, .Offset = 4.8}).Feet.begin()->second,
              1000);
    EXPECT_EQ(Take({1, 1, {-7}}, {.Metres = false, .Scale = -2, .Offset = 1})
                  .Feet.begin()
                  ->second,
              15);
    // Halves go to the even neighbour.
    EXPECT_EQ(Take({2, 1, {0.5F, 1.5F}}, {.Metres = false}).Feet,
              (std::map<std::pair<int32_t, int32_t>, int16_t>{{{5, 7}, 0}, {{6, 7}, 2}}));
}

TEST(TakeHeights, CutsToSixteenBitsAndCountsIt) {
    const Put put = Take({4, 1, {32767.4F, 32768, -32768, -40000}}, {.Metres = false});
    EXPECT_EQ((put.Feet.at({5, 7})), 32767);
    EXPECT_EQ((put.Feet.at({6, 7})), 32767);
    EXPECT_EQ((put.Feet.at({7, 7})), -32768);
    EXPECT_EQ((put.Feet.at({8, 7})), -32768);
    EXPECT_EQ(put.Taken.Clamped, 2);
    EXPECT_EQ(put.Taken.Set, 4);
}

TEST(TakeHeights, LeavesOrClearsWhereThereIsNone) {
    const Put left = Take({2, 1, {None, 3}}, {.Metres = false});
    EXPECT_EQ(left.Feet.size(), 1U);
    EXPECT_EQ(left.Taken.Without, 1);
    EXPECT_EQ(left.Taken.Set, 1);
    const Put cleared = Take({2, 1, {None, 3}}, {.Metres = false}, WithoutData::Zero);
    EXPECT_EQ((cleared.Feet.at({5, 7})), 0);
    EXPECT_EQ(cleared.Taken.Without, 1);
}

} // namespace
} // namespace vardenix
