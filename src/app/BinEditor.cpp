#include "app/BinEditor.h"

#include "app/Workspace.h"
#include "bineditor/BinSaving.h"
#include "bineditor/windows/FrmBINTileEdit.h"
#include "catalogue/TileCheck.h"
#include "platform/SavedOrKept.h"
#include "workspace/LogWalk.h"
#include "workspace/windows/FrmVXMain.h"

#include <QStatusBar>

namespace vardenix {

BinEditor::BinEditor(Workspace& workspace)
    : workspace_(workspace), state_(workspace.State()), platform_(workspace.Platform()) {
    workspace.Join(*this);
    state_.Changes.Follow(*this);
}

BinEditor::~BinEditor() = default;

FrmBINTileEdit& BinEditor::Editor() {
    if (!editor_) {
        editor_ = std::make_unique<FrmBINTileEdit>(
            FrmBINTileEdit::Parts{state_, workspace_.Pictures(), platform_,
                                  workspace_.Log(), static_cast<EditorVerbs&>(*this)});
        workspace_.EditorMade(*editor_);
    }
    return *editor_;
}

// Made before anything is hidden: where it cannot be, the workspace stays.
void BinEditor::Open() {
    FrmBINTileEdit& editor = Editor();
    workspace_.HideWorkspace();
    editor.Open();
}

void BinEditor::Locate(int32_t tileNumber) {
    const auto place = PlaceInBIN(tileNumber, state_.Catalogue.Bin.NumSets);
    if (!place) {
        platform_.Dialogs.Notice(NoSetForTile, "Error", BoxIcon::Critical);
        return;
    }
    CountTileUse(state_.Terrain, state_.Catalogue.Lookup);
    FrmBINTileEdit& editor = Editor();
    workspace_.HideWorkspace();
    editor.OpenAt(*place);
}

void BinEditor::AddUnsaved(DirtyFlags& flags) const {
    flags.BIN = editor_ && editor_->NeedSaveFlag();
}

void BinEditor::Walked(const Change& change, Walk walk) {
    if (!editor_)
        return;
    if (change.Touches(Paper::Catalogue) || change.Pictures)
        editor_->CatalogueWalked(WalkWords(change, walk));
    else
        editor_->L2Saved(); // or it is not any more
    ShowApart();
}

void BinEditor::TheaterSaved() {
    if (editor_)
        editor_->L2Saved();
    ShowApart();
}

void BinEditor::OpenWorkspace(uint8_t classCode) {
    ShowApart();
    workspace_.ShowWorkspaceWith(classCode);
    editor_->hide();
}

// What the panel's user should know before the program ends.
void BinEditor::ShowApart() {
    QStatusBar* line = workspace_.Panel().statusBar();
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

void BinEditor::L2NeedSave() { workspace_.L2NeedSave(); }

bool BinEditor::L2Unsaved() const {
    return workspace_.Panel().L2NeedSaveFlag() || state_.Changes.Unsaved(Paper::Level2);
}

void BinEditor::TilesRenumbered(const TileRenumbering& numbers) {
    workspace_.TilesRenumbered(numbers);
}

bool BinEditor::SaveBinAndL2() {
    if (!SavedOrKept(platform_.Dialogs, [this](IfChanged ifChanged) {
            SaveBinAndLevelTwo(state_.Catalogue, state_.Terrain, *editor_,
                               workspace_.Log(), ifChanged);
        }))
        return false;
    workspace_.Panel().L2Saved();
    state_.Changes.Saved(Paper::Level2);
    editor_->BinSaved();
    return true;
}

bool BinEditor::LeaveProgram() { return workspace_.LeaveProgram(); }

} // namespace vardenix
