#include "cli/Commands.h"

#include "platform/OwnFolders.h"
#include "theater/StartUp.h"

namespace vardenix {

CommandContext::CommandContext()
    : registry_(ProgramFolder(), ProgramFolder(), {}), platform_{Dialogs, registry_, Clock,
                                                                 Processes} {
    // The editor's own colours and fonts.
    BeginProgram(State, OwnFilesFolder(ProgramFolder()), ProgramFolder());
}

void CommandContext::Open(const TheaterFiles& files) {
    files.Open(State, Progress, platform_, Log);
}

} // namespace vardenix
