#pragma once

#include "pictures/Raster.h"
#include "program/Configuration.h"

#include <vector>

namespace vardenix {

// Pixels, without the frame that the desktop adds.
struct WindowSize {
    int32_t Width = 0;
    int32_t Height = 0;
};

// Where the windows of the workspace stand on a first start: places with the frame, sizes
// without. Pixels.
struct FirstLayout {
    PixelRect Panel;
    PixelRect Map;
    PixelRect Preview;
    PixelRect Palette;
};

// Whether no run has ever stored where the windows stand: all places 0, nothing visible.
bool NeverPlaced(const Configuration& settings);

// Side by side within `room`, none over another: the panel, the preview under it where
// there is room and else at the right of the map or under it, whichever leaves more of
// the map; map and preview are cut to what is left, the panel is not. A screen too small
// for all three lets the map overlap. The tile palette gets the free place that shows
// most of it, cut to that; where none has room for a few tiles it stands in the lower
// right corner over the map, half as wide as the room and a third as high at most.
//
// `frame` is what the desktop's frame adds across and down, both sides together.
constexpr WindowSize UsualFrame{10, 28}; // where it is not known yet
FirstLayout LayOutFirst(const PixelRect& room, WindowSize panel, WindowSize map,
                        WindowSize preview, WindowSize palette,
                        WindowSize frame = UsualFrame);

// Where they stand on a later start: `stored` has the corners of the last run and the
// sizes that the windows would have by themselves, since only the palette's is stored.
// Map and preview where a first start puts them have the sizes that it gives them.
// Otherwise each has its own size, but is cut at its corner where it would leave the room
// and, pulled back into it, lie over a window that it was beside.
FirstLayout LayOutStored(const PixelRect& room, const FirstLayout& stored,
                         WindowSize frame = UsualFrame);

// Where a window that has never been placed covers least of those that stand there: the
// place nearest to the lower right corner of all that are as good. All with their frames.
PixelRect LeastCovering(const PixelRect& room, WindowSize window,
                        const std::vector<PixelRect>& standing);

} // namespace vardenix
