#include "catalogue/TileCheck.h"
#include "platform/DebugLog.h"
#include "program/ExitGuard.h"
#include "support/FixedClock.h"
#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vardenix {
namespace {

using tests::Slurp;
using tests::TestFolder;

constexpr const char* Question =
    "Some tiles in L2 file don't exist in bin file. Do you want "
    "to save a text file with the errors?";

// Two posts a side would do; widths are multiples of 16 in real theaters.
class TileCheck : public testing::Test {
protected:
    void SetUp() override {
        terrain_.MapWidth = 16;
        terrain_.LxArr = PostArray(256);
        lookup_.resize(16);
        for (size_t number : {0U, 1U, 5U})
            lookup_[number].Terrain = 4;
    }
    void Compare(bool showReport) {
        CompareL2Tiles(showReport, terrain_, lookup_, folder_.Path() + "\\", dialogs_,
                       clock_);
    }

    TestFolder folder_;
    tests::FixedClock clock_;
    tests::ScriptedDialogs dialogs_;
    Terrain terrain_;
    TileLookup lookup_;
};

TEST_F(TileCheck, CountsAndZeroesEveryElementTheEmptyOnesToo) {
    lookup_[5].UseCount = 99;
    lookup_[9].UseCount = -1;
    terrain_.LxArr(1).TileOffset = 1;
    terrain_.LxArr(256).TileOffset = 1;
    Compare(true);
    EXPECT_EQ(lookup_[0].UseCount, 254);
    EXPECT_EQ(lookup_[1].UseCount, 2);
    EXPECT_EQ(lookup_[5].UseCount, 0);
    EXPECT_EQ(lookup_[9].UseCount, 0);
}

TEST_F(TileCheck, ANumberAboveTheTableIsListedAndNotCounted) {
    terrain_.LxArr(18).TileOffset = 16;
    terrain_.LxArr(19).TileOffset = 15; // an empty slot: listed and counted
    const std::vector<int32_t> unknown = CountTileUse(terrain_, lookup_);
    EXPECT_EQ(unknown, (std::vector<int32_t>{18, 19}));
    EXPECT_EQ(lookup_[15].UseCount, 1);
    EXPECT_EQ(lookup_[0].UseCount, 254);
}

TEST_F(TileCheck, ANegativeNumberStopsAndNamesThePost) {
    terrain_.LFilename = "THEATER.L2";
    terrain_.LxArr(18).TileOffset = -1;
    try {
        Compare(true);
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.NumberValue(), 9);
        EXPECT_EQ(error.Detail(),
                  "THEATER.L2: the post at X 1, Y 1, counted from 0, has the "
                  "tile number -1; expected 0 or more");
    }
}

TEST_F(TileCheck, NoReportIsWrittenUnlessTheAnswerIsYes) {
    terrain_.LxArr(18).TileOffset = 16;
    dialogs_.ExpectBox("", Question, BoxAnswer::No);
    Compare(true);
    EXPECT_EQ(dialogs_.LastIcon(), BoxIcon::Warning);
    EXPECT_EQ(folder_.Names(), "");
    // Without a report nothing is asked, and the counts are refreshed all the same.
    lookup_[0].UseCount = 7;
    Compare(false);
    EXPECT_EQ(lookup_[0].UseCount, 255);
}

TEST_F(TileCheck, TwoReportsAreTwoSectionsWithCoordinatesFrom1) {
    terrain_.LxArr(18).TileOffset = 16;
    terrain_.LxArr(256).TileOffset = 4711;
    const std::string dashes = "-----------------------------------\r\n";
    const std::string section = "\r\n" + dashes + dashes +
                                "      Module1::CompareL2Tiles      \r\n"
                                "        07 Mar 2026 - 09:05        \r\n" +
                                dashes + dashes + "X,Y\tTile Offset\r\n" + dashes +
                                "2,2\t16\r\n16,16\t4711\r\n";
    for (int run = 0; run < 2; ++run) {
        dialogs_.ExpectBox("", Question, BoxAnswer::Yes);
        Compare(true);
    }
    EXPECT_EQ(Slurp(folder_.File("Error_out.txt")), section + section);
}

