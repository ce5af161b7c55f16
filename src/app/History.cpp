#include "app/History.h"

#include "app/DeskPlaces.h"
#include "app/Workspace.h"
#include "platform/windows/RunTimeBarrier.h"
#include "workspace/windows/FrmVXHistory.h"

namespace vardenix {

namespace {

constexpr const char* HistoryBox = "mnuWinHistory";

} // namespace

History::History(Workspace& workspace, Steps& steps)
    : workspace_(workspace), steps_(steps) {
    workspace.Join(*this);
    workspace.State().Changes.Follow(*this);
}

History::~History() = default;

FrmVXHistory& History::Window() {
    if (!window_) {
        window_ = std::make_unique<FrmVXHistory>(workspace_.State().Changes);
        KeepOverMap(*window_, workspace_.Windows());
        OnSignal(window_.get(), &FrmVXHistory::StateWanted, window_.get(),
                 [this](size_t position) { steps_.GoTo(position); });
        OnSignal(window_.get(), &FrmVXHistory::PlaceWanted, window_.get(),
                 [this](size_t position) { steps_.ShowPlace(position); });
        OnSignal(window_.get(), &FrmVXHistory::Closed, window_.get(),
                 [this] { workspace_.WindowHidden(HistoryBox); });
    }
    return *window_;
}

void History::Show(bool shown) {
    shown_ = shown;
    ShowWindows(true);
    workspace_.CommandsChanged();
}

void History::Recorded(const Change& /*change*/) { CommandsChanged(); }

void History::Walked(const Change& /*change*/, Walk /*walk*/) { CommandsChanged(); }

// Also when something has been saved.
void History::CommandsChanged() {
    if (window_)
        window_->ChangesChanged();
}

void History::ShowWindows(bool workspaceShown) {
    const bool wanted = workspaceShown && shown_;
    if (window_ || wanted)
        ShowTool(Window(), wanted);
}

void History::WindowClosed() {
    if (window_ && window_->isHidden())
        shown_ = false;
}

std::optional<DeskPart> History::Docked() { return DeskPart{&Window(), HistoryBox}; }

} // namespace vardenix
