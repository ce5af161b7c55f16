#include "catalogue/PictureNames.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

TEST(PictureNames, TheLastFourCharactersAreCutWhateverTheyAre) {
    EXPECT_EQ(TileFileName("H1234.PCX", false), "H1234.dds");
    EXPECT_EQ(TileFileName("H1234.PCX", true), "H1234N.dds");
    EXPECT_EQ(TileFileName("HABCDE", false), "HA.dds");
    EXPECT_EQ(TileFileName("ABC", false), ".dds");
    EXPECT_EQ(TileFileName("", true), "N.dds");
}

} // namespace
} // namespace vardenix
