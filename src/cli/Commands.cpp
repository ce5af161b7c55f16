#include "cli/Commands.h"

#include "platform/StagedFile.h"
#include "theater/StartUp.h"

#include <filesystem>

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

void CommandContext::OpenToWrite(const TheaterFiles& files, const std::string& file) {
    std::vector<std::filesystem::path> written;
    for (const std::string& path : files.WrittenFiles())
        written.push_back(TargetOf(path));
    if (!file.empty())
        written.push_back(TargetOf(file));
    locks_ = LockFoldersOf(written, FolderLock::Exclusive);
    Open(files);
}

} // namespace vardenix
