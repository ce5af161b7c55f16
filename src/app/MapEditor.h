#pragma once

#include "app/Workspace.h"

#include <cstdint>
#include <memory>

namespace vardenix {

class frmMAPMain;

// The MAP editor and the workspace, which have the screen in turn.
class MapEditor : public WorkspacePart, private ChangeFollower {
public:
    // Borrowed.
    explicit MapEditor(Workspace& workspace);
    ~MapEditor() override;

    // There is one, from the first theater on.
    bool CanOpen() const { return editor_ != nullptr; }
    void Open();
    // With the colour of a post selected.
    void Locate(uint8_t palette);

private:
    void MapFileOpened() override;
    void TakeTyped() override;
    void AllSaved() override;
    void Walked(const Change& change, Walk walk) override;

    Workspace& workspace_;
    std::unique_ptr<frmMAPMain> editor_; // from the first theater to the end of the run
    bool placed_ = false;
};

} // namespace vardenix
