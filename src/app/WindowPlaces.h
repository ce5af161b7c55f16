#pragma once

#include "app/WorkspaceWindows.h"
#include "theater/Configuration.h"

namespace vardenix {

// Where the windows of the workspace stand, and which of them are seen. Places and boxes
// are kept in the settings.
class WindowPlaces {
public:
    // Both are borrowed.
    WindowPlaces(Configuration& settings, WorkspaceWindows& windows)
        : settings_(settings), windows_(windows) {}

    // Side by side when no places are stored; the boxes then begin ticked. Before this
    // the small windows stay hidden.
    void Place();
    void Store();

    // Every window as its box says; the map ends up with the keyboard.
    void ShowByBoxes();
    // The same for a box that was just ticked, whose window may have gone with the map.
    void ShowTicked();
    // Small windows go with the map when it is made an icon.
    void RestoreChildWindows();
    void HideAll();

private:
    void PlaceFirst();
    void PlaceAsStored();
    void RestorePreview();
    bool SmallWindowsShown() const;

    Configuration& settings_;
    WorkspaceWindows& windows_;
    bool placed_ = false;
};

// Makes the palette a tool of the map, which the desktop then never puts over it and
// which keeps the keyboard when the palette comes up.
void KeepPaletteOverMap(const WorkspaceWindows& windows);

} // namespace vardenix
