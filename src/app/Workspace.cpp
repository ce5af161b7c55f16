#include "app/Workspace.h"

#include "app/BusyWhile.h"
#include "app/Habits.h"
#include "app/SaveAll.h"
#include "files/FileNames.h"
#include "files/OwnFolders.h"
#include "mapview/windows/FrmVXTheaterPreview.h"
#include "platform/Processes.h"
#include "platform/windows/FrontWindow.h"
#include "platform/windows/RunTimeBarrier.h"
#include "program/ExitGuard.h"
#include "program/StartUp.h"
#include "workspace/StatusLine.h"
#include "workspace/TilePalette.h"
#include "workspace/windows/EdgeHandle.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTilePal.h"

#include <QApplication>

#include <array>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vardenix {

namespace {

// The windows that a box of the panel stands for, by the box.
struct WindowBox {
    std::string_view Box;
    bool Configuration::*Shown;
};
constexpr auto WindowBoxes =
    std::to_array<WindowBox>({{"chkShowMain", &Configuration::MainWinVis},
                              {"chkShowTheater", &Configuration::ThPrevWinVis},
                              {"chkShowTile", &Configuration::PalWinVis},
                              {"chkShowFeatures", &Configuration::FeatWinVis},
                              {"chkShowResults", &Configuration::SearchResWinVis}});

// What the way out asks about: a restore of level 2 has a question of its own.
DirtyFlags FlagsOfAll(const ProgramState& state) {
    return {.BIN = MayDiffer(state, Paper::Catalogue),
            .L2 = state.Flags.L2,
            .L0ELV = MayDiffer(state, Paper::Heights),
            .MAP = MayDiffer(state, Paper::MapFile)};
}

const std::string& FileOfLayer(const Terrain& terrain, Layer layer) {
    return layer == Layer::Heights ? terrain.Elevations.Path : terrain.LFilename;
}

} // namespace

Workspace::Workspace(ProgramState& state, const vardenix::Platform& platform,
                     DebugLog& log, std::function<void()> exitProgram)
    : state_(state), platform_(platform), log_(log), exitProgram_(std::move(exitProgram)),
      view_(ViewOfSettings(state.Configuration)),
      undo_(state.Terrain, state.Changes, *this), places_(state.Configuration, windows_),
      desk_(state.Folders.AppPath, log) {}

Workspace::~Workspace() = default;

void Workspace::MakePreview() {
    if (!windows_.Preview)
        windows_.Preview = std::make_unique<FrmVXTheaterPreview>(
            state_, view_, platform_.Dialogs, *this);
}

// The map is painted with the panel's bar, so the two are made together.
void Workspace::MakeMap(MapWishes& wishes) {
    if (windows_.Map)
        return;
    windows_.Panel = std::make_unique<FrmVXMain>(state_, view_, *this);
    renderer_ = std::make_unique<MapRenderer>(
        MapSources{state_.Terrain, state_.Catalogue, state_.MapFileRecord,
                   state_.Configuration, state_.Folders.ShippedPath},
        MapTools{tilePictures_, *windows_.Panel, log_, state_.AbortPaint});
    MapLayers layers;
    for (WorkspacePart* part : parts_)
        part->AddLayers(layers);
    windows_.Map = std::make_unique<FrmVXMap>(FrmVXMap::Parts{
        state_, view_, interaction_, *renderer_, undo_, *this, wishes, layers});
    KeepOrder();
    OnSignal(windows_.Map.get(), &FrmVXMap::GridChosen, windows_.Panel.get(),
             [this] { windows_.Panel->GridChosen(); });
    OnSignal(windows_.Map.get(), &FrmVXMap::RoomFilled, windows_.Panel.get(),
             [this] { windows_.Panel->GridLaidOut(); });
    OnSignal(windows_.Panel.get(), &FrmVXMain::GroupsFolded, windows_.Panel.get(),
             [this] { RememberFolded(); });
    OnSignal(windows_.Panel.get(), &FrmVXMain::MapCaptionChanged, windows_.Map.get(),
             [this](const QString& caption) { windows_.Map->setWindowTitle(caption); });
    OnSignal(windows_.Map.get(), &FrmVXMap::ViewPainted, windows_.Preview.get(),
             [this] { windows_.Preview->MakeViewPort(); });
    OnSignal(windows_.Map.get(), &FrmVXMap::MinimiseStateChanged, windows_.Map.get(),
             [this] { RestoreChildWindows(); });
    for (WorkspacePart* part : parts_)
        part->WindowsMade();
}

