#include "mapeditor/windows/frmMAPSetAlpha.h"

#include "mapeditor/MapPalette.h"
#include "platform/windows/RunTimeBarrier.h"
#include "ui_frmMAPSetAlpha.h"

namespace vardenix {

frmMAPSetAlpha::frmMAPSetAlpha(uint8_t current, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmMAPSetAlpha>()) {
    ui_->setupUi(this);
    ui_->Text1->setText(QString::number(current));
    ui_->Text1->setFocus();
    // An emptied box is a number that is still to come, and no 0 for 256 entries.
    OnSignal(ui_->Text1, &QLineEdit::textChanged, this,
             [this](const QString& text) { ui_->Command1->setEnabled(!text.isEmpty()); });
    OnSignal(ui_->Command1, &QAbstractButton::clicked, this, [this] {
        newAlpha_ = NewAlphaOf(ui_->Text1->text().toStdString());
        accept();
    });
    OnSignal(ui_->Command2, &QAbstractButton::clicked, this, [this] { reject(); });
}

frmMAPSetAlpha::~frmMAPSetAlpha() = default;

} // namespace vardenix

#include "moc_frmMAPSetAlpha.cpp"
