#include "app/Workspace.h"

#include "mapeditor/MapFile.h"
#include "platform/FileNames.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "platform/windows/WindowPlace.h"
#include "theater/ExitGuard.h"
#include "theater/StartUp.h"
#include "workspace/FirstLayout.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTheaterPreview.h"

#include <QScreen>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vardenix {

namespace {

WindowSize SizeOf(const QWidget& window) { return {window.width(), window.height()}; }

void PlaceAt(QWidget& window, const PixelRect& place) {
    window.resize(place.Width, place.Height);
    MoveOnScreen(window, {place.Left, place.Top});
}

void PlaceAt(QWidget& window, const WindowPosition& place) {
    MoveOnScreen(window, {PixelsOfTwips(place.Left), PixelsOfTwips(place.Top)});
}

WindowPosition PlaceOf(const QWidget& window) {
    return {.Top = TwipsOfPixels(window.y()), .Left = TwipsOfPixels(window.x())};
}

// The name in the list of theaters; of one opened by hand, the folder that the folder of
// its theater.map lies in.
std::string TheaterTitle(const ProgramState& state) {
    const std::vector<std::string> choices = TheaterChoices(state.Discovery);
    const auto index = static_cast<size_t>(state.Configuration.OptionTheaterListIndex);
    if (index > 0 && index < choices.size())
        return choices[index];
    std::string folder = state.MAPFile;
    for (int levels = 0; levels < 2; ++levels) {
        folder = UpToLastSlash(folder);
        if (!folder.empty())
            folder.pop_back();
    }
    return AfterLastSlash(folder);
}

} // namespace

Workspace::Workspace(ProgramState& state, const Platform& platform, DebugLog& log,
                     std::function<void()> exitProgram)
    : state_(state), platform_(platform), log_(log), exitProgram_(std::move(exitProgram)),
      view_(ViewOfSettings(state.Configuration)),
      renderer_({state.Terrain, state.Catalogue, state.MapFileRecord, state.Configuration,
                 state.Folders.AppPath},
                {tilePictures_, pb3_, log, state.AbortPaint}) {}

Workspace::~Workspace() = default;

FrmVXTheaterPreview& Workspace::Preview() {
    if (!frmVXTheaterPreview_)
        frmVXTheaterPreview_ = std::make_unique<FrmVXTheaterPreview>(
            state_, view_, platform_.Dialogs, *this);
    return *frmVXTheaterPreview_;
}

void Workspace::PreviewChanged() { Preview().PreviewChanged(); }

void Workspace::LoadMapEditor() { OpenMapFile(state_.MAPFile, state_.MapFileRecord); }

void Workspace::LoadMap() {
    if (!frmVXMap_) {
        frmVXMap_ = std::make_unique<FrmVXMap>(state_, view_, renderer_, *this);
        OnSignal(frmVXMap_.get(), &FrmVXMap::ViewPainted, frmVXTheaterPreview_.get(),
                 [this] { frmVXTheaterPreview_->MakeViewPort(); });
        OnSignal(frmVXMap_.get(), &FrmVXMap::MinimiseStateChanged, frmVXMap_.get(),
                 [this] { RestoreChildWindows(); });
    }
    frmVXMap_->setWindowTitle(QString::fromStdString(TheaterTitle(state_)));
}

void Workspace::ShowMainPanel() {}

// Small windows go with the map when it is made an icon.
void Workspace::RestoreChildWindows() {
    frmVXTheaterPreview_->setVisible(!state_.Starting && !frmVXMap_->isMinimized() &&
                                     state_.Configuration.ThPrevWinVis);
}

void Workspace::InitForm() { frmVXMap_->InitForm(); }

void Workspace::ApplySavedLayout() {
    Configuration& settings = state_.Configuration;
    if (NeverPlaced(settings)) {
        settings.MainWinVis = true;
        settings.ThPrevWinVis = true;
        PlaceFirst();
    } else {
        PlaceAsStored();
    }
    ShowByBoxes();
    RefreshPicArray();
}

void Workspace::PlaceFirst() {
    const QRect room = frmVXMap_->screen()->availableGeometry();
    const FirstLayout layout =
        LayOutFirst({room.left(), room.top(), room.width(), room.height()}, {},
                    SizeOf(*frmVXMap_), SizeOf(*frmVXTheaterPreview_));
    PlaceAt(*frmVXMap_, layout.Map);
    PlaceAt(*frmVXTheaterPreview_, layout.Preview);
}

void Workspace::PlaceAsStored() {
    PlaceAt(*frmVXMap_, state_.Configuration.MainWinPos);
    PlaceAt(*frmVXTheaterPreview_, state_.Configuration.ThPrevWinPos);
}

void Workspace::StorePositions() {
    state_.Configuration.MainWinPos = PlaceOf(*frmVXMap_);
    state_.Configuration.ThPrevWinPos = PlaceOf(*frmVXTheaterPreview_);
}

void Workspace::ShowByBoxes() {
    frmVXTheaterPreview_->setVisible(state_.Configuration.ThPrevWinVis);
    frmVXMap_->setVisible(state_.Configuration.MainWinVis);
}

void Workspace::RefreshPicArray() { frmVXMap_->RefreshPicArray(); }

void Workspace::LoadImageControls() { frmVXMap_->LoadImageControls(); }

void Workspace::ScrollTo(int x, int y) {
    frmVXMap_->SetPosition(ClampToScroll({x, y}, state_.Terrain.MapWidth));
    RefreshPicArray();
}

void Workspace::PositionChanged() {}

void Workspace::L2NeedSave() {}

void Workspace::L0NeedSave() {}

void Workspace::ShowWorkspace() {
    ShowByBoxes();
    RefreshPicArray();
}

void Workspace::HideWorkspace() {
    frmVXMap_->hide();
    frmVXTheaterPreview_->hide();
}

void Workspace::WindowHidden(const char* checkBoxName) {
    const std::string_view name = checkBoxName;
    if (name == "chkShowTheater")
        state_.Configuration.ThPrevWinVis = false;
    else if (name == "chkShowMain" && !LeaveProgram())
        ShowByBoxes();
}

bool Workspace::LeaveProgram() {
    StorePositions();
    if (!ConfirmExit({}, platform_.Dialogs))
        return false;
    exitProgram_();
    return true;
}

} // namespace vardenix
