#pragma once

#include "levels/Terrain.h"
#include "mapview/MapRenderer.h"
#include "program/SearchResults.h"

namespace vardenix {

// Frames round the hits of a search that lie in view, above the map. Everything is
// borrowed.
class HitFrames : public MarkLayer {
public:
    HitFrames(const SearchResults& hits, const Terrain& terrain)
        : hits_(hits), terrain_(terrain) {}

    // Whether they are drawn; not at first.
    bool Shown = false;

    void DrawMarks(DrawingSurface& surface, const MapView& view) override;

private:
    const SearchResults& hits_;
    const Terrain& terrain_;
};

} // namespace vardenix
