#pragma once

#include "platform/DebugLog.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"
#include "program/RebuildVerbs.h"

#include <memory>

namespace vardenix {

class FrmVXRebiuldTheater;
class Workspace;

// The rebuild window, made when it is first asked for, and what it asks of the workspace.
class BuilderWindows : private RebuildVerbs {
public:
    // All are borrowed; the workspace is offered the window's verb.
    BuilderWindows(ProgramState& state, const Platform& platform, DebugLog& log,
                   Workspace& workspace);
    ~BuilderWindows() override;

private:
    void mnuRebuildTheater();

    bool L2Unsaved() const override;
    bool SaveL2() override;
    void L2Reloaded() override;
    void LeaveRebuild() override;

    ProgramState& state_;
    const Platform& platform_;
    DebugLog& log_;
    Workspace& workspace_;
    std::unique_ptr<FrmVXRebiuldTheater> frmVXRebiuldTheater_;
};

} // namespace vardenix
