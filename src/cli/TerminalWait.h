#pragma once

#include "files/LockWait.h"

namespace vardenix {

// Says on the error stream for whom the program waits, once for each wait; a signal that
// ends the program ends the wait.
class TerminalWait : public LockWatcher {
public:
    TerminalWait() : before_(WatchLocks(this)) {}
    ~TerminalWait() override { WatchLocks(before_); }

    WaitAnswer Waiting(const LockWait& wait) override;
    void WaitIsOver() override { told_ = false; }

private:
    LockWatcher* before_;
    bool told_ = false;
};

} // namespace vardenix
