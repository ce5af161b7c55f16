// What the buttons of FrmBINTileEdit do.
#include "bineditor/LevelTwoPass.h"
#include "bineditor/TileLists.h"
#include "bineditor/UnusedPictures.h"
#include "bineditor/windows/BinDialogs.h"
#include "bineditor/windows/FrmBINTileEdit.h"
#include "bineditor/windows/TileDialogs.h"
#include "bineditor/windows/TileSlots.h"
#include "catalogue/TextureBinFile.h"
#include "catalogue/TileNumbers.h"
#include "catalogue/TypeNames.h"
#include "platform/OpenPage.h"
#include "platform/SavedOrKept.h"
#include "platform/windows/RunTimeBarrier.h"
#include "ui_FrmBINTileEdit.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QShortcut>

#include <cmath>
#include <utility>

namespace vardenix {

namespace {

// The bar: (percent - base) / scale of its full width.
constexpr int ProgressScale = 100;
constexpr int ProgressBase = 0;
constexpr int FullWidth = 3495; // twips
enum Page { ActionsPage, MovePage };

} // namespace

void FrmBINTileEdit::ConnectButtons() {
    const auto join = [this](QAbstractButton* button, auto work) {
        OnSignal(button, &QAbstractButton::clicked, this, work);
    };
    join(ui_->cmdAppendSet, [this] { AppendSet_Run({}); });
    join(ui_->cmdAppendTile, [this] { AppendTile_Run({}); });
    join(ui_->cmdDeleteSet, [this] { cmdDeleteSet_Click(); });
    join(ui_->cmdDeleteTile, [this] { cmdDeleteTile_Click(); });
    join(ui_->cmdChangeSet, [this] { cmdChangeSet_Click(); });
    join(ui_->cmdEditTile, [this] { cmdEditTile_Click(); });
    join(ui_->cmdSaveBIN, [this] { cmdSaveBIN_Click(); });
    join(ui_->cmdSaveBoth, [this] { cmdSaveBoth_Click(); });
    join(ui_->cmdCorrectL2, [this] { cmdCorrectL2_Click(); });
    join(ui_->cmdOptions, [this] { cmdOptions_Click(); });
    join(ui_->cmdOpenTerrain, [this] { cmdOpenTerrain_Click(); });
    join(ui_->cmdDeleteUnusedDDS, [this] {
        cmdDeleteUnusedDDS(state_.Catalogue, platform_.Dialogs);
        RefreshTilePics({SelectedSet, SelectedTile});
    });
    join(ui_->cmdDocs, [this] {
        OpenPage(platform_.Processes, platform_.Dialogs, state_.Configuration.OnlineHelp);
    });
    ui_->cmdSaveBIN->setShortcut(QKeySequence("Ctrl+S"));
    ui_->cmdSaveBoth->setShortcut(QKeySequence("Ctrl+Shift+S"));
    ui_->cmdDocs->setShortcut(QKeySequence("F1"));
    // Captions whose first letter another one has already.
    ui_->cmdAppendTile->setShortcut(QKeySequence("Alt+R"));
    ui_->cmdDeleteTile->setShortcut(QKeySequence("Alt+L"));
    ui_->cmdDeleteUnusedDDS->setShortcut(QKeySequence("Alt+U"));
    ui_->cmdOpenTerrain->setShortcut(QKeySequence("Alt+V"));
}

void FrmBINTileEdit::ConnectMove() {
    OnSignal(ui_->cmdMoveSet, &QAbstractButton::clicked, this, [this] {
        MoveSource = SelectedSet;
        ShowMoveFrame(true);
    });
    OnSignal(ui_->cmdMoveOK, &QAbstractButton::clicked, this,
             [this] { cmdMoveOK_Click(); });
    OnSignal(ui_->cmdMoveCancel, &QAbstractButton::clicked, this,
             [this] { ShowMoveFrame(false); });
    OnSignal(ui_->Option1_0, &QAbstractButton::toggled, this,
             [this] { ShowMovePosition(); });
}

void FrmBINTileEdit::ConnectPalette() {
    ui_->picTilePalette->setMouseTracking(true);
    ui_->picTilePalette->installEventFilter(this);
}

bool FrmBINTileEdit::eventFilter(QObject* watched, QEvent* event) {
    if (watched == ui_->picTilePalette) {
        if (event->type() == QEvent::MouseMove)
            picTilePalette_MouseMove(static_cast<QMouseEvent*>(event)->pos());
        else if (event->type() == QEvent::MouseButtonRelease) // a press hides all tips
            picTilePalette_Click(static_cast<QMouseEvent*>(event)->globalPosition());
        else if (event->type() == QEvent::Leave)
            copied_.reset();
    }
    return QWidget::eventFilter(watched, event);
}

void FrmBINTileEdit::picTilePalette_MouseMove(QPoint place) {
    QWidget& grid = *ui_->picTilePalette;
    // A hand that clicks is never quite still.
    if (copied_ &&
        (place - *copied_).manhattanLength() < QApplication::startDragDistance())
        return;
    copied_.reset();
    if (SelectedTile == -1 || TilePalette.empty())
        return paletteTip_.SetToolText(grid, "No Palette loaded...");
    const PaletteTip tip = TipOfPalette(
        TilePalette, PaletteIndexAt(place.x(), place.y(), grid.width(), grid.height()));
    paletteTip_.SetBackColor(tip.Back);
    paletteTip_.SetForeColor(tip.Fore);
    paletteTip_.SetToolText(grid, QString::fromStdString(tip.Text));
}

void FrmBINTileEdit::picTilePalette_Click(QPointF cursor) {
    QWidget& grid = *ui_->picTilePalette;
    if (!copied_)
        QGuiApplication::clipboard()->setText(clsToolTip::ToolText(grid));
    copied_ = grid.mapFromGlobal(cursor).toPoint();
    paletteTip_.SetToolText(grid, "Copied to clipboard");
    paletteTip_.Show(grid, cursor.toPoint());
}

std::string FrmBINTileEdit::ShownSelectedSet() const {
    return std::to_string(ShownSet(SelectedSet));
}

BinParts FrmBINTileEdit::Commands() {
    return {state_.Terrain, state_.Catalogue,  state_.Configuration,
            state_.Folders, platform_.Dialogs, *this,
            *this,          nullptr,           &replaced_};
}

void FrmBINTileEdit::Done(const std::optional<TilePlace>& place) {
    RefreshLists(place.value_or(TilePlace{SelectedSet, SelectedTile}));
    ShowNumbers();
}

void FrmBINTileEdit::Run(const std::string& name,
                         const std::function<std::optional<TilePlace>()>& command) {
    std::optional<TilePlace> place;
    try {
        Recording made(state_.Changes, {Paper::Catalogue, Paper::Level2}, name);
        const auto keep =
            qScopeGuard([&] { made.KeepPictures(std::exchange(replaced_, nullptr)); });
        place = command();
    } catch (...) {
        Done({});
        throw;
    }
    if (place)
        Done(place);
}

// The type is taken before the dialog opens.
void FrmBINTileEdit::AppendSet_Run(const DroppedFiles& dropped) {
    const auto terrain =
        static_cast<uint8_t>(TerrainFromIndex(ui_->ComboSetType->currentIndex()));
    Run("Append a set", [&] {
        const TilePlace selected{SelectedSet, SelectedTile};
        return cmdAppendSet(Commands(), selected, terrain, dropped).value_or(selected);
    });
}

void FrmBINTileEdit::AppendTile_Run(const DroppedFiles& dropped) {
    const bool replaces = HasTile(state_.Catalogue.Bin, SelectedSet, SelectedTile);
    Run(replaces ? "Replace a tile of set " + ShownSelectedSet()
                 : "Append a tile to set " + ShownSelectedSet(),
        [&] {
            const TilePlace selected{SelectedSet, SelectedTile};
            return cmdAppendTile(Commands(), selected, dropped).value_or(selected);
        });
}

void FrmBINTileEdit::cmdDeleteSet_Click() {
    Run("Delete set " + ShownSelectedSet(),
        [this] { return cmdDeleteSet(Commands(), SelectedSet); });
}

void FrmBINTileEdit::cmdDeleteTile_Click() {
    Run("Delete a tile of set " + ShownSelectedSet(), [this] {
        return cmdDeleteTile(Commands(), {SelectedSet, SelectedTile});
    });
}

void FrmBINTileEdit::cmdChangeSet_Click() {
    {
        const Recording made(state_.Changes, {Paper::Catalogue},
                             "Change the type of set " + ShownSelectedSet());
        ChangeSetType(
            state_.Catalogue, SelectedSet,
            static_cast<uint8_t>(TerrainFromIndex(ui_->ComboSetType->currentIndex())));
    }
    NeedSave();
    Done({});
}

void FrmBINTileEdit::cmdEditTile_Click() {
    const TilePlace place{SelectedSet, SelectedTile};
    if (!HasTile(state_.Catalogue.Bin, place.Set, place.Slot))
        return;
    const Recording made(state_.Changes, {Paper::Catalogue},
                         "Edit a tile of set " + ShownSelectedSet());
    const EditedTile edited = ShowTileDetails(state_, platform_, place, this);
    if (edited.Written)
        RefreshLists(place);
    if (edited.Changed)
        NeedSave();
}

void FrmBINTileEdit::cmdSaveBIN_Click() {
    if (SavedOrKept(platform_.Dialogs, [this](IfChanged ifChanged) {
            SaveBinFile(state_.Catalogue, log_, ifChanged);
        }))
        BinSaved();
}

void FrmBINTileEdit::cmdSaveBoth_Click() {
    if (verbs_.SaveBinAndL2())
        Tell("Texture.bin and level 2 are saved.");
}

void FrmBINTileEdit::cmdCorrectL2_Click() {
    {
        const Recording made(state_.Changes, {Paper::Level2},
                             "Tile numbers of level 2 corrected");
        for (const TileRenumbering& numbers : state_.Numbers.Missing()) {
            RenumberLevelTwo(state_.Terrain, numbers, {}, *this);
            verbs_.PostsRenumbered(numbers);
        }
    }
    state_.Numbers.CaughtUp();
    verbs_.L2NeedSave();
    CountUses(state_.Terrain, state_.Catalogue.Lookup);
    Done({});
}

void FrmBINTileEdit::cmdOptions_Click() {
    ShowBinOptions(state_.Configuration, platform_.Dialogs, this);
}

void FrmBINTileEdit::cmdOpenTerrain_Click() {
    const TextureBin& bin = state_.Catalogue.Bin;
    verbs_.OpenWorkspace(HasSet(bin, SelectedSet) ? SetAt(bin, SelectedSet).Terrain : 0);
}

void FrmBINTileEdit::ShowMoveFrame(bool on) {
    if (on)
        ShowTab(0);
    else
        MoveSource = 0;
    ui_->stack->setCurrentIndex(on ? MovePage : ActionsPage);
    ui_->FraTileDetails->setEnabled(!on);
    ui_->FraTiles->setEnabled(!on);
    ui_->TabStrip1->setEnabled(!on);
    if (!on)
        return;
    ui_->Label1->setText(QString::fromStdString(MoveSourceText(MoveSource)));
    ShowMovePosition();
    ui_->ListView1->setFocus();
}

void FrmBINTileEdit::ShowMovePosition() {
    ui_->Label2->setText(QString::fromStdString(
        MovePositionText(MoveSource, SelectedSet, ui_->Option1_0->isChecked())));
    ui_->cmdMoveOK->setEnabled(SelectedSet != MoveSource);
}

// Called off, the frame stays as it is. Any other end leads back to the usual form.
void FrmBINTileEdit::cmdMoveOK_Click() {
    Run("Move set " + std::to_string(ShownSet(MoveSource)), [this] {
        try {
            const auto place = MoveSetNow(Commands(), MoveSource, SelectedSet,
                                          ui_->Option1_0->isChecked());
            if (place)
                ShowMoveFrame(false);
            return place;
        } catch (...) {
            ShowMoveFrame(false);
            throw;
        }
    });
}

void FrmBINTileEdit::PrepareForm(bool enable) {
    if (!enable)
        focusBefore_ = QApplication::focusWidget();
    busy_ = !enable;
    stop_ = false;
    for (QWidget* part : std::initializer_list<QWidget*>{
             ui_->FraTileDetails, ui_->FraTiles, ui_->FraTileSets, ui_->FraTilePalette,
             ui_->FraActions, ui_->FraMoveSet, ui_->cmdSaveBoth, ui_->cmdCorrectL2})
        part->setEnabled(enable);
    if (!enable)
        setFocus(); // for Esc
    else if (focusBefore_ != nullptr && focusBefore_->isEnabled())
        focusBefore_->setFocus();
}

void FrmBINTileEdit::NeedSave() {
    if (!windowTitle().startsWith('*')) {
        setWindowTitle("*" + windowTitle());
        Tell({}); // what it says of a save is true no more
    }
    state_.Flags.BIN = true;
    ui_->cmdSaveBIN->setEnabled(true);
}

void FrmBINTileEdit::BinSaved() {
    state_.Changes.Saved(Paper::Catalogue);
    ShowSaved();
    Tell("Texture.bin is saved.");
    ShowNumbers();
}

void FrmBINTileEdit::ShowSaved() {
    ui_->cmdSaveBIN->setEnabled(false);
    state_.Flags.BIN = false;
    if (windowTitle().startsWith('*'))
        setWindowTitle(windowTitle().mid(1));
}

void FrmBINTileEdit::CatalogueWalked(const std::string& words) {
    if (state_.Changes.Unsaved(Paper::Catalogue))
        NeedSave();
    else
        ShowSaved();
    Tell(QString::fromStdString(words));
    Done({});
}

void FrmBINTileEdit::LevelTwoRenumbered(const TileRenumbering& numbers, bool changed) {
    verbs_.TilesRenumbered(numbers);
    state_.Numbers.Passed(numbers, changed);
    if (changed)
        verbs_.L2NeedSave();
}

void FrmBINTileEdit::Tell(const QString& text) { ui_->lblStatus->setText(text); }

// Files that do not fit one another are the user's loss when the program ends here.
void FrmBINTileEdit::ShowNumbers() {
    const NumberPasses& numbers = state_.Numbers;
    const bool fits = numbers.Fits();
    const bool bin = numbers.Unsaved(Paper::Catalogue);
    const bool level2 = numbers.Unsaved(Paper::Level2);
    ui_->cmdSaveBoth->setVisible(fits && (bin || level2));
    ui_->cmdCorrectL2->setVisible(!numbers.Missing().empty());
    const QString before = numbersText_;
    numbersText_ =
        !numbers.Missing().empty()
            ? "Level 2 was read anew and has its old tile numbers. Correct it before you "
              "save."
        : !fits ? "Level 2 and the catalogue have different tile numbers. Ctrl+Z and "
                  "Ctrl+Y lead to where they fit."
        : bin && level2 ? "Tile numbers of level 2 have changed: save both files."
        : bin
            ? "Level 2 is saved with the new tile numbers; Texture.bin is still unsaved."
        : level2
            ? "Texture.bin is saved; level 2 with the new tile numbers is still unsaved."
            : "";
    // What else the line says stays, where there is nothing to be said.
    if (!numbersText_.isEmpty() || ui_->lblStatus->text() == before)
        Tell(numbersText_);
}

bool FrmBINTileEdit::StopWanted() {
    LetEventsThrough();
    return stop_;
}

void FrmBINTileEdit::SetPB5(int percent) {
    ui_->PB5->setValue(static_cast<int>(std::lround(
        static_cast<double>(percent - ProgressBase) / ProgressScale * FullWidth)));
    if (ui_->PB5->isVisible())
        ui_->PB5->repaint();
}

void FrmBINTileEdit::ShowBar() {
    SetPB5(0);
    ui_->PB5->show();
}

void FrmBINTileEdit::HideBar() { ui_->PB5->hide(); }

void FrmBINTileEdit::SetText(const std::string& text) {
    Tell(text.empty()
             ? QString()
             : QString::fromStdString(text) + " (Esc stops between two pictures)");
    working_->ShowOver(text.empty() ? nullptr : this);
}

void FrmBINTileEdit::LetEventsThrough() { QCoreApplication::processEvents(); }

void FrmBINTileEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && busy_)
        stop_ = true;
    else if (event->key() == Qt::Key_Escape && MoveSource != 0)
        ShowMoveFrame(false);
    else
        QWidget::keyPressEvent(event);
}

