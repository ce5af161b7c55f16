#include "mapeditor/PaletteFiles.h"

#include "files/BinaryReader.h"
#include "files/FileNames.h"
#include "files/InPlace.h"
#include "pictures/ImageFiles.h"
#include "pictures/ImageLayer.h"
#include "pictures/ImagePainting.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

#include <algorithm>

namespace vardenix {

namespace {

constexpr int32_t SquareSide = 32; // pixels
constexpr int32_t PictureSide = SquareSide * PaletteSide;
constexpr size_t PalHeaderLength = 24;

std::byte* PutText(std::byte* to, std::string_view text) {
    return std::transform(text.begin(), text.end(), to,
                          [](char c) { return static_cast<std::byte>(c); });
}

std::byte* PutNumber(std::byte* to, uint32_t value, int length) {
    for (int i = 0; i < length; ++i)
        *to++ = static_cast<std::byte>(value >> (8 * i));
    return to;
}

std::byte* PutColor(std::byte* to, const MapPaletteEntry& entry) {
    for (const uint8_t part : {entry.Red, entry.Green, entry.Blue})
        *to++ = std::byte{part};
    return to;
}

void TakeColor(BinaryReader& reader, MapPaletteEntry& entry) {
    entry.Red = reader.Byte();
    entry.Green = reader.Byte();
    entry.Blue = reader.Byte();
}

void Require(std::span<const std::byte> bytes, size_t length, std::string_view path) {
    if (bytes.size() < length)
        throw RuntimeError(ErrorNumber::InputPastEnd,
                           std::string(path) + ": " + std::to_string(length) +
                               " bytes expected, found " + std::to_string(bytes.size()) +
                               "; the palette was left as it was");
}

} // namespace

std::optional<PaletteFileKind> PaletteKindOf(std::string_view path) {
    const std::string name = UpperCase(AfterLastSlash(path));
    if (name.ends_with(".ACT"))
        return PaletteFileKind::Act;
    if (name.ends_with(".PAL"))
        return PaletteFileKind::Pal;
    if (name.ends_with(".BMP"))
        return PaletteFileKind::Bmp;
    return std::nullopt;
}

std::array<std::byte, ActLength> ActBytes(ConstMapPalette palette) {
    std::array<std::byte, ActLength> bytes{};
    std::byte* to = bytes.data();
    for (const MapPaletteEntry& entry : palette)
        to = PutColor(to, entry);
    return bytes;
}

std::array<std::byte, PalLength> PalBytes(ConstMapPalette palette) {
    std::array<std::byte, PalLength> bytes{};
    std::byte* to = PutText(bytes.data(), "RIFF");
    to = PutNumber(to, PalLength - 8, 4);
    to = PutText(to, "PAL data");
    to = PutNumber(to, PalLength - 20, 4);
    to = PutNumber(to, 768, 2); // version 3.0
    to = PutNumber(to, PaletteSize, 2);
    for (const MapPaletteEntry& entry : palette) {
        to = PutColor(to, entry);
        *to++ = std::byte{entry.Alpha};
    }
    return bytes;
}

void TakeAct(std::span<const std::byte> bytes, std::string_view path,
             MapPalette palette) {
    Require(bytes, ActLength, path);
    BinaryReader reader(bytes, std::string(path));
    for (MapPaletteEntry& entry : palette)
        TakeColor(reader, entry);
}

void TakePal(std::span<const std::byte> bytes, std::string_view path,
             MapPalette palette) {
    Require(bytes, PalLength, path);
    BinaryReader reader(bytes.subspan(PalHeaderLength), std::string(path));
    for (MapPaletteEntry& entry : palette) {
        TakeColor(reader, entry);
        entry.Alpha = reader.Byte();
    }
}

Bitmap PalettePicture(ConstMapPalette palette) {
    Bitmap picture = AllocateEx(PictureSide, PictureSide, 0);
    for (int32_t y = 0; y < PictureSide; ++y) {
        uint8_t* to = picture.Row(y);
        for (int32_t x = 0; x < PictureSide; ++x) {
            const int32_t index = y / SquareSide * PaletteSide + x / SquareSide;
            const MapPaletteEntry& entry = palette[static_cast<size_t>(index)];
            for (const uint8_t part : {entry.Blue, entry.Green, entry.Red})
                *to++ = part;
        }
    }
    return picture;
}

void TakePalettePicture(const Bitmap& picture, MapPalette palette) {
    Raster stretched(PictureSide, PictureSide);
    ImagePaintDC(stretched.View(), picture,
                 WholeInto(picture, {0, 0, PictureSide, PictureSide}));
    for (int32_t row = 0; row < PaletteSide; ++row) {
        const uint32_t* pixels = stretched.Row(row * SquareSide + SquareSide / 2);
        for (int32_t column = 0; column < PaletteSide; ++column) {
            const uint32_t pixel = pixels[column * SquareSide + SquareSide / 2];
            const int32_t index = row * PaletteSide + column;
            MapPaletteEntry& entry = palette[static_cast<size_t>(index)];
            entry.Red = static_cast<uint8_t>(pixel >> 16);
            entry.Green = static_cast<uint8_t>(pixel >> 8);
            entry.Blue = static_cast<uint8_t>(pixel);
        }
    }
}

void SaveAct(std::string_view path, ConstMapPalette palette) {
    WriteInPlace(path, ActBytes(palette));
}

void SavePal(std::string_view path, ConstMapPalette palette) {
    WriteInPlace(path, PalBytes(palette));
}

void SavePaletteBmp(std::string_view path, ConstMapPalette palette) {
    WriteInPlace(path,
                 ImageEncode(PictureFormat::Bmp, PalettePicture(palette), path).Span());
}

void SavePalette(PaletteFileKind kind, std::string_view path, ConstMapPalette palette) {
    switch (kind) {
    case PaletteFileKind::Act:
        return SaveAct(path, palette);
    case PaletteFileKind::Pal:
        return SavePal(path, palette);
    case PaletteFileKind::Bmp:
        return SavePaletteBmp(path, palette);
    }
}

void LoadAct(std::string_view path, MapPalette palette) {
    TakeAct(ReadBeginning(path, ActLength).Span(), path, palette);
}

void LoadPal(std::string_view path, MapPalette palette) {
    TakePal(ReadBeginning(path, PalLength).Span(), path, palette);
}

void LoadPaletteBmp(std::string_view path, MapPalette palette) {
    TakePalettePicture(ImageRead(PictureFormat::Bmp, path), palette);
}

void LoadPalette(PaletteFileKind kind, std::string_view path, MapPalette palette) {
    switch (kind) {
    case PaletteFileKind::Act:
        return LoadAct(path, palette);
    case PaletteFileKind::Pal:
        return LoadPal(path, palette);
    case PaletteFileKind::Bmp:
        return LoadPaletteBmp(path, palette);
    }
}

} // namespace vardenix
