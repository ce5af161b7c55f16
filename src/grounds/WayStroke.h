#pragma once

#include "grounds/TerrainBrush.h"

#include <cstdint>
#include <optional>
#include <span>

namespace vardenix {

enum class WayKind : uint8_t { River, Road, Rail };

// The kind of way on a tile, by its number; a river before a road before a railroad,
// nothing for a tile without one.
std::optional<WayKind> WayOf(const LearnedLand& land, int32_t tile);

// Leads a way of a sample tile's kind from post to post, and joins it to the ways that
// come from beside it. Each post of the chain shares a side with the one before it; what
// lies off the terrain is passed over. A post for which the catalogue has no tile with a
// way over just these sides keeps what stands, as an end does where there is no end tile;
// other ways stay what they are. Nothing is changed yet. Error 5 where the land could not
// be learned, or the sample has no way.
BrushResult PaintWay(const LearnedLand& land, const Terrain& terrain,
                     std::span<const PostPlace> chain, int32_t sample);

} // namespace vardenix
