#include "app/BinEditorWindows.h"

#include "app/Workspace.h"
#include "bineditor/BinSaving.h"
#include "bineditor/windows/FrmBINTileEdit.h"
#include "catalogue/TileCheck.h"
#include "platform/SavedOrKept.h"
#include "workspace/windows/FrmVXMain.h"

#include <QStatusBar>

namespace vardenix {

BinEditorWindows::BinEditorWindows(ProgramState& state, const Platform& platform,
                                   DebugLog& log, Workspace& workspace)
    : state_(state), platform_(platform), log_(log), workspace_(workspace) {
    OfferedVerbs& offers = workspace.Offers();
    offers.Panel[PanelVerb::OpenBIN] = [this] { OpenEditor(); };
    offers.LocateInBIN = [this](int32_t tileNumber) { LocateInBIN(tileNumber); };
    offers.BinNeedsSave = [this] { return editor_ && editor_->NeedSaveFlag(); };
    offers.TheaterSaved = [this] {
        if (editor_)
            editor_->L2Saved();
        ShowApart();
    };
}

BinEditorWindows::~BinEditorWindows() = default;

FrmBINTileEdit& BinEditorWindows::MadeEditor() {
    if (!editor_)
        editor_ = std::make_unique<FrmBINTileEdit>(
            FrmBINTileEdit::Parts{state_, workspace_.Pictures(), platform_, log_, *this});
    return *editor_;
}

// Made before anything is hidden: where it cannot be, the workspace stays.
void BinEditorWindows::OpenEditor() {
    FrmBINTileEdit& editor = MadeEditor();
    static_cast<WorkspaceCommands&>(workspace_).HideWorkspace();
    editor.Open();
}

void BinEditorWindows::LocateInBIN(int32_t tileNumber) {
    const auto place = PlaceInBIN(tileNumber, state_.Catalogue.Bin.NumSets);
    if (!place) {
        platform_.Dialogs.Notice(NoSetForTile, "Error", BoxIcon::Critical);
        return;
    }
    CountTileUse(state_.Terrain, state_.Catalogue.Lookup);
    FrmBINTileEdit& editor = MadeEditor();
    static_cast<WorkspaceCommands&>(workspace_).HideWorkspace();
    editor.OpenAt(*place);
}

void BinEditorWindows::OpenWorkspace(uint8_t classCode) {
    ShowApart();
    workspace_.ShowWorkspaceWith(classCode);
    editor_->hide();
}

// What the panel's user should know before the program ends.
void BinEditorWindows::ShowApart() {
    QStatusBar* line = workspace_.Windows().Panel->statusBar();
    const bool apart = editor_ && editor_->Apart();
    line->setSizeGripEnabled(false);
    line->setVisible(apart);
    if (!apart)
        return;
    const bool bin = editor_->NeedSaveFlag();
    line->showMessage(bin && L2Unsaved()
                          ? "Tile numbers changed: save L2 and the BIN file."
                      : bin ? "L2 is saved; the BIN file that fits it is not."
                            : "The BIN file is saved; L2 that fits it is not.");
}

void BinEditorWindows::L2NeedSave() {
    static_cast<WorkspaceCommands&>(workspace_).L2NeedSave();
}

bool BinEditorWindows::L2Unsaved() const {
    return workspace_.Windows().Panel->L2NeedSaveFlag();
}

void BinEditorWindows::TilesRenumbered(const TileRenumbering& numbers) {
    workspace_.TilesRenumbered(numbers);
}

bool BinEditorWindows::SaveBinAndL2() {
    if (!SavedOrKept(platform_.Dialogs, [this](IfChanged ifChanged) {
            SaveBinAndLevelTwo(state_.Catalogue, state_.Terrain, *editor_, log_,
                               ifChanged);
        }))
        return false;
    workspace_.Windows().Panel->L2Saved();
    workspace_.Undo().Saved(Layer::Posts);
    editor_->BinSaved();
    return true;
}

bool BinEditorWindows::LeaveProgram() { return workspace_.LeaveProgram(); }

} // namespace vardenix
