#pragma once

#include "grounds/TerrainBrush.h"
#include "levels/Terrain.h"
#include "mapview/MapView.h"
#include "program/ChangeLog.h"
#include "program/WorkspaceCommands.h"
#include "workspace/MapInteraction.h"
#include "workspace/PendingPosts.h"
#include "workspace/PointerTool.h"

#include <functional>
#include <optional>
#include <vector>

namespace vardenix {

// Brush, rectangle and fill with the ground of the chosen tile, which are joined to what
// lies round them by tiles that fit; and the brush with its river, road or railroad.
// While the button is down the posts are seen as they are to become, and the line under
// the map tells what that means.
class GroundTool : public PointerTool {
public:
    // What has been learned of the land, learned when it is first asked for; null where
    // it cannot be, which has been told then.
    using LandSource = std::function<const LearnedLand*()>;

    // All are borrowed.
    GroundTool(Terrain& terrain, const MapView& view, MapInteraction& interaction,
               ChangeLog& changes, WorkspaceCommands& workspace, LandSource land)
        : terrain_(terrain), view_(view), interaction_(interaction),
          workspace_(workspace), land_(std::move(land)),
          pending_(terrain, changes, workspace) {}

    std::optional<PostBox> Begin(double x, double y, GestureKeys keys) override;
    std::optional<PostBox> Move(double x, double y) override;
    std::optional<PostBox> End(double x, double y) override;
    std::optional<PostBox> Cancel() override;
    bool Goes() const override { return goes_; }
    std::optional<PostBox> Frame() const override;

private:
    Selection Painted() const;
    std::optional<PostBox> Show(const Selection& painted);
    void Keep();

    Terrain& terrain_;
    const MapView& view_;
    MapInteraction& interaction_;
    WorkspaceCommands& workspace_;
    LandSource land_;
    PendingPosts pending_;
    bool goes_ = false;
    PostPlace from_;
    PostPlace to_;
    std::vector<PostPlace> line_;
};

// What the brush makes of some posts within the bounds: where it would change others, its
// transitions lie inside.
BrushResult PaintWithin(const LearnedLand& land, const Terrain& terrain,
                        const Selection& painted, int32_t tile, BrushOptions options,
                        const Selection& bounds);

// "25 posts changed, 12 outside; 1 seam stays open".
std::string BrushWords(const BrushResult& result);

} // namespace vardenix
