// rebuild, rebuild-elevation and far-tile: the other levels of a theater, its far tiles
// and its elevations.
#include "builder/ElevationRebuild.h"
#include "builder/FartilePicture.h"
#include "builder/FartileShape.h"
#include "builder/TheaterRebuild.h"
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "cli/SavedPicture.h"
#include "cli/TerminalRebuild.h"
#include "files/FileNames.h"
#include "levels/ElevationFiles.h"
#include "levels/RebuiltFiles.h"
#include "texts/RuntimeError.h"

#include <memory>

namespace vardenix {

namespace {

struct RebuildArguments {
    explicit RebuildArguments(Command& command) : Files(command) {}
    TheaterFiles Files;
    RebuildOptions Options;
    bool Overwrite = false;
};

struct ElevationArguments {
    explicit ElevationArguments(Command& command) : Files(command) {}
    TheaterFiles Files;
    std::string File;
    Downsampling Method = Downsampling::Rms;
    RebuildOptions Options;
    bool Overwrite = false;
};

struct FarTileArguments {
    explicit FarTileArguments(Command& command) : Files(command) {}
    TheaterFiles Files;
    int32_t Index = 0;
    std::string Out;
    bool Night = false;
};

void PrintReport(const RebuildReport& report) { Print(TextOfReport(report)); }

// With what --overwrite means to the savers.
template <typename Arguments>
RebuildOptions OptionsOf(const Arguments& arguments) {
    RebuildOptions options = arguments.Options;
    options.IfChanged = IfChangedOf(arguments.Overwrite);
    return options;
}

int Rebuild(CommandContext& context, const RebuildArguments& arguments) {
    context.Open(arguments.Files);
    context.Progress.HideBar();
    Fartiles fartiles;
    TerminalRebuild view;
    PrintReport(RebuildTheater(
        {context.State.Terrain, context.State.Catalogue, view, context.Log},
        OptionsOf(arguments), fartiles));
    return ExitDone;
}

int RebuildFromMaster(CommandContext& context, const ElevationArguments& arguments) {
    context.Open(arguments.Files);
    context.Progress.HideBar();
    Terrain& terrain = context.State.Terrain;
    const ElevationMaster master{KindOfElevationFile(arguments.File), arguments.File};
    if (!FitsTheater(master, terrain.MapWidth))
        throw RuntimeError(
            ErrorNumber::InvalidCall,
            arguments.File + " does not fit: a master of this theater has " +
                std::to_string(4 * terrain.MapWidth) + " elevations a side");
    RequireNoGap(context);
    TerminalRebuild view;
    PrintReport(RebuildElevations({terrain, view, context.Dialogs, context.Log}, master,
                                  arguments.Method, OptionsOf(arguments)));
    return ExitDone;
}

int SaveFarTile(CommandContext& context, const FarTileArguments& arguments) {
    context.Open(arguments.Files);
    context.Progress.HideBar();
    const std::string folder = TextureFolderOf(context.State.Catalogue);
    Raster picture = ReadFartile(
        arguments.Night ? NightContainer(folder) : DayContainer(folder), arguments.Index);
    SavePicture(picture.View(), arguments.Out, true);
    return ExitDone;
}

} // namespace

void AddRebuild(Command& all) {
    Command command = all.AddCommand(
        "rebuild", "Derive the other levels from level 2, and the far tiles");
    const auto arguments = std::make_shared<RebuildArguments>(command);
    const Argument far = command.Flag("--far", arguments->Options.MakeL3,
                                      "Levels 3 to 5 and the far tiles too");
    command
        .Number("--far-size", arguments->Options.FarSize,
                "Pixels along the edge of a far tile", {5, LargestFarSize})
        .Needs(far);
    command.Flag("--changed", arguments->Options.OnlyChanged,
                 "Leave files alone that would come out the same");
    AddOverwrite(command, arguments->Overwrite);
    command.Run(
        [arguments](CommandContext& context) { return Rebuild(context, *arguments); });
}

void AddRebuildElevation(Command& all) {
    Command command = all.AddCommand("rebuild-elevation",
                                     "Replace the elevations of all levels by a master");
    const auto arguments = std::make_shared<ElevationArguments>(command);
    command.Text("FILE", arguments->File, "A .l0 file, its .o0 beside it, or a .elv")
        .Required();
    command
        .Choice("--method", arguments->Method,
                Choices<Downsampling>{{"rms", Downsampling::Rms},
                                      {"mean", Downsampling::SimpleMean},
                                      {"max", Downsampling::Max}},
                "How four elevations become one")
        .Required();
    command.Flag("--changed", arguments->Options.OnlyChanged,
                 "Leave files alone that would come out the same");
    command.Flag("--accept-short", arguments->Options.AcceptShort,
                 "Take heights that FILE is too short for as 0");
    AddOverwrite(command, arguments->Overwrite);
    command.Check([arguments] {
        if (KindOfElevationFile(arguments->File) == ElevationKind::None)
            throw UsageError("FILE",
                             arguments->File + " ends neither in .l0 nor in .elv");
    });
    command.Run([arguments](CommandContext& context) {
        return RebuildFromMaster(context, *arguments);
    });
}

void AddFarTile(Command& all) {
    Command command = all.AddCommand("far-tile", "Save one far tile as a picture");
    const auto arguments = std::make_shared<FarTileArguments>(command);
    command
        .Number("T", arguments->Index, "Index of the far tile, from 0",
                {0, FittingField<int32_t>.Max})
        .Required();
    command.Output("OUT", arguments->Out, "PNG, BMP, JPEG or Targa file, by its name")
        .Required();
    command.Flag("--night", arguments->Night, "The far tile by night");
    command.Check([arguments] { RequirePictureName(arguments->Out); });
    command.Run([arguments](CommandContext& context) {
        return SaveFarTile(context, *arguments);
    });
}

} // namespace vardenix
