#include "app/Workspace.h"

#include "mapeditor/MapFile.h"
#include "platform/FileNames.h"
#include "platform/windows/RunTimeBarrier.h"
#include "platform/windows/Theme.h"
#include "platform/windows/WindowPlace.h"
#include "services/ImageFiles.h"
#include "services/ImageLayer.h"
#include "theater/ExitGuard.h"
#include "theater/StartUp.h"
#include "workspace/FirstLayout.h"
#include "workspace/RestorePoint.h"
#include "workspace/TheaterSaving.h"
#include "workspace/windows/FrmVXMain.h"
#include "workspace/windows/FrmVXMap.h"
#include "workspace/windows/FrmVXTheaterPreview.h"
#include "workspace/windows/MapDialogs.h"
#include "workspace/windows/PanelDialogs.h"

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

// What the panel's buttons and boxes do to the other windows.
class Workspace::PanelVerbs : public PanelDialogs {
public:
    explicit PanelVerbs(Workspace& workspace)
        : PanelDialogs(workspace.state_, workspace.view_, workspace.platform_, workspace),
          workspace_(workspace) {}

    bool Can(PanelVerb verb) const override {
        switch (verb) {
        case PanelVerb::Undo:
            return workspace_.undo_.CanUndo(workspace_.view_.L0Mode);
        case PanelVerb::Redo:
            return workspace_.undo_.CanRedo(workspace_.view_.L0Mode);
        case PanelVerb::SaveTheater:
        case PanelVerb::LoadL0Elv:
        case PanelVerb::EditL0Elv:
        case PanelVerb::CreateRestorePoint:
        case PanelVerb::Restore:
        case PanelVerb::SaveScreenshot:
        case PanelVerb::ShowMain:
        case PanelVerb::ShowTheater:
            return true;
        default:
            return false;
        }
    }

    void Do(PanelVerb verb) override {
        switch (verb) {
        case PanelVerb::LoadL0Elv:
            return LoadL0Elv();
        case PanelVerb::Undo:
            return workspace_.undo_.Undo(workspace_.view_.L0Mode);
        case PanelVerb::Redo:
            return workspace_.undo_.Redo(workspace_.view_.L0Mode);
        case PanelVerb::CreateRestorePoint:
            return CreatePoint();
        case PanelVerb::Restore:
            return Restore();
        default:
            return;
        }
    }

    void SaveTheater(bool as) override { CmdSaveTheater(Saving(), as); }

    void EditL0Elv(bool on) override {
        workspace_.view_.L0Mode = on;
        workspace_.frmVXMain_->ChangeControlsForL0Edit(on);
        workspace_.undo_.ShowButtons(on);
    }

    void ShowWindow(PanelVerb window, bool on) override {
        Configuration& settings = workspace_.state_.Configuration;
        if (window == PanelVerb::ShowMain)
            settings.MainWinVis = on;
        else if (window == PanelVerb::ShowTheater)
            settings.ThPrevWinVis = on;
        workspace_.ShowByBoxes();
    }

    void SaveScreenshot(const std::string& path, int filterIndex) override {
        const ImageSession session;
        ImageSaveOptions options;
        options.Format = filterIndex == 2 ? PictureFormat::Jpeg : PictureFormat::Bmp;
        options.ColorDepth = 24;
        ImageSaveEx(PictureToBitmap(workspace_.frmVXMap_->Picture2().Pixels()), path,
                    options);
    }

private:
    SavingParts Saving() {
        return {workspace_.state_.Terrain, workspace_.view_, workspace_.platform_.Dialogs,
                *workspace_.frmVXMain_,    workspace_.log_,  *workspace_.frmVXMain_};
    }

    // A map of the finest elevations shows the new ones at once.
    void LoadL0Elv() {
        if (!cmdLoadL0Elv(Saving()))
            return;
        workspace_.undo_.ForgetElevations();
        if (workspace_.view_.L0Mode)
            workspace_.undo_.ShowButtons(true);
    }

    void CreatePoint() {
        workspace_.frmVXMain_->LetEventsThrough();
        CreateRestorePoint(workspace_.state_.Terrain,
                           workspace_.state_.Folders.SystemTempPath);
    }

    void Restore() {
        workspace_.frmVXMain_->LetEventsThrough();
        const Restored result = RestoreFromPoint(
            workspace_.state_.Terrain, workspace_.state_.Folders.SystemTempPath);
        if (result == Restored::Done)
            workspace_.RefreshPicArray();
        else
            workspace_.platform_.Dialogs.Notice(RestoreMessage(result), {},
                                                BoxIcon::Information);
    }

    Workspace& workspace_;
};

// What clicks on the map do to the other windows.
class Workspace::MapVerbs : public MapDialogs {
public:
    explicit MapVerbs(Workspace& workspace)
        : MapDialogs(workspace.platform_.Dialogs, workspace,
                     workspace.state_.Catalogue.Lookup),
          workspace_(workspace) {}

    bool ExportWithShift() const override {
        return workspace_.frmVXMain_->ExportWithShift();
    }
    void HideFrame7() override { workspace_.frmVXMain_->ShowHint(FrmVXMain::Hint::None); }

private:
    Workspace& workspace_;
};

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
    frmVXTheaterPreview_->setVisible(laidOut_ && !frmVXMap_->isMinimized() &&
                                     state_.Configuration.ThPrevWinVis);
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
    frmVXMain_->ShowSettings();
    ShowByBoxes();
    RefreshPicArray();
}

void Workspace::PlaceFirst() {
    const QRect room = frmVXMap_->screen()->availableGeometry();
    const FirstLayout layout = LayOutFirst(
        {room.left(), room.top(), room.width(), room.height()}, SizeOf(*frmVXMain_),
        SizeOf(*frmVXMap_), SizeOf(*frmVXTheaterPreview_));
    MoveOnScreen(*frmVXMain_, {layout.Panel.Left, layout.Panel.Top});
    PlaceAt(*frmVXMap_, layout.Map);
    PlaceAt(*frmVXTheaterPreview_, layout.Preview);
}

void Workspace::PlaceAsStored() {
    PlaceAt(*frmVXMain_, state_.Configuration.MainControlWinPos);
    PlaceAt(*frmVXMap_, state_.Configuration.MainWinPos);
    PlaceAt(*frmVXTheaterPreview_, state_.Configuration.ThPrevWinPos);
}

void Workspace::StorePositions() {
    state_.Configuration.MainControlWinPos = PlaceOf(*frmVXMain_);
    state_.Configuration.MainWinPos = PlaceOf(*frmVXMap_);
    state_.Configuration.ThPrevWinPos = PlaceOf(*frmVXTheaterPreview_);
}

void Workspace::ShowByBoxes() {
    frmVXMain_->show();
    RestoreChildWindows();
    frmVXMap_->setVisible(state_.Configuration.MainWinVis);
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
    for (QWidget* window : std::initializer_list<QWidget*>{
             frmVXMain_.get(), frmVXMap_.get(), frmVXTheaterPreview_.get()})
        window->hide();
}

void Workspace::WindowHidden(const char* checkBoxName) {
    frmVXMain_->WindowHidden(checkBoxName);
    state_.Configuration.MainWinVis = frmVXMain_->WindowBox(PanelVerb::ShowMain);
    state_.Configuration.ThPrevWinVis = frmVXMain_->WindowBox(PanelVerb::ShowTheater);
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
