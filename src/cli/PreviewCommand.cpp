// preview: the height picture, as the preview window saves it, and with what it can show
// over it.
#include "cli/Commands.h"
#include "cli/ReliefOptions.h"
#include "cli/SavedPicture.h"
#include "levels/HeightPicture.h"
#include "mapview/DrawingSurface.h"
#include "mapview/PreviewHeights.h"

#include <memory>
#include <vector>

namespace vardenix {

namespace {

struct PreviewOptions {
    explicit PreviewOptions(Command& command) : Files(command) {}
    TheaterFiles Files;
    std::string Out;
    std::vector<bool PreviewOptions::*> Layers;
    bool ShowsRelief = false;
    bool ShowsContours = false;
    ReliefOptions Relief;
    bool Small = false;
};

PreviewLooks LooksOf(PreviewOptions& options) {
    for (bool PreviewOptions::*layer : options.Layers)
        options.*layer = true;
    return {options.ShowsRelief ? options.Relief.Strength : 0,
            options.ShowsContours ? options.Relief.ContourStep : 0};
}

Raster RasterOf(const HeightPicture& heights) {
    Raster picture(heights.Side, heights.Side);
    auto pixel = heights.Pixels.begin();
    for (int32_t y = 0; y < heights.Side; ++y)
        for (int32_t x = 0; x < heights.Side; ++x)
            picture.Row(y)[x] = OpaquePixel(*pixel++);
    return picture;
}

} // namespace

void AddPreview(Command& all) {
    Command command =
        all.AddCommand("preview", "Save the height picture, a pixel a post");
    const auto options = std::make_shared<PreviewOptions>(command);
    command.Output("OUT", options->Out, "PNG, BMP, JPEG or Targa file, by its name")
        .Required();
    command.ChoiceList("--layers", options->Layers,
                       {{"contours", &PreviewOptions::ShowsContours},
                        {"relief", &PreviewOptions::ShowsRelief}},
                       "Layers over the heights, parted by commas");
    AddReliefOptions(command, options->Relief);
    AddSmall(command, options->Small);
    command.Check([options] { RequirePictureName(options->Out); });
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        const Configuration& settings = context.State.Configuration;
        const Terrain& terrain = context.State.Terrain;
        const PreviewColors colors{settings.PreviewSeaColor, settings.PreviewLevelColors};
        Raster picture =
            RasterOf(ShowLFile(terrain, colors, context.Progress, context.Log));
        if (!options->Layers.empty())
            UpdateHeights(terrain, colors, {0, 0}, terrain.MapWidth, terrain.MapWidth,
                          picture.View(), LooksOf(*options));
        SavePicture(picture.View(), options->Out, options->Small);
        return ExitDone;
    });
}

} // namespace vardenix
