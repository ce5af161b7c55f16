#include "app/MapEditor.h"

#include "app/Workspace.h"
#include "mapeditor/windows/frmMAPMain.h"
#include "platform/windows/WindowPlace.h"
#include "workspace/windows/FrmVXMap.h"

#include <QScreen>

namespace vardenix {

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

void MapEditor::Walked(const Change& change, Walk /*walk*/) {
    if (editor_ && change.Touches(Paper::MapFile))
        editor_->MapFileWalked();
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
void MapEditor::Open() {
    if (!placed_) {
        const QRect room = workspace_.Map().screen()->availableGeometry();
        const QSize size = editor_->sizeHint().boundedTo(room.size());
        editor_->resize(size);
        MoveOnScreen(*editor_,
                     room.center() - QPoint(size.width() / 2, size.height() / 2));
        placed_ = true;
    }
    editor_->show();
    workspace_.HideWorkspace();
    editor_->raise();
    editor_->activateWindow();
}

void MapEditor::Locate(uint8_t palette) {
    Open();
    editor_->LocateColor(palette);
}

} // namespace vardenix
