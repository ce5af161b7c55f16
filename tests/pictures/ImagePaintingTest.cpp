#include "pictures/ImagePainting.h"

#include "pictures/ImageLayer.h"
#include "pictures/ImageScaling.h"
#include "support/PictureMaker.h"

#include <FreeImage.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace vardenix::tests {
namespace {

constexpr uint32_t Ground = 0xFF112233;

// The colour tells the place: x in green, y in blue.
uint32_t Place(int x, int y) { return 0xFF000000 | static_cast<uint32_t>(x << 8 | y); }

// "12." per row: which column of a Place picture each pixel of row `y` shows; "." is
// ground.
std::string Columns(Raster& raster, int y) {
    std::string text;
    for (int x = 0; x < raster.Width(); ++x) {
        const uint32_t pixel = raster.Row(y)[x];
        text += pixel == Ground ? '.' : static_cast<char>('0' + (pixel >> 8 & 255));
    }
    return text;
}

std::string Rows(Raster& raster, int x) {
    std::string text;
    for (int y = 0; y < raster.Height(); ++y) {
        const uint32_t pixel = raster.Row(y)[x];
        text += pixel == Ground ? '.' : static_cast<char>('0' + (pixel & 255));
    }
    return text;
}

Raster Painted(const PaintPlace& place, uint32_t mirror = MirrorNone) {
    Raster raster(10, 10, Ground);
    ImagePaintDC(raster.View(), BitmapOf(4, 4, 24, Place), place, mirror);
    return raster;
}

TEST(ImagePaintDC, StretchesWithoutSmoothing) {
    Raster wide = Painted({{1, 2, 7, 5}, {0, 0, 4, 4}});
    EXPECT_EQ(Columns(wide, 2), ".0011223.."); // floor(d * 4 / 7)
    EXPECT_EQ(Rows(wide, 1), "..00123...");    // floor(d * 4 / 5)
    Raster narrow = Painted({{0, 0, 3, 1}, {0, 0, 4, 4}});
    EXPECT_EQ(Columns(narrow, 0), "012.......");
    EXPECT_EQ(Columns(narrow, 1), "..........");
}

TEST(ImagePaintDC, TakesMissingSizesFromBitmapAndDestination) {
    Raster own = Painted({{3, 3, 0, 0}, {}});
    EXPECT_EQ(Columns(own, 3), "...0123...");
    EXPECT_EQ(Rows(own, 3), "...0123...");
    // The source is as large as the destination, then, so nothing is stretched.
    Raster part = Painted({{0, 0, 2, 2}, {1, 2, 0, 0}});
    EXPECT_EQ(Columns(part, 0), "12........");
    EXPECT_EQ(Rows(part, 0), "23........");
    Raster beyond = Painted({{0, 0, 8, 8}, {0, 0, 0, 0}});
    EXPECT_EQ(Columns(beyond, 0), "0123......");
}

TEST(ImagePaintDC, CutsAtTheSurfaceOnEverySide) {
    Raster left = Painted({{-3, -1, 8, 8}, {0, 0, 4, 4}});
    EXPECT_EQ(Columns(left, 0), "12233.....");
    EXPECT_EQ(Rows(left, 0), "0112233...");
    Raster right = Painted({{8, 9, 8, 8}, {0, 0, 4, 4}});
    EXPECT_EQ(Columns(right, 9), "........00");
    EXPECT_EQ(Rows(right, 9), ".........0");
    for (const PixelRect& outside : {PixelRect{10, 0, 4, 4},
                                     {-4, 0, 4, 4},
                                     {0, 10, 4, 4},
                                     {2147483647, 0, 4, 4},
                                     {-2147483647, 0, 4, 4}}) {
        Raster untouched = Painted({outside, {0, 0, 4, 4}});
        for (int y = 0; y < 10; ++y)
            EXPECT_EQ(Columns(untouched, y), "..........");
    }
    Raster huge = Painted({{-1000000000, 0, 2000000000, 1}, {0, 0, 4, 4}});
    EXPECT_EQ(Columns(huge, 0), "2222222222");
}

TEST(ImagePaintDC, Mirrors) {
    Raster across = Painted({{0, 0, 4, 4}, {}}, MirrorHorizontal);
    EXPECT_EQ(Columns(across, 0), "3210......");
    EXPECT_EQ(Rows(across, 0), "0123......");
    Raster down = Painted({{0, 0, 4, 4}, {}}, MirrorVertical);
    EXPECT_EQ(Columns(down, 0), "0123......");
    EXPECT_EQ(Rows(down, 0), "3210......");
    Raster both = Painted({{-1, 0, 4, 4}, {}}, MirrorVertical | MirrorHorizontal);
    EXPECT_EQ(Columns(both, 0), "210.......");
    EXPECT_EQ(Rows(both, 0), "3210......");
}

TEST(ImagePaintDC, PaintsOpaquelyWhateverTheBitmapsAlpha) {
    Raster raster(1, 1, Ground);
    const Bitmap clear = BitmapOf(1, 1, 32, [](int, int) { return 0x00ABCDEFU; });
    ImagePaintDC(raster.View(), clear, {});
    EXPECT_EQ(raster.Row(0)[0], 0xFFABCDEFu);
}

TEST(ImagePaintDC, PaintsNothingWithoutABitmapOrARectangle) {
    Raster raster(2, 2, Ground);
    ImagePaintDC(raster.View(), Bitmap(), {{0, 0, 2, 2}, {}});
    const Bitmap bitmap = BitmapOf(2, 2, 24, Place);
    ImagePaintDC(raster.View(), bitmap, {{0, 0, -2, 2}, {}});
    ImagePaintDC(raster.View(), bitmap, WholeInto(bitmap, {0, 0, 0, 2}));
    ImagePaintDC(raster.View(), bitmap, WholeInto(bitmap, {0, 0, 2, 0}));
    EXPECT_EQ(PixelsOf(raster), std::vector<uint32_t>(4, Ground));
    ImagePaintDC(raster.View(), bitmap, WholeInto(bitmap, {1, 1, 1, 1}));
    EXPECT_EQ(raster.Row(1)[1], Place(0, 0));
}

TEST(ImagePaintDC, ChangesNothingBesideItsPartOfASurface) {
    Raster whole(6, 3, Ground);
    const RasterView part{whole.Row(1) + 2, 2, 1, 6};
    ImagePaintDC(part, BitmapOf(4, 4, 24, Place), {{-1, -1, 9, 9}, {0, 0, 9, 9}});
    EXPECT_EQ(Columns(whole, 0), "......");
    EXPECT_EQ(Columns(whole, 1), "..12..");
    EXPECT_EQ(Columns(whole, 2), "......");
}

uint32_t Blended(uint32_t source, uint32_t target, double weight) {
    return static_cast<uint32_t>(
        std::lround((source * weight + target * (255 - weight)) / 255));
}

TEST(ImagePaintTransparent, BlendsTheWholePictureWithConstantAlpha) {
    for (const int alpha : {0, 1, 64, 127, 128, 200, 254, 255}) {
        Raster raster(4, 4, Ground);
        ImagePaintTransparent(raster.View(), BitmapOf(4, 4, 24, Speckled), {},
                              static_cast<uint8_t>(alpha));
        for (int i = 0; i < 16; ++i) {
            const uint32_t pixel = raster.Row(i / 4)[i % 4];
            EXPECT_EQ(pixel >> 24, 255u);
            for (const int shift : {0, 8, 16})
                EXPECT_EQ(pixel >> shift & 255,
                          Blended(Speckled(i % 4, i / 4) >> shift & 255,
                                  Ground >> shift & 255, alpha));
        }
    }
}

TEST(ImagePaintTransparent, IsExactAtBothEnds) {
    for (int target = 0; target < 256; ++target) {
        Raster raster(2, 1, 0xFF000000 | static_cast<uint32_t>(target) * 0x010101U);
        const uint32_t before = raster.Row(0)[0];
        const Bitmap bitmap = BitmapOf(
            2, 1, 32, [](int x, int) { return x == 0 ? 0x00C86432U : 0xFFC86432U; });
        ImagePaintTransparent(raster.View(), bitmap, {});
        EXPECT_EQ(raster.Row(0)[0], before);
        EXPECT_EQ(raster.Row(0)[1], 0xFFC86432u);
    }
}

TEST(ImagePaintTransparent, CountsTheBitmapsAlphaTimesTheConstantOne) {
    Raster raster(2, 1, 0xFF000000);
    const Bitmap bitmap =
        BitmapOf(2, 1, 32, [](int x, int) { return x == 0 ? 0x80FFFFFFU : 0xFFFFFFFFU; });
    ImagePaintTransparent(raster.View(), bitmap, {});
    EXPECT_EQ(raster.Row(0)[0], 0xFF808080u);
    raster = Raster(2, 1, 0xFF000000);
    ImagePaintTransparent(raster.View(), bitmap, {}, 127);
    EXPECT_EQ(raster.Row(0)[0], 0xFF404040u); // 128 * 127 / 255 = 63.7
    EXPECT_EQ(raster.Row(0)[1], 0xFF7F7F7Fu);
}

TEST(ImagePaintTransparent, HonoursTransparentPaletteEntries) {
    Bitmap bitmap = ImageConvertDepth(
        BitmapOf(2, 1, 24, [](int x, int) { return x == 0 ? 0xFFFF0000U : 0xFF00FF00U; }),
        ImageDepth::Bits8);
    BYTE table[256];
    std::fill_n(table, 256, BYTE{255});
    table[bitmap.Row(0)[0]] = 0;
    FreeImage_SetTransparencyTable(bitmap.Handle(), table, 256);
    Raster raster(2, 1, Ground);
    ImagePaintTransparent(raster.View(), bitmap, {});
    EXPECT_EQ(raster.Row(0)[0], Ground);
    EXPECT_EQ(raster.Row(0)[1], 0xFF00FF00u);
}

TEST(BlendColor, LaysOneColourOverARectangle) {
    for (const PixelRect& rect : {PixelRect{1, 1, 3, 2}, {-2, -2, 5, 5}, {4, 3, 9, 9}}) {
        Raster blended(6, 5, Ground);
        BlendColor(blended.View(), rect, 0x00C86432, 127);
        Raster expected(6, 5, Ground);
        const Bitmap filled = AllocateEx(rect.Width, rect.Height, 0x003264C8);
        ImagePaintTransparent(expected.View(), filled, WholeInto(filled, rect), 127);
        EXPECT_EQ(PixelsOf(blended), PixelsOf(expected));
        EXPECT_NE(PixelsOf(blended), std::vector<uint32_t>(30, Ground));
    }
}

TEST(BlendColor, IsTheNearestOfTheExactMixForEveryValue) {
    Raster greys(256, 1);
    for (uint32_t weight = 0; weight < 256; ++weight)
        for (uint32_t over = 0; over < 256; ++over) {
            for (uint32_t under = 0; under < 256; ++under)
                greys.Row(0)[under] = 0xFF000000 | under << 16 | (255 - under) << 8 | 7;
            BlendColor(greys.View(), {0, 0, 256, 1}, over << 16 | over << 8 | over,
                       static_cast<uint8_t>(weight));
            for (uint32_t under = 0; under < 256; ++under) {
                const auto mixed = [&](uint32_t below) {
                    const double exact = (over * weight + below * (255 - weight)) / 255.0;
                    return static_cast<uint32_t>(std::lround(exact));
                };
                ASSERT_EQ(greys.Row(0)[under], 0xFF000000 | mixed(under) << 16 |
                                                   mixed(255 - under) << 8 | mixed(7))
                    << over << " over " << under << " with " << weight;
            }
        }
}

} // namespace
} // namespace vardenix::tests
