#pragma once

#include "app/Workspace.h"
#include "mapview/windows/QtDrawingSurface.h"

#include <cstdint>
#include <memory>
#include <optional>

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
    // With the colour of a post selected, by its serial.
    void Locate(int32_t serial);

private:
    void MapFileOpened() override;
    void TakeTyped() override;
    void AllSaved() override;
    void Recorded(const Change& change) override;
    void Walked(const Change& change, Walk walk) override;
    void Show();
    // A part of the map beside the colours.
    void PaintPart();

    Workspace& workspace_;
    QtDrawingSurface part_;
    std::unique_ptr<frmMAPMain> editor_; // from the first theater to the end of the run
    bool placed_ = false;
    std::optional<PostPlace> located_; // the post that led here
};

} // namespace vardenix
