// Palette files, made and looked at byte by byte.
#include "mapeditor/PaletteFiles.h"

#include "support/PlainUser.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <functional>

namespace vardenix {
namespace {

using tests::Slurp;
using tests::TestFolder;

struct Palette {
    MapPaletteEntry Entries[256];
    operator MapPalette() { return Entries; }
    operator ConstMapPalette() const { return Entries; }
};

// No two entries alike.
Palette Sample() {
    Palette palette;
    for (int i = 0; i < 256; ++i)
        palette.Entries[i] = {static_cast<uint8_t>(i), static_cast<uint8_t>(255 - i),
                              static_cast<uint8_t>(i * 37), static_cast<uint8_t>(i * 91)};
    return palette;
}

char At(const Palette& palette, int index, int part) {
    const MapPaletteEntry& entry = palette.Entries[index];
    const uint8_t parts[] = {entry.Red, entry.Green, entry.Blue, entry.Alpha};
    return static_cast<char>(parts[part]);
}

std::string ActOf(const Palette& palette) {
    std::string bytes;
    for (int i = 0; i < 256; ++i)
        for (int part = 0; part < 3; ++part)
            bytes += At(palette, i, part);
    return bytes;
}

std::string PalOf(const Palette& palette) {
    std::string bytes("RIFF\x10\x04\0\0PAL data\x04\x04\0\0\0\x03\0\x01", 24);
    for (int i = 0; i < 256; ++i)
        for (int part = 0; part < 4; ++part)
            bytes += At(palette, i, part);
    return bytes;
}

std::string RecordOf(const Palette& palette) { return PalOf(palette).substr(24); }

// The colours of `from` with the alpha of `alpha`.
std::string Mixed(const Palette& from, const Palette& alpha) {
    std::string bytes;
    for (int i = 0; i < 256; ++i) {
        for (int part = 0; part < 3; ++part)
            bytes += At(from, i, part);
        bytes += At(alpha, i, 3);
    }
    return bytes;
}

std::string Number(uint32_t value, int length) {
    std::string bytes;
    for (int i = 0; i < length; ++i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

// A picture of 24 bits a pixel by a rule, rows from the bottom up.
std::string BmpOf(int width, int height,
                  const std::function<std::string(int x, int y)>& blueGreenRed) {
    std::string bytes = "BM" + Number(0, 8) + Number(54, 4) + Number(40, 4) +
                        Number(static_cast<uint32_t>(width), 4) +
                        Number(static_cast<uint32_t>(height), 4) + Number(1, 2) +
                        Number(24, 2) + std::string(24, '\0');
    for (int y = height - 1; y >= 0; --y) {
        for (int x = 0; x < width; ++x)
            bytes += blueGreenRed(x, y);
        bytes += std::string(static_cast<size_t>(width % 4), '\0');
    }
    return bytes;
}

int32_t Refusal(const std::function<void()>& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.NumberValue();
    }
    return 0;
}

TEST(PaletteFiles, AnActIsItsColoursAndNothingElse) {
    const TestFolder folder;
    SaveAct(folder.File("a.act"), Sample());
    EXPECT_EQ(Slurp(folder.File("a.act")), ActOf(Sample()));
    EXPECT_EQ(Slurp(folder.File("a.act")).size(), 768U);
    EXPECT_EQ(folder.Names(), "a.act");
}

TEST(PaletteFiles, AnActRoundTripKeepsAlpha) {
    const TestFolder folder;
    Palette other;
    SetAllAlpha(other, 200);
    const Palette before = other;
    LoadAct(folder.Write("a.act", ActOf(Sample())), other);
    EXPECT_EQ(RecordOf(other), Mixed(Sample(), before));
}

TEST(PaletteFiles, APalHasItsHeaderAndTheAlphaOfEachEntry) {
    const TestFolder folder;
    SavePal(folder.File("a.pal"), Sample());
    const std::string bytes = Slurp(folder.File("a.pal"));
    EXPECT_EQ(bytes, PalOf(Sample()));
    EXPECT_EQ(bytes.size(), 1048U);
    Palette other;
    LoadPal(folder.File("a.pal"), other);
    EXPECT_EQ(RecordOf(other), RecordOf(Sample()));
}

TEST(PaletteFiles, TheHeaderOfAPalIsNotLookedAt) {
    const TestFolder folder;
    Palette other;
    LoadPal(folder.Write("a.pal", std::string(24, 'x') + PalOf(Sample()).substr(24)),
            other);
    EXPECT_EQ(RecordOf(other), RecordOf(Sample()));
}

TEST(PaletteFiles, LongerFilesKeepTheirTailsAndAreReadAgain) {
    const TestFolder folder;
    const std::string old(100000, 't');
    for (const auto& [name, length] :
         {std::pair{"a.act", 768U}, {"a.pal", 1048U}, {"a.bmp", 54U + 512 * 512 * 3}}) {
        const std::string tail = std::string(length, 'o') + old;
        folder.Write(name, tail);
        SavePalette(*PaletteKindOf(name), folder.File(name), Sample());
        const std::string bytes = Slurp(folder.File(name));
        ASSERT_EQ(bytes.size(), tail.size()) << name;
        EXPECT_EQ(bytes.substr(length), old) << name;
        Palette other = Sample();
        SetAllSameColor(other, 0x070707);
        LoadPalette(*PaletteKindOf(name), folder.File(name), other);
        EXPECT_EQ(RecordOf(other), RecordOf(Sample())) << name;
    }
}

TEST(PaletteFiles, AShortFileChangesNothing) {
    const TestFolder folder;
    Palette palette = Sample();
    for (const auto& [name, length] : {std::pair{"a.act", 768U}, {"a.pal", 1048U}})
        for (const size_t cut : {size_t{0}, size_t{1}, size_t{500}, size_t{length - 1}}) {
            folder.Write(name, std::string(cut, 'x'));
            EXPECT_EQ(Refusal([&, name = name] {
                          LoadPalette(*PaletteKindOf(name), folder.File(name), palette);
                      }),
                      62)
                << name << " " << cut;
            EXPECT_EQ(RecordOf(palette), RecordOf(Sample()));
        }
}

TEST(PaletteFiles, ABmpHasASquareForEachEntry) {
    const TestFolder folder;
    SavePaletteBmp(folder.File("a.bmp"), Sample());
    const std::string bytes = Slurp(folder.File("a.bmp"));
    ASSERT_EQ(bytes.size(), 54U + 512 * 512 * 3);
    EXPECT_EQ(bytes.substr(0, 2), "BM");
    EXPECT_EQ(bytes.substr(18, 8), Number(512, 4) + Number(512, 4));
    EXPECT_EQ(bytes.substr(28, 2), Number(24, 2));
    for (int y = 0; y < 512; ++y)
        for (int x = 0; x < 512; ++x) {
            const auto at =
                54 + static_cast<size_t>(511 - y) * 1536 + static_cast<size_t>(x) * 3;
            const int index = y / 32 * 16 + x / 32;
            ASSERT_EQ(bytes[at], At(Sample(), index, 2)) << x << ", " << y;
            ASSERT_EQ(bytes[at + 1], At(Sample(), index, 1));
            ASSERT_EQ(bytes[at + 2], At(Sample(), index, 0));
        }
}

TEST(PaletteFiles, ABmpGivesTheMiddleOfEachSquareAndKeepsAlpha) {
    const TestFolder folder;
    // Right at one pixel of each square only.
    const auto only = [](int x, int y) {
        const Palette palette = Sample();
        if (x % 32 != 16 || y % 32 != 16)
            return std::string("xyz");
        const int index = y / 32 * 16 + x / 32;
        return std::string{At(palette, index, 2), At(palette, index, 1),
                           At(palette, index, 0)};
    };
    Palette other;
    SetAllAlpha(other, 3);
    const Palette before = other;
    LoadPaletteBmp(folder.Write("a.bmp", BmpOf(512, 512, only)), other);
    EXPECT_EQ(RecordOf(other), Mixed(Sample(), before));
}

TEST(PaletteFiles, ABmpOfAnotherSizeIsStretched) {
    const TestFolder folder;
    for (const auto& [width, height] :
         {std::pair{16, 16}, {33, 48}, {1, 1}, {1024, 17}, {100, 3}}) {
        // The picture's pixel x, y in numbers.
        const auto place = [](int x, int y) {
            return std::string{static_cast<char>(x), static_cast<char>(x >> 8),
                               static_cast<char>(y)};
        };
        Palette palette;
        LoadPaletteBmp(folder.Write("a.bmp", BmpOf(width, height, place)), palette);
        for (int i = 0; i < 256; ++i) {
            const MapPaletteEntry& entry = palette.Entries[i];
            EXPECT_EQ(entry.Blue | entry.Green << 8, (i % 16 * 32 + 16) * width / 512)
                << width << ", " << i;
            EXPECT_EQ(entry.Red, (i / 16 * 32 + 16) * height / 512)
                << height << ", " << i;
        }
    }
}

TEST(PaletteFiles, AnUnreadableBmpChangesNothing) {
    const TestFolder folder;
    Palette palette = Sample();
    const std::string good = BmpOf(16, 16, [](int, int) { return std::string("abc"); });
    for (const std::string& bytes : {std::string(), good.substr(0, good.size() - 1),
                                     "\x89PNG" + good, std::string(5000, 'B')}) {
        folder.Write("a.bmp", bytes);
        EXPECT_EQ(Refusal([&] { LoadPaletteBmp(folder.File("a.bmp"), palette); }), 481);
        EXPECT_EQ(RecordOf(palette), RecordOf(Sample()));
    }
}

TEST(PaletteFiles, AFileLongerThanAnyPictureIsNotRead) {
    const TestFolder folder;
    Palette palette = Sample();
    for (const auto& [name, error] :
         {std::pair{"a.bmp", 481}, {"a.act", 0}, {"a.pal", 0}}) {
        folder.Write(name, PalOf(Sample()));
        std::filesystem::resize_file(folder.File(name), uint64_t{20} << 30); // no disk
        EXPECT_EQ(Refusal([&, name = name] {
                      LoadPalette(*PaletteKindOf(name), folder.File(name), palette);
                  }),
                  error)
            << name;
    }
}

TEST(PaletteFiles, WhatTheSystemRefusesIsTold) {
    const TestFolder folder;
    Palette palette = Sample();
    for (const char* name : {"a.act", "a.pal", "a.bmp"}) {
        const PaletteFileKind kind = *PaletteKindOf(name);
        EXPECT_EQ(Refusal([&] { LoadPalette(kind, folder.File(name), palette); }), 53);
        EXPECT_EQ(Refusal([&] {
                      SavePalette(kind, folder.File("no folder/") + name, palette);
                  }),
                  76);
        const std::string path = folder.Write(name, "the old file");
        tests::LetOthers(folder.Path(), 5);
        tests::LetOthers(path, 4);
        {
            const tests::PlainUser user;
            EXPECT_NE(Refusal([&] { SavePalette(kind, path, palette); }), 0);
        }
        EXPECT_EQ(Slurp(path), "the old file");
    }
    EXPECT_EQ(RecordOf(palette), RecordOf(Sample()));
}

TEST(PaletteFiles, TheExtensionTellsTheKind) {
    EXPECT_EQ(PaletteKindOf("C:\\a\\B.ACT"), PaletteFileKind::Act);
    EXPECT_EQ(PaletteKindOf("/a.b/x.pal"), PaletteFileKind::Pal);
    EXPECT_EQ(PaletteKindOf("x.Bmp"), PaletteFileKind::Bmp);
    EXPECT_EQ(PaletteKindOf("/a.act/x"), std::nullopt);
    EXPECT_EQ(PaletteKindOf("act"), std::nullopt);
    EXPECT_EQ(PaletteKindOf(""), std::nullopt);
}

} // namespace
} // namespace vardenix
