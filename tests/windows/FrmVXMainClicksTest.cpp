// Every control of the panel used once as a user would, by the mouse or the keyboard: a
// control that lies under another one, or that nothing is joined to, shows here.
#include "windows/FrmVXMainTest.h"

#include <QComboBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>

#include <map>
#include <string>

namespace vardenix {
namespace {

using tests::FrmVXMainTest;

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

    // Those that are no commands, and what each asks for.
    const std::map<std::string, std::string> buttons_{{"cmdTransMinus", "paint "},
                                                      {"cmdTransPlus", "paint "},
                                                      {"cmdBMinus", "paint "},
                                                      {"cmdBPlus", "paint "},
                                                      {"cmdBrightReset", "paint "}};
};

TEST_F(FrmVXMainClicks, EveryButtonAnswers) {
    for (const auto& [name, answer] : buttons_) {
        SCOPED_TRACE(name);
        ShowInTheMiddle();
        // As they stand before the click, whatever an earlier one did.
        Slider("sldrBrightness").setValue(10);
        Slider("sldrTrans").setValue(100);
        EXPECT_EQ(Clicked(name), answer);
    }
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

} // namespace
} // namespace vardenix
