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

// Loads files of heights as the windows would.
class LoadingWindows : public RestoringWindows {
public:
    explicit LoadingWindows(EditedTheater& theater) : theater_(theater) {}
    bool LoadHeights(ElevationKind, const std::string& path) override {
        if (std::exchange(loaded_, true))
            theater_.LoadHeights(path);
        else
            theater_.State->Terrain.Elevations = theater_.LayerOf(path);
        return true;
    }
    void KeepRestored() override {}

private:
    EditedTheater& theater_;
    bool loaded_ = false;
};

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

    // The papers as another run restores them from the files; heights are those of the
    // file that is loaded, saved or not.
    WholePapers Restored(const LeftLog& log, std::string* told = nullptr) {
        EditedTheater other(folder_);
        other.Become(theater_.Disk);
        other.HeightsOnDisk = theater_.HeightsOnDisk;
        LoadingWindows windows(other);
        const std::string words = RestoreChanges(*other.State, log, windows);
        if (told != nullptr)
            *told = words;
        else {
            EXPECT_TRUE(words.empty() || words.ends_with("has been changed since then."))
                << words;
        }
        WholePapers restored = other.Copy();
        restoredHeights_ = other.UnsavedHeights();
        while (other.State->Changes.NextBack() != nullptr)
            other.State->Changes.Back();
        WholePapers before = other.Copy();
        before[1] = theater_.Disk[1];
        EXPECT_EQ(before, theater_.Disk);
        EXPECT_TRUE(other.UnsavedHeights().empty());
        if (!theater_.State->Changes.Unsaved(Paper::Heights))
            restored[1] = theater_.Copy()[1];
        return restored;
    }

    TestFolder folder_;
    std::string logs_ = folder_.File("data/recovery");
    std::string copied_ = folder_.File("copied");
    EditedTheater theater_{folder_};
    ChangeLog& changes_ = theater_.State->Changes;
    std::vector<std::pair<std::string, size_t>> restoredHeights_;
    std::unique_ptr<LogKeeper> keeper_ =
        std::make_unique<LogKeeper>(*theater_.State, logs_);
};

