#include "support/PictureMaker.h"

#include <FreeImage.h>

#include <cstring>

namespace vardenix::tests {

std::string Little(uint32_t value, int bytes) {
    std::string result;
    for (int i = 0; i < bytes; ++i)
        result += static_cast<char>(value >> (8 * i));
    return result;
}

std::string DdsHeader(uint32_t width, uint32_t height, const DdsKind& kind) {
    const bool blocks = !kind.Code.empty();
    const uint32_t flags =
        0x1007U | (kind.Pitch != 0 ? 8U : 0U) | (kind.Levels != 0 ? 0x20000U : 0U);
    std::string header = "DDS " + Little(124, 4) + Little(flags, 4) + Little(height, 4) +
                         Little(width, 4) + Little(kind.Pitch, 4) + Little(0, 4) +
                         Little(kind.Levels, 4) + std::string(44, '\0') + Little(32, 4);
    header += Little(blocks ? 4 : 0x40 | (kind.Alpha ? 1U : 0U), 4);
    header += blocks ? kind.Code : Little(0, 4);
    header += Little(kind.Bits, 4) + Little(0xFF0000, 4) + Little(0xFF00, 4) +
              Little(0xFF, 4) + Little(kind.Alpha ? 0xFF000000 : 0, 4) +
              Little(0x1000, 4) + std::string(16, '\0');
    return header;
}

std::string BlockTile(uint32_t width, uint32_t height, const std::string& code) {
    std::string tile = DdsHeader(width, height, {code});
    const uint32_t count = ((width + 3) / 4) * ((height + 3) / 4);
    for (uint32_t i = 0; i < count; ++i) {
        const uint32_t color = ((i & 1) != 0 ? 0xF800U : 0) |
                               ((i & 2) != 0 ? 0x07E0U : 0) | ((i & 4) != 0 ? 0x001F : 0);
        if (code == "DXT3")
            tile += std::string(8, '\x88');
        if (code == "DXT5")
            tile += '\x40' + std::string(7, '\0');
        // The first colour is the greater one, or a DXT1 block has a transparent code.
        tile += Little(color, 2) + Little(0, 2) + Little(0, 4);
    }
    return tile;
}

uint32_t BlockPixel(uint32_t width, uint32_t x, uint32_t y, const std::string& code) {
    const uint32_t i = y / 4 * ((width + 3) / 4) + x / 4;
    const uint32_t alpha = code == "DXT3" ? 0x88 : code == "DXT5" ? 0x40 : 0xFF;
    return alpha << 24 | ((i & 1) != 0 ? 0xFF0000U : 0) | ((i & 2) != 0 ? 0xFF00U : 0) |
           ((i & 4) != 0 ? 0xFFU : 0);
}

std::string Targa(int width, int height, const std::string& pixels,
                  const TargaKind& kind) {
    const auto number = [](size_t value, int bytes) {
        return Little(static_cast<uint32_t>(value), bytes);
    };
    return number(kind.Note.size(), 1) + number(kind.MapCount != 0, 1) +
           number(static_cast<size_t>(kind.Kind), 1) + Little(0, 2) +
           number(static_cast<size_t>(kind.MapCount), 2) +
           number(static_cast<size_t>(kind.MapBits), 1) + Little(0, 4) +
           number(static_cast<size_t>(width), 2) +
           number(static_cast<size_t>(height), 2) +
           number(static_cast<size_t>(kind.Bits), 1) +
           number(static_cast<size_t>(kind.Descriptor), 1) + kind.Note + kind.Map +
           pixels;
}

std::string JpegOf(int width, int height, uint32_t rgb, int flags) {
    const RGBQUAD quad{static_cast<BYTE>(rgb), static_cast<BYTE>(rgb >> 8),
                       static_cast<BYTE>(rgb >> 16), 0};
    FIBITMAP* bitmap = FreeImage_AllocateEx(width, height, 24, &quad);
    FIMEMORY* memory = FreeImage_OpenMemory();
    FreeImage_SaveToMemory(FIF_JPEG, bitmap, memory, flags);
    BYTE* bytes = nullptr;
    DWORD length = 0;
    FreeImage_AcquireMemory(memory, &bytes, &length);
    std::string text(reinterpret_cast<const char*>(bytes), length);
    FreeImage_CloseMemory(memory);
    FreeImage_Unload(bitmap);
    return text;
}

Bitmap BitmapOf(int width, int height, int bits, ColorAt color) {
    Bitmap bitmap(FreeImage_Allocate(width, height, bits));
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const uint32_t argb = color(x, y);
            RGBQUAD quad{static_cast<BYTE>(argb), static_cast<BYTE>(argb >> 8),
                         static_cast<BYTE>(argb >> 16), static_cast<BYTE>(argb >> 24)};
            FreeImage_SetPixelColor(bitmap.Handle(), static_cast<unsigned>(x),
                                    static_cast<unsigned>(height - 1 - y), &quad);
        }
    }
    return bitmap;
}

uint32_t Speckled(int x, int y) {
    const auto value = static_cast<uint32_t>(x * 7 + y * 131);
    return 0xFF000000 | ((value * 2654435761U) >> 8);
}

uint32_t PixelOf(const Bitmap& bitmap, int x, int y) {
    RGBQUAD quad{};
    FreeImage_GetPixelColor(
        bitmap.Handle(), static_cast<unsigned>(x),
        FreeImage_GetHeight(bitmap.Handle()) - 1 - static_cast<unsigned>(y), &quad);
    const uint32_t alpha =
        FreeImage_GetBPP(bitmap.Handle()) == 32 ? quad.rgbReserved : 255U;
    return alpha << 24 | uint32_t{quad.rgbRed} << 16 | uint32_t{quad.rgbGreen} << 8 |
           quad.rgbBlue;
}

FileBytes BytesOf(std::string_view text) {
    FileBytes bytes(text.size());
    std::memcpy(bytes.data(), text.data(), text.size());
    return bytes;
}

std::vector<uint32_t> PixelsOf(const Raster& raster) {
    std::vector<uint32_t> pixels;
    for (int y = 0; y < raster.Height(); ++y)
        pixels.insert(pixels.end(), raster.Row(y), raster.Row(y) + raster.Width());
    return pixels;
}

} // namespace vardenix::tests
