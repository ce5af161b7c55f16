#include "levels/ElevationFiles.h"

#include "support/RecordingProgress.h"
#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace vardenix {
namespace {

using tests::MadeLevel;
using tests::Slurp;
using tests::TestFolder;

constexpr const char* WrongWidth =
    "The size of L0 file doesn't appear to be valid for this theater";
constexpr const char* WrongWidthAtSaving =
    "The size of L0 file doesn't appear to be valid for this theater. Do you want to "
    "overwite this file (all other terrain values will be overwritten)? ";

std::string EmptyPairQuestion(const std::string& path) {
    return "A L0 file keeps tiles and colors beside the heights, so heights can only be "
           "saved into one that is there together with its O0 file.\n" +
           path +
           " and its O0 file will be two empty files, and the heights stay unsaved. "
           "Copy a L0 file of this theater and its O0 file to that name first, or save "
           "an ELV file.\n"
           "Do you want to write two empty files?";
}

// A theater of 16 posts a side, so its level 0 has 64.
class ElevationFiles : public testing::Test {
protected:
    void SetUp() override { terrain_.MapWidth = 16; }

    void WriteL0(const MadeLevel& level) {
        const tests::PairBytes pair = tests::ScatteredPair(level);
        pathL_ = folder_.Write("theater.L0", pair.L);
        pathO_ = folder_.Write("theater.O0", pair.O);
    }
    bool Load(ElevationKind kind, const std::string& path) {
        return LoadElevationData(terrain_, kind, path, progress_, dialogs_, log_);
    }
    bool Save(ElevationKind kind, const std::string& path) {
        return SaveElevationData(terrain_, kind, path, progress_, dialogs_) ==
               ElevationSave::Done;
    }
    void LoadElv(unsigned seed) {
        ASSERT_TRUE(Load(ElevationKind::Elv,
                         folder_.Write("a.elv", ElvBytes(MadeLevel::Random(64, seed)))));
    }
    static std::string ElvBytes(const MadeLevel& level) {
        std::string bytes;
        for (const tests::MadePost& post : level.Posts)
            bytes += tests::Int16Bytes(post.Elevation);
        return bytes;
    }
    void ExpectElevations(const MadeLevel& level) {
        ASSERT_EQ(terrain_.Elevations.EMapWidth, level.Width);
        for (int y = 1; y <= level.Width; ++y)
            for (int x = 1; x <= level.Width; ++x)
                ASSERT_EQ(terrain_.Elevations.At(x, y),
                          level.Posts[static_cast<size_t>((y - 1) * level.Width + x - 1)]
                              .Elevation)
                    << x << "," << y;
    }

