#pragma once

#include "pictures/Raster.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vardenix {

// With `weight` out of 255: (source * weight + target * (255 - weight)) / 255, rounded to
// nearest; all three 0 to 255. 255 is odd, so there are no halves to round.
constexpr uint32_t BlendPart(uint32_t source, uint32_t target, uint32_t weight) {
    return (source * weight + target * (255 - weight) + 127) / 255;
}

// BlendPart of the three colours of an opaque pixel, all at once: each has 16 bits of the
// number, which the sums of at most 255 * 255 fit, and (t + (t >> 8)) >> 8 with t = s +
// 128 is s / 255 rounded to nearest for each of these.
constexpr uint32_t BlendPixel(uint32_t target, uint32_t source, uint32_t weight) {
    constexpr uint64_t low = 0x00FF00FF00FF00FF;
    const auto apart = [](uint32_t pixel) {
        return (pixel | uint64_t{pixel} << 24) & low;
    };
    const uint64_t sum =
        apart(source) * weight + apart(target) * (255 - weight) + 0x0080008000800080;
    const uint64_t mixed = (sum + (sum >> 8 & low)) >> 8 & low;
    return OpaqueBlack | static_cast<uint32_t>(mixed | mixed >> 24);
}

constexpr size_t PixelsAtOnce = 4;

// Four pixels and their weights, a byte for each part; and sums of such parts. The
// compiler makes of them what the processor does at once.
using FourPixels [[gnu::vector_size(16)]] = uint8_t;
using FourSums [[gnu::vector_size(32)]] = uint16_t;

inline FourPixels FourOf(uint32_t pixel) {
    return std::bit_cast<FourPixels>(std::array{pixel, pixel, pixel, pixel});
}

// Each of four weights for the four parts of its pixel.
inline FourPixels WeightsOf(const uint8_t* weights) {
    FourPixels four{weights[0], weights[1], weights[2], weights[3]};
    four = __builtin_shufflevector(four, four, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21,
                                   6, 22, 7, 23);
    return __builtin_shufflevector(four, four, 0, 1, 0, 1, 2, 3, 2, 3, 4, 5, 4, 5, 6, 7,
                                   6, 7);
}

// BlendPixel for four at once: its sums fit 16 bits, and rounding goes as there.
inline void BlendFour(uint32_t* pixels, FourPixels source, FourPixels weights) {
    FourPixels target;
    std::memcpy(&target, pixels, sizeof target);
    const FourSums weight = __builtin_convertvector(weights, FourSums);
    const FourSums sum = __builtin_convertvector(source, FourSums) * weight +
                         __builtin_convertvector(target, FourSums) * (255 - weight) + 128;
    const FourPixels mixed =
        __builtin_convertvector((sum + (sum >> 8)) >> 8, FourPixels) |
        FourOf(OpaqueBlack);
    std::memcpy(pixels, &mixed, sizeof mixed);
}

// One colour over `count` opaque pixels, a multiple of PixelsAtOnce, with a weight for
// each; one of weight 0 keeps its value.
inline void BlendRow(uint32_t* pixels, uint32_t color, const uint8_t* weights,
                     size_t count) {
    const FourPixels source = FourOf(color);
    for (size_t i = 0; i < count; i += PixelsAtOnce)
        BlendFour(pixels + i, source, WeightsOf(weights + i));
}

// A row with one weight for all pixels, and any count of them.
inline void BlendRow(uint32_t* pixels, uint32_t color, uint8_t weight, size_t count) {
    const FourPixels source = FourOf(color);
    const FourPixels weights = FourOf(weight * 0x01010101U);
    size_t i = 0;
    for (; i + PixelsAtOnce <= count; i += PixelsAtOnce)
        BlendFour(pixels + i, source, weights);
    for (; i < count; ++i)
        pixels[i] = BlendPixel(pixels[i], color, weight);
}

} // namespace vardenix
