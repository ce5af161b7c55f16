// The BIN editor and the workspace, which have the screen in turn.
#include "app/OpenedWorkspace.h"
#include "bineditor/SetsAndTiles.h"
#include "catalogue/TextureBinFile.h"
#include "catalogue/TileCheck.h"
#include "files/BinaryReader.h"
#include "support/CatalogueReader.h"
#include "support/TheaterMaker.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSpinBox>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QTreeView>

#include <filesystem>

namespace vardenix {
namespace {

using tests::Find;

class BinEditorTest : public tests::OpenedWorkspace {
protected:
    // Sets of two, one and one tiles; every post has tile 0 or 1, but for the lower left
    // one.
    BinEditorTest() {
        state_.Folders.SystemTempPath = folder_.Path() + "/";
        state_.Terrain.LFilename = folder_.File("theater.L2");
        state_.Terrain.OFilename = folder_.File("theater.O2");
        state_.Catalogue.BinPath = folder_.Write(
            "Texture.bin", tests::CatalogueBytes({{1, {{"H0.PCX"}, {"H1.PCX"}}},
                                                  {4, {{"LAND.PCX"}}},
                                                  {9, {{"TOWN.PCX"}}}}));
        state_.Catalogue.Bin = ParseBinFile(
            ReadWholeFile(state_.Catalogue.BinPath, uint64_t{1} << 30).Span(), "");
        NoProgress quiet;
        RebuildTileLookup(state_.Catalogue, {}, quiet);
        state_.Terrain.LxArr(1).TileOffset = 16;
        CountTileUse(state_.Terrain, state_.Catalogue.Lookup);
    }

