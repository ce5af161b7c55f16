#include "catalogue/TileNumbers.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

TEST(TileNumbers, ANumberIsASetFromOneAndASlotFromZero) {
    EXPECT_EQ(PlaceOfNumber(0).Set, 1);
    EXPECT_EQ(PlaceOfNumber(0).Slot, 0);
    EXPECT_EQ(PlaceOfNumber(35).Set, 3);
    EXPECT_EQ(PlaceOfNumber(35).Slot, 3);
    EXPECT_EQ(NumberOfPlace({3, 3}), 35);
}

} // namespace
} // namespace vardenix
