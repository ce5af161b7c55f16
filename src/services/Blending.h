#pragma once

#include "services/Raster.h"

#include <cstdint>

namespace vardenix {

// With `weight` out of 255: (source * weight + target * (255 - weight)) / 255, rounded to
// nearest; all three 0 to 255. 255 is odd, so there are no halves to round.
constexpr uint32_t BlendPart(uint32_t source, uint32_t target, uint32_t weight) {
    return (source * weight + target * (255 - weight) + 127) / 255;
}

// The same for the three colours of an opaque pixel, all at once: each has 16 bits of the
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

} // namespace vardenix
