#pragma once

#include "levels/Terrain.h"
#include "mapview/MapView.h"
#include "program/ChangeLog.h"
#include "program/WorkspaceCommands.h"
#include "workspace/MapInteraction.h"
#include "workspace/PendingPosts.h"
#include "workspace/PointerTool.h"

#include <optional>
#include <string>
#include <vector>

namespace vardenix {

// Brush, rectangle and fill over what posts of level 2 have beside their tiles:
// elevations (also a slope between two posts), palette, X1 and X2. What a stroke does is
// seen while it goes.
class FieldTool : public PointerTool {
public:
    // All are borrowed.
    FieldTool(Terrain& terrain, const MapView& view, MapInteraction& interaction,
              ChangeLog& changes, WorkspaceCommands& workspace)
        : terrain_(terrain), view_(view), interaction_(interaction),
          workspace_(workspace), pending_(terrain, changes, workspace) {}

    std::optional<PostBox> Begin(double x, double y, GestureKeys keys) override;
    std::optional<PostBox> Move(double x, double y) override;
    std::optional<PostBox> End(double x, double y) override;
    std::optional<PostBox> Cancel() override;
    bool Goes() const override { return what_ != Gesture::None; }
    bool Waits() const override { return waits_; }
    std::optional<PostBox> Frame() const override;

private:
    enum class Gesture { None, Stroke, Rectangle, Slope };

    const Selection* Bounds() const;
    Selection Within(Selection selection) const;
    PostDelta DeltaOf(const Selection& posts) const;
    PostDelta StrokeDelta() const;
    Selection Filled(PostPlace start, bool everywhere) const;
    std::optional<PostBox> Keep();
    std::string Name(int64_t count) const;

    Terrain& terrain_;
    const MapView& view_;
    MapInteraction& interaction_;
    WorkspaceCommands& workspace_;
    PendingPosts pending_;
    Gesture what_ = Gesture::None;
    PostPlace from_;
    PostPlace to_;
    std::vector<PostPlace> line_; // of the stroke
    bool waits_ = false;          // for the second click of a slope
};

} // namespace vardenix
