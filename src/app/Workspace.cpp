#include "app/Workspace.h"

#include "app/WorkspaceVerbs.h"
#include "files/FileNames.h"
#include "files/OwnFolders.h"
#include "mapeditor/MapFile.h"
#include "mapview/windows/FrmVXTheaterPreview.h"
#include "platform/Processes.h"
#include "platform/windows/FrontWindow.h"
#include "platform/windows/RunTimeBarrier.h"
#include "program/ExitGuard.h"
#include "program/StartUp.h"
#include "workspace/FirstView.h"
#include "workspace/RestorePoint.h"
#include "workspace/TilePalette.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTilePal.h"

#include <QApplication>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vardenix {

namespace {

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
      mapVerbs_(std::make_unique<MapVerbs>(*this)),
      places_(state.Configuration, windows_), desk_(state.Folders.AppPath, log) {}

Workspace::~Workspace() = default;

void Workspace::PreviewChanged() {
    if (!windows_.Preview)
        windows_.Preview = std::make_unique<FrmVXTheaterPreview>(
            state_, view_, platform_.Dialogs, *this);
    windows_.Preview->PreviewChanged();
}

void Workspace::LoadMapEditor() {
    state_.MAPFileRead = OpenMapFile(state_.MAPFile, state_.MapFileRecord);
    if (offers_.MapFileOpened)
        offers_.MapFileOpened();
}

// The map is painted with the panel's bar, so the two are made together.
void Workspace::LoadMap() {
    if (!windows_.Map)
        MakeMap();
}

void Workspace::MakeMap() {
    windows_.Panel =
        std::make_unique<FrmVXMain>(state_, view_, platform_, *this, *panelVerbs_);
    renderer_ = std::make_unique<MapRenderer>(
        MapSources{state_.Terrain, state_.Catalogue, state_.MapFileRecord,
                   state_.Configuration, state_.Folders.ShippedPath},
        MapTools{tilePictures_, *windows_.Panel, log_, state_.AbortPaint});
    windows_.Map = std::make_unique<FrmVXMap>(
        FrmVXMap::Parts{state_, view_, interaction_, *renderer_, undo_, *this, *mapVerbs_,
                        offers_.Layers});
    KeepOrder();
    OnSignal(windows_.Map.get(), &FrmVXMap::GridChosen, windows_.Panel.get(),
             [this](bool forGood) { windows_.Panel->GridChosen(forGood); });
    OnSignal(windows_.Panel.get(), &FrmVXMain::MapCaptionChanged, windows_.Map.get(),
             [this](const QString& caption) { windows_.Map->setWindowTitle(caption); });
    OnSignal(windows_.Map.get(), &FrmVXMap::ViewPainted, windows_.Preview.get(),
             [this] { windows_.Preview->MakeViewPort(); });
    OnSignal(windows_.Map.get(), &FrmVXMap::MinimiseStateChanged, windows_.Map.get(),
             [this] { RestoreChildWindows(); });
}

// It is seen when the layout is applied, at its place.
void Workspace::ShowMainPanel() {
    windows_.Panel->Form_Load(TheaterTitle(state_));
    panelVerbs_->ShowOriginOfPoint();
}

// Made for the first theater. The tiles come with the layout, when the window has its
// width; until then none of another theater may be chosen from.
void Workspace::RefreshPalette() {
    if (!windows_.Palette) {
        windows_.Palette =
            std::make_unique<FrmVXTilePal>(state_, interaction_, tilePictures_, *this);
        KeepOverMap(*windows_.Palette, windows_);
    }
    windows_.Palette->Clear();
}

// A click on the map brings it up, and buries nothing.
void Workspace::KeepOrder() {
    KeepInFront(*windows_.Panel);
    KeepOverMap(*windows_.Preview, windows_);
    if (windows_.Palette)
        KeepOverMap(*windows_.Palette, windows_);
}

void Workspace::RestoreChildWindows() {
    places_.RestoreChildWindows();
    ShowOfferedWindows(places_.SmallWindowsShown());
}

void Workspace::ShowOfferedWindows(bool workspaceShown) {
    for (const auto& show : offers_.ShowWindows)
        show(workspaceShown);
}

void Workspace::InitForm() {
    BeginWhereLandIs(state_.Configuration, state_.Terrain, state_.Catalogue.Lookup,
                     view_.ViewPosts());
    windows_.Map->InitForm();
}

void Workspace::ApplySavedLayout() {
    places_.Place();
    for (const auto& place : offers_.PlaceWindows)
        place();
    windows_.Palette->Command1_Click();
    windows_.Panel->ShowSettings();
    if (desk_.Read().OneWindow) {
        Join();
    } else {
        places_.ShowByBoxes();
        ShowOfferedWindows(true);
    }
    RefreshPicArray();
    RememberTheater();
}

void Workspace::Join() {
    std::vector<DeskPart> parts{
        {.Window = windows_.Preview.get(), .Box = "chkShowTheater"},
        {.Window = windows_.Palette.get(), .Box = "chkShowTile", .Height = 420}};
    for (const auto& part : offers_.Parts)
        parts.push_back(part());
    oneWindow_ = std::make_unique<OneWindow>(
        windows_, parts, [this](const char* box) { WindowHidden(box); },
        desk_.Read().Layout);
    places_.ShowByBoxes();
    ShowOfferedWindows(true);
    oneWindow_->show();
    windows_.Map->setFocus();
}

void Workspace::SetOneWindow(bool on) {
    if (on == IsOneWindow())
        return;
    StorePlaces();
    if (on)
        Join();
    else
        Part();
    desk_.Change([on](Desk& desk) { desk.OneWindow = on; });
    RefreshPicArray();
}

void Workspace::Part() {
    oneWindow_.reset();
    KeepOrder();
    for (const auto& part : offers_.Parts)
        KeepOverMap(*part().Window, windows_);
    windows_.Map->FollowRoom();
    places_.Place();
    for (const auto& place : offers_.PlaceWindows)
        place();
    places_.ShowByBoxes();
    ShowOfferedWindows(true);
}

void Workspace::RememberTheater() {
    const std::string folder =
        FolderOfTheater({state_.Terrain.LFilename, state_.Catalogue.BinPath,
                         state_.MAPFile, state_.Catalogue.DDSFolder});
    if (!folder.empty())
        desk_.Change([&folder](Desk& desk) { NoteTheater(desk, folder); });
}

void Workspace::RefreshPicArray() { windows_.Map->RefreshPicArray(); }

void Workspace::LoadImageControls() { windows_.Map->LoadImageControls(); }

void Workspace::ScrollTo(int x, int y) {
    {
        const ScrollBusyWhile busy(view_);
        windows_.Map->SetPosition(ClampToScroll({x, y}, state_.Terrain.MapWidth));
        windows_.Panel->LetEventsThrough();
    }
    RefreshPicArray();
}

void Workspace::PositionChanged() { windows_.Panel->PositionChanged(); }

void Workspace::L2NeedSave() {
    undo_.Marked(Layer::Posts);
    windows_.Panel->L2NeedSave();
}

void Workspace::L0NeedSave() {
    undo_.Marked(Layer::Heights);
    windows_.Panel->L0NeedSave();
}

void Workspace::L2AsSaved() { windows_.Panel->L2Saved(); }

void Workspace::L0AsSaved() { windows_.Panel->L0Saved(); }

void Workspace::PlaceView(int x, int y) {
    windows_.Map->SetPosition(ClampToScroll({x, y}, state_.Terrain.MapWidth));
}

void Workspace::Tell(const std::string& words) {
    windows_.Map->ShowWord(QString::fromStdString(words));
}

void Workspace::SelectionChanged() { windows_.Map->ShowTools(); }

void Workspace::CommandsChanged() { windows_.Panel->RefreshCommands(); }

void Workspace::ShowWorkspace() {
    if (oneWindow_)
        oneWindow_->show();
    places_.ShowByBoxes();
    ShowOfferedWindows(true);
    RefreshPicArray();
}

void Workspace::ShowWorkspaceWith(uint8_t classCode) {
    // Where level 2 was not to follow, the chosen number may be nobody's any more.
    int32_t& chosen = interaction_.SelectedTile;
    if (!HasTile(state_.Catalogue.Lookup, chosen))
        chosen = -1;
    windows_.Palette->Refresh_Pal(classCode);
    ShowWorkspace();
}

// The chosen tile is still the one that is painted; one that has gone is chosen no more.
void Workspace::TilesRenumbered(const TileRenumbering& numbers) {
    undo_.TilesRenumbered(numbers);
    renumberedSincePoint_ = true;
    int32_t& chosen = interaction_.SelectedTile;
    if (chosen < 0)
        return;
    chosen = numbers.TakesAway(chosen) ? -1 : numbers.Of(chosen);
    windows_.Palette->ShowSelectedTile();
}

void Workspace::HideWorkspace() {
    ShowOfferedWindows(false);
    if (oneWindow_)
        oneWindow_->hide(); // its parts lie as they lay when it comes back
    else
        places_.HideAll();
}

void Workspace::WindowHidden(const char* checkBoxName) {
    windows_.Panel->WindowHidden(checkBoxName);
    state_.Configuration.MainWinVis = windows_.Panel->WindowBox(PanelVerb::ShowMain);
    state_.Configuration.ThPrevWinVis = windows_.Panel->WindowBox(PanelVerb::ShowTheater);
    state_.Configuration.PalWinVis = windows_.Panel->WindowBox(PanelVerb::ShowTile);
    for (const auto& changed : offers_.BoxesChanged)
        changed();
}

void Workspace::StorePlaces() {
    places_.Store();
    for (const auto& store : offers_.StorePlaces)
        store();
    if (oneWindow_)
        desk_.Change([this](Desk& desk) { desk.Layout = oneWindow_->Layout(); });
}

void Workspace::CreateRestorePoint() { panelVerbs_->Do(PanelVerb::CreateRestorePoint); }

void Workspace::StartAnew(const std::string& folder) {
    nextProgram_ = QuotedWord(ProgramFile());
    if (!folder.empty())
        nextProgram_ += " " + QuotedWord(folder);
    if (!LeaveProgram())
        nextProgram_.clear();
}

// An icon among them is one no more; the window in use stays that.
void Workspace::BringAllToFront() {
    QWidget* inUse = QApplication::activeWindow();
    places_.ShowTicked();
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->isWindow())
            window->raise();
    if (inUse != nullptr)
        inUse->activateWindow();
}

bool Workspace::LeaveProgram() {
    StorePlaces();
    const DirtyFlags flags{.BIN = offers_.BinNeedsSave && offers_.BinNeedsSave(),
                           .L2 = windows_.Panel->L2NeedSaveFlag(),
                           .L0ELV = windows_.Panel->L0NeedSaveFlag(),
                           .MAP = offers_.MapNeedsSave && offers_.MapNeedsSave()};
    if (restoredUnsaved_ && !flags.L2 && !MayLeaveRestored(platform_.Dialogs))
        return false;
    if (!ConfirmExit(flags, platform_.Dialogs))
        return false;
    exitProgram_();
    return true;
}

} // namespace vardenix
