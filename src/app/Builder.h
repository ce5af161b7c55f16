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
    bool SaveL2() override { return Save(Layer::Posts); }
    bool SaveHeights() override { return Save(Layer::Heights); }
    void ForgetSteps(bool heights) override;
    void ReadAnew(bool heights) override;
    void LeaveRebuild() override;

    bool Save(Layer layer);

    Workspace& workspace_;
    std::unique_ptr<FrmVXRebiuldTheater> frmVXRebiuldTheater_;
};

} // namespace vardenix
