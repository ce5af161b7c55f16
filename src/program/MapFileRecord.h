#pragma once

#include <cstdint>

namespace vardenix {

struct MapPaletteEntry {
    uint8_t Red = 0;
    uint8_t Green = 0;
    uint8_t Blue = 0;
    uint8_t Alpha = 0;
};

// theater.map as it stands in the file, little-endian. No value is checked against
// another one or against the level files.
struct MapFileRecord {
    float FeetBetweenL0Tiles = 0;
    int32_t MEAWidth = 0;
    int32_t MEAHeight = 0;
    float FeetBetweenMEAPoints = 0;
    int32_t NumberOfLODs = 0;
    int32_t LastNearTiledLOD = 0;
    int32_t LastFarTiledLOD = 0;
    MapPaletteEntry Palette[256]; // indexed by the Palette byte of a post
    struct LevelSize {
        int32_t Width = 0; // segments
        int32_t Height = 0;
    } Levels[6];       // L0 to L5
    int32_t Flags = 0; // opaque
    float Longitude = 0;
    float Latitude = 0;
};

static_assert(sizeof(MapFileRecord) == 1112);

} // namespace vardenix
