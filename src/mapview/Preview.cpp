#include "mapview/Preview.h"

#include <algorithm>

namespace vardenix {
namespace {

constexpr uint32_t Red = 255;

// The box of the posts from (x1, y1) up to, but not including, (x2, y2).
PreviewBox BoxOf(int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t previewSide,
                 uint32_t color) {
    constexpr double posts = PreviewPosts;
    return {x1 / posts, previewSide - y2 / posts, x2 / posts, previewSide - y1 / posts,
            color};
}

} // namespace

int32_t PreviewSide(int32_t mapWidth) { return mapWidth / PreviewPosts; }

ViewPort MakeViewPort(const MapView& view, int32_t previewSide) {
    ViewPort port;
    port.View = BoxOf(view.MapLeftX, view.MapBottomY, view.MapLeftX + view.ViewPosts(),
                      view.MapBottomY + view.ViewPosts(), previewSide, Red);
    port.HasExport = view.ShowExport;
    if (port.HasExport)
        port.Export = BoxOf(std::min(view.ExportX1, view.ExportX2),
                            std::min(view.ExportY1, view.ExportY2),
                            std::max(view.ExportX1, view.ExportX2) + 1,
                            std::max(view.ExportY1, view.ExportY2) + 1, previewSide,
                            view.ExportColor);
    return port;
}

ViewPosition PreviewClick(int32_t pixelX, int32_t pixelY, int32_t previewSide,
                          int32_t mapWidth) {
    return ClampToScroll({pixelX * PreviewPosts, (previewSide - pixelY) * PreviewPosts},
                         mapWidth);
}

} // namespace vardenix
