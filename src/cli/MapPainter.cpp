#include "cli/MapPainter.h"

#include "mapview/windows/QtDrawingSurface.h"
#include "services/TilePictures.h"

#include <QGuiApplication>

#include <algorithm>
#include <cstdlib>

namespace vardenix {

namespace {

Raster CopyOf(RasterView view) {
    Raster copy(view.Width, view.Height);
    for (int32_t y = 0; y < view.Height; ++y)
        std::copy_n(view.Row(y), view.Width, copy.Row(y));
    return copy;
}

} // namespace

Raster PaintMap(ProgramState& state, const MapView& view, FeatureLayer& features,
                Progress& progress, DebugLog& log) {
    // The toolkit draws the texts, and wants to be started for that; no display is asked
    // for.
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    // What it has to say about a session of its own is nothing to who runs a command.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    std::string name = "vardenix-cli";
    char* arguments[] = {name.data(), nullptr};
    int count = 1;
    const QGuiApplication toolkit(count, arguments);

    TilePictures pictures;
    MapRenderer renderer({state.Terrain, state.Catalogue, state.MapFileRecord,
                          state.Configuration, state.Folders.ShippedPath},
                         {pictures, progress, log, state.AbortPaint});
    QtDrawingSurface surface;
    surface.Resize(view.PictureSide());
    NoScreen screen;
    renderer.RefreshPicArray(view, surface, screen, &features);
    return CopyOf(surface.Pixels());
}

} // namespace vardenix
