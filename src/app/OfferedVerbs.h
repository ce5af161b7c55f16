#pragma once

#include "mapview/MapRenderer.h"
#include "workspace/windows/PanelCommands.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vardenix {

struct DeskPart;

// What the windows of other subsystems do for the workspace. Each subsystem's file of
// app/ fills in its own; what nobody offers has its control disabled.
struct OfferedVerbs {
    // Verbs of the panel without a word more.
    std::map<PanelVerb, std::function<void()>> Panel;
    // Windows that come and go with their boxes on the panel.
    std::map<PanelVerb, std::function<void(bool shown)>> ShowWindow;

    std::function<void(int32_t tileNumber)> LocateInBIN;
    std::function<void(uint8_t palette)> LocateColorInMAP;
    std::function<void()> ExportTiles;
    std::function<void()> SubExportTDFs;
    std::function<void()> ImportTiles;
    std::function<void(const std::vector<std::string>& paths)> LoadFeatures;
    // What lies on top of the map.
    MapLayers Layers;

    // Whether the catalogue, or theater.map, has changes that are not on the disk.
    std::function<bool()> BinNeedsSave;
    std::function<bool()> MapNeedsSave;

    // Level 2, or the finest elevations, have been saved from the panel.
    std::function<void()> TheaterSaved;

    // The theater's theater.map has been read into the state.
    std::function<void()> MapFileOpened;

    // Called when the workspace comes or goes, and when the map is made an icon or comes
    // back from one.
    std::vector<std::function<void(bool workspaceShown)>> ShowWindows;
    // Called when the close box of a window has taken the tick from its box on the panel.
    std::vector<std::function<void()>> BoxesChanged;
    // Windows that are docked where the user wants all in one.
    std::vector<std::function<DeskPart()>> Parts;
    // Called when windows take their stored places, and when places are stored.
    std::vector<std::function<void()>> PlaceWindows;
    std::vector<std::function<void()>> StorePlaces;
};

} // namespace vardenix
