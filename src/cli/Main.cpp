// vardenix-cli: the capabilities of the editor for scripts and for machines with no
// display.
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "cli/TerminalWait.h"
#include "files/Transaction.h"
#include "platform/Signals.h"
#include "program/ProgramVersion.h"
#include "texts/RuntimeError.h"

#include <algorithm>
#include <csignal>
#include <exception>
#include <new>
#include <string_view>
#include <vector>

namespace vardenix {
namespace {

int Report(const RuntimeError& error) {
    Tell(ReportText(error));
    return ExitRunTimeError;
}

int RunParsed(const ParsedLine& parsed) {
    if (!parsed.Run) {
        Print(parsed.Told);
        return ExitDone;
    }
    CommandContext context;
    return parsed.Run(context);
}

// What adds commands, and the names of those, by which a line calls them.
struct Commands {
    std::vector<std::string_view> Names;
    void (*Add)(Command&);
};

std::vector<Commands> AllCommands() {
    return {{{"info"}, AddInfo},
            {{"check"}, AddCheck},
            {{"get"}, AddGet},
            {{"set"}, AddSet},
            {{"fill"}, AddFill},
            {{"save-as"}, AddSaveAs},
            {{"elevation"}, AddElevation},
            {{"map"}, AddMap},
            {{"preview"}, AddPreview},
            {{"render"}, AddRender},
            {{"rebuild"}, AddRebuild},
            {{"rebuild-elevation"}, AddRebuildElevation},
            {{"far-tile"}, AddFarTile},
            {{"settings"}, AddSettings},
            {{"bin"}, AddBin},
            {{"features"}, AddFeatures},
            {{"search"}, AddSearch},
            {{"stats"}, AddStatistics},
            {{"replace"}, AddReplace},
            {{"terrain"}, AddTerrain},
            {{"region"}, AddRegion},
            {{"mea", "tc", "tm"}, AddDerived},
            {{"update"}, AddUpdate},
            {{"recovery"}, AddRecovery}};
}

// Declaring a command takes time. Relies on a line's first word deciding which command is
// meant: only that one is declared. Help and faults tell of all.
void AddCommandsFor(const std::vector<std::string>& line, Command& all) {
    const auto commands = AllCommands();
    const auto meant =
        std::find_if(commands.begin(), commands.end(), [&line](const Commands& each) {
            return !line.empty() && std::find(each.Names.begin(), each.Names.end(),
                                              line.front()) != each.Names.end();
        });
    if (meant != commands.end())
        return meant->Add(all);
    for (const Commands& each : commands)
        each.Add(all);
}

int RunCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line(
        "vardenix-cli", ProgramVersion(),
        "Opens, checks, edits and paints the terrain of a theater. X and Y count from 0, "
        "as the map shows them.",
        "Exit codes: 0 done, 1 a check found something or a search nothing, 2 usage, 3 "
        "run-time error.");
    Command all = line.Root();
    AddCommandsFor(arguments, all);
    try {
        const int code = RunParsed(line.Parse(arguments));
        FinishPrinting();
        return code;
    } catch (const UsageError& error) {
        Tell(std::string("vardenix-cli: ") + error.what() +
             "\nRun with --help for more information.");
        return ExitUsage;
    } catch (const ChangedFileError& error) {
        Tell(ReportText(error) + "\nWith --overwrite it is written all the same.");
        return ExitRunTimeError;
    } catch (const RuntimeError& error) {
        return Report(error);
    } catch (const std::bad_alloc&) {
        return Report(RuntimeError(ErrorNumber::OutOfMemory));
    }
}

// What is no error of ours is a fault of the program; it is told all the same.
int RunGuarded(int count, char** arguments) {
    try {
        HearEndSignals();
        const TerminalWait wait;
        return RunCommandLine({arguments + 1, arguments + count});
    } catch (const std::exception& error) {
        Tell(std::string("vardenix-cli: ") + error.what());
        return ExitRunTimeError;
    }
}

} // namespace
} // namespace vardenix

int main(int count, char** arguments) {
    vardenix::HoldStandardStreams();
    vardenix::MakeFileSizeLimitAnError();
    const int code = vardenix::RunGuarded(count, arguments);
    // What was staged is taken away; whoever started the program sees how it ended.
    if (vardenix::EndSignalHeard() != 0)
        std::raise(vardenix::EndSignalHeard());
    return code;
}
