#pragma once

#include "levels/Terrain.h"
#include "mapview/MapView.h"
#include "program/WorkspaceCommands.h"
#include "workspace/MapInteraction.h"
#include "workspace/PointerTool.h"

#include <optional>
#include <vector>

namespace vardenix {

// Selects posts by a rectangle or a lasso: anew, with Shift added to what is selected,
// with Shift and Ctrl taken away from it.
class SelectTool : public PointerTool {
public:
    // All are borrowed.
    SelectTool(const Terrain& terrain, const MapView& view, MapInteraction& interaction,
               WorkspaceCommands& workspace)
        : terrain_(terrain), view_(view), interaction_(interaction),
          workspace_(workspace) {}

    std::optional<PostBox> Begin(double x, double y, GestureKeys keys) override;
    std::optional<PostBox> Move(double x, double y) override;
    std::optional<PostBox> End(double x, double y) override;
    std::optional<PostBox> Cancel() override;
    bool Goes() const override { return goes_; }
    std::optional<PostBox> Frame() const override;
    std::vector<PicturePoint> Line() const override;

private:
    Selection Drawn() const;

    const Terrain& terrain_;
    const MapView& view_;
    MapInteraction& interaction_;
    WorkspaceCommands& workspace_;
    bool goes_ = false;
    bool lasso_ = false;
    GestureKeys keys_;
    PostPlace corner_; // of the rectangle
    PostPlace opposite_;
    std::vector<PicturePoint> line_; // of the lasso, on the picture
};

// Another selection is there, and the line under the map tells how large it is.
void Select(MapInteraction& interaction, Selection selection,
            WorkspaceCommands& workspace);

} // namespace vardenix
