#pragma once

#include "files/FileIdentity.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vardenix {

// Positions and lengths on a tile are feet; a tile spans 3280.84 of them. The first
// coordinate runs up the tile, the second to the right.
struct TileArea {
    int32_t Type = 0;
    float Radius = 0;
    float CenterX = 0;
    float CenterY = 0;
};

struct TilePath {
    int32_t Type = 0;
    float Width = 0;
    float StartX = 0;
    float StartY = 0;
    float EndX = 0;
    float EndY = 0;
};

// Bytes of the name field, Windows-1252.
constexpr size_t TileNameLength = 20;

// Lists of the catalogue run from 1; their element 0 is a placeholder that is never used.
struct TileRecord {
    std::string TileName = std::string(TileNameLength, ' '); // padded with blanks
    int32_t NumAreas = 0;
    int32_t NumPaths = 0;
    std::vector<TileArea> Areas = std::vector<TileArea>(1); // 0 to NumAreas
    std::vector<TilePath> Paths = std::vector<TilePath>(1); // 0 to NumPaths
};

struct TileSet {
    int32_t TileCount = 0;
    uint8_t Terrain = 0;                                        // class code of TypeNames
    std::vector<TileRecord> Tiles = std::vector<TileRecord>(1); // 0 to TileCount
};

// The tile catalogue, as the file holds it.
struct TextureBin {
    int32_t NumSets = 0;
    int32_t NumTiles = 0; // as stored; whoever edits the sets keeps it true
    std::vector<TileSet> Sets = std::vector<TileSet>(1); // 0 to NumSets
};

// Every set owns this many tile numbers, however many tiles it has.
constexpr int32_t TilesPerSet = 16;

// What the program knows of one tile number, (set - 1) * 16 + slot with slots from 0.
struct TileInfo {
    std::string Name; // trimmed; empty for a number with no tile
    std::string DayFile;
    std::string NightFile;
    int16_t Terrain = -1; // class code of the set, -1 for a number with no tile
    int32_t UseCount = -1;
    int16_t HasImage = 0; // 1 when DayFile exists
};

using TileLookup = std::vector<TileInfo>; // by tile number, from 0

// The catalogue of the theater that is open, and where it comes from.
struct Catalogue {
    std::string BinPath;   // the Texture.bin in use
    FileIdentity Read;     // of BinPath as it was read or last saved
    std::string DDSFolder; // the folder of tile pictures, with a slash at its end
    TextureBin Bin;
    TileLookup Lookup;                     // 0 to NumSets * 16 - 1
    std::vector<std::string> NewTilesList; // pictures taken in during this run
};

} // namespace vardenix
