#include "app/Regions.h"

#include "app/BusyWhile.h"
#include "features/FeatureExport.h"
#include "mapview/windows/FrmVXTheaterPreview.h"
#include "workspace/windows/FrmVXMain.h"

namespace vardenix {

void Regions::Export() {
    MapInteraction& interaction = workspace_.Interaction();
    interaction.StopWaiting();
    interaction.WaitExportCorner1 = true;
    interaction.ExportFeatures = workspace_.Panel().ShiftDown();
    workspace_.Panel().ShowHint(FrmVXMain::Hint::Export);
}

void Regions::Import() {
    MapInteraction& interaction = workspace_.Interaction();
    auto region = AskForRegion(workspace_.Platform().Dialogs);
    if (!region)
        return;
    region_ = std::move(region);
    interaction.StopWaiting();
    interaction.ImportWidth = region_->RegionWidth;
    interaction.ImportHeight = region_->RegionHeight;
    interaction.WaitImportCorner = true;
    workspace_.Panel().ShowHint(FrmVXMain::Hint::Import);
}

void Regions::ExportTiles() {
    const MapView& view = workspace_.View();
    const PostBox corners{view.ExportX1, view.ExportY1, view.ExportX2, view.ExportY2};
    const BusyWhile busy(workspace_);
    vardenix::ExportTiles(workspace_.State().Terrain, corners,
                          workspace_.Platform().Dialogs, workspace_.Panel());
}

void Regions::SubExportTDFs() {
    const MapView& view = workspace_.View();
    vardenix::SubExportTDFs(workspace_.State().Features,
                            {view.ExportX1, view.ExportY1, view.ExportX2, view.ExportY2},
                            workspace_.Platform().Dialogs, workspace_.Panel());
}

void Regions::ImportTiles() {
    if (!region_)
        return;
    const TileRegion region = std::move(*region_);
    region_.reset();
    ProgramState& state = workspace_.State();
    const MapInteraction& interaction = workspace_.Interaction();
    {
        const BusyWhile busy(workspace_);
        const Recording made(state.Changes, {Paper::Level2},
                             "Import " + std::to_string(region.RegionWidth) + " x " +
                                 std::to_string(region.RegionHeight) + " posts at " +
                                 std::to_string(interaction.ImportX) + ", " +
                                 std::to_string(interaction.ImportY));
        const Selection& bounds = interaction.Hand.Selected;
        if (!vardenix::ImportTiles(state.Terrain, region, interaction.ImportX,
                                   interaction.ImportY, workspace_.Platform().Dialogs,
                                   workspace_.Panel(),
                                   bounds.Empty() ? nullptr : &bounds))
            return;
    }
    // Unsaved before anything else can go wrong.
    workspace_.L2NeedSave();
    workspace_.RefreshPicArray();
    workspace_.RemakePreview();
}

} // namespace vardenix
