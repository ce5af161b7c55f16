#pragma once

#include "mapview/MapLayout.h"
#include "mapview/MapView.h"

#include <cstdint>

namespace vardenix {

// Posts along a side of one pixel of the preview's visible picture.
constexpr int32_t PreviewPosts = 4;

// A box on the preview, pixels from its left and top edge, with fractions.
struct PreviewBox {
    double Left = 0;
    double Top = 0;
    double Right = 0;
    double Bottom = 0;
    uint32_t Color = 0; // 0x00BBGGRR
};

struct ViewPort {
    PreviewBox View;
    bool HasExport = false;
    PreviewBox Export;
};

// Pixels along a side of the visible picture: a quarter of a pixel for each post.
int32_t PreviewSide(int32_t mapWidth);
// In a window with room for more: the largest square, never less than PreviewSide.
int32_t PreviewSideWithin(int32_t mapWidth, int32_t roomAcross, int32_t roomDown);
// Posts along a side of one pixel of a picture of that side.
double PreviewScale(int32_t previewSide, int32_t mapWidth);

// The red box round what the map shows and, with ShowExport, the box round the region to
// export; the posts of both corners lie inside it. Drawn in this order, one pixel wide,
// over the height picture.
ViewPort MakeViewPort(const MapView& view, int32_t previewSide,
                      double postsOfPixel = PreviewPosts);

// Where the map goes after a left click on a pixel of the preview, or while the pointer
// is drawn over it; pixels beyond the picture count as its edge.
PostPlace PreviewClick(int32_t pixelX, int32_t pixelY, int32_t previewSide,
                       int32_t mapWidth);

} // namespace vardenix
