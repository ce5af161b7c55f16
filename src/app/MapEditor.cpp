#include "app/MapEditor.h"

#include "app/Workspace.h"
#include "levels/TerrainStore.h"
#include "mapeditor/windows/frmMAPMain.h"
#include "platform/windows/WindowPlace.h"
#include "workspace/windows/FrmVXMap.h"

#include <QScreen>

#include <algorithm>

namespace vardenix {

namespace {

constexpr int32_t PostSide = 32; // pixels, beside the colours

} // namespace

MapEditor::MapEditor(Workspace& workspace) : workspace_(workspace) {
    workspace.Join(*this);
    workspace.State().Changes.Follow(*this);
}

MapEditor::~MapEditor() = default;

void MapEditor::MapFileOpened() {
    if (!editor_) {
        editor_ = std::make_unique<frmMAPMain>(workspace_.State(), workspace_.Platform(),
                                               workspace_);
        workspace_.EditorMade(*editor_);
    }
    editor_->MapFileOpened();
}

void MapEditor::Recorded(const Change& change) {
    if (editor_ && editor_->isVisible() && change.Touches(Paper::MapFile))
        PaintPart();
}

void MapEditor::Walked(const Change& change, Walk /*walk*/) {
    if (!editor_ || !change.Touches(Paper::MapFile))
        return;
    editor_->MapFileWalked();
    PaintPart();
}

// The middle of what the map shows, with the colours over it whether the map has them or
// not; round the post of the map's menu where that led here.
void MapEditor::PaintPart() {
    MapView view = workspace_.View();
    const PostPlace middle{view.MapLeftX + view.ViewColumns() / 2,
                           view.MapBottomY + view.ViewRows() / 2};
    view.ApplyMAP = true;
    view.L0Mode = view.ShowExport = view.ShowHeights = view.ShowAreasPaths = false;
    view.ShowRelief = view.ShowContours = false;
    view.ZoomPosts = 1;
    view.TilePixels = PostSide;
    view.RoomWidth = frmMAPMain::MapPartWidth;
    view.RoomHeight = frmMAPMain::MapPartHeight;
    const PostPlace center = located_.value_or(middle);
    view.MapLeftX = std::max(center.X - view.ViewColumns() / 2, 0);
    view.MapBottomY = std::max(center.Y - view.ViewRows() / 2, 0);
    const ProgramState& state = workspace_.State();
    NoProgress noBar;
    NoScreen noScreen;
    bool noAbort = false;
    MapRenderer renderer({state.Terrain, state.Catalogue, state.MapFileRecord,
                          state.Configuration, state.Folders.ShippedPath},
                         {workspace_.Pictures(), noBar, workspace_.Log(), noAbort});
    part_.Resize(view.RoomWidth, view.RoomHeight);
    renderer.RefreshPicArray(view, part_, noScreen, {});
    editor_->ShowMap(part_.Image());
}

void MapEditor::TakeTyped() {
    if (editor_)
        editor_->TakeTyped();
}

void MapEditor::AllSaved() {
    if (editor_)
        editor_->FileSaved();
}

// The editor comes up first, so that the screen is never empty; the first time it does so
// in the middle of the map's screen, later where it was left.
void MapEditor::Show() {
    if (!placed_) {
        const QRect room = workspace_.Map().screen()->availableGeometry();
        const QSize size = editor_->sizeHint().boundedTo(room.size());
        editor_->resize(size);
        MoveOnScreen(*editor_,
                     room.center() - QPoint(size.width() / 2, size.height() / 2));
        placed_ = true;
    }
    PaintPart();
    editor_->show();
    workspace_.HideWorkspace();
    editor_->raise();
    editor_->activateWindow();
}

void MapEditor::Open() {
    located_.reset();
    Show();
}

void MapEditor::Locate(int32_t serial) {
    const Terrain& terrain = workspace_.State().Terrain;
    const PostXY post = SerialToXY(serial, terrain.MapWidth);
    located_ =
        PostPlace{static_cast<int32_t>(post.X) - 1, static_cast<int32_t>(post.Y) - 1};
    Show();
    editor_->LocateColor(terrain.LxArr(serial).Palette);
}

} // namespace vardenix
