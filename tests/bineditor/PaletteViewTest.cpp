#include "bineditor/PaletteView.h"

#include <gtest/gtest.h>

namespace vardenix::tests {
namespace {

TEST(PaletteIndexAt, CountsFromTheLowerRightCorner) {
    EXPECT_EQ(PaletteIndexAt(0, 0, 160, 160), 255);
    EXPECT_EQ(PaletteIndexAt(9, 0, 160, 160), 255);
    EXPECT_EQ(PaletteIndexAt(10, 0, 160, 160), 254);
    EXPECT_EQ(PaletteIndexAt(0, 10, 160, 160), 239);
    EXPECT_EQ(PaletteIndexAt(159, 159, 160, 160), 0);
    EXPECT_EQ(PaletteIndexAt(50, 7, 100, 20), 167); // column 9, row 6
}

TEST(PaletteIndexAt, StaysInTheTableBeyondTheEdges) {
    EXPECT_EQ(PaletteIndexAt(-5, -1, 160, 160), 255);
    EXPECT_EQ(PaletteIndexAt(160, 400, 160, 160), 0);
    EXPECT_EQ(PaletteIndexAt(3, 3, 0, 0), 0);
}

TEST(TipOfPalette, NamesTheColorAndShowsIt) {
    PaletteTable table(256);
    table[17] = {5, 128, 255, 99};
    const PaletteTip tip = TipOfPalette(table, 17);
    EXPECT_EQ(tip.Text, "Palette Index: 17\nRed: 255\nGreen: 128\nBlue: 5\n"
                        "hex$#: .FF.80..5");
    EXPECT_EQ(tip.Back, 0x0580FFU);
    EXPECT_EQ(tip.Fore, 0U);
    EXPECT_EQ(TipOfPalette(table, 0).Text,
              "Palette Index: 0\nRed: 0\nGreen: 0\nBlue: 0\nhex$#: ..0..0..0");
    EXPECT_EQ(TipOfPalette(table, 0).Fore, 0xFFFFFFU);
    table[1] = {255, 0, 0, 0};
    EXPECT_EQ(TipOfPalette(table, 1).Fore, 0xFFFFFFU); // blue is dark to the eye
    table[2] = {15, 16, 0, 0};
    EXPECT_TRUE(TipOfPalette(table, 2).Text.ends_with("..0.10..F"));
}

} // namespace
} // namespace vardenix::tests
