#pragma once

#include "platform/Dialogs.h"

#include <string>

namespace vardenix {

// The files that are the user's own, in a program's folder that is going to be deleted:
// copied to a folder of their choice, unless they do not want that. A folder that goes as
// well is refused, and files that are there already are replaced after a question; until
// all of it is answered, the first question comes again. The system's refusals go
// through, with all that was there still there.
void SaveUsersFiles(const std::string& programFolder, Dialogs& dialogs);

} // namespace vardenix
