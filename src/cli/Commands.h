#pragma once

#include "cli/CommandLine.h"
#include "cli/Terminal.h"
#include "cli/TheaterFiles.h"
#include "files/FolderLock.h"
#include "platform/Clock.h"
#include "platform/DebugLog.h"
#include "platform/Processes.h"
#include "platform/Registry.h"
#include "program/ProgramState.h"

#include <string>
#include <vector>

namespace vardenix {

// What a command ends the process with.
enum ExitCode { ExitDone = 0, ExitFound = 1, ExitUsage = 2, ExitRunTimeError = 3 };

// What every command works with: the state, and a platform of which nobody is asked
// anything.
class CommandContext {
public:
    CommandContext();

    // Opens the theater that the options name, with progress on a terminal.
    void Open(const TheaterFiles& files);
    // Opens it for a command that writes: from the reading to the end of the command no
    // other program reads or writes the folders of the theater's files, nor that of
    // `file` where one is named; one that ends in a slash is a folder.
    void OpenToWrite(const TheaterFiles& files, const std::string& file = {});
    // Single values of the theater; with the catalogue, but for its pictures, or without.
    LevelReader OpenToLookUp(const TheaterFiles& files, bool catalogue);
    // The locks of OpenToWrite, with nothing opened.
    void LockToWrite(const TheaterFiles& files, const std::string& file);

    ProgramState State;
    TerminalDialogs Dialogs;
    TerminalProgress Progress;
    SystemClock Clock;
    SystemProcesses Processes;
    DebugLog Log{Clock};

private:
    FileRegistry registry_;
    Platform platform_;
    std::vector<FolderLock> locks_;
};

// Each adds one command, or one family of them, to all commands of the program.
void AddInfo(Command& all);
void AddCheck(Command& all);
void AddGet(Command& all);
void AddSet(Command& all);
void AddFill(Command& all);
void AddSaveAs(Command& all);
void AddElevation(Command& all);
void AddMap(Command& all);
void AddPreview(Command& all);
void AddRender(Command& all);
void AddRebuild(Command& all);
void AddRebuildElevation(Command& all);
void AddFarTile(Command& all);
void AddSettings(Command& all);
void AddBin(Command& all);
void AddFeatures(Command& all);
void AddSearch(Command& all);
void AddStatistics(Command& all);
void AddReplace(Command& all);
void AddTerrain(Command& all);
void AddRegion(Command& all);
void AddDerived(Command& all);
void AddUpdate(Command& all);
void AddCompletion(Command& all);
void AddRecovery(Command& all);
void AddSaves(Command& all);
void AddPlace(Command& all);
void AddHeights(Command& all);
void AddTiles(Command& all);

// Adds the features of files one after the other; error 53 and the like for the first
// that cannot be read.
void LoadFeatures(FeatureSet& features, const std::vector<std::string>& files);

// Whoever sets fields that the file cannot keep hears of it: `segments` of those that
// were reached into are all sea. Nothing for none.
void TellSharedSea(int32_t segments);

// Saves the level 2 that OpenToWrite has opened. Refused (error 5) where segments are
// missing from the file that was read, and, unless told to overwrite, where another
// program has changed it since.
void SaveLevel2(CommandContext& context, bool overwrite);
// Error 5 where level 2 has a gap, after a word on what to do about it: for commands that
// write over its files.
void RequireNoGap(CommandContext& context);

} // namespace vardenix
