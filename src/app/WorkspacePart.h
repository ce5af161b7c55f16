#pragma once

#include "app/DeskWindow.h"
#include "mapview/MapRenderer.h"
#include "program/ExitGuard.h"

#include <optional>

class QWidget;

namespace vardenix {

// Whoever takes part in the workspace beside its own windows, and is told of its turns.
// What a part does not care for it leaves out.
class WorkspacePart {
public:
    WorkspacePart() = default;
    WorkspacePart(const WorkspacePart&) = delete;
    WorkspacePart& operator=(const WorkspacePart&) = delete;
    virtual ~WorkspacePart() = default;

    // Before the map is made: what lies on top of it.
    virtual void AddLayers(MapLayers& /*layers*/) {}
    // Panel and map have been made; and the window of an editor, which has the screen in
    // turn with them.
    virtual void WindowsMade() {}
    virtual void EditorMade(QWidget& /*editor*/) {}
    // The theater's theater.map has been read into the state.
    virtual void MapFileOpened() {}

    // The windows of a theater are up, and its map is painted next.
    virtual void TheaterOpened() {}

    // What can be done, or is chosen, has changed.
    virtual void CommandsChanged() {}
    // Level 2, or the finest elevations, have been saved from the panel.
    virtual void TheaterSaved() {}
    // Level 2 has been read from its file again.
    virtual void LevelTwoReadAnew() {}
    // A pass has given level 2 other tile numbers.
    virtual void NumbersChanged() {}
    // Asks about what no flag tells of, before the program ends.
    virtual WayOut AskToLeave() const { return WayOut::Lose; }
    // What a control holds and its paper has not yet is taken into that, before it is
    // saved; errors of what is no value go through.
    virtual void TakeTyped() {}
    // All papers have been saved at once.
    virtual void AllSaved() {}

    // The user has agreed to the end of the program, and to the loss of what is unsaved.
    virtual void Leaving() {}

    // The workspace comes or goes, or the map is made an icon or comes back from one.
    virtual void ShowWindows(bool /*workspaceShown*/) {}
    // The close box of a window has taken its flag in the settings down.
    virtual void WindowClosed() {}
    // A window that is docked where the user wants all in one.
    virtual std::optional<DeskPart> Docked() { return {}; }
    // Windows take their stored places; and places are stored.
    virtual void PlaceWindows() {}
    virtual void StorePlaces() {}
};

} // namespace vardenix
