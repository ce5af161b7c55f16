#pragma once

#include "files/BinaryReader.h"
#include "pictures/Bitmap.h"
#include "pictures/Raster.h"
#include "support/ErrorOf.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Picture files made byte by byte, and pixels taken from bitmaps one at a time, both
// apart from what is tested.
namespace vardenix::tests {

std::string Little(uint32_t value, int bytes);

struct DdsKind {
    std::string Code{};  // "DXT1"; empty for plain pixels
    uint32_t Bits = 0;   // of plain pixels
    bool Alpha = false;  // of plain pixels
    uint32_t Pitch = 0;  // told when not 0
    uint32_t Levels = 0; // mip maps
};

std::string DdsHeader(uint32_t width, uint32_t height, const DdsKind& kind);

// Every block of 4 by 4 has one colour, that of its number.
std::string BlockTile(uint32_t width, uint32_t height, const std::string& code);
// 0xAARRGGBB of a pixel of such a tile; alpha is opaque for DXT1, 0x88 for DXT3 and 0x40
// for DXT5.
uint32_t BlockPixel(uint32_t width, uint32_t x, uint32_t y, const std::string& code);

struct TargaKind {
    int Kind = 2;
    int Bits = 24;
    int Descriptor = 0x20; // rows from the top
    std::string Note{};
    std::string Map{};
    int MapCount = 0;
    int MapBits = 0;
};
std::string Targa(int width, int height, const std::string& pixels,
                  const TargaKind& kind = {});

// A JPEG file of one colour, by the image library.
std::string JpegOf(int width, int height, uint32_t rgb, int flags = 0);

// A bitmap of 24 or 32 bits whose pixel at x, y from the top is color(x, y), 0xAARRGGBB.
using ColorAt = uint32_t (*)(int x, int y);
Bitmap BitmapOf(int width, int height, int bits, ColorAt color);
// A colour for every place, no two neighbours alike.
uint32_t Speckled(int x, int y);

// 0xAARRGGBB at x, y from the top, through the image library's own question.
uint32_t PixelOf(const Bitmap& bitmap, int x, int y);

FileBytes BytesOf(std::string_view text);

std::vector<uint32_t> PixelsOf(const Raster& raster);

} // namespace vardenix::tests
