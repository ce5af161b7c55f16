// render: a view of the map, the same pixels as the map window.
#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/MapPainter.h"
#include "cli/ReliefOptions.h"
#include "cli/SavedPicture.h"
#include "cli/SearchCells.h"
#include "features/FeatureDrawing.h"
#include "levels/ElevationFiles.h"
#include "mapview/MapLayout.h"
#include "search/HitFrames.h"
#include "texts/RuntimeError.h"

#include <memory>

namespace vardenix {

namespace {

// What --layers turns on.
struct ShownLayers {
    bool Areas = false;
    bool Bare = false;
    bool Contours = false;
    bool Export = false;
    bool Filled = false;
    bool Grid = false;
    bool Heights = false;
    bool Hits = false;
    bool L0 = false;
    bool Map = false;
    bool Night = false;
    bool Paths = false;
    bool Relief = false;
    bool Segments = false;
};

struct RenderOptions {
    explicit RenderOptions(Command& command) : Files(command) {}
    TheaterFiles Files;
    std::string Out;
    int32_t X = 0;
    int32_t Y = 0;
    int16_t Zoom = 1;
    int16_t Grid = 5;
    int32_t TilePixels = 128;
    std::vector<bool ShownLayers::*> Layers;
    std::string L0File;
    std::vector<int32_t> Export; // X1, Y1, X2, Y2
    std::vector<std::string> Cells;
    SearchPattern Pattern;
    int32_t Brightness = 0;
    uint8_t Alpha = InitialMapAlpha;
    ReliefOptions Relief;
    std::vector<std::string> FeatureFiles;
    bool Small = false;
};

Choices<bool ShownLayers::*> LayerNames() {
    return {{"areas", &ShownLayers::Areas},
            {"bare", &ShownLayers::Bare},
            {"contours", &ShownLayers::Contours},
            {"export", &ShownLayers::Export},
            {"filled", &ShownLayers::Filled},
            {"grid", &ShownLayers::Grid},
            {"heights", &ShownLayers::Heights},
            {"hits", &ShownLayers::Hits},
            {"l0", &ShownLayers::L0},
            {"map", &ShownLayers::Map},
            {"night", &ShownLayers::Night},
            {"paths", &ShownLayers::Paths},
            {"relief", &ShownLayers::Relief},
            {"segments", &ShownLayers::Segments}};
}

ShownLayers LayersOf(const RenderOptions& options) {
    ShownLayers layers;
    for (bool ShownLayers::*layer : options.Layers)
        layers.*layer = true;
    return layers;
}

// A layer of something that is told, and an option that nothing shows, are mistakes.
void RequireTogether(bool layer, bool told, const char* name, const char* option) {
    if (layer && !told)
        throw UsageError("--layers", std::string(name) + " needs " + option);
    if (told && !layer)
        throw UsageError(option, std::string("is shown by --layers ") + name);
}

void CheckLayers(RenderOptions& options) {
    const ShownLayers layers = LayersOf(options);
    RequireTogether(layers.L0, !options.L0File.empty(), "l0", "--l0");
    RequireTogether(layers.Export, !options.Export.empty(), "export", "--export");
    RequireTogether(layers.Hits, !options.Cells.empty(), "hits", "--cell");
    if (layers.Bare && !layers.Relief)
        throw UsageError("--layers", "bare needs relief");
    if (layers.Filled && !layers.Areas)
        throw UsageError("--layers", "filled needs areas");
    if (layers.L0 && KindOfElevationFile(options.L0File) == ElevationKind::None)
        throw UsageError("--l0", options.L0File + " ends neither in .l0 nor in .elv");
    options.Pattern = PatternOfCells(options.Cells);
    const auto whole = [](int32_t width) { return width; };
    for (size_t i = 0; i < options.Export.size(); i += 2)
        RequireInside({"--export", options.Export[i], "--export", options.Export[i + 1]},
                      options.Files, whole, options.Files.L2File());
}

void LoadL0Layer(CommandContext& context, const std::string& file) {
    if (!LoadElevationData(context.State.Terrain, KindOfElevationFile(file), file,
                           context.Progress, context.Dialogs, context.Log))
        throw RuntimeError(ErrorNumber::InvalidCall,
                           file + " was not read: a file of this theater has " +
                               std::to_string(4 * context.State.Terrain.MapWidth) +
                               " elevations a side, and a L0 file its O0 file beside it");
}

NumberRange RangeOf(const ControlRange& control) { return {control.Min, control.Max}; }

Choices<int32_t> TilePixelChoices() {
    Choices<int32_t> choices;
    for (const int32_t width : TileWidths)
        choices.emplace_back(std::to_string(width), width);
    return choices;
}

// What is shown is told by the options alone, so that a script gets the same picture
// whatever is ticked in the editor; its colours are those of the editor.
MapView ViewOf(const RenderOptions& options, const Configuration& settings) {
    const MapView ofEditor = ViewOfSettings(settings);
    MapView view;
    view.GridColor = ofEditor.GridColor;
    view.SegmentColor = ofEditor.SegmentColor;
    view.MapLeftX = options.X;
    view.MapBottomY = options.Y;
    view.ZoomPosts = options.Zoom;
    view.GridCells = options.Grid;
    view.TilePixels = options.TilePixels;
    view.ExportColor = ofEditor.ExportColor;
    const ShownLayers layers = LayersOf(options);
    view.ShowAreas = layers.Areas;
    view.AreasFilled = layers.Filled;
    view.ShowPaths = layers.Paths;
    view.ShowRelief = layers.Relief;
    view.ReliefAlone = layers.Bare;
    view.ReliefStrength = options.Relief.Strength;
    view.ShowContours = layers.Contours;
    view.ContourStep = options.Relief.ContourStep;
    view.ShowGrid = layers.Grid;
    view.ShowSegments = layers.Segments;
    view.ApplyMAP = layers.Map;
    view.ApplyNight = layers.Night;
    // The finest heights stand in the place of those of the posts.
    view.ShowHeights = layers.Heights || layers.L0;
    view.L0Mode = layers.L0;
    view.ShowExport = layers.Export;
    if (layers.Export) {
        view.ExportX1 = options.Export[0];
        view.ExportY1 = options.Export[1];
        view.ExportX2 = options.Export[2];
        view.ExportY2 = options.Export[3];
    }
    view.ShowAreasPaths = view.ShowAreas || view.ShowPaths;
    view.Brightness = options.Brightness;
    view.MapAlpha = options.Alpha;
    return view;
}

void AddRenderOptions(Command& command, RenderOptions& options) {
    command.Output("OUT", options.Out, "PNG, BMP, JPEG or Targa file, by its name")
        .Required();
    command.Number("--x", options.X, "Column at the left edge");
    command.Number("--y", options.Y, "Row at the bottom edge");
    command.Number("--zoom", options.Zoom, "Posts along a side of a grid cell",
                   RangeOf(ZoomRange));
    command.Number("--grid", options.Grid, "Grid cells along a side",
                   RangeOf(GridCellsRange));
    command.Choice("--tile-pixels", options.TilePixels, TilePixelChoices(),
                   "Pixels along a grid cell");
    command.ChoiceList("--layers", options.Layers, LayerNames(),
                       "Layers over the tiles, parted by commas");
    command.Text("--l0", options.L0File,
                 "The .l0 or .elv file whose heights the layer l0 shows");
    command.NumberRow("--export", options.Export, 4,
                      "X1 Y1 X2 Y2, the corners that the layer export frames",
                      {0, FittingField<int32_t>.Max});
    AddCells(command, options.Cells);
    command.Number("--brightness", options.Brightness, "Percent",
                   RangeOf(BrightnessRange));
    command.Number("--alpha", options.Alpha, "Weight of the MAP colour",
                   RangeOf(TransRange));
    AddReliefOptions(command, options.Relief);
    command.Texts("--features", options.FeatureFiles,
                  "Feature file whose features are drawn, all kinds of them");
    AddSmall(command, options.Small);
}

} // namespace

void AddRender(Command& all) {
    Command command = all.AddCommand("render", "Save a view of the map");
    const auto options = std::make_shared<RenderOptions>(command);
    AddRenderOptions(command, *options);
    command.Check([options] {
        RequirePictureName(options->Out);
        CheckLayers(*options);
        RequireInside(
            {"--x", options->X, "--y", options->Y}, options->Files,
            [](int32_t width) { return width; }, options->Files.L2File());
    });
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        ProgramState& state = context.State;
        RequireInside({"--x", options->X, "--y", options->Y}, state.Terrain.MapWidth,
                      state.Terrain.LFilename);
        const MapView view = ViewOf(*options, state.Configuration);
        state.Configuration.UseSingleHeightColor = false;
        LoadFeatures(state.Features, options->FeatureFiles);
        FeatureSwitches switches{.ShowFeatures = true};
        switches.Shown.fill(true);
        DrawnFeatures features({state.Features, switches, state.Configuration});
        if (view.L0Mode)
            LoadL0Layer(context, options->L0File);
        SearchResults found;
        HitFrames frames(found, state.Terrain);
        if (!options->Cells.empty())
            SearchTiles(state.Terrain, options->Pattern, context.Progress, found);
        frames.Shown = true;
        const auto picture =
            PaintMap(state, view, {&features, {&frames}}, context.Progress, context.Log);
        SavePicture(picture->Pixels(), options->Out, options->Small);
        return ExitDone;
    });
}

} // namespace vardenix
