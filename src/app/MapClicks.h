#pragma once

#include "app/Clipboard.h"
#include "app/Features.h"
#include "app/Land.h"
#include "app/Regions.h"
#include "app/Workspace.h"
#include "workspace/MapMouse.h"
#include "workspace/windows/FrmVXTileDetails.h"

namespace vardenix {

// What clicks on the map do to the other windows.
class MapClicks : public MapWishes {
public:
    // All are borrowed.
    MapClicks(Workspace& workspace, Regions& regions, Features& features,
              vardenix::Land& land, Clipboard& clipboard)
        : workspace_(workspace), regions_(regions), features_(features), land_(land),
          clipboard_(clipboard) {}

private:
    std::optional<TerrainPost> EditPost(const TerrainPost& post) override;
    std::optional<int16_t> EditElevation(int16_t elevation) override;
    void ExportTiles() override { regions_.ExportTiles(); }
    void SubExportTDFs() override { regions_.SubExportTDFs(); }
    void ImportTiles() override { regions_.ImportTiles(); }
    void PickTile(int32_t tileNumber) override;
    void SetZoom(int16_t zoomPosts) override;
    void LoadFeatures(const std::vector<std::string>& paths) override;
    void TakeDropped(const std::string& path) override;
    void HideFrame7() override;
    const LearnedLand* Land() override { return land_.Learned(); }
    void PostsChanged() override { clipboard_.PostsChanged(); }

    FrmVXTileDetails::Helpers HelpersFor(PostPlace place, bool height);

    Workspace& workspace_;
    Regions& regions_;
    Features& features_;
    vardenix::Land& land_;
    Clipboard& clipboard_;
};

} // namespace vardenix
