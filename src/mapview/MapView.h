#pragma once

#include "levels/Posts.h"

#include <cstdint>

namespace vardenix {

// What part of the terrain the map shows, and how. Owned by app/ for the whole run; the
// control panel sets it, the map window reads it. Posts are counted from 0 here.
struct MapView {
    int32_t MapLeftX = 0; // post column at the left edge, the horizontal scroll value
    // Post row at the bottom edge, minus the vertical scroll value.
    int32_t MapBottomY = 0;
    // Posts along a side of a grid cell: 1 to 20, or more for an overview.
    int16_t ZoomPosts = 1;
    int16_t GridCells = 5;    // grid cells along a side of the view, 2 to 10
    int32_t TilePixels = 128; // pixels along a side of a grid cell: 16 to 512

    bool ShowGrid = false;
    bool ShowExport = false;
    bool ShowHeights = false;
    bool ShowSegments = false;
    uint32_t GridColor = 0; // colours are 0x00BBGGRR
    uint32_t ExportColor = 0;
    uint32_t SegmentColor = 0;

    bool ApplyMAP = false;
    bool ApplyNight = false;
    uint8_t MapAlpha = 127; // of the MAP colour over a tile
    double Brightness = 0;  // percent, -100 to 100

    bool ShowRelief = false;
    bool ReliefAlone = false;    // no tiles below it
    int32_t ReliefStrength = 60; // percent, 0 to 100
    bool ShowContours = false;
    int32_t ContourStep = 500; // feet from line to line, at least 1

    bool ShowAreasPaths = false; // master switch of the two below
    bool ShowAreas = true;
    bool ShowPaths = true;
    bool AreasFilled = false;

    // The corners of the region to export, in either order; -1 until chosen.
    int32_t ExportX1 = -1;
    int32_t ExportY1 = -1;
    int32_t ExportX2 = -1;
    int32_t ExportY2 = -1;

    // Of the picture in pixels, where it fills a room of its own; 0 where it is the
    // square of GridCells.
    int32_t RoomWidth = 0;
    int32_t RoomHeight = 0;

    bool L0Mode = false;     // the finest elevations are edited
    bool ScrollBusy = false; // a scroll value is being set by the program

    // What is edited.
    Layer Edited() const { return L0Mode ? Layer::Heights : Layer::Posts; }
    // Pixels along a side of a post's cell, a real number.
    double CellSize() const { return static_cast<double>(TilePixels) / ZoomPosts; }
    // Pixels along a side of the square of GridCells.
    int32_t SquareSide() const { return GridCells * TilePixels; }

    static constexpr int16_t MostZoomPosts = 20; // of pictures, and of what is stored
    // Posts are seen by the colours of their tiles only.
    bool IsOverview() const { return ZoomPosts > MostZoomPosts; }

    bool FillsRoom() const { return RoomWidth > 0 && RoomHeight > 0; }
    // Of the whole picture.
    int32_t PictureWidth() const { return FillsRoom() ? RoomWidth : SquareSide(); }
    int32_t PictureHeight() const { return FillsRoom() ? RoomHeight : SquareSide(); }
    // Posts across and up the view. In a room the last column and the uppermost row may
    // be cut by the picture's edge: the lower left corner is always that of a post.
    int32_t ViewColumns() const { return PostsWithin(PictureWidth()); }
    int32_t ViewRows() const { return PostsWithin(PictureHeight()); }
    // Pixels from the picture's upper edge to the lower side of a row of posts.
    double BottomOfRow(int32_t y) const {
        return PictureHeight() - CellSize() * (y - MapBottomY);
    }

private:
    int32_t PostsWithin(int32_t pixels) const {
        if (TilePixels <= 0)
            return 0;
        const int64_t posts = int64_t{pixels} * ZoomPosts;
        return static_cast<int32_t>((posts + TilePixels - 1) / TilePixels);
    }
};

// While it lives, a scroll value is being set by the program: clicks on the map and
// repaints from its scroll bars are passed over.
class ScrollBusyWhile {
public:
    explicit ScrollBusyWhile(MapView& view) : view_(view), before_(view.ScrollBusy) {
        view_.ScrollBusy = true;
    }
    ScrollBusyWhile(const ScrollBusyWhile&) = delete;
    ScrollBusyWhile& operator=(const ScrollBusyWhile&) = delete;
    ~ScrollBusyWhile() { view_.ScrollBusy = before_; }

private:
    MapView& view_;
    bool before_;
};

} // namespace vardenix
