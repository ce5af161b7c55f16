#include "windows/FrmVXMainTest.h"

#include <QMenu>
#include <QMenuBar>

namespace vardenix {
namespace {

using tests::FrmVXMainTest;

// The entries of a menu as they look, "-" for a line between them.
std::vector<std::string> Texts(const QMenu& menu) {
    std::vector<std::string> texts;
    for (const QAction* entry : menu.actions())
        texts.push_back(entry->isSeparator()
                            ? "-"
                            : entry->text().remove('&').replace('\t', '|').toStdString());
    return texts;
}

// What a menu does when it is pulled down, without a popup on the screen.
void PullDown(QMenu& menu) { emit menu.aboutToShow(); }

TEST_F(FrmVXMainTest, TheMenusStandInTheirOrder) {
    Show();
    std::vector<std::string> titles;
    for (const QAction* menu : window_.menuBar()->actions())
        titles.push_back(menu->text().toStdString());
    EXPECT_EQ(titles,
              (std::vector<std::string>{"Fi&le", "&Edit", "&View", "T&ools", "Hel&p"}));
    EXPECT_EQ(Texts(Find<QMenu>("mnuFile")),
              (std::vector<std::string>{
                  "Save|Ctrl+S", "Save as...", "-", "Load heights...|Ctrl+L", "-",
                  "Open another theater...", "Recent", "-", "Exit"}));
    EXPECT_EQ(Texts(Find<QMenu>("mnuEdit")),
              (std::vector<std::string>{"Undo|Ctrl+Z", "Redo|Ctrl+Y", "-", "Brush|B",
                                        "Rectangle|R", "Fill|F", "Pick a tile|I"}));
    EXPECT_EQ(Texts(Find<QMenu>("mnuView")),
              (std::vector<std::string>{
                  "Areas and paths|Ctrl+1", "Grid|Ctrl+2", "Export area|Ctrl+3",
                  "Heights|Ctrl+4", "Segments|Ctrl+5", "Night colors|Ctrl+6",
                  "MAP color|Ctrl+7", "-", "Main window|F5", "Theater preview|F6",
                  "Search results|F7", "Tile palette|F8", "Features|F9", "-",
                  "One window", "Bring all to front"}));
}

TEST_F(FrmVXMainTest, AnEntryPressesTheControlThatItStandsFor) {
    Show();
    window_.L2NeedSave();
    EXPECT_EQ(StoryOfMenu("mnuSave"), "save 0 ");
    EXPECT_EQ(StoryOfMenu("mnuSaveAs"), "save 1 ");
    const auto verb = [](PanelVerb of) {
        return "do " + std::to_string(static_cast<int>(of)) + " ";
    };
    EXPECT_EQ(StoryOfMenu("mnuLoadHeights"), verb(PanelVerb::LoadL0Elv));
    EXPECT_EQ(StoryOfMenu("mnuUndo"), verb(PanelVerb::Undo));
    EXPECT_EQ(StoryOfMenu("mnuRedo"), verb(PanelVerb::Redo));
    EXPECT_EQ(StoryOfMenu("mnuOpenTheater"), verb(PanelVerb::OpenTheater));
    EXPECT_EQ(StoryOfMenu("mnuOneWindow"), verb(PanelVerb::OneWindow));
    EXPECT_EQ(StoryOfMenu("mnuBringAll"), verb(PanelVerb::BringAllToFront));
    EXPECT_EQ(StoryOfMenu("mnuBrush"), verb(PanelVerb::BrushTool));
    EXPECT_EQ(StoryOfMenu("mnuRectangle"), verb(PanelVerb::RectangleTool));
    EXPECT_EQ(StoryOfMenu("mnuFill"), verb(PanelVerb::FillTool));
    EXPECT_EQ(StoryOfMenu("mnuPick"), verb(PanelVerb::PickTool));
    const std::map<const char*, bool MapView::*> layers{
        {"mnuShowAreas", &MapView::ShowAreasPaths},
        {"mnuShowGrid", &MapView::ShowGrid},
        {"mnuShowExport", &MapView::ShowExport},
        {"mnuShowHeights", &MapView::ShowHeights},
        {"mnuShowSegments", &MapView::ShowSegments},
        {"mnuApplyNight", &MapView::ApplyNight},
        {"mnuApplyMAP", &MapView::ApplyMAP}};
    for (const auto& [entry, layer] : layers) {
        EXPECT_EQ(StoryOfMenu(entry), "paint ") << entry;
        EXPECT_TRUE(view_.*layer) << entry;
        StoryOfMenu(entry);
        EXPECT_FALSE(view_.*layer) << entry;
    }
}

TEST_F(FrmVXMainTest, EveryLayerAndWindowHasAKey) {
    Show();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    const auto press = [this](int key, Qt::KeyboardModifiers with) {
        workspace_.Story.clear();
        QTest::keyClick(&window_, static_cast<Qt::Key>(key), with);
        return workspace_.Story;
    };
    for (int number = Qt::Key_1; number <= Qt::Key_7; ++number)
        EXPECT_EQ(press(number, Qt::ControlModifier), "paint ") << number;
    EXPECT_TRUE(view_.ShowAreasPaths && view_.ShowGrid && view_.ShowExport &&
                view_.ShowHeights && view_.ShowSegments && view_.ApplyNight &&
                view_.ApplyMAP);
    const bool shown = Find<QAbstractButton>("chkShowTile").isChecked();
    EXPECT_EQ(press(Qt::Key_F8, Qt::NoModifier),
              (shown ? "hide " : "show ") +
                  std::to_string(static_cast<int>(PanelVerb::ShowTile)) + " ");
}

TEST_F(FrmVXMainTest, EntriesLookLikeTheirControlsWhenTheMenuComes) {
    Show(false);
    auto& edit = Find<QMenu>("mnuEdit");
    PullDown(edit);
    EXPECT_FALSE(Find<QAction>("mnuUndo").isEnabled());
    commands_.AllPossible = true;
    window_.RefreshCommands();
    PullDown(edit);
    EXPECT_TRUE(Find<QAction>("mnuUndo").isEnabled());
    Click("chkShowGrid");
    PullDown(Find<QMenu>("mnuView"));
    EXPECT_TRUE(Find<QAction>("mnuShowGrid").isChecked());
    EXPECT_FALSE(Find<QAction>("mnuShowHeights").isChecked());
}

// Shift may be let go where the panel hears nothing of it.
TEST_F(FrmVXMainTest, AsAPartOfAnotherWindowItForgetsShiftWithTheKeyboard) {
    Show();
    QWidget outer;
    QLineEdit elsewhere(&outer);
    window_.setParent(&outer);
    window_.show();
    outer.show();
    outer.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&outer));
    auto& inside = Find<QLineEdit>("LabelX");
    inside.setFocus();
    QTest::keyPress(&inside, Qt::Key_Shift);
    EXPECT_EQ(Find<QAbstractButton>("CmdSaveTheater").text(), "Save L2 as...");
    elsewhere.setFocus();
    EXPECT_EQ(Find<QAbstractButton>("CmdSaveTheater").text(), "Save L2");
    window_.setParent(nullptr);
}

