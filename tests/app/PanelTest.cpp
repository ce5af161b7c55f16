// The panel and its menus as the table of commands fills them, over a small theater: what
// each says, and what it does to the rest of the workspace.
#include "app/OpenedWorkspace.h"
#include "platform/windows/ColorButton.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"

#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>

#include <map>

namespace vardenix {
namespace {

using tests::Find;
using tests::Posts;

// The entries of a menu as they look, "-" for a line between them.
std::vector<std::string> Texts(const QMenu& menu) {
    std::vector<std::string> texts;
    for (const QAction* entry : menu.actions())
        texts.push_back(entry->isSeparator()
                            ? "-"
                            : entry->text().remove('&').replace('\t', '|').toStdString());
    return texts;
}

class PanelTest : public tests::OpenedWorkspace {
protected:
    FrmVXMain& Panel() { return workspace_->Panel(); }
    FrmVXMap& Map() { return workspace_->Map(); }
    QAction& Entry(const char* name) { return Find<QAction>(Panel(), name); }
    bool Enabled(const char* name) { return Find<QWidget>(Panel(), name).isEnabled(); }
    bool Ticked(const char* name) {
        return Find<QAbstractButton>(Panel(), name).isChecked();
    }
    std::string Tip(const char* name) {
        return Find<QWidget>(Panel(), name).toolTip().toStdString();
    }
    // How often the map was painted by what `work` does.
    template <typename Work>
    int Painting(Work work) {
        const QSignalSpy painted(&Map(), &FrmVXMap::ViewPainted);
        work();
        return static_cast<int>(painted.size());
    }
};

TEST_F(PanelTest, TheMenusStandInTheirOrder) {
    Open();
    std::vector<std::string> titles;
    for (const QAction* menu : Panel().menuBar()->actions())
        titles.push_back(menu->text().toStdString());
    EXPECT_EQ(titles, (std::vector<std::string>{"Fi&le", "&Edit", "Selectio&n", "&View",
                                                "T&ools", "Hel&p"}));
    EXPECT_EQ(Texts(Find<QMenu>(Panel(), "mnuFile")),
              (std::vector<std::string>{
                  "Save|Ctrl+S", "Save as...", "Save all", "Earlier saves...", "-",
                  "Load heights...|Ctrl+L", "-", "Import elevations...",
                  "Export elevations...", "Place of the theater...", "-",
                  "Open another theater...", "Recent", "-", "Exit"}));
    EXPECT_EQ(Texts(Find<QMenu>(Panel(), "mnuEdit")),
              (std::vector<std::string>{"Undo", "Redo", "-", "Brush|B", "Rectangle|R",
                                        "Fill|F", "Pick a tile|I", "Eraser|E",
                                        "Paint grounds|T", "Shape heights|H"}));
    EXPECT_EQ(Texts(Find<QMenu>(Panel(), "mnuView")),
              (std::vector<std::string>{"Areas and paths|Ctrl+1",
                                        "Grid|Ctrl+2",
                                        "Export area|Ctrl+3",
                                        "Heights|Ctrl+4",
                                        "Segments|Ctrl+5",
                                        "Night colors|Ctrl+6",
                                        "MAP color|Ctrl+7",
                                        "Relief|Ctrl+8",
                                        "Contour lines|Ctrl+9",
                                        "-",
                                        "Main window|F5",
                                        "Theater preview|F6",
                                        "Search results|F7",
                                        "Tile palette|F8",
                                        "Features|F9",
                                        "History",
                                        "-",
                                        "One window",
                                        "-",
                                        "Zoom in",
                                        "Zoom out",
                                        "Whole map",
                                        "Control panel",
                                        "Colors",
                                        "Bring all to front"}));
    EXPECT_EQ(Texts(Find<QMenu>(Panel(), "mnuTools")),
              (std::vector<std::string>{
                  "Make MEA File", "Make THR File", "Make tc File", "Make tm File", "-",
                  "Search Tiles...", "Replace Tiles...", "Rebuild Entire Theater...",
                  "Theater Statistics...", "-", "Save Map Screenshot..."}));
    EXPECT_EQ(Texts(Find<QMenu>(Panel(), "mnuHelp")),
              (std::vector<std::string>{"Online Help", "Manual", "About..."}));
    EXPECT_EQ(Texts(Map().Popup()),
              (std::vector<std::string>{
                  "Tile Properties...", "Locate in BIN Editor",
                  "Locate Color in MAP Editor", "Find this Tile", "Replace this Tile...",
                  "Select connected posts of this tile",
                  "Select connected posts of this kind", "Eraser leaves this tile"}));
}

TEST_F(PanelTest, WearsTheEntriesLetterForLetter) {
    Open();
    const std::map<const char*, std::string> entries{
        {"mnyExit", "E&xit"},
        {"mnumkMEA", "Make MEA F&ile"},
        {"mnumkTHR", "Ma&ke THR File"},
        {"mnumktc", "Make t&c File"},
        {"mnumktm", "Make t&m File"},
        {"mnuRebuildTheater", "Re&build Entire Theater..."},
        {"mnuThStats", "Theater Sta&tistics..."},
        {"mnuSaveScreeshot", "Sa&ve Map Screenshot..."},
        {"mnuOnlineHelp", "O&nline Help"}};
    for (const auto& [name, caption] : entries)
        EXPECT_EQ(Entry(name).text().toStdString(), caption);
}

TEST_F(PanelTest, TipsSayTheKeyUnlessTheyAreKnownByHeart) {
    Open();
    EXPECT_EQ(Tip("cmdUndo"), "Undo (not for importing)");
    EXPECT_EQ(Tip("cmdRedo"), "Redo (not for importing)");
    EXPECT_EQ(Tip("CmdExport"), "Use SHIFT to export TDFs (Features).");
    EXPECT_EQ(Tip("CmdSaveTheater"), "Use shift for save with a different name.");
    EXPECT_EQ(Tip("chkApplyMAP"), "Not accurate, just for reference!");
    EXPECT_EQ(Tip("chkL0ELV"), "No L0/ELV file loaded.");
    EXPECT_EQ(Tip("chkShowGrid"), "Ctrl+2");
    EXPECT_EQ(Tip("cmdZoomOut"),
              "One grid cell more a side; smaller tiles where the map fills its room");
    EXPECT_EQ(Find<QWidget>(Map(), "cmdRectangle").toolTip(),
              "Rectangle (R)\nPress at one corner, let go at the opposite one");
    EXPECT_EQ(Find<QWidget>(Map(), "spnBrushSize").toolTip(),
              "Smaller brush, wider brush ([, ])\nPosts along a side of the brush");
    EXPECT_EQ(Find<QWidget>(Panel(), "chkShowGrid").accessibleName(), "ShowGrid");
    EXPECT_EQ(Find<QWidget>(Map(), "cmdPick").accessibleName(), "Pick a tile");
}

TEST_F(PanelTest, WhatCannotBeDoneYetIsDisabled) {
    Open();
    for (const char* name :
         {"CmdSaveTheater", "cmdUndo", "cmdRedo", "chkL0ELV", "cmdOpenMap"})
        EXPECT_FALSE(Enabled(name)) << name;
    EXPECT_FALSE(Entry("mnumkTHR").isEnabled());
    for (const char* name : {"cmdOpenBIN", "CmdImport", "Command3", "chkShowResults"})
        EXPECT_TRUE(Enabled(name)) << name;
    workspace_->L2NeedSave();
    EXPECT_TRUE(Enabled("CmdSaveTheater"));
    EXPECT_TRUE(Entry("mnuSave").isEnabled());
    workspace_->L2AsSaved();
    EXPECT_FALSE(Entry("mnuSave").isEnabled());
}

TEST_F(PanelTest, LayersOfTheMapComeAndGoWithTheirSettings) {
    Open();
    struct Row {
        const char* Box;
        const char* Entry;
        bool MapView::*Layer;
        bool Configuration::*Setting;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"chkShowAreas", "mnuShowAreas", &MapView::ShowAreasPaths,
              &Configuration::VXMasterPathsAreas},
             {"chkShowGrid", "mnuShowGrid", &MapView::ShowGrid,
              &Configuration::OptionShowGrid},
             {"chkShowExport", "mnuShowExport", &MapView::ShowExport,
              &Configuration::OptionShowExpArea},
             {"chkShowHeights", "mnuShowHeights", &MapView::ShowHeights,
              &Configuration::OptionShowHeights},
             {"chkShowSegments", "mnuShowSegments", &MapView::ShowSegments,
              &Configuration::OptionShowSegments}}) {
        SCOPED_TRACE(row.Box);
        EXPECT_EQ(Painting([&] { Click(row.Box); }), 1);
        EXPECT_TRUE(workspace_->View().*row.Layer);
        EXPECT_TRUE(state_.Configuration.*row.Setting);
        EXPECT_TRUE(Ticked(row.Box) && Entry(row.Entry).isChecked());
        EXPECT_EQ(Painting([&] { Entry(row.Entry).trigger(); }), 1);
        EXPECT_FALSE(workspace_->View().*row.Layer);
        EXPECT_FALSE(state_.Configuration.*row.Setting);
        EXPECT_FALSE(Ticked(row.Box) || Entry(row.Entry).isChecked());
    }
}

