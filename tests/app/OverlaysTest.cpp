// Features, the search, regions and derived files, from the panel's buttons and clicks on
// the map to what lies in memory and on the disk afterwards.
#include "app/OpenedWorkspace.h"
#include "features/windows/FrmVXFeatures.h"
#include "search/windows/frmVXSearchOptions.h"
#include "workspace/windows/FrmVXMain.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTreeView>
#include <QTreeWidget>

namespace vardenix {
namespace {

using tests::Find;
using tests::Int32Bytes;
using tests::Posts;

class OverlaysTest : public tests::OpenedWorkspace {
protected:
    OverlaysTest() { state_.Folders.SystemTempPath = folder_.Path() + "/"; }

    // The view is of 5 by 5 posts of 128 pixels at the lower left.
    static void PressPost(int x, int y) {
        auto& picture = Find<QWidget>(Window("FrmVXMap"), "PicShow");
        QTest::mousePress(&picture, Qt::LeftButton, {},
                          {x * 128 + 64, 640 - y * 128 - 64});
    }
    static void Choose(const char* entry) {
        Window("FrmVXMain").findChild<QAction*>(entry)->trigger();
    }
    void SearchNow() {
        subsystems_->Search.ShowOptions();
        auto& options = static_cast<frmVXSearchOptions&>(Window("frmVXSearchOptions"));
        options.hide();
        emit options.SearchWanted();
    }
    static bool Shown(const char* window) {
        for (const QWidget* each : QApplication::topLevelWidgets())
            if (each->objectName() == window)
                return each->isVisible();
        return false;
    }
    static bool Ticked(const char* box) {
        return Find<QCheckBox>(Window("FrmVXMain"), box).isChecked();
    }
    static bool HintShown() {
        return Find<QWidget>(Window("FrmVXMain"), "Frame7").isVisible();
    }
    static std::string Title() { return Window("FrmVXMap").windowTitle().toStdString(); }
    int32_t Tile(int x, int y) {
        return state_.Terrain.LxArr(int64_t{y} * Posts + x + 1).TileOffset;
    }
    static QColor PixelOf(int x, int y) { return Painted().pixelColor(x, y); }
};

TEST_F(OverlaysTest, ARegionIsExportedBetweenTwoClicks) {
    Open();
    Click("CmdExport");
    EXPECT_TRUE(HintShown());
    PressPost(3, 2);
    EXPECT_TRUE(HintShown());
    const std::string path = folder_.File("region.exp");
    platform_.Dialogs.ExpectSave("Save Export file as...", path);
    PressPost(1, 1);
    EXPECT_FALSE(HintShown());
    // Column 1 has tile 1, the others 0.
    std::string expected = Int32Bytes(3) + Int32Bytes(2);
    for (int row = 0; row < 2; ++row)
        expected += Int32Bytes(1) + Int32Bytes(0) + Int32Bytes(0);
    EXPECT_EQ(tests::Slurp(path), expected);
    EXPECT_TRUE(Find<QWidget>(Window("FrmVXMain"), "CmdExport").isEnabled());
}

TEST_F(OverlaysTest, ARegionIsStampedWhereTheMapIsClicked) {
    Open();
    const std::string path = folder_.Write("in.exp", Int32Bytes(2) + Int32Bytes(1) +
                                                         Int32Bytes(1) + Int32Bytes(1));
    const QImage before = Painted();
    platform_.Dialogs.ExpectOpen("Open file to import...", path);
    Click("CmdImport");
    EXPECT_TRUE(HintShown());
    EXPECT_TRUE(Find<QLabel>(Window("FrmVXMain"), "lblImportNoUndo").isVisible());
    state_.Preview.Pixels.assign(state_.Preview.Pixels.size(), 0x123456);
    PressPost(3, 2);
    EXPECT_FALSE(HintShown());
    EXPECT_EQ(Tile(3, 2), 1);
    EXPECT_EQ(Tile(4, 2), 1);
    EXPECT_EQ(Tile(3, 3), 0);
    EXPECT_NE(Painted(), before);
    EXPECT_TRUE(Title().starts_with("*"));
    EXPECT_NE(state_.Preview.Pixels.back(), 0x123456U); // made anew
    EXPECT_FALSE(Find<QWidget>(Window("FrmVXMain"), "cmdUndo").isEnabled());
    // The next click is a click again.
    PressPost(0, 0);
    EXPECT_EQ(Tile(0, 0), 0);
}

TEST_F(OverlaysTest, ARestorePointBringsTheTerrainBackAfterAnImport) {
    Open();
    platform_.Dialogs.ExpectOpen(
        "Open file to import...",
        folder_.Write("in.exp", Int32Bytes(1) + Int32Bytes(1) + Int32Bytes(9)));
    Click("CmdImport");
    Click("Command3");
    PressPost(2, 2);
    EXPECT_EQ(Tile(2, 2), 9);
    Click("Command4");
    EXPECT_EQ(Tile(2, 2), 0);
}

TEST_F(OverlaysTest, AnImportThatIsRefusedWaitsForNothing) {
    Open();
    platform_.Dialogs.ExpectCancel();
    Click("CmdImport");
    EXPECT_FALSE(HintShown());
    EXPECT_FALSE(workspace_->Interaction().Waits());
}

TEST_F(OverlaysTest, FeaturesShowOnTheMap) {
    Open();
    subsystems_->Features.Window().LoadFiles({folder_.Write(
        "f.tdf", "ROAD 2 0,2 4,2 0\nAIRPORT 1 3,3 0\nRIVER 2 0,0 9,0 0\n")});
    state_.Configuration.Roads = {0x0000FF, 5};
    const QImage before = Painted();
    Click("chkShowFeatures");
    ASSERT_TRUE(Shown("FrmVXFeatures"));
    QWidget& window = Window("FrmVXFeatures");
    Find<QCheckBox>(window, "CheckRoads").click();
    // Along the middle of the row of posts at Y 2.
    EXPECT_EQ(PixelOf(320, 640 - 2 * 128 - 64), QColor(255, 0, 0));
    EXPECT_EQ(PixelOf(320, 576), before.pixelColor(320, 576)); // rivers stay hidden
    Find<QCheckBox>(window, "Check").click();
    EXPECT_EQ(Painted(), before);
}

TEST_F(OverlaysTest, RememberedFeaturesAreOnTheMapWhenTheTheaterOpens) {
    const std::string game = folder_.Path() + "/game";
    state_.Terrain.LFilename = game + "/terrain/theater.L2";
    state_.Catalogue.BinPath = game + "/texture/texture.bin";
    state_.MAPFile = game + "/terrain/theater.map";
    state_.Catalogue.DDSFolder = game + "/texture/texture/";
    Open();
    subsystems_->Features.Load({folder_.Write("f.tdf", "ROAD 2 0,2 4,2 0\n")});
    QWidget& window = Window("FrmVXFeatures");
    Find<QCheckBox>(window, "chkAgain").click();
    Find<QCheckBox>(window, "CheckRoads").click();
    const std::string kept = tests::Slurp(folder_.File("Desk.ini"));
    EXPECT_NE(kept.find("SHOWN=ROAD"), std::string::npos) << kept;

    // Another run of the program.
    state_.Features = {};
    state_.ShownFeatures = {};
    Open();
    EXPECT_EQ(state_.Features.Roads.size(), 2U);
    EXPECT_TRUE(state_.ShownFeatures.ShowFeatures);
    EXPECT_TRUE(Find<QCheckBox>(Window("FrmVXFeatures"), "chkAgain").isChecked());
    Find<QCheckBox>(Window("FrmVXFeatures"), "chkAgain").click();
    EXPECT_EQ(tests::Slurp(folder_.File("Desk.ini")).find("FEATURES1"),
              std::string::npos);
}

TEST_F(OverlaysTest, TheFeaturesWindowAndItsBoxGoTogether) {
    Open();
    Click("chkShowFeatures");
    EXPECT_TRUE(Shown("FrmVXFeatures"));
    EXPECT_TRUE(state_.Configuration.FeatWinVis);
    Window("FrmVXFeatures").close();
    EXPECT_FALSE(Shown("FrmVXFeatures") || Ticked("chkShowFeatures") ||
                 state_.Configuration.FeatWinVis);
    Click("chkShowFeatures");
    EXPECT_TRUE(Shown("FrmVXFeatures"));
    WorkspaceCommands& commands = *workspace_;
    commands.HideWorkspace();
    EXPECT_FALSE(Shown("FrmVXFeatures"));
    commands.ShowWorkspace();
    EXPECT_TRUE(Shown("FrmVXFeatures"));
}

TEST_F(OverlaysTest, ExportWithShiftExportsFeatures) {
    Open();
    subsystems_->Features.Window().LoadFiles(
        {folder_.Write("f.tdf", "CITY 1 2,2 7\nCITY 1 9,9 8\n")});
    QTest::keyPress(&Window("FrmVXMain"), Qt::Key_Shift);
    Click("CmdExport");
    QTest::keyRelease(&Window("FrmVXMain"), Qt::Key_Shift);
    PressPost(0, 0);
    const std::string path = folder_.File("out.tdf");
    platform_.Dialogs.ExpectBox(
        "TDF Export",
        "The tdfs of the selected region will be exported. Do you want a single file for "
        "all tdfs (otherwise a file for each tdf type will be saved)?",
        BoxAnswer::Yes);
    platform_.Dialogs.ExpectSave("Save Feature File as...", path);
    PressPost(3, 3);
    EXPECT_EQ(tests::Slurp(path), "CITY 1 2,2 7\r\n");
}

TEST_F(OverlaysTest, ASearchListsFramesAndOverwritesItsHits) {
    Open();
    for (int i = 0; i < 16 * Posts; ++i)
        state_.Terrain.LxArr(i + 1).Elevation = 5;
    state_.Terrain.LxArr(2 * Posts + 4).TileOffset = 1; // post 3,2
    Choose("mnusearchTiles");
    ASSERT_TRUE(Shown("frmVXSearchOptions"));
    QWidget& options = Window("frmVXSearchOptions");
    Find<QLineEdit>(options, "Text1").setText("1");
    QTest::mouseClick(&Find<QWidget>(options, "Frame1_7"), Qt::LeftButton); // left
    Find<QLineEdit>(options, "Text1").setText("0");
    QTest::mouseClick(&Find<QWidget>(options, "Frame1_3"), Qt::LeftButton); // right
    Find<QLineEdit>(options, "Text2").setText("5");
    workspace_->RefreshPicArray();
    const QImage before = Painted();
    Find<QAbstractButton>(options, "cmdSearch").click();

    EXPECT_FALSE(Shown("frmVXSearchOptions"));
    ASSERT_TRUE(Shown("frmVXSearchResults"));
    EXPECT_TRUE(Ticked("chkShowResults"));
    QAbstractItemModel& hits =
        *Find<QTreeView>(Window("frmVXSearchResults"), "ListRes").model();
    // Column 1 in the rows whose neighbours are 5 feet high, and post 3,2.
    EXPECT_EQ(hits.rowCount(), 17);
    EXPECT_EQ(hits.index(3, 1).data().toInt(), 3);
    EXPECT_EQ(hits.index(3, 2).data().toInt(), 2);
    // Framed on the map while the list is up.
    EXPECT_NE(PixelOf(3 * 128 + 1, 640 - 2 * 128 - 64),
              before.pixelColor(3 * 128 + 1, 640 - 2 * 128 - 64));

    QWidget& results = Window("frmVXSearchResults");
    hits.setData(hits.index(3, 0), Qt::Checked, Qt::CheckStateRole);
    Find<QCheckBox>(results, "Check1_2").click();
    Find<QLineEdit>(results, "Text1_2").setText("200");
    EXPECT_FALSE(Title().starts_with("*"));
    Find<QAbstractButton>(results, "Command1").click();
    EXPECT_EQ(state_.Terrain.LxArr(2 * Posts + 4).Palette, 200);
    EXPECT_TRUE(Title().starts_with("*"));
    results.close();
    EXPECT_EQ(Painted(), before);
}

TEST_F(OverlaysTest, AHitComesToTheLowerLeftOfTheView) {
    Open();
    state_.Terrain.LxArr(20 * Posts + 11).X1 = 7; // post 10,20
    state_.Search.Pattern[0].CellX1 = "7";
    SearchNow();
    auto& list = Find<QTreeView>(Window("frmVXSearchResults"), "ListRes");
    list.setCurrentIndex(list.model()->index(0, 0));
    QTest::keyClick(&list, Qt::Key_Return);
    EXPECT_EQ(workspace_->View().MapLeftX, 10);
    EXPECT_EQ(workspace_->View().MapBottomY, 20);
}

TEST_F(OverlaysTest, TheTileOfTheRightClickIsFoundAndReplaced) {
    Open();
    const QImage before = Painted();
    workspace_->Interaction().PopupSerial = 2; // of the column of tile 1
    state_.Catalogue.Lookup[0].Terrain = state_.Catalogue.Lookup[1].Terrain = 4;
    const auto choose = [](const char* entry) {
        Window("FrmVXMap").findChild<QAction*>(entry)->trigger();
    };
    workspace_->CommandsChanged();
    choose("mnuFindTile");
    ASSERT_TRUE(Shown("frmVXSearchResults"));
    EXPECT_EQ(state_.Search.Results.size(), size_t{Posts} + 1);
    EXPECT_EQ(state_.Search.Results[1], 2);

    choose("mnuReplaceTile");
    ASSERT_TRUE(Shown("FrmVXReplace"));
    QWidget& replace = Window("FrmVXReplace");
    EXPECT_EQ(Find<QLineEdit>(replace, "txtOld").text(), "1");
    workspace_->Interaction().SelectedTile = 0; // in the palette
    workspace_->SelectionChanged();
    EXPECT_EQ(Find<QLineEdit>(replace, "txtNew").text(), "0");
    EXPECT_EQ(Find<QLabel>(replace, "lblCount").text(), "32 posts give way");
    state_.Preview.Pixels.assign(state_.Preview.Pixels.size(), 0x123456);
    Find<QAbstractButton>(replace, "cmdReplace").click();
    EXPECT_EQ(Find<QLabel>(replace, "lblCount").text(), "32 posts changed");
    EXPECT_EQ(Tile(1, 5), 0);
    EXPECT_NE(Painted(), before);
    EXPECT_NE(state_.Preview.Pixels.back(), 0x123456U); // made anew
    EXPECT_TRUE(Title().starts_with("*"));
    ASSERT_EQ(state_.Changes.Count(), 1U);
    Choose("mnuUndo");
    EXPECT_EQ(Tile(1, 5), 1);
    WorkspaceCommands& commands = *workspace_;
    commands.HideWorkspace();
    EXPECT_FALSE(Shown("FrmVXReplace"));
}

TEST_F(OverlaysTest, ARowOfTheStatisticsIsFound) {
    state_.Catalogue.Lookup[0].Terrain = state_.Catalogue.Lookup[1].Terrain = 4;
    Open();
    Choose("mnuThStats");
    ASSERT_TRUE(Shown("FrmVXStatistics"));
    auto& rows = Find<QTreeWidget>(Window("FrmVXStatistics"), "lstRows");
    const QTreeWidgetItem* tiles = rows.topLevelItem(3);
    ASSERT_EQ(tiles->childCount(), 2);
    emit rows.itemClicked(tiles->child(1), 0);
    ASSERT_TRUE(Shown("frmVXSearchResults"));
    EXPECT_EQ(state_.Search.Results.size(), size_t{Posts} + 1);
    WorkspaceCommands& commands = *workspace_;
    commands.HideWorkspace();
    EXPECT_FALSE(Shown("FrmVXStatistics"));
}

TEST_F(OverlaysTest, TheMenuMakesTheDerivedFiles) {
    Open();
    const std::string path = folder_.File("out");
    const auto made = [&](const char* entry) {
        platform_.Dialogs.ExpectSave("", path);
        Choose(entry);
        return tests::Slurp(path);
    };
    EXPECT_EQ(made("mnumkMEA").size(), size_t{Posts} / 8 * Posts / 8 * 2);
    EXPECT_EQ(made("mnumktc"), "0\t \t | Used 992 times\r\n1\t \t | Used 32 times\r\n"
                               "FFFF     END MARK    | Used 0 times\r\n");
    EXPECT_EQ(made("mnumktm").size(), size_t{Posts} * Posts * 2);
    EXPECT_FALSE(Title().starts_with("*"));
    EXPECT_TRUE(Window("FrmVXMain").isEnabled());
}

TEST_F(OverlaysTest, ThePlacesOfTheWindowsAreStored) {
    state_.Configuration.FeatWinVis = true;
    state_.Configuration.SearchResWinVis = true;
    state_.Configuration.FeatWinPos = {.Top = 150 * 15, .Left = 40 * 15};
    state_.Configuration.SearchResWinPos = {.Top = 20 * 15, .Left = 30 * 15};
    Open();
    EXPECT_TRUE(Shown("FrmVXFeatures") && Shown("frmVXSearchResults"));
    EXPECT_EQ(Window("FrmVXFeatures").pos(), QPoint(40, 150));
    EXPECT_EQ(Window("frmVXSearchResults").pos(), QPoint(30, 20));
    Window("FrmVXFeatures").move(45, 60);
    ASSERT_TRUE(workspace_->LeaveProgram());
    EXPECT_EQ(state_.Configuration.FeatWinPos.Left, 45 * 15);
    EXPECT_EQ(state_.Configuration.FeatWinPos.Top, 60 * 15);
}

} // namespace
} // namespace vardenix