TEST_F(RecoveryTest, AfterAnyCommandsTheLogLeadsFromTheFilesToWhatWasInMemory) {
    int unsaved = 0;
    for (int round = 0; round < 1000; ++round) {
        theater_.RunCommand();
        // A file of heights that was loaded twice and saved from the one is another for
        // the other.
        const ElevationLayer& heights = theater_.State->Terrain.Elevations;
        if (round % 10 != 0 || !(heights.Read == IdentityOfRealPath(heights.Path)))
            continue;
        std::vector<LeftLog> found = FoundAfterAKill();
        const WholePapers now = theater_.Copy();
        if (found.empty()) {
            ASSERT_EQ(now, theater_.Disk) << "round " << round;
            ASSERT_TRUE(theater_.UnsavedHeights().empty()) << "round " << round;
            continue;
        }
        ++unsaved;
        ASSERT_EQ(found.size(), 1U);
        EXPECT_FALSE(found[0].Damaged());
        ASSERT_TRUE(Restored(found[0]) == now) << "round " << round;
        ASSERT_EQ(restoredHeights_, theater_.UnsavedHeights()) << "round " << round;
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

TEST_F(RecoveryTest, HeightsThatOthersHaveTakenThePlaceOfComeBackToo) {
    const auto edit = [this](int32_t serial, int16_t height) {
        const Recording made(changes_, {Paper::Heights}, "Raise");
        theater_.State->Terrain.Elevations.L0ElvArr(serial) = height;
    };
    edit(5, 77);
    theater_.LoadHeights(folder_.File("other.elv"));
    std::vector<LeftLog> found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    Restored(found[0]);
    ASSERT_EQ(restoredHeights_.size(), 1U);
    EXPECT_EQ(restoredHeights_, theater_.UnsavedHeights());
    EXPECT_TRUE(changes_.AnyUnsaved());

    edit(9, 33);
    found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    Restored(found[0]);
    ASSERT_EQ(restoredHeights_.size(), 2U);
    EXPECT_EQ(restoredHeights_, theater_.UnsavedHeights());

    // And so they do after a walk back to them.
    changes_.Back();
    changes_.Back();
    found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    Restored(found[0]);
    ASSERT_EQ(restoredHeights_.size(), 1U);
    EXPECT_EQ(restoredHeights_, theater_.UnsavedHeights());
}

TEST_F(RecoveryTest, HeightsPutAsideThatAreOthersByNowStandInNobodysWay) {
    theater_.Paint();
    {
        const Recording made(changes_, {Paper::Heights}, "Raise");
        theater_.State->Terrain.Elevations.L0ElvArr(5) = 77;
    }
    theater_.LoadHeights(folder_.File("other.elv"));
    {
        const Recording made(changes_, {Paper::Heights}, "Lower");
        theater_.State->Terrain.Elevations.L0ElvArr(6) = 7;
    }
    Spill(folder_.File("heights.elv"), "another");
    const std::vector<LeftLog> found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(WhyUnfit(found[0].Story), "");
    std::string told;
    EXPECT_EQ(Restored(found[0], &told), theater_.Copy());
    const std::string path = folder_.File("heights.elv");
    EXPECT_EQ(told, "The changes of " + path + " have not come back: " + path +
                        " has been changed since then.");
}

TEST_F(RecoveryTest, AStrokeComesBackAsOneChange) {
    theater_.Paint("Paint 1 post");
    for (int i = 0; i < 50; ++i)
        changes_.Grow(theater_.PaintRuns(), "Paint more posts");
    const std::vector<LeftLog> found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    EditedTheater other(folder_);
    LoadingWindows windows(other);
    EXPECT_EQ(RestoreChanges(*other.State, found[0], windows), "");
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

// Changes of some MiB each, over and over the same posts.
class LargeLogTest : public RecoveryTest {
protected:
    static constexpr int32_t Runs = 700000; // 11 MiB

    void AddLarge(int32_t tile) {
        Change change{.Name = "Fill " + std::to_string(tile)};
        int32_t before = Tile(1);
        for (int32_t i = 0; i < Runs; ++i) {
            const int32_t after = i + 1 < Runs ? i % 7 : tile;
            change.Posts.Runs.push_back({1, 3, before, after});
            before = after;
        }
        for (int32_t serial = 1; serial <= 3; ++serial)
            theater_.State->Terrain.LxArr(serial).TileOffset = tile;
        changes_.Add(std::move(change));
        keeper_->Drain();
    }
    int32_t Tile(int32_t serial) {
        return theater_.State->Terrain.LxArr(serial).TileOffset;
    }
};

TEST_F(LargeLogTest, WhatMemoryDoesNotHoldIsReadFromTheDisk) {
    theater_.Paint("Stroke");
    for (int i = 0; i < 3; ++i)
        changes_.Grow(theater_.PaintRuns(), "Stroke");
    const WholePapers painted = theater_.Copy();
    for (int32_t tile = 11; tile <= 20; ++tile) {
        AddLarge(tile);
        EXPECT_LE(changes_.Bytes(), ChangeLog::MostBytes);
    }
    EXPECT_EQ(changes_.Count(), 11U);
    EXPECT_NE(changes_.At(0).Away, 0);
    EXPECT_TRUE(changes_.At(0).Touches(Paper::Level2));
    for (int round = 0; round < 2; ++round) {
        for (int32_t tile = 20; tile > 11; --tile) {
            ASSERT_EQ(Tile(2), tile);
            changes_.Back();
            EXPECT_LE(changes_.Bytes(), ChangeLog::MostBytes + (size_t{12} << 20));
        }
        changes_.Back();
        EXPECT_EQ(theater_.Copy(), painted);
        changes_.Back();
        EXPECT_EQ(theater_.Copy(), theater_.Disk);
        while (changes_.NextAgain() != nullptr)
            changes_.Again();
        EXPECT_EQ(Tile(3), 20);
    }
}

TEST_F(LargeLogTest, ADamagedDiskIsToldAndChangesNothing) {
    for (int32_t tile = 11; tile <= 20; ++tile)
        AddLarge(tile);
    std::filesystem::resize_file(logs_ + "/1.log", 4000);
    while (changes_.At(changes_.Position() - 1).Away == 0)
        changes_.Back();
    const size_t position = changes_.Position();
    const WholePapers now = theater_.Copy();
    EXPECT_EQ(tests::ErrorOf([this] { changes_.Back(); }).Number(),
              ErrorNumber::InputPastEnd);
    EXPECT_EQ(changes_.Position(), position);
    EXPECT_EQ(theater_.Copy(), now);
}

TEST_F(LargeLogTest, WithoutADiskTheOldestGo) {
    keeper_.reset();
    keeper_ = std::make_unique<LogKeeper>(*theater_.State, logs_, uint64_t{80} << 20);
    for (int32_t tile = 11; tile <= 24; ++tile) // the disk has seven of them
        AddLarge(tile);
    EXPECT_NE(keeper_->Complaint().find("the history reaches no farther back"),
              std::string::npos);
    EXPECT_LE(changes_.Bytes(), ChangeLog::MostBytes);
    // Those that the disk has lie before some that neither has.
    EXPECT_EQ(changes_.Count(), 5U);
    while (changes_.NextBack() != nullptr)
        changes_.Back();
    EXPECT_EQ(Tile(1), 19);
    // Saved, the log begins anew with what memory has.
    while (changes_.NextAgain() != nullptr)
        changes_.Again();
    theater_.Save(Paper::Level2);
    theater_.Paint();
    const std::vector<LeftLog> found = FoundAfterAKill();
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(Restored(found[0]), theater_.Copy());
}

} // namespace
} // namespace vardenix
