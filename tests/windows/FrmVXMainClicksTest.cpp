// Every control of the panel used once as a user would, by the mouse or the keyboard: a
// control that lies under another one, or that nothing is joined to, shows here.
#include "windows/FrmVXMainTest.h"
#include "workspace/windows/Actions.h"

#include <QComboBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>

#include <map>
#include <string>

namespace vardenix {
namespace {

using tests::FrmVXMainTest;

std::string Asked(const char* what, PanelVerb verb) {
    return std::string(what) + " " + std::to_string(static_cast<int>(verb)) + " ";
}

class FrmVXMainClicks : public FrmVXMainTest {
protected:
    // Everything can be done, and every step has room.
    void ShowInTheMiddle() {
        view_.ZoomPosts = 10;
        view_.GridCells = 5;
        view_.MapLeftX = 3;
        view_.MapBottomY = 4;
        view_.ApplyMAP = true;
        view_.ShowHeights = true;
        state_.Configuration.Zoom = 10;
        state_.Configuration.OptionShowHeights = true;
        Show();
        window_.SetL0FileName("/a b/theater.L0");
        window_.L2NeedSave();
    }

    // In the middle of the control as it lies on the screen, or at the text of a box.
    std::string Clicked(const std::string& name) {
        auto& control = Find<QWidget>(name.c_str());
        auto& scroll = Find<QScrollArea>("scroll");
        if (scroll.widget()->isAncestorOf(&control))
            scroll.ensureWidgetVisible(&control);
        const QPoint inside(std::min(control.width() / 2, 20), control.height() / 2);
        workspace_.Story.clear();
        QTest::mouseClick(window_.windowHandle(), Qt::LeftButton, {},
                          control.mapTo(&window_, inside));
        return workspace_.Story;
    }

