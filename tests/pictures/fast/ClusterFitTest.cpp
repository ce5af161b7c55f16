#include "pictures/fast/ClusterFit.h"

#include <gtest/gtest.h>
#include <squish.h>

#include <algorithm>
#include <array>
#include <random>

namespace vardenix::tests {
namespace {

using Pixels = std::array<uint8_t, 64>;
using Block = std::array<uint8_t, 8>;

// Random pixels of one kind; each kind has its own ways to tie and to degenerate.
class PixelMaker {
public:
    explicit PixelMaker(unsigned seed) : random_(seed) {}

    Pixels Make(int kind) {
        std::array<int, 3> base{Below(256), Below(256), Below(256)};
        std::array<int, 3> step{Below(65) - 32, Below(65) - 32, Below(65) - 32};
        if (kind == 5) // colours whose differences cancel out along every channel
            step = {step[0], -step[0], 0};
        Pixels pixels{};
        for (size_t i = 0; i < 16; ++i) {
            const int along = Below(kind == 6 ? 2 : 8);
            for (size_t c = 0; c < 3; ++c)
                pixels[i * 4 + c] = static_cast<uint8_t>(
                    std::clamp(Value(kind, base[c], step[c], along), 0, 255));
            pixels[i * 4 + 3] = 255;
        }
        return pixels;
    }

private:
    int Below(int bound) {
        return static_cast<int>(random_() % static_cast<unsigned>(bound));
    }
    int Value(int kind, int base, int step, int along) {
        switch (kind) {
        case 0: // noise
            return Below(256);
        case 1: // nearly one colour
            return base + Below(3);
        case 2: // around one colour
            return base + Below(32) - 16;
        case 3: // two colours and noise
            return Below(2) == 0 ? base : 255 - base + Below(4);
        case 4: // black and white and grey
            return along * 36;
        default: // a ramp, or two colours
            return base + step * along;
        }
    }

    std::mt19937 random_;
};

constexpr int Kinds = 7;

TEST(ClusterFit, GivesTheBytesOfTheLibrary) {
    PixelMaker maker(1);
    for (int i = 0; i < 400 * Kinds; ++i) {
        const Pixels pixels = maker.Make(i % Kinds);
        Block expected{};
        squish::Compress(pixels.data(), expected.data(),
                         squish::kDxt1 | squish::kColourClusterFit);
        Block made = expected;
        ClusterFit(pixels, made);
        ASSERT_EQ(made, expected) << "block " << i;
    }
}

TEST(ClusterFit, LeavesOneColourToTheLibrary) {
    Pixels pixels;
    pixels.fill(77);
    Block block{1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_FALSE(ClusterFit(pixels, block));
    EXPECT_EQ(block, (Block{1, 2, 3, 4, 5, 6, 7, 8}));
    pixels[40] = 78;
    EXPECT_TRUE(ClusterFit(pixels, block));
}

} // namespace
} // namespace vardenix::tests
