#include "app/Clipboard.h"

#include "app/BusyWhile.h"
#include "app/PostsMime.h"
#include "mapview/MapRenderer.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/RuntimeError.h"
#include "workspace/PendingPosts.h"
#include "workspace/RegionExchange.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/HandStrip.h"
#include "workspace/windows/MapToolStrip.h"

#include <QApplication>
#include <QClipboard>

#include <algorithm>

namespace vardenix {

namespace {

// Posts of a clip that a catalogue has no tile for.
int64_t StrangeTiles(const PostClip& clip, const TileLookup& lookup) {
    int64_t count = 0;
    for (size_t i = 0; i < clip.Posts.size(); ++i)
        if (clip.Selected[i] != 0 &&
            static_cast<size_t>(clip.Posts[i].TileOffset) >= lookup.size())
            ++count;
    return count;
}

// The lower left part of a clip as a terrain of its own.
Terrain TerrainOf(const PostClip& clip, int32_t columns, int32_t rows) {
    Terrain terrain;
    terrain.MapWidth = std::max(columns, rows);
    terrain.LxArr = PostArray(int64_t{terrain.MapWidth} * terrain.MapWidth);
    for (int32_t y = 0; y < rows; ++y)
        for (int32_t x = 0; x < columns; ++x)
            terrain.LxArr(y * terrain.MapWidth + x + 1) =
                clip.Posts[static_cast<size_t>(y) * static_cast<size_t>(clip.Width) +
                           static_cast<size_t>(x)];
    return terrain;
}

void ClearUnselected(QImage& picture, const PostClip& clip, int32_t columns, int32_t rows,
                     double cell) {
    for (int32_t y = 0; y < rows; ++y)
        for (int32_t x = 0; x < columns; ++x) {
            if (clip.Selected[static_cast<size_t>(y) * static_cast<size_t>(clip.Width) +
                              static_cast<size_t>(x)] != 0)
                continue;
            const int left = PixelAt(cell * x);
            const int bottom = picture.height() - PixelAt(cell * y);
            const int right = std::min(PixelAt(cell * (x + 1)), picture.width());
            for (int row = std::max(picture.height() - PixelAt(cell * (y + 1)), 0);
                 row < bottom; ++row)
                for (int column = left; column < right; ++column)
                    picture.setPixel(column, row, 0);
        }
}

} // namespace

Clipboard::Clipboard(Workspace& workspace, Land& land)
    : workspace_(workspace), land_(land) {
    workspace.Join(*this);
    workspace.State().Changes.Follow(*this);
}

void Clipboard::Forget(const Change& change) {
    QClipboard& clipboard = *QApplication::clipboard();
    if (change.Touches(Paper::Catalogue) &&
        dynamic_cast<const PostsMime*>(clipboard.mimeData()) != nullptr)
        clipboard.clear();
}

void Clipboard::WindowsMade() {
    FrmVXMap& map = workspace_.Map();
    HandStrip& strip = map.Strip().Hand();
    OnSignal(&strip, &HandStrip::MirrorWanted, &map, [this] { Mirror(); });
    OnSignal(&strip, &HandStrip::TurnWanted, &map, [this] { Turn(); });
    // The ghost comes with a clip, and is drawn anew for another zoom.
    OnSignal(&map, &FrmVXMap::ToolsShown, &map, [this] {
        const bool wanted = workspace_.Interaction().Hand.Stamp.has_value();
        if (wanted != hasGhost_ || (wanted && ghostCell_ != workspace_.View().CellSize()))
            MakeGhost();
    });
}

void Clipboard::Copy() {
    const Selection& selected = workspace_.Interaction().Hand.Selected;
    QApplication::clipboard()->setMimeData(
        new PostsMime(ClipOf(workspace_.State().Terrain, selected)));
    workspace_.Tell(PostsWords(selected.Count()) + " copied");
}

void Clipboard::Cut() {
    Copy();
    const HandState& hand = workspace_.Interaction().Hand;
    const int64_t count = hand.Selected.Count();
    // The told fields of a cut; palette, X1 and X2 stay.
    const ClipFields fields{true, hand.Fields.Elevation, false, false, false};
    if (!ChangePosts(workspace_.State().Terrain, workspace_.State().Changes, workspace_,
                     CutPosts(workspace_.State().Terrain, hand.Selected, fields),
                     "Cut " + PostsWords(count)))
        return;
    workspace_.Tell(PostsWords(count) + " cut");
    workspace_.RefreshPicArray();
    PostsChanged();
}

bool Clipboard::CanPaste() const {
    return HasPosts(QApplication::clipboard()->mimeData());
}

void Clipboard::Paste() {
    if (!CanPaste())
        return;
    HandState& hand = workspace_.Interaction().Hand;
    try {
        OfferedPosts offered = PostsOffered(*QApplication::clipboard()->mimeData());
        const int64_t strange =
            StrangeTiles(offered.Clip, workspace_.State().Catalogue.Lookup);
        workspace_.Map().StopGesture();
        hand.Stamp = StampInHand{std::move(offered.Clip), {}, offered.TilesOnly};
        hasGhost_ = false;
        workspace_.Tell(strange == 0
                            ? "click where the lower left post is to come"
                            : PostsWords(strange) +
                                  " with tiles that the catalogue does not have");
    } catch (const RuntimeError& error) {
        workspace_.Platform().Dialogs.Notice(TrapText(error), "Error...",
                                             BoxIcon::Critical);
    }
    workspace_.Map().ShowTools();
    workspace_.Map().setFocus();
}

template <typename Other>
void Clipboard::Exchange(Other other) {
    HandState& hand = workspace_.Interaction().Hand;
    if (!hand.Stamp || !hand.Fields.MayTurn())
        return;
    hand.Stamp->Clip = other(hand.Stamp->Clip);
    hasGhost_ = false;
    workspace_.Map().ShowTools();
}

void Clipboard::Mirror() { Exchange(Mirrored); }

void Clipboard::Turn() { Exchange(Turned); }

void Clipboard::SaveAsRegion() {
    const BusyWhile busy(workspace_);
    ExportTiles(workspace_.State().Terrain,
                workspace_.Interaction().Hand.Selected.Bounds(),
                workspace_.Platform().Dialogs, workspace_.Panel());
}

void Clipboard::PostsChanged() {
    if (land_.SeamsShown())
        workspace_.RefreshPicArray();
    workspace_.RemakePreview();
}

// Only as much of it as the view shows at once.
void Clipboard::MakeGhost() {
    const HandState& hand = workspace_.Interaction().Hand;
    hasGhost_ = hand.Stamp.has_value();
    ghostCell_ = workspace_.View().CellSize();
    if (!hasGhost_ || !hand.Fields.Tile)
        return workspace_.Map().ShowGhost({});
    const PostClip& clip = hand.Stamp->Clip;
    MapView view = workspace_.View();
    const int32_t columns = std::min(clip.Width, view.ViewColumns());
    const int32_t rows = std::min(clip.Height, view.ViewRows());
    view.MapLeftX = view.MapBottomY = 0;
    view.RoomWidth = std::max(PixelAt(ghostCell_ * columns), 1);
    view.RoomHeight = std::max(PixelAt(ghostCell_ * rows), 1);
    view.ShowExport = view.ShowSegments = false;
    ProgramState& state = workspace_.State();
    const Terrain terrain = TerrainOf(clip, columns, rows);
    NoProgress nobody;
    NoScreen noScreen;
    MapRenderer renderer(
        {terrain, state.Catalogue, state.MapFileRecord, state.Configuration,
         state.Folders.ShippedPath},
        {workspace_.Pictures(), nobody, workspace_.Log(), state.AbortPaint});
    QtDrawingSurface surface;
    surface.Resize(view.RoomWidth, view.RoomHeight);
    renderer.RefreshPicArray(view, surface, noScreen, {});
    QImage picture = surface.Image().convertToFormat(QImage::Format_ARGB32);
    ClearUnselected(picture, clip, columns, rows, ghostCell_);
    workspace_.Map().ShowGhost(picture);
}

} // namespace vardenix
