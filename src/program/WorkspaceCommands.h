#pragma once

#include <string>

namespace vardenix {

// What the windows of the workspace ask of one another. app/ fills it in; no window knows
// another.
class WorkspaceCommands {
public:
    WorkspaceCommands() = default;
    WorkspaceCommands(const WorkspaceCommands&) = delete;
    WorkspaceCommands& operator=(const WorkspaceCommands&) = delete;
    virtual ~WorkspaceCommands() = default;

    // The map is repainted from nothing, and the preview's box with it.
    virtual void RefreshPicArray() = 0;
    // The map's layout follows ZoomPosts, GridCells and TilePixels.
    virtual void LoadImageControls() = 0;
    // Scrolls to a post, clamped to the scroll ranges, and repaints.
    virtual void ScrollTo(int x, int y) = 0;
    // The view begins at a post, clamped likewise; nothing is painted yet.
    virtual void PlaceView(int x, int y) = 0;
    // A word on what was done, UTF-8, for the line under the map.
    virtual void Tell(const std::string& words) = 0;
    // Another tile is chosen: the line under the map follows.
    virtual void SelectionChanged() = 0;
    // The map's position has changed: LabelX and LabelY follow.
    virtual void PositionChanged() = 0;
    // Level 2, or the finest elevations, have changes that are not on the disk.
    virtual void L2NeedSave() = 0;
    virtual void L0NeedSave() = 0;
    // Steps of undo have led back to what is on the disk.
    virtual void L2AsSaved() = 0;
    virtual void L0AsSaved() = 0;
    // The workspace comes or goes while an editor has the screen.
    virtual void ShowWorkspace() = 0;
    virtual void HideWorkspace() = 0;
    // What the panel's commands can do has changed.
    virtual void CommandsChanged() = 0;
    // A window was closed by its close box: its box on the panel falls.
    virtual void WindowHidden(const char* checkBoxName) = 0;
    // Every way out: stores window positions, asks about unsaved files, and ends the
    // program when nothing speaks against it. False when the user stays.
    virtual bool LeaveProgram() = 0;
};

} // namespace vardenix