TEST_F(PanelTest, SettingsOfAnEarlierRunAreTicked) {
    state_.Configuration.OptionShowSegments = true;
    state_.Configuration.PalWinVis = true;
    Open();
    EXPECT_TRUE(Ticked("chkShowSegments") && Ticked("chkShowTile"));
    EXPECT_FALSE(Ticked("chkShowGrid") || Ticked("chkShowFeatures"));
}

TEST_F(PanelTest, NightAndMapColorsActOnlyWhileThePanelIsVisible) {
    Open();
    for (const char* box : {"chkApplyNight", "chkApplyMAP"})
        EXPECT_EQ(Painting([&] { Click(box); }), 1) << box;
    EXPECT_TRUE(workspace_->View().ApplyNight && workspace_->View().ApplyMAP);
    Panel().hide();
    for (const char* box : {"chkApplyNight", "chkApplyMAP"})
        EXPECT_EQ(Painting([&] { Click(box); }), 0) << box;
    EXPECT_TRUE(workspace_->View().ApplyNight && workspace_->View().ApplyMAP);
}

TEST_F(PanelTest, ABoxTakesItsWindowAlongAndFollowsIt) {
    Open();
    const std::map<const char*, const char*> boxes{
        {"chkShowTheater", "FrmVXTheaterPreview"},
        {"chkShowResults", "frmVXSearchResults"},
        {"chkShowTile", "FrmVXTilePal"},
        {"chkShowFeatures", "FrmVXFeatures"},
        {"chkShowMain", "FrmVXMap"}};
    for (const auto& [box, window] : boxes) {
        SCOPED_TRACE(box);
        if (!Ticked(box))
            Click(box);
        EXPECT_TRUE(Ticked(box));
        EXPECT_TRUE(Window(window).isVisible());
        Click(box);
        EXPECT_FALSE(Ticked(box));
        EXPECT_FALSE(Window(window).isVisible());
        Click(box);
        Window(window).close();
        EXPECT_FALSE(Ticked(box));
        EXPECT_FALSE(Window(window).isVisible());
    }
}

