#include "levels/TerrainStore.h"

#include "companion/Vardenix.h"
#include "support/JournalMaker.h"
#include "support/RecordingProgress.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vardenix {
namespace {

using tests::MadeLevel;
using tests::MadePost;
using tests::RecordingProgress;
using tests::Slurp;
using tests::TestFolder;

class TerrainStore : public testing::Test {
protected:
    // Writes a pair of the scattered kind into the folder.
    void Write(const MadeLevel& level) {
        const tests::PairBytes pair = tests::ScatteredPair(level);
        WriteRaw(pair.L, pair.O);
    }
    void WriteRaw(const std::string& bytesL, const std::string& bytesO) {
        folder_.Write("terrain/theater.L2", bytesL);
        folder_.Write("terrain/theater.O2", bytesO);
    }
    std::string PathL() const { return folder_.File("terrain/theater.L2"); }
    std::string PathO() const { return folder_.File("terrain/theater.O2"); }
    void Load() {
        terrain_.LFilename = PathL();
        terrain_.OFilename = PathO();
        LoadLFile(terrain_, progress_, log_);
    }
    // The number of the error that loading ends in, 0 when it does not.
    int LoadError(std::string* detail = nullptr) {
        try {
            Load();
        } catch (const RuntimeError& error) {
            if (detail != nullptr)
                *detail = error.Detail();
            return error.NumberValue();
        }
        return 0;
    }
    MadeLevel OnDisk(const std::string& name = "theater") const {
        return tests::ReadPair(folder_.File("terrain/" + name + ".L2"),
                               folder_.File("terrain/" + name + ".O2"));
    }

    // A copy: the field itself is unaligned.
    int32_t TileAt(int32_t serial) const { return terrain_.LxArr(serial).TileOffset; }