TEST_F(TileCheck, AReportThatCannotBeWrittenIsAnError) {
    std::filesystem::create_directory(folder_.File("Error_out.txt"));
    terrain_.LxArr(18).TileOffset = 16;
    dialogs_.ExpectBox("", Question, BoxAnswer::Yes);
    EXPECT_THROW(Compare(true), RuntimeError);
}

TEST(DebugLog, HasStampsOnItsFirstAndLastLineOnly) {
    const TestFolder folder;
    const tests::FixedClock clock;
    DebugLog log(clock);
    log.DebugFlag = true;
    folder.Write("Debug.txt", "of an earlier run");
    log.StartDebugLog(folder.Path() + "\\");
    log.WriteLog("a line");
    log.StopDebugLog();
    log.WriteLog("too late");
    EXPECT_EQ(Slurp(folder.File("Debug.txt")),
              "Debug Started at Saturday, March 07, 2026 - 09:05:02\r\n"
              "a line\r\n"
              "Debug Terminated at Saturday, March 07, 2026 - 09:05:02\r\n");
}

TEST(DebugLog, WithoutTheFlagThereIsNoFile) {
    const TestFolder folder;
    const tests::FixedClock clock;
    DebugLog log(clock);
    log.StartDebugLog(folder.Path() + "\\");
    // Switched on later: the file was never begun.
    log.DebugFlag = true;
    log.WriteLog("a line");
    log.StopDebugLog();
    EXPECT_EQ(folder.Names(), "");
}

TEST(DebugLog, TheFlagGatesEachLine) {
    const TestFolder folder;
    const tests::FixedClock clock;
    DebugLog log(clock);
    log.DebugFlag = true;
    log.StartDebugLog(folder.Path() + "\\");
    log.DebugFlag = false;
    log.WriteLog("unseen");
    log.DebugFlag = true;
    log.WriteLog("seen");
    EXPECT_EQ(Slurp(folder.File("Debug.txt")),
              "Debug Started at Saturday, March 07, 2026 - 09:05:02\r\nseen\r\n");
}

TEST(DebugLog, APlaceWhereNoFileCanBeIsAnError) {
    const tests::FixedClock clock;
    DebugLog log(clock);
    log.DebugFlag = true;
    EXPECT_THROW(log.StartDebugLog("/no such folder/"), RuntimeError);
}

constexpr const char* QuestionEnd =
    "Are you sure you want to exit without saving it first?\n"
    "Press Yes to exit whithout saving.\nPress No to return to the program";

TEST(ExitGuard, NothingUnsavedAsksNothing) {
    tests::ScriptedDialogs dialogs;
    EXPECT_EQ(ConfirmExit({}, dialogs), WayOut::Lose);
}

TEST(ExitGuard, TheWordsDependOnTheNumberOfNames) {
    const std::string end = QuestionEnd;
    EXPECT_EQ(ExitQuestion({.L2 = true}), "The L2 file has changed. " + end);
    EXPECT_EQ(ExitQuestion({.BIN = true, .MAP = true}),
              "Both BIN and MAP files have changed. " + end);
    EXPECT_EQ(ExitQuestion({.L2 = true, .L0ELV = true, .MAP = true}),
              "L2, L0/ELV and MAP files have changed. " + end);
    EXPECT_EQ(ExitQuestion({.BIN = true, .L2 = true, .L0ELV = true, .MAP = true}),
              "BIN, L2, L0/ELV and MAP files have changed. " + end);
}

TEST(ExitGuard, YesLeavesNoStaysAndTheThirdButtonSaves) {
    tests::ScriptedDialogs dialogs;
    const std::string question = std::string("The BIN file has changed. ") + QuestionEnd;
    dialogs.ExpectBox("Confirm", question, BoxAnswer::Yes);
    EXPECT_EQ(ConfirmExit({.BIN = true}, dialogs), WayOut::Lose);
    dialogs.ExpectBox("Confirm", question, BoxAnswer::No);
    EXPECT_EQ(ConfirmExit({.BIN = true}, dialogs), WayOut::Stay);
    dialogs.ExpectBox("Confirm", question, BoxAnswer::SaveAll);
    EXPECT_EQ(ConfirmExit({.BIN = true}, dialogs), WayOut::SaveAll);
    EXPECT_EQ(dialogs.LastButtons(), BoxButtons::YesNoSaveAll);
}

} // namespace
} // namespace vardenix
