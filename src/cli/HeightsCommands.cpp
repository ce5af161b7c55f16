// heights import and heights export: elevations from maps of the real world, and as maps.
#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/GivenPlace.h"
#include "cli/Printing.h"
#include "cli/ScratchFolder.h"
#include "files/FileNames.h"
#include "levels/ElevationFiles.h"
#include "levels/TerrainStore.h"
#include "texts/RuntimeError.h"
#include "workspace/PostFields.h"
#include "world/HeightsIn.h"
#include "world/WorldHelper.h"

#include <memory>
#include <optional>

namespace vardenix {

namespace {

constexpr RealRange AnyNumber{-1e9, 1e9};
constexpr int32_t HeightsPerPost = 4; // along a side

struct HeightsOptions {
    explicit HeightsOptions(Command& command) : Files(command) {}

    bool IntoHeights() const { return !Heights.empty(); }
    // Of what is read or written, along a side.
    int32_t WidthFor(int32_t posts) const {
        return IntoHeights() ? HeightsPerPost * posts : SavedWidth(posts);
    }

    TheaterFiles Files;
    std::string Map;
    std::string Heights; // a .l0 or .elv file; empty: level 2
    std::vector<int32_t> Corners;
    bool Stretch = false;
    Resampling How = Resampling::Bilinear;
    HeightUnits Units;
    WithoutData Without = WithoutData::Leave;
    std::optional<double> NoData;
    std::string MapSystem;
    bool Overwrite = false;
};

void AddHeightsFile(Command& command, HeightsOptions& options, const std::string& help) {
    command.Text("--heights", options.Heights, help);
}

void RequireHeightsFile(const HeightsOptions& options) {
    if (options.IntoHeights() &&
        KindOfElevationFile(options.Heights) == ElevationKind::None)
        throw UsageError("--heights", options.Heights + " ends neither in .l0 nor .elv");
}

void RequireCorners(const HeightsOptions& options) {
    const auto widthOf = [&options](int32_t posts) { return options.WidthFor(posts); };
    for (size_t i = 0; i < options.Corners.size(); i += 2)
        RequireInside({"--in", options.Corners[i], "--in", options.Corners[i + 1]},
                      options.Files, widthOf, options.Files.L2File());
}

PostBox BoxOf(const HeightsOptions& options, int32_t width) {
    if (options.Corners.empty())
        return {0, 0, width - 1, width - 1};
    return Ordered(
        {options.Corners[0], options.Corners[1], options.Corners[2], options.Corners[3]});
}

RasterWish::Where WhereOf(const CommandContext& context, const HeightsOptions& options,
                          const PostBox& box) {
    const TheaterPlace place = PlaceOfTheater(context);
    return {place.System,
            EdgesOf(place, box, options.IntoHeights() ? HeightsPerPost : 1)};
}

WorldRaster Wanted(const CommandContext& context, const HeightsOptions& options,
                   const PostBox& box) {
    RasterWish wish;
    wish.Columns = box.X2 - box.X1 + 1;
    wish.Rows = box.Y2 - box.Y1 + 1;
    wish.How = options.How;
    wish.MapSystem = options.MapSystem;
    wish.NoData = options.NoData;
    if (!options.Stretch)
        wish.Place = WhereOf(context, options, box);
    const ScratchFolder scratch;
    return OwnWorldHelper(scratch.Path()).ReadRaster(options.Map, wish);
}

// Of the file that is there, or all 0 for an .elv file that is to be made.
void LoadHeights(CommandContext& context, const HeightsOptions& options) {
    Terrain& terrain = context.State.Terrain;
    const ElevationKind kind = KindOfElevationFile(options.Heights);
    if (kind == ElevationKind::Elv && !FileExists(options.Heights)) {
        ElevationLayer& layer = terrain.Elevations;
        layer.EMapWidth = HeightsPerPost * terrain.MapWidth;
        layer.L0ElvArr = HeightArray(int64_t{layer.EMapWidth} * layer.EMapWidth);
        return;
    }
    if (!LoadElevationData(terrain, kind, options.Heights, context.Progress,
                           context.Dialogs, context.Log))
        throw RuntimeError(ErrorNumber::InvalidCall,
                           options.Heights +
                               " was not read: a file of this theater has " +
                               std::to_string(HeightsPerPost * terrain.MapWidth) +
                               " elevations a side, and a L0 file its O0 file beside it");
}

void SaveHeights(CommandContext& context, const HeightsOptions& options) {
    if (!options.IntoHeights())
        return SaveLevel2(context, options.Overwrite);
    if (SaveElevationData(context.State.Terrain, KindOfElevationFile(options.Heights),
                          options.Heights, context.Progress, context.Dialogs,
                          IfChangedOf(options.Overwrite)) != ElevationSave::Done)
        throw RuntimeError(ErrorNumber::InvalidCall,
                           options.Heights + " was left as it is: its O0 file changed "
                                             "its size meanwhile; look who else writes "
                                             "it");
}

std::string Counted(int64_t count, const char* word) {
    return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

int Import(CommandContext& context, const HeightsOptions& options) {
    Terrain& terrain = context.State.Terrain;
    const PostBox box = BoxOf(options, options.WidthFor(terrain.MapWidth));
    // Before anything of this theater is touched.
    const WorldRaster raster = Wanted(context, options, box);
    if (options.IntoHeights())
        LoadHeights(context, options);
    const auto put = [&](PostPlace place, int16_t feet) {
        if (options.IntoHeights())
            terrain.Elevations.At(place.X + 1, place.Y + 1) = feet;
        else
            terrain.LxArr(int64_t{place.Y} * terrain.MapWidth + place.X + 1).Elevation =
                feet;
    };
    const HeightsTaken taken =
        TakeHeights(raster, {box.X1, box.Y1}, options.Units, options.Without, put);
    if (taken.Set == 0 && options.Without == WithoutData::Leave) {
        Tell(options.Map + " has no height where the theater lies; look at \"place "
                           "show\"");
        return ExitFound;
    }
    SaveHeights(context, options);
    context.Progress.HideBar();
    if (taken.Clamped > 0)
        Tell(Counted(taken.Clamped, "height") +
             " did not fit into 16 bits and became the nearest that does");
    if (taken.Without > 0)
        Tell(
            Counted(taken.Without, "place") + " without a height " +
            (options.Without == WithoutData::Leave ? "stayed as they were" : "became 0"));
    Print(Counted(taken.Set, "height") + " set in " +
          NameOnDisk(options.IntoHeights() ? options.Heights : terrain.LFilename));
    return ExitDone;
}

int Export(CommandContext& context, const HeightsOptions& options) {
    if (options.IntoHeights())
        LoadHeights(context, options);
    const Terrain& terrain = context.State.Terrain;
    const int32_t width =
        options.IntoHeights() ? HeightsPerPost * terrain.MapWidth : terrain.MapWidth;
    std::vector<int16_t> heights;
    heights.reserve(static_cast<size_t>(width) * static_cast<size_t>(width));
    if (options.IntoHeights())
        for (const int16_t feet : terrain.Elevations.L0ElvArr.Values())
            heights.push_back(feet);
    else
        for (const TerrainPost& post : terrain.LxArr.Values())
            heights.push_back(int16_t{post.Elevation});
    const ScratchFolder scratch;
    OwnWorldHelper(scratch.Path())
        .WriteRaster(options.Map, heights, width,
                     WhereOf(context, options, {0, 0, width - 1, width - 1}));
    context.Progress.HideBar();
    Print(Counted(int64_t{width} * width, "height") + " written to " +
          NameOnDisk(options.Map));
    return ExitDone;
}

void AddImport(Command& family) {
    Command command = family.AddCommand(
        "import", "Take heights from a map of the real world, and save; exit 1 if it has "
                  "none where the theater lies");
    const auto options = std::make_shared<HeightsOptions>(command);
    command
        .Text("FILE", options->Map, "GeoTIFF, HGT, ASC, IMG, or PNG or TIFF of 16 bits")
        .Required();
    AddHeightsFile(command, *options,
                   "Into this .l0 or .elv file instead of level 2; a .elv that is not "
                   "there is made");
    command.NumberRow("--in", options->Corners, 4,
                      "Only the rectangle X1 Y1 X2 Y2, of posts or of the heights of "
                      "--heights");
    command.Flag("--stretch", options->Stretch,
                 "Stretch the map over the rectangle, wherever it lies");
    command.Choice("--resample", options->How,
                   Choices<Resampling>{{"bilinear", Resampling::Bilinear},
                                       {"cubic", Resampling::Cubic},
                                       {"average", Resampling::Average},
                                       {"nearest", Resampling::Nearest}},
                   "How heights between pixels are found; average is of all that a post "
                   "covers");
    command.Choice("--unit", options->Units.Metres,
                   Choices<bool>{{"metres", true}, {"feet", false}},
                   "What the map's values are");
    command.Real("--scale", options->Units.Scale, "Each value times this", AnyNumber);
    command.Real("--offset", options->Units.Offset, "And plus this", AnyNumber);
    command.Choice(
        "--without", options->Without,
        Choices<WithoutData>{{"leave", WithoutData::Leave}, {"zero", WithoutData::Zero}},
        "What becomes of places where the map has no height");
    command.Real("--no-data", options->NoData,
                 "A value that means none, where the map does not tell it",
                 {-1e38, 1e38});
    command.Text("--map-system", options->MapSystem,
                 "Reference system of a map that does not tell its own");
    AddOverwrite(command, options->Overwrite);
    command.Check([options] {
        RequireHeightsFile(*options);
        RequireCorners(*options);
    });
    command.Run([options](CommandContext& context) {
        context.OpenToWrite(options->Files, options->Heights);
        return Import(context, *options);
    });
}

void AddExport(Command& family) {
    Command command = family.AddCommand("export", "Write heights as a map");
    const auto options = std::make_shared<HeightsOptions>(command);
    command
        .Output("FILE", options->Map,
                "GeoTIFF (.tif, tells where it lies), .asc, or PNG of 16 bits (.png, "
                "32768 added)")
        .Required();
    AddHeightsFile(command, *options, "Those of a .l0 or .elv file instead of level 2");
    command.Keeps([options] {
        std::vector<std::string> kept = options->Files.AllFiles();
        if (options->IntoHeights())
            kept.push_back(options->Heights);
        return kept;
    });
    command.Check([options] { RequireHeightsFile(*options); });
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        return Export(context, *options);
    });
}

} // namespace

void AddHeights(Command& all) {
    Command family =
        all.AddCommand("heights", "Heights from maps of the real world, or as such maps");
    AddImport(family);
    AddExport(family);
}

} // namespace vardenix
