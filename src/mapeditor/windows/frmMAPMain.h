#pragma once

#include "mapeditor/MapFields.h"
#include "mapeditor/PaletteFiles.h"
#include "mapeditor/PaletteFlash.h"
#include "platform/Platform.h"
#include "program/ProgramState.h"
#include "program/WorkspaceCommands.h"

#include <QMainWindow>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

class QImage;
class QTimer;

namespace Ui {
class frmMAPMain;
}

namespace vardenix {

class NumberBox;

// The MAP editor: the 22 numbers and the palette of theater.map. It works on the record
// of the state itself, which the map is painted from; the numbers are taken over when it
// is saved.
class frmMAPMain : public QMainWindow {
    Q_OBJECT

public:
    // All are borrowed for the window's life.
    frmMAPMain(ProgramState& state, const Platform& platform,
               WorkspaceCommands& workspace);
    ~frmMAPMain() override;

    // Reads a file into the record and shows it; the system's refusals, and then nothing
    // has changed.
    void OpenMapFile(const std::string& path);
    // The record has been read from MAPFile by somebody else.
    void MapFileOpened();
    // A walk through the log of changes has led past a change of the record.
    void MapFileWalked();

    // Numbers that are typed and not taken yet become those of the record, before it is
    // saved from elsewhere; MapFieldError for one that is none, which the box shows.
    void TakeTyped();
    // theater.map has been saved from elsewhere.
    void FileSaved();
    // The record differs from MAPFile.
    bool MAPDirty() const { return state_.Flags.MAP; }

    // Comes up with that entry chosen, flashing.
    void LocateColor(uint8_t index);

    // A part of the map beside the colours, and the room for it in pixels.
    void ShowMap(const QImage& picture);
    static constexpr int MapPartWidth = 256;
    static constexpr int MapPartHeight = 192;

    void StartFlashing(int index, int32_t seconds = FlashSeconds,
                       int32_t interval = FlashInterval);

protected:
    void closeEvent(QCloseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ConnectFile();
    void ConnectNumbers();
    void ConnectPalette();
    void JoinBox(int index);
    NumberBox& Box(int index) const { return *boxes_.at(static_cast<size_t>(index)); }

    void ShowRecord();
    void ShowTitle();
    // The numbers and colours of the controls become those of the record, or none of
    // them.
    void TakeRecordBack();
    // False when the user keeps what another program has written meanwhile.
    bool SaveMapFile();
    void MAPNeedSave();
    void MAPSaved();
    // Whether changes that are not saved may be given up.
    bool MayDiscard();
    // Cancelled dialogs end quietly, errors in a box.
    void Trapped(const std::function<void()>& work);

    void mnuOpen_Click();
    void cmdSaveMAP_Click();
    void cmdRestoreDefaults_Click();
    void cmdVardenix_Click();
    void ShowWrongNumber(int index);

    void UpdateEntryTip(int index);
    void ShowEntry(int index);
    void ShowPalette();
    void ShowCurrent();
    void SetColor(int index, uint32_t color);
    void Command1_Click(int index);
    void Command1_RightClick(int index);
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();
    void CopyColor(int index);
    void PasteColor(int index);
    void Timer1_Timer();
    void EndFlashing();

    ProgramState& state_;
    const Platform& platform_;
    WorkspaceCommands& workspace_;
    std::unique_ptr<Ui::frmMAPMain> ui_;
    std::array<NumberBox*, MapFieldCount> boxes_{};
    std::array<QString, MapFieldCount> shown_; // of the boxes, by the program
    QTimer* timer1_;
    std::string path_; // of the file in the title
    bool controlsLoading_ = false;
    // Kept for gradients, which nothing makes yet.
    bool blackToColor_ = false;
    int16_t colorChannel_ = 1; // 1 red, 2 green, 3 blue
    PaletteFlash flash_;
};

} // namespace vardenix
