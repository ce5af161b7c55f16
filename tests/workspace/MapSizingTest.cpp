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

TEST(MapSizing, AWholeScreenTakesTheLargestPictureThatFits) {
    // 1920 by 1080 leaves about 1030 pixels: 8 of 128, as the user had it.
    EXPECT_EQ(LargestGrid(ViewOf(128, 5), 1030), (GridChoice{128, 8}));
    EXPECT_EQ(LargestGrid(ViewOf(512, 2), 1030), (GridChoice{512, 2}));
    EXPECT_EQ(LargestGrid(ViewOf(256, 3), 1030), (GridChoice{256, 4}));
    // 16, 32 and 64 have no 1024 within ten cells.
    EXPECT_EQ(LargestGrid(ViewOf(64, 10), 1030), (GridChoice{128, 8}));
    EXPECT_EQ(LargestGrid(ViewOf(16, 10), 1030), (GridChoice{128, 8}));
    // 1366 by 768: 640 of 64 and of 128.
    EXPECT_EQ(LargestGrid(ViewOf(128, 5), 700), (GridChoice{128, 5}));
    EXPECT_EQ(LargestGrid(ViewOf(64, 3), 700), (GridChoice{64, 10}));
    EXPECT_EQ(LargestGrid(ViewOf(128, 5), 5200), (GridChoice{512, 10}));
}

// Every choice there is, one by one.
TEST(MapSizing, NoOtherChoiceThatFitsIsLarger) {
    for (int32_t room = 32; room < 2000; room += 7) {
        int32_t largest = 0;
        for (const int32_t width : {16, 32, 64, 128, 256, 512})
            for (int32_t cells = 2; cells <= 10; ++cells)
                if (width * cells <= room && width * cells > largest)
                    largest = width * cells;
        EXPECT_EQ(LargestGrid(ViewOf(128, 5), room).Side(), largest) << room;
    }
}

TEST(MapSizing, WhereNothingFitsTheSmallestIsTaken) {
    EXPECT_EQ(LargestGrid(ViewOf(512, 10), 31), (GridChoice{16, 2}));
    EXPECT_EQ(LargestGrid(ViewOf(512, 10), -5), (GridChoice{16, 2}));
}

TEST(MapSizing, APartOfAWindowKeepsTheTileSize) {
    EXPECT_EQ(FittingGrid(ViewOf(128, 5), 900), (GridChoice{128, 7}));
    EXPECT_EQ(FittingGrid(ViewOf(128, 5), 896), (GridChoice{128, 7}));
    EXPECT_EQ(FittingGrid(ViewOf(128, 5), 895), (GridChoice{128, 6}));
    EXPECT_EQ(FittingGrid(ViewOf(16, 5), 900), (GridChoice{16, 10}));
    EXPECT_EQ(FittingGrid(ViewOf(512, 5), 900), (GridChoice{512, 2}));
    EXPECT_EQ(FittingGrid(ViewOf(512, 5), -3), (GridChoice{512, 2}));
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
