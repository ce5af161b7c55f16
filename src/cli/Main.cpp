// vardenix-cli: the capabilities of the editor for scripts and for machines with no
// display.
#include "cli/Commands.h"
#include "platform/RuntimeError.h"
#include "theater/ProgramVersion.h"

#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <cstdio>
#include <exception>
#include <new>

namespace vardenix {
namespace {

int Report(const RuntimeError& error) {
    std::fprintf(stderr, "%s\n", ReportText(error).c_str());
    return ExitRunTimeError;
}

int RunCommandLine(int count, char** arguments) {
    CLI::App app(
        "Opens, checks, edits and paints the terrain of a theater. X and Y count from 0, "
        "as the map shows them.",
        "vardenix-cli");
    app.set_version_flag("--version", ProgramVersion());
    app.require_subcommand(1);
    app.footer(
        "Exit codes: 0 done, 1 a check found something, 2 usage, 3 run-time error.");
    CommandRun run;
    AddInfo(app, run);
    AddCheck(app, run);
    AddGet(app, run);
    AddSet(app, run);
    AddFill(app, run);
    AddSaveAs(app, run);
    AddElevation(app, run);
    AddPreview(app, run);
    AddRender(app, run);
    AddSettings(app, run);
    try {
        app.parse(count, arguments);
        CommandContext context;
        return run(context);
    } catch (const CLI::Success& asked) {
        return app.exit(asked);
    } catch (const CLI::ParseError& error) {
        std::fprintf(stderr, "vardenix-cli: %s\nRun with --help for more information.\n",
                     error.what());
        return ExitUsage;
    } catch (const RuntimeError& error) {
        return Report(error);
    } catch (const std::bad_alloc&) {
        return Report(RuntimeError(ErrorNumber::OutOfMemory));
    }
}

// What is no error of ours is a fault of the program; it is told all the same.
int RunGuarded(int count, char** arguments) {
    try {
        return RunCommandLine(count, arguments);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vardenix-cli: %s\n", error.what());
        return ExitRunTimeError;
    }
}

} // namespace
} // namespace vardenix

int main(int count, char** arguments) { return vardenix::RunGuarded(count, arguments); }
