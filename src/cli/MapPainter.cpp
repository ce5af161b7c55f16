#include "cli/MapPainter.h"

#include "cli/PlainSurface.h"
#include "cli/Printing.h"
#include "cli/ToolkitSurface.h"
#include "pictures/TilePictures.h"

namespace vardenix {

namespace {

std::unique_ptr<DrawingSurface> SurfaceFor(const ProgramState& state,
                                           const MapView& view) {
    const bool texts = view.ShowHeights || state.Features.Count() > 0;
    if (texts || view.ShowAreasPaths)
        return MakeToolkitSurface(view.SquareSide(), texts);
    return std::make_unique<PlainSurface>(view.SquareSide());
}

} // namespace

std::unique_ptr<DrawingSurface> PaintMap(ProgramState& state, const MapView& view,
                                         const MapLayers& layers, Progress& progress,
                                         DebugLog& log) {
    TilePictures pictures;
    MapRenderer renderer({state.Terrain, state.Catalogue, state.MapFileRecord,
                          state.Configuration, state.Folders.ShippedPath},
                         {pictures, progress, log, state.AbortPaint});
    auto surface = SurfaceFor(state, view);
    NoScreen screen;
    renderer.RefreshPicArray(view, *surface, screen, layers);
    for (const std::string& file : pictures.Unreadable())
        Tell("File " + file +
             " could not be read; its tile is shown as one without a "
             "picture.");
    return surface;
}

} // namespace vardenix
