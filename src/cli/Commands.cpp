#include "cli/Commands.h"

#include "theater/StartUp.h"

namespace vardenix {

CommandContext::CommandContext()
    : registry_(OwnFilesFolder(ProgramFolder()), {}), platform_{Dialogs, registry_, Clock,
                                                                Processes} {
    // The editor's own colours and fonts.
    BeginProgram(State, OwnFilesFolder(ProgramFolder()));
}

void CommandContext::Open(const TheaterFiles& files) {
    files.Open(State, Progress, platform_, Log);
}

} // namespace vardenix