TEST_F(PanelTest, GridCellsGoFromTwoToTen) {
    Open();
    EXPECT_EQ(Painting([&] { Click("cmdZoomin"); }), 1);
    EXPECT_EQ(workspace_->View().GridCells, 4);
    EXPECT_EQ(state_.Configuration.GridSize, 4);
    workspace_->View().GridCells = 2;
    EXPECT_EQ(Painting([&] { Click("cmdZoomin"); }), 0);
    workspace_->View().GridCells = 10;
    EXPECT_EQ(Painting([&] { Click("cmdZoomOut"); }), 0);
    EXPECT_EQ(workspace_->View().GridCells, 10);
}

TEST_F(PanelTest, TheZoomAndThePositionHaveTheirButtons) {
    Open();
    Click("cmdminus");
    EXPECT_EQ(workspace_->View().ZoomPosts, 2);
    Click("cmdplus");
    EXPECT_EQ(workspace_->View().ZoomPosts, 1);
    Find<QLineEdit>(Panel(), "LabelX").setText("17");
    Click("cmdGoXY");
    EXPECT_EQ(workspace_->View().MapLeftX, 17);
}

TEST_F(PanelTest, ToolsAreTakenInHandByKeyButtonAndMenu) {
    Open();
    struct Row {
        Qt::Key Key;
        const char* Button;
        const char* Entry;
        MapTool Tool;
    };
    for (const Row& row : std::initializer_list<Row>{
             {Qt::Key_R, "cmdRectangle", "mnuRectangle", MapTool::Rectangle},
             {Qt::Key_F, "cmdFill", "mnuFill", MapTool::Fill},
             {Qt::Key_I, "cmdPick", "mnuPick", MapTool::Pick},
             {Qt::Key_B, "cmdBrush", "mnuBrush", MapTool::Brush}}) {
        SCOPED_TRACE(row.Button);
        const auto taken = [&] {
            const bool hold = workspace_->Interaction().Tool == row.Tool;
            return hold && Find<QAbstractButton>(Map(), row.Button).isChecked() &&
                   Entry(row.Entry).isChecked();
        };
        QTest::keyClick(&Map(), row.Key);
        EXPECT_TRUE(taken());
        // A second click leaves it in hand.
        Find<QAbstractButton>(Map(), row.Button).click();
        EXPECT_TRUE(taken());
        for (const auto& call : std::initializer_list<std::function<void()>>{
                 [&] { Find<QAbstractButton>(Map(), row.Button).click(); },
                 [&] { Entry(row.Entry).trigger(); }}) {
            Map().ChooseTool(row.Tool == MapTool::Fill ? MapTool::Pick : MapTool::Fill);
            EXPECT_FALSE(taken());
            call();
            EXPECT_TRUE(taken());
        }
    }
}

