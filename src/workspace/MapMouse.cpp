#include "workspace/MapMouse.h"

#include "companion/Vardenix.h"

namespace vardenix {

MapMouse::MapMouse(Terrain& terrain, MapView& view, MapInteraction& interaction,
                   UndoPoints& undo, WorkspaceCommands& workspace, MapWishes& wishes)
    : terrain_(terrain), view_(view), interaction_(interaction), undo_(undo),
      workspace_(workspace), wishes_(wishes),
      gesture_(terrain, view, interaction, undo, workspace),
      select_(terrain, view, interaction, workspace),
      stamp_(terrain, view, interaction, undo.Log(), workspace),
      fields_(terrain, view, interaction, undo.Log(), workspace),
      ground_(terrain, view, interaction, undo.Log(), workspace,
              [this] { return wishes_.Land(); }) {}

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

std::optional<PostBox> MapMouse::LeftDown(double x, double y, GestureKeys keys) {
    if (view_.ScrollBusy)
        return std::nullopt;
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
    } else if (PointerTool* tool = ToolFor(post, keys)) {
        // Another tool may wait for a click that does not come.
        const auto stopped = tool == held_ ? std::nullopt : Stop();
        held_ = tool;
        return Told(BoxRound(stopped, tool->Begin(x, y, keys)));
    } else {
        const auto stopped = Stop();
        held_ = nullptr;
        if (const auto picked = gesture_.Begin(x, y, keys))
            wishes_.PickTile(*picked);
        return stopped;
    }
    return std::nullopt;
}

PointerTool* MapMouse::ToolFor(PostPlace post, GestureKeys keys) {
    const HandState& hand = interaction_.Hand;
    const bool posts = !view_.L0Mode;
    if (hand.Stamp && posts)
        return &stamp_;
    if (keys.Alt)
        return nullptr;
    if (keys.Control && !keys.Shift && posts && hand.Selected.Has(post))
        return &stamp_;
    if (interaction_.Tool == MapTool::Select || interaction_.Tool == MapTool::Lasso)
        return &select_;
    if (PaintsFields(interaction_, view_))
        return &fields_;
    return PaintsLand(interaction_, view_) ? &ground_ : nullptr;
}

std::optional<PostBox> MapMouse::LeftMove(double x, double y) {
    return held_ != nullptr ? held_->Move(x, y) : gesture_.Move(x, y);
}

std::optional<PostBox> MapMouse::LeftUp(double x, double y) {
    if (held_ != nullptr)
        return Told(held_->End(x, y));
    gesture_.End(x, y);
    return std::nullopt;
}

std::optional<PostBox> MapMouse::Told(const std::optional<PostBox>& changed) {
    if (changed && !Goes())
        wishes_.PostsChanged();
    return changed;
}

std::optional<PostBox> MapMouse::Stop() {
    gesture_.Cancel();
    return held_ != nullptr ? held_->Cancel() : std::nullopt;
}

std::optional<MapGhost> MapMouse::GhostWith(double x, double y) const {
    if (held_ == nullptr || !held_->Goes())
        return GhostAt(gesture_, interaction_, view_, x, y);
    const auto frame = held_->Frame();
    if (!frame)
        return std::nullopt;
    return MapGhost{*frame, false, {}, true};
}

std::vector<PicturePoint> MapMouse::Line() const {
    return held_ != nullptr ? held_->Line() : std::vector<PicturePoint>();
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
