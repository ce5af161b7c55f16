#pragma once

#include "grounds/LearnedLand.h"
#include "levels/Terrain.h"
#include "mapview/MapRenderer.h"

#include <functional>

namespace vardenix {

// Red lines between posts whose tiles do not fit, above the map.
class SeamMarks : public MarkLayer {
public:
    // Borrowed; null where nothing could be learned.
    using LandSource = std::function<const LearnedLand*()>;
    SeamMarks(const Terrain& terrain, LandSource land)
        : terrain_(terrain), land_(std::move(land)) {}

    // Whether they are drawn; not at first.
    bool Shown = false;

    void DrawMarks(DrawingSurface& surface, const MapView& view) override;

private:
    const Terrain& terrain_;
    LandSource land_;
};

} // namespace vardenix
