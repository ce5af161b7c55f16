#pragma once

#include "platform/Dialogs.h"
#include "program/DirtyFlags.h"

#include <string>

namespace vardenix {

// The question for the flags that are up; empty when none is.
std::string ExitQuestion(const DirtyFlags& flags);

// What the user wants of the way out.
enum class WayOut { Stay, Lose, SaveAll };

// Asks only when something is unsaved, else there is nothing to lose; window positions
// are to be stored before, whatever the answer.
WayOut ConfirmExit(const DirtyFlags& flags, Dialogs& dialogs);
// The answer to a box of YesNoSaveAll.
WayOut WayOutOf(BoxAnswer answer);

} // namespace vardenix
