#include "windows/MapWindowTest.h"

#include <QScreen>
#include <QSignalSpy>

namespace vardenix {
namespace {

class FrmVXMapSizeTest : public tests::MapWindowTest {
protected:
    FrmVXMapSizeTest() : MapWindowTest(2) {
        // As the panel does it.
        QObject::connect(&window_, &FrmVXMap::GridChosen, &window_,
                         [this] { window_.LoadImageControls(); });
    }

    QSignalSpy chosen_{&window_, &FrmVXMap::GridChosen};
};

TEST_F(FrmVXMapSizeTest, MaximisedItTakesTheLargestPictureAndGivesItBack) {
    Open();
    const QSize before = window_.size();
    window_.showMaximized();
    ASSERT_EQ(chosen_.size(), 1);
    EXPECT_FALSE(chosen_.last().at(0).toBool()); // for this time only
    const QSize room = window_.screen()->availableSize();
    const int side = PicShow().width();
    EXPECT_EQ(side, world_.View.GridCells * world_.View.TilePixels);
    EXPECT_GT(side, 256);
    EXPECT_LT(side, room.height());
    EXPECT_TRUE(window_.isMaximized());
    window_.showNormal();
    ASSERT_EQ(chosen_.size(), 2);
    EXPECT_EQ(world_.View.GridCells, 4);
    EXPECT_EQ(world_.View.TilePixels, 64);
    EXPECT_EQ(PicShow().width(), 256);
    EXPECT_EQ(window_.size(), before);
}

TEST_F(FrmVXMapSizeTest, WhatIsChosenMeanwhileStays) {
    Open();
    window_.showMaximized();
    world_.View.TilePixels = 16;
    world_.View.GridCells = 3;
    window_.LoadImageControls();
    EXPECT_TRUE(window_.isMaximized());
    window_.showNormal();
    ASSERT_EQ(chosen_.size(), 2);
    EXPECT_TRUE(chosen_.last().at(0).toBool()); // for good
    EXPECT_EQ(world_.View.TilePixels, 16);
    EXPECT_EQ(PicShow().width(), 48);
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
