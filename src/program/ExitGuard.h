#pragma once

#include "platform/Dialogs.h"

#include <string>

namespace vardenix {

// Which objects have changes that are not on the disk.
struct DirtyFlags {
    bool BIN = false;
    bool L2 = false;
    bool L0ELV = false;
    bool MAP = false;
};

// The question for the flags that are up; empty when none is.
std::string ExitQuestion(const DirtyFlags& flags);

// Whether the program may end. Asks only when something is unsaved; window positions are
// to be stored before, whatever the answer.
bool ConfirmExit(const DirtyFlags& flags, Dialogs& dialogs);

} // namespace vardenix
