// tiles export and tiles import: level 2 as a raster of tile numbers, and tiles from such
// rasters or from land cover.
#include "cli/Arguments.h"
#include "cli/Brushing.h"
#include "cli/Commands.h"
#include "cli/GivenPlace.h"
#include "cli/Printing.h"
#include "cli/ScratchFolder.h"
#include "grounds/LandCover.h"
#include "texts/RuntimeError.h"
#include "workspace/PostFields.h"
#include "world/ClassTable.h"
#include "world/TilesIn.h"
#include "world/WorldHelper.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>

namespace vardenix {

namespace {

struct TileOptions {
    explicit TileOptions(Command& command) : Files(command) {}

    PostBox Box(int32_t width) const {
        if (Corners.empty())
            return {0, 0, width - 1, width - 1};
        return Ordered({Corners[0], Corners[1], Corners[2], Corners[3]});
    }

    TheaterFiles Files;
    std::string Map;
    std::string Table;
    std::vector<int32_t> Corners;
    bool Stretch = false;
    std::optional<Resampling> How;
    std::string MapSystem;
    std::optional<double> NoData;
    bool LeaveUnknown = false;
    BrushOptions Brush;
    bool AsJson = false;
    bool DryRun = false;
    bool Overwrite = false;
};

RasterWish::Where WhereLies(const CommandContext& context, const PostBox& box) {
    const TheaterPlace place = PlaceOfTheater(context);
    return {place.System, EdgesOf(place, box)};
}

int ExportTileNumbers(CommandContext& context, const TileOptions& options) {
    const Terrain& terrain = context.State.Terrain;
    const int32_t width = terrain.MapWidth;
    std::vector<int32_t> numbers;
    numbers.reserve(static_cast<size_t>(width) * static_cast<size_t>(width));
    for (const TerrainPost& post : terrain.LxArr.Values())
        numbers.push_back(int32_t{post.TileOffset});
    const ScratchFolder scratch;
    OwnWorldHelper(scratch.Path())
        .WriteNumbers(options.Map, numbers, width,
                      WhereLies(context, {0, 0, width - 1, width - 1}));
    context.Progress.HideBar();
    Print(std::to_string(numbers.size()) + " tile numbers written to " +
          NameOnDisk(options.Map));
    return ExitDone;
}

WorldNumbers NumbersOver(const CommandContext& context, const TileOptions& options,
                         const PostBox& box) {
    RasterWish wish;
    wish.Columns = box.X2 - box.X1 + 1;
    wish.Rows = box.Y2 - box.Y1 + 1;
    wish.How = options.How.value_or(options.Table.empty() ? Resampling::Nearest
                                                          : Resampling::Most);
    wish.MapSystem = options.MapSystem;
    wish.NoData = options.NoData;
    if (!options.Stretch)
        wish.Place = WhereLies(context, box);
    const ScratchFolder scratch;
    return OwnWorldHelper(scratch.Path()).ReadNumbers(options.Map, wish);
}

void RequireKnownTile(const TileLookup& lookup, const TileOptions& options,
                      const ClassPosts& posts) {
    if (posts.Rule.How != ClassRule::Way::Leave && !IsTile(lookup, posts.Rule.Tile))
        throw RuntimeError(ErrorNumber::InvalidCall,
                           options.Table + ": the catalogue has no tile " +
                               std::to_string(posts.Rule.Tile) + ", which class " +
                               std::to_string(posts.Class) + " is to have");
}

std::vector<ClassPosts> ClassesOf(const ProgramState& state, const TileOptions& options,
                                  const WorldNumbers& numbers, PostPlace corner) {
    std::vector<int32_t> unknown;
    std::vector<ClassPosts> classes =
        PostsByClass(numbers, corner, ReadClassTable(options.Table), unknown);
    if (!unknown.empty() && !options.LeaveUnknown)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           options.Table + " does not tell of these classes of " +
                               options.Map + ": " + SomeOf(unknown) +
                               "; add them, or give --leave-unknown");
    for (const ClassPosts& posts : classes)
        RequireKnownTile(state.Catalogue.Lookup, options, posts);
    return classes;
}

// What the brush makes of the classes that are to have a ground, and behind it the posts
// of those that are to have one tile.
BrushResult PaintClasses(CommandContext& context, const TileOptions& options,
                         const std::vector<ClassPosts>& classes) {
    Terrain& terrain = context.State.Terrain;
    std::map<int32_t, CoveredPosts> grounds;
    for (const ClassPosts& posts : classes)
        if (posts.Rule.How == ClassRule::Way::Ground) {
            CoveredPosts& covered = grounds[posts.Rule.Tile];
            covered.Tile = posts.Rule.Tile;
            covered.Posts.insert(covered.Posts.end(), posts.Posts.begin(),
                                 posts.Posts.end());
        }
    std::vector<CoveredPosts> cover;
    cover.reserve(grounds.size());
    for (auto& [tile, posts] : grounds)
        cover.push_back(std::move(posts));
    BrushResult result;
    if (!cover.empty())
        result = PaintCover(LearnLand(context.State), terrain, cover, options.Brush);
    WriteNew(terrain.LxArr, KeptRuns(result.Runs, terrain.MapWidth));
    for (const ClassPosts& posts : classes)
        if (posts.Rule.How == ClassRule::Way::Tile)
            WriteNew(terrain.LxArr, RunsOf<int32_t>(
                                        posts.Posts, terrain.MapWidth,
                                        [&terrain](int32_t serial) -> int32_t {
                                            return terrain.LxArr(serial).TileOffset;
                                        },
                                        [&posts](int32_t) { return posts.Rule.Tile; }));
    return result;
}

std::vector<int32_t> TilesOf(const Terrain& terrain) {
    std::vector<int32_t> tiles;
    tiles.reserve(terrain.LxArr.Values().size());
    for (const TerrainPost& post : terrain.LxArr.Values())
        tiles.push_back(int32_t{post.TileOffset});
    return tiles;
}

int64_t CountChanged(const std::vector<int32_t>& before, const Terrain& terrain) {
    int64_t count = 0;
    auto tile = before.begin();
    for (const TerrainPost& post : terrain.LxArr.Values())
        count += int32_t{post.TileOffset} == *tile++ ? 0 : 1;
    return count;
}

int ImportCover(CommandContext& context, const TileOptions& options,
                const WorldNumbers& numbers, PostPlace corner) {
    const std::vector<ClassPosts> classes =
        ClassesOf(context.State, options, numbers, corner);
    const std::vector<int32_t> before = TilesOf(context.State.Terrain);
    const BrushResult result = PaintClasses(context, options, classes);
    const int64_t changed = CountChanged(before, context.State.Terrain);
    if (changed > 0 && !options.DryRun)
        SaveLevel2(context, options.Overwrite);
    context.Progress.HideBar();
    JsonObject values;
    for (const ClassPosts& posts : classes) {
        int64_t count = 0;
        for (const RowSpan& span : posts.Posts)
            count += span.X2 - span.X1 + 1;
        values.emplace_back("posts of class " + std::to_string(posts.Class), count);
    }
    values.emplace_back("posts changed", changed);
    values.emplace_back("seams left open", result.OpenSeams);
    values.emplace_back("posts without a fitting tile", result.Unfilled);
    PrintValues(values, options.AsJson);
    return ExitDone;
}

int ImportTiles(CommandContext& context, const TileOptions& options,
                const WorldNumbers& numbers, PostPlace corner) {
    Terrain& terrain = context.State.Terrain;
    RequireTiles(numbers, corner, terrain, context.State.Catalogue.Lookup);
    const std::vector<TileRun> runs = RunsOfTiles(numbers, corner, terrain);
    if (!runs.empty() && !options.DryRun) {
        WriteNew(terrain.LxArr, runs);
        SaveLevel2(context, options.Overwrite);
    }
    context.Progress.HideBar();
    PrintValues({{"posts changed", CountOf<int32_t>(runs)}}, options.AsJson);
    return ExitDone;
}

int ImportAny(CommandContext& context, const TileOptions& options) {
    const PostBox box = options.Box(SavedWidth(context.State.Terrain.MapWidth));
    const WorldNumbers numbers = NumbersOver(context, options, box);
    if (std::ranges::all_of(numbers.Values, [](int32_t number) {
            return number == WorldNumbers::None;
        })) {
        Tell(options.Map + " has nothing where the theater lies; look at \"place show\"");
        return ExitFound;
    }
    return options.Table.empty()
               ? ImportTiles(context, options, numbers, {box.X1, box.Y1})
               : ImportCover(context, options, numbers, {box.X1, box.Y1});
}

void AddTilesExport(Command& family) {
    Command command =
        family.AddCommand("export", "Write the tile numbers of level 2 as a map");
    const auto options = std::make_shared<TileOptions>(command);
    command
        .Output("FILE", options->Map,
                "GeoTIFF (.tif, tells where it lies), .asc, or PNG of 16 bits (.png, for "
                "numbers up to 65535)")
        .Required();
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        return ExportTileNumbers(context, *options);
    });
}

