// set, fill and save-as: level 2 with other posts, or under another name.
#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "platform/FileNames.h"
#include "platform/RuntimeError.h"
#include "theater/TerrainStore.h"
#include "workspace/PostFields.h"

#include <CLI/Option.hpp>

#include <cstdio>
#include <memory>
#include <optional>

namespace vardenix {

namespace {

struct EditOptions {
    explicit EditOptions(CLI::App& command) : Files(command) {}

    GivenPost Corner(const char* nameX, const char* nameY) const {
        return {nameX, From0.X1, nameY, From0.Y1};
    }
    GivenPost OppositeCorner(const char* nameX, const char* nameY) const {
        return {nameX, From0.X2, nameY, From0.Y2};
    }

    TheaterFiles Files;
    PostRectangle From0{};
    PostChange Change;
};

void AddFields(CLI::App& command, PostChange& change) {
    const auto add =
        [&command]<typename Field>(const char* name, std::optional<Field>& field,
                                   const char* help, const CLI::Validator& numbers) {
            command.add_option(name, field, help)->transform(numbers)->group("Fields");
        };
    // A theater with a negative tile number cannot be opened.
    add("--tile", change.TileOffset, "Tile number",
        WholeNumber(0, std::numeric_limits<int32_t>::max()));
    add("--elevation", change.Elevation, "Feet", FittingField<int16_t>());
    add("--palette", change.Palette, "Entry of the palette of theater.map",
        FittingField<uint8_t>());
    add("--x1", change.X1, "X1", FittingField<uint8_t>());
    add("--x2", change.X2, "X2", FittingField<uint8_t>());
}

void RequireAField(const PostChange& change) {
    if (change.Empty())
        throw CLI::ValidationError(
            "nothing to change: give at least one of --tile, --elevation, --palette, "
            "--x1 and --x2");
}

// Whoever sets fields that the file cannot keep should hear of it.
void TellSharedSea(const Terrain& terrain, const PostRectangle& posts,
                   const PostChange& change) {
    if (!change.Palette && !change.X1 && !change.X2)
        return;
    const int32_t sea = SeaSegments(terrain, posts);
    if (sea > 0)
        std::fprintf(stderr,
                     "Segments that are all sea, here %d, share one block of the file: "
                     "palette, X1 and X2 of the terrain's first one stand for all.\n",
                     sea);
}

void SaveFilled(CommandContext& context, const EditOptions& options) {
    Terrain& terrain = context.State.Terrain;
    const PostRectangle posts{options.From0.X1 + 1, options.From0.Y1 + 1,
                              options.From0.X2 + 1, options.From0.Y2 + 1};
    const int64_t count = FillPosts(terrain, posts, options.Change);
    TellSharedSea(terrain, posts, options.Change);
    SaveTheater(terrain, "", context.Progress);
    std::printf("%lld %s set in %s\n", static_cast<long long>(count),
                count == 1 ? "post" : "posts", NameOnDisk(terrain.LFilename).c_str());
}

void RequireFolderOf(const std::string& path) {
    const std::string folder = UpToLastSlash(path);
    if (!folder.empty() && !FolderExists(folder))
        throw RuntimeError(ErrorNumber::PathNotFound,
                           folder + " is not there; make the folder first");
}

} // namespace

void AddSet(CLI::App& app, CommandRun& run) {
    auto* command = app.add_subcommand("set", "Change fields of one post, and save");
    const auto options = std::make_shared<EditOptions>(*command);
    AddPost(*command, "X", options->From0.X1, "Y", options->From0.Y1);
    AddFields(*command, options->Change);
    command->callback([options, &run] {
        RequireAField(options->Change);
        options->From0.X2 = options->From0.X1;
        options->From0.Y2 = options->From0.Y1;
        run = [options](CommandContext& context) {
            context.Open(options->Files);
            const Terrain& terrain = context.State.Terrain;
            RequireInside(options->Corner("X", "Y"), SavedWidth(terrain.MapWidth),
                          terrain.LFilename);
            SaveFilled(context, *options);
            return ExitDone;
        };
    });
}

void AddFill(CLI::App& app, CommandRun& run) {
    auto* command = app.add_subcommand(
        "fill", "Change fields of a rectangle of posts, both corners included, and save");
    const auto options = std::make_shared<EditOptions>(*command);
    AddPost(*command, "X1", options->From0.X1, "Y1", options->From0.Y1);
    AddPost(*command, "X2", options->From0.X2, "Y2", options->From0.Y2);
    AddFields(*command, options->Change);
    command->callback([options, &run] {
        RequireAField(options->Change);
        run = [options](CommandContext& context) {
            context.Open(options->Files);
            const Terrain& terrain = context.State.Terrain;
            const int32_t width = SavedWidth(terrain.MapWidth);
            RequireInside(options->Corner("X1", "Y1"), width, terrain.LFilename);
            RequireInside(options->OppositeCorner("X2", "Y2"), width, terrain.LFilename);
            SaveFilled(context, *options);
            return ExitDone;
        };
    });
}

void AddSaveAs(CLI::App& app, CommandRun& run) {
    struct Options {
        explicit Options(CLI::App& command) : Files(command) {}
        TheaterFiles Files;
        std::string Path;
    };
    auto* command = app.add_subcommand(
        "save-as", "Write level 2 under another name, and its O2 file beside it");
    const auto options = std::make_shared<Options>(*command);
    command
        ->add_option("PATH", options->Path,
                     "The L2 file; its name is made upper case and must end in .L2")
        ->required();
    command->callback([options, &run] {
        // An empty path would be the theater's own.
        if (options->Path.empty())
            throw CLI::ValidationError("PATH", "name the L2 file to write");
        // The next opening of the pair without the "x" would clear it away.
        if (IsUnfinishedName(options->Path))
            throw CLI::ValidationError(
                "PATH", options->Path + " is what an unfinished save is called; choose a "
                                        "name that ends in .L2");
        run = [options](CommandContext& context) {
            context.Open(options->Files);
            RequireFolderOf(options->Path);
            const Terrain& terrain = context.State.Terrain;
            const LevelPair pair = PairForSaving(terrain, options->Path);
            SaveTheater(terrain, pair, context.Progress);
            std::printf("%s\n%s\n", pair.L.c_str(), pair.O.c_str());
            return ExitDone;
        };
    });
}

} // namespace vardenix
