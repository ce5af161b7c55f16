#include "workspace/MapSizing.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

MapView ViewOf(int32_t tilePixels, int16_t gridCells) {
    MapView view;
    view.TilePixels = tilePixels;
    view.GridCells = gridCells;
    return view;
}

TEST(RoomFilling, ThePictureIsAsLargeAsTheRoomAndTheSquareComesBack) {
    MapView view = ViewOf(128, 5);
    RoomFilling filling(view);
    EXPECT_FALSE(filling.Fills());
    EXPECT_FALSE(filling.End());
    EXPECT_TRUE(filling.Fill({1900, 1000}));
    EXPECT_TRUE(filling.Fills());
    EXPECT_EQ(view.PictureWidth(), 1900);
    EXPECT_EQ(view.PictureHeight(), 1000);
    EXPECT_FALSE(filling.Fill({1900, 1000}));
    EXPECT_TRUE(filling.Fill({1900, 999}));
    EXPECT_EQ(view.GridCells, 5);
    EXPECT_EQ(view.TilePixels, 128);
    EXPECT_TRUE(filling.End());
    EXPECT_EQ(view.PictureWidth(), 640);
    EXPECT_FALSE(filling.End());
}

TEST(RoomFilling, KnowsWhetherTheSquareIsAnotherOneMeanwhile) {
    MapView view = ViewOf(128, 5);
    RoomFilling filling(view);
    filling.Fill({900, 700});
    view.TilePixels = 64;
    filling.Fill({910, 700});
    EXPECT_FALSE(filling.SquareKept());
    view.TilePixels = 128;
    EXPECT_TRUE(filling.SquareKept());
}

TEST(RoomFilling, ARoomWithoutAnyPlaceLeavesAPixel) {
    MapView view = ViewOf(128, 5);
    RoomFilling filling(view);
    EXPECT_TRUE(filling.Fill({0, -7}));
    EXPECT_EQ(view.PictureWidth(), 1);
    EXPECT_EQ(view.PictureHeight(), 1);
}

TEST(MapSizing, EdgesAreDrawnToWholeCells) {
    const MapView view = ViewOf(128, 5);
    const WindowSize before{640, 640};
    const WindowSize room{1900, 1000};
    const auto drawn = [&](int32_t width, int32_t height) {
        return DrawnCells(view, before, {width, height}, room);
    };
    EXPECT_EQ(drawn(640, 640), 5);
    EXPECT_EQ(drawn(703, 640), 5);
    EXPECT_EQ(drawn(704, 640), 6);
    EXPECT_EQ(drawn(640, 500), 4); // by the lower edge alone
    EXPECT_EQ(drawn(900, 600), 7); // the right one was drawn farther
    EXPECT_EQ(drawn(600, 390), 3);
    EXPECT_EQ(drawn(1900, 640), 7); // as high as the screen, no higher
    EXPECT_EQ(drawn(192, 640), 2);
    EXPECT_EQ(drawn(191, 640), 0);
    EXPECT_EQ(drawn(10, 10), 0);
}

TEST(MapSizing, AScreenTooSmallForTwoCellsStillTakesTwo) {
    EXPECT_EQ(DrawnCells(ViewOf(512, 2), {700, 700}, {1000, 700}, {1000, 700}), 2);
}

} // namespace
} // namespace vardenix
