#include "app/MapClicks.h"

#include "workspace/TilePalette.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXTileDetails.h"
#include "workspace/windows/FrmVXTilePal.h"

namespace vardenix {

std::optional<TerrainPost> MapClicks::EditPost(const TerrainPost& post) {
    return AskForPost(post, {workspace_.Platform().Dialogs, workspace_,
                             workspace_.State().Catalogue.Lookup});
}

std::optional<int16_t> MapClicks::EditElevation(int16_t elevation) {
    return AskForElevation(elevation, {workspace_.Platform().Dialogs, workspace_,
                                       workspace_.State().Catalogue.Lookup});
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

void MapClicks::HideFrame7() { workspace_.Panel().ShowHint(FrmVXMain::Hint::None); }

} // namespace vardenix
