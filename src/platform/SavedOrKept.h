#pragma once

#include "files/FileIdentity.h"

#include <functional>

namespace vardenix {

class Dialogs;

// Runs `save`; when another program has changed what it would write over, the user is
// asked whether it is to be written all the same. False when it is not. Other errors go
// through.
bool SavedOrKept(Dialogs& dialogs, const std::function<void(IfChanged)>& save);

} // namespace vardenix
