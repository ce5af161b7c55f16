// BMP files made byte by byte, of every kind that is read.
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "pictures/PictureGuard.h"
#include "support/PictureMaker.h"

#include <gtest/gtest.h>

#include <string>

namespace vardenix::tests {
namespace {

struct BmpKind {
    uint32_t Bits = 24;
    uint32_t Packing = 0;
    uint32_t HeaderLength = 40;
    std::string Extra{};   // the header's rest beyond 40 bytes, or masks behind it
    std::string Palette{}; // blue, green, red, 0
    uint32_t Colors = 0;   // told in the header
};

std::string Bmp(uint32_t width, uint32_t height, const std::string& pixels,
                const BmpKind& kind = {}) {
    const std::string header = Little(kind.HeaderLength, 4) + Little(width, 4) +
                               Little(height, 4) + Little(1, 2) + Little(kind.Bits, 2) +
                               Little(kind.Packing, 4) + std::string(12, '\0') +
                               Little(kind.Colors, 4) + Little(0, 4) + kind.Extra +
                               kind.Palette;
    const auto begin = static_cast<uint32_t>(14 + header.size());
    return "BM" + Little(0, 8) + Little(begin, 4) + header + pixels;
}

Bitmap Decode(const std::string& file) {
    return ImageDecode(PictureFormat::Bmp, BytesOf(file), "a path");
}

RuntimeError Refusal(const std::string& file) {
    return ErrorOf([&] { Decode(file); });
}

// 0xRRGGBB of every pixel, rows from the top.
std::vector<uint32_t> Colors(const Bitmap& bitmap) {
    std::vector<uint32_t> colors = PixelsOf(BitmapToPicture(bitmap));
    for (uint32_t& color : colors)
        color &= 0xFFFFFF;
    return colors;
}
using Rgb = std::vector<uint32_t>;

void ExpectEachCutRefused(const std::string& file) {
    for (size_t length = 0; length < file.size(); ++length)
        ASSERT_EQ(Refusal(file.substr(0, length)).NumberValue(), 481)
            << length << " bytes";
    EXPECT_EQ(Refusal(file).NumberValue(), 0);
}

std::string With(std::string file, size_t offset, const std::string& bytes) {
    return file.replace(offset, bytes.size(), bytes);
}

// Black, red, green, blue.
const std::string FourColors("\0\0\0\0\0\0\xFF\0\0\xFF\0\0\xFF\0\0\0", 16);

TEST(BmpGuard, ReadsBlueGreenRedFromTheBottomUp) {
    const std::string rows = "\1\2\3\4\5\6xx\7\10\11\12\13\14yy";
    EXPECT_EQ(Colors(Decode(Bmp(2, 2, rows))),
              (Rgb{0x090807, 0x0C0B0A, 0x030201, 0x060504}));
    // A height below zero stands for rows from the top.
    EXPECT_EQ(Colors(Decode(Bmp(2, 0 - 2U, rows))),
              (Rgb{0x030201, 0x060504, 0x090807, 0x0C0B0A}));
}

TEST(BmpGuard, ReadsFourBytesAPixelWithoutTheFourth) {
    EXPECT_EQ(Colors(Decode(Bmp(2, 1, "\1\2\3\xFF\4\5\6\1", {32}))),
              (Rgb{0x030201, 0x060504}));
}

TEST(BmpGuard, ReadsSixteenBitsAsFiveFiveFive) {
    // Red 31, green 0, blue 0; then red 0, green 16 (131.6 of 255), blue 31.
    const std::string row = Little(0x7C00, 2) + Little(16 << 5 | 31, 2);
    EXPECT_EQ(Colors(Decode(Bmp(2, 1, row, {16}))), (Rgb{0xFF0000, 0x0084FF}));
}

TEST(BmpGuard, ReadsMaskedPixels) {
    const std::string masks565 = Little(0xF800, 4) + Little(0x7E0, 4) + Little(0x1F, 4);
    const std::string row = Little(0xF800, 2) + Little(32 << 5, 2); // 129.5 of 255
    EXPECT_EQ(Colors(Decode(Bmp(2, 1, row, {16, 3, 40, masks565}))),
              (Rgb{0xFF0000, 0x008200}));
    // In a header that has the masks inside, and the colours in another order.
    const std::string rest = Little(0xFF, 4) + Little(0xFF00, 4) + Little(0xFF0000, 4) +
                             std::string(108 - 52, '\0');
    EXPECT_EQ(Colors(Decode(Bmp(1, 1, Little(0xAA010203, 4), {32, 3, 108, rest}))),
              (Rgb{0x030201}));
    // No mask, no colour; and bits that do not lie side by side are a number all the
    // same.
    const std::string odd = Little(0, 4) + Little(0x80000001, 4) + Little(0xFFFFFFFF, 4);
    EXPECT_EQ(Colors(Decode(Bmp(1, 1, Little(0xFFFFFFFF, 4), {32, 3, 40, odd}))),
              (Rgb{0x00FFFF}));
}

TEST(BmpGuard, ReadsPalettesOfEveryDepth) {
    // 1 bit, the first pixel in the highest one.
    EXPECT_EQ(Colors(Decode(Bmp(3, 1, std::string("\xA0\0\0\0", 4),
                                {1, 0, 40, {}, FourColors.substr(0, 8)}))),
              (Rgb{0xFF0000, 0, 0xFF0000}));
    EXPECT_EQ(Colors(Decode(Bmp(3, 1, std::string("\x12\x30\0\0", 4),
                                {4, 0, 40, {}, FourColors, 4}))),
              (Rgb{0xFF0000, 0x00FF00, 0x0000FF}));
    // A number beyond the palette is black.
    EXPECT_EQ(Colors(Decode(Bmp(4, 1, std::string("\3\2\1\xC8", 4),
                                {8, 0, 40, {}, FourColors, 4}))),
              (Rgb{0x0000FF, 0x00FF00, 0xFF0000, 0}));
    // A count that the file has no room for ends where the pixels begin.
    EXPECT_EQ(Colors(Decode(Bmp(4, 1, std::string("\3\2\1\xC8", 4),
                                {8, 0, 40, {}, FourColors, 0xFFFFFFFF}))),
              (Rgb{0x0000FF, 0x00FF00, 0xFF0000, 0}));
}

TEST(BmpGuard, ReadsTheOldHeaderOfTwelveBytes) {
    const std::string palette("\0\0\0\0\0\xFF", 6);
    const std::string file = "BM" + Little(0, 8) + Little(32, 4) + Little(12, 4) +
                             Little(2, 2) + Little(1, 2) + Little(1, 2) + Little(1, 2) +
                             palette + std::string("\x40\0\0\0", 4);
    EXPECT_EQ(Colors(Decode(file)), (Rgb{0, 0xFF0000}));
}

TEST(BmpGuard, UnpacksRunsOfEightBits) {
    const auto colors = [](const std::string& runs) {
        return Colors(Decode(Bmp(4, 3, runs, {8, 1, 40, {}, FourColors, 4})));
    };
    const uint32_t r = 0xFF0000;
    const uint32_t g = 0x00FF00;
    const uint32_t b = 0x0000FF;
    // From the bottom: three red and a green; black up to the second of two that follow
    // one by one with their padding; a row that ends early.
    EXPECT_EQ(colors(std::string("\3\1\1\2\0\0"
                                 "\0\3\3\2\1x\1\3\0\0"
                                 "\1\1\0\1",
                                 20)),
              (Rgb{r, 0, 0, 0, b, g, r, b, r, r, r, g}));
    // One right and two up; what reaches past the row is left out; the end early.
    EXPECT_EQ(colors(std::string("\0\2\1\2\x80\1\0\1", 8)),
              (Rgb{0, r, r, r, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(BmpGuard, UnpacksRunsOfFourBits) {
    const std::string runs("\3\x12\1\x30\0\0" // red, green, red by turns, then blue
                           "\0\4\x32\x10\0\1",
                           12);
    EXPECT_EQ(
        Colors(Decode(Bmp(4, 2, runs, {4, 2, 40, {}, FourColors, 4}))),
        (Rgb{0x0000FF, 0x00FF00, 0xFF0000, 0, 0xFF0000, 0x00FF00, 0xFF0000, 0x0000FF}));
}

TEST(BmpGuard, RefusesEachCutFile) {
    ExpectEachCutRefused(Bmp(3, 2, std::string(9 + 3 + 9, 'x')));
    ExpectEachCutRefused(Bmp(5, 2, std::string(6, 'x'), {4, 0, 40, {}, FourColors, 4})
                             .append(std::string(1, 'x')));
    ExpectEachCutRefused(
        Bmp(2, 2, std::string("\2\1\0\0\2\1", 6), {8, 1, 40, {}, FourColors, 4}));
}

TEST(BmpGuard, RefusesWhatIsNoPicture) {
    const std::string good = Bmp(2, 1, std::string(8, 'x'));
    EXPECT_EQ(Refusal(good).NumberValue(), 0);
    EXPECT_EQ(Refusal(With(good, 0, "MB")).Detail(), "a path: not a BMP file");
    EXPECT_EQ(Refusal(With(good, 14, Little(41, 4))).Detail(),
              "a path: a header of 41 bytes is not known");
    for (const uint32_t side : {0U, 8193U, 0x7FFFFFFFU})
        EXPECT_EQ(Refusal(With(good, 18, Little(side, 4))).NumberValue(), 481) << side;
    for (const uint32_t side : {0U, 8193U, 0x80000000U})
        EXPECT_EQ(Refusal(With(good, 22, Little(side, 4))).NumberValue(), 481) << side;
    for (const uint32_t bits : {0U, 2U, 7U, 48U, 64U})
        EXPECT_EQ(Refusal(With(good, 28, Little(bits, 2))).NumberValue(), 481) << bits;
    for (const uint32_t packing : {1U, 2U, 3U, 4U, 5U, 0xFFFFFFFFU})
        EXPECT_EQ(Refusal(With(good, 30, Little(packing, 4))).NumberValue(), 481)
            << packing;
    EXPECT_EQ(Refusal(With(good, 10, Little(53, 4))).Detail(),
              "a path: its pixels begin inside its header");
    EXPECT_EQ(Refusal(With(good, 10, Little(0xFFFFFFFF, 4))).NumberValue(), 481);
    // Runs do not go from the top down.
    EXPECT_EQ(
        Refusal(Bmp(2, 0 - 1U, std::string("\2\1\0\1", 4), {8, 1, 40, {}, FourColors, 4}))
            .NumberValue(),
        481);
    EXPECT_EQ(Refusal(Bmp(1, 1, "\1xxx", {8})).Detail(),
              "a path: the palette is missing");
}

TEST(BmpGuard, AsksForNoMemoryOutOfProportion) {
    // Four bytes that would leave a picture of 64 megabytes empty.
    const RuntimeError error = Refusal(
        Bmp(8192, 8192, std::string("\1\1\0\1", 4), {8, 1, 40, {}, FourColors, 4}));
    EXPECT_EQ(error.Detail(), "a path: the file is cut: its 74 bytes do not fill the "
                              "picture");
}

TEST(BmpGuard, ReadsTheLargestSides) {
    const std::string wide(8192 * 3, '\x11');
    EXPECT_EQ(Decode(Bmp(8192, 1, wide)).Width(), 8192);
    EXPECT_EQ(Colors(Decode(Bmp(1, 8192, std::string(8192 * 4, '\x22')))).back(),
              0x222222U);
}

} // namespace
} // namespace vardenix::tests
