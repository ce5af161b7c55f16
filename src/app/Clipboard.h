#pragma once

#include "app/Land.h"
#include "app/Workspace.h"

#include <optional>

namespace vardenix {

// Posts that are copied, cut, stamped and moved; also between two running copies of the
// program, through the system's clipboard.
class Clipboard : public WorkspacePart, private ChangeFollower {
public:
    // Both are borrowed.
    Clipboard(Workspace& workspace, Land& land);

    void Copy();
    // Copies; what is cut becomes tile 0, and elevation 0 where elevations come along.
    void Cut();
    // The clip follows the pointer until Esc.
    void Paste();
    bool CanPaste() const;
    // Of the clip in hand.
    void Mirror();
    void Turn();
    // The rectangle round what is selected goes to an .exp file.
    void SaveAsRegion();

    // After a change by a gesture: preview and marks follow.
    void PostsChanged();

private:
    void WindowsMade() override;
    void Recorded(const Change& change) override { Forget(change); }
    void Walked(const Change& change, Walk /*walk*/) override { Forget(change); }
    // Tiles may have other numbers than those that were copied.
    void Forget(const Change& change);
    void MakeGhost();
    template <typename Other>
    void Exchange(Other other);

    Workspace& workspace_;
    Land& land_;
    double ghostCell_ = 0; // pixels of a post in the ghost's picture
    bool hasGhost_ = false;
};

} // namespace vardenix
