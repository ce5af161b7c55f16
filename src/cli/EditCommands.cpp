// set, fill and save-as: level 2 with other posts, or under another name.
#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "files/FileNames.h"
#include "levels/TerrainStore.h"
#include "program/MissingSegments.h"
#include "texts/Cutting.h"
#include "texts/RuntimeError.h"
#include "workspace/PostFields.h"

#include <memory>
#include <optional>

namespace vardenix {

namespace {

struct EditOptions {
    explicit EditOptions(Command& command) : Files(command) {}

    GivenPost Corner(const char* nameX, const char* nameY) const {
        return {nameX, Posts.X1, nameY, Posts.Y1};
    }
    GivenPost OppositeCorner(const char* nameX, const char* nameY) const {
        return {nameX, Posts.X2, nameY, Posts.Y2};
    }

    TheaterFiles Files;
    PostBox Posts;
    PostChange Change;
    bool Overwrite = false;
};

void AddFields(Command& command, PostChange& change) {
    const std::string group = "Fields";
    // A theater with a negative tile number cannot be opened.
    command
        .Number("--tile", change.TileOffset, "Tile number",
                {0, FittingField<int32_t>.Max})
        .Group(group);
    command.Number("--elevation", change.Elevation, "Feet").Group(group);
    command.Number("--palette", change.Palette, "Entry of the palette of theater.map")
        .Group(group);
    command.Number("--x1", change.X1, "X1").Group(group);
    command.Number("--x2", change.X2, "X2").Group(group);
}

void RequireAField(const PostChange& change) {
    if (change.Empty())
        throw UsageError(
            "nothing to change: give at least one of --tile, --elevation, --palette, "
            "--x1 and --x2");
}

void SaveFilled(CommandContext& context, const EditOptions& options) {
    Terrain& terrain = context.State.Terrain;
    const int64_t count = FillPosts(terrain, options.Posts, options.Change);
    if (options.Change.Palette || options.Change.X1 || options.Change.X2)
        TellSharedSea(SeaSegments(terrain, options.Posts));
    SaveLevel2(context, options.Overwrite);
    Print(std::to_string(count) + (count == 1 ? " post" : " posts") + " set in " +
          NameOnDisk(terrain.LFilename));
}

void RequireFolderOf(const std::string& path) {
    const std::string folder = UpToLastSlash(path);
    if (!folder.empty() && !FolderExists(folder))
        throw RuntimeError(ErrorNumber::PathNotFound,
                           folder + " is not there; make the folder first");
}

} // namespace

void TellSharedSea(int32_t segments) {
    if (segments > 0)
        Tell("Segments that are all sea, here " + std::to_string(segments) +
             ", share one block of the file: palette, X1 and X2 of the terrain's first "
             "one stand for all.");
}

void RequireNoGap(CommandContext& context) {
    Terrain& terrain = context.State.Terrain;
    if (!MaySaveOverGap(terrain, context.Dialogs))
        throw RuntimeError(ErrorNumber::InvalidCall,
                           terrain.LFilename +
                               " was left as it is; save-as under another name first, "
                               "or bring back a backup");
}

void SaveLevel2(CommandContext& context, bool overwrite) {
    RequireNoGap(context);
    Terrain& terrain = context.State.Terrain;
    SaveTheater(terrain, "", context.Progress, IfChangedOf(overwrite));
}

void AddSet(Command& all) {
    Command command = all.AddCommand("set", "Change fields of one post, and save");
    const auto options = std::make_shared<EditOptions>(command);
    AddPost(command, "X", options->Posts.X1, "Y", options->Posts.Y1);
    AddFields(command, options->Change);
    AddOverwrite(command, options->Overwrite);
    command.Check([options] {
        RequireAField(options->Change);
        RequireInside(options->Corner("X", "Y"), options->Files, SavedWidth,
                      options->Files.L2File());
    });
    command.Run([options](CommandContext& context) {
        options->Posts.X2 = options->Posts.X1;
        options->Posts.Y2 = options->Posts.Y1;
        context.OpenToWrite(options->Files);
        const Terrain& terrain = context.State.Terrain;
        RequireInside(options->Corner("X", "Y"), SavedWidth(terrain.MapWidth),
                      terrain.LFilename);
        SaveFilled(context, *options);
        return ExitDone;
    });
}

void AddFill(Command& all) {
    Command command = all.AddCommand(
        "fill", "Change fields of a rectangle of posts, both corners included, and save");
    const auto options = std::make_shared<EditOptions>(command);
    AddPost(command, "X1", options->Posts.X1, "Y1", options->Posts.Y1);
    AddPost(command, "X2", options->Posts.X2, "Y2", options->Posts.Y2);
    AddFields(command, options->Change);
    AddOverwrite(command, options->Overwrite);
    command.Check([options] {
        RequireAField(options->Change);
        RequireInside(options->Corner("X1", "Y1"), options->Files, SavedWidth,
                      options->Files.L2File());
        RequireInside(options->OppositeCorner("X2", "Y2"), options->Files, SavedWidth,
                      options->Files.L2File());
    });
    command.Run([options](CommandContext& context) {
        context.OpenToWrite(options->Files);
        const Terrain& terrain = context.State.Terrain;
        const int32_t width = SavedWidth(terrain.MapWidth);
        RequireInside(options->Corner("X1", "Y1"), width, terrain.LFilename);
        RequireInside(options->OppositeCorner("X2", "Y2"), width, terrain.LFilename);
        SaveFilled(context, *options);
        return ExitDone;
    });
}

void AddSaveAs(Command& all) {
    struct Options {
        explicit Options(Command& command) : Files(command) {}
        TheaterFiles Files;
        std::string Path;
        bool Overwrite = false;
    };
    Command command = all.AddCommand(
        "save-as", "Write level 2 under another name, and its O2 file beside it");
    const auto options = std::make_shared<Options>(command);
    command
        .Text("PATH", options->Path,
              "The L2 file; its name is made upper case and must end in .L2")
        .Required();
    AddOverwrite(command, options->Overwrite);
    command.Check([options] {
        if (!UpperCase(options->Path).ends_with(".L2"))
            throw UsageError("PATH", options->Path + " does not end in .L2");
    });
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        RequireFolderOf(options->Path);
        Terrain& terrain = context.State.Terrain;
        const LevelPair pair = PairForSaving(terrain, options->Path);
        SaveTheater(terrain, pair, context.Progress, IfChangedOf(options->Overwrite));
        Print(pair.L);
        Print(pair.O);
        return ExitDone;
    });
}

} // namespace vardenix
