#include "mapview/Preview.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

void ExpectBox(const PreviewBox& box, double left, double top, double right,
               double bottom) {
    EXPECT_DOUBLE_EQ(box.Left, left);
    EXPECT_DOUBLE_EQ(box.Top, top);
    EXPECT_DOUBLE_EQ(box.Right, right);
    EXPECT_DOUBLE_EQ(box.Bottom, bottom);
}

TEST(Preview, APixelIsFourPosts) {
    EXPECT_EQ(PreviewSide(1024), 256);
    EXPECT_EQ(PreviewSide(16), 4);
}

TEST(Preview, TheRedBoxIsWhatTheMapShows) {
    MapView view;
    view.MapLeftX = 10;
    view.MapBottomY = 41;
    view.GridCells = 5;
    view.ZoomPosts = 3;
    const ViewPort port = MakeViewPort(view, 256);
    ExpectBox(port.View, 2.5, 242, 6.25, 245.75);
    EXPECT_EQ(port.View.Color, 0xFFU);
    EXPECT_FALSE(port.HasExport);
}

TEST(Preview, TheExportBoxHoldsTheCornersInEitherOrder) {
    MapView view;
    view.ShowExport = true;
    view.ExportColor = 0x7AEF65;
    for (const bool swapped : {false, true}) {
        view.ExportX1 = swapped ? 19 : 8;
        view.ExportX2 = swapped ? 8 : 19;
        view.ExportY1 = swapped ? 4 : 7;
        view.ExportY2 = swapped ? 7 : 4;
        const ViewPort port = MakeViewPort(view, 256);
        ASSERT_TRUE(port.HasExport);
        ExpectBox(port.Export, 2, 254, 5, 255);
        EXPECT_EQ(port.Export.Color, 0x7AEF65U);
    }
}

TEST(Preview, AClickBringsItsPostToTheLowerLeft) {
    EXPECT_EQ(PreviewClick(10, 200, 256, 1024), (PostPlace{40, 224}));
}

TEST(Preview, ClicksAtTheEdgesAreClampedToTheScrollRanges) {
    EXPECT_EQ(PreviewClick(255, 0, 256, 1024), (PostPlace{1020, 1023}));
    EXPECT_EQ(PreviewClick(256, 0, 256, 1024), (PostPlace{1023, 1023}));
    EXPECT_EQ(PreviewClick(0, 256, 256, 1024), (PostPlace{0, 0}));
    EXPECT_EQ(PreviewClick(-5, 300, 256, 1024), (PostPlace{0, 0}));
}

TEST(Preview, GrowsWithItsRoomAndNeverShrinks) {
    EXPECT_EQ(PreviewSideWithin(1024, 500, 900), 500);
    EXPECT_EQ(PreviewSideWithin(1024, 900, 300), 300);
    EXPECT_EQ(PreviewSideWithin(1024, 100, 900), 256);
    EXPECT_EQ(PreviewSideWithin(16, 0, 0), 4);
}

TEST(Preview, ALargerPictureHasItsOwnScale) {
    EXPECT_EQ(PreviewScale(256, 1024), 4);
    EXPECT_EQ(PreviewScale(512, 1024), 2);
    EXPECT_EQ(PreviewScale(2048, 1024), 0.5);
    EXPECT_EQ(PreviewScale(4, 18), 4); // as always, though a little is left over
    EXPECT_EQ(PreviewScale(0, 0), 4);
    MapView view;
    view.MapLeftX = 10;
    view.MapBottomY = 41;
    view.GridCells = 5;
    view.ZoomPosts = 3;
    ExpectBox(MakeViewPort(view, 512, 2).View, 5, 484, 12.5, 491.5);
    EXPECT_EQ(PreviewClick(20, 400, 512, 1024), (PostPlace{40, 224}));
    EXPECT_EQ(PreviewClick(21, 0, 2048, 1024), (PostPlace{10, 1023}));
    EXPECT_EQ(PreviewClick(-30, 9999, 512, 1024), (PostPlace{0, 0}));
}

} // namespace
} // namespace vardenix
