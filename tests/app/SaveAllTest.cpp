// Every paper saved at once, from the menu and on the way out.
#include "app/SaveAll.h"

#include "app/OpenedWorkspace.h"
#include "bineditor/SetsAndTiles.h"
#include "catalogue/TextureBinFile.h"
#include "files/BinaryReader.h"
#include "levels/ElevationFiles.h"
#include "support/CatalogueReader.h"
#include "support/TheaterMaker.h"

#include <QComboBox>
#include <QLineEdit>

#include <filesystem>

namespace vardenix {
namespace {

using tests::Find;

class SaveAllTest : public tests::OpenedWorkspace {
protected:
    SaveAllTest() {
        state_.Folders.SystemTempPath = folder_.Path() + "/";
        state_.MAPFile = folder_.Write("theater.map", std::string(1112, '\0'));
        state_.Terrain.LFilename = folder_.File("theater.L2");
        state_.Terrain.OFilename = folder_.File("theater.O2");
        state_.Catalogue.BinPath = folder_.Write(
            "Texture.bin",
            tests::CatalogueBytes({{1, {{"H0.PCX"}, {"H1.PCX"}}}, {4, {{"LAND.PCX"}}}}));
        state_.Catalogue.Bin = ParseBinFile(
            ReadWholeFile(state_.Catalogue.BinPath, uint64_t{1} << 20).Span(), "");
        NoProgress quiet;
        RebuildTileLookup(state_.Catalogue, {}, quiet);
        elv_ = folder_.Write("heights.elv", std::string(128 * 128 * 2, '\0'));
    }

    void OpenAll() {
        Open();
        static_cast<OpeningWindows&>(subsystems_->Opening).LoadMapEditor();
        NoProgress quiet;
        ASSERT_TRUE(LoadElevationData(state_.Terrain, ElevationKind::Elv, elv_, quiet,
                                      platform_.Dialogs, log_));
        workspace_->CommandsChanged();
    }
    void PaintLowerLeft(int32_t tile) {
        workspace_->Interaction().SelectedTile = tile;
        auto& picture = Find<QWidget>(Window("FrmVXMap"), "PicShow");
        QTest::mousePress(&picture, Qt::LeftButton, {}, {3, 636});
        QTest::mouseRelease(&picture, Qt::LeftButton, {}, {3, 636});
    }
    // One change of every paper: a post, a set's type, a number that is typed and not
    // taken yet, a height.
    void ChangeAll() {
        PaintLowerLeft(16);
        Click("cmdOpenBIN");
        Find<QComboBox>(Window("FrmBINTileEdit"), "ComboSetType").setCurrentIndex(5);
        Find<QAbstractButton>(Window("FrmBINTileEdit"), "cmdChangeSet").click();
        Find<QAbstractButton>(Window("FrmBINTileEdit"), "cmdOpenTerrain").click();
        Click("cmdOpenMap");
        auto& box = Find<QLineEdit>(Window("frmMAPMain"), "Text1_0");
        box.clear();
        QTest::keyClicks(&box, "7");
        Find<QAbstractButton>(Window("frmMAPMain"), "cmdVardenix").click();
        const Recording made(state_.Changes, {Paper::Heights}, "Change 1 height");
        state_.Terrain.Elevations.At(3, 1) = 0x0203;
    }
    void ExpectAllSaved() {
        EXPECT_EQ(tests::ReadPair(state_.Terrain.LFilename, state_.Terrain.OFilename)
                      .Posts.front()
                      .Tile,
                  16);
        EXPECT_EQ(tests::ReadCatalogue(state_.Catalogue.BinPath).Sets.front().Terrain, 7);
        const auto map = ReadWholeFile(state_.MAPFile, 2000);
        EXPECT_EQ(map.size(), 1112U);
        EXPECT_TRUE(std::ranges::any_of(map.Span(),
                                        [](std::byte b) { return b != std::byte{}; }));
        EXPECT_EQ(int{static_cast<unsigned char>(ReadWholeFile(elv_, 1 << 20).data()[5])},
                  0x02);
        for (const char* window : {"FrmVXMain", "FrmBINTileEdit", "frmMAPMain"})
            EXPECT_FALSE(Window(window).windowTitle().startsWith('*')) << window;
        EXPECT_FALSE(state_.Changes.AnyUnsaved());
    }
    QAction& SaveAllEntry() {
        return *Window("FrmVXMain").findChild<QAction*>("mnuSaveAll");
    }

