#include "mapview/MapLayout.h"

#include <gtest/gtest.h>

namespace vardenix {
namespace {

MapView ViewOf(int16_t zoomPosts, int16_t gridCells, int32_t tilePixels) {
    MapView view;
    view.ZoomPosts = zoomPosts;
    view.GridCells = gridCells;
    view.TilePixels = tilePixels;
    return view;
}

TEST(MapLayout, NothingIsLaidOutWithoutTilePixelsOrTheater) {
    EXPECT_FALSE(LoadImageControls(ViewOf(1, 5, 0), 1024, {}));
    EXPECT_FALSE(LoadImageControls(ViewOf(1, 5, 128), 0, {}));
}

TEST(MapLayout, TheFormGoesRoundPictureBarsAndFrame) {
    const auto layout = LoadImageControls(ViewOf(3, 5, 128), 1024, {6, 7, 23, 17, 19});
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->PictureWidth, 640);
    EXPECT_EQ(layout->PictureHeight, 640);
    EXPECT_DOUBLE_EQ(layout->CellSize, 128.0 / 3);
    EXPECT_EQ(layout->FormWidth, 640 + 17 + 12 + 4);
    EXPECT_EQ(layout->FormHeight, 640 + 19 + 14 + 23 + 4);
}

// 300 by 200 pixels in cells of 42 2/3: 7.03 columns and 4.69 rows of posts.
TEST(MapLayout, ARoomCutsTheLastColumnAndTheUppermostRow) {
    MapView view = ViewOf(3, 5, 128);
    view.RoomWidth = 300;
    view.RoomHeight = 200;
    EXPECT_EQ(view.ViewColumns(), 8);
    EXPECT_EQ(view.ViewRows(), 5);
    view.RoomWidth = 256; // six whole ones
    EXPECT_EQ(view.ViewColumns(), 6);
    const auto layout = LoadImageControls(view, 1024, {6, 7, 23, 17, 19});
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->PictureWidth, 256);
    EXPECT_EQ(layout->PictureHeight, 200);
    EXPECT_EQ(layout->FormWidth, 256 + 17 + 12 + 4);
    EXPECT_EQ(layout->FormHeight, 200 + 19 + 14 + 23 + 4);
    // Two whole cells across, one up.
    EXPECT_EQ(layout->HScroll1.LargeChange, (2 / 2 + 1) * 3);
    EXPECT_EQ(layout->VScroll1.LargeChange, (1 / 2 + 1) * 3);
    view.RoomHeight = 0;
    EXPECT_FALSE(view.FillsRoom());
    EXPECT_EQ(view.PictureWidth(), 640);
    EXPECT_EQ(view.ViewRows(), 15);
}

TEST(MapLayout, ZoomNeverChangesTheWindow) {
    for (int16_t zoom = 1; zoom <= 20; ++zoom) {
        const auto layout = LoadImageControls(ViewOf(zoom, 4, 64), 512, {});
        ASSERT_TRUE(layout);
        EXPECT_EQ(layout->PictureWidth, 256);
        EXPECT_EQ(layout->FormWidth, 260);
    }
}

TEST(MapLayout, ScrollRangesReachFromTheFirstPostToTheLast) {
    const auto layout = LoadImageControls(ViewOf(3, 5, 128), 1024, {});
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->HScroll1.Min, 0);
    EXPECT_EQ(layout->HScroll1.Max, 1023);
    EXPECT_EQ(layout->VScroll1.Min, -1023);
    EXPECT_EQ(layout->VScroll1.Max, 0);
}

TEST(MapLayout, ALargeChangeIsHalfTheGridAndOneCell) {
    const auto odd = LoadImageControls(ViewOf(3, 5, 128), 1024, {});
    EXPECT_EQ(odd->HScroll1.LargeChange, 9); // (5 \ 2 + 1) * 3
    EXPECT_EQ(odd->VScroll1.LargeChange, 9);
    const auto even = LoadImageControls(ViewOf(20, 10, 128), 1024, {});
    EXPECT_EQ(even->HScroll1.LargeChange, 120);
}

TEST(MapLayout, SettingsOutsideTheirControlsAreClamped) {
    Configuration settings;
    settings.Zoom = 0;
    settings.GridSize = -7;
    settings.TileSize = -1;
    settings.OptionBrightness = -500;
    MapView view = ViewOfSettings(settings);
    EXPECT_EQ(view.ZoomPosts, 1);
    EXPECT_EQ(view.GridCells, 2);
    EXPECT_EQ(view.TilePixels, 16);
    EXPECT_EQ(view.Brightness, -100);

    settings.Zoom = 32767;
    settings.GridSize = 11;
    settings.TileSize = 6;
    settings.OptionBrightness = 101;
    view = ViewOfSettings(settings);
    EXPECT_EQ(view.ZoomPosts, 20);
    EXPECT_EQ(view.GridCells, 10);
    EXPECT_EQ(view.TilePixels, 512);
    EXPECT_EQ(view.Brightness, 100);
}

TEST(MapLayout, SettingsInsideAreTaken) {
    Configuration settings;
    settings.Zoom = 7;
    settings.GridSize = 9;
    settings.TileSize = 4;
    settings.OptionBrightness = -40;
    settings.OptionShowSegments = true;
    settings.VXMasterPathsAreas = true;
    settings.VXShowPaths = false;
    settings.ExportedAreaColor = 0x010203;
    const MapView view = ViewOfSettings(settings);
    EXPECT_EQ(view.ZoomPosts, 7);
    EXPECT_EQ(view.GridCells, 9);
    EXPECT_EQ(view.TilePixels, 256);
    EXPECT_EQ(view.Brightness, -40);
    EXPECT_TRUE(view.ShowSegments);
    EXPECT_FALSE(view.ShowGrid);
    EXPECT_TRUE(view.ShowAreasPaths);
    EXPECT_TRUE(view.ShowAreas);
    EXPECT_FALSE(view.ShowPaths);
    EXPECT_EQ(view.ExportColor, 0x010203U);
    EXPECT_EQ(view.MapAlpha, 127);
}

TEST(MapLayout, TheListOfTileWidthsDoubles) {
    const int32_t widths[] = {16, 32, 64, 128, 256, 512};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(TilePixelsOfIndex(i), widths[i]);
}

TEST(MapLayout, TheSavedPositionIsClampedToTheTheater) {
    Configuration settings;
    settings.X = 5000;
    settings.Y = -3;
    MapView view;
    EXPECT_TRUE(InitForm(settings, 1024, view));
    EXPECT_EQ(view.MapLeftX, 1023);
    EXPECT_EQ(view.MapBottomY, 0);

    settings.X = 17;
    settings.Y = 1023;
    EXPECT_TRUE(InitForm(settings, 1024, view));
    EXPECT_EQ(view.MapLeftX, 17);
    EXPECT_EQ(view.MapBottomY, 1023);
}

TEST(MapLayout, WithoutATheaterThePositionStays) {
    Configuration settings;
    settings.X = 5;
    MapView view;
    view.MapLeftX = 9;
    EXPECT_FALSE(InitForm(settings, 0, view));
    EXPECT_EQ(view.MapLeftX, 9);
}

} // namespace
} // namespace vardenix
