#include "windows/FrmVXMainTest.h"
#include "workspace/windows/Actions.h"

#include <QProgressBar>
#include <QSignalSpy>

namespace vardenix {
namespace {

using tests::FrmVXMainTest;

const char* const LaterCommands[] = {
    "cmdOpenBIN",   "cmdOpenMap",     "CmdImport",   "CmdExport",      "CmdSaveTheater",
    "cmdLoadL0Elv", "chkL0ELV",       "cmdUndo",     "cmdRedo",        "Command3",
    "Command4",     "chkShowResults", "chkShowTile", "chkShowFeatures"};

TEST_F(FrmVXMainTest, WhatCannotBeDoneIsDisabled) {
    commands_.Possible = {PanelVerb::ShowMain};
    Show(false);
    for (const char* name : LaterCommands)
        EXPECT_FALSE(Enabled(name)) << name;
    EXPECT_TRUE(Enabled("chkShowMain"));
    for (const char* name : {"mnumkMEA", "mnumktc", "mnumktm", "mnusearchTiles",
                             "mnuRebuildTheater", "mnuSaveScreeshot"})
        EXPECT_FALSE(Find<QAction>(name).isEnabled()) << name;
    commands_.AllPossible = true;
    window_.RefreshCommands();
    EXPECT_TRUE(Enabled("cmdOpenBIN"));
    EXPECT_TRUE(Find<QAction>("mnumkMEA").isEnabled());
    // Nothing to save, and no file to edit.
    EXPECT_FALSE(Enabled("CmdSaveTheater"));
    EXPECT_FALSE(Enabled("chkL0ELV"));
}

TEST_F(FrmVXMainTest, EntriesWithoutAnActionAreNeverEnabled) {
    Show();
    EXPECT_FALSE(Find<QAction>("mnumkTHR").isEnabled());
    EXPECT_FALSE(Find<QAction>("mnuThStats").isEnabled());
}

TEST_F(FrmVXMainTest, EachCommandAsksForItsVerb) {
    Show();
    const std::map<const char*, PanelVerb> buttons{
        {"cmdOpenBIN", PanelVerb::OpenBIN},
        {"cmdOpenMap", PanelVerb::OpenMap},
        {"CmdImport", PanelVerb::Import},
        {"CmdExport", PanelVerb::Export},
        {"cmdLoadL0Elv", PanelVerb::LoadL0Elv},
        {"cmdUndo", PanelVerb::Undo},
        {"cmdRedo", PanelVerb::Redo},
        {"Command3", PanelVerb::CreateRestorePoint},
        {"Command4", PanelVerb::Restore}};
    for (const auto& [name, verb] : buttons)
        EXPECT_EQ(StoryOf(name), "do " + std::to_string(static_cast<int>(verb)) + " ");
    const std::map<const char*, PanelVerb> entries{
        {"mnumkMEA", PanelVerb::MakeMEA},
        {"mnumktc", PanelVerb::MakeTC},
        {"mnumktm", PanelVerb::MakeTM},
        {"mnusearchTiles", PanelVerb::SearchTiles},
        {"mnuRebuildTheater", PanelVerb::RebuildTheater}};
    for (const auto& [name, verb] : entries)
        EXPECT_EQ(StoryOfMenu(name),
                  "do " + std::to_string(static_cast<int>(verb)) + " ");
}

TEST_F(FrmVXMainTest, TipsAreTold) {
    Show();
    const auto tip = [this](const char* name) {
        return Find<QWidget>(name).toolTip().toStdString();
    };
    EXPECT_EQ(tip("cmdUndo"), "Undo (not for importing)");
    EXPECT_EQ(tip("cmdRedo"), "Redo (not for importing)");
    EXPECT_EQ(tip("CmdExport"), "Use SHIFT to export TDFs (Features).");
    EXPECT_EQ(tip("CmdSaveTheater"), "Use shift for save with a different name.");
    EXPECT_EQ(tip("chkApplyMAP"), "Not accurate, just for reference!");
    EXPECT_EQ(tip("chkL0ELV"), "No L0/ELV file loaded.");
    EXPECT_EQ(tip("cmdLoadL0Elv"), "No L0/ELV file loaded.");
    window_.SetL0FileName("/a b/theater.L0");
    EXPECT_EQ(tip("chkL0ELV"), "/a b/theater.L0");
    EXPECT_EQ(tip("cmdLoadL0Elv"), "/a b/theater.L0");
    EXPECT_EQ(StoryOf("chkL0ELV"), "l0 1 ");
}

TEST_F(FrmVXMainTest, UnsavedChangesStarBothTitlesOnceAndEnableTheSave) {
    Show();
    QSignalSpy map(&window_, &FrmVXMain::MapCaptionChanged);
    window_.L2NeedSave();
    window_.L2NeedSave();
    EXPECT_EQ(Title(), "*Vardenix v3.0.1");
    EXPECT_EQ(map.last().first().toString().toStdString(), "*Norrland");
    EXPECT_TRUE(window_.L2NeedSaveFlag());
    EXPECT_TRUE(Enabled("CmdSaveTheater"));
    EXPECT_EQ(StoryOf("CmdSaveTheater"), "save 0 ");
    window_.L2Saved();
    EXPECT_EQ(Title(), "Vardenix v3.0.1");
    EXPECT_EQ(map.last().first().toString().toStdString(), "Norrland");
    EXPECT_FALSE(Enabled("CmdSaveTheater"));
    window_.L0NeedSave();
    EXPECT_EQ(Title(), "*Vardenix v3.0.1");
    EXPECT_FALSE(Enabled("CmdSaveTheater")); // level 2 is edited
    EXPECT_TRUE(window_.L0NeedSaveFlag());
}

TEST_F(FrmVXMainTest, TheModeOfTheFinestElevationsChangesTitleGroundAndButtons) {
    Show();
    window_.L2NeedSave();
    view_.L0Mode = true;
    window_.ChangeControlsForL0Edit(true);
    EXPECT_EQ(Title(), "*Vardenix v3.0.1 - L0/ELV MODE"); // level 2 is unsaved
    EXPECT_EQ(Text("CmdSaveTheater"), "Save L0/ELV");
    EXPECT_FALSE(Enabled("CmdSaveTheater"));
    EXPECT_FALSE(Enabled("Command3") || Enabled("Command4"));
    const auto ground = [this] { return window_.grab().toImage().pixelColor(3, 300); };
    EXPECT_EQ(ground(), QColor(0xFF, 0xFC, 0xD2)); // 13827327
    for (const char* name : {"LabelX", "LabelY"})
        EXPECT_EQ(Find<QLineEdit>(name).palette().color(QPalette::Base), ground());
    // Every control whose name begins so, whatever its kind.
    for (const QWidget* control : window_.findChildren<QWidget*>()) {
        const QString kind = control->objectName().left(3).toUpper();
        if (kind == "FRA" || kind == "CHK" || kind == "LAB") {
            EXPECT_EQ(control->palette().color(QPalette::Window), ground())
                << control->objectName().toStdString();
        }
    }
    view_.L0Mode = false;
    window_.ChangeControlsForL0Edit(false);
    EXPECT_EQ(Title(), "*Vardenix v3.0.1");
    EXPECT_TRUE(Enabled("Command3") && Enabled("Command4"));
    EXPECT_EQ(ground(), QColor(0xEA, 0xEA, 0xE8));
}

TEST_F(FrmVXMainTest, ShiftChangesTheCaptionsWhileItIsHeld) {
    Show();
    QWidget* focus = &Find<QLineEdit>("LabelX"); // the key comes up from any control
    QTest::keyPress(focus, Qt::Key_Shift);
    EXPECT_EQ(Text("CmdSaveTheater"), "Save L2 as...");
    EXPECT_TRUE(Enabled("CmdSaveTheater"));
    EXPECT_EQ(Text("CmdExport"), "Export TDFs");
    EXPECT_EQ(StoryOf("CmdSaveTheater"), "save 1 ");
    Click("CmdExport");
    QTest::keyRelease(focus, Qt::Key_Shift);
    EXPECT_TRUE(window_.ExportWithShift());
    EXPECT_EQ(Text("CmdSaveTheater"), "Save L2");
    EXPECT_FALSE(Enabled("CmdSaveTheater"));
    EXPECT_EQ(Text("CmdExport"), "Export");
    Click("CmdExport");
    EXPECT_FALSE(window_.ExportWithShift());
}

TEST_F(FrmVXMainTest, EscStopsThePaintingWhileTheBarIsSeen) {
    Show();
    QTest::keyClick(&window_, Qt::Key_Escape);
    EXPECT_FALSE(state_.AbortPaint);
    window_.ShowBar();
    QTest::keyClick(&Find<QLineEdit>("LabelX"), Qt::Key_Escape);
    EXPECT_TRUE(state_.AbortPaint);
}

TEST_F(FrmVXMainTest, TheBarFillsInProportionToItsFullWidth) {
    Show();
    auto& bar = Find<QProgressBar>("PB3");
    EXPECT_FALSE(bar.isVisible());
    const int before = Find<QWidget>("scroll").height();
    window_.ShowBar();
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.value(), 0);
    EXPECT_EQ(bar.maximum(), 3495);
    window_.SetPB3(40);
    EXPECT_EQ(bar.value(), 1398);
    QCoreApplication::processEvents();
    EXPECT_EQ(Find<QWidget>("scroll").height(), before);
    window_.HideBar();
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(FrmVXMainTest, HintsComeOneAtATime) {
    Show();
    EXPECT_FALSE(Find<QWidget>("Frame7").isVisible());
    window_.ShowHint(FrmVXMain::Hint::Export);
    EXPECT_TRUE(Find<QWidget>("lblExport").isVisible());
    EXPECT_FALSE(Find<QWidget>("lblImport").isVisible());
    window_.ShowHint(FrmVXMain::Hint::Import);
    EXPECT_FALSE(Find<QWidget>("lblExport").isVisible());
    EXPECT_TRUE(Find<QWidget>("lblImport").isVisible());
    window_.ShowHint(FrmVXMain::Hint::None);
    EXPECT_FALSE(Find<QWidget>("Frame7").isVisible());
}

// Names of the controls that are switched off by themselves, and not with their frame.
std::set<std::string> SwitchedOff(const QWidget& window) {
    std::set<std::string> names;
    for (const QWidget* control : window.findChildren<QWidget*>())
        if (control->testAttribute(Qt::WA_ForceDisabled))
            names.insert(control->objectName().toStdString());
    return names;
}

TEST_F(FrmVXMainTest, TheLockTakesTheClickableItemsAndGivesThemBack) {
    commands_.Possible = {PanelVerb::Undo};
    Show(false);
    const std::set<std::string> before = SwitchedOff(window_);
    EXPECT_TRUE(before.contains("cmdRedo")); // nothing to redo
    window_.DisableClickableItemsVX(false);
    std::set<std::string> expected = before;
    expected.insert({"cmdBMinus",  "cmdBPlus",      "cmdBrightReset", "CmdExpAreaCol",
                     "cmdFont",    "cmdGoXY",       "CmdGridCol",     "CmdHeightCol",
                     "cmdminus",   "cmdLoadL0Elv",  "cmdplus",        "cmdRedo",
                     "CmdSegCol",  "cmdTransMinus", "cmdTransPlus",   "cmdUndo",
                     "cmdZoomin",  "cmdZoomOut",    "sldrBrightness", "sldrTrans",
                     "ZoomScroll", "Frame26"});
    EXPECT_EQ(SwitchedOff(window_), expected);
    window_.DisableClickableItemsVX(true);
    EXPECT_EQ(SwitchedOff(window_), before);
}

TEST_F(FrmVXMainTest, TheScreenshotGoesWhereTheUserSays) {
    Show();
    platform_.Dialogs.ExpectCancel();
    EXPECT_EQ(StoryOfMenu("mnuSaveScreeshot"), "");
    platform_.Dialogs.ExpectSave("", "/a b/map.jpg", 2);
    EXPECT_EQ(StoryOfMenu("mnuSaveScreeshot"), "/a b/map.jpg screenshot 2 ");
    EXPECT_EQ(platform_.Dialogs.LastFilter(), "Bitmap (*.bmp)|*.bmp|JPEG (*.jpg)|*.jpg");
}

TEST_F(FrmVXMainTest, HelpOpensTheStoredAddress) {
    Show();
    state_.Configuration.OnlineHelp = "http://www.vardenix.example/elsewhere";
    Find<QAction>("mnuOnlineHelp").trigger();
    EXPECT_EQ(platform_.Processes.Story, "open http://www.vardenix.example/elsewhere");
    EXPECT_EQ(StoryOfMenu("mnuAbout"), "about ");
}

TEST_F(FrmVXMainTest, TheCloseBoxAndExitAskWhetherTheUserWillLeave) {
    Show();
    EXPECT_EQ(StoryOfMenu("mnyExit"), "leave ");
    EXPECT_TRUE(window_.isVisible());
    workspace_.MayLeave = true;
    EXPECT_TRUE(window_.close());
    EXPECT_FALSE(window_.isVisible());
    window_.show();
    state_.Exiting = true;
    workspace_.MayLeave = false;
    workspace_.Story.clear();
    EXPECT_TRUE(window_.close());
    EXPECT_EQ(workspace_.Story, "");
}

TEST_F(FrmVXMainTest, KeysDoWhatTheirControlsDo) {
    Show();
    window_.L2NeedSave();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    const auto story = [this](Qt::Key key, Qt::KeyboardModifiers with) {
        workspace_.Story.clear();
        QTest::keyClick(&window_, key, with);
        return workspace_.Story;
    };
    EXPECT_EQ(story(Qt::Key_S, Qt::ControlModifier), "save 0 ");
    EXPECT_EQ(story(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier), "save 1 ");
    const std::string undo = std::to_string(static_cast<int>(PanelVerb::Undo));
    const std::string redo = std::to_string(static_cast<int>(PanelVerb::Redo));
    EXPECT_EQ(story(Qt::Key_Z, Qt::ControlModifier), "do " + undo + " ");
    EXPECT_EQ(story(Qt::Key_Y, Qt::ControlModifier), "do " + redo + " ");
    EXPECT_EQ(story(Qt::Key_Plus, Qt::ControlModifier), "layout paint ");
    EXPECT_EQ(view_.GridCells, 4);
    EXPECT_EQ(story(Qt::Key_Minus, Qt::ControlModifier), "layout paint ");
    EXPECT_EQ(view_.GridCells, 5);
    QTest::keyClick(&window_, Qt::Key_F1);
    EXPECT_EQ(platform_.Processes.Story.substr(0, 5), "open ");
}

TEST(Actions, TheListOfKeysNamesEachKeyOnce) {
    QStringList keys;
    for (const Action& action : PanelActions())
        keys += QString(action.Keys).split(' ', Qt::SkipEmptyParts);
    EXPECT_EQ(keys.removeDuplicates(), 0);
    const std::string list = ShortcutList().toStdString();
    for (const char* row : {"| Ctrl+S | Save |\n", "| Ctrl+Shift+S | Save as |\n",
                            "| Ctrl+Y, Ctrl+Shift+Z | Redo |\n", "| F1 | Online Help |\n",
                            "| Left, Right, Up, Down | Move the map by one post |\n"})
        EXPECT_NE(list.find(row), std::string::npos) << row;
}

} // namespace
} // namespace vardenix
