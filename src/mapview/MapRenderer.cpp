#include "mapview/MapRenderer.h"

#include "mapview/PatchSurface.h"
#include "mapview/Repaint.h"
#include "pictures/ImageLayer.h"

#include <array>

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

bool PaintPosts(Repaint& repaint) {
    if (repaint.View.IsOverview()) {
        PaintOverview(repaint);
        if (repaint.View.Brightness != 0)
            repaint.Surface.AdjustBrightness(repaint.View.Brightness);
        if (repaint.View.ShowRelief || repaint.View.ShowContours)
            PaintReliefOverview(repaint);
        return true;
    }
    const bool bare = repaint.View.ShowRelief && repaint.View.ReliefAlone;
    if (bare)
        PaintBareGround(repaint);
    else if (!PaintTiles(repaint))
        return false;
    // A brightness of 0 gives every pixel its own value.
    if (repaint.View.Brightness != 0)
        repaint.Surface.AdjustBrightness(repaint.View.Brightness);
    if (repaint.View.ShowRelief)
        PaintRelief(repaint);
    if (repaint.View.ShowContours)
        DrawContours(repaint);
    if (repaint.View.ShowAreasPaths)
        PaintAreasAndPaths(repaint);
    return PaintOverlays(repaint);
}

bool Paint(Repaint& repaint, const MapLayers& layers) {
    const ImageSession session;
    Begin(repaint);
    if (!PaintPosts(repaint))
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
    repaint.Left = patch.Clip.Left;
    repaint.Top = patch.Clip.Top;
    Paint(repaint, layers);
}

} // namespace vardenix
