#pragma once

#include "builder/RebuildView.h"
#include "builder/RewrittenFile.h"
#include "levels/LevelGeometry.h"
#include "levels/RebuiltFiles.h"
#include "levels/Terrain.h"
#include "levels/TerrainStore.h"
#include "texts/RuntimeError.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>

namespace vardenix {

// What the writers of levels work with; everything is borrowed.
struct LevelParts {
    const vardenix::Terrain& Terrain; // level 2 as it is in memory
    std::string LxFolder;             // with a slash at its end
    RebuildFiles& Files;
    RebuildView& View;
};

// Whether the L file of a level is not there. Error 53 for one that is there without its
// O file; 62 for a pair of level 0 or 1 of which both are empty, with what helps.
bool LevelNotExists(const std::string& folder, int32_t level);

// Error 9, what a far level that does not exist ends in: its posts could be made of
// nothing.
RuntimeError MissingFarLevel(const std::string& folder, int32_t level);

// Changes a block in place, the one at column x of row y, both from 0, and says whether
// it is blank: all blank blocks of a level share the one that was met first. Posts are
// all zero where the level did not exist.
using MakeBlock = std::function<bool(int32_t y, int32_t x, std::span<TerrainPost>)>;

// Stages a pair with every block remade; what stands behind the entries of an old O file
// stays. Both bars count the rows of blocks, and the user can stop it after each. Nothing
// is staged for a level without a whole block. Errors of reading (53, 62) and staging;
// 32755 when stopped.
void RewriteLevel(const LevelParts& parts, const LevelPair& pair,
                  const LevelGeometry& geometry, bool notExists, const MakeBlock& make);

} // namespace vardenix