    // What each button asks for.
    const std::map<std::string, std::string> buttons_{
        {"CmdSaveTheater", "save 0 "},
        {"CmdImport", Asked("do", PanelVerb::Import)},
        {"CmdExport", Asked("do", PanelVerb::Export)},
        {"cmdUndo", Asked("do", PanelVerb::Undo)},
        {"cmdRedo", Asked("do", PanelVerb::Redo)},
        {"Command3", Asked("do", PanelVerb::CreateRestorePoint)},
        {"Command4", Asked("do", PanelVerb::Restore)},
        {"chkShowAreas", "paint "},
        {"cmdAreasOptions", "areas "},
        {"chkShowGrid", "paint "},
        {"CmdGridCol", "paint "},
        {"chkShowExport", "paint "},
        {"CmdExpAreaCol", "paint "},
        {"chkShowHeights", "paint "},
        {"CmdHeightCol", "heights "},
        {"cmdFont", "paint "},
        {"chkShowSegments", "paint "},
        {"CmdSegCol", "paint "},
        {"chkApplyNight", "paint "},
        {"chkApplyMAP", "paint "},
        {"cmdTransMinus", "paint "},
        {"cmdTransPlus", "paint "},
        {"cmdBMinus", "paint "},
        {"cmdBPlus", "paint "},
        {"cmdBrightReset", "paint "},
        {"chkL0ELV", "l0 1 "},
        {"cmdLoadL0Elv", Asked("do", PanelVerb::LoadL0Elv)},
        {"chkShowMain", Asked("show", PanelVerb::ShowMain)},
        {"chkShowResults", Asked("show", PanelVerb::ShowResults)},
        {"chkShowTheater", Asked("show", PanelVerb::ShowTheater)},
        {"chkShowTile", Asked("show", PanelVerb::ShowTile)},
        {"chkShowFeatures", Asked("show", PanelVerb::ShowFeatures)},
        {"cmdOpenBIN", Asked("do", PanelVerb::OpenBIN)},
        {"cmdOpenMap", Asked("do", PanelVerb::OpenMap)},
        {"cmdminus", "layout paint "},
        {"cmdplus", "layout paint "},
        {"cmdZoomin", "layout paint "},
        {"cmdZoomOut", "layout paint "},
        {"cmdGoXY", "scroll 3,4 "}};
};

TEST_F(FrmVXMainClicks, EveryButtonAnswers) {
    for (const auto& [name, answer] : buttons_) {
        SCOPED_TRACE(name);
        ShowInTheMiddle();
        // As they stand before the click, whatever an earlier one did.
        Slider("sldrBrightness").setValue(10);
        Slider("sldrTrans").setValue(100);
        if (auto& button = Find<QAbstractButton>(name.c_str()); button.isCheckable()) {
            const QSignalBlocker quiet(&button);
            button.setChecked(false);
        }
        if (name == "CmdGridCol" || name == "CmdExpAreaCol" || name == "CmdSegCol")
            platform_.Dialogs.ExpectColor(name == "CmdGridCol"      ? 0
                                          : name == "CmdExpAreaCol" ? 0x7AEF65
                                                                    : 0x60F0E9,
                                          0x123456);
        else if (name == "cmdFont")
            platform_.Dialogs.ExpectFont({.Name = "Courier"});
        EXPECT_EQ(Clicked(name), answer);
        EXPECT_TRUE(platform_.Dialogs.AllAnswered());
    }
}

TEST_F(FrmVXMainClicks, NoControlIsLeftOut) {
    Show();
    std::set<std::string> known;
    for (const auto& [name, answer] : buttons_)
        known.insert(name);
    for (const QAbstractButton* button : window_.findChildren<QAbstractButton*>()) {
        const std::string name = button->objectName().toStdString();
        EXPECT_TRUE(known.contains(name) || name.starts_with("qt_")) << name;
    }
    std::set<std::string> others;
    for (const QWidget* control : window_.findChildren<QWidget*>())
        if ((control->inherits("QAbstractSlider") && !control->inherits("QScrollBar")) ||
            control->inherits("QComboBox") || control->inherits("QLineEdit"))
            others.insert(control->objectName().toStdString());
    // Those of the tests below.
    EXPECT_EQ(others,
              (std::set<std::string>{"ComTileWidth", "LabelX", "LabelY", "ZoomScroll",
                                     "sldrBrightness", "sldrTrans"}));
}

TEST_F(FrmVXMainClicks, EachSliderTakesKeysAndAPressOnItsGroove) {
    ShowInTheMiddle();
    struct Row {
        const char* Name;
        int Page;
        const char* Answer;
    };
    for (const Row& row :
         {Row{"sldrBrightness", 20, "paint "}, Row{"sldrTrans", 32, "paint "},
          Row{"ZoomScroll", 5, "layout paint "}}) {
        SCOPED_TRACE(row.Name);
        QAbstractSlider& slider = Slider(row.Name);
        const int before = slider.value();
        workspace_.Story.clear();
        QTest::keyClick(&slider, Qt::Key_PageUp);
        EXPECT_EQ(std::abs(slider.value() - before), row.Page);
        EXPECT_EQ(workspace_.Story, row.Answer);
        Find<QScrollArea>("scroll").ensureWidgetVisible(&slider);
        const int old = slider.value();
        QTest::mouseClick(
            window_.windowHandle(), Qt::LeftButton, {},
            slider.mapTo(&window_, QPoint(slider.width() - 2, slider.height() / 2)));
        EXPECT_NE(slider.value(), old);
    }
}

TEST_F(FrmVXMainClicks, TheListOfTileSizesTakesKeys) {
    ShowInTheMiddle();
    QTest::keyClick(&Find<QComboBox>("ComTileWidth"), Qt::Key_Down);
    EXPECT_EQ(view_.TilePixels, 256);
    EXPECT_EQ(workspace_.Story, "layout paint ");
}

TEST_F(FrmVXMainClicks, ThePositionIsTypedAndGoneTo) {
    ShowInTheMiddle();
    for (const char* name : {"LabelX", "LabelY"}) {
        Clicked(name);
        QCoreApplication::processEvents(); // the box selects all by itself
        QTest::keyClicks(&Find<QLineEdit>(name),
                         name == std::string("LabelX") ? "70" : "80");
    }
    workspace_.Story.clear();
    QTest::keyClick(&Find<QLineEdit>("LabelY"), Qt::Key_Return);
    EXPECT_EQ(workspace_.Story, "scroll 70,80 ");
}

TEST_F(FrmVXMainClicks, EveryMenuEntryAnswers) {
    Show();
    const std::map<std::string, std::string> entries{
        {"mnyExit", "leave "},
        {"mnumkMEA", Asked("do", PanelVerb::MakeMEA)},
        {"mnumktc", Asked("do", PanelVerb::MakeTC)},
        {"mnumktm", Asked("do", PanelVerb::MakeTM)},
        {"mnusearchTiles", Asked("do", PanelVerb::SearchTiles)},
        {"mnuRebuildTheater", Asked("do", PanelVerb::RebuildTheater)},
        {"mnuSaveScreeshot", "/a b/map.bmp screenshot 1 "},
        {"mnuOnlineHelp", ""}, // another program answers
        {"mnuAbout", "about "}};
    platform_.Dialogs.ExpectSave("", "/a b/map.bmp", 1);
    for (const auto& [name, answer] : entries)
        EXPECT_EQ(StoryOfMenu(name.c_str()), answer) << name;
    EXPECT_EQ(platform_.Processes.Story.substr(0, 5), "open ");
    std::set<std::string> silent{"", "mnumkTHR", "mnuThStats"};
    // Looked at with the menus.
    silent.insert({"mnuSaveAs", "mnuOpenTheater", "mnuOneWindow", "mnuBringAll"});
    for (const Action& action : PanelActions())
        if (action.What == Action::Kind::TwinEntry ||
            action.What == Action::Kind::ToolEntry)
            silent.insert(action.Name);
    for (const QAction* entry : window_.findChildren<QAction*>()) {
        const std::string name = entry->objectName().toStdString();
        EXPECT_TRUE(entries.contains(name) || silent.contains(name)) << name;
    }
}

} // namespace
} // namespace vardenix
