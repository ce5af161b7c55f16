#include "program/Browsing.h"

#include "support/ScriptedDialogs.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

namespace vardenix {
namespace {

using tests::TestFolder;

class Browsing : public testing::Test {
protected:
    void Browse() {
        BrowseTheaterPaths(paths_, configuration_, dialogs_, [this] { ++shown_; });
    }
    // A theater whose names are in mixed case, as the disk may have them.
    std::string Theater(const std::string& name) {
        folder_.Write(name + "/Terrain/theater.L2", "x");
        folder_.Write(name + "/Terrain/Theater.map", "x");
        folder_.Write(name + "/texture/TEXTURE.BIN", "x");
        folder_.Write(name + "/texture/texture/a.dds", "x");
        return folder_.File(name);
    }
    void Take(const std::string& dropped) {
        TakeTheaterFolder(dropped, paths_, configuration_, [this] { ++shown_; });
    }
    void ExpectTheater(const std::string& folder) {
        EXPECT_EQ(paths_.L2File, folder + "/Terrain/theater.L2");
        EXPECT_EQ(paths_.BinFile, folder + "/texture/TEXTURE.BIN");
        EXPECT_EQ(paths_.MapFile, folder + "/Terrain/Theater.map");
        EXPECT_EQ(paths_.DDSFolder, folder + "/texture/texture/");
    }

    TestFolder folder_;
    tests::ScriptedDialogs dialogs_;
    Configuration configuration_;
    TheaterPaths paths_{"1", "2", "3", "4"};
    int shown_ = 0;
};

TEST_F(Browsing, AsksForAllFourPathsInARow) {
    dialogs_.ExpectOpen("Open theater's L2 file...", "/a b/theater.L2");
    dialogs_.ExpectOpen("Open theater's Texture.bin file...", "/t.bin");
    dialogs_.ExpectOpen("Open theater's MAP file...", "/t.map");
    dialogs_.ExpectFolder("Select the DDS folder.", "/dds");
    Browse();
    EXPECT_EQ(paths_.L2File, "/a b/theater.L2");
    EXPECT_EQ(paths_.BinFile, "/t.bin");
    EXPECT_EQ(paths_.MapFile, "/t.map");
    EXPECT_EQ(paths_.DDSFolder, "/dds\\");
    EXPECT_EQ(configuration_.L2File, "/a b/theater.L2");
    EXPECT_EQ(configuration_.BinFile, "/t.bin");
    EXPECT_EQ(configuration_.MapFile, "/t.map");
    EXPECT_EQ(configuration_.DdsPath, "/dds\\");
    EXPECT_EQ(shown_, 4);
}

TEST_F(Browsing, CancellingLeavesTheRestAsItWas) {
    dialogs_.ExpectOpen("Open theater's L2 file...", "/theater.L2");
    dialogs_.ExpectCancel();
    Browse();
    EXPECT_EQ(paths_.L2File, "/theater.L2");
    EXPECT_EQ(paths_.BinFile, "2");
    EXPECT_EQ(configuration_.BinFile, "");
}

TEST_F(Browsing, NoFolderKeepsTheOldOne) {
    dialogs_.ExpectOpen("Open theater's L2 file...", "l");
    dialogs_.ExpectOpen("Open theater's Texture.bin file...", "b");
    dialogs_.ExpectOpen("Open theater's MAP file...", "m");
    dialogs_.ExpectFolder("Select the DDS folder.", std::nullopt);
    Browse();
    EXPECT_EQ(paths_.DDSFolder, "4");
}

TEST_F(Browsing, EachDialogBeginsWhereTheL2FileSuggests) {
    const std::string base = Theater("my theater");
    dialogs_.ExpectOpen("Open theater's L2 file...", base + "/Terrain/theater.L2");
    dialogs_.ExpectOpen("Open theater's Texture.bin file...", "b");
    dialogs_.ExpectOpen("Open theater's MAP file...", "m");
    dialogs_.ExpectFolder("Select the DDS folder.", "d");
    Browse();
    const std::vector<std::string> began{"1", base + "/texture/TEXTURE.BIN",
                                         base + "/Terrain/Theater.map",
                                         base + "/texture/texture/"};
    EXPECT_EQ(dialogs_.BeganAt(), began);
}

TEST_F(Browsing, WhatIsNotBesideTheL2FileIsLookedForWhereItWas) {
    const std::string base = Theater("my theater");
    std::filesystem::remove_all(base + "/texture");
    dialogs_.ExpectOpen("Open theater's L2 file...", base + "/Terrain/theater.L2");
    dialogs_.ExpectOpen("Open theater's Texture.bin file...", "b");
    dialogs_.ExpectOpen("Open theater's MAP file...", "m");
    dialogs_.ExpectFolder("Select the DDS folder.", "d");
    Browse();
    const std::vector<std::string> began{"1", "2", base + "/Terrain/Theater.map", "4"};
    EXPECT_EQ(dialogs_.BeganAt(), began);
}

TEST_F(Browsing, TheSameL2FileSuggestsNothingNew) {
    paths_.L2File = Theater("my theater") + "/Terrain/theater.L2";
    dialogs_.ExpectOpen("Open theater's L2 file...", paths_.L2File);
    dialogs_.ExpectOpen("Open theater's Texture.bin file...", "b");
    dialogs_.ExpectCancel();
    Browse();
    EXPECT_EQ(dialogs_.BeganAt(), (std::vector<std::string>{paths_.L2File, "2", "3"}));
}

TEST_F(Browsing, ADroppedFolderFillsAllFourPaths) {
    const std::string base = Theater("my theater");
    Take(base);
    ExpectTheater(base);
    EXPECT_EQ(configuration_.L2File, paths_.L2File);
    EXPECT_EQ(configuration_.BinFile, paths_.BinFile);
    EXPECT_EQ(configuration_.MapFile, paths_.MapFile);
    EXPECT_EQ(configuration_.DdsPath, paths_.DDSFolder);
    EXPECT_EQ(shown_, 1);
}

TEST_F(Browsing, ItsTerrainFolderOrAFileOfItMeansTheTheaterToo) {
    const std::string base = Theater("my theater");
    for (const char* part : {"/", "/Terrain", "/Terrain/", "/Terrain/theater.L2"}) {
        paths_ = {};
        Take(base + part);
        ExpectTheater(base);
    }
}

TEST_F(Browsing, AFolderWithoutATheaterChangesNothing) {
    folder_.Write("other/Terrain/readme.txt", "x");
    try {
        Take(folder_.File("other"));
        ADD_FAILURE() << "taken";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::FileNotFound);
        EXPECT_NE(error.Detail().find(folder_.File("other")), std::string::npos);
    }
    EXPECT_EQ(paths_.L2File, "1");
    EXPECT_EQ(configuration_.L2File, "");
    EXPECT_EQ(shown_, 0);
}

TEST_F(Browsing, WhatADropLacksIsNamedWhereItBelongs) {
    const std::string base = Theater("my theater");
    std::filesystem::remove_all(base + "/texture");
    Take(base);
    EXPECT_EQ(paths_.BinFile, base + "/texture/texture.bin");
}

} // namespace
} // namespace vardenix
