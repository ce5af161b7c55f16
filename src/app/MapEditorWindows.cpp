#include "app/MapEditorWindows.h"

#include "app/Workspace.h"
#include "mapeditor/windows/frmMAPMain.h"
#include "platform/windows/WindowPlace.h"
#include "workspace/windows/FrmVXMap.h"

#include <QScreen>

namespace vardenix {

MapEditorWindows::MapEditorWindows(ProgramState& state, const Platform& platform,
                                   Workspace& workspace)
    : state_(state), platform_(platform), workspace_(workspace) {
    OfferedVerbs& offers = workspace.Offers();
    offers.MapFileOpened = [this] { MapFileOpened(); };
    offers.Panel[PanelVerb::OpenMap] = [this] { OpenEditor(); };
    offers.LocateColorInMAP = [this](uint8_t palette) { LocateColor(palette); };
    offers.MapNeedsSave = [this] { return editor_ && editor_->MAPDirty(); };
}

MapEditorWindows::~MapEditorWindows() = default;

void MapEditorWindows::MapFileOpened() {
    if (!editor_)
        editor_ = std::make_unique<frmMAPMain>(state_, platform_, workspace_);
    editor_->MapFileOpened();
}

// The editor comes up first, so that the screen is never empty; the first time it does so
// in the middle of the map's screen, later where it was left.
void MapEditorWindows::OpenEditor() {
    if (!placed_) {
        const QRect room = workspace_.Windows().Map->screen()->availableGeometry();
        const QSize size = editor_->sizeHint().boundedTo(room.size());
        editor_->resize(size);
        MoveOnScreen(*editor_,
                     room.center() - QPoint(size.width() / 2, size.height() / 2));
        placed_ = true;
    }
    editor_->show();
    static_cast<WorkspaceCommands&>(workspace_).HideWorkspace();
    editor_->raise();
    editor_->activateWindow();
}

void MapEditorWindows::LocateColor(uint8_t palette) {
    OpenEditor();
    editor_->LocateColor(palette);
}

} // namespace vardenix
