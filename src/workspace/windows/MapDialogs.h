#pragma once

#include "catalogue/TextureBin.h"
#include "platform/Dialogs.h"
#include "program/WorkspaceCommands.h"
#include "workspace/MapMouse.h"

namespace vardenix {

// The details dialog behind a right click on the map.
class MapDialogs : public MapCommands {
public:
    // All are borrowed.
    MapDialogs(Dialogs& dialogs, WorkspaceCommands& workspace, const TileLookup& lookup)
        : dialogs_(dialogs), workspace_(workspace), lookup_(lookup) {}

    std::optional<TerrainPost> EditPost(const TerrainPost& post) override;
    std::optional<int16_t> EditElevation(int16_t elevation) override;

private:
    Dialogs& dialogs_;
    WorkspaceCommands& workspace_;
    const TileLookup& lookup_;
};

} // namespace vardenix
