#pragma once

#include "pictures/TilePictures.h"
#include "program/ProgramState.h"
#include "program/WorkspaceCommands.h"
#include "workspace/MapInteraction.h"
#include "workspace/TilePalette.h"

#include <QImage>
#include <QWidget>

#include <memory>

namespace Ui {
class FrmVXTilePal;
}

namespace vardenix {

// The tiles of one class of terrain, to choose the one that a left click on the map
// paints.
class FrmVXTilePal : public QWidget {
    Q_OBJECT

public:
    // All are borrowed for the window's life. `pictures` are those of the map.
    FrmVXTilePal(const ProgramState& state, MapInteraction& interaction,
                 TilePictures& pictures, WorkspaceCommands& commands);
    ~FrmVXTilePal() override;

    // The tiles of a class that the filter lets through, read anew, and Combo1 on that
    // class. What is chosen stays chosen, shown here or not.
    void Refresh_Pal(int32_t classCode);
    // The class of Combo1.
    void Command1_Click();
    // No buttons, until the next of the above.
    void Clear();
    // Chooses a tile that the catalogue has, with its class, scrolled to its button.
    void ShowTile(int32_t tile);
    // The class whose tiles are shown, and the row that is the first seen.
    int32_t ShownClass() const { return shownClass_; }
    int32_t FirstRow() const;
    // A class, scrolled to a row as far as it goes.
    void ShowFrom(int32_t classCode, int32_t row);
    // A square picture of a tile, `side` pixels of the screen; null where there is none.
    QImage PictureOf(int32_t tile, int side);
    // Button and status bar follow MapInteraction::SelectedTile.
    void ShowSelectedTile();

signals:
    // A tile was chosen by the mouse or Enter: the keyboard is wanted elsewhere.
    void TileTaken();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void DressControls();
    // Of a class, those that the filter lets through.
    std::vector<int32_t> ShownTiles(int32_t classCode) const;
    void Build(const std::vector<int32_t>& tiles);
    void VScroll_Change();
    void Op2_Click(int32_t tile);
    void Select(int32_t tile);
    void Select(const ChosenTiles& tiles);
    void FrameResized();
    // The buttons in the width and height that Frame1 is seen in.
    void PlaceButtons();
    int WholeRows() const;

    const ProgramState& state_;
    MapInteraction& interaction_;
    TilePictures& pictures_;
    WorkspaceCommands& commands_;
    std::unique_ptr<Ui::FrmVXTilePal> ui_;
    int32_t shownClass_ = -1;
    size_t shownTiles_ = 0;
    int wheelTurned_ = 0; // eighths of a degree, less than a notch
};

} // namespace vardenix
