#pragma once

#include "platform/Platform.h"

#include <QDialog>

#include <memory>

namespace Ui {
class FrmAbout;
}

namespace vardenix {

// The program's name, version and page.
class FrmAbout : public QDialog {
    Q_OBJECT

public:
    // `platform` is borrowed for the window's life.
    explicit FrmAbout(const Platform& platform, QWidget* parent = nullptr);
    ~FrmAbout() override;

private:
    std::unique_ptr<Ui::FrmAbout> ui_;
};

} // namespace vardenix
