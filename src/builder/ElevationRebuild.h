#pragma once

#include "builder/ElevationMaster.h"
#include "builder/LevelRewriting.h"
#include "builder/TheaterRebuild.h"
#include "levels/Terrain.h"
#include "platform/DebugLog.h"
#include "platform/Dialogs.h"

#include <cstdint>

namespace vardenix {

// What an elevation rebuild works with; everything is borrowed.
struct ElevationRebuildParts {
    // Level 2 is read anew at the end, and heights that are loaded from the theater.L0 of
    // the run.
    vardenix::Terrain& Terrain;
    RebuildView& View;
    vardenix::Dialogs& Dialogs;
    DebugLog& Log;
};

// Replaces the elevations of all six levels on the disk by those of a master and of
// grids made of it by halving, and reads level 2 back. Tiles stay as they are. All files
// take their places together; on any error, and when the user stops it (32755), the
// theater has its old files and level 2 in memory is what it was.
//
// A master that cannot be read to its end is told of, and the user is asked whether to go
// on with the heights that were read. Errors otherwise: 5 for a gap in level 2, 61 with
// the bytes needed, 53, 62, 9 for a missing level 3, 4 or 5, and the system's refusals.
RebuildReport RebuildElevations(const ElevationRebuildParts& parts,
                                const ElevationMaster& master, Downsampling method,
                                const RebuildOptions& options);

// The writers of levels 0 to 2 and of 3 to 5. Level 2 is the pair that is open. Its
// blocks are never shared, in 0 and 1 those that have the base tile alone and no
// elevation are. A missing level 0 or 1 is made of the level 2 posts in memory. In the
// far levels blocks are shared by the level 2 posts as they are in memory, whatever the
// new elevations: those of a shared block are those of the first.
void SaveLevelElevations(const LevelParts& parts, const ElevationGrids& grids,
                         int32_t level, bool notExists);
void SaveFarLevelElevations(const LevelParts& parts, const ElevationGrids& grids,
                            int32_t level, bool notExists);

// Reads LFilename and OFilename back, a step of both bars for each row of blocks.
void ReloadLFile(Terrain& terrain, RebuildView& view, DebugLog& log);

} // namespace vardenix
