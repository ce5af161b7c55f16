#pragma once

#include "levels/Terrain.h"
#include "platform/Dialogs.h"
#include "program/MapFileRecord.h"

#include <string>

namespace vardenix {

// A pair that was cut, by a full disk or a copy that was broken off, opens like any
// other: what it does not hold is 0. Nothing but the size that theater.map states and the
// blocks that are not there tell of it, and the next save would make the loss permanent.

// What the pair of a theater just opened lacks of the whole. The width of theater.map
// counts segments; files that give it in posts are known by its being the pair's own.
SegmentGap GapOf(const Terrain& terrain, const MapFileRecord& record);

// Remembers the gap in the terrain, and tells of it when there is one.
void TellGap(Terrain& terrain, const MapFileRecord& record, Dialogs& dialogs);

// Before level 2 is written over the files that it was read from: asks when they had a
// gap, and remembers a Yes. False when they are to stay as they are.
bool MaySaveOverGap(Terrain& terrain, Dialogs& dialogs);

} // namespace vardenix
