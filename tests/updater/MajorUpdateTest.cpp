// Updates by an installer, and the user's files before it.
#include "updater/UpdateWorld.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace vardenix {
namespace {

namespace fs = std::filesystem;
using tests::Files;
using tests::FilesIn;
using tests::NewFile;
using tests::Slurp;

class MajorUpdateTest : public tests::UpdateWorld {
protected:
    void SetUp() override {
        folder_.Write("program/VX.ini", "my settings");
        folder_.Write("saved/other", "x");
        Pack({{"update.lst", Copy("in stall", NewFile) + "DELETE*old.dll\n"},
              {"in stall", "a new file"}});
    }
    void ExpectQuestion(BoxAnswer answer) {
        Platform.Dialogs.ExpectBox(
            "Attention",
            "All files in the folder " + folder_.File("program") +
                " are going to be deleted.\nDo you want to back up your files, VX.ini, "
                "Desk.ini, registry.ini and Update.log, before?",
            answer);
    }
    void ExpectFolder(const std::optional<std::string>& folder) {
        ExpectQuestion(BoxAnswer::Yes);
        Platform.Dialogs.ExpectFolder("Select folder to save files.", folder);
    }
    void ExpectSaved() {
        ExpectFolder(folder_.File("saved"));
        Apply(UpdateMajor);
        EXPECT_TRUE(Platform.Dialogs.AllAnswered());
        EXPECT_EQ(Story, "exit " + Installer() + "|");
        EXPECT_EQ(Slurp(folder_.File("saved/VX.ini")), "my settings");
    }
    std::string Installer() const { return folder_.File("program/UpdateTemp/in stall"); }
};

TEST_F(MajorUpdateTest, SavesTheUsersFilesAndStartsTheInstaller) {
    ExpectQuestion(BoxAnswer::Yes);
    Platform.Dialogs.ExpectFolder("Select folder to save files.", folder_.File("saved"));
    Apply(UpdateMajor);
    EXPECT_EQ(Story, "exit " + Installer() + "|");
    EXPECT_EQ(::access(Installer().c_str(), X_OK), 0);
    Files expected = Old;
    expected["VX.ini"] = "my settings";
    EXPECT_EQ(Program(), expected);
    Files saved = FilesIn(folder_.File("saved"));
    EXPECT_EQ(saved["VX.ini"], "my settings");
    EXPECT_TRUE(saved["Update.log"].ends_with(At("Major Update detected, Closing")));
    EXPECT_EQ(saved["other"], "x");
}

// The way to lose them is the other answer.
TEST_F(MajorUpdateTest, TheQuestionIsAYesUnlessItIsANo) {
    ExpectQuestion(BoxAnswer::No);
    Apply(UpdateMajor);
    EXPECT_EQ(Platform.Dialogs.LastButtons(), BoxButtons::YesUnlessNo);
    EXPECT_EQ(Story, "exit " + Installer() + "|");
}

TEST_F(MajorUpdateTest, EveryFileOfTheUsersIsSavedAndThoseThatAreMissingAreNot) {
    folder_.Write("program/Desk.ini", "my desk");
    folder_.Write("program/registry.ini", "my installs");
    ExpectSaved();
    const Files saved = FilesIn(folder_.File("saved"));
    EXPECT_EQ(saved.at("Desk.ini"), "my desk");
    EXPECT_EQ(saved.at("registry.ini"), "my installs");
    EXPECT_EQ(saved.size(), 5U);
}

TEST_F(MajorUpdateTest, ACancelledFolderGoesBackToTheQuestion) {
    ExpectFolder(std::nullopt);
    ExpectFolder("");
    ExpectSaved();
}

TEST_F(MajorUpdateTest, AFolderThatIsGoingToBeDeletedIsNoPlaceForThem) {
    fs::create_directory(folder_.File("program/deep"));
    fs::create_directory(folder_.File("program too"));
    fs::create_directory_symlink(folder_.File("program/deep"), folder_.File("link"));
    for (const char* inside : {"program", "program/deep", "link"}) {
        ExpectFolder(folder_.File(inside));
        Platform.Dialogs.ExpectBox("Attention",
                                   "The folder " + folder_.File(inside) +
                                       " is going to be deleted as well.\nPlease select "
                                       "another one.",
                                   BoxAnswer::Ok);
    }
    ExpectFolder(folder_.File("program too"));
    Apply(UpdateMajor);
    EXPECT_EQ(Slurp(folder_.File("program too/VX.ini")), "my settings");
}

TEST_F(MajorUpdateTest, FilesThatAreThereAreReplacedAfterAQuestion) {
    const auto expectReplace = [this](BoxAnswer answer) {
        ExpectFolder(folder_.File("saved"));
        Platform.Dialogs.ExpectBox("Confirm",
                                   "The folder " + folder_.File("saved") +
                                       " has these files already:\nVX.ini\nDesk.ini\n"
                                       "Do you want to replace them?",
                                   answer);
    };
    folder_.Write("program/Desk.ini", "my desk");
    folder_.Write("saved/VX.ini", "saved before");
    folder_.Write("saved/Desk.ini", "saved before");
    folder_.Write("saved/registry.ini", "nothing comes in its place");
    expectReplace(BoxAnswer::No);
    ExpectQuestion(BoxAnswer::No);
    Apply(UpdateMajor);
    EXPECT_EQ(Slurp(folder_.File("saved/VX.ini")), "saved before");
    Story.clear();
    expectReplace(BoxAnswer::Yes);
    Apply(UpdateMajor);
    EXPECT_EQ(Story, "exit " + Installer() + "|");
    EXPECT_EQ(Slurp(folder_.File("saved/VX.ini")), "my settings");
    EXPECT_EQ(Slurp(folder_.File("saved/registry.ini")), "nothing comes in its place");
}

TEST_F(MajorUpdateTest, WhatCannotBeSavedKeepsTheProgram) {
    ExpectQuestion(BoxAnswer::Yes);
    Platform.Dialogs.ExpectFolder("Select folder to save files.",
                                  folder_.File("not there"));
    Platform.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, nullptr);
    Apply(UpdateMajor);
    EXPECT_EQ(Story, "");
}

TEST_F(MajorUpdateTest, TheFirstEntryMustBeTheInstaller) {
    Pack({{"update.lst", "MSG*Hello\n" + Copy("in stall", NewFile)}});
    Platform.Dialogs.ExpectBox("Error.",
                               "The update is refused, and nothing has been changed.\n"
                               "The first file of its list is no installer.",
                               BoxAnswer::Ok);
    Apply(UpdateMajor);
    EXPECT_EQ(Story, "");
}

} // namespace
} // namespace vardenix
