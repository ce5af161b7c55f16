// elevation get and elevation set: the finest elevations, in a L0 or .elv file.
#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "platform/FileNames.h"
#include "platform/RuntimeError.h"
#include "theater/ElevationFiles.h"
#include "workspace/PostFields.h"

#include <CLI/Option.hpp>

#include <cstdio>
#include <memory>

namespace vardenix {

namespace {

struct ElevationOptions {
    explicit ElevationOptions(CLI::App& command) : Files(command) {}
    TheaterFiles Files;
    std::string File;
    int32_t X = 0;
    int32_t Y = 0;
    int16_t Feet = 0;
    bool AsJson = false;
};

// Adds what both commands are told; `run` gets the work that comes when the file is read.
template <typename Work>
std::shared_ptr<ElevationOptions> AddTo(CLI::App& command, CommandRun& run, Work work) {
    auto options = std::make_shared<ElevationOptions>(command);
    command.add_option("FILE", options->File, "A .l0 file, its .o0 beside it, or a .elv")
        ->required();
    AddPost(command, "X", options->X, "Y", options->Y);
    command.callback([options, &run, work] {
        if (KindOfElevationFile(options->File) == ElevationKind::None)
            throw CLI::ValidationError("FILE", options->File +
                                                   " ends neither in .l0 nor in .elv");
        run = [options, work](CommandContext& context) {
            context.Open(options->Files);
            work(context, *options);
            return ExitDone;
        };
    });
    return options;
}

// The layer's value at the given place, once the file is read. What the reader said on
// the way is told already.
int16_t& Load(CommandContext& context, const ElevationOptions& options) {
    Terrain& terrain = context.State.Terrain;
    const ElevationKind kind = KindOfElevationFile(options.File);
    if (!FileExists(options.File))
        throw RuntimeError(ErrorNumber::FileNotFound, options.File);
    if (!LoadElevationData(terrain, kind, options.File, context.Progress, context.Dialogs,
                           context.Log))
        throw RuntimeError(ErrorNumber::InvalidCall,
                           options.File + " was not read: a file of this theater has " +
                               std::to_string(4 * terrain.MapWidth) +
                               " elevations a side, and a L0 file its O0 file beside it");
    context.Progress.HideBar();
    ElevationLayer& layer = terrain.Elevations;
    // A save of a L0 file keeps whole segments only.
    RequireInside({"X", options.X, "Y", options.Y},
                  kind == ElevationKind::L0 ? SavedWidth(layer.EMapWidth)
                                            : layer.EMapWidth,
                  options.File);
    return layer.At(options.X + 1, options.Y + 1);
}

void Get(CommandContext& context, const ElevationOptions& options) {
    const int32_t feet = Load(context, options);
    PrintValues({{"x", options.X}, {"y", options.Y}, {"elevation", feet}},
                options.AsJson);
}

void Set(CommandContext& context, const ElevationOptions& options) {
    Load(context, options) = options.Feet;
    if (SaveElevationData(context.State.Terrain, ElevationKind::None, "",
                          context.Progress, context.Dialogs) != ElevationSave::Done)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           options.File + " was left as it is: its O0 file changed its "
                                          "size meanwhile; look who else writes it");
    context.Progress.HideBar();
    std::printf("1 elevation set in %s\n", NameOnDisk(options.File).c_str());
}

} // namespace

void AddElevation(CLI::App& app, CommandRun& run) {
    auto* command = app.add_subcommand(
        "elevation", "Tell or change one of the finest elevations, in a L0 or .elv file");
    command->require_subcommand(1);
    auto* get = command->add_subcommand("get", "Tell one elevation");
    const auto told = AddTo(*get, run, Get);
    get->add_flag("--json", told->AsJson, "Print JSON");
    auto* set = command->add_subcommand("set", "Change one elevation, and save");
    const auto changed = AddTo(*set, run, Set);
    set->add_option("FEET", changed->Feet, "Elevation")
        ->transform(FittingField<int16_t>())
        ->required();
}

} // namespace vardenix