    TestFolder folder_;
    SystemClock clock_;
    DebugLog log_{clock_};
    tests::RecordingProgress progress_;
    tests::ScriptedDialogs dialogs_;
    Terrain terrain_;
    std::string pathL_;
    std::string pathO_;
};

TEST_F(ElevationFiles, TheOFileIsNamedByItsLastThreeCharacters) {
    EXPECT_EQ(OffsetFileOfL0("/a.l0/theater.l0"), "/a.l0/theater.O0");
    EXPECT_EQ(OffsetFileOfL0("L0"), ".O0");
}

TEST_F(ElevationFiles, TheExtensionTellsTheKind) {
    EXPECT_EQ(KindOfElevationFile("/a.elv/theater.l0"), ElevationKind::L0);
    EXPECT_EQ(KindOfElevationFile("THEATER.L0"), ElevationKind::L0);
    EXPECT_EQ(KindOfElevationFile("heights.Elv"), ElevationKind::Elv);
    EXPECT_EQ(KindOfElevationFile("theater.L2"), ElevationKind::None);
    EXPECT_EQ(KindOfElevationFile("elv"), ElevationKind::None);
}

TEST_F(ElevationFiles, ReadsTheElevationsOfAL0File) {
    const MadeLevel level = MadeLevel::Random(64, 1);
    WriteL0(level);
    ASSERT_TRUE(Load(ElevationKind::L0, pathL_));
    ExpectElevations(level);
    EXPECT_EQ(terrain_.Elevations.Kind, ElevationKind::L0);
    EXPECT_EQ(terrain_.Elevations.Path, pathL_);
}

TEST_F(ElevationFiles, LogsTheLoadingOfAL0File) {
    log_.DebugFlag = true;
    log_.StartDebugLog(folder_.Path() + "/");
    WriteL0(MadeLevel::Random(64, 1));
    ASSERT_TRUE(Load(ElevationKind::L0, pathL_));
    log_.DebugFlag = false;
    const std::string text = Slurp(folder_.File("Debug.txt"));
    EXPECT_EQ(
        text.substr(text.find('\n') + 1),
        "Opened L&O Files...\r\nEMapWidth is 64\r\nRedimed L0ElvArr, 1 to 64 (x2)\r\n"
        "Loaded L&O Files...\r\nClosed L&O Files...\r\n");
}

TEST_F(ElevationFiles, ReadsRawElevationsFromTheBottomRow) {
    const MadeLevel level = MadeLevel::Random(64, 2);
    ASSERT_TRUE(
        Load(ElevationKind::Elv, folder_.Write("my heights.elv", ElvBytes(level))));
    ExpectElevations(level);
    // The bar moves with each row, events pass with each tenth.
    const std::string& story = progress_.Story();
    EXPECT_EQ(story.substr(0, 12), "bar 2|bar 3|");
    EXPECT_EQ(std::count(story.begin(), story.end(), 'v'), 6);
}

TEST_F(ElevationFiles, AWrongWidthIsToldAndNothingIsLoaded) {
    WriteL0(MadeLevel::Random(32, 3));
    dialogs_.ExpectBox("Error!", WrongWidth, BoxAnswer::Ok);
    EXPECT_FALSE(Load(ElevationKind::L0, pathL_));
    dialogs_.ExpectBox("Error!", WrongWidth, BoxAnswer::Ok);
    EXPECT_FALSE(Load(ElevationKind::Elv, folder_.Write("a.elv", "")));
    EXPECT_EQ(terrain_.Elevations.Kind, ElevationKind::None);
    EXPECT_EQ(terrain_.Elevations.EMapWidth, 0);
}

TEST_F(ElevationFiles, AMissingO0FileIsTold) {
    dialogs_.ExpectBox("Error...", ".O0 File not found\n" + folder_.File("alone.O0"),
                       BoxAnswer::Ok);
    EXPECT_FALSE(Load(ElevationKind::L0, folder_.Write("alone.L0", "x")));
}

TEST_F(ElevationFiles, AnElvFileAFewBytesShortEndsInZeros) {
    // 4095 values, and 4033 with half of another one: both have a root that rounds to 64.
    for (const size_t bytes : {size_t{64 * 64 * 2 - 2}, size_t{64 * 64 * 2 - 125}}) {
        ASSERT_TRUE(
            Load(ElevationKind::Elv, folder_.Write("a.elv", std::string(bytes, '\1'))));
        ASSERT_EQ(terrain_.Elevations.EMapWidth, 64);
        const auto whole = static_cast<int>(bytes / 2);
        for (int i = 0; i < 64 * 64; ++i)
            ASSERT_EQ(terrain_.Elevations.At(i % 64 + 1, i / 64 + 1),
                      i < whole ? 0x0101 : 0)
                << bytes << " bytes, value " << i;
    }
}

TEST_F(ElevationFiles, AnElvFileIsMeasuredAndNotReadWhenItsSizeIsWrong) {
    const std::string path = folder_.Write("a.elv", "");
    std::filesystem::resize_file(path, uintmax_t{3} << 30); // takes no room on the disk
    dialogs_.ExpectBox("Error!", WrongWidth, BoxAnswer::Ok);
    EXPECT_FALSE(Load(ElevationKind::Elv, path));
}

TEST_F(ElevationFiles, AnO0FileOfAnySizeThatDoesNotFitIsTold) {
    const std::string pathL = folder_.Write("a.L0", std::string(2304, '\0'));
    const std::string pathO = folder_.File("a.O0");
    for (const uintmax_t length : {uintmax_t{0}, uintmax_t{3}, uintmax_t{60},
                                   uintmax_t{32} << 20, uintmax_t{3} << 30}) {
        folder_.Write("a.O0", "");
        std::filesystem::resize_file(pathO, length);
        dialogs_.ExpectBox("Error!", WrongWidth, BoxAnswer::Ok);
        EXPECT_FALSE(Load(ElevationKind::L0, pathL)) << length;
        EXPECT_TRUE(dialogs_.AllAnswered()) << length;
        EXPECT_EQ(terrain_.Elevations.Kind, ElevationKind::None);
    }
}

TEST_F(ElevationFiles, SavingOverAnO0FileOfAnySizeThatDoesNotFitIsAsked) {
    LoadElv(8);
    const std::string pathL = folder_.Write("b.L0", "old");
    const std::string pathO = folder_.File("b.O0");
    for (const uintmax_t length : {uintmax_t{0}, uintmax_t{60}, uintmax_t{3} << 30}) {
        folder_.Write("b.O0", "");
        std::filesystem::resize_file(pathO, length);
        dialogs_.ExpectBox("Error!", WrongWidthAtSaving, BoxAnswer::Yes);
        EXPECT_EQ(
            SaveElevationData(terrain_, ElevationKind::L0, pathL, progress_, dialogs_),
            ElevationSave::Refused);
        EXPECT_EQ(Slurp(pathL), "old");
        EXPECT_EQ(std::filesystem::file_size(pathO), length);
    }
}

TEST_F(ElevationFiles, AnElvRoundTripKeepsEveryByte) {
    const std::string bytes = ElvBytes(MadeLevel::Random(64, 4));
    const std::string path = folder_.Write("a.elv", bytes);
    ASSERT_TRUE(Load(ElevationKind::Elv, path));
    terrain_.Elevations.At(3, 2) = -7;
    ASSERT_TRUE(Save(ElevationKind::None, ""));
    std::string expected = bytes;
    expected.replace((64 + 2) * 2, 2, tests::Int16Bytes(-7));
    EXPECT_EQ(Slurp(path), expected);
    EXPECT_EQ(folder_.Names(), "a.elv");
}

TEST_F(ElevationFiles, SavingIntoAL0FileKeepsAllButTheElevations) {
    MadeLevel level = MadeLevel::Random(64, 5);
    WriteL0(level);
    ASSERT_TRUE(Load(ElevationKind::L0, pathL_));
    terrain_.Elevations.At(20, 30) = 1234;
    ASSERT_TRUE(Save(ElevationKind::None, ""));
    level.At(20, 30).Elevation = 1234;
    EXPECT_TRUE(tests::ReadPair(pathL_, pathO_).Posts == level.Posts);
    EXPECT_EQ(folder_.Names(), "theater.L0 theater.O0");
}

TEST_F(ElevationFiles, SeaOfAnExistingL0IsTile8192AtHeight0) {
    MadeLevel level = MadeLevel::Empty(64);
    for (tests::MadePost& post : level.Posts)
        post.Tile = 0x2000;
    level.At(5, 5).Palette = 3; // segment (1, 1): sea, the first one's bytes are shared
    level.At(33, 1).Tile = 0;   // segment (3, 1): another tile
    level.At(50, 1).Elevation = -1; // segment (4, 1): below 0
    WriteL0(level);
    ASSERT_TRUE(Load(ElevationKind::L0, pathL_));
    ASSERT_TRUE(Save(ElevationKind::None, ""));
    std::string expected = tests::Int32Bytes(0) + tests::Int32Bytes(0) +
                           tests::Int32Bytes(2304) + tests::Int32Bytes(4608);
    expected += std::string(size_t{12} * 4, '\0');
    EXPECT_EQ(Slurp(pathO_), expected);
    EXPECT_EQ(Slurp(pathL_).size(), 3U * 2304);
}

TEST_F(ElevationFiles, WhatStandsBehindTheEntriesStays) {
    const MadeLevel level = MadeLevel::Random(64, 6);
    const tests::PairBytes pair = tests::ScatteredPair(level);
    pathL_ = folder_.Write("theater.L0", pair.L);
    pathO_ = folder_.Write("theater.O0", pair.O + "z");
    ASSERT_TRUE(Load(ElevationKind::L0, pathL_));
    ASSERT_TRUE(Save(ElevationKind::None, ""));
    EXPECT_EQ(Slurp(pathO_).size(), 65U);
    EXPECT_EQ(Slurp(pathO_).back(), 'z');
}

TEST_F(ElevationFiles, ANewL0PairIsTwoEmptyFiles) {
    LoadElv(7);
    const auto save = [&](const std::string& path) {
        dialogs_.ExpectBox("Confirm", EmptyPairQuestion(path), BoxAnswer::Yes);
        return SaveElevationData(terrain_, ElevationKind::L0, path, progress_, dialogs_);
    };
    // Not done: no file holds the heights.
    EXPECT_EQ(save(folder_.File("new.L0")), ElevationSave::EmptyPair);
    EXPECT_EQ(dialogs_.LastButtons(), BoxButtons::YesNo);
    EXPECT_EQ(dialogs_.LastIcon(), BoxIcon::Warning);
    EXPECT_EQ(Slurp(folder_.File("new.L0")), "");
    EXPECT_EQ(Slurp(folder_.File("new.O0")), "");
    // The same where only one of the two is there.
    EXPECT_EQ(save(folder_.Write("half.L0", "something")), ElevationSave::EmptyPair);
    EXPECT_EQ(Slurp(folder_.File("half.L0")), "");
    EXPECT_EQ(Slurp(folder_.File("half.O0")), "");
    folder_.Write("other.O0", "something");
    EXPECT_EQ(save(folder_.File("other.L0")), ElevationSave::EmptyPair);
    EXPECT_EQ(Slurp(folder_.File("other.L0")), "");
    EXPECT_EQ(Slurp(folder_.File("other.O0")), "");
}

TEST_F(ElevationFiles, WhoDoesNotWantTwoEmptyFilesGetsNone) {
    LoadElv(7);
    const std::string path = folder_.Write("half.L0", "something");
    dialogs_.ExpectBox("Confirm", EmptyPairQuestion(path), BoxAnswer::No);
    EXPECT_EQ(SaveElevationData(terrain_, ElevationKind::L0, path, progress_, dialogs_),
              ElevationSave::Refused);
    EXPECT_EQ(Slurp(path), "something");
    EXPECT_EQ(folder_.Names(), "a.elv half.L0");
}

TEST_F(ElevationFiles, SavingOverAL0OfAnotherWidthEndsThereWhateverIsAnswered) {
    for (const BoxAnswer answer : {BoxAnswer::Yes, BoxAnswer::No}) {
        ASSERT_TRUE(Load(ElevationKind::Elv,
                         folder_.Write("a.elv", ElvBytes(MadeLevel::Random(64, 8)))));
        WriteL0(MadeLevel::Random(32, 9));
        const std::string bytesL = Slurp(pathL_);
        const std::string bytesO = Slurp(pathO_);
        dialogs_.ExpectBox("Error!", WrongWidthAtSaving, answer);
        EXPECT_FALSE(Save(ElevationKind::L0, pathL_));
        EXPECT_EQ(Slurp(pathL_), bytesL);
        EXPECT_EQ(Slurp(pathO_), bytesO);
        EXPECT_EQ(Slurp(folder_.File("theater.L0x")), "");
        EXPECT_TRUE(terrain_.Elevations.AbandonedXFile.IsOpen());
    }
    EXPECT_EQ(dialogs_.LastButtons(), BoxButtons::YesNo);
}

TEST_F(ElevationFiles, AL0NameThatIsItsOwnO0FileIsRefused) {
    ASSERT_TRUE(Load(ElevationKind::Elv,
                     folder_.Write("a.elv", ElvBytes(MadeLevel::Random(64, 7)))));
    EXPECT_THROW(Save(ElevationKind::L0, folder_.File("new.O0")), RuntimeError);
    EXPECT_EQ(folder_.Names(), "a.elv");
}

TEST_F(ElevationFiles, PlacesOutsideTheLayerAreRefused) {
    ASSERT_TRUE(Load(ElevationKind::Elv,
                     folder_.Write("a.elv", ElvBytes(MadeLevel::Random(64, 7)))));
    EXPECT_NO_THROW(terrain_.Elevations.At(64, 64));
    EXPECT_THROW(terrain_.Elevations.At(65, 1), RuntimeError);
    EXPECT_THROW(terrain_.Elevations.At(1, 0), RuntimeError);
}

} // namespace
} // namespace vardenix
