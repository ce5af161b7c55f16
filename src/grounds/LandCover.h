#pragma once

#include "grounds/TerrainBrush.h"

#include <cstdint>
#include <span>
#include <vector>

namespace vardenix {

// Posts that are to have the ground of a tile, each named once; they lie on the terrain.
struct CoveredPosts {
    int32_t Tile = 0; // its number
    std::vector<RowSpan> Posts;
};

// Paints several grounds as one change, the widest first, so that the borders of narrow
// ones are not painted over: each is joined to the others as PaintGround joins it.
// Nothing is changed yet. The same errors.
BrushResult PaintCover(const LearnedLand& land, const Terrain& terrain,
                       std::span<const CoveredPosts> cover,
                       const BrushOptions& options = {});

} // namespace vardenix
