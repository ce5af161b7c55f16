#include "pictures/ImageLayer.h"

#include "pictures/ImageScaling.h"
#include "support/PictureMaker.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vardenix::tests {
namespace {

uint32_t Clear(int x, int y) {
    return static_cast<uint32_t>(x * 50 + y) << 24 | (Speckled(x, y) & 0xFFFFFF);
}

TEST(ImageLayer, AllocatesABitmapFilledWithAColour) {
    const Bitmap bitmap = AllocateEx(3, 2, 0x00302010); // blue 30, green 20, red 10
    EXPECT_EQ(bitmap.BitsPerPixel(), 24);
    EXPECT_EQ(bitmap.Width(), 3);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(PixelOf(bitmap, i % 3, i / 3), 0xFF102030);
    EXPECT_EQ(ErrorOf([] { AllocateEx(0, 2, 0); }).NumberValue(), 5);
    EXPECT_EQ(ErrorOf([] { AllocateEx(2, 40000, 0); }).NumberValue(), 5);
}

TEST(ImageLayer, ThresholdMakesWhiteFromTheThresholdOn) {
    const Bitmap greys = BitmapOf(3, 1, 24, [](int x, int) {
        return 0xFF000000 | static_cast<uint32_t>(126 + x) * 0x010101U;
    });
    const Bitmap mask = ConvertToGreyscale(Threshold(greys, 127));
    ASSERT_EQ(mask.BitsPerPixel(), 8);
    EXPECT_EQ(mask.Row(0)[0], 0);
    EXPECT_EQ(mask.Row(0)[1], 255);
    EXPECT_EQ(mask.Row(0)[2], 255);
}

TEST(ImageLayer, SetsAlphaFromAnEightBitMaskOfTheSameSizeAlone) {
    Bitmap bitmap = BitmapOf(2, 1, 32, Speckled);
    const Bitmap mask = ConvertToGreyscale(
        BitmapOf(2, 1, 24, [](int x, int) { return x == 0 ? 0xFF000000 : 0xFFFFFFFF; }));
    EXPECT_TRUE(SetChannel(bitmap, mask, AlphaChannel));
    EXPECT_EQ(PixelOf(bitmap, 0, 0), Speckled(0, 0) & 0xFFFFFF);
    EXPECT_EQ(PixelOf(bitmap, 1, 0), Speckled(1, 0));
    Bitmap other = BitmapOf(3, 1, 32, Speckled);
    EXPECT_FALSE(SetChannel(other, mask, AlphaChannel));
    EXPECT_FALSE(SetChannel(bitmap, BitmapOf(2, 1, 24, Speckled), AlphaChannel));
    EXPECT_FALSE(SetChannel(bitmap, Bitmap(), AlphaChannel));
}

TEST(ImageLayer, MasksTheDarkPartsOfANightPictureWhateverItsDepth) {
    const ColorAt night = [](int x, int) { return x == 1 ? 0xFFFFE0A0U : 0xFF101030U; };
    for (const int bits : {24, 32}) {
        const Bitmap masked = MaskNightPicture(BitmapOf(3, 2, bits, night));
        EXPECT_EQ(PixelOf(masked, 0, 1), 0x00101030u) << bits;
        EXPECT_EQ(PixelOf(masked, 1, 1), 0xFFFFE0A0u) << bits;
    }
    EXPECT_FALSE(MaskNightPicture(Bitmap()));
}

TEST(ImageLayer, CopiesAreApart) {
    Bitmap bitmap = BitmapOf(2, 2, 24, Speckled);
    const Bitmap copy = Clone(bitmap);
    bitmap.Row(0)[0] ^= 0xFF;
    EXPECT_EQ(PixelOf(copy, 0, 0), Speckled(0, 0));
    EXPECT_FALSE(Clone(Bitmap()));
}

TEST(ImageLayer, BitmapsBecomePicturesAndComeBack) {
    const Raster picture = BitmapToPicture(BitmapOf(3, 2, 32, Clear));
    ASSERT_EQ(picture.Width(), 3);
    ASSERT_EQ(picture.Height(), 2);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(picture.Row(y)[x], Clear(x, y));
    Raster copy = picture;
    const Bitmap back = PictureToBitmap(copy.View());
    EXPECT_EQ(back.BitsPerPixel(), 32);
    EXPECT_EQ(PixelOf(back, 2, 1), Clear(2, 1));
    EXPECT_EQ(BitmapToHBitmap(BitmapOf(3, 2, 24, Clear)).Row(1)[2],
              Clear(2, 1) | 0xFF000000);
    EXPECT_EQ(ErrorOf([] { BitmapToPicture(Bitmap()); }).NumberValue(), 5);
    EXPECT_EQ(ErrorOf([] { PictureToBitmap(RasterView()); }).NumberValue(), 5);
}

TEST(AdjustPictureBrightness, ScalesEachColourAndClamps) {
    const auto expected = [](uint32_t value, double percentage) {
        return static_cast<uint32_t>(
            std::floor(std::min(255.0, value * (100 + percentage) / 100) + 0.5));
    };
    for (const double percentage : {-100.0, -50.0, 0.0, 33.0, 200.0}) {
        const Bitmap bitmap = BitmapOf(4, 4, 24, Speckled);
        const Bitmap result = AdjustPictureBrightness(bitmap, percentage);
        for (int i = 0; i < 16; ++i)
            for (const int shift : {0, 8, 16})
                EXPECT_EQ(PixelOf(result, i % 4, i / 4) >> shift & 255,
                          expected(Speckled(i % 4, i / 4) >> shift & 255, percentage));
        EXPECT_EQ(PixelOf(bitmap, 1, 1), Speckled(1, 1));
    }
}

TEST(AdjustPictureBrightness, GivesNoPictureForOtherDepths) {
    const Bitmap bitmap = BitmapOf(4, 4, 24, Speckled);
    for (const auto depth : {ImageDepth::Bits1, ImageDepth::Bits4,
                             ImageDepth::Bits16As555, ImageDepth::Bits16As565})
        EXPECT_FALSE(AdjustPictureBrightness(ImageConvertDepth(bitmap, depth), 20));
    EXPECT_TRUE(
        AdjustPictureBrightness(ImageConvertDepth(bitmap, ImageDepth::Bits8), 20));
    EXPECT_FALSE(AdjustPictureBrightness(Bitmap(), 20));
}

TEST(AdjustPictureBrightness, ChangesASurfaceInPlaceAndNothingBesideIt) {
    Raster whole(5, 4, 0xFF404040);
    RasterView part{whole.Row(1) + 1, 3, 2, 5};
    AdjustPictureBrightness(part, 50);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 5; ++x) {
            const bool inside = x >= 1 && x < 4 && y >= 1 && y < 3;
            EXPECT_EQ(whole.Row(y)[x], inside ? 0xFF606060u : 0xFF404040u);
        }
    AdjustPictureBrightness(part, 0);
    EXPECT_EQ(whole.Row(1)[1], 0xFF606060u);
    AdjustPictureBrightness(RasterView(), 50);
}

