#pragma once

#include "levels/Terrain.h"
#include "mapview/MapView.h"
#include "program/WorkspaceCommands.h"
#include "workspace/EditGesture.h"
#include "workspace/FieldTool.h"
#include "workspace/GroundTool.h"
#include "workspace/MapGhost.h"
#include "workspace/MapInteraction.h"
#include "workspace/SelectTool.h"
#include "workspace/StampTool.h"
#include "workspace/UndoPoints.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// What clicks on the map have other windows do. app/ fills it in.
class MapWishes {
public:
    MapWishes() = default;
    MapWishes(const MapWishes&) = delete;
    MapWishes& operator=(const MapWishes&) = delete;
    virtual ~MapWishes() = default;

    // The details dialog over a post, or over one height in feet; it has ended when the
    // call returns. Nothing unless the user chose to update.
    virtual std::optional<TerrainPost> EditPost(const TerrainPost& post) = 0;
    virtual std::optional<int16_t> EditElevation(int16_t elevation) = 0;

    // The region between ExportX1, ExportY1 and ExportX2, ExportY2 of the view, or the
    // features in it; the stamp at ImportX, ImportY.
    virtual void ExportTiles() = 0;
    virtual void SubExportTDFs() = 0;
    virtual void ImportTiles() = 0;
    // The tile of a post has been chosen on the map: the palette shows it.
    virtual void PickTile(int32_t tileNumber) = 0;
    // ZoomPosts, also those of an overview, with the panel's slider; the map lays itself
    // out and paints.
    virtual void SetZoom(int16_t zoomPosts) = 0;
    // Feature files that were dropped on the map.
    virtual void LoadFeatures(const std::vector<std::string>& paths) = 0;
    // One of the other things that can be dropped there: a file of a region or of
    // heights, the folder of a theater.
    virtual void TakeDropped(const std::string& path) = 0;
    // Frame7 of the panel, which tells what is waited for.
    virtual void HideFrame7() = 0;
    // What has been learned of the land; null where it cannot be, which has been told.
    virtual const LearnedLand* Land() { return nullptr; }
    // A gesture has changed posts of level 2 in bulk.
    virtual void PostsChanged() {}
};

// What the map's own buttons of the mouse do. Positions are pixels on the picture. While
// a scroll value is being set by the program (MapView::ScrollBusy), and beyond the edge
// of the terrain, nothing is changed.
class MapMouse {
public:
    // All are borrowed.
    MapMouse(Terrain& terrain, MapView& view, MapInteraction& interaction,
             UndoPoints& undo, WorkspaceCommands& workspace, MapWishes& wishes);

    // The post becomes the lower left one of the view.
    void MiddleDown(double x, double y);
    // A height of the finest elevations is edited in the dialog. Otherwise the post is
    // remembered for the context menu; true when that is to be shown.
    bool RightDown(double x, double y);
    // Gives the corner that is waited for, or begins what the tool in hand does.
    // What is to be painted anew, as below.
    std::optional<PostBox> LeftDown(double x, double y, GestureKeys keys = {});
    // While the left button is held, and at its release. The posts of level 2 that have
    // changed, from 0, and are to be painted anew; nothing when none has.
    std::optional<PostBox> LeftMove(double x, double y);
    std::optional<PostBox> LeftUp(double x, double y);
    // A tool goes on while the button is held.
    bool Goes() const { return held_ != nullptr ? held_->Goes() : gesture_.Goes(); }
    // What goes on, or waits for another click, ends there; a tool with a file of its own
    // takes back what no log knows of yet.
    std::optional<PostBox> Stop();
    bool HasPending() const { return held_ != nullptr && held_->Goes(); }
    bool Waits() const { return held_ != nullptr && held_->Waits(); }
    // What a click, or the release, would leave with the pointer at a place.
    std::optional<MapGhost> GhostWith(double x, double y) const;
    // That is drawn, on the picture.
    std::vector<PicturePoint> Line() const;

    // Of the context menu: the details of the post of the last right click.
    void mnuTileProperties();

private:
    void EditElevationAt(PostPlace place);
    void ChangePost(int32_t serial, const TerrainPost& to);
    // The tool for a press there; null for the gestures of single steps.
    PointerTool* ToolFor(PostPlace post, GestureKeys keys);
    std::optional<PostBox> Told(const std::optional<PostBox>& changed);

    Terrain& terrain_;
    MapView& view_;
    MapInteraction& interaction_;
    UndoPoints& undo_;
    WorkspaceCommands& workspace_;
    MapWishes& wishes_;
    EditGesture gesture_;
    SelectTool select_;
    StampTool stamp_;
    FieldTool fields_;
    GroundTool ground_;
    PointerTool* held_ = nullptr; // one of them, or gesture_ where there is none
};

} // namespace vardenix
