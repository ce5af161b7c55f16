#include "workspace/MapMouse.h"

#include "companion/Vardenix.h"

namespace vardenix {

MapMouse::MapMouse(Terrain& terrain, MapView& view, MapInteraction& interaction,
                   UndoPoints& undo, WorkspaceCommands& workspace, MapWishes& wishes)
    : terrain_(terrain), view_(view), interaction_(interaction), undo_(undo),
      workspace_(workspace), wishes_(wishes),
      gesture_(terrain, view, interaction, undo, workspace) {}

void MapMouse::MiddleDown(double x, double y) {
    if (view_.ScrollBusy)
        return;
    const PostPlace post = PostUnderCursor(view_, x, y);
    workspace_.ScrollTo(post.X, post.Y);
}

bool MapMouse::RightDown(double x, double y) {
    if (view_.ScrollBusy)
        return false;
    if (view_.L0Mode) {
        EditElevationAt(ElevationUnderCursor(view_, x, y));
        return false;
    }
    const PostPlace post = PostUnderCursor(view_, x, y);
    interaction_.PopupSerial = OnTerrain(post, terrain_)
                                   ? XYToSerial(post.X + 1, post.Y + 1, terrain_.MapWidth)
                                   : 0;
    return true;
}

void MapMouse::EditElevationAt(PostPlace place) {
    if (!OnElevations(place, terrain_))
        return;
    const int32_t x = place.X + 1;
    const int32_t y = place.Y + 1;
    const int16_t old = terrain_.Elevations.At(x, y);
    interaction_.EditedHeight = place;
    const std::optional<int16_t> entered = wishes_.EditElevation(old);
    if (!entered)
        return;
    terrain_.Elevations.At(x, y) = *entered;
    undo_.AddElvUndo(old, *entered, y, x);
    workspace_.L0NeedSave();
}

void MapMouse::LeftDown(double x, double y, GestureKeys keys) {
    if (view_.ScrollBusy)
        return;
    const PostPlace post = PostUnderCursor(view_, x, y);
    if (interaction_.WaitExportCorner1) {
        view_.ExportX1 = post.X;
        view_.ExportY1 = post.Y;
        interaction_.WaitExportCorner1 = false;
        interaction_.WaitExportCorner2 = true;
    } else if (interaction_.WaitExportCorner2) {
        view_.ExportX2 = post.X;
        view_.ExportY2 = post.Y;
        interaction_.WaitExportCorner1 = false;
        interaction_.WaitExportCorner2 = false;
        wishes_.HideFrame7();
        workspace_.RefreshPicArray();
        if (interaction_.ExportFeatures)
            wishes_.SubExportTDFs();
        else
            wishes_.ExportTiles();
    } else if (interaction_.WaitImportCorner) {
        interaction_.ImportX = post.X;
        interaction_.ImportY = post.Y;
        interaction_.WaitImportCorner = false;
        wishes_.HideFrame7();
        wishes_.ImportTiles();
    } else if (const auto picked = gesture_.Begin(x, y, keys)) {
        wishes_.PickTile(*picked);
    }
}

void MapMouse::ChangePost(int32_t serial, const TerrainPost& to) {
    const TerrainPost old = terrain_.LxArr(serial);
    terrain_.LxArr(serial) = to;
    undo_.AddPostUndo(old, to, serial);
    workspace_.L2NeedSave();
}

void MapMouse::mnuTileProperties() {
    if (interaction_.PopupSerial == 0)
        return;
    const auto entered = wishes_.EditPost(terrain_.LxArr(interaction_.PopupSerial));
    if (entered)
        ChangePost(interaction_.PopupSerial, *entered);
}

} // namespace vardenix
