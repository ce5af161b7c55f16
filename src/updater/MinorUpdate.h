#pragma once

#include "files/KeptFiles.h"
#include "loader/UpdateLog.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"
#include "updater/UpdateList.h"

#include <functional>
#include <map>
#include <optional>
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
    // What Update.log says of it once it is done, in the list's order.
    std::vector<std::string> Done;
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
// is left for the loader: then the old files are kept until that has finished, and what
// is given back keeps other programs from putting them back; it is to be held until this
// program ends. Nothing is given back when all is done. All or nothing: when it throws,
// the folder is what it was.
[[nodiscard]] std::optional<KeptFiles> CarryOut(const MinorUpdate& update,
                                                const std::string& updateVersion,
                                                const ProgramFolders& folders,
                                                Registry& registry, UpdateLog& log);

} // namespace vardenix
