#include "app/Regions.h"

#include "app/BusyWhile.h"
#include "features/FeatureExport.h"
#include "mapview/windows/FrmVXTheaterPreview.h"
#include "workspace/StatusLine.h"
#include "workspace/windows/FrmVXMain.h"

namespace vardenix {

void Regions::Export() {
    MapInteraction& interaction = workspace_.Interaction();
    interaction.StopWaiting();
    interaction.WaitExportCorner1 = true;
    interaction.ExportFeatures = workspace_.Panel().ShiftDown();
    workspace_.Panel().ShowHint(FrmVXMain::Hint::Export);
    workspace_.SelectionChanged();
}

void Regions::Import() { WaitFor(AskForRegion(workspace_.Platform().Dialogs)); }

void Regions::ImportFrom(const std::string& path) {
    WaitFor(RegionOfFile(path, workspace_.Platform().Dialogs));
}

void Regions::WaitFor(std::optional<TileRegion> region) {
    if (!region)
        return;
    MapInteraction& interaction = workspace_.Interaction();
    region_ = std::move(region);
    interaction.StopWaiting();
    interaction.ImportWidth = region_->RegionWidth;
    interaction.ImportHeight = region_->RegionHeight;
    interaction.ImportTiles = region_->TileNumbers;
    interaction.WaitImportCorner = true;
    workspace_.Panel().ShowHint(FrmVXMain::Hint::Import);
    workspace_.SelectionChanged();
}

void Regions::ExportTiles() {
    const MapView& view = workspace_.View();
    const PostBox corners{view.ExportX1, view.ExportY1, view.ExportX2, view.ExportY2};
    const BusyWhile busy(workspace_);
    if (const auto file =
            vardenix::ExportTiles(workspace_.State().Terrain, corners,
                                  workspace_.Platform().Dialogs, workspace_.Panel()))
        workspace_.Tell(ExportedWords(*file));
}

void Regions::SubExportTDFs() {
    const MapView& view = workspace_.View();
    if (const auto target = vardenix::SubExportTDFs(
            workspace_.State().Features,
            {view.ExportX1, view.ExportY1, view.ExportX2, view.ExportY2},
            workspace_.Platform().Dialogs, workspace_.Panel()))
        workspace_.Tell(ExportedWords(*target));
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
