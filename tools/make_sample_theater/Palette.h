#pragma once

#include "make_sample_theater/Picture.h"

#include <array>
#include <cstdint>
#include <vector>

namespace vardenix::sample {

struct PaletteEntry {
    uint8_t Red = 0;
    uint8_t Green = 0;
    uint8_t Blue = 0;
};
using Palette = std::array<PaletteEntry, 256>;

// The colours of a theater from the mean colours of its tiles. The two nearest colours
// are joined until 256 are left; entry 0 is that of the first tile, the sea.
Palette MakePalette(const std::vector<Colour>& means);

uint8_t NearestEntry(const Palette& palette, Colour colour);

} // namespace vardenix::sample
