#include "program/DeskFile.h"

#include "files/FileNames.h"
#include "support/TestFolder.h"
#include "texts/RuntimeError.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

using tests::TestFolder;

TEST(DeskFile, NothingIsRememberedWithoutTheFile) {
    const TestFolder folder;
    const Desk desk = ReadDesk(folder.Path() + "/");
    EXPECT_TRUE(desk.Recent.empty());
    EXPECT_FALSE(desk.OneWindow.has_value());
    EXPECT_FALSE(desk.Folded.has_value());
    EXPECT_FALSE(desk.ClipFields.has_value());
    EXPECT_FALSE(desk.EdgeInside.has_value());
    EXPECT_FALSE(desk.History);
    EXPECT_EQ(folder.Names(), "");
}

TEST(DeskFile, HoldsWhatWasWritten) {
    const TestFolder folder;
    const std::vector<std::string> recent{"/a b/Nor\xC3\xB0urland", " /blank first",
                                          "'q'", "/50%;[x]=y"};
    Desk kept;
    kept.Recent = recent;
    kept.OneWindow = true;
    kept.Folded = "Frame1 Frame3";
    kept.ClipFields = "TE2";
    kept.EdgeInside = true;
    kept.History = true;
    kept.PanelHidden = true;
    kept.Dark = false;
    kept.Tool = "fill";
    kept.BrushSize = 5;
    kept.PaletteClass = 0;
    kept.PaletteRow = 12;
    kept.Views["'q'"] = {.X = 12, .Y = 0, .ZoomPosts = 300};
    kept.Resume = "'q'";
    for (int i = 0; i < 2000; ++i)
        kept.Layout += "Ab3+/="[i * i % 7 % 6];
    WriteDesk(folder.Path() + "/", kept);
    EXPECT_EQ(folder.Names(), "Desk.ini");
    const Desk desk = ReadDesk(folder.Path() + "/");
    EXPECT_EQ(desk.Recent, recent);
    EXPECT_EQ(desk.OneWindow, true);
    EXPECT_EQ(desk.Folded, "Frame1 Frame3");
    EXPECT_EQ(desk.ClipFields, "TE2");
    EXPECT_EQ(desk.EdgeInside, true);
    EXPECT_TRUE(desk.History);
    EXPECT_EQ(desk.Layout, kept.Layout);
    EXPECT_TRUE(desk.PanelHidden);
    EXPECT_EQ(desk.Dark, false);
    EXPECT_EQ(desk.Tool, "fill");
    EXPECT_EQ(desk.BrushSize, 5);
    EXPECT_EQ(desk.PaletteClass, 0);
    EXPECT_EQ(desk.PaletteRow, 12);
    EXPECT_EQ(desk.Views, kept.Views);
    EXPECT_EQ(desk.Resume, "'q'");
}

TEST(DeskFile, IsAPlainProfileFile) {
    Desk desk;
    desk.Recent = {"/new", "/old"};
    const std::string recent = "[RECENT]\r\nTHEATER1=/new\r\nTHEATER2=/old\r\n";
    EXPECT_EQ(DeskText(desk), recent);
    desk.OneWindow = true;
    const std::string piece(700, 'x');
    desk.Layout.assign(piece).push_back('y');
    const std::string windows = recent + "[WINDOWS]\r\nONE_WINDOW=-1\r\n";
    EXPECT_EQ(DeskText(desk), windows + "LAYOUT1=" + piece + "\r\nLAYOUT2=y\r\n");
    desk.Layout = std::string(5601, 'x');
    EXPECT_EQ(DeskText(desk), windows);
}

TEST(DeskFile, OneThatIsBrokenRemembersWhatCanBeRead) {
    const TestFolder folder;
    folder.Write("Desk.ini",
                 "[RECENT]\nTHEATER1=\nTHEATER2=/x\nTHEATER3=/x\nTHEATER12=/far\n");
    const Desk desk = ReadDesk(folder.Path() + "/");
    EXPECT_EQ(desk.Recent, std::vector<std::string>{"/x"});
}

TEST(DeskFile, AViewThatNoMapHasIsForgotten) {
    const TestFolder folder;
    folder.Write("Desk.ini", "[RECENT]\nTHEATER1=/a\nVIEW1=1 2\nTHEATER2=/b\nVIEW2=-1 2 "
                             "3\nTHEATER3=/c\nVIEW3=1 2 0\nTHEATER4=/d\nVIEW4=4 5 6\n");
    const std::map<std::string, DeskView> views{{"/d", {4, 5, 6}}};
    EXPECT_EQ(ReadDesk(folder.Path() + "/").Views, views);
}

TEST(DeskFile, AFolderInItsPlaceIsNotAbsence) {
    const TestFolder folder;
    folder.Write("Desk.ini/inside", "x");
    EXPECT_THROW(WriteDesk(folder.Path() + "/", {}), RuntimeError);
}

