#pragma once

#include "levels/HeightPicture.h"
#include "mapview/MapRenderer.h"
#include "world/HeightsPlan.h"

namespace vardenix {

// Heights that would come, as shaded relief in the colours of heights and of the sea,
// above the map, which shows through where nothing would come.
class HeightsGhost : public MarkLayer {
public:
    // Both are borrowed.
    HeightsGhost(const Terrain& terrain, const Configuration& settings)
        : terrain_(terrain), settings_(settings) {}

    // Borrowed until the next; null for none.
    void Show(const HeightsPlan* plan) { plan_ = plan; }

    void DrawMarks(DrawingSurface& surface, const MapView& view) override;

private:
    const Terrain& terrain_;
    const Configuration& settings_;
    const HeightsPlan* plan_ = nullptr;
};

} // namespace vardenix
