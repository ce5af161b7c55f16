#pragma once

#include "builder/RebuildView.h"
#include "theater/Terrain.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace vardenix {

// How four heights become one, by the numbers of BreakElv.
enum class Downsampling : int32_t { Rms = 1, SimpleMean = 2, Max = 3 };

// The elevation grids of a rebuild, ElvLevel0 to ElvLevel5, in serial order. Only the one
// that is read and the one that is written take room.
class ElevationGrids {
public:
    explicit ElevationGrids(int32_t mapWidth) : mapWidth_(mapWidth) {}

    // All grids are gone.
    void ClearElevationGrids();
    // The finest grid, of the master; error 5 for one of another size.
    void SetFinest(HeightArray heights);
    // Computes the grid of a level, 1 to 5, from that of the level above it, and frees
    // the one two levels up.
    void DownsampleLevel(int32_t level, Downsampling method);

    // Posts a side of a level's grid.
    int32_t WidthOf(int32_t level) const;
    // The height at column and row of a whole level, from 0; of a grid that is there.
    int16_t At(int32_t level, int32_t column, int32_t row) const;
    // Elements that a grid holds now.
    int32_t SizeOf(int32_t level) const { return Grid(level).UpperBound(); }

private:
    const HeightArray& Grid(int32_t level) const {
        return grids_.at(static_cast<size_t>(level));
    }

    int32_t mapWidth_;
    std::array<HeightArray, 6> grids_;
};

// A master elevation file that was chosen: the finest heights of the theater.
struct ElevationMaster {
    ElevationKind ElevationFileType = ElevationKind::None;
    std::string Path; // as it was picked, for opening
};

// Reads the heights of a master. The bar counts rows of blocks of an L0 file, and one
// step for an .elv file; events pass on every tenth row. Errors 53, 62 and the system's
// refusals; 32755 when the user stops it.
HeightArray ReadElevationFile(const ElevationMaster& master, int32_t mapWidth,
                              RebuildView& view,
                              const std::function<void(std::string)>& log);

} // namespace vardenix
