#include "cli/Commands.h"

#include "cli/Printing.h"
#include "platform/OwnFolders.h"
#include "platform/RuntimeError.h"
#include "theater/StartUp.h"

namespace vardenix {

CommandContext::CommandContext()
    : registry_(ProgramFolder(), ProgramFolder(), {}), platform_{Dialogs, registry_,
                                                                 Clock, Processes} {
    // The editor's own colours and fonts. A user who may not read them, as one that runs
    // with the home of another, can look at a theater all the same.
    try {
        BeginProgram(State, OwnFilesFolder(ProgramFolder()), ProgramFolder());
    } catch (const RuntimeError& error) {
        Tell("The settings are those of a first start: " + error.Detail());
    }
}

void CommandContext::Open(const TheaterFiles& files) {
    files.Open(State, Progress, platform_, Log);
}

} // namespace vardenix
