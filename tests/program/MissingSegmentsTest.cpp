#include "program/MissingSegments.h"

#include "levels/TerrainStore.h"
#include "platform/Progress.h"
#include "support/FixedClock.h"
#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "support/TheaterMaker.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

using tests::TestFolder;

class MissingSegments : public testing::Test {
protected:
    MissingSegments() {
        terrain_.LFilename = folder_.File("theater.L2");
        terrain_.OFilename = folder_.File("theater.O2");
    }
    // A pair of 64 posts a side, four segments by four, whose files are cut to so many
    // bytes. The blocks lie in the order of their segments.
    void Load(size_t bytesL, size_t bytesO) {
        std::string fileL;
        std::string fileO;
        for (int segment = 0; segment < 16; ++segment) {
            fileO += tests::Int32Bytes(static_cast<int>(fileL.size()));
            fileL += std::string(2304, static_cast<char>(segment + 1));
        }
        folder_.Write("theater.L2", fileL.substr(0, bytesL));
        folder_.Write("theater.O2", fileO.substr(0, bytesO));
        LoadLFile(terrain_, progress_, log_);
    }
    std::string Gap() {
        const SegmentGap gap = GapOf(terrain_, record_);
        return std::to_string(gap.Missing) + " of " + std::to_string(gap.All);
    }
    void State(int32_t segments) {
        record_.Levels[2].Width = segments;
        record_.Levels[2].Height = segments;
    }

    TestFolder folder_;
    Terrain terrain_;
    MapFileRecord record_{};
    NoProgress progress_;
    tests::FixedClock clock_;
    DebugLog log_{clock_};
    tests::ScriptedDialogs dialogs_;
};

TEST_F(MissingSegments, OfAWholePairAreNone) {
    Load(36864, 64);
    EXPECT_EQ(Gap(), "0 of 16");
    State(4);
    EXPECT_EQ(Gap(), "0 of 16");
    TellGap(terrain_, record_, dialogs_);
    EXPECT_TRUE(MaySaveOverGap(terrain_, dialogs_));
}

TEST_F(MissingSegments, AreBlocksThatTheLFileDoesNotHoldWhole) {
    Load(36863, 64);
    EXPECT_EQ(Gap(), "1 of 16");
    Load(2304 * 5 + 7, 64);
    EXPECT_EQ(Gap(), "11 of 16");
    Load(0, 64);
    EXPECT_EQ(Gap(), "16 of 16");
}

TEST_F(MissingSegments, AreThoseBeyondTheOFileWhenTheaterMapStatesMore) {
    // 16 of 64 bytes: two segments by two.
    Load(36864, 16);
    EXPECT_EQ(Gap(), "0 of 4");
    State(4);
    EXPECT_EQ(Gap(), "12 of 16");
    Load(2304, 16);
    EXPECT_EQ(Gap(), "15 of 16");
}

TEST_F(MissingSegments, AreNotMadeUpFromSizesThatCannotBe) {
    Load(36864, 64);
    for (const int32_t stated : {0, -4, 2, 4, 64, 100000, 2147483647}) {
        State(stated); // 64 are the posts of this very pair
        EXPECT_EQ(Gap(), "0 of 16") << stated;
    }
}

TEST_F(MissingSegments, AreToldAtTheOpeningAndAskedAboutAtTheFirstSave) {
    Load(2304 * 5, 64);
    dialogs_.ExpectBox("Warning...",
                       "11 of 16 segments of this theater are missing in " +
                           terrain_.LFilename + " and " + terrain_.OFilename +
                           ".\nSaving would make that permanent: if there is a backup "
                           "of the two files, bring it back first.",
                       BoxAnswer::Ok);
    TellGap(terrain_, record_, dialogs_);
    const std::string question =
        "11 of 16 segments were missing in " + terrain_.LFilename +
        " when it was opened. Saving makes that permanent. Save it all the same?";
    dialogs_.ExpectBox("Confirm", question, BoxAnswer::No);
    EXPECT_FALSE(MaySaveOverGap(terrain_, dialogs_));
    EXPECT_EQ(dialogs_.LastButtons(), BoxButtons::YesNo);
    dialogs_.ExpectBox("Confirm", question, BoxAnswer::Yes);
    EXPECT_TRUE(MaySaveOverGap(terrain_, dialogs_));
    // Under another name nothing is lost, and the question stays.
    SaveTheater(terrain_, folder_.File("COPY.L2"), progress_);
    EXPECT_EQ(terrain_.Gap.Missing, 11);
    SaveTheater(terrain_, "", progress_);
    EXPECT_TRUE(MaySaveOverGap(terrain_, dialogs_));
}

TEST_F(MissingSegments, AllOfThemIsNoTheater) {
    for (const size_t bytesO : {size_t{1}, size_t{2}, size_t{3}}) {
        try {
            Load(36864, bytesO);
            ADD_FAILURE() << bytesO;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), ErrorNumber::InputPastEnd);
            EXPECT_NE(error.Detail().find("not one whole segment"), std::string::npos);
        }
    }
    EXPECT_EQ(terrain_.MapWidth, 0);
}

} // namespace
} // namespace vardenix
