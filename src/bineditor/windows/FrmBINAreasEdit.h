#pragma once

#include "bineditor/windows/FloatBox.h"
#include "catalogue/TextureBin.h"

#include <QDialog>

#include <memory>

namespace Ui {
class FrmBINAreasEdit;
}

namespace vardenix {

// The numbers of an area of a tile. OK writes box after box and stays open at one that
// does not convert, with those before it written.
class FrmBINAreasEdit : public QDialog {
    Q_OBJECT

public:
    // Borrowed for the window's life.
    explicit FrmBINAreasEdit(TileArea& edited, QWidget* parent = nullptr);
    ~FrmBINAreasEdit() override;

    // Something was written, whether all of it was or not.
    bool Changed() const { return changed_; }

private:
    void cmdOK_Click();

    TileArea& edited_;
    std::unique_ptr<Ui::FrmBINAreasEdit> ui_;
    FloatBoxes boxes_;
    bool changed_ = false;
};

} // namespace vardenix
