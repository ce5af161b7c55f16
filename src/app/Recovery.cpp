#include "app/Recovery.h"

#include "app/Workspace.h"
#include "platform/windows/RunTimeBarrier.h"
#include "recovery/windows/FrmEarlierSaves.h"

#include <QApplication>

#include <utility>

namespace vardenix {

namespace {

constexpr int LookMilliseconds = 2000;
constexpr const char* BroughtBackWords = "brought back: it is not saved yet";

} // namespace

Recovery::Recovery(Workspace& workspace) : workspace_(workspace) {
    workspace.Join(*this);
    soon_.setSingleShot(true);
    OnSignal(&soon_, &QTimer::timeout, &soon_, [this] { Offer(); });
    OnSignal(&looks_, &QTimer::timeout, &looks_, [this] { TellComplaint(); });
}

Recovery::~Recovery() = default;

void Recovery::OfferSoon() {
    // What is changed before the answer is kept, too.
    keeper_.emplace(workspace_.State(), workspace_.State().Folders.LogFolder);
    saves_.emplace(workspace_.State(), workspace_.State().Folders.SavesFolder);
    looks_.start(LookMilliseconds);
    soon_.start(0);
}

void Recovery::Offer() {
    ProgramState& state = workspace_.State();
    if (OfferLeftLogs(state, state.Folders.LogFolder, workspace_.Platform().Dialogs,
                      *this))
        ShowUnsaved("restored: it is not saved yet");
}

void Recovery::ShowEarlierSaves() {
    if (!window_) {
        window_ = std::make_unique<FrmEarlierSaves>(workspace_.State());
        OnSignal(window_.get(), &FrmEarlierSaves::BroughtBack, window_.get(),
                 [this] { ShowUnsaved(BroughtBackWords); });
    }
    window_->ShowSaves();
}

void Recovery::BringBack(Paper paper, size_t number) {
    const ProgramState& state = workspace_.State();
    vardenix::BringBack(workspace_.State(), paper, number, state.Folders.SavesFolder);
    ShowUnsaved(BroughtBackWords);
}

void Recovery::ShowUnsaved(const std::string& words) {
    const ProgramState& state = workspace_.State();
    if (state.Changes.Unsaved(Paper::Level2))
        workspace_.L2NeedSave();
    if (state.Changes.Unsaved(Paper::Heights))
        workspace_.L0NeedSave();
    workspace_.CommandsChanged(); // it can be saved now
    workspace_.RefreshPicArray();
    workspace_.Tell(words);
}

void Recovery::Leaving() {
    if (keeper_)
        keeper_->GiveUp();
}

bool Recovery::LoadHeights(ElevationKind kind, const std::string& path) {
    auto before = LoadL0ElvFile(workspace_.Saving(), kind, path);
    if (!before)
        return false;
    workspace_.HeightsLoaded(std::move(*before));
    return true;
}

void Recovery::ShowOnce(const std::function<void()>& work) { workspace_.PaintOnce(work); }

void Recovery::KeepRestored() { keeper_->Drain(); }

// Not in the middle of a stroke.
void Recovery::TellComplaint() {
    if (!keeper_ || QApplication::mouseButtons() != Qt::NoButton ||
        QApplication::activeModalWidget() != nullptr)
        return;
    if (const std::string words = keeper_->Complaint(); !words.empty())
        workspace_.Platform().Dialogs.Notice(words, {}, BoxIcon::Warning);
}

} // namespace vardenix
