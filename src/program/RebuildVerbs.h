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

    // Saves level 2 to its own files. False when that failed, which the user was told.
    virtual bool SaveL2() = 0;
    // The heights that are loaded, to theirs, likewise.
    virtual bool SaveHeights() = 0;
    // Level 2, and the heights where `heights` is set, have been read anew, while that is
    // being recorded: what was done to single posts of them before is no step any more.
    virtual void ForgetSteps(bool heights) = 0;
    // It is recorded: they are what the disk has. The map shows it.
    virtual void ReadAnew(bool heights) = 0;
    // The window goes and the workspace comes back.
    virtual void LeaveRebuild() = 0;
};

} // namespace vardenix
