#pragma once

#include "platform/Dialogs.h"
#include "program/MapFileRecord.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmMAPDet;
}

namespace vardenix {

// The four numbers of one entry of the palette. Accepted only when all of them fit.
class frmMAPDet : public QDialog {
    Q_OBJECT

public:
    // `dialogs` is borrowed for the window's life.
    frmMAPDet(int index, const MapPaletteEntry& entry, Dialogs& dialogs,
              QWidget* parent = nullptr);
    ~frmMAPDet() override;

    // What was entered, once the window was accepted.
    const MapPaletteEntry& Entry() const { return entry_; }

private:
    void Command1_Click();

    Dialogs& dialogs_;
    std::unique_ptr<Ui::frmMAPDet> ui_;
    MapPaletteEntry entry_;
};

} // namespace vardenix
