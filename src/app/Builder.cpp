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

// Whatever the panel's mode would save.
bool Builder::Save(Layer layer) {
    MapView view = workspace_.View();
    view.L0Mode = layer == Layer::Heights;
    SavingParts parts = workspace_.Saving();
    if (!CmdSaveTheater(
            {parts.Terrain, view, parts.Dialogs, parts.PB3, parts.Log, parts.Panel},
            false))
        return false;
    workspace_.State().Changes.Saved(PaperOf(layer));
    return true;
}

void Builder::ForgetSteps(bool heights) {
    workspace_.Undo().ForgetPosts();
    if (heights)
        workspace_.Undo().ForgetElevations();
}

void Builder::ReadAnew(bool heights) {
    workspace_.LevelTwoReadAnew();
    if (heights) {
        workspace_.State().Changes.Saved(Paper::Heights);
        workspace_.Panel().L0Saved();
    }
    workspace_.Undo().ShowButtons(workspace_.View().Edited());
}

void Builder::LeaveRebuild() { workspace_.ShowWorkspace(); }

} // namespace vardenix
