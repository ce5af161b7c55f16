#include "mapview/Preview.h"

#include "texts/Numbers.h"

#include <algorithm>

namespace vardenix {
namespace {

constexpr uint32_t Red = 255;

// The box of the posts from (x1, y1) up to, but not including, (x2, y2).
PreviewBox BoxOf(int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t previewSide,
                 double posts, uint32_t color) {
    return {x1 / posts, previewSide - y2 / posts, x2 / posts, previewSide - y1 / posts,
            color};
}

} // namespace

int32_t PreviewSide(int32_t mapWidth) { return mapWidth / PreviewPosts; }

int32_t PreviewSideWithin(int32_t mapWidth, int32_t roomAcross, int32_t roomDown) {
    return std::max(PreviewSide(mapWidth), std::min(roomAcross, roomDown));
}

double PreviewScale(int32_t previewSide, int32_t mapWidth) {
    return previewSide == PreviewSide(mapWidth) || previewSide <= 0
               ? PreviewPosts
               : static_cast<double>(mapWidth) / previewSide;
}

ViewPort MakeViewPort(const MapView& view, int32_t previewSide, double postsOfPixel) {
    ViewPort port;
    port.View = BoxOf(view.MapLeftX, view.MapBottomY, view.MapLeftX + view.ViewColumns(),
                      view.MapBottomY + view.ViewRows(), previewSide, postsOfPixel, Red);
    port.HasExport = view.ShowExport;
    if (port.HasExport)
        port.Export = BoxOf(std::min(view.ExportX1, view.ExportX2),
                            std::min(view.ExportY1, view.ExportY2),
                            std::max(view.ExportX1, view.ExportX2) + 1,
                            std::max(view.ExportY1, view.ExportY2) + 1, previewSide,
                            postsOfPixel, view.ExportColor);
    return port;
}

PostPlace PreviewClick(int32_t pixelX, int32_t pixelY, int32_t previewSide,
                       int32_t mapWidth) {
    const double posts = PreviewScale(previewSide, mapWidth);
    const auto post = [posts](int32_t pixels) { return ClampToInt32(pixels * posts); };
    return ClampToScroll({post(pixelX), post(previewSide - pixelY)}, mapWidth);
}

} // namespace vardenix
