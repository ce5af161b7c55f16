#pragma once

#include "mapview/DrawingSteps.h"
#include "mapview/MapView.h"
#include "workspace/Selection.h"

#include <cstdint>
#include <vector>

namespace vardenix {

// The edges of a selection on the picture of a view, as boxes `thick` pixels across that
// lie on both sides of the line between two posts. Only those in view.
std::vector<PixelBox> EdgesOnPicture(const Selection& selection, const MapView& view,
                                     int32_t thick);

} // namespace vardenix
