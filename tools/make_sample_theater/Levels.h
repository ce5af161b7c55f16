#pragma once

#include "make_sample_theater/Landscape.h"

#include <cstdint>
#include <filesystem>

namespace vardenix::sample {

struct Post {
    int32_t Tile = 0;
    int16_t Elevation = 0; // feet
    uint8_t Palette = 0;
    uint8_t X1 = 0;
    uint8_t X2 = 0;

    bool IsSea() const { return Tile == 0 && Elevation == 0; }
};

// Writes theater.L0 to theater.L5 with theater.O0 to theater.O5 into a folder, from the
// posts of level 2. In each level all segments of open sea share one block.
void WriteLevels(const Grid<Post>& posts, const std::filesystem::path& folder);

} // namespace vardenix::sample
