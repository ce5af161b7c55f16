#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vardenix {

// The palette view of the BIN editor shows the 256 colors of a picture that has a palette
// of its own, sixteen by sixteen. No picture of this program has one, so nothing fills
// the table; it stays for the view that is built on it.
struct PaletteEntry {
    uint8_t Blue = 0;
    uint8_t Green = 0;
    uint8_t Red = 0;
    uint8_t Reserved = 0;
};
using PaletteTable = std::vector<PaletteEntry>; // 256 entries, or none

// What the tool tip says of an entry, and its colors.
struct PaletteTip {
    std::string Text;
    uint32_t Back = 0; // colors as those of a tool tip
    uint32_t Fore = 0;
};

// The index of the entry under a point of a view of that size, in pixels: the last entry
// stands in the upper left corner. 0 to 255, also beyond the edges.
int32_t PaletteIndexAt(int32_t x, int32_t y, int32_t width, int32_t height);

// Of a filled table. The text is black or white, whichever stands out.
PaletteTip TipOfPalette(const PaletteTable& table, int32_t index);

} // namespace vardenix
