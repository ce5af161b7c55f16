#include "pictures/ImageScaling.h"

#include "support/PictureMaker.h"

#include <FreeImage.h>
#include <gtest/gtest.h>

#include <string>

namespace vardenix::tests {
namespace {

std::string Sides(const Bitmap& bitmap) {
    return std::to_string(bitmap.Width()) + "x" + std::to_string(bitmap.Height());
}

// Of a bitmap of 100 by 40.
std::string Rescaled(const RescaleSize& size) {
    return Sides(ImageRescaleEx(BitmapOf(100, 40, 24, Speckled), size));
}

TEST(ImageRescaleEx, TakesWholePixels) {
    EXPECT_EQ(Rescaled({50, 60}), "50x60");
    EXPECT_EQ(Rescaled({50, 60, true}), "50x60"); // percent is for fractions alone
}

TEST(ImageRescaleEx, TakesFractionsRoundedHalfToEven) {
    EXPECT_EQ(Rescaled({0.5, 2.0}), "50x80");
    EXPECT_EQ(Rescaled({50.0, 25.0, true}), "50x10");
    EXPECT_EQ(Rescaled({0.125, 0.0625}), "12x2"); // 12.5 and 2.5
    EXPECT_EQ(Rescaled({0.135, 40}), "14x40");    // 13.5
    EXPECT_EQ(Rescaled({7, 0.5}), "7x20");
}

TEST(ImageRescaleEx, KeepsTheAspectWhereOneSideIsMissing) {
    EXPECT_EQ(Rescaled({50, {}}), "50x20");
    EXPECT_EQ(Rescaled({{}, 20}), "50x20");
    EXPECT_EQ(Rescaled({0, 20}), "50x20");
    EXPECT_EQ(Rescaled({-3, 20}), "50x20");
    EXPECT_EQ(Rescaled({1, {}}), "1x1"); // 0.4 of a pixel
}

TEST(ImageRescaleEx, GivesBackTheInputWhereNothingChanges) {
    for (const RescaleSize& size :
         {RescaleSize{}, {100, {}}, {{}, 40}, {100, 40}, {1.0, {}}}) {
        Bitmap bitmap = BitmapOf(100, 40, 24, Speckled);
        const FIBITMAP* handle = bitmap.Handle();
        const Bitmap result = ImageRescaleEx(std::move(bitmap), size);
        EXPECT_EQ(result.Handle(), handle);
    }
}

TEST(ImageRescaleEx, MakesACopyWhereItIsForced) {
    const Bitmap bitmap = BitmapOf(100, 40, 24, Speckled);
    const Bitmap copy = ImageRescaleEx(bitmap, {100, {}}, ImageFilter::Bicubic, true);
    EXPECT_NE(copy.Handle(), bitmap.Handle());
    EXPECT_EQ(Sides(copy), "100x40");
    Bitmap moved = BitmapOf(100, 40, 24, Speckled);
    const FIBITMAP* handle = moved.Handle();
    const Bitmap forced =
        ImageRescaleEx(std::move(moved), {100, 40}, ImageFilter::Bicubic, true);
    EXPECT_NE(forced.Handle(), handle);
}

TEST(ImageRescaleEx, LeavesABitmapThatIsNotHandedOver) {
    const Bitmap bitmap = BitmapOf(10, 10, 24, Speckled);
    const Bitmap scaled = ImageRescaleEx(bitmap, {5, 5});
    EXPECT_EQ(Sides(bitmap), "10x10");
    const Bitmap same = ImageRescaleEx(bitmap, {10, 10});
    EXPECT_NE(same.Handle(), bitmap.Handle());
    EXPECT_EQ(PixelOf(same, 9, 9), Speckled(9, 9));
}

TEST(ImageRescaleEx, UsesTheBicubicFilter) {
    const Bitmap bitmap = BitmapOf(64, 64, 24, Speckled);
    const Bitmap scaled = ImageRescaleEx(bitmap, {16, 16});
    const Bitmap expected(FreeImage_Rescale(bitmap.Handle(), 16, 16, FILTER_BICUBIC));
    const Bitmap other(FreeImage_Rescale(bitmap.Handle(), 16, 16, FILTER_BOX));
    int differences = 0;
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(PixelOf(scaled, i % 16, i / 16), PixelOf(expected, i % 16, i / 16));
        differences += PixelOf(scaled, i % 16, i / 16) != PixelOf(other, i % 16, i / 16);
    }
    EXPECT_GT(differences, 0);
}

TEST(ImageRescaleEx, RefusesSidesThatCannotBeAndNoBitmap) {
    const Bitmap bitmap = BitmapOf(10, 10, 24, Speckled);
    const auto number = [&](const RescaleSize& size) {
        return ErrorOf([&] { ImageRescaleEx(bitmap, size); }).NumberValue();
    };
    EXPECT_EQ(number({32768, 1}), 5);
    EXPECT_EQ(number({1, 1e300}), 5);
    EXPECT_EQ(ErrorOf([] { ImageRescaleEx(Bitmap(), {1, 1}); }).NumberValue(), 5);
}

TEST(ImageConvertDepth, GoesToEveryDepth) {
    const Bitmap bitmap = BitmapOf(9, 9, 24, Speckled);
    for (const auto& [depth, bits] : {std::pair{ImageDepth::Bits1, 1},
                                      {ImageDepth::Bits4, 4},
                                      {ImageDepth::Bits8, 8},
                                      {ImageDepth::Bits16As555, 16},
                                      {ImageDepth::Bits16As565, 16},
                                      {ImageDepth::Bits24, 24},
                                      {ImageDepth::Bits32, 32}})
        EXPECT_EQ(ImageConvertDepth(bitmap, depth).BitsPerPixel(), bits);
    EXPECT_EQ(bitmap.BitsPerPixel(), 24);
}

TEST(ImageConvertDepth, TellsTheTwoKindsOf16BitsApart) {
    const Bitmap bitmap = BitmapOf(2, 2, 24, Speckled);
    const auto green = [&](ImageDepth depth) {
        return FreeImage_GetGreenMask(ImageConvertDepth(bitmap, depth).Handle());
    };
    EXPECT_EQ(green(ImageDepth::Bits16As555), 0x03E0u);
    EXPECT_EQ(green(ImageDepth::Bits16As565), 0x07E0u);
    const Bitmap first = ImageConvertDepth(bitmap, ImageDepth::Bits16As555);
    const Bitmap second = ImageConvertDepth(first, ImageDepth::Bits16As565);
    EXPECT_EQ(FreeImage_GetGreenMask(second.Handle()), 0x07E0u);
}

TEST(ImageConvertDepth, GivesBackABitmapOfThatDepth) {
    for (const auto depth : {ImageDepth::Bits8, ImageDepth::Bits16As555,
                             ImageDepth::Bits16As565, ImageDepth::Bits24}) {
        Bitmap bitmap = ImageConvertDepth(BitmapOf(2, 2, 32, Speckled), depth);
        const FIBITMAP* handle = bitmap.Handle();
        EXPECT_EQ(ImageConvertDepth(std::move(bitmap), depth).Handle(), handle);
    }
}

TEST(ImageConvertDepth, SplitsOrDithersToBlackAndWhite) {
    const Bitmap grey = BitmapOf(8, 8, 24, [](int, int) { return 0xFF646464U; }); // 100
    const auto whites = [&](const BlackAndWhite& how) {
        const Bitmap result = ImageConvertDepth(
            ImageConvertDepth(grey, ImageDepth::Bits1, how), ImageDepth::Bits24);
        int count = 0;
        for (int i = 0; i < 64; ++i)
            count += PixelOf(result, i % 8, i / 8) == 0xFFFFFFFF;
        return count;
    };
    EXPECT_EQ(whites({100}), 64);
    EXPECT_EQ(whites({101}), 0);
    EXPECT_NEAR(whites({0, true}), 25, 10); // 100 of 255 of 64
}

} // namespace
} // namespace vardenix::tests
