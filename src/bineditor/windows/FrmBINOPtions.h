#pragma once

#include "program/Configuration.h"

#include <QDialog>

#include <memory>

namespace Ui {
class FrmBINOPtions;
}

namespace vardenix {

// The options of the BIN editor. They reach VX.ini when that is next written.
class FrmBINOPtions : public QDialog {
    Q_OBJECT

public:
    // Borrowed for the window's life; set by OK.
    explicit FrmBINOPtions(Configuration& settings, QWidget* parent = nullptr);
    ~FrmBINOPtions() override;

private:
    void cmdOK_Click();

    Configuration& settings_;
    std::unique_ptr<Ui::FrmBINOPtions> ui_;
};

} // namespace vardenix
