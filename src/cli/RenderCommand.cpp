// render: a view of the map, the same pixels as the map window.
#include "cli/Commands.h"
#include "cli/MapPainter.h"
#include "cli/SavedPicture.h"
#include "mapview/MapLayout.h"

#include <CLI/Option.hpp>
#include <CLI/Validators.hpp>

#include <map>
#include <memory>

namespace vardenix {

namespace {

struct RenderOptions {
    explicit RenderOptions(CLI::App& command) : Files(command) {}
    TheaterFiles Files;
    std::string Out;
    int32_t X = 0;
    int32_t Y = 0;
    int16_t Zoom = 1;
    int16_t Grid = 5;
    int32_t TilePixels = 128;
    std::vector<std::string> Layers;
    int32_t Brightness = 0;
    int32_t Alpha = InitialMapAlpha;
};

// The switch of the view that each name of --layers turns on.
const std::map<std::string, bool MapView::*>& LayerSwitches() {
    static const std::map<std::string, bool MapView::*> switches{
        {"grid", &MapView::ShowGrid},         {"heights", &MapView::ShowHeights},
        {"segments", &MapView::ShowSegments}, {"areas", &MapView::ShowAreas},
        {"paths", &MapView::ShowPaths},       {"night", &MapView::ApplyNight},
        {"map", &MapView::ApplyMAP}};
    return switches;
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
    for (const std::string& layer : options.Layers)
        view.*LayerSwitches().at(layer) = true;
    view.ShowAreasPaths = view.ShowAreas || view.ShowPaths;
    view.Brightness = options.Brightness;
    view.MapAlpha = static_cast<uint8_t>(options.Alpha);
    return view;
}

void AddRenderOptions(CLI::App& command, RenderOptions& options) {
    command.add_option("OUT", options.Out, "PNG, BMP or JPEG file, by its name")
        ->required();
    command.add_option("--x", options.X, "Column at the left edge")
        ->capture_default_str();
    command.add_option("--y", options.Y, "Row at the bottom edge")->capture_default_str();
    command.add_option("--zoom", options.Zoom, "Posts along a side of a grid cell")
        ->check(CLI::Range(ZoomRange.Min, ZoomRange.Max))
        ->capture_default_str();
    command.add_option("--grid", options.Grid, "Grid cells along a side")
        ->check(CLI::Range(GridCellsRange.Min, GridCellsRange.Max))
        ->capture_default_str();
    command.add_option("--tile-pixels", options.TilePixels, "Pixels along a grid cell")
        ->check(CLI::IsMember(std::vector<int32_t>(TileWidths.begin(), TileWidths.end())))
        ->capture_default_str();
    std::vector<std::string> names;
    for (const auto& [name, layerSwitch] : LayerSwitches())
        names.push_back(name);
    command
        .add_option("--layers", options.Layers, "Layers over the tiles, parted by commas")
        ->delimiter(',')
        ->check(CLI::IsMember(names));
    command.add_option("--brightness", options.Brightness, "Percent")
        ->check(CLI::Range(BrightnessRange.Min, BrightnessRange.Max))
        ->capture_default_str();
    command.add_option("--alpha", options.Alpha, "Weight of the MAP colour")
        ->check(CLI::Range(TransRange.Min, TransRange.Max))
        ->capture_default_str();
}

} // namespace

void AddRender(CLI::App& app, CommandRun& run) {
    auto* command = app.add_subcommand("render", "Save a view of the map");
    auto options = std::make_shared<RenderOptions>(*command);
    AddRenderOptions(*command, *options);
    command->callback([options, &run] {
        run = [options](CommandContext& context) {
            context.Open(options->Files);
            Raster picture = PaintMap(context.State, ViewOf(*options, context.State),
                                      context.Progress, context.Log);
            SavePicture(picture, options->Out);
            return ExitDone;
        };
    });
}

} // namespace vardenix
