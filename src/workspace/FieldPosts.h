#pragma once

#include "levels/PostDelta.h"
#include "levels/Terrain.h"
#include "mapview/MapView.h"
#include "workspace/HandState.h"

#include <cstdint>

namespace vardenix {

// A field of a post as a number; the tile's for grounds.
int32_t FieldOf(const TerrainPost& post, Painting field);

// Palette, X1 or X2 of all posts of a selection become `value`; nothing is changed yet.
PostDelta FieldPosts(const Terrain& terrain, const Selection& selection, Painting field,
                     uint8_t value);

// The segments of a terrain `width` posts a side of which a part is in view.
PostBox SegmentsInView(const MapView& view, int32_t width);

} // namespace vardenix
