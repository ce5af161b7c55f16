#pragma once

#include "builder/ElevationMaster.h"
#include "builder/TheaterRebuild.h"
#include "levels/Terrain.h"

namespace vardenix {

// What an elevation rebuild means to unsaved changes of the heights that are loaded for
// editing.
enum class HeightsInRun {
    Untouched,
    LeftOut,  // their file is the master, which is read from the disk
    Replaced, // their file is the theater.L0 that the run writes
};
HeightsInRun HeightsIn(const Terrain& terrain, const ElevationMaster& master);

// The heights that are loaded, round a run that may write their file. Made before it.
class LoadedHeights {
public:
    // Borrowed.
    explicit LoadedHeights(Terrain& terrain);

    // Their file is one that the run has written.
    bool RewrittenBy(const RebuildReport& report) const;
    // The run has kept the heights of their file, if it has written that: the next save
    // goes over it as over the one that was read. Where another program had changed it
    // before the run, it still asks.
    void Follow(const RebuildReport& report);

private:
    Terrain& terrain_;
    bool asRead_; // their files, before the run
};

} // namespace vardenix