TEST_F(FrmVXMainTest, WhatIsChosenIsTickedWhenTheMenuComes) {
    Show();
    commands_.OneChosen = PanelVerb::FillTool;
    PullDown(Find<QMenu>("mnuEdit"));
    EXPECT_TRUE(Find<QAction>("mnuFill").isChecked());
    EXPECT_FALSE(Find<QAction>("mnuBrush").isChecked());
    EXPECT_FALSE(Find<QAction>("mnuOneWindow").isChecked());
    commands_.OneChosen = PanelVerb::OneWindow;
    PullDown(Find<QMenu>("mnuView"));
    EXPECT_TRUE(Find<QAction>("mnuOneWindow").isChecked());
    EXPECT_FALSE(Find<QAction>("mnuFill").isChecked());
}

TEST_F(FrmVXMainTest, RecentTheatersAreListedWhenTheMenuComes) {
    Show();
    PullDown(Find<QMenu>("mnuFile"));
    EXPECT_FALSE(Find<QMenu>("mnuRecent").isEnabled());
    commands_.Recent = {"/games/Sorre & lund", "/b"};
    PullDown(Find<QMenu>("mnuFile"));
    auto& recent = Find<QMenu>("mnuRecent");
    EXPECT_TRUE(recent.isEnabled());
    PullDown(recent);
    PullDown(recent);
    ASSERT_EQ(recent.actions().size(), 2);
    EXPECT_EQ(recent.actions().first()->text(), "&1  /games/Sorre && lund");
    workspace_.Story.clear();
    recent.actions().first()->trigger();
    EXPECT_EQ(workspace_.Story, "/games/Sorre & lund ");
}

TEST_F(FrmVXMainTest, KeysOfALockedPanelDoNothing) {
    Show();
    window_.LockPanel(true);
    for (const char* entry : {"mnuOpenTheater", "mnuSaveAs", "mnuUndo", "mnusearchTiles"})
        EXPECT_EQ(StoryOfMenu(entry), "") << entry;
    window_.LockPanel(false);
}

TEST_F(FrmVXMainTest, TipsThatAreNotKnownByHeartNameTheKey) {
    Show();
    EXPECT_EQ(Find<QWidget>("chkShowGrid").toolTip(), "Ctrl+2");
    EXPECT_EQ(Find<QWidget>("cmdZoomOut").toolTip(),
              "One grid cell more a side (Ctrl+-)");
}

} // namespace
} // namespace vardenix
