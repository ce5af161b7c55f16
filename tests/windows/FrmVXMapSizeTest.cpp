#include "windows/MapWindowTest.h"

#include <QLayout>
#include <QScreen>
#include <QSignalSpy>

namespace vardenix {
namespace {

class FrmVXMapSizeTest : public tests::MapWindowTest {
protected:
    FrmVXMapSizeTest() : MapWindowTest(2) {
        // As the panel does it.
        QObject::connect(&window_, &FrmVXMap::RoomFilled, &window_,
                         [this] { window_.LoadImageControls(); });
    }

    QSignalSpy chosen_{&window_, &FrmVXMap::GridChosen};
    QSignalSpy filled_{&window_, &FrmVXMap::RoomFilled};
};

TEST_F(FrmVXMapSizeTest, MaximisedItFillsTheScreenAndGivesItBack) {
    Open();
    const QSize before = window_.size();
    const QSize beside = before - PicShow().size();
    window_.showMaximized();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return PicShow().size() == window_.size() - beside; }));
    EXPECT_GT(PicShow().width(), 700);
    EXPECT_EQ(world_.View.PictureWidth(), PicShow().width());
    EXPECT_TRUE(window_.isMaximized());
    EXPECT_EQ(world_.View.GridCells, 4);
    EXPECT_EQ(world_.View.TilePixels, 64);
    window_.showNormal();
    EXPECT_EQ(PicShow().size(), QSize(256, 256));
    EXPECT_TRUE(QTest::qWaitFor([&] { return window_.size() == before; }));
    EXPECT_EQ(chosen_.size(), 0); // nothing to be remembered
}

TEST_F(FrmVXMapSizeTest, WhatIsChosenMeanwhileStays) {
    Open();
    window_.showMaximized();
    world_.View.TilePixels = 16;
    world_.View.GridCells = 3;
    window_.LoadImageControls();
    EXPECT_TRUE(window_.isMaximized());
    window_.showNormal();
    EXPECT_EQ(PicShow().size(), QSize(48, 48));
}

TEST_F(FrmVXMapSizeTest, APartOfAnotherWindowFollowsItsRoom) {
    Open();
    // The border is that of the other window.
    const QMargins border = window_.layout()->contentsMargins();
    const QSize beside =
        window_.size() - PicShow().size() -
        QSize(border.left() + border.right(), border.top() + border.bottom());
    QWidget other;
    window_.setParent(&other);
    window_.resize(731, 402);
    other.resize(900, 500);
    window_.show();
    other.show();
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return PicShow().size() == QSize(731, 402) - beside; }));
    window_.resize(500, 600);
    ASSERT_TRUE(
        QTest::qWaitFor([&] { return PicShow().size() == QSize(500, 600) - beside; }));
    window_.setParent(nullptr);
}

TEST_F(FrmVXMapSizeTest, AnIconChoosesNothing) {
    Open();
    window_.showMinimized();
    window_.showNormal();
    EXPECT_EQ(chosen_.size(), 0);
}

// The program's own sizes are no choice of the user's.
TEST_F(FrmVXMapSizeTest, ItsOwnSizesChooseNothing) {
    Open();
    window_.resize(200, 180);
    EXPECT_FALSE(QTest::qWaitFor([this] { return !chosen_.empty(); }, 400));
    EXPECT_EQ(window_.size(), QSize(200, 180));
}

} // namespace
} // namespace vardenix
