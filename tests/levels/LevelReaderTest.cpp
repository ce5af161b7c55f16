// Single posts and heights against the same ones of a file that is read whole.
#include "levels/LevelReader.h"

#include "levels/ElevationFiles.h"
#include "levels/TerrainStore.h"
#include "support/RecordingProgress.h"
#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <optional>

namespace vardenix {
namespace {

using tests::MadeLevel;
using tests::MadePost;
using tests::TestFolder;

class LevelReaderTest : public testing::Test {
protected:
    void WritePair(const std::string& level, const tests::PairBytes& pair) {
        terrain_.LFilename = folder_.Write("theater.L" + level, pair.L);
        terrain_.OFilename = folder_.Write("theater.O" + level, pair.O);
    }
    // Every post and what else is known of the pair, read both ways.
    void ExpectTheSame() {
        Terrain read;
        read.LFilename = terrain_.LFilename;
        read.OFilename = terrain_.OFilename;
        LoadLFile(read, progress_, log_);
        const LevelReader lookup = OpenLevel2(terrain_, log_);
        ASSERT_EQ(terrain_.MapWidth, read.MapWidth);
        EXPECT_EQ(terrain_.ReadL, read.ReadL);
        EXPECT_EQ(terrain_.ReadO, read.ReadO);
        EXPECT_EQ(terrain_.Gap.Missing, read.Gap.Missing);
        EXPECT_EQ(terrain_.Gap.All, read.Gap.All);
        int32_t serial = 0;
        for (int32_t y = 1; y <= read.MapWidth; ++y)
            for (int32_t x = 1; x <= read.MapWidth; ++x) {
                const TerrainPost one = lookup.PostAt(x, y);
                const TerrainPost other = read.LxArr(++serial);
                ASSERT_EQ(std::memcmp(&one, &other, sizeof one), 0) << x << "," << y;
            }
    }

    TestFolder folder_;
    SystemClock clock_;
    DebugLog log_{clock_};
    tests::RecordingProgress progress_;
    tests::ScriptedDialogs dialogs_;
    Terrain terrain_;
};

TEST_F(LevelReaderTest, TellsThePostsThatLoadingReads) {
    const MadeLevel level = MadeLevel::Random(48, 5);
    WritePair("2", tests::ScatteredPair(level));
    ExpectTheSame();
    const TerrainPost post = OpenLevel2(terrain_, log_).PostAt(48, 17);
    const MadePost made = level.Posts[16 * 48 + 47];
    EXPECT_TRUE((MadePost{post.TileOffset, post.Elevation, post.Palette, post.X1,
                          post.X2} == made));
}

TEST_F(LevelReaderTest, WhatTheFilesLackIsZeroAndCounted) {
    tests::PairBytes pair = tests::ScatteredPair(MadeLevel::Random(64, 6));
    pair.L.resize(pair.L.size() - 2304 - 700); // inside a post
    pair.O.replace(8, 4, "\xF0\xFF\xFF\xFF");
    pair.O.replace(20, 4, std::string("\xFF\xFF\xFF\x7F", 4));
    WritePair("2", pair);
    ExpectTheSame();
    EXPECT_EQ(terrain_.Gap.Missing, 4);
}

TEST_F(LevelReaderTest, PostsBesideTheWholeSegmentsAreZero) {
    tests::PairBytes pair = tests::ScatteredPair(MadeLevel::Random(32, 7));
    pair.O.resize(17); // 33 posts a side
    WritePair("2", pair);
    ExpectTheSame();
    ASSERT_EQ(terrain_.MapWidth, 33);
    EXPECT_EQ(OpenLevel2(terrain_, log_).PostAt(33, 1).TileOffset, 0);
}

TEST_F(LevelReaderTest, BadPairsEndAsLoadingThemDoes) {
    for (const size_t lengthO : {size_t{0}, size_t{2}, size_t{288 * 4}}) {
        WritePair("2", {std::string(5000, 'x'), std::string(lengthO, '\0')});
        const auto endOf = [](auto action) -> std::string {
            try {
                action();
            } catch (const RuntimeError& error) {
                return error.Detail();
            }
            return "";
        };
        const std::string loaded = endOf([&] { LoadLFile(terrain_, progress_, log_); });
        EXPECT_NE(loaded, "");
        EXPECT_EQ(endOf([&] { OpenLevel2(terrain_, log_); }), loaded);
    }
}

// Neighbours in the row that are neighbours in the file, shared, the other way round, and
// missing: a row is what its blocks are one by one.
TEST_F(LevelReaderTest, ARowIsItsBlocksHoweverTheyLie) {
    constexpr int32_t Blocks = 8;
    std::string fileL;
    for (int32_t block = 0; block < 6; ++block)
        for (int32_t post = 0; post < PostsPerSegment; ++post) {
            TerrainPost made{};
            made.TileOffset = 1000 * (block + 1) + post;
            fileL.append(reinterpret_cast<const char*>(&made), sizeof made);
        }
    std::string fileO;
    const std::vector<int32_t> order{1, 2, 3, 3, 3, 2, 1, 0};
    for (int32_t y = 0; y < Blocks; ++y)
        for (const int32_t block : order) {
            const int32_t offset = y == 1 ? -BlockBytes * block : BlockBytes * block;
            fileO.append(reinterpret_cast<const char*>(&offset), sizeof offset);
        }
    WritePair("2", {fileL, fileO});
    const LevelReader reader({terrain_.LFilename, terrain_.OFilename}, Blocks);
    std::vector<TerrainPost> row(Blocks * PostsPerSegment);
    for (const int32_t y : {0, 1}) {
        reader.ReadRow(y, row);
        for (size_t x = 0; x < order.size(); ++x)
            for (int32_t post = 0; post < PostsPerSegment; ++post) {
                const bool there = y == 0 || order[x] == 0;
                ASSERT_EQ(
                    int32_t{
                        row[x * PostsPerSegment + static_cast<size_t>(post)].TileOffset},
                    there ? 1000 * (order[x] + 1) + post : 0)
                    << x << ' ' << y;
            }
    }
}

// Windows of a mebibyte: the pair has more than two of them, so blocks lie across their
// edges.
TEST_F(LevelReaderTest, ALevelOfManyWindowsIsReadAsItLies) {
    const MadeLevel level = MadeLevel::Random(512, 8);
    tests::PairBytes pair = tests::ScatteredPair(level);
    ASSERT_GT(pair.L.size(), 2u << 20);
    WritePair("2", pair);
    ExpectTheSame();
    LoadLFile(terrain_, progress_, log_);
    for (size_t i = 0; i < level.Posts.size(); ++i) {
        const TerrainPost post = terrain_.LxArr.Values()[i];
        ASSERT_EQ(int32_t{post.TileOffset}, level.Posts[i].Tile) << i;
    }
}

class ElevationLookup : public LevelReaderTest {
protected:
    // Level 0 of a theater of 16 posts a side, as a pair and as an .elv file.
    void SetUp() override {
        terrain_.MapWidth = 16;
        finest_ = MadeLevel::Random(64, 9);
        for (int y = 1; y <= 16; ++y) // sea of level 0
            for (int x = 17; x <= 48; ++x)
                finest_.At(x, y) = {8192, 0, 1, 2, 3};
        Write();
    }
    void Write() {
        const tests::PairBytes pair = tests::ScatteredPair(finest_);
        l0_ = folder_.Write("finest.L0", pair.L);
        o0_ = folder_.Write("finest.O0", pair.O + "t");
        std::string heights;
        for (const MadePost& post : finest_.Posts)
            heights += tests::Int16Bytes(post.Elevation);
        elv_ = folder_.Write("finest.elv", heights);
    }
    std::optional<int16_t> LookUp(const std::string& path, int32_t x, int32_t y) {
        return LookUpElevation(terrain_, KindOfElevationFile(path), path, x, y, dialogs_,
                               log_);
    }
    std::string Bytes() const {
        return tests::Slurp(l0_) + "|" + tests::Slurp(o0_) + "|" + tests::Slurp(elv_);
    }

