#pragma once

#include "mapview/MapView.h"
#include "platform/Progress.h"
#include "platform/windows/clsToolTip.h"
#include "program/ProgramState.h"
#include "program/WorkspaceCommands.h"
#include "workspace/PanelRules.h"
#include "workspace/TheaterSaving.h"

#include <QElapsedTimer>
#include <QMainWindow>
#include <QPointer>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QAbstractSlider;

namespace Ui {
class FrmVXMain;
}

namespace vardenix {

class FoldingGroup;

// The control panel of the workspace: what the map shows, zoom, windows, saving, undo,
// export and import, and the bar of long work. As a Progress, it shows that bar.
class FrmVXMain : public QMainWindow, public Progress, public SavingPanel {
    Q_OBJECT

public:
    // All are borrowed for the window's life.
    FrmVXMain(ProgramState& state, MapView& view, WorkspaceCommands& workspace);
    ~FrmVXMain() override;

    // Everything as at the start of the work on a theater: controls from the settings,
    // no flags, level 2 edited. `mapTitle` is the caption of FrmVXMap.
    void Form_Load(const std::string& mapTitle);
    // The tool tip of the button that restores.
    void SetRestoreTip(const std::string& text);
    // Controls and their colours from the settings, without any effect.
    void ShowSettings();

    // Level 2, or the finest elevations, have unsaved changes; and have been saved.
    void L2NeedSave();
    void L0NeedSave();
    void L2Saved() override;
    void L0Saved() override;
    bool L2NeedSaveFlag() const { return state_.Flags.L2; }
    bool L0NeedSaveFlag() const override { return state_.Flags.L0ELV; }
    // A locked panel cannot be closed either.
    void LockPanel(bool locked) override;
    // Titles, ground, save button and restore points for the mode; MapView::L0Mode is
    // the caller's.
    void ChangeControlsForL0Edit(bool on);
    // Empty until a file is loaded.
    void SetL0FileName(const std::string& fileName) override;

    // Locks the controls that may change the view; unlocking gives back what can be done.
    void DisableClickableItemsVX(bool enabled);
    void RedrawSaveButton();
    void RedrawExportButton();
    // There is something to be saved, or another name to be asked for.
    bool CanSave() const;
    bool HasL0File() const { return !l0FileName_.empty(); }
    bool ShiftDown() const { return shiftDown_; }
    // The hint under the panel while corners are waited for.
    enum class Hint { None, Export, Import };
    void ShowHint(Hint hint);

    // ZoomPosts with its slider and caption; nothing is laid out or painted.
    void SetZoom(int16_t zoomPosts);
    // LabelX and LabelY follow the view.
    void PositionChanged();
    // The view has other GridCells or TilePixels, which are remembered and shown, and
    // laid out and painted anew.
    void GridChosen();
    // The same, without remembering anything: the map fills another room.
    void GridLaidOut();
    // Fewer posts in a cell for positive steps, and the other way round.
    void StepZoom(int steps);
    // The position that LabelX and LabelY spell, or the place that LabelX alone does.
    void GoToTypedPosition();
    // Of a text that is no column of posts: false where it is no place either.
    void TakePlaces(std::function<bool(const std::string&)> go) {
        goToPlace_ = std::move(go);
    }
    // Whether LabelX takes the letters of a latitude and a longitude.
    void AllowPlaces(bool allowed);
    // The buttons of colours show those of the settings.
    void ShowColors();

    // The bar's width is (value - PB3Min) / PB3Max of 3495 twips.
    void SetPB3(int value);
    void ShowBar() override;
    void HideBar() override;
    void SetBar(int percent) override { SetPB3(percent); }
    void SetText(const std::string& text) override;
    void LetEventsThrough() override;

    // High enough for all frames where the screen is; less than that scrolls.
    QSize sizeHint() const override;

    // The frames that are folded to their titles, by their names.
    std::vector<std::string> FoldedGroups() const;
    void FoldGroups(const std::vector<std::string>& names);

signals:
    // The caption of FrmVXMap, with its star or without.
    void MapCaptionChanged(const QString& caption);
    // The user has folded a frame, or unfolded one.
    void GroupsFolded();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void ArrangeControls();
    void DressControls();
    void FitScrollArea();
    void MakeToolTip();
    void ConnectSliders();
    void ConnectView();
    void ConnectPosition();

    void sldrBrightness_Change(int value);
    void sldrTrans_Change(int value);
    void ZoomScroll_Change(int value);
    void ComTileWidth_Click(int index);

    // Unless the program is starting.
    void Repaint();
    void ShowCaptions();
    void ShowTitles();
    void ShowModeColors();
    void WatchKey(const QKeyEvent& event, bool down);
    void WatchFocus(const QWidget* now);
    void SetShift(bool down);

    ProgramState& state_;
    MapView& view_;
    WorkspaceCommands& workspace_;
    std::unique_ptr<Ui::FrmVXMain> ui_;
    std::string mapTitle_;
    Layer layer_ = Layer::Posts; // that the titles tell
    std::string l0FileName_;
    bool shiftDown_ = false;
    int firstHeight_ = 0; // until the window is first shown
    int pb3Min_ = 0;
    int pb3Max_ = 100;
    QElapsedTimer sinceBarDrawn_;
    std::function<bool(const std::string&)> goToPlace_;
    QPointer<QWidget> focusOfLock_; // what had the focus when the panel was locked
    clsToolTip toolTip_;
    std::vector<FoldingGroup*> groups_; // children
};

} // namespace vardenix
