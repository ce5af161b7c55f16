#pragma once

namespace vardenix {

// What the rebuild window asks of the windows that level 2 is edited in. app/ fills it
// in.
class RebuildVerbs {
public:
    RebuildVerbs() = default;
    RebuildVerbs(const RebuildVerbs&) = delete;
    RebuildVerbs& operator=(const RebuildVerbs&) = delete;
    virtual ~RebuildVerbs() = default;

    // Level 2 has changes that are not on the disk.
    virtual bool L2Unsaved() const = 0;
    // Saves level 2 to its own files. False when that failed, which the user was told.
    virtual bool SaveL2() = 0;
    // Level 2 has been read anew: it is what the disk has, and what was done to its posts
    // before cannot be undone any more. The map shows it.
    virtual void L2Reloaded() = 0;
    // The window goes and the workspace comes back.
    virtual void LeaveRebuild() = 0;
};

} // namespace vardenix
