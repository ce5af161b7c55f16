// preview: the height picture, the same as the preview window saves.
#include "cli/Commands.h"
#include "cli/SavedPicture.h"
#include "levels/HeightPicture.h"
#include "mapview/DrawingSurface.h"

#include <memory>

namespace vardenix {

namespace {

struct PreviewOptions {
    explicit PreviewOptions(Command& command) : Files(command) {}
    TheaterFiles Files;
    std::string Out;
    bool Small = false;
};

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
    AddSmall(command, options->Small);
    command.Check([options] { RequirePictureName(options->Out); });
    command.Run([options](CommandContext& context) {
        context.Open(options->Files);
        const Configuration& settings = context.State.Configuration;
        Raster picture =
            RasterOf(ShowLFile(context.State.Terrain,
                               {settings.PreviewSeaColor, settings.PreviewLevelColors},
                               context.Progress, context.Log));
        SavePicture(picture.View(), options->Out, options->Small);
        return ExitDone;
    });
}

} // namespace vardenix
