#pragma once

#include "app/Workspace.h"
#include "features/FeatureDrawing.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"
#include "search/HitFrames.h"
#include "workspace/RegionExchange.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vardenix {

class FrmVXFeatures;
class frmVXSearchOptions;
class frmVXSearchResults;
enum class DerivedFile;

// Features, the search, regions and the derived files: their windows, and what the
// workspace has them do. Each window is made when it is first wanted.
class OverlayWindows {
public:
    // All are borrowed; fills in what the workspace offers of it.
    OverlayWindows(ProgramState& state, const Platform& platform, DebugLog& log,
                   Workspace& workspace);
    OverlayWindows(const OverlayWindows&) = delete;
    OverlayWindows& operator=(const OverlayWindows&) = delete;
    ~OverlayWindows();

    FrmVXFeatures& Features();
    frmVXSearchOptions& SearchOptions();
    frmVXSearchResults& SearchResultsWindow();

private:
    void OfferPanelVerbs(OfferedVerbs& offers);
    void OfferMapVerbs(OfferedVerbs& offers);
    void OfferWindows(OfferedVerbs& offers);

    void Export();
    void Import();
    void ExportTiles();
    void SubExportTDFs();
    void ImportTiles();
    void Make(DerivedFile kind);
    void SearchTiles();
    void LoadFeatures(const std::vector<std::string>& paths);

    void ShowWindows(bool workspaceShown);
    void BoxesChanged();
    void FollowHits();
    void PlaceWindows();
    void StorePlaces();

    ProgramState& state_;
    const Platform& platform_;
    DebugLog& log_;
    Workspace& workspace_;
    DrawnFeatures drawn_;
    HitFrames hitFrames_;
    std::optional<TileRegion> region_; // waits for the click that stamps it
    std::unique_ptr<FrmVXFeatures> features_;
    std::unique_ptr<frmVXSearchOptions> searchOptions_;
    std::unique_ptr<frmVXSearchResults> searchResults_;
};

} // namespace vardenix
