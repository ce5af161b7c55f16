#pragma once

#include "app/Earth.h"
#include "app/Workspace.h"
#include "world/HeightsGhost.h"
#include "world/HeightsPlan.h"

#include <memory>
#include <optional>

namespace vardenix {

class FrmImportElevations;

// Heights of maps of the real world into level 2 or the loaded heights, with a preview
// over the map; and out as such maps.
class Elevations : public WorkspacePart {
public:
    // Both are borrowed.
    Elevations(Workspace& workspace, const Earth& earth);
    ~Elevations() override;

    void ShowImport();
    // Of what is edited: level 2, or the loaded heights.
    void Export();

private:
    void AddLayers(MapLayers& layers) override { layers.Marks.push_back(&ghost_); }
    void WindowsMade() override;
    void ShowWindows(bool workspaceShown) override;

    FrmImportElevations& Window();
    void Browse();
    void Preview();
    void Import();
    // What the wish of the window comes to now; nothing, and told, where that is nothing.
    const HeightsPlan* PlanOfWish();
    WorldRaster Read(const HeightsWish& wish, const PostBox& box);
    void Apply(const HeightsPlan& plan, const std::string& name);
    void ForgetPlan();

    Workspace& workspace_;
    const Earth& earth_;
    HeightsGhost ghost_;
    std::optional<HeightsPlan> plan_; // of the wish as it is
    Selection planned_;               // what was selected then
    std::unique_ptr<FrmImportElevations> window_;
};

} // namespace vardenix
