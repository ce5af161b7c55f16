#pragma once

namespace vardenix {

class Workspace;

// Saves every paper that differs from the disk: level 2, also where only the log knows of
// it, catalogue and theater.map as one, then the heights. True when none differs any
// more; else the user knows why.
bool SaveAll(Workspace& workspace);

// Whether there is anything to be saved.
bool AnyDiffers(const Workspace& workspace);

} // namespace vardenix
