#pragma once

#include "app/Workspace.h"
#include "features/FeatureDrawing.h"

#include <memory>
#include <string>
#include <vector>

namespace vardenix {

class FrmVXFeatures;

// The features on the map and their window, which is made when it is first wanted.
class Features : public WorkspacePart, private ChangeFollower {
public:
    // Borrowed.
    explicit Features(Workspace& workspace);
    ~Features() override;

    FrmVXFeatures& Window();
    void Show(bool shown);
    // Brings the window up, with feature files in it.
    void Load(const std::vector<std::string>& paths);

private:
    // For the theater, as the window has it.
    void Remember();
    void TheaterOpened() override;
    void AddLayers(MapLayers& layers) override { layers.Features = &drawn_; }
    void Walked(const Change& change, Walk walk) override;
    void ShowWindows(bool workspaceShown) override;
    void WindowClosed() override { ShowWindows(true); }
    std::optional<DeskPart> Docked() override;
    void PlaceWindows() override;
    void StorePlaces() override;

    Workspace& workspace_;
    Configuration& settings_;
    DrawnFeatures drawn_;
    std::unique_ptr<FrmVXFeatures> window_;
};

} // namespace vardenix
