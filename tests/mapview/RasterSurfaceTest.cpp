#include "support/MemorySurface.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vardenix {
namespace {

using tests::MemorySurface;

// The picture as rows of letters: "." black, "p" the pen's colour, "f" the fill's.
std::string Drawn(const MemorySurface& surface) {
    std::string text;
    for (int32_t y = 0; y < surface.Picture().Height(); ++y) {
        for (int32_t x = 0; x < surface.Picture().Width(); ++x) {
            const uint32_t pixel = surface.At(x, y);
            text += pixel == 0x332211 ? 'p' : pixel == 0x665544 ? 'f' : '.';
        }
        text += '\n';
    }
    return text;
}

class OnRaster : public testing::Test {
protected:
    OnRaster() {
        surface_.SetPen(0x112233, 1);
        surface_.SetFill(FillStyle::None, 0x445566);
    }
    MemorySurface surface_{6};
};

TEST_F(OnRaster, ClearingTakesEveryPixel) {
    surface_.Clear(0x112233);
    EXPECT_EQ(Drawn(surface_), "pppppp\npppppp\npppppp\npppppp\npppppp\npppppp\n");
}

TEST_F(OnRaster, ColoursArePaintedBlueGreenRed) {
    surface_.Clear(0x00C08040);
    EXPECT_EQ(surface_.Pixels().Row(5)[5], 0xFF4080C0);
    EXPECT_EQ(OpaquePixel(0xFF0000FF), 0xFFFF0000);
}

TEST_F(OnRaster, BothEndsOfALineArePainted) {
    surface_.Line({4, 1}, {1, 1});
    surface_.Line({2, 3}, {2, 5});
    EXPECT_EQ(Drawn(surface_), "......\n.pppp.\n......\n..p...\n..p...\n..p...\n");
}

TEST_F(OnRaster, CoordinatesAreRoundedHalfToEven) {
    surface_.Line({0.5, 1.5}, {2.5, 1.5});
    EXPECT_EQ(Drawn(surface_), "......\n......\nppp...\n......\n......\n......\n");
}

TEST_F(OnRaster, AWidePenLiesRoundItsLine) {
    surface_.SetPen(0x112233, 3);
    surface_.Line({2, 2}, {3, 2});
    EXPECT_EQ(Drawn(surface_), "......\n.pppp.\n.pppp.\n.pppp.\n......\n......\n");
}

TEST_F(OnRaster, TheOddPixelOfAnEvenPenIsBelowAndRight) {
    surface_.SetPen(0x112233, 2);
    surface_.Line({2, 2}, {2, 2});
    EXPECT_EQ(Drawn(surface_), "......\n......\n..pp..\n..pp..\n......\n......\n");
}

TEST_F(OnRaster, APenWithoutWidthDrawsOnePixel) {
    surface_.SetPen(0x112233, 0);
    surface_.Line({0, 0}, {0, 0});
    EXPECT_EQ(Drawn(surface_), "p.....\n......\n......\n......\n......\n......\n");
}

TEST_F(OnRaster, ABoxTakesItsCornersInAnyOrder) {
    surface_.Rectangle({4, 1}, {1, 4});
    EXPECT_EQ(Drawn(surface_), "......\n.pppp.\n.p..p.\n.p..p.\n.pppp.\n......\n");
}

TEST_F(OnRaster, ASolidFillLiesInsideTheOutline) {
    surface_.SetFill(FillStyle::Solid, 0x445566);
    surface_.Rectangle({1, 1}, {4, 4});
    EXPECT_EQ(Drawn(surface_), "......\n.pppp.\n.pffp.\n.pffp.\n.pppp.\n......\n");
}

TEST_F(OnRaster, WhatLiesOutsideIsCut) {
    surface_.SetFill(FillStyle::Solid, 0x445566);
    surface_.Rectangle({-1e300, -5}, {2, 2});
    surface_.Line({4, -1e18}, {4, 1e18});
    surface_.Line({9, 0}, {9, 5});
    surface_.Line({0, -1}, {5, -1});
    EXPECT_EQ(Drawn(surface_), "ffp.p.\nffp.p.\nppp.p.\n....p.\n....p.\n....p.\n");
}

TEST_F(OnRaster, AColourIsBlendedIntoItsRectangleOnly) {
    surface_.BlendColor({4, 4, 10, 10}, 0x0000FF, 255);
    surface_.BlendColor({-3, -3, 4, 4}, 0x00FF00, 100);
    EXPECT_EQ(surface_.At(4, 4), 0xFF0000U);
    EXPECT_EQ(surface_.At(3, 4), 0U);
    EXPECT_EQ(surface_.At(0, 0), 0x006400U);
    EXPECT_EQ(surface_.At(1, 0), 0U);
}

TEST(PixelAt, HalvesGoToTheEvenPixel) {
    EXPECT_EQ(PixelAt(0.5), 0);
    EXPECT_EQ(PixelAt(1.5), 2);
    EXPECT_EQ(PixelAt(2.5), 2);
    EXPECT_EQ(PixelAt(-0.5), 0);
    EXPECT_EQ(PixelAt(-1.5), -2);
    EXPECT_EQ(PixelAt(2.51), 3);
}

TEST(PixelAt, TheFarAwayStaysFarAway) {
    EXPECT_EQ(PixelAt(1e300), 1000000);
    EXPECT_EQ(PixelAt(-std::numeric_limits<double>::infinity()), -1000000);
    EXPECT_EQ(PixelAt(std::nan("")), 0);
}

} // namespace
} // namespace vardenix
