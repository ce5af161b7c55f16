#pragma once

#include "platform/Dialogs.h"
#include "platform/windows/ColorButton.h"

namespace vardenix {

// The colour dialog, beginning at the button's colour, which takes the chosen one. False
// when it was cancelled.
bool AskColor(ColorButton& button, Dialogs& dialogs);

} // namespace vardenix
