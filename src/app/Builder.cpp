#include "app/Builder.h"

#include "app/Workspace.h"
#include "builder/windows/FrmVXRebiuldTheater.h"
#include "workspace/TheaterSaving.h"
#include "workspace/windows/FrmVXMain.h"

namespace vardenix {

Builder::Builder(Workspace& workspace) : workspace_(workspace) {}

Builder::~Builder() = default;

void Builder::Open() {
    if (!frmVXRebiuldTheater_)
        frmVXRebiuldTheater_ = std::make_unique<FrmVXRebiuldTheater>(
            workspace_.State(), workspace_.Platform(), workspace_.Log(),
            static_cast<RebuildVerbs&>(*this));
    workspace_.HideWorkspace();
    frmVXRebiuldTheater_->Form_Load();
    frmVXRebiuldTheater_->show();
}

bool Builder::L2Unsaved() const {
    return workspace_.Panel().L2NeedSaveFlag() ||
           workspace_.State().Changes.Unsaved(Paper::Level2);
}

// Level 2, whatever the panel's mode would save.
bool Builder::SaveL2() {
    MapView view = workspace_.View();
    view.L0Mode = false;
    FrmVXMain& panel = workspace_.Panel();
    if (!CmdSaveTheater({workspace_.State().Terrain, view, workspace_.Platform().Dialogs,
                         panel, workspace_.Log(), panel},
                        false))
        return false;
    workspace_.State().Changes.Saved(Paper::Level2);
    return true;
}

void Builder::L2Reloaded() {
    workspace_.Panel().L2Saved();
    workspace_.Undo().ForgetPosts();
    workspace_.Undo().ShowButtons(workspace_.View().Edited());
    workspace_.RefreshPicArray();
}

void Builder::LeaveRebuild() { workspace_.ShowWorkspace(); }

} // namespace vardenix
