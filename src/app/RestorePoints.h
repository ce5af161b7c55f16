#pragma once

#include "app/Workspace.h"

namespace vardenix {

// The restore point of level 2 behind the panel's buttons Command3 and Command4.
class RestorePoints : public WorkspacePart {
public:
    // Borrowed.
    explicit RestorePoints(Workspace& workspace);

    void Create();
    void Restore();

    // The tip of the button that restores follows the point that is there.
    void ShowOrigin();

private:
    void NumbersChanged() override { renumberedSince_ = true; }
    WayOut AskToLeave() const override;

    Workspace& workspace_;
    bool renumberedSince_ = false; // and the point may be older
};

} // namespace vardenix
