#include "app/History.h"

#include "app/DeskPlaces.h"
#include "app/Recovery.h"
#include "app/Workspace.h"
#include "platform/Clock.h"
#include "platform/windows/RunTimeBarrier.h"
#include "recovery/EarlierSaves.h"
#include "workspace/windows/FrmVXHistory.h"

#include <algorithm>

namespace vardenix {

namespace {

constexpr const char* HistoryBox = "mnuWinHistory";

HistoryRow RowOfSave(const EarlierSave& save) {
    const LocalTime then = LocalTimeOf(save.Time);
    const std::string paper = NamesOf({save.Paper});
    return {HoursMinutesSeconds(then),
            NameOfPaper(save.Paper) + " as saved on " + ShortMonthDate(then), paper,
            paper};
}

} // namespace

History::History(Workspace& workspace, Steps& steps, Recovery& recovery)
    : workspace_(workspace), steps_(steps), recovery_(recovery) {
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
        OnSignal(window_.get(), &FrmVXHistory::Shown, window_.get(),
                 [this] { ListEarlier(); });
        OnSignal(window_.get(), &FrmVXHistory::EarlierWanted, window_.get(),
                 [this](size_t row) {
                     recovery_.BringBack(earlier_.at(row).first, earlier_.at(row).second);
                 });
        OnSignal(window_.get(), &FrmVXHistory::Closed, window_.get(),
                 [this] { workspace_.WindowHidden(HistoryBox); });
    }
    return *window_;
}

void History::Show(bool shown) {
    shown_ = shown;
    Remember();
    ShowWindows(true);
    workspace_.CommandsChanged();
}

void History::Remember() {
    workspace_.Memory().Change([this](Desk& desk) { desk.History = shown_; });
}

void History::PlaceWindows() { shown_ = workspace_.Memory().Read().History; }

// The oldest first, as the changes below them.
void History::ListEarlier() {
    const ProgramState& state = workspace_.State();
    std::vector<std::pair<EarlierSave, size_t>> saves;
    for (const Paper paper : AllPapers) {
        size_t number = 0;
        for (EarlierSave& save : EarlierSavesOf(state, paper, state.Folders.SavesFolder))
            saves.emplace_back(std::move(save), number++);
    }
    std::ranges::stable_sort(saves, {}, [](const auto& each) { return each.first.Time; });
    earlier_.clear();
    std::vector<HistoryRow> rows;
    for (const auto& [save, number] : saves) {
        earlier_.emplace_back(save.Paper, number);
        rows.push_back(RowOfSave(save));
    }
    earlierOld_ = false;
    window_->ShowEarlier(std::move(rows));
}

void History::Recorded(const Change& /*change*/) { CommandsChanged(); }

void History::Walked(const Change& /*change*/, Walk /*walk*/) { CommandsChanged(); }

// What it has replaced is kept a moment later.
void History::Saved(Paper /*paper*/) { earlierOld_ = true; }

// Also when something has been saved.
void History::CommandsChanged() {
    if (!window_)
        return;
    if (earlierOld_ && window_->isVisible())
        ListEarlier();
    window_->ChangesChanged();
}

void History::ShowWindows(bool workspaceShown) {
    const bool wanted = workspaceShown && shown_;
    if (window_ || wanted)
        ShowTool(Window(), wanted);
}

void History::WindowClosed() {
    if (!window_ || !window_->isHidden() || !shown_ || workspace_.State().Exiting)
        return;
    shown_ = false;
    Remember();
}

std::optional<DeskPart> History::Docked() { return DeskPart{&Window(), HistoryBox}; }

} // namespace vardenix