TEST(ImageLayer, AnswersFormatQuestions) {
    EXPECT_EQ(FormatFromFileName("C:\\dds\\H1.DDS"), PictureFormat::Dds);
    EXPECT_EQ(FormatFromFileName("/a b/c.jpe"), PictureFormat::Jpeg);
    EXPECT_EQ(FormatFromFileName("/a.tga/c"), PictureFormat::Unknown);
    EXPECT_EQ(FormatName(PictureFormat::Targa), "TARGA");
    EXPECT_EQ(FormatName(PictureFormat::Unknown), "");
    EXPECT_EQ(FormatExtensions(PictureFormat::Jpeg), "jpg,jif,jpeg,jpe");
    EXPECT_EQ(FormatExtensions(PictureFormat::Unknown), "");
    EXPECT_TRUE(SupportsReading(PictureFormat::Dds));
    EXPECT_TRUE(SupportsReading(PictureFormat::Bmp));
    EXPECT_FALSE(SupportsReading(PictureFormat::Png));
    EXPECT_FALSE(SupportsReading(PictureFormat::Unknown));
    EXPECT_TRUE(SupportsWriting(PictureFormat::Bmp));
    EXPECT_FALSE(SupportsWriting(PictureFormat::Dds));
    EXPECT_FALSE(SupportsWriting(PictureFormat::Unknown));
    EXPECT_TRUE(SupportsDepth(PictureFormat::Targa, 32));
    EXPECT_FALSE(SupportsDepth(PictureFormat::Jpeg, 32));
    EXPECT_FALSE(SupportsDepth(PictureFormat::Unknown, 24));
}

TEST(ImageSession, MayLieInsideAnother) {
    const ImageSession outer;
    { const ImageSession inner; }
    EXPECT_EQ(FormatName(PictureFormat::Dds), "DDS");
}

} // namespace
} // namespace vardenix::tests
