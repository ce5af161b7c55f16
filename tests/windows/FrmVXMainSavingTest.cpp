#include "windows/FrmVXMainTest.h"

#include <QProgressBar>
#include <QSignalSpy>

#include <set>

namespace vardenix {
namespace {

using tests::FrmVXMainTest;

TEST_F(FrmVXMainTest, TipsAreTold) {
    Show();
    const auto tip = [this](const char* name) {
        return Find<QWidget>(name).toolTip().toStdString();
    };
    EXPECT_EQ(tip("chkApplyMAP"), "Not accurate, just for reference!");
    EXPECT_EQ(tip("chkL0ELV"), "No L0/ELV file loaded.");
    EXPECT_EQ(tip("cmdLoadL0Elv"), "No L0/ELV file loaded.");
    window_.SetL0FileName("/a b/theater.L0");
    EXPECT_EQ(tip("chkL0ELV"), "/a b/theater.L0");
    EXPECT_EQ(tip("cmdLoadL0Elv"), "/a b/theater.L0");
    EXPECT_TRUE(window_.HasL0File());
}

TEST_F(FrmVXMainTest, UnsavedChangesStarBothTitlesOnceAndEnableTheSave) {
    Show();
    QSignalSpy map(&window_, &FrmVXMain::MapCaptionChanged);
    window_.L2NeedSave();
    window_.L2NeedSave();
    EXPECT_EQ(Title(), "*Vardenix v3.0.1");
    EXPECT_EQ(map.last().first().toString().toStdString(), "*Norrland");
    EXPECT_TRUE(window_.L2NeedSaveFlag());
    EXPECT_TRUE(window_.CanSave());
    window_.L2Saved();
    EXPECT_EQ(Title(), "Vardenix v3.0.1");
    EXPECT_EQ(map.last().first().toString().toStdString(), "Norrland");
    EXPECT_FALSE(window_.CanSave());
    window_.L0NeedSave();
    EXPECT_EQ(Title(), "*Vardenix v3.0.1");
    EXPECT_FALSE(window_.CanSave()); // level 2 is edited
    EXPECT_TRUE(window_.L0NeedSaveFlag());
}

TEST_F(FrmVXMainTest, TheModeOfTheFinestElevationsChangesTitleGroundAndButtons) {
    Show();
    window_.L2NeedSave();
    view_.L0Mode = true;
    window_.ChangeControlsForL0Edit(true);
    EXPECT_EQ(Title(), "*Vardenix v3.0.1 - L0/ELV MODE"); // level 2 is unsaved
    EXPECT_EQ(Text("CmdSaveTheater"), "Save L0/ELV");
    EXPECT_FALSE(window_.CanSave());
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
    EXPECT_EQ(ground(), QColor(0xEA, 0xEA, 0xE8));
}

TEST_F(FrmVXMainTest, ShiftChangesTheCaptionsWhileItIsHeld) {
    Show();
    QWidget* focus = &Find<QLineEdit>("LabelX"); // the key comes up from any control
    QTest::keyPress(focus, Qt::Key_Shift);
    EXPECT_EQ(Text("CmdSaveTheater"), "Save L2 as...");
    EXPECT_TRUE(window_.CanSave());
    EXPECT_EQ(Text("CmdExport"), "Export TDFs");
    EXPECT_TRUE(window_.ShiftDown());
    QTest::keyRelease(focus, Qt::Key_Shift);
    EXPECT_FALSE(window_.ShiftDown());
    EXPECT_EQ(Text("CmdSaveTheater"), "Save L2");
    EXPECT_FALSE(window_.CanSave());
    EXPECT_EQ(Text("CmdExport"), "Export");
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
    Show();
    const std::set<std::string> before = SwitchedOff(window_);
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

TEST_F(FrmVXMainTest, TheCloseBoxAsksWhetherTheUserWillLeave) {
    Show();
    EXPECT_FALSE(window_.close());
    EXPECT_EQ(workspace_.Story, "leave ");
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

} // namespace
} // namespace vardenix
