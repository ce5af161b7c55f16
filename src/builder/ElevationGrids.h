#pragma once

#include "levels/Terrain.h"

#include <array>
#include <cstdint>

namespace vardenix {

// How four heights become one, by the numbers of BreakElv.
enum class Downsampling : int32_t { Rms = 1, SimpleMean = 2, Max = 3 };

// The elevation grids of a rebuild, ElvLevel0 to ElvLevel5, in serial order. Only the one
// that is read and the one that is written take room.
class ElevationGrids {
public:
    // A finest grid of zeros, four times as wide as level 2; error 7 without memory.
    explicit ElevationGrids(int32_t mapWidth);

    // Computes the grid of a level, 1 to 5, from that of the level above it, and frees
    // the one two levels up.
    void DownsampleLevel(int32_t level, Downsampling method);

    // Heights a side of a level's grid: half of the level above, rounded down.
    int32_t WidthOf(int32_t level) const { return widths_.at(Index(level)); }
    // All heights of a grid, none when it is not there.
    std::span<int16_t> Heights(int32_t level) { return grids_.at(Index(level)).Values(); }
    std::span<const int16_t> Heights(int32_t level) const {
        return grids_.at(Index(level)).Values();
    }

private:
    static size_t Index(int32_t level) { return static_cast<size_t>(level); }

    std::array<int32_t, 6> widths_{};
    std::array<HeightArray, 6> grids_;
};

} // namespace vardenix