    static QWidget& Editor() { return Window("FrmBINTileEdit"); }
    static void Press(const char* button) {
        Find<QAbstractButton>(Editor(), button).click();
    }
    static void Select(int set) {
        auto& list = Find<QTreeView>(Editor(), "ListView1");
        list.setCurrentIndex(list.model()->index(set, 0));
    }
    static std::string PanelStatus() {
        QStatusBar& line = *static_cast<FrmVXMain&>(Window("FrmVXMain")).statusBar();
        const auto* label = line.findChild<QLabel*>("lblNumbers");
        return label != nullptr && label->isVisible() ? label->text().toStdString() : "";
    }
    int32_t Tile(int serial) { return state_.Terrain.LxArr(serial).TileOffset; }
    int32_t& Chosen() { return workspace_->Interaction().SelectedTile; }
};

TEST_F(BinEditorTest, TheScreenIsTheEditorsUntilTheMapIsCalledBack) {
    Open();
    const QImage before = Painted();
    Click("cmdOpenBIN");
    EXPECT_TRUE(Editor().isVisible());
    for (const char* name : {"FrmVXMain", "FrmVXMap", "FrmVXTheaterPreview"})
        EXPECT_FALSE(Window(name).isVisible()) << name;
    Select(2);
    Press("cmdMoveSet");
    Select(0);
    Press("cmdMoveOK"); // the third set before the first
    EXPECT_EQ(Tile(1), 32);
    Press("cmdOpenTerrain");
    EXPECT_FALSE(Editor().isVisible());
    EXPECT_TRUE(Window("FrmVXMap").isVisible());
    EXPECT_EQ(Painted(), before);
    EXPECT_TRUE(Window("FrmVXMain").windowTitle().startsWith("*"));
}

TEST_F(BinEditorTest, TheMapOfTheOneWindowHearsTheKeysAgain) {
    Open();
    Window("FrmVXMain").findChild<QAction*>("mnuOneWindow")->trigger();
    QWidget& map = workspace_->Map();
    QWidget& desk = *map.window();
    ASSERT_NE(&desk, &map);
    tests::Find<QSpinBox>(desk, "spnBrushSize").setFocus();
    tests::Find<QPushButton>(desk, "cmdOpenBIN").click();
    ASSERT_FALSE(desk.isVisible());
    Press("cmdOpenTerrain");
    ASSERT_TRUE(desk.isVisible());
    EXPECT_EQ(desk.focusWidget(), &map);
}

// Editor and rebuild window have the screen in turn, and the same level 2.
TEST_F(BinEditorTest, ARebuildTakesTheNumbersThatTheEditorHasGiven) {
    Open();
    Click("cmdOpenBIN");
    Select(2);
    Press("cmdMoveSet");
    Select(0);
    Press("cmdMoveOK");
    ASSERT_EQ(Tile(1), 32);
    Press("cmdOpenTerrain");
    Window("FrmVXMain").findChild<QAction*>("mnuRebuildTheater")->trigger();
    QWidget& rebuild = Window("FrmVXRebiuldTheater");
    EXPECT_TRUE(rebuild.isVisible());
    for (const char* name : {"FrmVXMain", "FrmVXMap", "FrmBINTileEdit"})
        EXPECT_FALSE(Window(name).isVisible()) << name;
    std::string made;
    platform_.Dialogs.ExpectAnyBox("Rebuild Theater", BoxAnswer::Ok, &made);
    Find<QAbstractButton>(rebuild, "cmdStart").click();
    EXPECT_NE(made.find("theater.l0"), std::string::npos) << made;
    EXPECT_TRUE(tests::Slurp(folder_.File("theater.l0"))
                    .starts_with(std::string("\x20\x20\0\0", 4))); // 32 + 8192
    Find<QAbstractButton>(rebuild, "cmdExit").click();
    EXPECT_TRUE(Window("FrmVXMap").isVisible());
    // The rebuild has saved neither level 2 nor the catalogue.
    EXPECT_TRUE(Window("FrmVXMain").windowTitle().startsWith("*"));
    Click("cmdOpenBIN");
    EXPECT_TRUE(Editor().windowTitle().startsWith("*"));
    EXPECT_FALSE(rebuild.isVisible());
}

TEST_F(BinEditorTest, TheMapsMenuLeadsToThePostsTile) {
    Open();
    QWidget& map = Window("FrmVXMap");
    QTest::mouseClick(&Find<QWidget>(map, "PicShow"), Qt::RightButton, {}, {3, 636});
    map.findChild<QMenu*>("mnupup1")->close();
    map.findChild<QAction*>("mnuLocInBIN")->trigger();
    EXPECT_EQ(Find<QLineEdit>(Editor(), "txtTilename").text(), "LAND.PCX");
    EXPECT_EQ(Find<QLabel>(Editor(), "lblTileNum").text(), "Tile Number: 16");
}

TEST_F(BinEditorTest, UndoneStepsStillGiveTheSamePictures) {
    Open();
    Chosen() = 32;
    auto& picture = Find<QWidget>(Window("FrmVXMap"), "PicShow");
    QTest::mousePress(&picture, Qt::LeftButton, {}, {64, 636}); // the lower left post
    QTest::mouseRelease(&picture, Qt::LeftButton, {}, {64, 636});
    ASSERT_EQ(Tile(1), 32);
    Click("cmdOpenBIN");
    Select(0);
    Press("cmdDeleteSet");
    EXPECT_EQ(Tile(1), 16);
    Press("cmdOpenTerrain");
    Click("cmdUndo");
    EXPECT_EQ(Tile(1), 0); // LAND.PCX, which was 16
    Click("cmdRedo");
    EXPECT_EQ(Tile(1), 16);
}

TEST_F(BinEditorTest, TheChosenTileIsStillTheSameOneOrNone) {
    Open();
    Click("cmdOpenBIN");
    Chosen() = 32;
    Select(1);
    Press("cmdDeleteSet");
    EXPECT_EQ(Chosen(), 16);
    Select(0);
    Press("cmdDeleteSet"); // what was 16 is 0 now
    EXPECT_EQ(Chosen(), 0);
    Press("cmdDeleteSet");
    EXPECT_EQ(Chosen(), -1);
}

TEST_F(BinEditorTest, AChosenNumberThatHasNoTileAnyMoreIsChosenNoMore) {
    Open();
    Click("cmdOpenBIN");
    Chosen() = 32;
    Select(1);
    state_.Configuration.AutoL2 = false;
    std::string asked;
    platform_.Dialogs.ExpectAnyBox("Attention", BoxAnswer::No, &asked);
    Press("cmdDeleteSet");
    Press("cmdOpenTerrain");
    EXPECT_EQ(Chosen(), -1);
}

TEST_F(BinEditorTest, WhoeverSavesOneFileIsToldOfTheOther) {
    Open();
    Click("cmdOpenBIN");
    Select(0);
    Press("cmdDeleteSet");
    Press("cmdOpenTerrain");
    EXPECT_EQ(PanelStatus(), "Tile numbers changed: save L2 and the BIN file.");
    // As a menu does it that opens.
    QStatusTipEvent tip("");
    QApplication::sendEvent(&Window("FrmVXMain"), &tip);
    EXPECT_EQ(PanelStatus(), "Tile numbers changed: save L2 and the BIN file.");
    Click("CmdSaveTheater");
    EXPECT_EQ(PanelStatus(), "L2 is saved; the BIN file that fits it is not.");
    Click("cmdOpenBIN");
    EXPECT_EQ(
        Find<QLabel>(Editor(), "lblStatus").text(),
        "Level 2 is saved with the new tile numbers; Texture.bin is still unsaved.");
    Press("cmdSaveBIN");
    Press("cmdOpenTerrain");
    EXPECT_EQ(PanelStatus(), "");
}

TEST_F(BinEditorTest, BothAreSavedAsOneAndNoStarIsLeft) {
    Open();
    Click("CmdSaveTheater");
    Click("cmdOpenBIN");
    Select(0);
    Press("cmdDeleteSet");
    Press("cmdSaveBoth");
    EXPECT_EQ(tests::ReadCatalogue(state_.Catalogue.BinPath).Sets.size(), 2U);
    EXPECT_EQ(Editor().windowTitle(), "BIN Editor v3.0.1");
    Press("cmdOpenTerrain");
    EXPECT_FALSE(Window("FrmVXMain").windowTitle().startsWith("*"));
    EXPECT_EQ(PanelStatus(), "");
    Window("FrmVXMain").close();
    EXPECT_EQ(ends_, 1); // nobody is asked
}

// As an elevation rebuild does it whose question about unsaved posts was answered No.
TEST_F(BinEditorTest, LevelTwoThatARebuildReadsAnewIsCorrectedOrGivenUp) {
    Open();
    Click("CmdSaveTheater");
    Click("cmdOpenBIN");
    Select(0);
    Press("cmdDeleteSet");
    ASSERT_EQ(Tile(1), 0);
    {
        const Recording made(state_.Changes, {Paper::Level2}, "Level 2 read anew");
        state_.Terrain.LxArr(1).TileOffset = 16;
    }
    workspace_->LevelTwoReadAnew();
    Press("cmdOpenTerrain");
    EXPECT_EQ(PanelStatus(),
              "L2 has other tile numbers than the BIN file: see the BIN editor.");
    Click("cmdOpenBIN");
    EXPECT_FALSE(Find<QWidget>(Editor(), "cmdSaveBoth").isVisible());
    Press("cmdCorrectL2");
    EXPECT_EQ(Tile(1), 0);
    Press("cmdSaveBoth");
    EXPECT_EQ(tests::ReadPair(state_.Terrain.LFilename, state_.Terrain.OFilename)
                  .Posts.front()
                  .Tile,
              0);
    Press("cmdOpenTerrain");
    EXPECT_EQ(PanelStatus(), "");
}

TEST_F(BinEditorTest, SaveBothAsksBeforeItWritesTheGapOfACutFile) {
    Open();
    state_.Terrain.Gap = {11, 16};
    Click("cmdOpenBIN");
    Select(0);
    Press("cmdDeleteSet");
    std::string asked;
    platform_.Dialogs.ExpectAnyBox("Confirm", BoxAnswer::No, &asked);
    Press("cmdSaveBoth");
    EXPECT_TRUE(asked.starts_with("11 of 16 segments were missing in ")) << asked;
    EXPECT_FALSE(std::filesystem::exists(state_.Terrain.LFilename));
    EXPECT_EQ(tests::ReadCatalogue(state_.Catalogue.BinPath).Sets.size(), 3U);
    platform_.Dialogs.ExpectAnyBox("Confirm", BoxAnswer::Yes, &asked);
    Press("cmdSaveBoth");
    EXPECT_TRUE(std::filesystem::exists(state_.Terrain.LFilename));
}

TEST_F(BinEditorTest, ARestoreThatIsSavedWithTheCatalogueIsNotAskedAboutAnyMore) {
    Open();
    Click("Command3");
    Chosen() = 32;
    auto& picture = Find<QWidget>(Window("FrmVXMap"), "PicShow");
    QTest::mousePress(&picture, Qt::LeftButton, {}, {64, 636});
    QTest::mouseRelease(&picture, Qt::LeftButton, {}, {64, 636});
    Click("Command4");
    Click("cmdOpenBIN");
    Select(0);
    Press("cmdDeleteSet");
    Press("cmdSaveBoth");
    Press("cmdOpenTerrain");
    Window("FrmVXMain").close();
    EXPECT_EQ(ends_, 1); // nobody is asked
}

TEST_F(BinEditorTest, ARestorePointOfOldNumbersIsAskedAbout) {
    Open();
    Click("Command3");
    Click("cmdOpenBIN");
    Select(1);
    Press("cmdDeleteSet");
    Press("cmdOpenTerrain");
    std::string asked;
    platform_.Dialogs.ExpectAnyBox("Attention", BoxAnswer::No, &asked);
    Click("Command4");
    EXPECT_EQ(Tile(1), 0);
    EXPECT_NE(asked.find("Tile numbers"), std::string::npos) << asked;
}

TEST_F(BinEditorTest, LeavingAsksForAnUnsavedCatalogue) {
    Open();
    Click("cmdOpenBIN");
    Select(2);
    Press("cmdChangeSet");
    std::string asked;
    platform_.Dialogs.ExpectAnyBox("Confirm", BoxAnswer::No, &asked);
    Editor().close();
    EXPECT_TRUE(asked.starts_with("The BIN file has changed.")) << asked;
    EXPECT_EQ(ends_, 0);
    EXPECT_TRUE(Editor().isVisible());
}

} // namespace
} // namespace vardenix
