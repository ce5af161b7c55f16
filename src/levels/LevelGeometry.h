#pragma once

#include <cstdint>

namespace vardenix {

// Sizes of one level of a theater, all from the width of level 2.
struct LevelGeometry {
    int32_t Level = 0;
    int32_t Width = 0;  // posts a side
    int32_t Blocks = 0; // whole blocks of 16 posts a side
    // Levels 0 and 1: posts of this level along the side of one post of level 2.
    int32_t Finer = 1;
    // Levels 3 to 5: posts of level 2 along the side of one post of this level.
    int32_t Coarser = 1;
    // What a tile number of level 2 is raised by in levels 0 and 1.
    int32_t Base = 0;

    int64_t AllBlocks() const { return int64_t{Blocks} * Blocks; }
};

// Of levels 0 to 5. A width that is no whole number is rounded half to even, and what is
// left beyond the last whole block takes no part. Error 9 when the blocks would reach
// past level 2, as those of level 3 do for 31 posts; 6 for a level wider than 32 bits.
LevelGeometry GeometryOf(int32_t level, int32_t mapWidth);

// The rows of blocks that PB1 counts for a level, rounded half to even.
int32_t RowsOfLevel(int32_t level, int32_t mapWidth);

} // namespace vardenix
