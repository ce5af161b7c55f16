#pragma once

#include "loader/UpdateLog.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"
#include "updater/UpdateList.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vardenix {

// The program that finishes an update, in the program's folder.
constexpr const char* LoaderName = "Loader";

// What an update's list makes of the program's folder, as far as it can be told before
// anything is changed.
struct MinorUpdate {
    // By the name that the file has, or gets, in the folder: the file in UpdateTempFolder
    // whose bytes it gets, or nothing for one that is deleted.
    std::map<std::string, std::string> Files;
    // The lines of Loader.lst.
    std::vector<std::string> Deferred;
};

// Goes through the list: asks, tells and shows what it says, and notes what is to be
// done. A file that cannot be written, since it is in use, gets its new bytes beside it,
// with a "$" behind the name, for the loader. Nothing is changed. `showText` shows a file
// and comes back when it is closed.
MinorUpdate PlanMinorUpdate(const std::vector<UpdateListEntry>& entries,
                            const ProgramFolders& folders, Dialogs& dialogs,
                            const std::function<void(const std::string&)>& showText,
                            UpdateLog& log);

// Carries it out, with the version in the registry, and writes Loader.lst when something
// is left for the loader: then the old files are kept until that has finished. All or
// nothing: when it throws, the folder is what it was.
void CarryOut(const MinorUpdate& update, const std::string& updateVersion,
              const ProgramFolders& folders, Registry& registry, UpdateLog& log);

} // namespace vardenix
