#pragma once

#include "bineditor/BinCommands.h"
#include "catalogue/TextureBin.h"

#include <array>
#include <cstdint>
#include <string>

namespace vardenix {

// What FrmBINTileEdit shows of the catalogue. Rows count from 0; texts are bytes as the
// catalogue has them.

// ListView1: set number, type, number of tiles.
std::array<std::string, 3> SetColumns(const TextureBin& bin, int32_t row);

// How a row of ListView2 looks.
enum class TileRowLook { Used, Unused, Empty };
struct TileRow {
    std::array<std::string, 5> Columns; // number, set, name, areas, paths
    TileRowLook Look = TileRowLook::Empty;
};
TileRow TileRowOf(const Catalogue& catalogue, int32_t row);
TileRowLook LookOf(const Catalogue& catalogue, int32_t row);

// Real tiles whose use count is not above 0.
int32_t UnusedTileCount(const Catalogue& catalogue);
// "3 Sets || 40 Tiles || 7 Tiles not used in L2".
std::string CountersLine(const Catalogue& catalogue);

// What is told of a slot beside its picture.
struct SlotDetails {
    std::string TileName;   // all empty for a slot without a tile
    std::string AreasPaths; // "2 Areas and 1 Paths"
    std::string TileNumber; // "Tile Number: 17"
    std::string NoPicture;  // why the tile has none, now or the next time; else empty
    bool UsedInL2 = false;  // Highlightrect is green, else red
};
SlotDetails DetailsOf(const Catalogue& catalogue, const TilePlace& place);

// The tool tip over a slot; lines are parted by CR LF.
struct SlotTip {
    std::string Text;
    uint32_t Color = 0; // 0x00BBGGRR
};
SlotTip TipOf(const Catalogue& catalogue, const TilePlace& place);

// The texts of FraMoveSet. `target` is the clicked set; the move can be made when it is
// another than `source`.
std::string MoveSourceText(int32_t source);
std::string MovePositionText(int32_t source, int32_t target, bool before);

} // namespace vardenix
