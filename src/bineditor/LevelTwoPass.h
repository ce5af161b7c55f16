#pragma once

#include "bineditor/SetsAndTiles.h"
#include "catalogue/TileRenumbering.h"
#include "levels/Terrain.h"
#include "platform/Progress.h"

namespace vardenix {

// Gives every post of level 2, whole segments only, the number that its own has become,
// in place; nothing else of a post changes. The bar moves once per row of segments. True
// when a post's number has really changed. Never fails.
bool RenumberLevelTwo(Terrain& terrain, const TileRenumbering& numbers,
                      const BarShare& share, Progress& progress);

} // namespace vardenix
