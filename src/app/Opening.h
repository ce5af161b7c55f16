#pragma once

#include "app/RestorePoints.h"
#include "app/Workspace.h"
#include "program/TheaterOpening.h"
#include "workspace/MapMouse.h"

namespace vardenix {

// The windows of the workspace, as a theater is opened into them.
class Opening : public OpeningWindows {
public:
    // All are borrowed.
    Opening(Workspace& workspace, RestorePoints& points, MapWishes& wishes)
        : workspace_(workspace), points_(points), wishes_(wishes) {}

private:
    void PreviewChanged() override;
    void LoadMapEditor() override;
    void LoadMap() override;
    void ShowMainPanel() override;
    void RestoreChildWindows() override;
    void RefreshPalette() override;
    void InitForm() override;

    Workspace& workspace_;
    RestorePoints& points_;
    MapWishes& wishes_;
};

} // namespace vardenix
