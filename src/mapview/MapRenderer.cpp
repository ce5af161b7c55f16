#include "mapview/MapRenderer.h"

#include "catalogue/TextureBinFile.h"
#include "mapview/MapPatch.h"
#include "mapview/PatchSurface.h"
#include "mapview/Repaint.h"
#include "pictures/ImageLayer.h"
#include "texts/Numbers.h"

#include <array>
#include <exception>

namespace vardenix {
namespace {

constexpr std::array DrawingOrder{FeatureKind::City,    FeatureKind::Coast,
                                  FeatureKind::River,   FeatureKind::Road,
                                  FeatureKind::Airport, FeatureKind::Label};

void Begin(Repaint& repaint) {
    repaint.Tools.AbortPaint = false;
    repaint.Tools.Pictures.BeginRepaint();
    repaint.Surface.Clear(MapBackground);
    repaint.Screen.ClearPicShow();
    repaint.Surface.SetFill(FillStyle::Solid, 0);
    repaint.Surface.SetPen(0, 1);
}

void DrawFeatures(Repaint& repaint, FeatureLayer& features) {
    for (const FeatureKind kind : DrawingOrder)
        features.FeatureDraw(repaint.Surface, repaint.View, kind, features.Shown(kind));
}

bool Paint(Repaint& repaint, const MapLayers& layers) {
    const ImageSession session;
    Begin(repaint);
    if (!PaintTiles(repaint))
        return false;
    // A brightness of 0 gives every pixel its own value.
    if (repaint.View.Brightness != 0)
        repaint.Surface.AdjustBrightness(repaint.View.Brightness);
    if (repaint.View.ShowAreasPaths)
        PaintAreasAndPaths(repaint);
    if (!PaintOverlays(repaint))
        return false;
    if (repaint.View.ShowSegments)
        DrawSegments(repaint);
    if (repaint.View.ShowExport)
        DrawExportBox(repaint);
    if (layers.Features != nullptr && layers.Features->ShowFeatures())
        DrawFeatures(repaint, *layers.Features);
    for (MarkLayer* marks : layers.Marks)
        marks->DrawMarks(repaint.Surface, repaint.View);
    repaint.Screen.MakeViewPort(repaint.View);
    return true;
}

} // namespace

bool MapRenderer::RefreshPicArray(const MapView& view, DrawingSurface& picture2,
                                  MapScreen& screen, const MapLayers& layers) {
    Repaint repaint{view,     sources_, tools_,
                    picture2, screen,   ViewGrid(view, sources_.Terrain)};
    bool finished = false;
    {
        const ShownBar bar(tools_.PB3);
        finished = Paint(repaint, layers);
    }
    heightsLeftOut_ = repaint.HeightsLeftOut;
    screen.CopyToPicShow();
    return finished;
}

void MapRenderer::RepaintPatch(const MapView& view, DrawingSurface& small,
                               const MapPatch& patch, const MapLayers& layers) {
    NoProgress noBar;
    NoScreen noScreen;
    bool noAbort = false;
    const MapTools tools{tools_.Pictures, noBar, tools_.Log, noAbort};
    PatchSurface surface(small, patch.Clip.Left, patch.Clip.Top);
    Repaint repaint{view,    sources_, tools,
                    surface, noScreen, ViewGrid(view, sources_.Terrain, patch.Cells)};
    Paint(repaint, layers);
}

bool Repaint::GoOn(int32_t i, int32_t base) {
    const int percent = static_cast<int>(RoundHalfEven(i * 50.0 / Grid.Count())) + base;
    if (percent != LastPercent) {
        LastPercent = percent;
        Tools.PB3.SetBar(percent);
    }
    Screen.LookForEsc();
    if (!Tools.AbortPaint)
        return true;
    Tools.AbortPaint = false;
    return false;
}

const TileInfo* EntryOf(const Catalogue& catalogue, int32_t tileNumber) {
    if (tileNumber < 0 || static_cast<size_t>(tileNumber) >= catalogue.Lookup.size())
        return nullptr;
    return &catalogue.Lookup[static_cast<size_t>(tileNumber)];
}

void LogPainting(const Repaint& repaint, const char* what) {
    if (!repaint.Tools.Log.DebugFlag)
        return;
    const std::string side = std::to_string(repaint.Grid.CellSide());
    repaint.Tools.Log.WriteLog(std::string("Painting ") + what + " with dimensions " +
                               side + " X " + side);
}

TileIds::TileIds(const Repaint& repaint, TileUse use)
    : use_(use), ids_(repaint.Sources.Catalogue.Lookup.size(), -1) {}

TilePictureId TileIds::Of(const Repaint& repaint, int32_t tileNumber,
                          const TileInfo& entry) {
    TilePictureId& id = ids_[static_cast<size_t>(tileNumber)];
    if (id < 0)
        id = repaint.Tools.Pictures.IdOf(
            TilePicturePath(repaint.Sources.Catalogue.DDSFolder,
                            use_ == TileUse::Day ? entry.DayFile : entry.NightFile),
            PictureFormat::Dds, use_);
    return id;
}

void TileIds::Prepare(Repaint& repaint) {
    std::vector<TilePictureId> wanted;
    for (int32_t i = 1; i <= repaint.Grid.Count(); ++i) {
        const auto post = repaint.Grid.At(i);
        if (!post)
            continue;
        const int32_t number = post->Post.TileOffset;
        const TileInfo* entry = EntryOf(repaint.Sources.Catalogue, number);
        if (entry != nullptr && entry->HasImage == 1 &&
            ids_[static_cast<size_t>(number)] < 0)
            wanted.push_back(Of(repaint, number, *entry));
    }
    repaint.Tools.Pictures.Prepare(wanted, repaint.Grid.CellSide(), [&repaint] {
        repaint.Screen.LookForEsc();
        return repaint.Tools.AbortPaint;
    });
}

bool PaintCell(Repaint& repaint, TilePictureId id, const PixelRect& cell) {
    try {
        return repaint.Surface.PaintTile(repaint.Tools.Pictures, id, cell,
                                         repaint.Grid.CellSide());
    } catch (const std::exception&) {
        // One tile less on the map is all that a bad picture may cost.
        return false;
    }
}

} // namespace vardenix
