// Pixels blended four at once against one at a time, and one table for brightness against
// the image library's own step.
#include "pictures/Blending.h"

#include "pictures/ImageLayer.h"
#include "support/PictureMaker.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace vardenix::tests {
namespace {

std::vector<uint32_t> RandomPixels(size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<uint32_t> pixels(count);
    for (uint32_t& pixel : pixels)
        pixel = OpaqueBlack | (static_cast<uint32_t>(random()) & 0xFFFFFF);
    return pixels;
}

TEST(BlendRow, IsBlendPixelForEveryValueAndWeight) {
    for (uint32_t source = 0; source < 256; source += source % 3 + 1) {
        const uint32_t color = OpaqueBlack | source * 0x010101U;
        for (uint32_t weight = 0; weight < 256; ++weight) {
            std::vector<uint32_t> pixels(256);
            for (uint32_t value = 0; value < 256; ++value)
                pixels[value] =
                    OpaqueBlack | value << 16 | (255 - value) << 8 | (value ^ source);
            std::vector<uint32_t> one = pixels;
            for (uint32_t& pixel : one)
                pixel = BlendPixel(pixel, color, weight);
            BlendRow(pixels.data(), color, static_cast<uint8_t>(weight), 256);
            ASSERT_TRUE(pixels == one) << source << " with " << weight;
        }
    }
}

TEST(BlendRow, EveryPixelHasItsOwnWeight) {
    constexpr size_t count = 4096;
    std::vector<uint8_t> weights(count);
    for (size_t i = 0; i < count; ++i)
        weights[i] = static_cast<uint8_t>(i * 37 % 251 + i / 1000);
    std::vector<uint32_t> pixels = RandomPixels(count, 1);
    std::vector<uint32_t> one = pixels;
    for (size_t i = 0; i < count; ++i)
        one[i] = BlendPixel(one[i], 0xFF3A90F1, weights[i]);
    BlendRow(pixels.data(), 0xFF3A90F1, weights.data(), count);
    EXPECT_TRUE(pixels == one);
}

TEST(BlendRow, TakesAnyCountAndTouchesNothingBehind) {
    for (size_t count = 0; count < 12; ++count) {
        std::vector<uint32_t> pixels = RandomPixels(12, 2);
        std::vector<uint32_t> one = pixels;
        for (size_t i = 0; i < count; ++i)
            one[i] = BlendPixel(one[i], 0xFF8040C0, 99);
        BlendRow(pixels.data(), 0xFF8040C0, uint8_t{99}, count);
        EXPECT_EQ(pixels, one);
    }
}

TEST(BrightnessTable, DoesWhatTheLibraryDoes) {
    Raster picture(64, 48);
    const auto pixels = RandomPixels(64 * 48, 3);
    for (const double percentage :
         {-100.0, -99.0, -37.0, -1.0, 0.0, 1.0, 10.0, 33.0, 99.0, 100.0, 250.0}) {
        for (int y = 0; y < 48; ++y)
            std::copy_n(pixels.begin() + y * 64, 64, picture.Row(y));
        const Bitmap adjusted =
            AdjustPictureBrightness(PictureToBitmap(picture.View()), percentage);
        BrightnessTable(percentage).Apply(picture.View());
        ASSERT_TRUE(PixelsOf(picture) == PixelsOf(BitmapToPicture(adjusted)))
            << percentage;
    }
}

} // namespace
} // namespace vardenix::tests
