#pragma once

#include "platform/Dialogs.h"
#include "theater/Terrain.h"

#include <string>

namespace vardenix {

// "VXUndo.tmp" in the user's own folder below the system's for temporary files, which
// nobody else can enter: all posts of level 2 as they lie in
// memory, 9 bytes each in serial order, and nothing else. There is one; it outlives the
// run, and fits any theater of its size.

// Writes the point, over an older one, which stands until the new one is whole on the
// disk. Errors 61, 70, 75 of writing; 70 also where
// somebody else's folder is in the place of the user's own.
void CreateRestorePoint(const Terrain& terrain, const std::string& systemTempPath);

enum class Restored {
    Done,
    NoPoint,   // there is none yet
    WrongSize, // it belongs to a theater of another size; nothing was changed
};

// Puts the point's posts in the place of all posts of level 2. The errors of reading (53,
// 70, 75) change nothing.
Restored RestoreFromPoint(Terrain& terrain, const std::string& systemTempPath);

// Asked before a point is restored that was made before tile numbers changed: its posts
// would show other tiles now. True when the user wants it all the same.
bool MayRestoreOldNumbers(Dialogs& dialogs);

// What the user is told of it; empty when all is done.
std::string RestoreMessage(Restored result);

} // namespace vardenix