void FrmBINTileEdit::dragEnterEvent(QDragEnterEvent* event) {
    if (!busy_ && MoveSource == 0 && !DraggedDds(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void FrmBINTileEdit::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    Dropped(-1, DraggedDds(*event->mimeData()));
}

// Once the other program is done with its part: boxes may come up, and work that lasts.
void FrmBINTileEdit::Dropped(int slot, std::vector<std::string> files) {
    droppedSlot_ = slot;
    droppedFiles_ = std::move(files);
    QMetaObject::invokeMethod(this, "TakeDropped", Qt::QueuedConnection);
}

// A set of what was dropped; a slot takes a file of its own, but while there is no set
// the slots are nobody's.
void FrmBINTileEdit::TakeDropped() {
    if (busy_)
        return;
    static_cast<RunTimeBarrier*>(qApp)->Guard([this] {
        if (droppedSlot_ < 0 || state_.Catalogue.Bin.NumSets == 0)
            return AppendSet_Run(droppedFiles_);
        SelectSlot(droppedSlot_);
        AppendTile_Run(droppedFiles_);
    });
}

void FrmBINTileEdit::closeEvent(QCloseEvent* event) {
    if (state_.Exiting)
        return;
    event->ignore();
    if (!busy_)
        verbs_.LeaveProgram();
}

} // namespace vardenix
