#pragma once

#include "levels/Posts.h"
#include "mapview/DrawingSurface.h"
#include "mapview/MapSources.h"
#include "mapview/MapView.h"

#include <cstdint>

namespace vardenix {

// The part of a view that a change of some posts can have altered.
struct MapPatch {
    PixelRect Clip; // on the picture; empty when none of the posts is in view
    PostBox Cells;  // columns from the left and rows from below whose posts draw in there
};

// How far a post can draw beyond its cell, pixels: lines of the grid, heights wider than
// it, areas and paths of the catalogue. `texts` measures.
int32_t ReachOf(const MapView& view, const MapSources& sources, DrawingSurface& texts);

// All that lies in a part of the picture, which is wholly on it.
MapPatch PatchOfPart(const MapView& view, const PixelRect& part, int32_t reach);

// For posts of level 2, counted from 0.
MapPatch PatchOf(const MapView& view, const PostBox& changed, int32_t reach);

} // namespace vardenix
