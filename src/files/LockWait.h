#pragma once

#include "files/LockHolders.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vardenix {

// A folder that others hold, while it is waited for.
struct LockWait {
    std::filesystem::path Folder;
    std::vector<LockHolder> Holders; // none where the system does not tell
    // The folder is this user's, and only readers of other users hold it: its owner need
    // not wait for them to save.
    bool MayPassOver = false;
};

enum class WaitAnswer { GoOn, PassOver, GiveUp };

// Sees every wait that takes longer than a moment, and may end it.
class LockWatcher {
public:
    LockWatcher() = default;
    LockWatcher(const LockWatcher&) = delete;
    LockWatcher& operator=(const LockWatcher&) = delete;
    virtual ~LockWatcher() = default;

    // Again and again, some twenty times a second. PassOver counts where it may be.
    virtual WaitAnswer Waiting(const LockWait& wait) = 0;
    // However it ended; not before Waiting was called.
    virtual void WaitIsOver() = 0;
};

// Borrowed until another is set; null for nobody. Gives back who watched before.
LockWatcher* WatchLocks(LockWatcher* watcher);

// "Waiting for vardenix (process 123 of max), which reads or saves the files of /folder".
std::string TextOfWait(const LockWait& wait);

} // namespace vardenix
