#pragma once

#include <cstdint>
#include <string>

namespace vardenix {

// Class codes of terrain: of a set, of an area, of a tile in TileLookup.
enum TerrainClass : uint8_t {
    TerrainWater = 1,
    TerrainSwamp = 3,
    TerrainPlains = 4,
    TerrainBrush = 5,
    TerrainThinForest = 6,
    TerrainThickForest = 7,
    TerrainRocky = 8,
    TerrainUrban = 9,
};

enum PathType : uint8_t {
    PathRiver = 2,
    PathRoad = 10,
    PathRailRoad = 11,
    PathBridge = 12,
};

// The name a code is shown with; a code without one is shown as its number.
std::string TerrainName(uint8_t terrain);
std::string AreaTypeName(int32_t type);
std::string PathTypeName(int32_t type);

// The code that stands at an index of a list of the windows, counted from 0; 0 outside
// it.
int TerrainFromIndex(int index);  // set terrain, palette filter: 8 entries
int AreaTypeFromIndex(int index); // area editor: 2 entries
int PathTypeFromIndex(int index); // path editor: 4 entries

} // namespace vardenix
