#include "search/DerivedFiles.h"

#include "support/RecordingProgress.h"
#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <vector>

namespace vardenix {
namespace {

Terrain Flat(int32_t width) {
    Terrain terrain;
    terrain.MapWidth = width;
    terrain.LxArr = PostArray(int64_t{width} * width);
    return terrain;
}

Terrain Random(int32_t width, unsigned seed) {
    Terrain terrain = Flat(width);
    std::mt19937 random(seed);
    for (TerrainPost& post : terrain.LxArr.Values()) {
        post.TileOffset = static_cast<int32_t>(random() % 60);
        post.Elevation = static_cast<int16_t>(static_cast<int>(random() % 9000) - 4500);
    }
    return terrain;
}

TileLookup Named(size_t count) {
    TileLookup lookup(count);
    for (size_t i = 0; i < count; ++i)
        lookup[i].Name = "T" + std::to_string(i) + ".PCX";
    return lookup;
}

class DerivedFilesTest : public testing::Test {
protected:
    std::string MEA(const Terrain& terrain) {
        WriteMEA(terrain, path_, progress_);
        return tests::Slurp(path_);
    }
    std::string TC(const Terrain& terrain, const TileLookup& lookup) {
        WriteTC(terrain, lookup, path_, progress_);
        return tests::Slurp(path_);
    }
    std::string TM(const Terrain& terrain) {
        WriteTM(terrain, path_, progress_);
        return tests::Slurp(path_);
    }
    // The error that names a number and says something about it.
    template <typename Action>
    void ExpectError(ErrorNumber number, Action action, const std::string& detail) {
        try {
            action();
            ADD_FAILURE() << "no error";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), number);
            EXPECT_NE(error.Detail().find(detail), std::string::npos) << error.Detail();
        }
    }

    const tests::TestFolder folder_;
    const std::string path_ = folder_.File("out file");
    tests::RecordingProgress progress_;
};

TEST_F(DerivedFilesTest, ATheaterOfAllSea) {
    EXPECT_EQ(MEA(Flat(32)), std::string(4 * 4 * 2, '\0'));
    EXPECT_EQ(TM(Flat(32)), std::string(32 * 32 * 2, '\0'));
    EXPECT_EQ(
        TC(Flat(32), Named(16)),
        "0\t T0.PCX\t | Used 1024 times\r\nFFFF     END MARK    | Used 0 times\r\n");
}

TEST_F(DerivedFilesTest, MEASquaresStandWhereTheirPostsLie) {
    Terrain terrain = Flat(32);
    terrain.LxArr(1).Elevation = 0x0102;        // first square of the first row
    terrain.LxArr(8 * 32 + 9).Elevation = 300;  // x 9, y 9: second of the second
    terrain.LxArr(8 * 32 + 10).Elevation = 200; // lower, in the same
    terrain.LxArr(31 * 32 + 32).Elevation = 7;  // the last post
    terrain.LxArr(16).Elevation = -5;           // never seen
    std::string expected(32, '\0');
    const auto put = [&](size_t row, size_t column, int value) {
        expected.replace((row * 4 + column) * 2, 2, tests::Int16Bytes(value));
    };
    put(0, 0, 0x0102);
    put(1, 1, 300);
    put(3, 3, 7);
    EXPECT_EQ(MEA(terrain), expected);
}

// Block by block with the list index of the description, in real numbers.
std::string SlowMEA(const Terrain& terrain) {
    const int mapWidth = terrain.MapWidth;
    const int w = static_cast<int>(std::nearbyint(mapWidth / 8.0));
    std::vector<int> list(static_cast<size_t>(w * w) + 1);
    for (int y = 1; y <= mapWidth / 16; ++y)
        for (int x = 1; x <= mapWidth / 16; ++x)
            for (int i = 1; i <= 16; ++i)
                for (int j = 1; j <= 16; ++j) {
                    const int at =
                        2 * w * (y - 1) + (i - 1) / 8 * w + 2 * (x - 1) + (j - 1) / 8 + 1;
                    const int serial =
                        ((y - 1) * 16 + i - 1) * mapWidth + (x - 1) * 16 + j;
                    const int e = terrain.LxArr(serial).Elevation;
                    if (list.at(static_cast<size_t>(at)) < e)
                        list[static_cast<size_t>(at)] = e;
                }
    std::string bytes;
    for (size_t i = 1; i < list.size(); ++i)
        bytes += tests::Int16Bytes(list[i]);
    return bytes;
}

TEST_F(DerivedFilesTest, MEAIsWhatTheListGives) {
    // Widths that are no whole segments come from O files of odd lengths.
    for (const int width : {16, 23, 28, 33, 36, 39, 48, 128})
        EXPECT_EQ(MEA(Random(width, static_cast<unsigned>(width))),
                  SlowMEA(Random(width, static_cast<unsigned>(width))))
            << width;
}

TEST_F(DerivedFilesTest, TMRowsStartAtTheTop) {
    Terrain terrain = Random(16, 3);
    terrain.LxArr(1).TileOffset = 32767;
    std::string expected;
    for (int y = 16; y >= 1; --y)
        for (int x = 1; x <= 16; ++x)
            expected += tests::Int16Bytes(terrain.LxArr((y - 1) * 16 + x).TileOffset);
    EXPECT_EQ(TM(terrain), expected);
}

