#pragma once

#include "mapview/MapView.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"
#include "program/WorkspaceCommands.h"
#include "workspace/windows/PanelCommands.h"

namespace vardenix {

// The small dialogs behind the control panel's buttons.
class PanelDialogs : public PanelCommands {
public:
    // All are borrowed.
    PanelDialogs(ProgramState& state, MapView& view, const Platform& platform,
                 WorkspaceCommands& workspace)
        : state_(state), view_(view), platform_(platform), workspace_(workspace) {}

    void ShowHeightColors() override;
    void ShowAreasPathsOptions() override;
    void ShowAbout() override;

private:
    ProgramState& state_;
    MapView& view_;
    const Platform& platform_;
    WorkspaceCommands& workspace_;
};

} // namespace vardenix
