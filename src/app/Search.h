#pragma once

#include "app/RestorePoints.h"
#include "app/Workspace.h"
#include "search/HitFrames.h"
#include "search/ReplaceWish.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace vardenix {

class FrmVXReplace;
class FrmVXStatistics;
class frmVXSearchOptions;
class frmVXSearchResults;
enum class DerivedFile;
struct StatisticsRow;

// What is asked of whoever has learned the land.
struct LandAnswers {
    FittingTiles Fitting;
    // Posts at seams that do not fit; none while nothing has been learned.
    std::function<std::optional<int64_t>()> SeamPosts;
    // Learns where it is not yet, and shows them as hits.
    std::function<void()> FindSeams;
};

// The search, its windows and the frames round what it found; and the files that are
// computed from the posts. Each window is made when it is first wanted.
class Search : public WorkspacePart {
public:
    // Both are borrowed.
    Search(Workspace& workspace, RestorePoints& points);
    ~Search() override;

    void Make(DerivedFile kind);
    void ShowOptions();
    void ShowResults(bool shown);
    // Shows hits that another command has found.
    void ShowFound(const std::function<void(SearchResults&)>& find);
    // The posts that have a tile, as hits.
    void FindTile(int32_t tile);
    void ShowStatistics();
    // What the learned land does for the windows; once, before they are shown.
    void Know(LandAnswers land) { land_ = std::move(land); }
    // The window of replacing; with a tile that gives way where there is one.
    void ShowReplace(std::optional<int32_t> tile);

private:
    frmVXSearchOptions& Options();
    frmVXSearchResults& Results();
    FrmVXReplace& Replace();
    void SearchTiles();
    void ReplaceNow();
    void FindRow(const StatisticsRow& row);
    void FollowHits();

    void AddLayers(MapLayers& layers) override { layers.Marks.push_back(&hitFrames_); }
    void ShowWindows(bool workspaceShown) override;
    void WindowClosed() override;
    std::optional<DeskPart> Docked() override;
    void PlaceWindows() override;
    void StorePlaces() override;

    Workspace& workspace_;
    RestorePoints& points_;
    ProgramState& state_;
    LandAnswers land_;
    HitFrames hitFrames_;
    std::unique_ptr<frmVXSearchOptions> options_;
    std::unique_ptr<frmVXSearchResults> results_;
    std::unique_ptr<FrmVXReplace> replace_;
    std::unique_ptr<FrmVXStatistics> statistics_;
};

} // namespace vardenix
