#include "app/Workspace.h"

#include "app/WorkspaceVerbs.h"
#include "mapeditor/MapFile.h"
#include "mapview/windows/FrmVXTheaterPreview.h"
#include "platform/FileNames.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "platform/windows/WindowPlace.h"
#include "theater/ExitGuard.h"
#include "theater/StartUp.h"
#include "workspace/FirstLayout.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTilePal.h"

#include <QScreen>
#include <QWindow>

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

// Stored without the frame, which is not known when the window comes back.
WindowSize PaletteSize(const Configuration& settings) {
    return {PixelsOfTwips(settings.PalWinSizeW), PixelsOfTwips(settings.PalWinSizeH)};
}

WindowPosition PlaceOf(const QWidget& window) {
    return {.Top = TwipsOfPixels(window.y()), .Left = TwipsOfPixels(window.x())};
}

// Makes it a tool of `below`, which the desktop then never puts over it and which keeps
// the keyboard when it comes up.
void KeepOver(QWidget& window, const QWidget& below) {
    window.setWindowFlags(Qt::Tool | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                          Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint);
    window.setAttribute(Qt::WA_ShowWithoutActivating);
    for (const QWidget* each : std::initializer_list<const QWidget*>{&window, &below})
        each->winId(); // makes what the desktop knows of it
    window.windowHandle()->setTransientParent(below.windowHandle());
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
      view_(ViewOfSettings(state.Configuration)), undo_(state.Terrain, *this),
      panelVerbs_(std::make_unique<PanelVerbs>(*this)),
      mapVerbs_(std::make_unique<MapVerbs>(*this)) {}

Workspace::~Workspace() = default;

void Workspace::PreviewChanged() {
    if (!frmVXTheaterPreview_)
        frmVXTheaterPreview_ = std::make_unique<FrmVXTheaterPreview>(
            state_, view_, platform_.Dialogs, *this);
    frmVXTheaterPreview_->PreviewChanged();
}

void Workspace::LoadMapEditor() { OpenMapFile(state_.MAPFile, state_.MapFileRecord); }

// The map is painted with the panel's bar, so the two are made together.
void Workspace::LoadMap() {
    if (!frmVXMap_)
        MakeMap();
}

void Workspace::MakeMap() {
    frmVXMain_ =
        std::make_unique<FrmVXMain>(state_, view_, platform_, *this, *panelVerbs_);
    renderer_ = std::make_unique<MapRenderer>(
        MapSources{state_.Terrain, state_.Catalogue, state_.MapFileRecord,
                   state_.Configuration, state_.Folders.AppPath},
        MapTools{tilePictures_, *frmVXMain_, log_, state_.AbortPaint});
    frmVXMap_ = std::make_unique<FrmVXMap>(FrmVXMap::Parts{
        state_, view_, interaction_, *renderer_, undo_, *this, *mapVerbs_});
    OnSignal(frmVXMain_.get(), &FrmVXMain::MapCaptionChanged, frmVXMap_.get(),
             [this](const QString& caption) { frmVXMap_->setWindowTitle(caption); });
    OnSignal(frmVXMap_.get(), &FrmVXMap::ViewPainted, frmVXTheaterPreview_.get(),
             [this] { frmVXTheaterPreview_->MakeViewPort(); });
    OnSignal(frmVXMap_.get(), &FrmVXMap::MinimiseStateChanged, frmVXMap_.get(),
             [this] { RestoreChildWindows(); });
}

// It is seen when the layout is applied, at its place.
void Workspace::ShowMainPanel() { frmVXMain_->Form_Load(TheaterTitle(state_)); }

// Small windows go with the map when it is made an icon. Before they have their places
// they stay hidden.
void Workspace::RestoreChildWindows() {
    RestorePreview();
    if (!frmVXTilePal_)
        return;
    const bool shown = SmallWindowsShown() && state_.Configuration.PalWinVis;
    // Some desktops make an icon of a tool with its window, and shown as an icon it would
    // take the map with it.
    if (shown)
        frmVXTilePal_->setWindowState(frmVXTilePal_->windowState() &
                                      ~Qt::WindowMinimized);
    frmVXTilePal_->setVisible(shown);
}

void Workspace::RestorePreview() {
    frmVXTheaterPreview_->setVisible(SmallWindowsShown() &&
                                     state_.Configuration.ThPrevWinVis);
}

bool Workspace::SmallWindowsShown() const {
    return laidOut_ && !frmVXMap_->isMinimized();
}

// Made for the first theater. The tiles come with the layout, when the window has its
// width; until then none of another theater may be chosen from.
void Workspace::RefreshPalette() {
    if (!frmVXTilePal_) {
        frmVXTilePal_ =
            std::make_unique<FrmVXTilePal>(state_, interaction_, tilePictures_, *this);
        // A click that paints brings the map up.
        KeepOver(*frmVXTilePal_, *frmVXMap_);
    }
    frmVXTilePal_->Clear();
}

void Workspace::InitForm() { frmVXMap_->InitForm(); }

void Workspace::ApplySavedLayout() {
    Configuration& settings = state_.Configuration;
    const bool first = NeverPlaced(settings);
    if (first) {
        settings.MainWinVis = true;
        settings.ThPrevWinVis = true;
    }
    first ? PlaceFirst() : PlaceAsStored();
    laidOut_ = true;
    frmVXTilePal_->Command1_Click();
    frmVXMain_->ShowSettings();
    ShowByBoxes();
    RefreshPicArray();
}

void Workspace::PlaceFirst() {
    const QRect room = frmVXMap_->screen()->availableGeometry();
    // The panel has its true height only when it is up.
    MoveOnScreen(*frmVXMain_, room.topLeft());
    frmVXMain_->show();
    const FirstLayout layout =
        LayOutFirst({room.left(), room.top(), room.width(), room.height()},
                    SizeOf(*frmVXMain_), SizeOf(*frmVXMap_),
                    SizeOf(*frmVXTheaterPreview_), PaletteSize(state_.Configuration));
    PlaceAt(*frmVXMap_, layout.Map);
    PlaceAt(*frmVXTheaterPreview_, layout.Preview);
    PlaceAt(*frmVXTilePal_, layout.Palette);
}

void Workspace::PlaceAsStored() {
    PlaceAt(*frmVXMain_, state_.Configuration.MainControlWinPos);
    PlaceAt(*frmVXMap_, state_.Configuration.MainWinPos);
    PlaceAt(*frmVXTheaterPreview_, state_.Configuration.ThPrevWinPos);
    const WindowSize palette = PaletteSize(state_.Configuration);
    frmVXTilePal_->resize(QSize(palette.Width, palette.Height)
                              .boundedTo(frmVXMap_->screen()->availableSize()));
    PlaceAt(*frmVXTilePal_, state_.Configuration.PalWinPos);
}

void Workspace::StorePositions() {
    state_.Configuration.MainControlWinPos = PlaceOf(*frmVXMain_);
    state_.Configuration.MainWinPos = PlaceOf(*frmVXMap_);
    state_.Configuration.ThPrevWinPos = PlaceOf(*frmVXTheaterPreview_);
    // One that fills the screen keeps the place it had before.
    if (frmVXTilePal_->isMaximized())
        return;
    state_.Configuration.PalWinPos = PlaceOf(*frmVXTilePal_);
    state_.Configuration.PalWinSizeW = TwipsOfPixels(frmVXTilePal_->width());
    state_.Configuration.PalWinSizeH = TwipsOfPixels(frmVXTilePal_->height());
}

void Workspace::ShowByBoxes() {
    frmVXMain_->show();
    // Before the map, which so ends up with the keyboard. The palette comes behind it, or
    // the desktop would not know what it is to lie over.
    RestorePreview();
    if (!frmVXMap_->isVisible())
        frmVXTilePal_->hide();
    frmVXMap_->setVisible(state_.Configuration.MainWinVis);
    RestoreChildWindows();
}

void Workspace::RefreshPicArray() { frmVXMap_->RefreshPicArray(); }

void Workspace::LoadImageControls() { frmVXMap_->LoadImageControls(); }

void Workspace::ScrollTo(int x, int y) {
    {
        const ScrollBusyWhile busy(view_);
        frmVXMap_->SetPosition(ClampToScroll({x, y}, state_.Terrain.MapWidth));
        frmVXMain_->LetEventsThrough();
    }
    RefreshPicArray();
}

void Workspace::PositionChanged() { frmVXMain_->PositionChanged(); }

void Workspace::L2NeedSave() { frmVXMain_->L2NeedSave(); }

void Workspace::L0NeedSave() { frmVXMain_->L0NeedSave(); }

void Workspace::CommandsChanged() { frmVXMain_->RefreshCommands(); }

void Workspace::ShowWorkspace() {
    ShowByBoxes();
    RefreshPicArray();
}

void Workspace::HideWorkspace() {
    for (QWidget* window :
         std::initializer_list<QWidget*>{frmVXMain_.get(), frmVXMap_.get(),
                                         frmVXTheaterPreview_.get(), frmVXTilePal_.get()})
        window->hide();
}

void Workspace::WindowHidden(const char* checkBoxName) {
    frmVXMain_->WindowHidden(checkBoxName);
    state_.Configuration.MainWinVis = frmVXMain_->WindowBox(PanelVerb::ShowMain);
    state_.Configuration.ThPrevWinVis = frmVXMain_->WindowBox(PanelVerb::ShowTheater);
    state_.Configuration.PalWinVis = frmVXMain_->WindowBox(PanelVerb::ShowTile);
}

bool Workspace::LeaveProgram() {
    StorePositions();
    const DirtyFlags flags{.L2 = frmVXMain_->L2NeedSaveFlag(),
                           .L0ELV = frmVXMain_->L0NeedSaveFlag()};
    if (!ConfirmExit(flags, platform_.Dialogs))
        return false;
    exitProgram_();
    return true;
}

} // namespace vardenix
