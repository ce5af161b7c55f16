#include "recovery/EditedTheater.h"
#include "recovery/LogKeeper.h"
#include "recovery/Restoring.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace vardenix {
namespace {

using tests::EditedTheater;
using tests::Slurp;
using tests::Spill;
using tests::TestFolder;
using tests::WholePapers;

class RecoveryTest : public testing::Test {
protected:
    // What another program would find now, had this one been killed: a copy that nobody
    // holds.
    std::vector<LeftLog> FoundAfterAKill() {
        keeper_->Drain();
        std::filesystem::remove_all(copied_);
        std::filesystem::copy(logs_, copied_);
        return LeftLogsOf(copied_).Logs;
    }

    // The papers as another run restores them from the files.
    WholePapers Restored(const LeftLog& log, std::string* told = nullptr) {
        EditedTheater other(folder_);
        other.Become(theater_.Disk);
        const std::string words = RestoreChanges(*other.State, log);
        if (told != nullptr)
            *told = words;
        else
            EXPECT_EQ(words, "");
        WholePapers restored = other.Copy();
        while (other.State->Changes.NextBack() != nullptr)
            other.State->Changes.Back();
        EXPECT_EQ(other.Copy(), theater_.Disk);
        return restored;
    }

    TestFolder folder_;
    std::string logs_ = folder_.File("data/recovery");
    std::string copied_ = folder_.File("copied");
    EditedTheater theater_{folder_};
    ChangeLog& changes_ = theater_.State->Changes;
    std::unique_ptr<LogKeeper> keeper_ =
        std::make_unique<LogKeeper>(*theater_.State, logs_);
};

TEST_F(RecoveryTest, AfterAnyCommandsTheLogLeadsFromTheFilesToWhatWasInMemory) {
    int unsaved = 0;
    for (int round = 0; round < 1000; ++round) {
        theater_.RunCommand();
        if (round % 20 != 0)
            continue;
        std::vector<LeftLog> found = FoundAfterAKill();
        const WholePapers now = theater_.Copy();
        if (found.empty()) {
            ASSERT_EQ(now, theater_.Disk) << "round " << round;
            continue;
        }
        ++unsaved;
        ASSERT_EQ(found.size(), 1U);
        EXPECT_FALSE(found[0].Damaged());
        ASSERT_EQ(Restored(found[0]), now) << "round " << round;
    }
    EXPECT_GT(unsaved, 20);
}

TEST_F(RecoveryTest, AStrokeThatGoesOnAfterASaveIsRestoredFromThere) {
    theater_.Paint("Paint 1 post");
    theater_.Save(Paper::Level2);
    changes_.Grow(theater_.PaintRuns(), "Paint 2 posts");
    const std::vector<LeftLog> found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    ASSERT_EQ(found[0].Story.Steps.size(), 1U);
    EXPECT_EQ(found[0].Story.Steps[0].Name, "Paint 2 posts");
    EXPECT_EQ(Restored(found[0]), theater_.Copy());
}

TEST_F(RecoveryTest, WhatWasTakenBackBehindASaveIsTakenBackAgain) {
    theater_.Paint("Paint 3 posts");
    theater_.Save(Paper::Level2);
    changes_.Back();
    const std::vector<LeftLog> found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_NE(RestoreQuestion(found[0]).find("  Taken back: Paint 3 posts"),
              std::string::npos);
    EXPECT_EQ(Restored(found[0]), theater_.Copy());
}

// Work goes on upon the file that was opened.
TEST_F(RecoveryTest, ASaveToACopyIsNoneOfTheOpenedFile) {
    theater_.Paint();
    changes_.Saved(Paper::Level2);
    EXPECT_TRUE(FoundAfterAKill().empty());
    theater_.Paint();
    const std::vector<LeftLog> found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].Story.Steps.size(), 2U);
    EXPECT_EQ(Restored(found[0]), theater_.Copy());
}

TEST_F(RecoveryTest, AStrokeComesBackAsOneChange) {
    theater_.Paint("Paint 1 post");
    for (int i = 0; i < 50; ++i)
        changes_.Grow(theater_.PaintRuns(), "Paint more posts");
    const std::vector<LeftLog> found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    EditedTheater other(folder_);
    EXPECT_EQ(RestoreChanges(*other.State, found[0]), "");
    EXPECT_EQ(other.State->Changes.Count(), 1U);
    EXPECT_TRUE(other.State->Changes.Unsaved(Paper::Level2));
    EXPECT_EQ(other.State->Changes.At(0).Name, "Paint more posts");
}

TEST_F(RecoveryTest, ALogIsForItsUserAloneAndGoesWhenNothingIsUnsaved) {
    theater_.Paint();
    keeper_->Drain();
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(logs_).permissions(), perms(0700));
    EXPECT_EQ(std::filesystem::status(logs_ + "/1.log").permissions(), perms(0600));
    theater_.Save(Paper::Level2);
    EXPECT_TRUE(FoundAfterAKill().empty());
    EXPECT_TRUE(std::filesystem::is_empty(copied_));
    keeper_.reset();
    EXPECT_TRUE(std::filesystem::is_empty(logs_));
}