    MadeLevel finest_;
    std::string l0_, o0_, elv_;
};

TEST_F(ElevationLookup, TellsEveryHeightOfBothKinds) {
    for (int y = 1; y <= 64; ++y)
        for (int x = 1; x <= 64; ++x) {
            ASSERT_EQ(LookUp(l0_, x, y), finest_.At(x, y).Elevation) << x << "," << y;
            ASSERT_EQ(LookUp(elv_, x, y), finest_.At(x, y).Elevation) << x << "," << y;
        }
}

TEST_F(ElevationLookup, FilesOfAnotherTheaterAreTold) {
    terrain_.MapWidth = 32;
    for (const std::string& path : {l0_, elv_}) {
        dialogs_.ExpectBox(
            "Error!", "The size of L0 file doesn't appear to be valid for this theater",
            BoxAnswer::Ok);
        EXPECT_EQ(LookUp(path, 1, 1), std::nullopt);
    }
    terrain_.MapWidth = 16;
    std::filesystem::remove(o0_);
    dialogs_.ExpectBox("Error...", ".O0 File not found\n" + o0_, BoxAnswer::Ok);
    EXPECT_EQ(LookUp(l0_, 1, 1), std::nullopt);
}

TEST_F(ElevationLookup, OneChangeWritesWhatLoadingAndSavingWould) {
    struct Change {
        int32_t X, Y;
        int16_t Feet;
    };
    // Land, the second of two segments of sea, and sea that stays so.
    for (const auto& [x, y, feet] :
         {Change{1, 1, -32768}, {48, 16, 7}, {17, 1, 0}, {64, 64, 32767}})
        for (const bool isL0 : {true, false}) {
            Write();
            const std::string path = isL0 ? l0_ : elv_;
            const auto kind = KindOfElevationFile(path);
            ASSERT_TRUE(
                LoadElevationData(terrain_, kind, path, progress_, dialogs_, log_));
            terrain_.Elevations.At(x, y) = feet;
            ASSERT_EQ(SaveElevationData(terrain_, kind, "", progress_, dialogs_),
                      ElevationSave::Done);
            const std::string wholeWay = Bytes();
            Write();
            EXPECT_EQ(
                SetElevation(terrain_, kind, path, x, y, feet, progress_, dialogs_, log_),
                ElevationSave::Done);
            EXPECT_TRUE(Bytes() == wholeWay) << path << " " << x << "," << y;
        }
}

} // namespace
} // namespace vardenix
