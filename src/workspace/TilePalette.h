#pragma once

#include "catalogue/TextureBin.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vardenix {

// The rules of FrmVXTilePal. Lengths are twips; indices of buttons count from 0 in the
// order in which they stand.

constexpr int32_t PaletteButtonSide = 960;
constexpr int32_t PaletteMargin = 90;     // round Frame2 and VScroll
constexpr int32_t PaletteFirstTop = 1200; // of Frame1 while the first row is at the top

// Combo1. The class code at an index is TerrainFromIndex of it; "Bush" is this list's
// own word.
constexpr std::array<std::string_view, 8> PaletteClasses{
    "Water", "Swamp", "Plains", "Bush", "Thin Forest", "Thick Forest", "Rocky", "Urban"};

// Where a class code stands in that list; -1 for one that it does not have.
int PaletteIndex(int32_t classCode);

// The tile numbers that a class shows, rising. Numbers without a name are left out.
std::vector<int32_t> TilesOfClass(const TileLookup& lookup, int32_t classCode);

// Those of `tiles` whose names hold `part` or whose number it is, in their order; blanks
// round it and the case of the letters A to Z do not count. Bytes as the catalogue has
// them.
std::vector<int32_t> TilesNamed(const TileLookup& lookup,
                                const std::vector<int32_t>& tiles, std::string_view part);

// What the palette shows of a class; where the class has no such tile, those of all
// others.
std::vector<int32_t> TilesToShow(const TileLookup& lookup, int32_t classCode,
                                 std::string_view part);

// Whether the catalogue has a tile of this number, which can be chosen so.
bool HasTile(const TileLookup& lookup, int32_t tile);

// A place within Frame1.
struct PalettePlace {
    int32_t Left = 0;
    int32_t Top = 0;
};

struct PaletteLayout {
    std::vector<PalettePlace> Buttons;
    int32_t Columns = 1; // at least, however narrow the frame
    int32_t Frame1Height = PaletteButtonSide;
};

// A row ends as soon as another button would not fit behind the one just placed, so that
// buttons which fill their last row have an empty row behind them.
PaletteLayout LayOutPalette(size_t buttons, int32_t frameWidth);

// The last row is at the top then; nobody would scroll so far who sees it before.
int32_t PaletteScrollMax(int32_t frame1Height);
// The lowest value at which the last row of buttons is seen whole: beyond it there is
// only emptiness. 0 where all rows are seen at once.
int32_t PaletteScrollEnd(const PaletteLayout& layout, int32_t wholeRows);
int32_t Frame1Top(int32_t scrollValue);

// The scroll value that shows a row whole, changed from `scrollValue` no more than it
// has to be. `wholeRows` is how many the frame has room for.
int32_t ScrollToRow(int32_t row, int32_t scrollValue, int32_t wholeRows);

enum class PaletteMove { Left, Right, Up, Down, PageUp, PageDown, First, Last };

// The button that a key leads to from the one at `index`; there has to be one. Past the
// first and the last there is none, so it stays; Down into a last row that is too short
// leads to the last.
int32_t MoveInPalette(int32_t index, PaletteMove move, int32_t buttons, int32_t columns,
                      int32_t wholeRows);

// SelectedTile after a click on a tile's button: that tile, and -1 for the chosen one.
int32_t ChooseTile(int32_t selectedTile, int32_t clickedTile);

// What is chosen of the palette: one tile, and others that are painted in turn with it.
struct ChosenTiles {
    int32_t First = -1; // SelectedTile
    std::vector<int32_t> More{};

    bool operator==(const ChosenTiles&) const = default;
};
// After a click with Ctrl, which adds a tile or takes it away; and with Shift, which
// adds all `shown` ones from the chosen tile to this.
ChosenTiles ChooseAlso(ChosenTiles chosen, int32_t clickedTile);
ChosenTiles ChooseUpTo(const ChosenTiles& chosen, int32_t clickedTile,
                       const std::vector<int32_t>& shown);

// "H0100.DDS | Tile #:17", the tool tip of a button; bytes as the catalogue has them.
// Only the number where the catalogue has no such tile.
std::string TileCaption(const TileLookup& lookup, int32_t tile);
// What StatusBar1 tells.
std::string PaletteStatus(const TileLookup& lookup, int32_t selectedTile);
// "1 tile", "17 tiles".
std::string TileCount(size_t tiles);

} // namespace vardenix
