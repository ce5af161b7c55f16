#pragma once

#include "mapview/MapPatch.h"
#include "mapview/MapSources.h"

#include <cstdint>

namespace vardenix {

// Paints one view of the terrain from nothing, the same for the map window, the
// screenshot and the command line. From bottom to top: tiles, MAP colour, brightness over
// both, relief, contour lines, areas and paths, night tiles, then heights and grid post
// by post, segments, the export box, features. No picture that is missing or broken stops
// it.
class MapRenderer {
public:
    MapRenderer(const MapSources& sources, const MapTools& tools)
        : sources_(sources), tools_(tools) {}

    // `picture2` has view.PictureWidth() by view.PictureHeight() pixels. False when
    // AbortPaint ended it: what was painted so far is shown then and nothing later in the
    // order is drawn. A wish from before the repaint does not count.
    bool RefreshPicArray(const MapView& view, DrawingSurface& picture2, MapScreen& screen,
                         const MapLayers& layers);

    // Paints what a change of some posts of level 2, counted from 0, can have altered, as
    // the whole repaint would have it: on `small`, which has been given room for `patch`
    // (PatchOf). There is no bar, and it cannot be ended.
    void RepaintPatch(const MapView& view, DrawingSurface& small, const MapPatch& patch,
                      const MapLayers& layers);
    const MapSources& Sources() const { return sources_; }
    // Of the last whole repaint: heights that were wider than their cell, and left out.
    int32_t HeightsLeftOut() const { return heightsLeftOut_; }

private:
    MapSources sources_;
    MapTools tools_;
    int32_t heightsLeftOut_ = 0;
};

} // namespace vardenix