TEST_F(PanelTest, OverThePostTheMenuCanAndBeyondTheEdgeItCannot) {
    Open();
    auto& picture = Find<QWidget>(Map(), "PicShow");
    const auto offered = [&](QPoint at) {
        QTest::mouseClick(&picture, Qt::RightButton, {}, at);
        const bool can = Find<QAction>(Map(), "mnuTileProperties").isEnabled() &&
                         Find<QAction>(Map(), "mnuLocInBIN").isEnabled();
        Map().Popup().close();
        return can;
    };
    EXPECT_TRUE(offered({3, 636}));
    workspace_->View().MapLeftX = Posts - 2;
    EXPECT_FALSE(offered({636, 636}));
}

TEST_F(PanelTest, ColorButtonsStoreTheChosenColorAndRepaint) {
    Open();
    struct Row {
        const char* Name;
        uint32_t MapView::*Shown;
        uint32_t Configuration::*Setting;
        uint32_t First;
    };
    for (const Row& row : std::initializer_list<Row>{
             {"CmdGridCol", &MapView::GridColor, &Configuration::GridColor, 0},
             {"CmdExpAreaCol", &MapView::ExportColor, &Configuration::ExportedAreaColor,
              0x7AEF65},
             {"CmdSegCol", &MapView::SegmentColor, &Configuration::SegmentColor,
              0x60F0E9}}) {
        platform_.Dialogs.ExpectCancel();
        EXPECT_EQ(Painting([&] { Click(row.Name); }), 0) << row.Name;
        EXPECT_EQ(workspace_->View().*row.Shown, row.First) << row.Name;
        platform_.Dialogs.ExpectColor(row.First, 0x123456);
        EXPECT_EQ(Painting([&] { Click(row.Name); }), 1) << row.Name;
        EXPECT_EQ(workspace_->View().*row.Shown, 0x123456u) << row.Name;
        EXPECT_EQ(state_.Configuration.*row.Setting, 0x123456u) << row.Name;
        auto& button = Find<ColorButton>(Panel(), row.Name);
        const QImage seen = button.grab().toImage();
        EXPECT_EQ(seen.pixelColor(button.rect().center()), QColor(0x56, 0x34, 0x12));
    }
}

