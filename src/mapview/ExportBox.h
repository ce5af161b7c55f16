#pragma once

#include "mapview/DrawingSurface.h"
#include "mapview/MapView.h"

#include <cstdint>

namespace vardenix {

// Two posts counted from 0, in either order; both belong to the box.
struct PostBox {
    int32_t X1 = 0;
    int32_t Y1 = 0;
    int32_t X2 = 0;
    int32_t Y2 = 0;
};

// Its outline on the picture: the lower left and the upper right corner.
struct PictureBox {
    PicturePoint LowerLeft;
    PicturePoint UpperRight;
};

PictureBox BoxOnPicture(const MapView& view, const PostBox& posts);

} // namespace vardenix