TEST_F(DerivedFilesTest, TMFailsAbove32767AndTheOldFileStands) {
    tests::Spill(path_, "old");
    Terrain terrain = Flat(16);
    terrain.LxArr(18).TileOffset = 32768;
    terrain.LxArr(2).TileOffset = 99999;
    ExpectError(
        ErrorNumber::Overflow, [&] { TM(terrain); },
        "X 1, Y 1, counted from 0, has the tile number 32768");
    EXPECT_EQ(tests::Slurp(path_), "old");
    EXPECT_EQ(folder_.Names(), "out file");
}

TEST_F(DerivedFilesTest, TCListsTheNumbersInUseRising) {
    Terrain terrain = Flat(16);
    terrain.LxArr(7).TileOffset = 26;
    terrain.LxArr(8).TileOffset = 26;
    terrain.LxArr(9).TileOffset = 255;
    TileLookup lookup = Named(256);
    lookup[255].Name.clear(); // a number without a tile
    EXPECT_EQ(TC(terrain, lookup), "0\t T0.PCX\t | Used 253 times\r\n"
                                   "1A\t T26.PCX\t | Used 2 times\r\n"
                                   "FF\t \t | Used 1 times\r\n"
                                   "FFFF     END MARK    | Used 0 times\r\n");
}

TEST_F(DerivedFilesTest, TCCountsEveryPost) {
    const Terrain terrain = Random(128, 5);
    std::map<int, int> counts;
    for (const TerrainPost& post : terrain.LxArr.Values())
        ++counts[post.TileOffset];
    std::string expected;
    for (const auto& [tile, count] : counts) {
        char line[80];
        std::snprintf(line, sizeof line, "%X\t T%d.PCX\t | Used %d times\r\n",
                      static_cast<unsigned>(tile), tile, count);
        expected += line;
    }
    EXPECT_EQ(TC(terrain, Named(64)),
              expected + "FFFF     END MARK    | Used 0 times\r\n");
}

TEST_F(DerivedFilesTest, TCRefusesANumberWithoutAnEntry) {
    tests::Spill(path_, "old");
    Terrain terrain = Flat(16);
    terrain.LxArr(20).TileOffset = 16;
    const auto make = [&] { TC(terrain, Named(16)); };
    ExpectError(ErrorNumber::SubscriptOutOfRange, make,
                "X 3, Y 1, counted from 0, has the tile number 16");
    terrain.LxArr(20).TileOffset = -1;
    ExpectError(ErrorNumber::SubscriptOutOfRange, make, "has the tile number -1");
    EXPECT_EQ(tests::Slurp(path_), "old");
}

TEST_F(DerivedFilesTest, TheBarMovesWithTheRows) {
    WriteMEA(Flat(32), path_, progress_);
    EXPECT_EQ(progress_.Story(), "show|bar 50|events|bar 100|events|hide");
    progress_.Forget();
    WriteTM(Flat(4), path_, progress_);
    EXPECT_EQ(progress_.Story(),
              "show|bar 0|events|bar 25|events|bar 50|events|bar 75|events|hide");
    progress_.Forget();
    WriteTC(Flat(128), Named(16), path_, progress_);
    EXPECT_EQ(progress_.Story(), "show|bar 50|events|bar 100|events|hide");
}

TEST_F(DerivedFilesTest, TheCommandsAskForTheirFile) {
    tests::ScriptedDialogs dialogs;
    const auto make = [&](DerivedFile kind) {
        dialogs.ExpectSave("", path_);
        MakeDerivedFile(kind, Flat(16), Named(16), dialogs, progress_);
        return dialogs.LastFilter() + " " + std::to_string(tests::Slurp(path_).size());
    };
    EXPECT_EQ(make(DerivedFile::MEA), "MEA Files | *.mea 8");
    EXPECT_EQ(make(DerivedFile::TC), "tc Files | *.tc 66");
    EXPECT_EQ(make(DerivedFile::TM), "tm Files | *.tm 512");
}

TEST_F(DerivedFilesTest, ACancelledCommandSaysAndWritesNothing) {
    tests::ScriptedDialogs dialogs;
    dialogs.ExpectCancel();
    MakeDerivedFile(DerivedFile::TM, Flat(16), {}, dialogs, progress_);
    EXPECT_EQ(folder_.Names(), "");
    EXPECT_EQ(progress_.Story(), "");
}

TEST_F(DerivedFilesTest, AnErrorIsToldInABox) {
    tests::ScriptedDialogs dialogs;
    Terrain terrain = Flat(16);
    terrain.LxArr(1).TileOffset = 70000;
    dialogs.ExpectSave("", path_);
    dialogs.ExpectBox("Error...",
                      "ERROR number 6\nOverflow\nthe post at X 0, Y 0, counted from 0, "
                      "has the tile number 70000; a .tm file holds numbers up to 32767",
                      BoxAnswer::Ok);
    MakeDerivedFile(DerivedFile::TM, terrain, {}, dialogs, progress_);
    EXPECT_EQ(dialogs.LastIcon(), BoxIcon::Critical);
    EXPECT_EQ(folder_.Names(), "");
}

} // namespace
} // namespace vardenix
