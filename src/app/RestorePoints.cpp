#include "app/RestorePoints.h"

#include "workspace/RestorePoint.h"
#include "workspace/windows/FrmVXMain.h"

namespace vardenix {

RestorePoints::RestorePoints(Workspace& workspace) : workspace_(workspace) {
    workspace.Join(*this);
}

void RestorePoints::Create() {
    workspace_.Panel().LetEventsThrough();
    CreateRestorePoint(workspace_.State().Terrain, workspace_.Platform().Clock.Now(),
                       workspace_.State().Folders.SystemTempPath);
    renumberedSince_ = false;
    ShowOrigin();
    workspace_.Tell("restore point created");
}

void RestorePoints::Restore() {
    workspace_.Panel().LetEventsThrough();
    Terrain& terrain = workspace_.State().Terrain;
    Dialogs& dialogs = workspace_.Platform().Dialogs;
    const std::string& folder = workspace_.State().Folders.SystemTempPath;
    // Another copy of the program may have made a point meanwhile.
    ShowOrigin();
    if (!MayRestoreOtherTheater(OriginOfPoint(folder), terrain.LFilename, dialogs) ||
        (renumberedSince_ && !MayRestoreOldNumbers(dialogs)))
        return;
    const Restored result = [&] {
        const Recording made(workspace_.State().Changes, {Paper::Level2}, "RESTORE");
        return RestoreFromPoint(terrain, folder);
    }();
    if (const std::string message = RestoreMessage(result); !message.empty())
        return dialogs.Notice(message, {}, BoxIcon::Information);
    if (result == Restored::Done)
        workspace_.Tell("the terrain now differs from the file");
    workspace_.RefreshPicArray();
}

void RestorePoints::ShowOrigin() {
    workspace_.Panel().SetRestoreTip(
        RestoreTip(OriginOfPoint(workspace_.State().Folders.SystemTempPath)));
}

WayOut RestorePoints::AskToLeave() const {
    const ProgramState& state = workspace_.State();
    Dialogs& dialogs = workspace_.Platform().Dialogs;
    if (!state.Changes.Unsaved(Paper::Level2) || state.Flags.L2)
        return WayOut::Lose;
    return workspace_.LiesElsewhere(Paper::Level2) ? MayLeaveCopied(dialogs)
                                                   : MayLeaveRestored(dialogs);
}

} // namespace vardenix
