#include "recovery/EditedTheater.h"
#include "recovery/LogKeeper.h"
#include "recovery/Restoring.h"
#include "support/ScriptedDialogs.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

namespace vardenix {
namespace {

using tests::EditedTheater;
using tests::Spill;
using tests::TestFolder;
using tests::WholePapers;

struct FakeWindows : RestoringWindows {
    bool LoadHeights(ElevationKind, const std::string& path) override {
        Story += "heights " + path + "|";
        return true;
    }
    void KeepRestored() override { Story += "keep|"; }
    std::string Story;
};

// Runs of the program, one after the other, over the same theater.
class OfferingTest : public testing::Test {
protected:
    // A run that is killed with what `work` has changed; what it left in memory.
    template <typename Work>
    WholePapers Killed(Work work) {
        EditedTheater theater(folder_);
        {
            const LogKeeper keeper(*theater.State, logs_);
            work(theater);
        }
        return theater.Copy();
    }
    WholePapers KilledAfterPainting(const std::string& name) {
        return Killed([&](EditedTheater& theater) { theater.Paint(name); });
    }

    // A run that opens the theater.
    WholePapers Opened(bool restored) {
        EditedTheater theater(folder_);
        EXPECT_EQ(OfferLeftLogs(*theater.State, logs_, dialogs_, windows_), restored);
        EXPECT_EQ(theater.State->Changes.AnyUnsaved(), restored);
        EXPECT_TRUE(dialogs_.AllAnswered());
        return theater.Copy();
    }

    // What the last box said, with "HH:MM" for every time.
    std::string Told() const {
        return std::regex_replace(told_, std::regex("[0-9]{2}:[0-9]{2}"), "HH:MM");
    }
    void Answer(BoxAnswer answer) { dialogs_.ExpectAnyBox("", answer, &told_); }
    static std::string Question(const std::string& changes) {
        return "Vardenix ended unexpectedly at HH:MM with unsaved changes to this "
               "theater. Restore them?\n" +
               changes;
    }

    TestFolder folder_;
    std::string logs_ = folder_.File("recovery");
    tests::ScriptedDialogs dialogs_;
    FakeWindows windows_;
    std::string told_;
    const WholePapers untouched_ = EditedTheater(folder_).Copy();
};

TEST_F(OfferingTest, YesBringsTheChangesBackAndTakesTheLogAway) {
    const WholePapers lost = KilledAfterPainting("Paint 9 posts");
    Answer(BoxAnswer::Yes);
    EXPECT_EQ(Opened(true), lost);
    EXPECT_EQ(Told(), Question("\nHH:MM  Paint 9 posts"));
    EXPECT_EQ(windows_.Story, "keep|");
    EXPECT_EQ(folder_.Names("recovery"), "");
    EXPECT_EQ(Opened(false), untouched_);
}

TEST_F(OfferingTest, NoKeepsOneLogAsideAndDoesNotAskAgain) {
    for (const char* name : {"1", "2"}) {
        KilledAfterPainting(name);
        Answer(BoxAnswer::No);
        EXPECT_EQ(Opened(false), untouched_);
        EXPECT_EQ(Told(), Question(std::string("\nHH:MM  ") + name));
        EXPECT_EQ(Opened(false), untouched_);
    }
    EXPECT_EQ(folder_.Names("recovery"), "2.aside");
}

TEST_F(OfferingTest, ALogThatDoesNotFitIsToldOnceAndOfferedWhenItFits) {
    const WholePapers lost = KilledAfterPainting("Paint");
    const std::string bin = folder_.File("Texture.bin");
    std::filesystem::rename(bin, bin + " kept");
    Spill(bin, "another");
    Answer(BoxAnswer::Ok);
    Opened(false);
    EXPECT_EQ(Told(), "Vardenix ended unexpectedly at HH:MM with unsaved changes to this "
                      "theater. They cannot be restored: " +
                          bin +
                          " has been changed since then.\n\nThey are kept until "
                          "\"vardenix-cli recovery drop 1\" takes them away, and are "
                          "offered again should the files be as they were.");
    Opened(false);
    EXPECT_EQ(folder_.Names("recovery"), "1.unfit");
    std::filesystem::rename(bin + " kept", bin);
    Answer(BoxAnswer::Yes);
    EXPECT_EQ(Opened(true), lost);
    EXPECT_EQ(Told(), Question("\nHH:MM  Paint"));
}

// The last moment of a save, before the log is told of it.
TEST_F(OfferingTest, WhatASaveHasPutOnTheDiskAlreadyIsNoneToAskAbout) {
    const WholePapers lost = Killed([](EditedTheater& theater) {
        theater.Paint();
        const Recording made(theater.State->Changes, {Paper::Catalogue}, "Set");
        theater.AppendSet("N1.pcx");
    });
    Spill(folder_.File("theater.L2"), "saved");
    EditedTheater theater(folder_);
    theater.Become(lost);
    EXPECT_FALSE(OfferLeftLogs(*theater.State, logs_, dialogs_, windows_));
    EXPECT_EQ(folder_.Names("recovery"), "");
    EXPECT_EQ(theater.Copy(), lost);
}

TEST_F(OfferingTest, HeightsComeBackIntoTheFileThatWasLoaded) {
    const WholePapers lost = Killed([](EditedTheater& theater) {
        const Recording made(theater.State->Changes, {Paper::Heights}, "Raise");
        theater.State->Terrain.Elevations.L0ElvArr(5) = 77;
    });
    Answer(BoxAnswer::Yes);
    EXPECT_EQ(Opened(true), lost);
    EXPECT_EQ(Told(), Question("\nHH:MM  Raise"));
    EXPECT_EQ(windows_.Story, "heights " + folder_.File("heights.elv") + "|keep|");
}

TEST_F(OfferingTest, OnlyTheLastOfManyChangesAreListed) {
    Killed([](EditedTheater& theater) {
        for (int i = 1; i <= 17; ++i)
            theater.Paint("Change " + std::to_string(i));
    });
    std::string listed = "\n2 earlier changes";
    for (int i = 3; i <= 17; ++i)
        listed += "\nHH:MM  Change " + std::to_string(i);
    Answer(BoxAnswer::Yes);
    Opened(true);
    EXPECT_EQ(Told(), Question(listed));
}

TEST_F(OfferingTest, TheNewestOfTwoIsRestored) {
    KilledAfterPainting("old");
    const WholePapers lost = Killed([](EditedTheater& theater) {
        theater.Random.seed(3);
        theater.Paint("new");
    });
    Answer(BoxAnswer::Yes);
    EXPECT_EQ(Opened(true), lost);
    EXPECT_EQ(Told(), Question("\nHH:MM  new"));
}

TEST_F(OfferingTest, WhatCannotBeReadStandsInNobodysWay) {
    folder_.Write("recovery/1.log", "not a log");
    folder_.Write("recovery/2.log/a folder", "");
    folder_.Write("recovery/notes.txt", "");
    EXPECT_EQ(Opened(false), untouched_);
    EXPECT_EQ(folder_.Names("recovery"), "1.log 2.log notes.txt");
}

} // namespace
} // namespace vardenix
