#pragma once

#include "mapview/DrawingSurface.h"
#include "mapview/MapRenderer.h"
#include "mapview/MapView.h"
#include "platform/DebugLog.h"
#include "platform/Progress.h"
#include "program/ProgramState.h"

#include <memory>

namespace vardenix {

// One view of the open theater, on a surface with the pixels that the map window would
// show. Pictures that cannot be read show "NoTile.jpg" of ShippedPath. The toolkit is
// loaded only for heights, areas, paths and features (MakeToolkitSurface).
std::unique_ptr<DrawingSurface> PaintMap(ProgramState& state, const MapView& view,
                                         const MapLayers& layers, Progress& progress,
                                         DebugLog& log);

} // namespace vardenix
