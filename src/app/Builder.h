#pragma once

#include "app/Workspace.h"
#include "program/RebuildVerbs.h"

#include <memory>

namespace vardenix {

class FrmVXRebiuldTheater;

// The rebuild window, made when it is first asked for, and what it asks of the workspace.
class Builder : private RebuildVerbs {
public:
    // Borrowed.
    explicit Builder(Workspace& workspace);
    ~Builder() override;

    // The window has the screen in turn with the workspace.
    void Open();

private:
    bool L2Unsaved() const override;
    bool SaveL2() override;
    void L2Reloaded() override;
    void LeaveRebuild() override;

    Workspace& workspace_;
    std::unique_ptr<FrmVXRebiuldTheater> frmVXRebiuldTheater_;
};

} // namespace vardenix
