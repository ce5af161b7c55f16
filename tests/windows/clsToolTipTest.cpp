#include "platform/windows/clsToolTip.h"

#include "windows/WindowTest.h"

#include <QHelpEvent>
#include <QPushButton>
#include <QTest>

namespace vardenix {
namespace {

class ToolTipTest : public testing::Test {
protected:
    ToolTipTest() {
        window_.resize(300, 200);
        button_.setGeometry(10, 10, 80, 30);
        window_.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window_));
        tip_.Create(window_);
    }

    // As the platform does it after a while at rest.
    void Rest() {
        QHelpEvent event(QEvent::ToolTip, {5, 5}, button_.mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(&button_, &event);
    }
    bool Shown() { return tip_.ToolTipHandle()->isVisible(); }
    QString Text() { return static_cast<QLabel*>(tip_.ToolTipHandle())->text(); }

    QWidget window_;
    QPushButton button_{"Save", &window_};
    clsToolTip tip_;
};

TEST(ToolTip, IsAWindowOnceItIsCreated) {
    clsToolTip tip;
    EXPECT_FALSE(tip.fIsWindow());
    QWidget window;
    tip.Create(window);
    EXPECT_TRUE(tip.fIsWindow());
    EXPECT_EQ(tip.hwnd(), &window);
    EXPECT_NE(tip.ToolTipHandle(), nullptr);
}

TEST_F(ToolTipTest, ShowsTheTextOfItsToolsOnly) {
    Rest();
    EXPECT_FALSE(Shown());
    tip_.AddTool(button_);
    EXPECT_TRUE(tip_.HasToolTip(button_));
    EXPECT_EQ(tip_.ToolCount(), 1);
    Rest();
    EXPECT_FALSE(Shown()); // nothing to say yet
    tip_.SetToolText(button_, "a < b\r\nsecond");
    EXPECT_EQ(clsToolTip::ToolText(button_), "a < b\r\nsecond");
    Rest();
    EXPECT_TRUE(Shown());
    EXPECT_EQ(Text(), "a &lt; b<br>second");
    tip_.SetToolText(button_, "a\nb");
    EXPECT_EQ(Text(), "a<br>b");
    tip_.RemoveTool(button_);
    EXPECT_FALSE(Shown());
    EXPECT_EQ(tip_.ToolCount(), 0);
}

TEST_F(ToolTipTest, AToolAddedTwiceIsOneTool) {
    tip_.AddTool(button_);
    tip_.AddTool(button_);
    EXPECT_EQ(tip_.ToolCount(), 1);
}

TEST_F(ToolTipTest, ADisabledControlHasItsTipToo) {
    tip_.AddTool(button_);
    tip_.SetToolText(button_, "why not");
    button_.setEnabled(false);
    Rest();
    EXPECT_TRUE(Shown());
}

TEST_F(ToolTipTest, TheHeaderStandsAboveTheText) {
    tip_.AddTool(button_);
    tip_.SetToolText(button_, "text");
    tip_.SetToolTipHeader("Head");
    Rest();
    EXPECT_EQ(Text(), "text");
    tip_.SetToolTipHeaderShow(true);
    EXPECT_EQ(Text(), "<b>Head</b><br>text");
    EXPECT_EQ(tip_.ToolTipHeader(), "Head");
    EXPECT_TRUE(tip_.ToolTipHeaderShow());
}

TEST_F(ToolTipTest, WearsItsColors) {
    tip_.SetBackColor(0x0000FF);
    tip_.SetForeColor(0xFF0000);
    EXPECT_EQ(tip_.BackColor(), 0x0000FFu);
    EXPECT_EQ(tip_.ForeColor(), 0xFF0000u);
    const QPalette colors = tip_.ToolTipHandle()->palette();
    EXPECT_EQ(colors.color(QPalette::Window), QColor(Qt::red));
    EXPECT_EQ(colors.color(QPalette::WindowText), QColor(Qt::blue));
}

TEST_F(ToolTipTest, LongLinesAreBrokenAtTheGreatestWidth) {
    tip_.AddTool(button_);
    tip_.SetMaxTipWidth(240);
    tip_.SetToolText(button_, "short");
    Rest();
    EXPECT_LT(tip_.ToolTipHandle()->width(), 240);
    const int oneLine = tip_.ToolTipHandle()->height();
    tip_.SetToolText(button_, QString("word ").repeated(40));
    EXPECT_EQ(tip_.ToolTipHandle()->width(), 240);
    EXPECT_GT(tip_.ToolTipHandle()->height(), 2 * oneLine);
}

TEST_F(ToolTipTest, GoesByItselfAfterItsTime) {
    tip_.AddTool(button_);
    tip_.SetToolText(button_, "text");
    tip_.SetDelayTime(1);
    EXPECT_EQ(tip_.DelayTime(), 1);
    Rest();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Shown(); }));
}

TEST_F(ToolTipTest, GoesWithAClickAndWithItsControl) {
    tip_.AddTool(button_);
    tip_.SetToolText(button_, "text");
    Rest();
    QTest::mouseClick(&button_, Qt::LeftButton);
    EXPECT_FALSE(Shown());
    Rest();
    EXPECT_TRUE(Shown());
    button_.hide();
    EXPECT_FALSE(Shown());
}

TEST_F(ToolTipTest, ForgetsAControlThatIsGone) {
    auto gone = std::make_unique<QPushButton>("Gone", &window_);
    tip_.AddTool(*gone);
    gone.reset();
    EXPECT_EQ(tip_.ToolCount(), 0);
    EXPECT_FALSE(Shown());
}

TEST_F(ToolTipTest, TheMarginIsRoundTheText) {
    tip_.AddTool(button_);
    tip_.SetToolText(button_, "text");
    tip_.SetMargin(0);
    Rest();
    const QSize tight = tip_.ToolTipHandle()->size();
    tip_.SetMargin(10);
    EXPECT_EQ(tip_.Margin(), 10);
    EXPECT_EQ(tip_.ToolTipHandle()->height() - tight.height(), 20);
    EXPECT_GT(tip_.ToolTipHandle()->width(), tight.width());
}

} // namespace
} // namespace vardenix
