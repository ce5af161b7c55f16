#pragma once

#include "platform/Progress.h"
#include "services/Raster.h"
#include "theater/DebugLog.h"
#include "theater/ProgramState.h"
#include "workspace/MapView.h"

namespace vardenix {

// One view of the open theater, the pixels that the map window would show. Pictures that
// cannot be read show "NoTile.jpg" of AppPath.
Raster PaintMap(ProgramState& state, const MapView& view, Progress& progress,
                DebugLog& log);

} // namespace vardenix