// Made for the first theater. The tiles come with the layout, when the window has its
// width; until then none of another theater may be chosen from.
void Workspace::MakePalette() {
    if (!windows_.Palette) {
        windows_.Palette =
            std::make_unique<FrmVXTilePal>(state_, interaction_, tilePictures_, *this);
        KeepOverMap(*windows_.Palette, windows_);
        OnSignal(windows_.Palette.get(), &FrmVXTilePal::TileTaken, windows_.Palette.get(),
                 [this] { windows_.Map->TakeKeyboard(); });
    }
    windows_.Palette->Clear();
}

void Workspace::EditorMade(QWidget& editor) {
    for (WorkspacePart* part : parts_)
        part->EditorMade(editor);
}

void Workspace::MapFileOpened() {
    for (WorkspacePart* part : parts_)
        part->MapFileOpened();
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
    ShowParts(places_.SmallWindowsShown());
}

void Workspace::ShowParts(bool workspaceShown) {
    for (WorkspacePart* part : parts_)
        part->ShowWindows(workspaceShown);
}

void Workspace::ApplySavedLayout() {
    // Whoever has settings keeps the windows that they had.
    const bool first = NeverPlaced(state_.Configuration);
    const bool oneWindow = desk_.Read().OneWindow.value_or(first);
    places_.Place();
    for (WorkspacePart* part : parts_)
        part->PlaceWindows();
    if (first && oneWindow) {
        // Where they go when each gets its own window back.
        places_.Store();
        for (WorkspacePart* part : parts_)
            part->StorePlaces();
        state_.Configuration.PalWinVis = true;
        desk_.Change([](Desk& desk) { desk.OneWindow = true; });
    }
    windows_.Palette->Command1_Click();
    TakeRelief();
    windows_.Panel->ShowSettings();
    CommandsChanged();
    if (oneWindow) {
        DockAll();
    } else {
        FoldPanel(false);
        places_.ShowByBoxes();
        ShowParts(true);
    }
    TakeUpHabits(*this, desk_.Read());
    for (WorkspacePart* part : parts_)
        part->TheaterOpened();
    RefreshPicArray();
    desk_.Change([this](Desk& desk) { NoteOpened(*this, desk); });
}

void Workspace::DockAll() {
    std::vector<DeskPart> docked{
        {.Window = windows_.Palette.get(), .Box = "chkShowTile"},
        {.Window = windows_.Preview.get(), .Box = "chkShowTheater", .Tab = false}};
    for (WorkspacePart* part : parts_)
        if (const auto more = part->Docked())
            docked.push_back(*more);
    FoldPanel(true);
    deskWindow_ = std::make_unique<DeskWindow>(
        windows_, docked, [this](const char* box) { WindowHidden(box); },
        desk_.Read().Layout);
    places_.ShowByBoxes();
    ShowParts(true);
    deskWindow_->ShowPanel(!desk_.Read().PanelHidden);
    OnSignal(&deskWindow_->Handle(), &QAbstractButton::clicked, deskWindow_.get(),
             [this] { ShowPanel(!ShowsPanel()); });
    deskWindow_->show();
    windows_.Map->setFocus();
}

// As the user has left it; before that the one window shows of the panel what is wanted
// all the time, and its own window all of it.
void Workspace::FoldPanel(bool oneWindow) {
    const auto folded = desk_.Read().Folded;
    const std::string names =
        folded.value_or(oneWindow ? "FraWindows Frame3 Frame1 Frame2" : "");
    std::istringstream words(names);
    windows_.Panel->FoldGroups({std::istream_iterator<std::string>(words), {}});
}

void Workspace::RememberFolded() {
    std::string names;
    for (const std::string& name : windows_.Panel->FoldedGroups())
        names += (names.empty() ? "" : " ") + name;
    desk_.Change([&names](Desk& desk) { desk.Folded = names; });
}

void Workspace::ShowPanel(bool shown) {
    if (!deskWindow_)
        return;
    deskWindow_->ShowPanel(shown);
    desk_.Change([shown](Desk& desk) { desk.PanelHidden = !shown; });
    CommandsChanged();
}

bool Workspace::ShowsPanel() const { return !deskWindow_ || deskWindow_->ShowsPanel(); }

void Workspace::SetOneWindow(bool on) {
    if (on == IsOneWindow())
        return;
    StorePlaces();
    if (on)
        DockAll();
    else
        FreeAll();
    desk_.Change([on](Desk& desk) { desk.OneWindow = on; });
    RefreshPicArray();
}

void Workspace::FreeAll() {
    deskWindow_.reset();
    FoldPanel(false);
    KeepOrder();
    for (WorkspacePart* part : parts_)
        if (const auto docked = part->Docked())
            KeepOverMap(*docked->Window, windows_);
    windows_.Map->FollowRoom();
    places_.Place();
    for (WorkspacePart* part : parts_)
        part->PlaceWindows();
    places_.ShowByBoxes();
    ShowParts(true);
}

