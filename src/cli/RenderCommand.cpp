// render: a view of the map, the same pixels as the map window.
#include "cli/Commands.h"
#include "cli/MapPainter.h"
#include "cli/SavedPicture.h"
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

MapView ViewOf(const RenderOptions& options, const ProgramState& state) {
    MapView view = ViewOfSettings(state.Configuration);
    view.ZoomPosts = options.Zoom;
    view.GridCells = options.Grid;
    view.TilePixels = options.TilePixels;
    const ViewPosition position =
        ClampToScroll({options.X, options.Y}, state.Terrain.MapWidth);
    view.MapLeftX = position.X;
    view.MapBottomY = position.Y;
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
    command.Text("OUT", options.Out, "PNG, BMP or JPEG file, by its name").Required();
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
}

} // namespace

void AddRender(Command& all) {
    Command command = all.AddCommand("render", "Save a view of the map");
    const auto options = std::make_shared<RenderOptions>(command);
    AddRenderOptions(command, *options);
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        Raster picture = PaintMap(context.State, ViewOf(*options, context.State),
                                  context.Progress, context.Log);
        SavePicture(picture, options->Out);
        return ExitDone;
    });
}

} // namespace vardenix
