#pragma once

#include "mapeditor/MapPalette.h"
#include "pictures/Bitmap.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace vardenix {

// The files by which palettes go from program to program. ACT holds 256 times red, green,
// blue; PAL a header and 256 times red, green, blue, alpha; BMP a picture of 16 by 16
// squares. A palette whose file has no alpha keeps its own.
enum class PaletteFileKind { Act = 1, Pal = 2, Bmp = 3 };

// By the extension, in any case.
std::optional<PaletteFileKind> PaletteKindOf(std::string_view path);

constexpr size_t ActLength = 768;  // bytes
constexpr size_t PalLength = 1048; // 24 of them the header

std::array<std::byte, ActLength> ActBytes(ConstMapPalette palette);
std::array<std::byte, PalLength> PalBytes(ConstMapPalette palette);

// Take a file's bytes, of which no more than these are looked at; what a PAL's header
// says does not count. Error 62 with the path when there are fewer, and the palette is as
// it was.
void TakeAct(std::span<const std::byte> bytes, std::string_view path, MapPalette palette);
void TakePal(std::span<const std::byte> bytes, std::string_view path, MapPalette palette);

// 512 by 512 pixels, 24 bits; entry r * 16 + c is the square of 32 by 32 in row r from
// the top and column c.
Bitmap PalettePicture(ConstMapPalette palette);
// Of a picture of any size, stretched to 512 by 512, the middle of each square.
void TakePalettePicture(const Bitmap& picture, MapPalette palette);

// To files, over the beginning of one that is there: what is longer keeps its tail.
// The file is whole or the old one stands; the system's refusals.
void SaveAct(std::string_view path, ConstMapPalette palette);
void SavePal(std::string_view path, ConstMapPalette palette);
void SavePaletteBmp(std::string_view path, ConstMapPalette palette);
void SavePalette(PaletteFileKind kind, std::string_view path, ConstMapPalette palette);

// From files. The system's refusals, 62 for a file that is too short, 481 for one that is
// no BMP that can be read; the palette is then as it was.
void LoadAct(std::string_view path, MapPalette palette);
void LoadPal(std::string_view path, MapPalette palette);
void LoadPaletteBmp(std::string_view path, MapPalette palette);
void LoadPalette(PaletteFileKind kind, std::string_view path, MapPalette palette);

} // namespace vardenix
