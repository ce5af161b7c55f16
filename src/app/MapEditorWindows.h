#pragma once

#include "platform/Platform.h"
#include "program/ProgramState.h"

#include <cstdint>
#include <memory>

namespace vardenix {

class Workspace;
class frmMAPMain;

// The MAP editor and the workspace, which have the screen in turn.
class MapEditorWindows {
public:
    // All are borrowed. Offers the workspace what opens the editor.
    MapEditorWindows(ProgramState& state, const Platform& platform, Workspace& workspace);
    MapEditorWindows(const MapEditorWindows&) = delete;
    MapEditorWindows& operator=(const MapEditorWindows&) = delete;
    ~MapEditorWindows();

private:
    void MapFileOpened();
    void OpenEditor();
    void LocateColor(uint8_t palette);

    ProgramState& state_;
    const Platform& platform_;
    Workspace& workspace_;
    std::unique_ptr<frmMAPMain> editor_; // from the first theater to the end of the run
    bool placed_ = false;
};

} // namespace vardenix
