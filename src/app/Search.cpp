#include "app/Search.h"

#include "app/BusyWhile.h"
#include "platform/windows/RunTimeBarrier.h"
#include "search/DerivedFiles.h"
#include "search/TileSearch.h"
#include "search/TilesMeant.h"
#include "search/windows/FrmVXReplace.h"
#include "search/windows/FrmVXStatistics.h"
#include "search/windows/frmVXSearchOptions.h"
#include "search/windows/frmVXSearchResults.h"
#include "workspace/StatusLine.h"
#include "workspace/TilePalette.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTilePal.h"

#include <QElapsedTimer>

#include <initializer_list>

namespace vardenix {

Search::Search(Workspace& workspace, RestorePoints& points)
    : workspace_(workspace), points_(points), state_(workspace.State()),
      hitFrames_(state_.Search.Results, state_.Terrain) {
    workspace.Join(*this);
}

Search::~Search() = default;

frmVXSearchOptions& Search::Options() {
    if (!options_) {
        options_ =
            std::make_unique<frmVXSearchOptions>(state_.Search, state_.Catalogue.Lookup);
        OnSignal(options_.get(), &frmVXSearchOptions::SearchWanted, options_.get(),
                 [this] { SearchTiles(); });
    }
    return *options_;
}

frmVXSearchResults& Search::Results() {
    if (!results_) {
        results_ = std::make_unique<frmVXSearchResults>(state_, workspace_);
        KeepOverMap(*results_, workspace_.Windows());
        OnSignal(results_.get(), &frmVXSearchResults::RestorePointWanted, results_.get(),
                 [this] {
                     points_.Create();
                     results_->RestorePointMade();
                 });
        // Values may have changed when the map is painted anew.
        OnSignal(workspace_.Windows().Map.get(), &FrmVXMap::ViewPainted, results_.get(),
                 [this] { results_->PostsChanged(); });
    }
    return *results_;
}

FrmVXReplace& Search::Replace() {
    if (!replace_) {
        replace_ = std::make_unique<FrmVXReplace>(state_, [this] {
            return std::span<const RowSpan>(
                workspace_.Interaction().Hand.Selected.Spans());
        });
        KeepOverMap(*replace_, workspace_.Windows());
        PlaceTool(*replace_, {}, workspace_.Windows());
        OnSignal(replace_.get(), &FrmVXReplace::ReplaceWanted, replace_.get(),
                 [this] { ReplaceNow(); });
        OnSignal(workspace_.Windows().Map.get(), &FrmVXMap::ToolsShown, replace_.get(),
                 [this] { replace_->TileChosen(workspace_.Interaction().SelectedTile); });
    }
    return *replace_;
}

void Search::ShowReplace(std::optional<int32_t> tile) {
    FrmVXReplace& window = Replace();
    window.TileChosen(workspace_.Interaction().SelectedTile);
    if (tile)
        window.SetOld(*tile);
    window.show();
    window.raise();
    window.activateWindow();
}

void Search::ReplaceNow() {
    const int64_t count = ReplaceTiles(
        state_.Terrain, state_.Catalogue.Lookup,
        {state_.Search.Results, workspace_.Interaction().Hand.Selected.Spans()},
        Replace().Wish(), state_.Changes, land_.Fitting);
    const std::string words =
        std::to_string(count) + (count == 1 ? " post changed" : " posts changed");
    if (count != 0) {
        workspace_.PaintOnce([this] {
            workspace_.L2NeedSave();
            workspace_.RemakePreview();
            workspace_.RefreshPicArray();
        });
        workspace_.Tell(words);
    }
    Replace().CountAnew();
    Replace().Tell(QString::fromStdString(words));
}

void Search::ShowStatistics() {
    if (!statistics_) {
        statistics_ = std::make_unique<FrmVXStatistics>(state_, land_.SeamPosts);
        KeepOverMap(*statistics_, workspace_.Windows());
        PlaceTool(*statistics_, {}, workspace_.Windows());
        OnSignal(statistics_.get(), &FrmVXStatistics::RowWanted, statistics_.get(),
                 [this](const StatisticsRow& row) { FindRow(row); });
    }
    statistics_->show();
    statistics_->raise();
    statistics_->activateWindow();
}

// A tile that no post has is shown where it is.
void Search::FindRow(const StatisticsRow& row) {
    if (row.Counts == RowCounts::Seams) {
        land_.FindSeams();
        statistics_->CountAnew();
        return;
    }
    if (row.Counts == RowCounts::Tile && row.Posts == 0 &&
        HasTile(state_.Catalogue.Lookup, row.From)) {
        workspace_.Windows().Palette->ShowTile(row.From);
        workspace_.ShowWindow(&Configuration::PalWinVis, true);
        return;
    }
    ShowFound([this, row](SearchResults& hits) {
        hits = PostsOfRow(state_.Terrain, state_.Catalogue.Lookup, row);
    });
}

void Search::Make(DerivedFile kind) {
    const BusyWhile busy(workspace_);
    MakeDerivedFile(kind, state_.Terrain, state_.Catalogue.Lookup,
                    workspace_.Platform().Dialogs, workspace_.Panel());
}

void Search::ShowOptions() {
    StayOver(Options(), *workspace_.Windows().Map->window());
    Options().show();
    Options().raise();
    Options().activateWindow();
}

void Search::ShowResults(bool shown) {
    state_.Configuration.SearchResWinVis = shown;
    ShowWindows(true);
    FollowHits();
}

void Search::SearchTiles() {
    ShowFound([this](SearchResults& hits) {
        FindPosts(state_.Terrain, state_.Catalogue.Lookup, state_.Search,
                  workspace_.Panel(), hits);
    });
}

void Search::FindTile(int32_t tile) {
    ShowFound([this, tile](SearchResults& hits) {
        hits = PostsOfNumber(state_.Terrain, tile);
    });
}

void Search::ShowFound(const std::function<void(SearchResults&)>& find) {
    FrmVXMain& panel = workspace_.Panel();
    Results().PopulateResList([&] {
        const BusyWhile busy(workspace_);
        SearchState& search = state_.Search;
        QElapsedTimer timer;
        timer.start();
        find(search.Results);
        search.Milliseconds = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    });
    state_.Configuration.SearchResWinVis = true;
    workspace_.CommandsChanged();
    ShowWindows(true);
    Results().activateWindow();
    panel.LetEventsThrough();
    FollowHits();
    workspace_.Tell(HitWords(state_.Search.Results.size() - 1));
}

void Search::ShowWindows(bool workspaceShown) {
    const bool wanted = state_.Configuration.SearchResWinVis;
    if (!workspaceShown && options_)
        options_->hide();
    if (options_) // the map may be a part of another window by now
        StayOver(*options_, *workspace_.Windows().Map->window());
    for (QWidget* window :
         std::initializer_list<QWidget*>{replace_.get(), statistics_.get()})
        if (!workspaceShown && window != nullptr)
            window->hide();
    if (results_ || (workspaceShown && wanted))
        ShowTool(Results(), workspaceShown && wanted);
    hitFrames_.Shown = wanted;
}

void Search::WindowClosed() {
    const bool before = hitFrames_.Shown;
    ShowWindows(true);
    if (hitFrames_.Shown != before)
        FollowHits();
}

// The frames on the map come and go with the list.
void Search::FollowHits() {
    if (!state_.Starting && state_.Search.Results.size() > 1)
        workspace_.RefreshPicArray();
}

std::optional<DeskPart> Search::Docked() {
    return DeskPart{&Results(), "chkShowResults"};
}

void Search::PlaceWindows() {
    PlaceTool(Results(), state_.Configuration.SearchResWinPos, workspace_.Windows());
}

void Search::StorePlaces() {
    if (results_ && results_->isWindow())
        state_.Configuration.SearchResWinPos = StoredPlaceOf(*results_);
}

} // namespace vardenix