TEST(DeskFile, HoldsTheReliefAndTheFeaturesOfTheaters) {
    const TestFolder folder;
    Desk kept;
    kept.Relief = {
        .Shown = true, .Alone = false, .Strength = 85, .Contours = true, .Step = 250};
    NoteFeatures(kept, {"/old", {"/a.tdf"}, ""});
    NoteFeatures(kept, {"/b c", {"/1.tdf", "/2 3.tdf"}, "ROAD CITY"});
    WriteDesk(folder.Path() + "/", kept);
    const Desk desk = ReadDesk(folder.Path() + "/");
    ASSERT_TRUE(desk.Relief.has_value());
    EXPECT_TRUE(desk.Relief->Shown && desk.Relief->Contours && !desk.Relief->Alone);
    EXPECT_EQ(desk.Relief->Strength, 85);
    EXPECT_EQ(desk.Relief->Step, 250);
    ASSERT_EQ(desk.Features.size(), 2U);
    const FeaturesOfTheater* features = FeaturesOf(desk, "/b c");
    ASSERT_NE(features, nullptr);
    EXPECT_EQ(features->Files, (std::vector<std::string>{"/1.tdf", "/2 3.tdf"}));
    EXPECT_EQ(features->Shown, "ROAD CITY");
    EXPECT_EQ(FeaturesOf(desk, "/else"), nullptr);
}

TEST(DeskFile, ReliefOutOfItsRangeIsBroughtInto) {
    const TestFolder folder;
    folder.Write("Desk.ini", "[RELIEF]\nSTRENGTH=900\nSTEP=0\n");
    const auto relief = ReadDesk(folder.Path() + "/").Relief;
    ASSERT_TRUE(relief.has_value());
    EXPECT_EQ(relief->Strength, 100);
    EXPECT_EQ(relief->Step, 1);
}

TEST(FeaturesOfTheaters, AreForgottenWithTheirLastFile) {
    Desk desk;
    NoteFeatures(desk, {"/t", {"/a.tdf"}, ""});
    NoteFeatures(desk, {"/t", {"/b.tdf", "two\nlines"}, ""});
    ASSERT_EQ(desk.Features.size(), 1U);
    EXPECT_EQ(desk.Features[0].Files, std::vector<std::string>{"/b.tdf"});
    NoteFeatures(desk, {"/t", {}, "ROAD"});
    EXPECT_TRUE(desk.Features.empty());
    NoteFeatures(desk, {"", {"/a.tdf"}, ""});
    EXPECT_TRUE(desk.Features.empty());
}

TEST(RecentTheaters, TheNewestStandsFirstAndEachOnce) {
    Desk desk;
    for (const char* folder : {"/a", "/b", "/A", "/a"})
        NoteTheater(desk, folder);
    EXPECT_EQ(desk.Recent, (std::vector<std::string>{"/a", "/A", "/b"}));
}

TEST(RecentTheaters, TheOldestFallsOut) {
    Desk desk;
    for (int i = 0; i < 20; ++i)
        NoteTheater(desk, "/" + std::to_string(i));
    ASSERT_EQ(desk.Recent.size(), 9U);
    EXPECT_EQ(desk.Recent.front(), "/19");
    EXPECT_EQ(desk.Recent.back(), "/11");
}

TEST(RecentTheaters, WhatALineCannotHoldIsPassedOver) {
    Desk desk;
    NoteTheater(desk, "");
    NoteTheater(desk, "/two\nlines");
    NoteTheater(desk, "/" + std::string(750, 'x'));
    EXPECT_TRUE(desk.Recent.empty());
    NoteTheater(desk, "/" + std::string(749, 'x'));
    EXPECT_EQ(desk.Recent.size(), 1U);
}

TEST(RecentTheaters, ATheaterIsNamedByItsFolderWhereItsFilesLieAsTheyShould) {
    const TheaterPaths whole{
        "/g/Nor land/terrain/THEATER.L2", "/g/Nor land/Texture/texture.BIN",
        "/g/Nor land/terrain/theater.map", "/g/Nor land/Texture/Texture/"};
    EXPECT_EQ(FolderOfTheater(whole), "/g/Nor land");
    TheaterPaths other = whole;
    other.L2File = "/g/Nor land/terrain/copy.L2";
    EXPECT_EQ(FolderOfTheater(other), "");
    other = whole;
    other.BinFile = "/g/Other/texture/texture.bin";
    EXPECT_EQ(FolderOfTheater(other), "");
    other = whole;
    other.MapFile = "/g/Nor land/theater.map";
    EXPECT_EQ(FolderOfTheater(other), "");
    other = whole;
    other.DDSFolder = "/g/Nor land/texture/";
    EXPECT_EQ(FolderOfTheater(other), "");
    EXPECT_EQ(FolderOfTheater({"theater.L2", "", "", ""}), "");
    EXPECT_EQ(FolderOfTheater({}), "");
}

} // namespace
} // namespace vardenix
