// vardenix-cli: the capabilities of the editor for scripts and for machines with no
// display.
#include "cli/CommandTable.h"
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "cli/TerminalWait.h"
#include "files/Transaction.h"
#include "platform/Signals.h"
#include "program/ProgramVersion.h"
#include "texts/RuntimeError.h"

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

int RunCommandLine(const std::vector<std::string>& arguments) {
    CommandLine line("vardenix-cli", ProgramVersion(), AboutCommands(), CommandsFooter());
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
