#include "windows/MapWindowTest.h"

#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

namespace vardenix {
namespace {

using tests::Find;

class FrmVXMapTest : public tests::MapWindowTest {
protected:
    FrmVXMapTest() : MapWindowTest(2) {}

    QScrollBar& H() { return Find<QScrollBar>(window_, "HScroll1"); }
    QScrollBar& V() { return Find<QScrollBar>(window_, "VScroll1"); }

    // On the picture; `eighths` of a degree, 120 to the notch.
    void Wheel(QPoint eighths, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               const char* over = "PicShow") {
        QWheelEvent event({20, 20}, {20, 20}, {}, eighths, Qt::NoButton, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&Find<QWidget>(window_, over), &event);
    }
};

TEST_F(FrmVXMapTest, TheScrollBarsSpanTheTerrain) {
    Open();
    EXPECT_EQ(H().minimum(), 0);
    EXPECT_EQ(H().maximum(), 63);
    EXPECT_EQ(V().minimum(), -63);
    EXPECT_EQ(V().maximum(), 0);
    EXPECT_EQ(H().pageStep(), (4 / 2 + 1) * 2);
    EXPECT_EQ(V().pageStep(), (4 / 2 + 1) * 2);
}

TEST_F(FrmVXMapTest, TheWindowFitsRoundPictureAndScrollBars) {
    Open();
    const QWidget& ground = Find<QWidget>(window_, "ground");
    EXPECT_EQ(PicShow().size(), QSize(256, 256));
    const int strip = Find<QWidget>(window_, "strip").height();
    const int status = Find<QWidget>(window_, "status").height();
    EXPECT_EQ(ground.geometry(), QRect(0, strip, 256, 256));
    EXPECT_EQ(H().geometry().topLeft(), QPoint(0, strip + 256));
    EXPECT_EQ(H().width(), 256);
    EXPECT_EQ(V().geometry().topLeft(), QPoint(256, strip));
    EXPECT_EQ(V().height(), 256);
    EXPECT_EQ(window_.width(), 256 + V().width() + 4);
    EXPECT_EQ(window_.height(), strip + 256 + H().height() + status + 4);
}

TEST_F(FrmVXMapTest, AnotherPictureSizeFitsTheWindowAgain) {
    Open();
    world_.View.TilePixels = 128;
    window_.LoadImageControls();
    EXPECT_EQ(PicShow().size(), QSize(512, 512));
    EXPECT_EQ(window_.width(), 512 + V().sizeHint().width() + 4);
    EXPECT_EQ(window_.Picture2().Image().size(), QSize(512, 512));
    world_.View.TilePixels = 16;
    window_.LoadImageControls();
    EXPECT_EQ(PicShow().size(), QSize(64, 64));
}

TEST_F(FrmVXMapTest, ZoomingLeavesTheWindowItsSize) {
    Open();
    window_.resize(200, 180);
    world_.View.ZoomPosts = 7;
    window_.LoadImageControls();
    EXPECT_EQ(window_.size(), QSize(200, 180));
    EXPECT_EQ(H().pageStep(), 21);
}

TEST_F(FrmVXMapTest, APictureLargerThanTheScreenShowsItsLowerLeftPart) {
    world_.View.GridCells = 10;
    world_.View.TilePixels = 512;
    Open();
    const QSize room = window_.screen()->availableSize();
    EXPECT_LE(window_.width(), room.width());
    EXPECT_LE(window_.height(), room.height());
    EXPECT_EQ(PicShow().size(), QSize(5120, 5120));
    auto& ground = Find<QScrollArea>(window_, "ground");
    EXPECT_FALSE(ground.verticalScrollBar()->isVisible());
    EXPECT_FALSE(ground.horizontalScrollBar()->isVisible());
    EXPECT_EQ(PicShow().x(), 0);
    EXPECT_EQ(PicShow().y() + 5120, ground.viewport()->height());
    window_.resize(300, 400);
    EXPECT_EQ(PicShow().y() + 5120, ground.viewport()->height());
    EXPECT_TRUE(H().isVisible());
    EXPECT_TRUE(window_.rect().contains(H().geometry()));
    EXPECT_TRUE(window_.rect().contains(V().geometry()));
}

TEST_F(FrmVXMapTest, WithoutATheaterNothingIsLaidOut) {
    state_.Terrain.MapWidth = 0;
    window_.InitForm();
    window_.LoadImageControls();
    EXPECT_TRUE(window_.Picture2().Image().isNull());
    EXPECT_EQ(commands_.Story, "");
}

TEST_F(FrmVXMapTest, TheSavedPositionIsTakenClampedAndNotPainted) {
    state_.Configuration.X = 17;
    state_.Configuration.Y = 1000;
    state_.Starting = true;
    window_.InitForm();
    EXPECT_EQ(H().value(), 17);
    EXPECT_EQ(V().value(), -63);
    EXPECT_EQ(world_.View.MapLeftX, 17);
    EXPECT_EQ(world_.View.MapBottomY, 63);
    EXPECT_EQ(state_.Configuration.Y, 63);
    EXPECT_EQ(commands_.Story.find("refresh"), std::string::npos);
}

TEST_F(FrmVXMapTest, ScrollingMovesTheViewAndPaints) {
    Open();
    H().setValue(5);
    EXPECT_EQ(world_.View.MapLeftX, 5);
    EXPECT_EQ(state_.Configuration.X, 5);
    EXPECT_EQ(commands_.Story, "position refresh");
    V().setValue(-9);
    EXPECT_EQ(world_.View.MapBottomY, 9);
    EXPECT_EQ(state_.Configuration.Y, 9);
}

TEST_F(FrmVXMapTest, ScrollingPaintsNothingWhileStarting) {
    Open();
    state_.Starting = true;
    H().setValue(5);
    EXPECT_EQ(commands_.Story, "position");
    EXPECT_EQ(world_.View.MapLeftX, 5);
}

TEST_F(FrmVXMapTest, APositionIsSetWithoutPainting) {
    Open();
    window_.SetPosition({12, 34});
    EXPECT_EQ(H().value(), 12);
    EXPECT_EQ(V().value(), -34);
    EXPECT_EQ(commands_.Story.find("refresh"), std::string::npos);
    EXPECT_FALSE(world_.View.ScrollBusy);
    window_.SetPosition({900, -1});
    EXPECT_EQ(world_.View.MapLeftX, 63);
    EXPECT_EQ(world_.View.MapBottomY, 0);
}

TEST_F(FrmVXMapTest, ANotchOfTheWheelIsZoomPosts) {
    Open();
    window_.SetPosition({30, 30});
    Wheel({0, 120});
    EXPECT_EQ(V().value(), -32);
    Wheel({0, -240});
    EXPECT_EQ(V().value(), -28);
    EXPECT_EQ(H().value(), 30);
}

TEST_F(FrmVXMapTest, NothingMovesWhileFilesAreReadOrWritten) {
    Open();
    window_.SetPosition({10, 20});
    commands_.Story.clear();
    {
        const ScrollBusyWhile saving(world_.View);
        Wheel({0, -120});
        Wheel({0, 240}, Qt::ShiftModifier);
        Wheel({0, 120}, Qt::NoModifier, "HScroll1");
        for (const int key : {Qt::Key_Right, Qt::Key_Up, Qt::Key_End, Qt::Key_PageDown})
            QTest::keyClick(&window_, static_cast<Qt::Key>(key));
        H().setValue(40); // as a drag does
        V().setValue(-2);
        EXPECT_EQ(H().value(), 10);
        EXPECT_EQ(V().value(), -20);
        EXPECT_EQ(world_.View.MapLeftX, 10);
        EXPECT_EQ(world_.View.MapBottomY, 20);
        EXPECT_EQ(commands_.Story, "");
    }
    Wheel({0, -120});
    EXPECT_EQ(world_.View.MapBottomY, 18);
    EXPECT_NE(commands_.Story, "");
}

TEST_F(FrmVXMapTest, WithShiftTheWheelGoesSideways) {
    Open();
    window_.SetPosition({30, 30});
    Wheel({0, 120}, Qt::ShiftModifier);
    EXPECT_EQ(H().value(), 28);
    Wheel({0, -120}, Qt::ShiftModifier);
    Wheel({-120, 0}); // a wheel of its own for that direction
    EXPECT_EQ(H().value(), 32);
    EXPECT_EQ(V().value(), -30);
}

TEST_F(FrmVXMapTest, TheWheelStopsAtTheLimits) {
    Open();
    window_.SetPosition({1, 1});
    Wheel({0, -120});
    EXPECT_EQ(V().value(), 0);
    Wheel({0, 120 * 50});
    EXPECT_EQ(V().value(), -63);
    Wheel({0, 120}, Qt::ShiftModifier);
    EXPECT_EQ(H().value(), 0);
}

TEST_F(FrmVXMapTest, FineWheelsAddUpToNotches) {
    Open();
    window_.SetPosition({30, 30});
    Wheel({0, 40});
    Wheel({0, 40});
    EXPECT_EQ(V().value(), -30);
    Wheel({0, 40});
    EXPECT_EQ(V().value(), -32);
}

TEST_F(FrmVXMapTest, TheWheelWorksOverTheBarsToo) {
    Open();
    window_.SetPosition({30, 30});
    Wheel({0, 120}, Qt::NoModifier, "HScroll1");
    Wheel({0, 120}, Qt::NoModifier, "VScroll1");
    EXPECT_EQ(V().value(), -34);
    EXPECT_EQ(H().value(), 30);
}

TEST_F(FrmVXMapTest, KeysMoveByAPostOrAPage) {
    Open();
    window_.SetPosition({30, 30});
    QTest::keyClick(&window_, Qt::Key_Right);
    QTest::keyClick(&window_, Qt::Key_Up);
    EXPECT_EQ(world_.View.MapLeftX, 31);
    EXPECT_EQ(world_.View.MapBottomY, 31);
    QTest::keyClick(&window_, Qt::Key_Left);
    QTest::keyClick(&window_, Qt::Key_Down);
    EXPECT_EQ(world_.View.MapLeftX, 30);
    EXPECT_EQ(world_.View.MapBottomY, 30);
    QTest::keyClick(&window_, Qt::Key_PageUp);
    EXPECT_EQ(world_.View.MapBottomY, 36);
    QTest::keyClick(&window_, Qt::Key_PageDown);
    EXPECT_EQ(world_.View.MapBottomY, 30);
    QTest::keyClick(&window_, Qt::Key_End);
    EXPECT_EQ(world_.View.MapLeftX, 36);
    QTest::keyClick(&window_, Qt::Key_Home);
    EXPECT_EQ(world_.View.MapLeftX, 30);
}

// The grid colour on the cells' edges, the background where the terrain ends.
TEST_F(FrmVXMapTest, ARepaintIsSeenPixelForPixel) {
    world_.View.ShowGrid = true;
    world_.View.GridColor = 0x0000FF;
    Open();
    window_.SetPosition({60, 0}); // half of the view lies beyond the edge
    QSignalSpy painted(&window_, &FrmVXMap::ViewPainted);
    window_.RefreshPicArray();
    EXPECT_EQ(painted.count(), 1);
    const QImage seen = PicShow().grab().toImage();
    ASSERT_EQ(seen.size(), QSize(256, 256));
    EXPECT_EQ(seen.pixel(32, 100), qRgb(255, 0, 0)); // edge of the second post
    EXPECT_EQ(seen.pixel(100, 224), qRgb(255, 0, 0));
    EXPECT_EQ(seen.pixel(200, 100), qRgb(0x40, 0x40, 0x40));
    EXPECT_EQ(seen.convertToFormat(QImage::Format_RGB32),
              window_.Picture2().Image().convertToFormat(QImage::Format_RGB32));
}

TEST_F(FrmVXMapTest, TheCloseBoxHidesTheWindow) {
    Open();
    EXPECT_FALSE(window_.close());
    EXPECT_FALSE(window_.isVisible());
    EXPECT_EQ(commands_.Story, "hidden(chkShowMain)");
    window_.show();
    state_.Exiting = true;
    EXPECT_TRUE(window_.close());
    EXPECT_EQ(commands_.Story, "hidden(chkShowMain)");
}

TEST_F(FrmVXMapTest, BecomingAnIconIsTold) {
    Open();
    QSignalSpy told(&window_, &FrmVXMap::MinimiseStateChanged);
    window_.showMinimized();
    EXPECT_GE(told.count(), 1);
}

} // namespace
} // namespace vardenix
