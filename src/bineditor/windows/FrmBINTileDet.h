#pragma once

#include "bineditor/TileDetail.h"
#include "catalogue/TextureBin.h"
#include "pictures/Bitmap.h"
#include "platform/Dialogs.h"
#include "program/Configuration.h"

#include <QDialog>

#include <memory>

class QTreeWidget;

namespace Ui {
class FrmBINTileDet;
}

namespace vardenix {

class ColorButton;
class TilePicture;

// One tile's picture with its areas and paths, to add, change and delete them. The
// catalogue has them when the window ends with OK, not before.
class FrmBINTileDet : public QDialog {
    Q_OBJECT

public:
    // Borrowed for the window's life.
    struct Parts {
        vardenix::Catalogue& Catalogue;
        Configuration& Settings; // the colours
        vardenix::Dialogs& Dialogs;
    };
    // `number` is that of a tile; `picture` may be none.
    FrmBINTileDet(const Parts& parts, int32_t number, const Bitmap& picture,
                  QWidget* parent = nullptr);
    ~FrmBINTileDet() override;

    // Something was changed and written back.
    bool Changed() const { return changed_; }

    // cmdCancel, Esc and the close box: asks when something was changed.
    void reject() override;

private:
    void DressControls();
    void ConnectPicture();
    void ConnectLists();
    void ConnectZoom();
    void JoinColor(ColorButton* button, uint32_t Configuration::*stored);

    void RefreshForm();
    void Redraw();
    void Zoom(double zoom);
    // Whole lists, with a row selected; -1 selects the first where there is one.
    void FillAreas(int32_t row);
    void FillPaths(int32_t row);
    void UpdateAreaListItem(int32_t row);
    void UpdatePathListItem(int32_t row);
    void cmdAreaEdit_Click();
    void cmdPathEdit_Click();
    void cmdAreaDelete_Click();
    void cmdPathDelete_Click();
    void cmdOK_Click();
    void MarkDirty();

    Parts parts_;
    int32_t number_;
    std::unique_ptr<Ui::FrmBINTileDet> ui_;
    TilePicture* tilePic_;
    WorkingTile tile_;
    double zoom_ = 1;
    int32_t selectedArea_ = 0; // 0: none
    int32_t selectedPath_ = 0;
    bool changed_ = false;
};

} // namespace vardenix
