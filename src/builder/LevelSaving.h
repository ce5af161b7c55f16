#pragma once

#include "builder/Fartiles.h"
#include "builder/LevelRewriting.h"

#include <cstdint>

namespace vardenix {

// Stages the pair of level 0 or 1: each post gets the tile of the level 2 post that it
// lies in, raised by the level's base. An existing level keeps all else; one that does
// not exist takes whole posts of level 2. Blocks with the base tile alone and no
// elevation share one. Errors of reading and staging; 32755 when the user stops it.
void SaveFineLevel(const LevelParts& parts, int32_t level, bool notExists);

// Gives the block at column x of row y, from 0, of level 0 or 1 the tiles of level 2, or
// whole posts of it. True when it is blank.
bool MakeFineBlock(const Terrain& terrain, const LevelGeometry& geometry, int32_t y,
                   int32_t x, bool wholePosts, std::span<TerrainPost> block);

// Stages the pair of level 3, 4 or 5: each post gets the index of its far tile, which is
// added to `fartiles`, and keeps all else. All posts of a level that lie over tile 0
// alone share a far tile, entered where the first of them is met; no others do. Blocks
// over level 2 posts without tile or elevation share one, whatever their own elevations.
// Error 9 when the level does not exist and has a block to be made: there is nothing that
// its posts could be made of.
void SaveFarLevel(const LevelParts& parts, Fartiles& fartiles, int32_t level,
                  bool notExists);

} // namespace vardenix
