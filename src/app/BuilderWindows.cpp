#include "app/BuilderWindows.h"

#include "app/Workspace.h"
#include "builder/windows/FrmVXRebiuldTheater.h"
#include "workspace/TheaterSaving.h"
#include "workspace/windows/FrmVXMain.h"

namespace vardenix {

BuilderWindows::BuilderWindows(ProgramState& state, const Platform& platform,
                               DebugLog& log, Workspace& workspace)
    : state_(state), platform_(platform), log_(log), workspace_(workspace) {
    workspace.Offers().Panel[PanelVerb::RebuildTheater] = [this] { mnuRebuildTheater(); };
}

BuilderWindows::~BuilderWindows() = default;

void BuilderWindows::mnuRebuildTheater() {
    if (!frmVXRebiuldTheater_)
        frmVXRebiuldTheater_ = std::make_unique<FrmVXRebiuldTheater>(
            state_, platform_, log_, static_cast<RebuildVerbs&>(*this));
    static_cast<WorkspaceCommands&>(workspace_).HideWorkspace();
    frmVXRebiuldTheater_->Form_Load();
    frmVXRebiuldTheater_->show();
}

bool BuilderWindows::L2Unsaved() const {
    return workspace_.Windows().Panel->L2NeedSaveFlag();
}

// Level 2, whatever the panel's mode would save.
bool BuilderWindows::SaveL2() {
    MapView view = workspace_.View();
    view.L0Mode = false;
    FrmVXMain& panel = *workspace_.Windows().Panel;
    if (!CmdSaveTheater({state_.Terrain, view, platform_.Dialogs, panel, log_, panel},
                        false))
        return false;
    workspace_.Undo().Saved(Layer::Posts);
    return true;
}

void BuilderWindows::L2Reloaded() {
    workspace_.Windows().Panel->L2Saved();
    workspace_.Undo().ForgetPosts();
    workspace_.Undo().ShowButtons(workspace_.View().Edited());
    static_cast<WorkspaceCommands&>(workspace_).RefreshPicArray();
}

void BuilderWindows::LeaveRebuild() {
    static_cast<WorkspaceCommands&>(workspace_).ShowWorkspace();
}

} // namespace vardenix
