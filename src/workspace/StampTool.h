#pragma once

#include "levels/Terrain.h"
#include "mapview/MapView.h"
#include "program/ChangeLog.h"
#include "program/WorkspaceCommands.h"
#include "workspace/MapInteraction.h"
#include "workspace/PointerTool.h"

#include <optional>

namespace vardenix {

// Stamps the clip in hand: a click each, until Esc. Or takes what is selected along while
// Ctrl is held, and stamps it where the button is let go.
class StampTool : public PointerTool {
public:
    // All are borrowed.
    StampTool(Terrain& terrain, const MapView& view, MapInteraction& interaction,
              ChangeLog& changes, WorkspaceCommands& workspace)
        : terrain_(terrain), view_(view), interaction_(interaction), changes_(changes),
          workspace_(workspace) {}

    std::optional<PostBox> Begin(double x, double y, GestureKeys keys) override;
    std::optional<PostBox> Move(double x, double y) override;
    std::optional<PostBox> End(double x, double y) override;
    std::optional<PostBox> Cancel() override;
    bool Goes() const override { return drags_; }

private:
    std::optional<PostBox> StampAt(PostPlace post, const char* name);

    Terrain& terrain_;
    const MapView& view_;
    MapInteraction& interaction_;
    ChangeLog& changes_;
    WorkspaceCommands& workspace_;
    bool drags_ = false;
    PostPlace from_; // of the drag
};

} // namespace vardenix
