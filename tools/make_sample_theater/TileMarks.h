#pragma once

#include "make_sample_theater/Catalogue.h"

#include <cstdint>
#include <vector>

namespace vardenix::sample {

constexpr double FeetPerPost = 3280.84;

// As the catalogue file has them: feet, first up the tile, then to the right.
struct AreaMark {
    int32_t Type = 0; // 1 water, 7 thick forest
    float Radius = 0;
    float Up = 0;
    float Right = 0;
};
struct PathMark {
    int32_t Type = 0; // 2 river, 10 road, 11 railroad, 12 bridge
    float Width = 0;
    float StartUp = 0;
    float StartRight = 0;
    float EndUp = 0;
    float EndRight = 0;
};

struct TileMarks {
    std::vector<AreaMark> Areas;
    std::vector<PathMark> Paths;
};

// Circles that fill the water or the thick forest of a tile's picture, largest first, and
// the lines its ways were drawn from.
TileMarks MarksOf(const Tile& tile);

} // namespace vardenix::sample
