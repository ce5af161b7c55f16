#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "mapview/MapLayout.h"
#include "program/Configuration.h"

#include <cstdint>

namespace vardenix {

// Where a view of `viewPosts` posts a side shows land: round the segment that lies
// nearest to the middle of all land, among those with the most of it. Land is what lies
// above 0, or has a tile of the catalogue that is no water. (0, 0) where there is none.
PostPlace FirstView(const Terrain& terrain, const TileLookup& lookup, int32_t viewPosts);

// Before the first look: settings that no run has stored yet begin there; all others stay
// as they are.
void BeginWhereLandIs(Configuration& settings, const Terrain& terrain,
                      const TileLookup& lookup, int32_t viewPosts);

} // namespace vardenix
