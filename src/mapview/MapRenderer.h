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

struct MapPatch;

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

// Paints one view of the terrain from nothing, the same for the map window, the
// screenshot and the command line. From bottom to top: tiles, MAP colour, brightness over
// both, areas and paths, night tiles, then heights and grid post by post, segments, the
// export box, features. No picture that is missing or broken stops it.
class MapRenderer {
public:
    MapRenderer(const MapSources& sources, const MapTools& tools)
        : sources_(sources), tools_(tools) {}

    // `picture2` has view.PictureSide() pixels a side. False when
    // AbortPaint ended it: what was painted so far is shown then and nothing later in the
    // order is drawn. A wish from before the repaint does not count.
    bool RefreshPicArray(const MapView& view, DrawingSurface& picture2, MapScreen& screen,
                         const MapLayers& layers);

    // Paints what a change of some posts of level 2, counted from 0, can have altered, as
    // the whole repaint would have it: on `small`, which has been given room for `patch`
    // (PatchOf). There is no bar, and it cannot be ended.
    void RepaintPatch(const MapView& view, DrawingSurface& small, const MapPatch& patch,
                      const MapLayers& layers);
    const MapSources& Sources() const { return sources_; }
    // Of the last whole repaint: heights that were wider than their cell, and left out.
    int32_t HeightsLeftOut() const { return heightsLeftOut_; }

private:
    MapSources sources_;
    MapTools tools_;
    int32_t heightsLeftOut_ = 0;
};

// What lies where no post is, 0x00BBGGRR.
constexpr uint32_t MapBackground = 0xF0F0F0;

} // namespace vardenix
