#pragma once

#include <cstdint>

namespace vardenix {

#pragma pack(push, 1)
// One post as the L file holds it: nine bytes, little-endian. The fields are unaligned,
// so take their values, never their addresses.
struct TerrainPost {
    int32_t TileOffset; // the tile number at level 2; no file offset in spite of its name
    int16_t Elevation;  // feet, also below 0
    uint8_t Palette;    // index into the palette of theater.map
    uint8_t X1;         // carried, shown and edited, never interpreted
    uint8_t X2;
};
#pragma pack(pop)

static_assert(sizeof(TerrainPost) == 9);

inline bool operator==(const TerrainPost& a, const TerrainPost& b) {
    return a.TileOffset == b.TileOffset && a.Elevation == b.Elevation &&
           a.Palette == b.Palette && a.X1 == b.X1 && a.X2 == b.X2;
}

} // namespace vardenix
