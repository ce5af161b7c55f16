// render: a view of the map, the same pixels as the map window.
#include "cli/Arguments.h"
#include "cli/Commands.h"
#include "cli/MapPainter.h"
#include "cli/SavedPicture.h"
#include "features/FeatureDrawing.h"
#include "mapview/MapLayout.h"

#include <memory>

namespace vardenix {

namespace {

struct RenderOptions {
    explicit RenderOptions(Command& command) : Files(command) {}
    TheaterFiles Files;
    std::string Out;
    int32_t X = 0;
    int32_t Y = 0;
    int16_t Zoom = 1;
    int16_t Grid = 5;
    int32_t TilePixels = 128;
    std::vector<bool MapView::*> Layers;
    int32_t Brightness = 0;
    uint8_t Alpha = InitialMapAlpha;
    std::vector<std::string> FeatureFiles;
    bool Small = false;
};

// The switch of the view that each name of --layers turns on.
Choices<bool MapView::*> LayerSwitches() {
    return {{"areas", &MapView::ShowAreas},      {"grid", &MapView::ShowGrid},
            {"heights", &MapView::ShowHeights},  {"map", &MapView::ApplyMAP},
            {"night", &MapView::ApplyNight},     {"paths", &MapView::ShowPaths},
            {"segments", &MapView::ShowSegments}};
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
    view.ShowAreas = false;
    view.ShowPaths = false;
    for (bool MapView::*layer : options.Layers)
        view.*layer = true;
    view.ShowAreasPaths = view.ShowAreas || view.ShowPaths;
    view.Brightness = options.Brightness;
    view.MapAlpha = options.Alpha;
    return view;
}

void AddRenderOptions(Command& command, RenderOptions& options) {
    command.Text("OUT", options.Out, "PNG, BMP, JPEG or Targa file, by its name")
        .Required();
    command.Number("--x", options.X, "Column at the left edge");
    command.Number("--y", options.Y, "Row at the bottom edge");
    command.Number("--zoom", options.Zoom, "Posts along a side of a grid cell",
                   RangeOf(ZoomRange));
    command.Number("--grid", options.Grid, "Grid cells along a side",
                   RangeOf(GridCellsRange));
    command.Choice("--tile-pixels", options.TilePixels, TilePixelChoices(),
                   "Pixels along a grid cell");
    command.ChoiceList("--layers", options.Layers, LayerSwitches(),
                       "Layers over the tiles, parted by commas");
    command.Number("--brightness", options.Brightness, "Percent",
                   RangeOf(BrightnessRange));
    command.Number("--alpha", options.Alpha, "Weight of the MAP colour",
                   RangeOf(TransRange));
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
        const auto picture =
            PaintMap(state, view, {&features, {}}, context.Progress, context.Log);
        SavePicture(picture->Pixels(), options->Out, options->Small);
        return ExitDone;
    });
}

} // namespace vardenix
