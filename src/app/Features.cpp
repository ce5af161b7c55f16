#include "app/Features.h"

#include "features/FeaturesAgain.h"
#include "features/windows/FrmVXFeatures.h"
#include "platform/windows/RunTimeBarrier.h"

#include <utility>

namespace vardenix {

Features::Features(Workspace& workspace)
    : workspace_(workspace), settings_(workspace.State().Configuration),
      drawn_({workspace.State().Features, workspace.State().ShownFeatures, settings_}) {
    workspace.Join(*this);
    workspace.State().Changes.Follow(*this);
}

Features::~Features() = default;

FrmVXFeatures& Features::Window() {
    if (!window_) {
        window_ = std::make_unique<FrmVXFeatures>(
            workspace_.State(), workspace_.Platform().Dialogs, workspace_);
        KeepOverMap(*window_, workspace_.Windows());
        OnSignal(window_.get(), &FrmVXFeatures::Changed, window_.get(),
                 [this] { Remember(); });
    }
    return *window_;
}

void Features::Show(bool shown) {
    settings_.FeatWinVis = shown;
    ShowWindows(true);
}

void Features::Load(const std::vector<std::string>& paths) {
    Show(true);
    workspace_.CommandsChanged();
    Window().LoadFiles(paths);
}

void Features::Remember() {
    FeaturesOfTheater features{.Theater = workspace_.TheaterFolder(),
                               .Files = Window().Remembered(),
                               .Shown = ShownKinds(workspace_.State().ShownFeatures)};
    workspace_.Memory().Change(
        [&features](Desk& desk) { NoteFeatures(desk, std::move(features)); });
}

void Features::TheaterOpened() {
    const Desk desk = workspace_.Memory().Read();
    const FeaturesOfTheater* remembered = FeaturesOf(desk, workspace_.TheaterFolder());
    if (remembered == nullptr)
        return;
    ProgramState& state = workspace_.State();
    const auto missing =
        LoadFeaturesAgain(*remembered, state.Features, state.ShownFeatures);
    Window().SetRemembered(remembered->Files);
    if (!missing.empty())
        workspace_.Tell("Features that could not be loaded: " + missing.front() +
                        (missing.size() > 1 ? " and others" : ""));
}

void Features::Walked(const Change& change, Walk /*walk*/) {
    if (window_ && change.Touches(Paper::Features))
        window_->FeaturesWalked();
}

void Features::ShowWindows(bool workspaceShown) {
    const bool shown = workspaceShown && settings_.FeatWinVis;
    if (window_ || shown)
        ShowTool(Window(), shown);
}

std::optional<DeskPart> Features::Docked() {
    return DeskPart{&Window(), "chkShowFeatures"};
}

void Features::PlaceWindows() {
    PlaceTool(Window(), settings_.FeatWinPos, workspace_.Windows());
}

void Features::StorePlaces() {
    if (window_ && window_->isWindow())
        settings_.FeatWinPos = StoredPlaceOf(*window_);
}

} // namespace vardenix
