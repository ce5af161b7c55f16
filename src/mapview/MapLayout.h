#pragma once

#include "levels/Posts.h"
#include "mapview/MapView.h"
#include "program/Configuration.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

namespace vardenix {

// The range of a scroll bar or slider.
struct ControlRange {
    int32_t Min = 0;
    int32_t Max = 0;
    int32_t LargeChange = 1;

    int32_t Clamp(int32_t value) const { return std::max(Min, std::min(value, Max)); }
};

constexpr ControlRange BrightnessRange{-100, 100, 20};
constexpr ControlRange TransRange{0, 255, 32};
constexpr ControlRange ZoomRange{1, MapView::MostZoomPosts, 5};
constexpr ControlRange GridCellsRange{2, 10, 1};
// The list of ComTileWidth.
constexpr std::array<int32_t, 6> TileWidths{16, 32, 64, 128, 256, 512};
constexpr uint8_t InitialMapAlpha = 127;

// What the platform adds to a picture to make a window; pixels.
struct WindowMetrics {
    int32_t BorderAcross = 0;
    int32_t BorderDown = 0;
    int32_t Caption = 0;
    int32_t ScrollBarWidth = 0;  // of VScroll1
    int32_t ScrollBarHeight = 0; // of HScroll1
};

// How the map window is laid out: the picture at (0, 0), HScroll1 under it as wide as it,
// VScroll1 at its right edge as high as it. Pixels.
struct MapLayout {
    double CellSize = 0;
    int32_t PictureWidth = 0;
    int32_t PictureHeight = 0;
    ControlRange HScroll1; // values are MapLeftX
    ControlRange VScroll1; // values are minus MapBottomY
    int32_t FormWidth = 0;
    int32_t FormHeight = 0;
};

// Nothing while there are no tile pixels or no theater: the window stays as it is.
std::optional<MapLayout> LoadImageControls(const MapView& view, int32_t mapWidth,
                                           const WindowMetrics& metrics);

// The scroll ranges alone, for a `mapWidth` above 0.
ControlRange HorizontalScroll(const MapView& view, int32_t mapWidth);
ControlRange VerticalScroll(const MapView& view, int32_t mapWidth);

// The nearest post that the view of a theater `mapWidth` posts a side can begin with at
// its lower left; (0, 0) without one.
PostPlace ClampToScroll(PostPlace position, int32_t mapWidth);

// The view of the settings, each brought into the range of its control. The position is
// left alone until a theater is there (InitForm).
MapView ViewOfSettings(const Configuration& settings);
// The text of ComTileWidth at a list index, as a number; indices outside are clamped.
int32_t TilePixelsOfIndex(int32_t listIndex);

// Scrolls the view to the saved position, clamped to the scroll ranges. False, and
// nothing done, while no theater is open.
bool InitForm(const Configuration& settings, int32_t mapWidth, MapView& view);

} // namespace vardenix
