#include "app/OverlayWindows.h"

#include "app/OneWindow.h"
#include "features/FeatureExport.h"
#include "features/windows/FrmVXFeatures.h"
#include "mapview/windows/FrmVXTheaterPreview.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "search/DerivedFiles.h"
#include "search/TileSearch.h"
#include "search/windows/frmVXSearchOptions.h"
#include "search/windows/frmVXSearchResults.h"
#include "workspace/StatusLine.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"

#include <QElapsedTimer>
#include <QScreen>

namespace vardenix {

namespace {

// While it lives, nothing on the panel can be used and clicks on the map do nothing:
// events are handled inside long work.
class BusyWhile {
public:
    explicit BusyWhile(Workspace& workspace)
        : panel_(*workspace.Windows().Panel), scroll_(workspace.View()) {
        panel_.LockPanel(true);
    }
    BusyWhile(const BusyWhile&) = delete;
    BusyWhile& operator=(const BusyWhile&) = delete;
    ~BusyWhile() { panel_.LockPanel(false); }

private:
    FrmVXMain& panel_;
    ScrollBusyWhile scroll_;
};

void ShowTool(QWidget& window, bool shown) {
    if (shown)
        NoIcon(window);
    SetShown(window, shown);
}

} // namespace

OverlayWindows::OverlayWindows(ProgramState& state, const Platform& platform,
                               DebugLog& log, Workspace& workspace)
    : state_(state), platform_(platform), log_(log), workspace_(workspace),
      drawn_({state.Features, state.ShownFeatures, state.Configuration}),
      hitFrames_(state.Search.Results, state.Terrain) {
    OfferedVerbs& offers = workspace.Offers();
    OfferPanelVerbs(offers);
    OfferMapVerbs(offers);
    OfferWindows(offers);
}

OverlayWindows::~OverlayWindows() = default;

void OverlayWindows::OfferPanelVerbs(OfferedVerbs& offers) {
    offers.Panel[PanelVerb::MakeMEA] = [this] { Make(DerivedFile::MEA); };
    offers.Panel[PanelVerb::MakeTC] = [this] { Make(DerivedFile::TC); };
    offers.Panel[PanelVerb::MakeTM] = [this] { Make(DerivedFile::TM); };
    offers.Panel[PanelVerb::Export] = [this] { Export(); };
    offers.Panel[PanelVerb::Import] = [this] { Import(); };
    offers.Panel[PanelVerb::SearchTiles] = [this] {
        SearchOptions().show();
        SearchOptions().raise();
        SearchOptions().activateWindow();
    };
}

void OverlayWindows::OfferMapVerbs(OfferedVerbs& offers) {
    offers.Layers = {&drawn_, {&hitFrames_}};
    offers.ExportTiles = [this] { ExportTiles(); };
    offers.SubExportTDFs = [this] { SubExportTDFs(); };
    offers.ImportTiles = [this] { ImportTiles(); };
    offers.LoadFeatures = [this](const std::vector<std::string>& paths) {
        LoadFeatures(paths);
    };
}

void OverlayWindows::OfferWindows(OfferedVerbs& offers) {
    offers.ShowWindow[PanelVerb::ShowFeatures] = [this](bool shown) {
        state_.Configuration.FeatWinVis = shown;
        ShowWindows(true);
    };
    offers.ShowWindow[PanelVerb::ShowResults] = [this](bool shown) {
        state_.Configuration.SearchResWinVis = shown;
        ShowWindows(true);
        FollowHits();
    };
    offers.ShowWindows.emplace_back([this](bool shown) { ShowWindows(shown); });
    offers.BoxesChanged.emplace_back([this] { BoxesChanged(); });
    offers.PlaceWindows.emplace_back([this] { PlaceWindows(); });
    offers.StorePlaces.emplace_back([this] { StorePlaces(); });
    offers.Parts.emplace_back([this] {
        return DeskPart{&Features(), "chkShowFeatures"};
    });
    offers.Parts.emplace_back([this] {
        return DeskPart{&SearchResultsWindow(), "chkShowResults",
                        Qt::BottomDockWidgetArea};
    });
}

FrmVXFeatures& OverlayWindows::Features() {
    if (!features_) {
        features_ =
            std::make_unique<FrmVXFeatures>(state_, platform_.Dialogs, workspace_);
        KeepOverMap(*features_, workspace_.Windows());
    }
    return *features_;
}

frmVXSearchOptions& OverlayWindows::SearchOptions() {
    if (!searchOptions_) {
        searchOptions_ = std::make_unique<frmVXSearchOptions>(state_.Search);
        OnSignal(searchOptions_.get(), &frmVXSearchOptions::SearchWanted,
                 searchOptions_.get(), [this] { SearchTiles(); });
    }
    return *searchOptions_;
}

frmVXSearchResults& OverlayWindows::SearchResultsWindow() {
    if (!searchResults_) {
        searchResults_ = std::make_unique<frmVXSearchResults>(state_, workspace_);
        KeepOverMap(*searchResults_, workspace_.Windows());
        OnSignal(searchResults_.get(), &frmVXSearchResults::RestorePointWanted,
                 searchResults_.get(), [this] {
                     workspace_.CreateRestorePoint();
                     searchResults_->RestorePointMade();
                 });
        // Values may have changed when the map is painted anew.
        OnSignal(workspace_.Windows().Map.get(), &FrmVXMap::ViewPainted,
                 searchResults_.get(), [this] { searchResults_->PostsChanged(); });
    }
    return *searchResults_;
}

void OverlayWindows::Export() {
    workspace_.Interaction().StopWaiting();
    workspace_.Interaction().WaitExportCorner1 = true;
    workspace_.Windows().Panel->ShowHint(FrmVXMain::Hint::Export);
}

void OverlayWindows::Import() {
    MapInteraction& interaction = workspace_.Interaction();
    auto region = AskForRegion(platform_.Dialogs);
    if (!region)
        return;
    region_ = std::move(region);
    interaction.StopWaiting();
    interaction.ImportWidth = region_->RegionWidth;
    interaction.ImportHeight = region_->RegionHeight;
    interaction.WaitImportCorner = true;
    workspace_.Windows().Panel->ShowHint(FrmVXMain::Hint::Import);
}

void OverlayWindows::ExportTiles() {
    const MapView& view = workspace_.View();
    const PostBox corners{view.ExportX1, view.ExportY1, view.ExportX2, view.ExportY2};
    const BusyWhile busy(workspace_);
    vardenix::ExportTiles(state_.Terrain, corners, platform_.Dialogs,
                          *workspace_.Windows().Panel);
}

void OverlayWindows::SubExportTDFs() {
    const MapView& view = workspace_.View();
    vardenix::SubExportTDFs(state_.Features,
                            {view.ExportX1, view.ExportY1, view.ExportX2, view.ExportY2},
                            platform_.Dialogs, *workspace_.Windows().Panel);
}

void OverlayWindows::ImportTiles() {
    if (!region_)
        return;
    const TileRegion region = std::move(*region_);
    region_.reset();
    const MapInteraction& interaction = workspace_.Interaction();
    {
        const BusyWhile busy(workspace_);
        if (!vardenix::ImportTiles(state_.Terrain, region, interaction.ImportX,
                                   interaction.ImportY, platform_.Dialogs,
                                   *workspace_.Windows().Panel))
            return;
    }
    WorkspaceCommands& commands = workspace_;
    // Unsaved before anything else can go wrong.
    commands.L2NeedSave();
    commands.RefreshPicArray();
    {
        const BusyWhile busy(workspace_);
        const Configuration& settings = state_.Configuration;
        state_.Preview = ShowLFile(
            state_.Terrain, {settings.PreviewSeaColor, settings.PreviewLevelColors},
            *workspace_.Windows().Panel, log_);
    }
    workspace_.Windows().Preview->PreviewChanged();
    workspace_.Windows().Preview->MakeViewPort();
}

void OverlayWindows::Make(DerivedFile kind) {
    const BusyWhile busy(workspace_);
    MakeDerivedFile(kind, state_.Terrain, state_.Catalogue.Lookup, platform_.Dialogs,
                    *workspace_.Windows().Panel);
}

void OverlayWindows::SearchTiles() {
    FrmVXMain& panel = *workspace_.Windows().Panel;
    SearchResultsWindow().PopulateResList([&] {
        const BusyWhile busy(workspace_);
        SearchState& search = state_.Search;
        QElapsedTimer timer;
        timer.start();
        vardenix::SearchTiles(state_.Terrain, search.Pattern, panel, search.Results);
        search.Milliseconds = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    });
    panel.SetWindowBox(PanelVerb::ShowResults, true);
    state_.Configuration.SearchResWinVis = true;
    ShowWindows(true);
    SearchResultsWindow().activateWindow();
    panel.LetEventsThrough();
    FollowHits();
    static_cast<WorkspaceCommands&>(workspace_)
        .Tell(HitWords(state_.Search.Results.size() - 1));
}

void OverlayWindows::LoadFeatures(const std::vector<std::string>& paths) {
    workspace_.Windows().Panel->SetWindowBox(PanelVerb::ShowFeatures, true);
    state_.Configuration.FeatWinVis = true;
    ShowWindows(true);
    Features().LoadFiles(paths);
}

void OverlayWindows::ShowWindows(bool workspaceShown) {
    const Configuration& settings = state_.Configuration;
    if (!workspaceShown && searchOptions_)
        searchOptions_->hide();
    if (features_ || (workspaceShown && settings.FeatWinVis))
        ShowTool(Features(), workspaceShown && settings.FeatWinVis);
    if (searchResults_ || (workspaceShown && settings.SearchResWinVis))
        ShowTool(SearchResultsWindow(), workspaceShown && settings.SearchResWinVis);
    hitFrames_.Shown = settings.SearchResWinVis;
}

void OverlayWindows::BoxesChanged() {
    const FrmVXMain& panel = *workspace_.Windows().Panel;
    Configuration& settings = state_.Configuration;
    settings.FeatWinVis = panel.WindowBox(PanelVerb::ShowFeatures);
    const bool results = panel.WindowBox(PanelVerb::ShowResults);
    const bool changed = results != settings.SearchResWinVis;
    settings.SearchResWinVis = results;
    ShowWindows(true);
    if (changed)
        FollowHits();
}

// The frames on the map come and go with the list.
void OverlayWindows::FollowHits() {
    if (!state_.Starting && state_.Search.Results.size() > 1)
        static_cast<WorkspaceCommands&>(workspace_).RefreshPicArray();
}

void OverlayWindows::PlaceWindows() {
    const QRect room = workspace_.Windows().Map->screen()->availableGeometry();
    // At first in the lower right, out of the way of panel and map.
    const auto place = [&room](QWidget& window, const WindowPosition& stored) {
        window.adjustSize();
        if (stored.Left != 0 || stored.Top != 0)
            return PlaceAt(window, stored);
        const QPoint corner =
            room.bottomRight() - QPoint(window.width(), window.height());
        PlaceAt(window, {TwipsOfPixels(corner.y()), TwipsOfPixels(corner.x())});
    };
    place(Features(), state_.Configuration.FeatWinPos);
    place(SearchResultsWindow(), state_.Configuration.SearchResWinPos);
}

void OverlayWindows::StorePlaces() {
    if (features_ && features_->isWindow())
        state_.Configuration.FeatWinPos = StoredPlaceOf(*features_);
    if (searchResults_ && searchResults_->isWindow())
        state_.Configuration.SearchResWinPos = StoredPlaceOf(*searchResults_);
}

} // namespace vardenix
