#pragma once

#include "program/MapFileRecord.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vardenix {

constexpr int PaletteSize = 256;
constexpr int PaletteSide = 16; // entries in a row of the grid, and rows

using MapPalette = std::span<MapPaletteEntry, PaletteSize>;
using ConstMapPalette = std::span<const MapPaletteEntry, PaletteSize>;

// The colour value 0x00BBGGRR of an entry. Alpha is no part of it, and stays when a
// colour is set.
uint32_t EntryColor(const MapPaletteEntry& entry);
void SetEntryColor(MapPaletteEntry& entry, uint32_t color);
void SetAllSameColor(MapPalette palette, uint32_t color);

// What the box of frmMAPSetAlpha spells, clamped to 0 to 255.
int16_t NewAlphaOf(std::string_view text);
void SetAllAlpha(MapPalette palette, uint8_t alpha);

// "#:5 {R:1, G:2, B:3, A:4}"
std::string EntryTip(int index, const MapPaletteEntry& entry);

// The boxes of frmMAPDet: red, green, blue, alpha.
using EntryTexts = std::array<std::string, 4>;
EntryTexts EntryTextsOf(const MapPaletteEntry& entry);
// Error 6 with the name of the number above 255.
MapPaletteEntry EntryOf(const EntryTexts& texts);

// The text by which a colour is copied, "#0A14FF" with red first; and a colour of such a
// text, of three hexadecimal digits, or of three numbers to 255, with or without what an
// entry's tip has round them. Nothing for any other text.
std::string ColorText(uint32_t color);
std::optional<uint32_t> ColorOfText(std::string_view text);

// Where a key leads in the grid from an entry: to the neighbour in reading order, to the
// next row, to the ends of a row or column; at the edge it stays.
enum class PaletteStep { Left, Right, Up, Down, RowBegin, RowEnd, Top, Bottom };
int StepInPalette(int index, PaletteStep step);

// "MapEditor v3.0.1", and behind a file that was opened or saved "-" and its path; a star
// in front of unsaved changes.
std::string MapEditorTitle(const std::string& path, bool dirty);

} // namespace vardenix
