#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "mapview/MapView.h"
#include "platform/Clock.h"
#include "workspace/MapInteraction.h"

#include <string>

namespace vardenix {

// The line under the map. Names of tiles are as the catalogue has them, Windows-1252.

// Of the post under a place of the picture: "X 12  Y 34   1250 ft   Tile 17 HRIVER05
// Palette 3". While the finest elevations are edited, their X, Y and height. Empty beyond
// the edge of the terrain.
std::string PostWords(const MapView& view, const Terrain& terrain,
                      const TileLookup& lookup, double x, double y);

// The tool in hand and what it gives: "Brush 3: tile 17 HRIVER05", "Fill: no tile
// chosen", "Brush 1: raise by 100 ft"; also that the heights are left alone while they
// are what is shown. While a corner is waited for, which one: "Export:
// click a corner (Esc ends it)".
std::string ToolWords(const MapInteraction& interaction, const MapView& view,
                      const TileLookup& lookup);

// "theater.L2 saved at 14:05", of a file's path.
std::string SavedWords(const std::string& path, const LocalTime& now);
// "coast.exp written", of a file's or a folder's path.
std::string ExportedWords(const std::string& path);
// "1 hit", "37 hits".
std::string HitWords(size_t hits);

} // namespace vardenix
