#pragma once

#include "bineditor/BinCommands.h"
#include "bineditor/EditorVerbs.h"
#include "bineditor/PaletteView.h"
#include "pictures/TilePictures.h"
#include "platform/DebugLog.h"
#include "platform/Platform.h"
#include "platform/windows/clsToolTip.h"
#include "program/ProgramState.h"

#include <QPoint>
#include <QPointF>
#include <QPointer>
#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Ui {
class FrmBINTileEdit;
}

namespace vardenix {

class WorkingNotice;
class SetModel;
class TileModel;

// The BIN editor: the sets of the catalogue and their tiles. It works on the very arrays
// that the map shows. As a Progress, it shows the bar PB5.
class FrmBINTileEdit : public QWidget, public Progress, private BinWindow {
    Q_OBJECT

public:
    // All are borrowed for the window's life. `Pictures` are those of the map.
    struct Parts {
        ProgramState& State;
        TilePictures& Pictures;
        const vardenix::Platform& Platform;
        DebugLog& Log;
        EditorVerbs& Verbs;
    };
    explicit FrmBINTileEdit(const Parts& parts);
    ~FrmBINTileEdit() override;

    // Everything anew, with a slot of a set selected.
    void OpenAt(const TilePlace& place);
    // With what was selected last.
    void Open() { OpenAt({SelectedSet, SelectedTile}); }

    // The catalogue differs from its file.
    bool NeedSaveFlag() const { return state_.Flags.BIN; }
    // The file is what the catalogue is: the flag falls, and the star with it.
    void BinSaved();
    // Level 2 has been saved, or read anew: the line that tells of its numbers follows.
    void ShowNumbers();
    // A walk through the log of changes has led past a change of the catalogue; `words`
    // tell which.
    void CatalogueWalked(const std::string& words);
    // Of the selected tile's picture, were it one with a palette of its own.
    PaletteTable TilePalette;

    void SetPB5(int percent);
    void ShowBar() override;
    void HideBar() override;
    void SetBar(int percent) override { SetPB5(percent); }
    // The picture in work.
    void SetText(const std::string& text) override;
    void LetEventsThrough() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void DressControls();
    void MakeToolTips();
    void ConnectLists();
    void ConnectSlots();
    void ConnectButtons();
    void ConnectMove();
    void ConnectPalette();

    // Lists, counters and selection; then the pictures.
    void RefreshLists(const TilePlace& selected);
    void RefreshTilePics(const TilePlace& selected);
    void ShowDetails();
    void ShowCommands();
    void ShowTip(int slot);
    void SelectFromSets(int row);
    void SelectFromTiles(int row);
    void SelectSlot(int slot);
    void ShowTab(int tab);

    BinParts Commands();
    // Lists and form as a command has left them, however it ended.
    void Done(const std::optional<TilePlace>& place);
    // A command as one entry of the log, with the lists and level 2 as it leaves them.
    void Run(const std::string& name,
             const std::function<std::optional<TilePlace>()>& command);
    std::string ShownSelectedSet() const;
    void AppendSet_Run(const DroppedFiles& dropped);
    void AppendTile_Run(const DroppedFiles& dropped);
    void cmdDeleteSet_Click();
    void cmdDeleteTile_Click();
    void cmdChangeSet_Click();
    void cmdEditTile_Click();
    void cmdSaveBIN_Click();
    void cmdSaveBoth_Click();
    void cmdCorrectL2_Click();
    void cmdOptions_Click();
    void cmdOpenTerrain_Click();
    void picTilePalette_MouseMove(QPoint place);
    void picTilePalette_Click(QPointF cursor);
    // Files that come down on a slot, or on no slot (-1).
    void Dropped(int slot, std::vector<std::string> files);
    Q_INVOKABLE void TakeDropped();

    void ShowMoveFrame(bool on);
    void ShowMovePosition();
    void cmdMoveOK_Click();

    void PrepareForm(bool enable) override;
    void NeedSave() override;
    void LevelTwoRenumbered(const TileRenumbering& numbers, bool changed) override;
    bool StopWanted() override;
    void Tell(const QString& text);
    void ShowSaved();

    // The names that theater makers know these by.
    int32_t SelectedSet = 1;
    int32_t SelectedTile = 0; // -1: none
    int32_t MoveSource = 0;   // 0 while no set is being moved

    ProgramState& state_;
    TilePictures& pictures_;
    const Platform& platform_;
    DebugLog& log_;
    EditorVerbs& verbs_;
    std::unique_ptr<Ui::FrmBINTileEdit> ui_;
    std::unique_ptr<SetModel> sets_;
    std::unique_ptr<TileModel> tiles_;
    std::unique_ptr<WorkingNotice> working_;
    clsToolTip slotTip_;
    clsToolTip zipTip_;
    std::shared_ptr<FileSwap> replaced_; // by the command under way
    clsToolTip paletteTip_;
    std::optional<QPoint>
        copied_;          // where the palette was clicked, until the cursor moves on
    QString numbersText_; // the last that was said of tile numbers
    bool busy_ = false;
    bool stop_ = false;
    int droppedSlot_ = -1;
    std::vector<std::string> droppedFiles_;
    QPointer<QWidget> focusBefore_; // what had the keyboard when the form was disabled
};

} // namespace vardenix
