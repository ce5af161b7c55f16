#include "files/FileNames.h"

#include "support/TestFolder.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vardenix {
namespace {

using tests::TestFolder;

TEST(FileNames, BothSlashesSeparate) {
    const TestFolder folder;
    const std::string file = folder.Write("one/two words/c.txt", "x");
    EXPECT_EQ(RealPath(folder.Path() + "\\one\\two words/c.txt"), file);
    EXPECT_TRUE(FileExists(folder.Path() + "\\one/two words\\c.txt"));
    EXPECT_FALSE(FileExists(folder.Path() + "\\one/two words\\d.txt"));
}

TEST(FileNames, CaseIsIgnoredWhereNothingMatchesExactly) {
    const TestFolder folder;
    const std::string file = folder.Write("Terrain/Theater.L2", "x");
    EXPECT_EQ(RealPath(UpperCase(folder.Path()) + "\\TERRAIN\\THEATER.L2"), file);
    EXPECT_EQ(RealPath(folder.Path() + "/terrain/theater.l2"), file);
}

TEST(FileNames, AnExactMatchGoesBeforeAnother) {
    const TestFolder folder;
    folder.Write("theater.l2", "lower");
    folder.Write("THEATER.L2", "upper");
    EXPECT_EQ(RealPath(folder.File("theater.l2")), folder.File("theater.l2"));
    EXPECT_EQ(RealPath(folder.File("THEATER.L2")), folder.File("THEATER.L2"));
    EXPECT_EQ(RealPath(folder.File("Theater.L2")), folder.File("THEATER.L2"));
}

TEST(FileNames, WhatIsNotThereKeepsTheCaseOfItsText) {
    const TestFolder folder;
    std::filesystem::create_directory(folder.File("Sub"));
    EXPECT_EQ(RealPath(folder.Path() + "\\sub\\New\\File.Bin"),
              folder.Path() + "/Sub/New/File.Bin");
}

TEST(FileNames, OtherLettersMatchAsTheyStand) {
    const TestFolder folder;
    const std::string file = folder.Write("Insel \xC3\xA4 Nord.l2", "x");
    EXPECT_EQ(RealPath(folder.File("INSEL \xC3\xA4 NORD.L2")), file);
}

TEST(FileNames, AFolderIsNoFileAndAFileIsNoFolder) {
    const TestFolder folder;
    folder.Write("sub/file", "x");
    EXPECT_FALSE(FileExists(folder.File("sub")));
    EXPECT_TRUE(FolderExists(folder.File("SUB")));
    EXPECT_FALSE(FolderExists(folder.File("sub/file")));
    EXPECT_FALSE(FileExists(""));
}

TEST(FileNames, DeletingWhatIsNotThereIsError53) {
    const TestFolder folder;
    try {
        DeleteFile(folder.File("no such"));
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), ErrorNumber::FileNotFound);
        EXPECT_NE(error.Detail().find("no such"), std::string::npos);
    }
    folder.Write("a/b", "x");
    EXPECT_THROW(DeleteFile(folder.File("a")), RuntimeError);
    DeleteFile(folder.File("A/B"));
    EXPECT_FALSE(FileExists(folder.File("a/b")));
}

TEST(FileNames, FolderTreesGoWithTheirContents) {
    const TestFolder folder;
    folder.Write("Temp/a/b", "x");
    DeleteFolderTree(folder.Path() + "\\Temp\\");
    EXPECT_EQ(folder.Names(), "");
    DeleteFolderTree(folder.File("Temp"));
    EXPECT_EQ(folder.Names(), "");
}

TEST(FileNames, CutsBehindTheLastSlashOfEitherKind) {
    EXPECT_EQ(AfterLastSlash("a\\b/c.txt"), "c.txt");
    EXPECT_EQ(AfterLastSlash("a/b\\c.txt"), "c.txt");
    EXPECT_EQ(AfterLastSlash("c.txt"), "c.txt");
    EXPECT_EQ(AfterLastSlash("a\\"), "");
    EXPECT_EQ(UpToLastSlash("a\\b/c.txt"), "a\\b/");
    EXPECT_EQ(UpToLastSlash("c.txt"), "");
}

TEST(FileNames, OneTrailingSlashIsEnough) {
    EXPECT_EQ(WithTrailingSlash("a"), "a\\");
    EXPECT_EQ(WithTrailingSlash("a\\"), "a\\");
    EXPECT_EQ(WithTrailingSlash("/tmp/"), "/tmp/");
}

TEST(FileNames, ReplacesEveryOccurrenceWithTheExactCase) {
    EXPECT_EQ(ReplaceAll("A.L2B.L2/c.l2", ".L2", ".O2"), "A.O2B.O2/c.l2");
    EXPECT_EQ(ReplaceAll("xx", "x", "xx"), "xxxx");
}

TEST(FileNames, TrimTakesBlanksAndLeavesTabs) {
    EXPECT_EQ(TrimBlanks("  a b \t "), "a b \t");
    EXPECT_EQ(TrimBlanks("   "), "");
}

TEST(FileNames, AFolderIndexFindsWhatTheDiskHas) {
    const TestFolder folder;
    folder.Write("H1234.DDS", "x");
    std::filesystem::create_directory(folder.File("folder.dds"));
    const FolderIndex index(folder.Path() + "\\");
    EXPECT_TRUE(index.HasFile("h1234.dds"));
    EXPECT_FALSE(index.HasFile("h1235.dds"));
    EXPECT_FALSE(index.HasFile("folder.dds"));
    EXPECT_FALSE(FolderIndex(folder.File("none")).HasFile("h1234.dds"));
    EXPECT_EQ(index.Find("h1234.Dds"), folder.File("H1234.DDS"));
    EXPECT_EQ(index.Find("h1235.dds"), std::nullopt);
}

} // namespace
} // namespace vardenix
