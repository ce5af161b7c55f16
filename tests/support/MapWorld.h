#pragma once

#include "mapview/MapRenderer.h"
#include "support/FixedClock.h"
#include "support/RecordingProgress.h"

#include <cstdint>
#include <string>

namespace vardenix::tests {

// A small theater, all in memory, with everything a repaint asks for: two sets, whose
// numbers 0 to 31 have pictures "H0.dds" and "H0N.dds" and so on. Its view is two by two
// posts of 128 pixels at the lower left.
struct MapWorld {
    explicit MapWorld(int32_t mapWidth = 16, const std::string& folder = "C:\\theater\\")
        : AppPath(folder) {
        Terrain.MapWidth = mapWidth;
        Terrain.LxArr = PostArray(int64_t{mapWidth} * mapWidth);
        Catalogue.DDSFolder = folder;
        Catalogue.Bin.NumSets = 2;
        Catalogue.Bin.Sets.resize(3);
        for (size_t set = 1; set <= 2; ++set) {
            Catalogue.Bin.Sets[set].TileCount = 16;
            Catalogue.Bin.Sets[set].Tiles.resize(17);
        }
        Catalogue.Lookup.resize(32);
        for (size_t i = 0; i < Catalogue.Lookup.size(); ++i) {
            TileInfo& entry = Catalogue.Lookup[i];
            entry.DayFile = "H" + std::to_string(i) + ".dds";
            entry.NightFile = "H" + std::to_string(i) + "N.dds";
            entry.HasImage = 1;
        }
        View.GridCells = 2;
    }

    void SetTile(int x, int y, int32_t number) { Post(x, y).TileOffset = number; }
    TerrainPost& Post(int x, int y) {
        return Terrain.LxArr((int64_t{y} - 1) * Terrain.MapWidth + x);
    }
    // The catalogue's record of a number.
    TileRecord& Tile(int number) {
        return Catalogue.Bin.Sets.at(static_cast<size_t>(number / 16) + 1)
            .Tiles.at(static_cast<size_t>(number % 16) + 1);
    }
    void AddArea(int number, const TileArea& area) {
        Tile(number).Areas.push_back(area);
        ++Tile(number).NumAreas;
    }
    void AddPath(int number, const TilePath& path) {
        Tile(number).Paths.push_back(path);
        ++Tile(number).NumPaths;
    }

    TilePictureId Day(int number) {
        return Pictures.IdOf(Catalogue.DDSFolder + "H" + std::to_string(number) + ".dds",
                             PictureFormat::Dds, TileUse::Day);
    }
    TilePictureId Night(int number) {
        return Pictures.IdOf(Catalogue.DDSFolder + "H" + std::to_string(number) + "N.dds",
                             PictureFormat::Dds, TileUse::Night);
    }
    TilePictureId NoTile() {
        return Pictures.IdOf(AppPath + "NoTile.jpg", PictureFormat::Jpeg, TileUse::Day);
    }

    MapRenderer Renderer() {
        return MapRenderer({Terrain, Catalogue, MapFileRecord, Settings, AppPath},
                           {Pictures, PB3, Log, AbortPaint});
    }

    vardenix::Terrain Terrain;
    vardenix::Catalogue Catalogue;
    vardenix::MapFileRecord MapFileRecord{};
    Configuration Settings;
    std::string AppPath;
    TilePictures Pictures;
    RecordingProgress PB3;
    FixedClock Clock;
    DebugLog Log{Clock};
    bool AbortPaint = false;
    MapView View;
};

} // namespace vardenix::tests
