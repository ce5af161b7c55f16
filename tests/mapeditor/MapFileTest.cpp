#include "mapeditor/MapFile.h"

#include "mapeditor/ColorHelpers.h"
#include "support/PlainUser.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <cstring>

namespace vardenix {
namespace {

using tests::Int32Bytes;
using tests::PlainUser;
using tests::Slurp;
using tests::TestFolder;

// Bytes 0, 1, 2 ... 250, 0 ...: unlike their neighbours at every offset.
std::string Pattern(size_t size) {
    std::string bytes;
    for (size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(i % 251);
    return bytes;
}

std::string RecordBytes(const MapFileRecord& record) {
    std::string bytes(sizeof record, '\0');
    std::memcpy(bytes.data(), &record, sizeof record);
    return bytes;
}

void Fill(MapFileRecord& record, int byte) {
    std::memset(static_cast<void*>(&record), byte, sizeof record);
}

std::string FloatBytes(float value) {
    int bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return Int32Bytes(bits);
}

TEST(MapFile, EveryFieldStandsAtItsOffset) {
    const TestFolder folder;
    std::string bytes = FloatBytes(820.21F) + Int32Bytes(-1) + Int32Bytes(2) +
                        FloatBytes(3.5F) + Int32Bytes(4) + Int32Bytes(5) + Int32Bytes(6);
    for (int i = 0; i < 256; ++i) {
        const int values[4] = {i, 255 - i, i / 2, 255};
        for (const int value : values)
            bytes += static_cast<char>(value);
    }
    EXPECT_EQ(bytes.size(), 1052U);
    for (int i = 0; i < 12; ++i)
        bytes += Int32Bytes(100 + i);
    bytes += Int32Bytes(0x12345678) + FloatBytes(124.5F) + FloatBytes(-33.25F);
    ASSERT_EQ(bytes.size(), 1112U);

    MapFileRecord record;
    OpenMapFile(folder.Write("theater.map", bytes), record);
    EXPECT_EQ(record.FeetBetweenL0Tiles, 820.21F);
    EXPECT_EQ(record.MEAWidth, -1);
    EXPECT_EQ(record.MEAHeight, 2);
    EXPECT_EQ(record.FeetBetweenMEAPoints, 3.5F);
    EXPECT_EQ(record.NumberOfLODs, 4);
    EXPECT_EQ(record.LastNearTiledLOD, 5);
    EXPECT_EQ(record.LastFarTiledLOD, 6);
    EXPECT_EQ(record.Palette[7].Red, 7);
    EXPECT_EQ(record.Palette[7].Green, 248);
    EXPECT_EQ(record.Palette[7].Blue, 3);
    EXPECT_EQ(record.Palette[7].Alpha, 255);
    EXPECT_EQ(record.Palette[255].Red, 255);
    for (int level = 0; level < 6; ++level) {
        EXPECT_EQ(record.Levels[level].Width, 100 + 2 * level);
        EXPECT_EQ(record.Levels[level].Height, 101 + 2 * level);
    }
    EXPECT_EQ(record.Flags, 0x12345678);
    EXPECT_EQ(record.Longitude, 124.5F);
    EXPECT_EQ(record.Latitude, -33.25F);
}

TEST(MapFile, OpenAndSaveGiveTheSameBytes) {
    const TestFolder folder;
    const std::string path = folder.Write("Theater.map", Pattern(1112));
    MapFileRecord record;
    OpenMapFile(folder.Path() + "\\THEATER.MAP", record);
    SaveMapFile(folder.Path() + "\\THEATER.MAP", record);
    EXPECT_EQ(Slurp(path), Pattern(1112));
    EXPECT_EQ(folder.Names(), "Theater.map");
}

TEST(MapFile, AShorterFileLeavesTheRestOfTheRecord) {
    const TestFolder folder;
    MapFileRecord record;
    Fill(record, 0x77);
    OpenMapFile(folder.Write("a.map", ""), record);
    EXPECT_EQ(RecordBytes(record), std::string(1112, '\x77'));
    OpenMapFile(folder.Write("b.map", Pattern(1111)), record);
    EXPECT_EQ(RecordBytes(record), Pattern(1111) + "\x77");
}

TEST(MapFile, ALongerFileHasItsRestIgnoredAndKept) {
    const TestFolder folder;
    const std::string path = folder.Write("a.map", Pattern(2000));
    MapFileRecord record;
    OpenMapFile(path, record);
    EXPECT_EQ(RecordBytes(record), Pattern(1112));
    Fill(record, 0x11);
    SaveMapFile(path, record);
    EXPECT_EQ(Slurp(path), std::string(1112, '\x11') + Pattern(2000).substr(1112));
}

TEST(MapFile, SavingMakesAShortOrMissingFileWhole) {
    const TestFolder folder;
    MapFileRecord record;
    Fill(record, 0x22);
    SaveMapFile(folder.Write("short.map", "abc"), record);
    SaveMapFile(folder.File("new.map"), record);
    EXPECT_EQ(Slurp(folder.File("short.map")), std::string(1112, '\x22'));
    EXPECT_EQ(Slurp(folder.File("new.map")), std::string(1112, '\x22'));
}

TEST(MapFile, AMissingFileLeavesTheRecord) {
    const TestFolder folder;
    MapFileRecord record;
    record.Flags = 5;
    try {
        OpenMapFile(folder.File("none.map"), record);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 53);
    }
    EXPECT_EQ(record.Flags, 5);
}

TEST(MapFile, AReadOnlyFileStandsAsItWas) {
    const TestFolder folder;
    const std::string path = folder.Write("a.map", Pattern(1112));
    tests::LetOthers(folder.Path(), 7);
    tests::LetOthers(path, 4);
    {
        const PlainUser user;
        EXPECT_THROW(SaveMapFile(path, MapFileRecord()), RuntimeError);
    }
    EXPECT_EQ(Slurp(path), Pattern(1112));
    EXPECT_EQ(folder.Names(), "a.map");
}

struct Rgb {
    int Red, Green, Blue;
    bool operator==(const Rgb&) const = default;
};

Rgb FromHex(std::string_view text) {
    uint8_t red = 1, green = 1, blue = 1;
    HexColorToRGB(text, red, green, blue);
    return {red, green, blue};
}

Rgb FromLong(uint32_t color) {
    uint8_t red = 1, green = 1, blue = 1;
    LongColorToRGB(color, red, green, blue);
    return {red, green, blue};
}

TEST(ColorHelpers, TheLastSixCharactersCountBlueFirst) {
    EXPECT_EQ(FromHex("FF"), (Rgb{255, 0, 0}));
    EXPECT_EQ(FromHex("1FF0000"), (Rgb{0, 0, 255}));
    EXPECT_EQ(FromHex("a0b0c0"), (Rgb{0xC0, 0xB0, 0xA0}));
    EXPECT_EQ(FromHex("123"), (Rgb{0x23, 1, 0}));
    EXPECT_EQ(FromHex(""), (Rgb{0, 0, 0}));
    EXPECT_EQ(FromHex("zz1z-1"), (Rgb{0, 1, 0}));
}

TEST(ColorHelpers, AColourValueHasRedLowest) {
    EXPECT_EQ(RGBToLong(1, 2, 3), 0x030201U);
    EXPECT_EQ(RGBToLong(255, 255, 255), 0xFFFFFFU);
    EXPECT_EQ(FromLong(0x030201), (Rgb{1, 2, 3}));
    EXPECT_EQ(FromLong(0xFF030201), (Rgb{1, 2, 3}));
    EXPECT_EQ(FromLong(0), (Rgb{0, 0, 0}));
    EXPECT_EQ(HexColorToLong("FF"), 255U);
    EXPECT_EQ(HexColorToLong("1FF0000"), 0xFF0000U);
}

} // namespace
} // namespace vardenix