    std::string elv_;
};

TEST_F(SaveAllTest, EveryPaperThatDiffersIsSaved) {
    OpenAll();
    EXPECT_FALSE(SaveAllEntry().isEnabled());
    ChangeAll();
    workspace_->CommandsChanged();
    ASSERT_TRUE(SaveAllEntry().isEnabled());
    SaveAllEntry().trigger();
    ExpectAllSaved();
    EXPECT_FALSE(SaveAllEntry().isEnabled());
}

TEST_F(SaveAllTest, ALevelTwoThatWasRestoredIsSaved) {
    OpenAll();
    Click("CmdSaveTheater");
    Click("Command3");
    PaintLowerLeft(16);
    Click("CmdSaveTheater");
    Click("Command4");
    EXPECT_FALSE(Find<QWidget>(Window("FrmVXMain"), "CmdSaveTheater").isEnabled());
    SaveAllEntry().trigger();
    EXPECT_EQ(tests::ReadPair(state_.Terrain.LFilename, state_.Terrain.OFilename)
                  .Posts.front()
                  .Tile,
              0);
    EXPECT_FALSE(state_.Changes.AnyUnsaved());
}

// The work goes on upon the file that was opened.
TEST_F(SaveAllTest, ASaveUnderAnotherNameIsNoneOfTheTheater) {
    OpenAll();
    Click("CmdSaveTheater");
    PaintLowerLeft(16);
    platform_.Dialogs.ExpectSave("", folder_.File("COPY.L2"), 1);
    Window("FrmVXMain").findChild<QAction*>("mnuSaveAs")->trigger();
    EXPECT_EQ(tests::ReadPair(folder_.File("COPY.L2"), folder_.File("COPY.O2"))
                  .Posts.front()
                  .Tile,
              16);
    EXPECT_FALSE(Window("FrmVXMain").windowTitle().startsWith('*'));
    EXPECT_TRUE(state_.Changes.Unsaved(Paper::Level2));
    EXPECT_TRUE(state_.Changes.SavedAt(0).empty());
    std::string asked;
    platform_.Dialogs.ExpectAnyBox("Attention", BoxAnswer::No, &asked);
    Window("FrmVXMain").close();
    EXPECT_EQ(ends_, 0);
    EXPECT_TRUE(asked.starts_with("The posts were saved under another name only"))
        << asked;
    SaveAllEntry().trigger();
    EXPECT_EQ(tests::ReadPair(state_.Terrain.LFilename, state_.Terrain.OFilename)
                  .Posts.front()
                  .Tile,
              16);
    EXPECT_FALSE(state_.Changes.AnyUnsaved());
}

TEST_F(SaveAllTest, HeightsUnderAnotherNameAreNoneOfTheLoadedFile) {
    OpenAll();
    workspace_->EditL0Elv(true);
    {
        const Recording made(state_.Changes, {Paper::Heights}, "Change 1 height");
        state_.Terrain.Elevations.At(3, 1) = 0x0203;
    }
    workspace_->L0NeedSave();
    platform_.Dialogs.ExpectSave("", folder_.File("copy.elv"), 2);
    Window("FrmVXMain").findChild<QAction*>("mnuSaveAs")->trigger();
    EXPECT_FALSE(state_.Flags.L0ELV);
    EXPECT_TRUE(state_.Changes.Unsaved(Paper::Heights));
    SaveAllEntry().trigger();
    EXPECT_EQ(int{static_cast<unsigned char>(ReadWholeFile(elv_, 1 << 20).data()[5])},
              0x02);
    EXPECT_FALSE(state_.Changes.AnyUnsaved());
}

TEST_F(SaveAllTest, ThePapersOfTheTheaterAreSavedTogetherOrNotAtAll) {
    OpenAll();
    ChangeAll();
    std::filesystem::remove(state_.Catalogue.BinPath); // error 53
    platform_.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, nullptr);
    SaveAllEntry().trigger();
    EXPECT_FALSE(std::filesystem::exists(state_.Terrain.LFilename));
    const auto map = ReadWholeFile(state_.MAPFile, 2000);
    EXPECT_TRUE(
        std::ranges::all_of(map.Span(), [](std::byte b) { return b == std::byte{}; }));
    EXPECT_TRUE(Window("FrmVXMain").windowTitle().startsWith('*'));
    EXPECT_TRUE(state_.Changes.Unsaved(Paper::Heights));
}

TEST_F(SaveAllTest, TheThirdButtonOnTheWayOutSavesAllAndLeaves) {
    OpenAll();
    ChangeAll();
    std::string asked;
    platform_.Dialogs.ExpectAnyBox("Confirm", BoxAnswer::SaveAll, &asked);
    Window("FrmVXMain").close();
    EXPECT_TRUE(asked.starts_with("BIN, L2, L0/ELV and MAP files have changed."))
        << asked;
    EXPECT_EQ(ends_, 1);
    ExpectAllSaved();
}

TEST_F(SaveAllTest, WhatCannotBeSavedKeepsTheProgramOpen) {
    OpenAll();
    ChangeAll();
    std::filesystem::remove(state_.Catalogue.BinPath);
    platform_.Dialogs.ExpectAnyBox("Confirm", BoxAnswer::SaveAll, nullptr);
    platform_.Dialogs.ExpectAnyBox("Error...", BoxAnswer::Ok, nullptr);
    Window("FrmVXMain").close();
    EXPECT_EQ(ends_, 0);
}

TEST_F(SaveAllTest, FilesOfDifferentTileNumbersAreAskedAbout) {
    OpenAll();
    PaintLowerLeft(16);
    SaveAllEntry().trigger();
    Click("cmdOpenBIN");
    state_.Configuration.AutoL2 = true;
    Find<QAbstractButton>(Window("FrmBINTileEdit"), "cmdDeleteSet").click();
    {
        const Recording made(state_.Changes, {Paper::Level2}, "Level 2 read anew");
        state_.Terrain.LxArr(1).TileOffset = 16;
    }
    workspace_->LevelTwoReadAnew();
    std::string asked;
    platform_.Dialogs.ExpectAnyBox("Confirm", BoxAnswer::No, &asked);
    SaveAllEntry().trigger();
    EXPECT_NE(asked.find("different tile numbers"), std::string::npos) << asked;
    EXPECT_EQ(tests::ReadCatalogue(state_.Catalogue.BinPath).Sets.size(), 2U);
}

} // namespace
} // namespace vardenix