void Workspace::ShowWindow(bool Configuration::*shown, bool on) {
    state_.Configuration.*shown = on;
    if (on)
        places_.ShowTicked();
    else
        places_.ShowByBoxes();
}

SavingParts Workspace::Saving() {
    return {state_.Terrain, view_, platform_.Dialogs, Panel(), log_, Panel()};
}

// Work goes on upon the files that were opened, which a copy elsewhere leaves as they
// are.
void Workspace::SaveTheater(bool as) {
    if (const auto saved = CmdSaveTheater(Saving(), as)) {
        const Paper paper = PaperOf(view_.Edited());
        const bool own = SameFile(*saved, FileOfLayer(state_.Terrain, view_.Edited()));
        if (own)
            state_.Changes.Saved(paper);
        else
            copied_.at(static_cast<size_t>(paper)) = state_.Changes.Revision(paper);
        Tell(SavedWords(*saved, platform_.Clock.Now()) +
             (own ? "" : "; the file that was opened is as it was"));
        for (WorkspacePart* part : parts_)
            part->TheaterSaved();
    }
    Panel().RedrawSaveButton();
}

bool Workspace::LiesElsewhere(Paper paper) const {
    return copied_.at(static_cast<size_t>(paper)) == state_.Changes.Revision(paper);
}

void Workspace::TakeTyped() {
    for (WorkspacePart* part : parts_)
        part->TakeTyped();
}

void Workspace::AllSaved() {
    Panel().L2Saved();
    for (WorkspacePart* part : parts_)
        part->AllSaved();
}

void Workspace::HeightsLoaded(ElevationLayer before) {
    ChangeLog& changes = state_.Changes;
    if (before.Kind == ElevationKind::None) {
        undo_.ForgetElevations();
        changes.LoadedAnew(Paper::Heights);
    } else {
        Recording made(changes, {},
                       "Load " + AfterLastSlash(state_.Terrain.Elevations.Path));
        undo_.ForgetElevations();
        made.Replaced(std::move(before));
    }
    changes.Saved(Paper::Heights);
    if (view_.L0Mode)
        undo_.ShowButtons(Layer::Heights);
}

void Workspace::EditL0Elv(bool on) {
    view_.L0Mode = on;
    Panel().ChangeControlsForL0Edit(on);
    undo_.ShowButtons(view_.Edited());
}

std::string Workspace::TheaterFolder() const {
    return FolderOfTheater({state_.Terrain.LFilename, state_.Catalogue.BinPath,
                            state_.MAPFile, state_.Catalogue.DDSFolder});
}

void Workspace::TakeRelief() {
    if (const auto looks = desk_.Read().Relief) {
        view_.ShowRelief = looks->Shown;
        view_.ReliefAlone = looks->Alone;
        view_.ReliefStrength = looks->Strength;
        view_.ShowContours = looks->Contours;
        view_.ContourStep = looks->Step;
    }
}

void Workspace::RememberRelief() {
    const ReliefLooks looks{.Shown = view_.ShowRelief,
                            .Alone = view_.ReliefAlone,
                            .Strength = view_.ReliefStrength,
                            .Contours = view_.ShowContours,
                            .Step = view_.ContourStep};
    if (looks != desk_.Read().Relief.value_or(ReliefLooks()))
        desk_.Change([&looks](Desk& desk) { desk.Relief = looks; });
}

void Workspace::RefreshPicArray() {
    if (held_)
        repaintWanted_ = true;
    else
        windows_.Map->RefreshPicArray();
}

void Workspace::PaintOnce(const std::function<void()>& work) {
    held_ = true;
    try {
        work();
    } catch (...) {
        PaintWanted();
        throw;
    }
    PaintWanted();
}

void Workspace::PaintWanted() {
    held_ = false;
    if (std::exchange(previewWanted_, false))
        RemakePreview();
    if (std::exchange(repaintWanted_, false))
        RefreshPicArray();
}

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

void Workspace::L2NeedSave() { windows_.Panel->L2NeedSave(); }

void Workspace::L0NeedSave() { windows_.Panel->L0NeedSave(); }

void Workspace::L2AsSaved() { windows_.Panel->L2Saved(); }

void Workspace::L0AsSaved() { windows_.Panel->L0Saved(); }

void Workspace::PlaceView(int x, int y) {
    windows_.Map->SetPosition(ClampToScroll({x, y}, state_.Terrain.MapWidth));
}