    TestFolder folder_;
    SystemClock clock_;
    DebugLog log_{clock_};
    RecordingProgress progress_;
    Terrain terrain_;
};

void ExpectPosts(const Terrain& terrain, const MadeLevel& level) {
    ASSERT_EQ(terrain.MapWidth, level.Width);
    ASSERT_EQ(terrain.LxArr.UpperBound(), level.Width * level.Width);
    for (int32_t serial = 1; serial <= terrain.LxArr.UpperBound(); ++serial) {
        const TerrainPost post = terrain.LxArr(serial);
        const MadePost made = level.Posts[static_cast<size_t>(serial - 1)];
        const MadePost read{post.TileOffset, post.Elevation, post.Palette, post.X1,
                            post.X2};
        ASSERT_TRUE(read == made) << "serial " << serial;
    }
}

TEST(Addressing, SerialToXYIsTheInverseOfXYToSerial) {
    const auto expectXY = [](PostXY post, double x, double y) {
        EXPECT_EQ(post.X, x);
        EXPECT_EQ(post.Y, y);
    };
    expectXY(SerialToXY(1, 1024), 1, 1);
    expectXY(SerialToXY(1024, 1024), 1024, 1);
    expectXY(SerialToXY(1025, 1024), 1, 2);
    expectXY(SerialToXY(1048576, 1024), 1024, 1024);
    expectXY(SegToXY(2, 3, 4, 5, 1024), 20, 37);
    EXPECT_EQ(XYToSerial(20, 37, 1024), SegToSerial(2, 3, 4, 5, 1024));
}

TEST(Addressing, TheWidthComesFromTheRootOfTheEntries) {
    EXPECT_EQ(WidthFromOffsetFile(16384, "o"), 1024);
    EXPECT_EQ(WidthFromOffsetFile(4, "o"), 16);
    EXPECT_EQ(WidthFromOffsetFile(17, "o"), 33); // 32.98
    EXPECT_EQ(WidthFromOffsetFile(1, "o"), 8);
    EXPECT_THROW(WidthFromOffsetFile(0, "o"), RuntimeError);
    EXPECT_THROW(WidthFromOffsetFile(4ULL << 30, "o"), RuntimeError);
}

TEST_F(TerrainStore, ReadsBlocksWhereverTheyLie) {
    const MadeLevel level = MadeLevel::Random(64, 1);
    Write(level);
    Load();
    ExpectPosts(terrain_, level);
}

TEST_F(TerrainStore, EqualEntriesAreTheSameBlockEverywhere) {
    MadeLevel level = MadeLevel::Empty(32);
    for (int y = 1; y <= 32; ++y)
        for (int x = 1; x <= 32; ++x)
            level.At(x, y) = {(y - 1) % 16 * 16 + (x - 1) % 16, 5, 1, 2, 3};
    std::string block;
    for (int j = 1; j <= 16; ++j)
        for (int i = 1; i <= 16; ++i)
            block += tests::PostBytes(level.At(i, j));
    const std::string zero = tests::Int32Bytes(0);
    WriteRaw(block, zero + zero + zero + zero);
    Load();
    ExpectPosts(terrain_, level);
}

TEST_F(TerrainStore, ReportsEachRowOfSegments) {
    Write(MadeLevel::Random(48, 2));
    Load();
    EXPECT_EQ(progress_.Story(),
              "bar 0|text Loading L2 File...|bar 33|events|bar 67|events|"
              "bar 100|events|events");
}

TEST_F(TerrainStore, LogsItsSteps) {
    log_.DebugFlag = true;
    log_.StartDebugLog(folder_.Path() + "\\");
    Write(MadeLevel::Random(32, 2));
    Load();
    log_.DebugFlag = false;
    const std::string text = Slurp(folder_.File("Debug.txt"));
    EXPECT_EQ(text.substr(text.find('\n') + 1),
              "Opened L&O Files...\r\nMapWidth is 32\r\nRedimed LxArr, 1 to 1024\r\n"
              "Loaded L&O Files...\r\nClosed L&O Files...\r\nExiting LoadLFile...\r\n");
}

TEST_F(TerrainStore, ACutLFileLeavesTheMissingPostsZero) {
    const MadeLevel level = MadeLevel::Random(32, 3);
    std::string block;
    for (const MadePost& post : level.Posts)
        block += tests::PostBytes(post); // one block is enough; entries below
    WriteRaw(block.substr(0, 9 * 20 + 5), tests::Int32Bytes(0) + tests::Int32Bytes(9) +
                                              tests::Int32Bytes(-4) +
                                              tests::Int32Bytes(1 << 30));
    Load();
    const auto tileAt = [&](int x, int y) {
        return terrain_.LxArr(XYToSerial(x, y, 32)).TileOffset;
    };
    EXPECT_EQ(tileAt(16, 1), level.Posts[15].Tile);
    EXPECT_EQ(tileAt(4, 2), level.Posts[19].Tile); // the 20th record, the last whole one
    EXPECT_EQ(tileAt(5, 2), 0);
    EXPECT_EQ(tileAt(17, 1), level.Posts[1].Tile); // a block that begins at byte 9
    EXPECT_EQ(tileAt(20, 2), 0);
    EXPECT_EQ(tileAt(1, 17), 0);  // a negative offset reads nothing
    EXPECT_EQ(tileAt(17, 17), 0); // nor does one behind the end
}

TEST_F(TerrainStore, AnOFileOf17BytesGives33PostsASide) {
    const MadeLevel level = MadeLevel::Random(32, 4);
    const tests::PairBytes pair = tests::ScatteredPair(level);
    WriteRaw(pair.L, pair.O + "x");
    Load();
    EXPECT_EQ(terrain_.MapWidth, 33);
    EXPECT_EQ(terrain_.LxArr.UpperBound(), 33 * 33);
    EXPECT_EQ(TileAt(SegToSerial(2, 1, 3, 4, 33)), level.Posts[3 * 32 + 18].Tile);
    EXPECT_EQ(TileAt(33), 0);
}

TEST_F(TerrainStore, BadPairsEndInAMessageAndLeaveTheTerrain) {
    Write(MadeLevel::Random(32, 5));
    Load();
    std::string detail;
    WriteRaw("", "");
    EXPECT_EQ(LoadError(&detail), 62);
    EXPECT_EQ(detail, PathO() + ", offset 0: expected 4 bytes, found 0 bytes left");
    // 4093 entries round up to 1024 posts a side, and three are missing.
    WriteRaw("", std::string(size_t{4093} * 4, '\0'));
    EXPECT_EQ(LoadError(&detail), 62);
    EXPECT_EQ(detail, PathO() + ", offset 16372: expected 4 bytes, found 0 bytes left");
    EXPECT_EQ(terrain_.MapWidth, 32);
    EXPECT_EQ(terrain_.LxArr.UpperBound(), 1024);
}

TEST_F(TerrainStore, MissingFilesAndFoldersInTheirPlace) {
    EXPECT_EQ(LoadError(), 53);
    Write(MadeLevel::Random(32, 5));
    std::filesystem::remove(folder_.File("terrain/theater.L2"));
    std::filesystem::create_directory(folder_.File("terrain/theater.L2"));
    std::string detail;
    EXPECT_EQ(LoadError(&detail), 75);
    EXPECT_NE(detail.find(PathL()), std::string::npos);
}

TEST_F(TerrainStore, AHugeGarbageOFileIsRefusedBeforeMemoryIsTaken) {
    folder_.Write("terrain/theater.L2", "x");
    folder_.Write("terrain/theater.O2", "x");
    std::filesystem::resize_file(folder_.File("terrain/theater.O2"), size_t{64} << 20);
    EXPECT_EQ(LoadError(), 7);
}

TEST_F(TerrainStore, SavedUntouchedReadsBackTheSame) {
    MadeLevel level = MadeLevel::Random(1024, 6);
    Write(level);
    Load();
    SaveTheater(terrain_, folder_.Path() + "\\terrain\\copy.l2", progress_);
    EXPECT_TRUE(OnDisk("COPY").Posts == level.Posts);
    EXPECT_TRUE(OnDisk().Posts == level.Posts);
    EXPECT_EQ(terrain_.LFilename, PathL());
}

TEST_F(TerrainStore, SharesOneBlockForAllSea) {
    MadeLevel level = MadeLevel::Empty(48);
    level.At(20, 1).Elevation = -1; // segment (2, 1) is land
    level.At(33, 1).Palette = 9;    // segment (3, 1) is sea, whatever its palette
    level.At(1, 1).X1 = 7;          // the first sea segment keeps its own bytes
    Write(level);
    Load();
    SaveTheater(terrain_, "", progress_);
    const std::string bytesL = Slurp(folder_.File("terrain/theater.L2"));
    EXPECT_EQ(bytesL.size(), 2U * 2304);
    EXPECT_EQ(Slurp(folder_.File("terrain/theater.O2")),
              tests::Int32Bytes(0) + tests::Int32Bytes(2304) + tests::Int32Bytes(0) +
                  tests::Int32Bytes(0) + tests::Int32Bytes(0) + tests::Int32Bytes(0) +
                  tests::Int32Bytes(0) + tests::Int32Bytes(0) + tests::Int32Bytes(0));
    EXPECT_EQ(bytesL[7], 7);
    const MadeLevel saved = OnDisk();
    EXPECT_EQ(saved.Posts[32].Palette, 0);
    EXPECT_EQ(saved.Posts[19].Elevation, -1);
}

TEST_F(TerrainStore, AWhollySeaTerrainIsOneBlock) {
    Write(MadeLevel::Empty(64));
    Load();
    SaveTheater(terrain_, "", progress_);
    EXPECT_EQ(Slurp(folder_.File("terrain/theater.L2")), std::string(2304, '\0'));
    EXPECT_EQ(Slurp(folder_.File("terrain/theater.O2")), std::string(64, '\0'));
}

TEST_F(TerrainStore, IsCommonSegLooksAtTilesAndElevations) {
    MadeLevel level = MadeLevel::Empty(48);
    level.At(16, 16).Elevation = -1;
    level.At(17, 1).Tile = 1;
    level.At(33, 1) = {0, 0, 1, 2, 3};
    Write(level);
    Load();
    EXPECT_FALSE(IsCommonSeg(terrain_, 1, 1));
    EXPECT_FALSE(IsCommonSeg(terrain_, 2, 1));
    EXPECT_TRUE(IsCommonSeg(terrain_, 3, 1));
    EXPECT_TRUE(IsCommonSeg(terrain_, 1, 2));
}

TEST_F(TerrainStore, ANameInOtherCaseRewritesTheOneFileThatIsThere) {
    const MadeLevel level = MadeLevel::Random(32, 7);
    Write(level);
    Load();
    terrain_.LxArr(1).TileOffset = 4711;
    SaveTheater(terrain_, "", progress_);
    SaveTheater(terrain_, folder_.Path() + "/terrain/theater.l2", progress_);
    EXPECT_EQ(
        std::distance(std::filesystem::directory_iterator(folder_.File("terrain")), {}),
        2);
    EXPECT_EQ(OnDisk().Posts[0].Tile, 4711);
}

TEST_F(TerrainStore, EveryOccurrenceOfTheExtensionIsReplaced) {
    terrain_.LFilename = "l";
    terrain_.OFilename = "o";
    EXPECT_EQ(PairForSaving(terrain_, "").L, "l");
    EXPECT_EQ(PairForSaving(terrain_, "").O, "o");
    const LevelPair pair = PairForSaving(terrain_, "/my.l2 work/a.l2");
    EXPECT_EQ(pair.L, "/my.l2 work/A.L2");
    EXPECT_EQ(pair.O, "/my.o2 work/A.O2");
}

TEST_F(TerrainStore, ANameForWhichBothWouldBeOneFileIsRefused) {
    Write(MadeLevel::Random(32, 8));
    Load();
    const std::string before = folder_.Names();
    EXPECT_THROW(SaveTheater(terrain_, folder_.File("terrain/island.dat"), progress_),
                 RuntimeError);
    EXPECT_FALSE(std::filesystem::exists(folder_.File("terrain/ISLAND.DAT")));
    // The files of the theater itself can be such a pair: a L2 file of any other name.
    terrain_.OFilename = terrain_.LFilename;
    EXPECT_THROW(SaveTheater(terrain_, "", progress_), RuntimeError);
    EXPECT_EQ(folder_.Names(), before);
}

TEST_F(TerrainStore, SavingShowsItsBarRowByRow) {
    Write(MadeLevel::Random(32, 9));
    Load();
    progress_.Forget();
    SaveTheater(terrain_, "", progress_);
    EXPECT_EQ(progress_.Story(), "show|bar 50|events|bar 100|events|hide");
}

TEST_F(TerrainStore, OpeningMendsAnInterruptedSave) {
    const MadeLevel level = MadeLevel::Random(32, 10);
    const MadeLevel newer = MadeLevel::Random(32, 11);
    const tests::PairBytes newPair = tests::ScatteredPair(newer);
    // The old blocks lie elsewhere.
    WriteRaw(tests::ScatteredPair(level).L, std::string(newPair.O.size(), '\0'));
    // Killed between the two renames: the L file is new, the O file still staged.
    tests::JournalMaker journal;
    journal.Add("theater.L2", newPair.L, folder_.File("terrain/theater.L2"));
    journal.Add("theater.O2", newPair.O, folder_.File("terrain/theater.O2"));
    folder_.Write("terrain/vardenix.journal", journal.Text());
    folder_.Write("terrain/theater.L2", newPair.L);
    folder_.Write("terrain/theater.O2x", newPair.O);
    Load();
    ExpectPosts(terrain_, newer);
    EXPECT_EQ(Slurp(folder_.File("terrain/theater.O2")), newPair.O);
}

TEST_F(TerrainStore, AStrayFileThatLooksStagedCostsNothing) {
    const MadeLevel level = MadeLevel::Random(32, 10);
    Write(level);
    const std::string oldO = Slurp(folder_.File("terrain/theater.O2"));
    folder_.Write("terrain/theater.O2x", "");
    Load();
    ExpectPosts(terrain_, level);
    EXPECT_EQ(Slurp(folder_.File("terrain/theater.O2")), oldO);
    EXPECT_FALSE(std::filesystem::exists(folder_.File("terrain/theater.O2x")));
}

} // namespace
} // namespace vardenix
