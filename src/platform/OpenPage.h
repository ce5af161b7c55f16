#pragma once

#include <string>

namespace vardenix {

class Dialogs;
class Processes;

// Opens an address for a click on a link; that nothing can open it is told, and the
// program goes on.
void OpenPage(Processes& processes, Dialogs& dialogs, const std::string& address);

} // namespace vardenix
