#include "app/BinEditor.h"

#include "app/Workspace.h"
#include "bineditor/windows/FrmBINTileEdit.h"
#include "platform/SavedOrKept.h"
#include "program/MissingSegments.h"
#include "program/PaperSaving.h"
#include "workspace/LogWalk.h"
#include "workspace/windows/FrmVXMain.h"

#include <QLabel>
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
    FrmBINTileEdit& editor = Editor();
    workspace_.HideWorkspace();
    editor.OpenAt(*place);
}

void BinEditor::Walked(const Change& change, Walk walk) {
    if (!editor_)
        return;
    if (change.Touches(Paper::Catalogue) || change.Pictures)
        editor_->CatalogueWalked(WalkWords(change, walk));
    ShowNumbers();
}

void BinEditor::OpenWorkspace(uint8_t classCode) {
    ShowOnPanel();
    workspace_.ShowWorkspaceWith(classCode);
    editor_->hide();
}

void BinEditor::AllSaved() {
    if (editor_)
        editor_->BinSaved();
    ShowOnPanel();
}

void BinEditor::ShowNumbers() {
    if (editor_)
        editor_->ShowNumbers();
    ShowOnPanel();
}

// What the panel's user should know before the program ends. In a label of its own, since
// a menu that opens clears the line of what it shows for a while.
void BinEditor::ShowOnPanel() {
    QStatusBar* line = workspace_.Panel().statusBar();
    auto* label = line->findChild<QLabel*>("lblNumbers");
    if (label == nullptr) {
        label = new QLabel(line);
        label->setObjectName("lblNumbers");
        line->setSizeGripEnabled(false);
        line->addPermanentWidget(label, 1);
    }
    const NumberPasses& numbers = state_.Numbers;
    const bool bin = numbers.Unsaved(Paper::Catalogue);
    const bool level2 = numbers.Unsaved(Paper::Level2);
    label->setText(
        !numbers.Fits()
            ? "L2 has other tile numbers than the BIN file: see the BIN editor."
        : bin && level2 ? "Tile numbers changed: save L2 and the BIN file."
        : bin           ? "L2 is saved; the BIN file that fits it is not."
        : level2        ? "The BIN file is saved; L2 that fits it is not."
                        : "");
    line->setVisible(!label->text().isEmpty());
}

void BinEditor::L2NeedSave() { workspace_.L2NeedSave(); }

void BinEditor::TilesRenumbered(const TileRenumbering& numbers) {
    workspace_.TilesRenumbered(numbers);
}

void BinEditor::PostsRenumbered(const TileRenumbering& numbers) {
    workspace_.PostsRenumbered(numbers);
}

bool BinEditor::SaveBinAndL2() {
    if (!MaySaveOverGap(state_.Terrain, platform_.Dialogs) ||
        !SavedOrKept(platform_.Dialogs, [this](IfChanged ifChanged) {
            SavePapers(state_, {Paper::Level2, Paper::Catalogue}, *editor_,
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
