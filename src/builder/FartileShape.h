#pragma once

#include "pictures/Dxt1Writer.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace vardenix {

// The far levels, and their place in arrays of three.
constexpr int32_t FirstFarLevel = 3;
constexpr size_t FarLevels = 3;
constexpr size_t FarLevelIndex(int32_t level) {
    return static_cast<size_t>(level - FirstFarLevel);
}

constexpr int32_t LargestFarSize = 4096;

// Sizes of all far tiles of one run, in pixels and bytes.
class FartileShape {
public:
    // `farSize` is the edge of a far tile. Error 5, in words for the user, for a size
    // beyond LargestFarSize or so small that a tile of level 2 would have no pixel.
    explicit FartileShape(int32_t farSize);

    int32_t FarSize() const { return farSize_; }
    // Tiles of level 2 along a side of a far tile: 2, 4 or 8.
    static int32_t TilesAlong(int32_t level) { return 1 << (level - 2); }
    // The edge of one of them: an even share rounded half to even, so that they may fill
    // less than the far tile, or reach past it.
    int32_t PixelsOfTile(int32_t level) const { return pixels_[FarLevelIndex(level)]; }
    // Tiles begin and end where blocks of 4 by 4 pixels do.
    bool InWholeBlocks(int32_t level) const;

    // Bytes of one far tile in a container. The format takes half a byte for each pixel,
    // so that of a size that is no multiple of 4 the last blocks are cut off.
    size_t LinearSize() const;

    // The header of a container is that of a DDS file without its four-letter signature.
    static constexpr size_t HeaderBytes = 124;
    std::array<uint8_t, HeaderBytes> Header() const;

private:
    int32_t farSize_;
    std::array<int32_t, FarLevels> pixels_{};
};

} // namespace vardenix
