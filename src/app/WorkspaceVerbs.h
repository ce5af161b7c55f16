#pragma once

#include "app/Workspace.h"
#include "workspace/TheaterSaving.h"
#include "workspace/windows/MapDialogs.h"
#include "workspace/windows/PanelDialogs.h"

namespace vardenix {

// What the panel's buttons and boxes do to the other windows.
class Workspace::PanelVerbs : public PanelDialogs {
public:
    explicit PanelVerbs(Workspace& workspace);

    bool Can(PanelVerb verb) const override;
    bool Chosen(PanelVerb verb) const override;
    void Do(PanelVerb verb) override;
    void SaveTheater(bool as) override;
    void EditL0Elv(bool on) override;
    void ShowWindow(PanelVerb window, bool on) override;
    void SaveScreenshot(const std::string& path, int filterIndex) override;
    std::vector<std::string> RecentTheaters() override;
    void OpenRecent(const std::string& folder) override;

    // The tip of the panel's button that restores follows the point that is there.
    void ShowOriginOfPoint();

private:
    SavingParts Saving();
    void LoadL0Elv();
    void CreatePoint();
    void Restore();

    Workspace& workspace_;
};

// What clicks on the map do to the other windows.
class Workspace::MapVerbs : public MapDialogs {
public:
    explicit MapVerbs(Workspace& workspace);

    bool CanLocateInBIN() const override;
    bool CanLocateColorInMAP() const override;
    void LocateInBIN(int32_t tileNumber) override;
    void LocateColorInMAP(uint8_t palette) override;
    void ExportTiles() override;
    void SubExportTDFs() override;
    void ImportTiles() override;
    void PickTile(int32_t tileNumber) override;
    void SetZoom(int16_t zoomPosts) override;
    void LoadFeatures(const std::vector<std::string>& paths) override;
    bool ExportWithShift() const override;
    void HideFrame7() override;

private:
    Workspace& workspace_;
};

} // namespace vardenix
