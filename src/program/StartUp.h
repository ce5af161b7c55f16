#pragma once

#include "platform/Platform.h"
#include "program/ProgramState.h"
#include "program/TheaterOpening.h"

#include <functional>
#include <string>
#include <vector>

namespace vardenix {

// A folder with a backslash behind it, unless it ends in a slash already as the root of a
// drive does.
std::string AppPathOf(const std::string& folder);

// What stands in front of everything else: the flags, the two places of the program, the
// settings. `ownFolder` is where it writes; a user without one gets the settings of a
// first start. Nothing is made.
void BeginProgram(ProgramState& state, const std::string& ownFolder,
                  const std::string& programFolder);

// Asks once whether to check for new versions, and shows where, when that was never
// decided (a stored value above 1).
void DecideUpdateCheck(Configuration& configuration, Dialogs& dialogs);

// The title of the start-up window.
std::string StartUpCaption();

// SystemTempPath: this user's own folder below the system's for temporary files. Error 70
// when others are in its place.
void FindSystemTempPath(ProgramFolders& folders);

// Empties "Temp" and "UpdateTemp" under AppPath of everything that no living run of the
// program holds, takes this run's name there (ProgramState::Run) and makes TempFolder;
// UpdateTempFolder is made by whoever needs it. A link that is found instead goes, and
// what it leads to stays. The system's refusals go through.
void PrepareFolders(ProgramState& state);

// The entries of Combo1, UTF-8: "MANUALLY OPEN PATH", then the theaters of an install
// that offers them.
std::vector<std::string> TheaterChoices(const Discovery& discovery);

// The stored theater index where it is one of the entries, else 0, which is then stored.
int StoredTheaterIndex(Configuration& configuration, size_t entries);

// The paths of an entry, which becomes the stored one: those of its theater, or for entry
// 0 the last paths that were given by hand.
TheaterPaths ChooseTheater(int index, const Discovery& discovery,
                           Configuration& configuration);

// What ending the program does to the windows and the process; app/ fills it in.
class ProgramEnd {
public:
    ProgramEnd() = default;
    ProgramEnd(const ProgramEnd&) = delete;
    ProgramEnd& operator=(const ProgramEnd&) = delete;
    virtual ~ProgramEnd() = default;

    virtual void UnloadWindows() = 0;
    // The message loop ends; the companion library goes with the process.
    virtual void EndProcess() = 0;
};

// The single way out. A command line that is not empty is started when the windows have
// gone. What cannot be deleted or written is told in a box and stops nothing: the program
// ends.
void ExitProgram(ProgramState& state, const std::string& commandLine,
                 const Platform& platform, DebugLog& log, ProgramEnd& end);

} // namespace vardenix
