#include "cli/TerminalWait.h"

#include "cli/Printing.h"
#include "platform/Signals.h"

namespace vardenix {

WaitAnswer TerminalWait::Waiting(const LockWait& wait) {
    if (!told_)
        Tell("vardenix-cli: " + TextOfWait(wait) + "...");
    told_ = true;
    return EndSignalHeard() != 0 ? WaitAnswer::GiveUp : WaitAnswer::GoOn;
}

} // namespace vardenix
