#include "workspace/ZoomAndDrag.h"

#include "workspace/MapInteraction.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

// Five by five cells of 128 pixels, from (100, 200).
MapView View(int16_t zoomPosts) {
    MapView view;
    view.MapLeftX = 100;
    view.MapBottomY = 200;
    view.ZoomPosts = zoomPosts;
    return view;
}

TEST(ZoomAndDrag, ThePostUnderThePointerStaysThere) {
    for (int16_t from = 1; from <= 20; ++from)
        for (const int16_t to : std::initializer_list<int16_t>{1, 2, 3, 7, 16, 20})
            for (const double at : {1.0, 63.0, 320.0, 500.0}) {
                const MapView before = View(from);
                MapView after = View(to);
                const PostPlace place = ZoomedAt(before, to, at, 640 - at, 1024);
                after.MapLeftX = place.X;
                after.MapBottomY = place.Y;
                EXPECT_TRUE(PostUnderCursor(after, at, 640 - at) ==
                            PostUnderCursor(before, at, 640 - at))
                    << from << " to " << to << " at " << at;
            }
}

TEST(ZoomAndDrag, TheEdgesOfTheTerrainHoldTheView) {
    MapView view = View(1);
    view.MapLeftX = 0;
    view.MapBottomY = 0;
    const PostPlace farther = ZoomedAt(view, 10, 600, 40, 64);
    EXPECT_EQ(farther, (PostPlace{0, 0}));
    view.MapLeftX = 63;
    view.MapBottomY = 63;
    view.ZoomPosts = 10;
    EXPECT_EQ(ZoomedAt(view, 1, 639, 0, 64), (PostPlace{63, 63}));
}

// 15 posts a side have their middle 7.5 posts from the left; 5 have it 2.5 from there.
TEST(ZoomAndDrag, TheMiddleStaysAndComesBack) {
    EXPECT_EQ(ZoomedAtMiddle(View(3), 1, 1024), (PostPlace{105, 205}));
    EXPECT_EQ(ZoomedAtMiddle(View(1), 3, 1024), (PostPlace{95, 195}));
    for (int16_t from = 1; from <= 20; ++from)
        for (int16_t to = 1; to <= 20; ++to) {
            MapView there = View(to);
            const PostPlace place = ZoomedAtMiddle(View(from), to, 1024);
            there.MapLeftX = place.X;
            there.MapBottomY = place.Y;
            EXPECT_EQ(ZoomedAtMiddle(there, from, 1024), (PostPlace{100, 200}));
        }
}

TEST(ZoomAndDrag, TheWheelStopsAtTheEndsOfTheSlider) {
    EXPECT_EQ(ZoomAfterWheel(5, -1, 20), 4);
    EXPECT_EQ(ZoomAfterWheel(5, 3, 20), 8);
    EXPECT_EQ(ZoomAfterWheel(1, -1, 20), 1);
    EXPECT_EQ(ZoomAfterWheel(20, 1, 20), 20);
    EXPECT_EQ(ZoomAfterWheel(20, -2147483647, 20), 1);
}

TEST(ZoomAndDrag, BeyondTheSliderEachNotchIsAQuarterMore) {
    EXPECT_EQ(ZoomAfterWheel(20, 1, 128), 25);
    EXPECT_EQ(ZoomAfterWheel(20, 2, 128), 31);
    EXPECT_EQ(ZoomAfterWheel(19, 2, 128), 25);
    EXPECT_EQ(ZoomAfterWheel(31, -1, 128), 24);
    EXPECT_EQ(ZoomAfterWheel(24, -1, 128), 20);
    EXPECT_EQ(ZoomAfterWheel(24, -2, 128), 19);
    EXPECT_EQ(ZoomAfterWheel(120, 5, 128), 128);
    EXPECT_EQ(ZoomAfterWheel(20, 1, 3), 20);
}

// 1024 posts on 1000 pixels in cells of 128: 131.07 posts a cell.
TEST(ZoomAndDrag, TheWholeTheaterFitsTheShorterSide) {
    MapView view;
    view.TilePixels = 128;
    view.RoomWidth = 1900;
    view.RoomHeight = 1000;
    EXPECT_EQ(ZoomOfWhole(view, 1024), 132);
    view.ZoomPosts = 132;
    EXPECT_GE(view.ViewRows(), 1024);
    view.ZoomPosts = 131;
    EXPECT_LT(view.PictureHeight() / view.CellSize(), 1024);
    EXPECT_EQ(ZoomOfWhole(view, 64), 9);
    EXPECT_EQ(MostZoomPosts(view, 64), 20);
    EXPECT_EQ(MostZoomPosts(view, 1024), 132);
}

// The picture goes with the hand: to the right shows what lies west, down what lies
// north.
TEST(ZoomAndDrag, ADragMovesByWholePosts) {
    EXPECT_EQ(Dragged(View(2), 64, 0, 1024), (PostPlace{99, 200}));
    EXPECT_EQ(Dragged(View(2), -129, 128, 1024), (PostPlace{102, 202}));
    EXPECT_EQ(Dragged(View(2), 30, -30, 1024), (PostPlace{100, 200}));
    EXPECT_EQ(Dragged(View(2), 1e6, 1e6, 1024), (PostPlace{0, 1023}));
}

TEST(MapPanning, FollowsTheHandOnceItHasMovedFartherThanASlip) {
    MapView view;
    view.TilePixels = 64;
    view.MapLeftX = 20;
    view.MapBottomY = 20;
    MapPanning panning(view, 500, 300);
    EXPECT_FALSE(panning.To(504, 296, 64));
    EXPECT_FALSE(panning.Moved());
    EXPECT_EQ(panning.To(500 - 130, 300 + 65, 64), (PostPlace{22, 21}));
    // Back where it began it is still no click.
    EXPECT_EQ(panning.To(501, 300, 64), (PostPlace{20, 20}));
    EXPECT_TRUE(panning.Moved());
}

TEST(WheelSum, PartsOfANotchAddUp) {
    WheelSum sum;
    EXPECT_EQ(sum.NotchesWith(50), 0);
    EXPECT_EQ(sum.NotchesWith(69), 0);
    EXPECT_EQ(sum.NotchesWith(1), 1);
    EXPECT_EQ(sum.NotchesWith(-60), 0);
    EXPECT_EQ(sum.NotchesWith(-300), -3);
    EXPECT_EQ(sum.NotchesWith(250), 2);
    EXPECT_EQ(sum.NotchesWith(110), 1);
}

// 300 by 200 pixels of 64: 4.69 and 3.125 cells.
TEST(ZoomAndDrag, TheMiddleOfARoomStaysToo) {
    MapView view;
    view.TilePixels = 64;
    view.ZoomPosts = 2;
    view.RoomWidth = 300;
    view.RoomHeight = 200;
    view.MapLeftX = 20;
    view.MapBottomY = 20;
    EXPECT_EQ(ZoomedAtMiddle(view, 6, 256), (PostPlace{20 - 9, 20 - 6}));
}

TEST(ZoomAndDrag, TheSliderSaysWhatItCounts) {
    EXPECT_EQ(ZoomWords(1), "1 post a cell");
    EXPECT_EQ(ZoomWords(3), "3 posts a cell");
}

} // namespace
} // namespace vardenix
