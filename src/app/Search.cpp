#include "app/Search.h"

#include "app/BusyWhile.h"
#include "platform/windows/RunTimeBarrier.h"
#include "search/DerivedFiles.h"
#include "search/TileSearch.h"
#include "search/windows/frmVXSearchOptions.h"
#include "search/windows/frmVXSearchResults.h"
#include "workspace/StatusLine.h"
#include "workspace/windows/FrmVXMap.h"

#include <QElapsedTimer>

namespace vardenix {

Search::Search(Workspace& workspace, RestorePoints& points)
    : workspace_(workspace), points_(points), state_(workspace.State()),
      hitFrames_(state_.Search.Results, state_.Terrain) {
    workspace.Join(*this);
}

Search::~Search() = default;

frmVXSearchOptions& Search::Options() {
    if (!options_) {
        options_ = std::make_unique<frmVXSearchOptions>(state_.Search);
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

void Search::Make(DerivedFile kind) {
    const BusyWhile busy(workspace_);
    MakeDerivedFile(kind, state_.Terrain, state_.Catalogue.Lookup,
                    workspace_.Platform().Dialogs, workspace_.Panel());
}

void Search::ShowOptions() {
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
        vardenix::SearchTiles(state_.Terrain, state_.Search.Pattern, workspace_.Panel(),
                              hits);
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
    PlaceLowerRight(Results(), state_.Configuration.SearchResWinPos,
                    workspace_.Windows());
}

void Search::StorePlaces() {
    if (results_ && results_->isWindow())
        state_.Configuration.SearchResWinPos = StoredPlaceOf(*results_);
}

} // namespace vardenix
