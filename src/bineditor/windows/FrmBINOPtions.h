#pragma once

#include "platform/Dialogs.h"
#include "program/Configuration.h"

#include <QDialog>

#include <memory>
#include <optional>

class QLineEdit;

namespace Ui {
class FrmBINOPtions;
}

namespace vardenix {

// The options of the BIN editor. They reach VX.ini when that is next written.
class FrmBINOPtions : public QDialog {
    Q_OBJECT

public:
    // Borrowed for the window's life. The settings are set by OK; a size that is none is
    // told with its box's name, which turns pink, and the window stays.
    FrmBINOPtions(Configuration& settings, Dialogs& dialogs, QWidget* parent = nullptr);
    ~FrmBINOPtions() override;

private:
    std::optional<int16_t> SizeOf(QLineEdit& box);
    void cmdOK_Click();

    Configuration& settings_;
    Dialogs& dialogs_;
    std::unique_ptr<Ui::FrmBINOPtions> ui_;
};

} // namespace vardenix
