#pragma once

#include "app/WorkspaceWindows.h"
#include "program/Configuration.h"

#include <QPoint>

class QWidget;

namespace vardenix {

// Where the windows of the workspace stand, and which of them are seen. Places and boxes
// are kept in the settings.
class DeskPlaces {
public:
    // Both are borrowed.
    DeskPlaces(Configuration& settings, WorkspaceWindows& windows)
        : settings_(settings), windows_(windows) {}

    // Side by side when no places are stored; the boxes then begin ticked. Before this
    // the small windows stay hidden.
    void Place();
    void Store();

    // Every window as its box says; the map ends up with the keyboard. Parts of one
    // window come and go in it.
    void ShowByBoxes();
    // The same for a box that was just ticked, whose window may have gone with the map.
    void ShowTicked();
    // Small windows go with the map when it is made an icon.
    void RestoreChildWindows();
    void HideAll();
    // They have their places, and the map is no icon.
    bool SmallWindowsShown() const;

private:
    void PlaceFirst();
    void PlacePanel(QPoint topLeft);
    void PlaceAsStored();

    Configuration& settings_;
    WorkspaceWindows& windows_;
    bool placed_ = false;
};

// Makes a window a tool of the map, which the desktop then never puts over it and which
// keeps the keyboard when that window comes up.
void KeepOverMap(QWidget& window, const WorkspaceWindows& windows);

// A window that was made an icon is one no more. Some desktops make an icon of a tool
// with its window, and shown as an icon it would take the map with it.
void NoIcon(QWidget& window);

// Shows or hides such a tool, whether it is a window of its own or docked.
void ShowTool(QWidget& window, bool shown);

// To its stored place; at first where it covers least of panel, preview, palette and the
// other tools of the map: of all that may come up, or of what is seen now.
enum class Standing { All, Seen };
void PlaceTool(QWidget& window, const WindowPosition& stored,
               const WorkspaceWindows& windows, Standing standing = Standing::All);

// A window that the desktop never puts under another one, whichever is used; it has the
// keyboard of its own.
void StayOver(QWidget& window, const QWidget& below);

// Where a window stands, frame included, and back to there.
WindowPosition StoredPlaceOf(const QWidget& window);
void PlaceAt(QWidget& window, const WindowPosition& place);

} // namespace vardenix