void Workspace::Tell(const std::string& words) {
    windows_.Map->ShowWord(QString::fromStdString(words));
}

void Workspace::SelectionChanged() { windows_.Map->ShowTools(); }

void Workspace::CommandsChanged() {
    for (WorkspacePart* part : parts_)
        part->CommandsChanged();
}

void Workspace::ShowWorkspace() {
    if (deskWindow_) {
        deskWindow_->show();
        windows_.Map->setFocus(); // else the first box would have it, and all letters
    }
    places_.ShowByBoxes();
    ShowParts(true);
    RefreshPicArray();
}

// The chosen number may be nobody's any more.
void Workspace::ForgetLostTile() {
    if (!HasTile(state_.Catalogue.Lookup, interaction_.SelectedTile))
        interaction_.SelectedTile = -1;
    std::erase_if(interaction_.Hand.MoreTiles, [this](int32_t tile) {
        return !HasTile(state_.Catalogue.Lookup, tile);
    });
}

void Workspace::CatalogueWalked() {
    ForgetLostTile();
    windows_.Palette->Command1_Click();
}

void Workspace::RemakePreview() {
    if (held_) {
        previewWanted_ = true;
        return;
    }
    const BusyWhile busy(*this);
    const Configuration& settings = state_.Configuration;
    state_.Preview =
        ShowLFile(state_.Terrain, {settings.PreviewSeaColor, settings.PreviewLevelColors},
                  Panel(), log_);
    windows_.Preview->PreviewChanged();
    windows_.Preview->MakeViewPort();
}

void Workspace::ShowWorkspaceWith(uint8_t classCode) {
    ForgetLostTile();
    windows_.Palette->Refresh_Pal(classCode);
    ShowWorkspace();
}

void Workspace::PostsRenumbered(const TileRenumbering& numbers) {
    undo_.TilesRenumbered(numbers);
    for (WorkspacePart* part : parts_)
        part->NumbersChanged();
}

void Workspace::LevelTwoReadAnew() {
    state_.Numbers.LevelTwoReadAnew();
    state_.Changes.Saved(Paper::Level2);
    Panel().L2Saved();
    for (WorkspacePart* part : parts_)
        part->LevelTwoReadAnew();
}

// The chosen tile is still the one that is painted; one that has gone is chosen no more.
void Workspace::TilesRenumbered(const TileRenumbering& numbers) {
    PostsRenumbered(numbers);
    int32_t& chosen = interaction_.SelectedTile;
    Renumber(interaction_.Hand, numbers);
    if (chosen < 0)
        return;
    chosen = numbers.TakesAway(chosen) ? -1 : numbers.Of(chosen);
    windows_.Palette->ShowSelectedTile();
}

void Workspace::HideWorkspace() {
    ShowParts(false);
    if (deskWindow_)
        deskWindow_->hide(); // its parts lie as they lay when it comes back
    else
        places_.HideAll();
}

void Workspace::WindowHidden(const char* checkBoxName) {
    for (const WindowBox& row : WindowBoxes)
        if (row.Box == checkBoxName)
            state_.Configuration.*row.Shown = false;
    for (WorkspacePart* part : parts_)
        part->WindowClosed();
    CommandsChanged();
}

void Workspace::StorePlaces() {
    RememberRelief();
    places_.Store();
    for (WorkspacePart* part : parts_)
        part->StorePlaces();
    desk_.Change([this](Desk& desk) {
        NoteHabits(*this, desk);
        if (deskWindow_)
            desk.Layout = deskWindow_->Layout();
    });
}

void Workspace::StartAnew(const std::string& folder) {
    nextProgram_ = QuotedWord(ProgramFile());
    if (!folder.empty())
        nextProgram_ += " " + QuotedWord(folder);
    desk_.Change([&folder](Desk& desk) { desk.Resume = folder; });
    if (LeaveProgram())
        return;
    nextProgram_.clear();
    desk_.Change([](Desk& desk) { desk.Resume.clear(); });
}

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
    WayOut leaving = WayOut::Lose;
    for (const WorkspacePart* part : parts_) {
        const WayOut wanted = part->AskToLeave();
        if (wanted == WayOut::Stay)
            return false;
        if (wanted == WayOut::SaveAll)
            leaving = wanted;
    }
    if (leaving == WayOut::Lose)
        leaving = ConfirmExit(FlagsOfAll(state_), platform_.Dialogs);
    if (leaving == WayOut::Stay || (leaving == WayOut::SaveAll && !SaveAll(*this)))
        return false;
    for (WorkspacePart* part : parts_)
        part->Leaving();
    exitProgram_();
    return true;
}

} // namespace vardenix
