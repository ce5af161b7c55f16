#pragma once

#include "levels/Terrain.h"
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "program/ExitGuard.h"

#include <optional>
#include <string>

namespace vardenix {

// "VXUndo.tmp" in the user's own folder below the system's for temporary files, which
// nobody else can enter: all posts of level 2 as they lie in
// memory, 9 bytes each in serial order, and nothing else. There is one; it outlives the
// run, and fits any theater of its size. "VXUndo.txt" beside it tells where it comes
// from: the time in its first line, the path of the L2 file in the rest.

// Writes the point, over an older one, which stands until the new one is whole on the
// disk. Errors 61, 70, 75 of writing; 70 also where
// somebody else's folder is in the place of the user's own.
void CreateRestorePoint(const Terrain& terrain, const LocalTime& now,
                        const std::string& systemTempPath);

struct PointOrigin {
    std::string Time;   // "21 Nov 2026 - 15:05"
    std::string L2File; // as the disk had it
};

// Nothing without a point, and for one that does not tell. What keeps the system from
// looking counts as nothing.
std::optional<PointOrigin> OriginOfPoint(const std::string& systemTempPath);

// The tool tip of the button that restores.
std::string RestoreTip(const std::optional<PointOrigin>& origin);

enum class Restored {
    Done,
    Unchanged, // the posts are those of the point already
    NoPoint,   // there is none yet
    WrongSize, // it belongs to a theater of another size; nothing was changed
};

// Puts the point's posts in the place of all posts of level 2. The errors of reading (53,
// 70, 75) change nothing.
Restored RestoreFromPoint(Terrain& terrain, const std::string& systemTempPath);

// Asked before the point of another theater is restored onto that of `l2File`. True when
// the user wants it all the same; not asked where the theater is the same, or not known.
bool MayRestoreOtherTheater(const std::optional<PointOrigin>& origin,
                            const std::string& l2File, Dialogs& dialogs);

// Asked before a point is restored that was made before tile numbers changed: its posts
// would show other tiles now. True when the user wants it all the same.
bool MayRestoreOldNumbers(Dialogs& dialogs);

// What the user is told of it in a box; empty when all is done.
std::string RestoreMessage(Restored result);

// Asked on the way out while level 2 differs from its file and nothing is marked, as a
// restore leaves it, or a save under another name.
WayOut MayLeaveRestored(Dialogs& dialogs);
WayOut MayLeaveCopied(Dialogs& dialogs);

} // namespace vardenix
