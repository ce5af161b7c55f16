#pragma once

#include "levels/Posts.h"
#include "mapview/DrawingSurface.h"
#include "mapview/MapView.h"

namespace vardenix {

// The outline of a box of posts on the picture: its lower left and upper right corners.
struct PictureBox {
    PicturePoint LowerLeft;
    PicturePoint UpperRight;
};

PictureBox BoxOnPicture(const MapView& view, const PostBox& posts);

} // namespace vardenix
