#pragma once

#include "bineditor/windows/FloatBox.h"
#include "catalogue/TextureBin.h"

#include <QDialog>

#include <memory>

namespace Ui {
class FrmBINPathEdit;
}

namespace vardenix {

// The numbers of a path of a tile. OK writes box after box and stays open at one that
// does not convert, with those before it written.
class FrmBINPathEdit : public QDialog {
    Q_OBJECT

public:
    // Borrowed for the window's life.
    explicit FrmBINPathEdit(TilePath& edited, QWidget* parent = nullptr);
    ~FrmBINPathEdit() override;

    // Something was written, whether all of it was or not.
    bool Changed() const { return changed_; }

private:
    void cmdOK_Click();

    TilePath& edited_;
    std::unique_ptr<Ui::FrmBINPathEdit> ui_;
    FloatBoxes boxes_;
    bool changed_ = false;
};

} // namespace vardenix
