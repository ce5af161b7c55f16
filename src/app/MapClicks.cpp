#include "app/MapClicks.h"

#include "files/FileNames.h"
#include "levels/TerrainStore.h"
#include "program/Browsing.h"
#include "texts/Cutting.h"
#include "workspace/TilePalette.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTilePal.h"

namespace vardenix {

FrmVXTileDetails::Helpers MapClicks::HelpersFor(PostPlace place, bool height) {
    FrmVXTilePal& palette = *workspace_.Windows().Palette;
    return {workspace_.Platform().Dialogs,
            workspace_,
            workspace_.State().Catalogue.Lookup,
            place,
            [&palette](int32_t tile, int side) {
                return tile < 0 ? QImage() : palette.PictureOf(tile, side);
            },
            workspace_.Map().OnScreen(place, height)};
}

std::optional<TerrainPost> MapClicks::EditPost(const TerrainPost& post) {
    const PostXY at = SerialToXY(workspace_.Interaction().PopupSerial,
                                 workspace_.State().Terrain.MapWidth);
    return AskForPost(
        post, HelpersFor({static_cast<int32_t>(at.X) - 1, static_cast<int32_t>(at.Y) - 1},
                         false));
}

std::optional<int16_t> MapClicks::EditElevation(int16_t elevation) {
    return AskForElevation(elevation,
                           HelpersFor(workspace_.Interaction().EditedHeight, true));
}

void MapClicks::PickTile(int32_t tileNumber) {
    if (!HasTile(workspace_.State().Catalogue.Lookup, tileNumber))
        return workspace_.Tell("the catalogue has no tile " + std::to_string(tileNumber));
    workspace_.Windows().Palette->ShowTile(tileNumber);
}

void MapClicks::SetZoom(int16_t zoomPosts) { workspace_.Panel().SetZoom(zoomPosts); }

void MapClicks::LoadFeatures(const std::vector<std::string>& paths) {
    features_.Load(paths);
}

void MapClicks::TakeDropped(const std::string& path) {
    const std::string name = UpperCase(path);
    if (name.ends_with(".EXP"))
        return regions_.ImportFrom(path);
    if (!FolderExists(path)) {
        if (auto before = TakeElevationFile(workspace_.Saving(), path))
            workspace_.HeightsLoaded(std::move(*before));
        return;
    }
    const std::string folder = TheaterFolderOf(path);
    if (workspace_.Platform().Dialogs.MessageBox(
            "Open the theater in\n" + ShownPath(folder) + "?", "Confirm",
            BoxIcon::Question, BoxButtons::YesNo) == BoxAnswer::Yes)
        workspace_.StartAnew(folder);
}

void MapClicks::HideFrame7() { workspace_.Panel().ShowHint(FrmVXMain::Hint::None); }

} // namespace vardenix