TEST_F(PanelTest, TheFontOfTheHeightsIsStored) {
    Open();
    platform_.Dialogs.ExpectCancel();
    Click("cmdFont");
    EXPECT_EQ(state_.Configuration.HeightsFont.Name, "Arial");
    platform_.Dialogs.ExpectFont(
        {.Name = "Courier", .Size = 8.25F, .Bold = true, .Underline = true});
    // No heights are seen that would change.
    EXPECT_EQ(Painting([&] { Click("cmdFont"); }), 0);
    const FontChoice& font = state_.Configuration.HeightsFont;
    EXPECT_EQ(font.Name, "Courier");
    EXPECT_EQ(font.Size, 8.25F);
    EXPECT_TRUE(font.Bold && font.Underline && !font.Italic && !font.Strikethrough);
}

TEST_F(PanelTest, TheSmallDialogsOpen) {
    Open();
    std::string seen;
    const auto note = [&seen](QDialog& window) {
        seen += window.objectName().toStdString() + " ";
        window.reject();
    };
    tests::WhenModal<QDialog>(note);
    Click("CmdHeightCol");
    tests::WhenModal<QDialog>(note);
    Click("cmdAreasOptions");
    tests::WhenModal<QDialog>(note);
    Entry("mnuAbout").trigger();
    EXPECT_EQ(seen, "FrmVXHeightCols FrmVXAreasPathsOptions FrmAbout ");
}

TEST_F(PanelTest, HelpOpensTheStoredAddress) {
    Open();
    state_.Configuration.OnlineHelp = "http://www.vardenix.example/elsewhere";
    Entry("mnuOnlineHelp").trigger();
    EXPECT_EQ(platform_.Processes.Story, "open http://www.vardenix.example/elsewhere");
}

TEST_F(PanelTest, TheManualIsThatOfAnInstalledProgram) {
    Open();
    emit Find<QMenu>(Panel(), "mnuHelp").aboutToShow();
    EXPECT_FALSE(Entry("mnuManual").isEnabled());
    const tests::TestFolder installed;
    const std::string page = installed.Write("manual/manual.html", "<html>");
    state_.Folders.ShippedPath = installed.Path() + "\\";
    emit Find<QMenu>(Panel(), "mnuHelp").aboutToShow();
    Entry("mnuManual").trigger();
    EXPECT_EQ(platform_.Processes.Story, "open " + page);
}

TEST_F(PanelTest, ExitLeavesTheProgram) {
    Open();
    Entry("mnyExit").trigger();
    EXPECT_EQ(ends_, 1);
}

TEST_F(PanelTest, RestorePointsAreNotForTheFinestElevations) {
    Open();
    workspace_->EditL0Elv(true);
    EXPECT_FALSE(Enabled("Command3") || Enabled("Command4"));
    workspace_->EditL0Elv(false);
    EXPECT_TRUE(Enabled("Command3") && Enabled("Command4"));
}

} // namespace
} // namespace vardenix