// A logout ends the program without a question.
TEST_F(RecoveryTest, ALogStaysWhenTheProgramEndsWithUnsavedChanges) {
    theater_.Paint();
    const WholePapers now = theater_.Copy();
    EXPECT_TRUE(LeftLogsOf(logs_).Logs.empty()); // its owner lives
    EXPECT_EQ(LeftLogsOf(logs_).Others.size(), 1U);
    keeper_.reset();
    const LeftLogs found = LeftLogsOf(logs_, folder_.File("theater.L2"));
    ASSERT_EQ(found.Logs.size(), 1U);
    EXPECT_EQ(Restored(found.Logs[0]), now);
    EXPECT_TRUE(LeftLogsOf(folder_.Path(), folder_.File("other.L2")).Logs.empty());
}

TEST_F(RecoveryTest, WhoWantsToLoseHisWorkLosesTheLog) {
    theater_.Paint();
    keeper_->GiveUp();
    EXPECT_TRUE(std::filesystem::is_empty(logs_));
    theater_.Paint();
    EXPECT_TRUE(std::filesystem::is_empty(logs_));
}

TEST_F(RecoveryTest, ALogFitsForAsLongAsItsFilesAreTheOnesItIsBasedOn) {
    theater_.Paint();
    const std::vector<LeftLog> found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(WhyUnfit(found[0].Story), "");
    // theater.map is none of them as long as nothing of it was unsaved.
    Spill(folder_.File("theater.map"), "another");
    EXPECT_EQ(WhyUnfit(found[0].Story), "");
    Spill(folder_.File("Texture.bin"), "another");
    EXPECT_EQ(WhyUnfit(found[0].Story),
              folder_.File("Texture.bin") + " has been changed since then");
}

TEST_F(RecoveryTest, ASaveBringsItsFilesWithIt) {
    theater_.Paint();
    Spill(folder_.File("theater.L2"), "saved");
    theater_.State->Terrain.ReadL = IdentityOfRealPath(folder_.File("theater.L2"));
    changes_.Saved(Paper::Level2);
    theater_.Paint();
    const std::vector<LeftLog> found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(WhyUnfit(found[0].Story), "");
}

TEST_F(RecoveryTest, ADamagedLogIsUsedUpToTheDamage) {
    for (int i = 0; i < 5; ++i)
        theater_.Paint("Paint " + std::to_string(i));
    keeper_.reset();
    const std::string whole = Slurp(logs_ + "/1.log");
    for (size_t at = 0; at < whole.size(); at += 7) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0x10);
        Spill(logs_ + "/1.log", damaged);
        const LeftLogs found = LeftLogsOf(logs_);
        if (found.Logs.empty()) // in the first record, or the first change
            continue;
        EXPECT_TRUE(found.Logs[0].Damaged());
        EXPECT_LT(found.Logs[0].Story.Steps.size(), 5U);
        Restored(found.Logs[0]);
    }
    // Every length that a kill can leave.
    for (size_t length = 0; length < whole.size(); length += 3) {
        Spill(logs_ + "/1.log", whole.substr(0, length));
        for (const LeftLog& log : LeftLogsOf(logs_).Logs)
            Restored(log);
        Spill(logs_ + "/1.log", whole);
    }
}

TEST_F(RecoveryTest, AChangeThatDoesNotFitEndsTheRestoring) {
    theater_.Paint("Paint");
    Change wrong{.Name = "Wrong"};
    wrong.Posts.Runs = {{1024, 2, 0, 1}};
    changes_.Add(wrong);
    const std::vector<LeftLog> found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    std::string told;
    Restored(found[0], &told);
    EXPECT_EQ(told, "1 of 2 changes have come back. The next one cannot: a change of 2 "
                    "values from serial 1024 of 1024");
}

TEST_F(RecoveryTest, AFolderThatCannotBeMadeIsToldOnceAndCostsNoWork) {
    folder_.Write("in the way", "x");
    keeper_.reset();
    keeper_ =
        std::make_unique<LogKeeper>(*theater_.State, folder_.File("in the way/log"));
    theater_.Paint();
    const std::string told = keeper_->Complaint();
    EXPECT_NE(told.find("in the way"), std::string::npos) << told;
    theater_.Paint();
    theater_.Save(Paper::Level2);
    theater_.Paint();
    EXPECT_EQ(keeper_->Complaint(), "");
    EXPECT_EQ(changes_.Count(), 3U);
}

TEST_F(RecoveryTest, AFullLogBeginsAgainWhenEverythingIsSaved) {
    keeper_.reset();
    keeper_ = std::make_unique<LogKeeper>(*theater_.State, logs_, 20000);
    for (int i = 0; i < 200; ++i)
        theater_.Paint();
    EXPECT_NE(keeper_->Complaint(), "");
    EXPECT_LT(std::filesystem::file_size(logs_ + "/1.log"), 20500U);
    changes_.LoadedAnew(Paper::Level2);
    theater_.Disk = theater_.Copy();
    theater_.Paint();
    theater_.Save(Paper::Level2);
    theater_.Paint();
    changes_.Back();
    changes_.Back();
    const std::vector<LeftLog> found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(Restored(found[0]), theater_.Copy());
}

} // namespace
} // namespace vardenix
