#pragma once

#include "catalogue/TextureBin.h"
#include "levels/Terrain.h"
#include "mapview/DrawingSurface.h"
#include "mapview/MapView.h"
#include "pictures/TilePictures.h"
#include "platform/DebugLog.h"
#include "platform/Progress.h"
#include "program/Configuration.h"
#include "program/FeatureSet.h"
#include "program/MapFileRecord.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vardenix {

// What a repaint reads. Everything is borrowed for the renderer's life.
struct MapSources {
    const vardenix::Terrain& Terrain;
    const vardenix::Catalogue& Catalogue;
    const vardenix::MapFileRecord& MapFileRecord;
    const Configuration& Settings;
    const std::string& ShippedPath; // where "NoTile.jpg" lies
};

// What a repaint is done with; borrowed likewise.
struct MapTools {
    TilePictures& Pictures;
    Progress& PB3;
    DebugLog& Log;
    bool& AbortPaint; // the user's wish, cleared when it has been obeyed
};

// The layer on top of everything.
class FeatureLayer {
public:
    FeatureLayer() = default;
    FeatureLayer(const FeatureLayer&) = delete;
    FeatureLayer& operator=(const FeatureLayer&) = delete;
    virtual ~FeatureLayer() = default;

    virtual bool ShowFeatures() const = 0; // the switch of the whole layer
    virtual bool Shown(FeatureKind kind) const = 0;
    // Draws one kind, or nothing where `flag` is false.
    virtual void FeatureDraw(DrawingSurface& surface, const MapView& view,
                             FeatureKind kind, bool flag) = 0;
};

// Marks above everything else: frames, boxes, whatever points at posts.
class MarkLayer {
public:
    MarkLayer() = default;
    MarkLayer(const MarkLayer&) = delete;
    MarkLayer& operator=(const MarkLayer&) = delete;
    virtual ~MarkLayer() = default;

    virtual void DrawMarks(DrawingSurface& surface, const MapView& view) = 0;
};

// What other rooms lay over the map; borrowed.
struct MapLayers {
    FeatureLayer* Features = nullptr; // may be none
    std::vector<MarkLayer*> Marks;    // from bottom to top, whatever the features' switch
};

// What the windows do round a repaint.
class MapScreen {
public:
    MapScreen() = default;
    MapScreen(const MapScreen&) = delete;
    MapScreen& operator=(const MapScreen&) = delete;
    virtual ~MapScreen() = default;

    virtual void ClearPicShow() = 0;
    // The back buffer, whole or as far as it got, becomes visible.
    virtual void CopyToPicShow() = 0;
    // Looks whether Esc has been pressed and sets AbortPaint; no other event may be
    // handled. Called after each post of two passes, 80,000 times in the widest view, so
    // most calls must do next to nothing.
    virtual void LookForEsc() = 0;
    // The preview's box follows.
    virtual void MakeViewPort(const MapView& view) = 0;
};

// Nobody sees the repaint or ends it.
class NoScreen : public MapScreen {
public:
    void ClearPicShow() override {}
    void CopyToPicShow() override {}
    void LookForEsc() override {}
    void MakeViewPort(const MapView&) override {}
};

// What lies where no post is, 0x00BBGGRR.
constexpr uint32_t MapBackground = 0x404040;

} // namespace vardenix