void AddWhereFrom(Command& command, const std::shared_ptr<TileOptions>& options) {
    command.Text("FILE", options->Map, "GeoTIFF, ASC, IMG or PNG of whole numbers")
        .Required();
    command.NumberRow("--in", options->Corners, 4,
                      "Only the rectangle of posts X1 Y1 X2 Y2");
    command.Flag("--stretch", options->Stretch,
                 "Stretch the map over the rectangle, wherever it lies");
    command.Choice(
        "--resample", options->How,
        Choices<Resampling>{{"nearest", Resampling::Nearest}, {"most", Resampling::Most}},
        "The number in the middle of a post, or the one that most of the post "
        "has; most with --table, else nearest");
    command.Text("--map-system", options->MapSystem,
                 "Reference system of a map that does not tell its own");
    command.Real("--no-data", options->NoData,
                 "A number that means none, where the map does not tell it",
                 {-1e10, 1e10});
    command.Check([options] {
        for (size_t i = 0; i < options->Corners.size(); i += 2)
            RequireInside({"--in", options->Corners[i], "--in", options->Corners[i + 1]},
                          options->Files, SavedWidth, options->Files.L2File());
    });
}

void AddTilesImport(Command& family) {
    Command command = family.AddCommand(
        "import",
        "Take tiles from a map of tile numbers or of land cover, and save; exit "
        "1 if it has nothing where the theater lies");
    const auto options = std::make_shared<TileOptions>(command);
    AddWhereFrom(command, options);
    const Argument table = command.Text(
        "--table", options->Table,
        "The map is land cover, and this file has a line for each of its classes: its "
        "number and \"ground TILE\", \"tile NUMBER\" or \"leave\"");
    command
        .Flag("--leave-unknown", options->LeaveUnknown,
              "Leave posts of classes alone that the table does not tell of")
        .Needs(table);
    command
        .Flag("--keep-ways", options->Brush.KeepWays,
              "Leave posts with a river, road or railroad out of the grounds")
        .Needs(table);
    command
        .Number("--seed", options->Brush.Seed,
                "Another draw among tiles that are as good")
        .Needs(table);
    command.Flag("--dry-run", options->DryRun,
                 "Tell what would change, and save nothing");
    command.Flag("--json", options->AsJson, "Print JSON");
    AddOverwrite(command, options->Overwrite);
    command.Run([options](CommandContext& context) {
        context.OpenToWrite(options->Files);
        return ImportAny(context, *options);
    });
}

} // namespace

void AddTiles(Command& all) {
    Command family =
        all.AddCommand("tiles", "Tile numbers as maps, and tiles from land cover");
    AddTilesExport(family);
    AddTilesImport(family);
}

} // namespace vardenix
