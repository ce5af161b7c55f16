#include "cli/Commands.h"

#include "cli/Printing.h"
#include "files/FileNames.h"
#include "files/OwnFolders.h"
#include "files/StagedFile.h"
#include "program/StartUp.h"
#include "texts/RuntimeError.h"

#include <filesystem>

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

LevelReader CommandContext::OpenToLookUp(const TheaterFiles& files, bool catalogue) {
    return files.OpenToLookUp(State, Dialogs, Log, catalogue);
}

void CommandContext::OpenToWrite(const TheaterFiles& files, const std::string& file) {
    LockToWrite(files, file);
    Open(files);
}

void CommandContext::LockToWrite(const TheaterFiles& files, const std::string& file) {
    std::vector<std::filesystem::path> written;
    for (const std::string& path : files.WrittenFiles())
        written.push_back(TargetOf(path));
    if (file.ends_with('/') || file.ends_with('\\'))
        written.push_back(RealPath(file, PathKind::Folder) / "");
    else if (!file.empty())
        written.push_back(TargetOf(file));
    locks_ = LockFoldersOf(written, FolderLock::Exclusive);
}

} // namespace vardenix
