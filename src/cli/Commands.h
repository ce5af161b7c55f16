#pragma once

#include "cli/Terminal.h"
#include "cli/TheaterFiles.h"
#include "platform/Clock.h"
#include "platform/Processes.h"
#include "platform/Registry.h"
#include "theater/DebugLog.h"
#include "theater/ProgramState.h"

#include <CLI/App.hpp>

#include <functional>

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

    ProgramState State;
    TerminalDialogs Dialogs;
    TerminalProgress Progress;
    SystemClock Clock;
    SystemProcesses Processes;
    DebugLog Log{Clock};

private:
    FileRegistry registry_;
    Platform platform_;
};

// Each adds one command; the work is done by what it leaves in `run`, which returns an
// exit code.
using CommandRun = std::function<int(CommandContext&)>;
void AddInfo(CLI::App& app, CommandRun& run);
void AddCheck(CLI::App& app, CommandRun& run);
void AddGet(CLI::App& app, CommandRun& run);
void AddSet(CLI::App& app, CommandRun& run);
void AddFill(CLI::App& app, CommandRun& run);
void AddSaveAs(CLI::App& app, CommandRun& run);
void AddElevation(CLI::App& app, CommandRun& run);
void AddPreview(CLI::App& app, CommandRun& run);
void AddRender(CLI::App& app, CommandRun& run);
void AddSettings(CLI::App& app, CommandRun& run);

} // namespace vardenix
