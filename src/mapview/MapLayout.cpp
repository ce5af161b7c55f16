#include "mapview/MapLayout.h"

namespace vardenix {
namespace {

// Between the picture with its scroll bars and the frame of the form.
constexpr int32_t FormMargin = 4;

// Of a picture so many pixels long in the direction of the bar.
int32_t LargeChange(const MapView& view, int32_t pixels) {
    const int32_t cells = pixels / std::max(view.TilePixels, 1);
    return (cells / 2 + 1) * view.ZoomPosts;
}

} // namespace

ControlRange HorizontalScroll(const MapView& view, int32_t mapWidth) {
    return {0, mapWidth - 1, LargeChange(view, view.PictureWidth())};
}

ControlRange VerticalScroll(const MapView& view, int32_t mapWidth) {
    return {1 - mapWidth, 0, LargeChange(view, view.PictureHeight())};
}

std::optional<MapLayout> LoadImageControls(const MapView& view, int32_t mapWidth,
                                           const WindowMetrics& metrics) {
    if (view.TilePixels == 0 || mapWidth == 0)
        return std::nullopt;
    MapLayout layout;
    layout.CellSize = view.CellSize();
    layout.PictureWidth = view.PictureWidth();
    layout.PictureHeight = view.PictureHeight();
    layout.HScroll1 = HorizontalScroll(view, mapWidth);
    layout.VScroll1 = VerticalScroll(view, mapWidth);
    layout.FormWidth = layout.PictureWidth + metrics.ScrollBarWidth +
                       2 * metrics.BorderAcross + FormMargin;
    layout.FormHeight = layout.PictureHeight + metrics.ScrollBarHeight +
                        2 * metrics.BorderDown + metrics.Caption + FormMargin;
    return layout;
}

PostPlace ClampToScroll(PostPlace position, int32_t mapWidth) {
    const int32_t last = std::max(mapWidth - 1, 0);
    return {std::clamp(position.X, 0, last), std::clamp(position.Y, 0, last)};
}

int32_t TilePixelsOfIndex(int32_t listIndex) {
    const int32_t last = static_cast<int32_t>(TileWidths.size()) - 1;
    return TileWidths.at(static_cast<size_t>(std::clamp(listIndex, 0, last)));
}

MapView ViewOfSettings(const Configuration& settings) {
    MapView view;
    view.ZoomPosts = static_cast<int16_t>(ZoomRange.Clamp(settings.Zoom));
    view.GridCells = static_cast<int16_t>(GridCellsRange.Clamp(settings.GridSize));
    view.TilePixels = TilePixelsOfIndex(settings.TileSize);
    view.ShowGrid = settings.OptionShowGrid;
    view.ShowExport = settings.OptionShowExpArea;
    view.ShowHeights = settings.OptionShowHeights;
    view.ShowSegments = settings.OptionShowSegments;
    view.GridColor = settings.GridColor;
    view.ExportColor = settings.ExportedAreaColor;
    view.SegmentColor = settings.SegmentColor;
    view.MapAlpha = InitialMapAlpha;
    view.Brightness = BrightnessRange.Clamp(settings.OptionBrightness);
    view.ShowAreasPaths = settings.VXMasterPathsAreas;
    view.ShowAreas = settings.VXShowAreas;
    view.ShowPaths = settings.VXShowPaths;
    view.AreasFilled = settings.VXAreasFilled;
    return view;
}

bool InitForm(const Configuration& settings, int32_t mapWidth, MapView& view) {
    if (mapWidth == 0)
        return false;
    const PostPlace position = ClampToScroll({settings.X, settings.Y}, mapWidth);
    view.MapLeftX = position.X;
    view.MapBottomY = position.Y;
    return true;
}

} // namespace vardenix
