// The image library is the measure: every byte must be the library's own, whatever its
// version does.
#include "pictures/fast/SquareShrinking.h"

#include "pictures/Bitmap.h"
#include "pictures/fast/WeightedSums.h"
#include "support/PictureMaker.h"

#include <FreeImage.h>
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace vardenix::tests {
namespace {

using Fill = void (*)(Bitmap& bitmap, std::mt19937& random);

Bitmap FilledSquare(int side, int bits, Fill fill, std::mt19937& random) {
    Bitmap bitmap(FreeImage_Allocate(side, side, bits));
    fill(bitmap, random);
    return bitmap;
}

void ForEachByte(Bitmap& bitmap, const std::function<uint8_t(int x, int y)>& value) {
    for (int y = 0; y < bitmap.Height(); ++y) {
        uint8_t* row = bitmap.Row(y);
        for (int x = 0; x < bitmap.Width() * bitmap.BitsPerPixel() / 8; ++x)
            row[x] = value(x, y);
    }
}

void Noise(Bitmap& bitmap, std::mt19937& random) {
    ForEachByte(bitmap, [&](int, int) { return static_cast<uint8_t>(random()); });
}

// From 1 to `most`.
int UpTo(int most, std::mt19937& random) {
    return 1 + static_cast<int>(random() % static_cast<uint32_t>(most));
}

// Black and white make the filter overshoot on both sides.
void BlackAndWhite(Bitmap& bitmap, std::mt19937& random) {
    const int run = UpTo(40, random);
    ForEachByte(bitmap, [&](int x, int y) {
        return (x / run + y / run) % 2 == 0 ? uint8_t{0} : uint8_t{255};
    });
}

// Sums lie near the point where rounding turns, again and again.
void Ramp(Bitmap& bitmap, std::mt19937& random) {
    const int slope = UpTo(9, random);
    ForEachByte(bitmap,
                [&](int x, int y) { return static_cast<uint8_t>((x * slope + y) / 16); });
}

void Flat(Bitmap& bitmap, std::mt19937& random) {
    const auto value = static_cast<uint8_t>(random());
    ForEachByte(bitmap, [&](int, int) { return value; });
}

// What differs from the library's picture, or nothing.
std::string Difference(const Bitmap& source, const RgbaPicture& mine) {
    const Bitmap theirs(
        FreeImage_Rescale(source.Handle(), mine.Side, mine.Side, FILTER_BICUBIC));
    const int bytes = theirs.BitsPerPixel() / 8;
    for (int y = 0; y < mine.Side; ++y)
        for (int x = 0; x < mine.Side; ++x)
            for (int colour = 0; colour < 3; ++colour) {
                const int expected = theirs.Row(y)[x * bytes + 2 - colour];
                const int found = mine.Pixels.at(
                    (static_cast<size_t>(y) * static_cast<size_t>(mine.Side) +
                     static_cast<size_t>(x)) *
                        4 +
                    static_cast<size_t>(colour));
                if (expected != found)
                    return std::to_string(source.Width()) + " to " +
                           std::to_string(mine.Side) + " at " + std::to_string(x) + "," +
                           std::to_string(y) + ": " + std::to_string(expected) + " is " +
                           std::to_string(found);
            }
    return {};
}

TEST(SquareShrinking, GivesTheLibrarysBytesForTheSizesOfFarTiles) {
    std::mt19937 random(11);
    for (const int side : {512, 256, 64, 20})
        for (const Fill fill : {Noise, BlackAndWhite, Ramp, Flat}) {
            const SquareShrinker shrinker(side, {16, 8, 4});
            const Bitmap source = FilledSquare(side, 32, fill, random);
            for (const RgbaPicture& picture : shrinker.Shrink(*SquareOf(source)))
                ASSERT_EQ(Difference(source, picture), "");
        }
}

TEST(SquareShrinking, GivesTheLibrarysBytesForAnySizes) {
    std::mt19937 random(12);
    const Fill fills[] = {Noise, BlackAndWhite, Ramp, Flat};
    for (int round = 0; round < 300; ++round) {
        const int side = 1 + UpTo(150, random);
        const int to = UpTo(side - 1, random);
        const Bitmap source =
            FilledSquare(side, round % 2 == 0 ? 24 : 32, fills[round % 4], random);
        const auto pictures = SquareShrinker(side, {to}).Shrink(*SquareOf(source));
        ASSERT_EQ(pictures.size(), 1U);
        ASSERT_EQ(pictures[0].Side, to);
        ASSERT_EQ(Difference(source, pictures[0]), "");
    }
}

// The longest windows have the smallest weights and the largest error of their sums.
TEST(SquareShrinking, GivesTheLibrarysBytesForTheLargestPictures) {
    std::mt19937 random(13);
    const Bitmap source = FilledSquare(2048, 24, Noise, random);
    for (const RgbaPicture& picture :
         SquareShrinker(2048, {1, 4}).Shrink(*SquareOf(source)))
        ASSERT_EQ(Difference(source, picture), "");
}

TEST(WeightedSums, AreThoseOfOneProductAfterTheOther) {
    std::mt19937 random(15);
    std::vector<int16_t> rows(4 * 100);
    std::vector<int16_t> weights(48);
    for (auto* numbers : {&rows, &weights})
        for (int16_t& number : *numbers)
            number = static_cast<int16_t>(UpTo(255, random) - 128);
    const std::array<const int16_t*, RowsAtOnce> starts{&rows[0], &rows[100], &rows[200],
                                                        &rows[300]};
    for (const auto sums : {WeightedSums(starts, 37, weights.data(), 48),
                            NarrowWeightedSums(starts, 37, weights.data(), 48)})
        for (size_t row = 0; row < RowsAtOnce; ++row) {
            int expected = 0;
            for (size_t i = 0; i < 48; ++i)
                expected += rows.at(row * 100 + 37 + i) * weights.at(i);
            EXPECT_EQ(sums.at(row), expected);
        }
}

TEST(SquareShrinking, PixelsAreOpaque) {
    std::mt19937 random(14);
    const Bitmap source = FilledSquare(16, 32, Noise, random);
    const auto pictures = SquareShrinker(16, {2}).Shrink(*SquareOf(source));
    for (size_t pixel = 0; pixel < 4; ++pixel)
        EXPECT_EQ(pictures.at(0).Pixels.at(pixel * 4 + 3), 255);
}

TEST(SquareShrinking, TakesSquaresOf24And32BitsAlone) {
    EXPECT_TRUE(SquareOf(BitmapOf(8, 8, 24, Speckled)));
    EXPECT_TRUE(SquareOf(BitmapOf(8, 8, 32, Speckled)));
    EXPECT_FALSE(SquareOf(BitmapOf(8, 9, 24, Speckled)));
    EXPECT_FALSE(SquareOf(Bitmap(FreeImage_Allocate(8, 8, 8))));
    EXPECT_FALSE(SquareOf(Bitmap()));
}

TEST(SquareShrinking, RefusesWhatDoesNotShrink) {
    const auto make = [](int from, int to) {
        return ErrorOf([&] { SquareShrinker(from, {to}); }).NumberValue();
    };
    EXPECT_EQ(make(8, 8), 5);
    EXPECT_EQ(make(8, 0), 5);
    EXPECT_EQ(make(8193, 8), 5);
    EXPECT_EQ(make(8, 7), 0);
    const SquareShrinker shrinker(8, {4});
    const auto shrink = [&](int side) {
        return ErrorOf([&] {
                   const Bitmap source = BitmapOf(side, side, 24, Speckled);
                   shrinker.Shrink(*SquareOf(source));
               })
            .NumberValue();
    };
    EXPECT_EQ(shrink(9), 5);
    EXPECT_EQ(shrink(8), 0);
}

} // namespace
} // namespace vardenix::tests
