#pragma once

#include "BenchTiles.h"
#include "support/MapWorld.h"

#include <cstdint>
#include <string>

namespace vardenix::bench {

constexpr int MapWidth = 256;
// Posts along a side of a cell for 100, 2,500 and 40,000 posts in the view.
constexpr int Near = 1;
constexpr int Middle = 5;
constexpr int Far = 20;

// A theater of MapWidth posts a side whose neighbours differ, with elevations, and a road
// and a wood on every tile; in a view of 1280 pixels a side.
inline void FillWorld(tests::MapWorld& world, int zoomPosts) {
    Catalogue& catalogue = world.Catalogue;
    catalogue.Bin.Sets.resize(TileFolder::Count / 16 + 1);
    for (size_t set = 1; set < catalogue.Bin.Sets.size(); ++set)
        catalogue.Bin.Sets[set].Tiles.resize(17);
    catalogue.Lookup.resize(TileFolder::Count);
    for (int i = 0; i < TileFolder::Count; ++i) {
        TileInfo& entry = catalogue.Lookup[static_cast<size_t>(i)];
        entry.DayFile = "H" + std::to_string(i) + ".dds";
        entry.NightFile = "H" + std::to_string(i) + "N.dds";
        entry.HasImage = 1;
        world.AddPath(i, {10, 100, 0, 1640, 3280, 1700});
        world.AddArea(i, {7, 400, 1640, 1640});
    }
    uint32_t random = 12345;
    for (TerrainPost& post : world.Terrain.LxArr.Values()) {
        random = random * 1664525 + 1013904223;
        post.TileOffset = static_cast<int32_t>((random >> 8) % TileFolder::Count);
        post.Elevation = static_cast<int16_t>((random >> 16) % 2500);
        post.Palette = static_cast<uint8_t>(random >> 24);
    }
    world.View.GridCells = 10;
    world.View.ZoomPosts = static_cast<int16_t>(zoomPosts);
    world.View.TilePixels = 128;
}

} // namespace vardenix::bench
