// elevation get and elevation set: the finest elevations, in a L0 or .elv file.
#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "files/FileNames.h"
#include "levels/ElevationFiles.h"
#include "texts/RuntimeError.h"
#include "workspace/PostFields.h"

#include <memory>

namespace vardenix {

namespace {

struct ElevationOptions {
    explicit ElevationOptions(Command& command) : Files(command) {}
    TheaterFiles Files;
    std::string File;
    int32_t X = 0;
    int32_t Y = 0;
    int16_t Feet = 0;
    bool AsJson = false;
    bool Overwrite = false;
    bool Writes = false;
};

// That it is there, and the post in it. A save of a L0 file keeps whole segments only.
void RequireFile(const CommandContext& context, const ElevationOptions& options) {
    if (!FileExists(options.File))
        throw RuntimeError(ErrorNumber::FileNotFound, ShownPath(options.File));
    const int32_t width = 4 * context.State.Terrain.MapWidth;
    const bool isL0 = KindOfElevationFile(options.File) == ElevationKind::L0;
    RequireInside({"X", options.X, "Y", options.Y}, isL0 ? SavedWidth(width) : width,
                  options.File);
}

// Adds what both commands are told; `work` comes when that is found to be right.
template <typename Work>
std::shared_ptr<ElevationOptions> AddTo(Command& command, Work work) {
    auto options = std::make_shared<ElevationOptions>(command);
    command.Text("FILE", options->File, "A .l0 file, its .o0 beside it, or a .elv")
        .Required();
    AddPost(command, "X", options->X, "Y", options->Y);
    command.Check([options] {
        if (KindOfElevationFile(options->File) == ElevationKind::None)
            throw UsageError("FILE", options->File + " ends neither in .l0 nor in .elv");
        RequireInside(
            {"X", options->X, "Y", options->Y}, options->Files,
            [](int32_t width) { return 4 * width; }, options->File);
    });
    command.Run([options, work](CommandContext& context) {
        if (options->Writes)
            context.LockToWrite(options->Files, options->File);
        context.OpenToLookUp(options->Files, false);
        MendAndTell({options->File});
        RequireFile(context, *options);
        work(context, *options);
        return ExitDone;
    });
    return options;
}

[[noreturn]] void ThrowNotRead(const CommandContext& context,
                               const ElevationOptions& options) {
    throw RuntimeError(ErrorNumber::InvalidCall,
                       options.File + " was not read: a file of this theater has " +
                           std::to_string(4 * context.State.Terrain.MapWidth) +
                           " elevations a side, and a L0 file its O0 file beside it");
}

void Get(CommandContext& context, const ElevationOptions& options) {
    const auto feet = LookUpElevation(
        context.State.Terrain, KindOfElevationFile(options.File), options.File,
        options.X + 1, options.Y + 1, context.Dialogs, context.Log);
    if (!feet)
        ThrowNotRead(context, options);
    PrintValues({{"x", options.X}, {"y", options.Y}, {"elevation", int32_t{*feet}}},
                options.AsJson);
}

void Set(CommandContext& context, const ElevationOptions& options) {
    const auto saved = SetElevation(
        context.State.Terrain, KindOfElevationFile(options.File), options.File,
        options.X + 1, options.Y + 1, options.Feet, context.Progress, context.Dialogs,
        context.Log, IfChangedOf(options.Overwrite));
    if (!saved)
        ThrowNotRead(context, options);
    if (*saved != ElevationSave::Done)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           options.File + " was left as it is: its O0 file changed its "
                                          "size meanwhile; look who else writes it");
    context.Progress.HideBar();
    Print("1 elevation set in " + NameOnDisk(options.File));
}

} // namespace

void AddElevation(Command& all) {
    Command family = all.AddCommand(
        "elevation", "Tell or change one of the finest elevations, in a L0 or .elv file");
    Command get = family.AddCommand("get", "Tell one elevation");
    const auto told = AddTo(get, Get);
    get.Flag("--json", told->AsJson, "Print JSON");
    Command set = family.AddCommand("set", "Change one elevation, and save");
    const auto changed = AddTo(set, Set);
    changed->Writes = true;
    AddOverwrite(set, changed->Overwrite);
    set.Number("FEET", changed->Feet, "Elevation").Required();
}

} // namespace vardenix
