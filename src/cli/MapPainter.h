#pragma once

#include "mapview/MapRenderer.h"
#include "mapview/MapView.h"
#include "platform/Progress.h"
#include "services/Raster.h"
#include "theater/DebugLog.h"
#include "theater/ProgramState.h"

namespace vardenix {

// One view of the open theater, the pixels that the map window would show. Pictures that
// cannot be read show "NoTile.jpg" of ShippedPath.
Raster PaintMap(ProgramState& state, const MapView& view, FeatureLayer& features,
                Progress& progress, DebugLog& log);

} // namespace vardenix
