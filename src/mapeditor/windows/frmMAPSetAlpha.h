#pragma once

#include <QDialog>

#include <cstdint>
#include <memory>

namespace Ui {
class frmMAPSetAlpha;
}

namespace vardenix {

// Asks for the alpha of all entries of the palette.
class frmMAPSetAlpha : public QDialog {
    Q_OBJECT

public:
    explicit frmMAPSetAlpha(uint8_t current, QWidget* parent = nullptr);
    ~frmMAPSetAlpha() override;

    // 0 to 255 once the window has gone, -1 for no change.
    int16_t NewAlpha() const { return newAlpha_; }

private:
    std::unique_ptr<Ui::frmMAPSetAlpha> ui_;
    int16_t newAlpha_ = -1;
};

} // namespace vardenix
