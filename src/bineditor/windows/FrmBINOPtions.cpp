#include "bineditor/windows/FrmBINOPtions.h"

#include "bineditor/PictureSize.h"
#include "platform/windows/PinkBox.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/RuntimeError.h"
#include "ui_FrmBINOPtions.h"

namespace vardenix {

FrmBINOPtions::FrmBINOPtions(Configuration& settings, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent), settings_(settings), dialogs_(dialogs),
      ui_(std::make_unique<Ui::FrmBINOPtions>()) {
    ui_->setupUi(this);
    ui_->chkAutomaticallyCorrect->setChecked(settings.AutoL2);
    ui_->OptAfterSelected_0->setChecked(settings.DefInsertAfter);
    ui_->OptAfterSelected_1->setChecked(!settings.DefInsertAfter);
    ui_->txtM->setText(QString::number(settings.MTile));
    ui_->txtL->setText(QString::number(settings.LTile));
    ui_->txtT->setText(QString::number(settings.TTile));
    OnSignal(ui_->cmdOK, &QAbstractButton::clicked, this, [this] { cmdOK_Click(); });
    OnSignal(ui_->cmdCancel, &QAbstractButton::clicked, this, [this] { reject(); });
}

FrmBINOPtions::~FrmBINOPtions() = default;

std::optional<int16_t> FrmBINOPtions::SizeOf(QLineEdit& box) {
    try {
        const int16_t size =
            PictureSizeOf(box.accessibleName().toStdString(), box.text().toStdString());
        SetPink(box, false);
        return size;
    } catch (const RuntimeError& error) {
        SetPink(box, true);
        dialogs_.Notice(TrapText(error), "Error...", BoxIcon::Critical);
        box.setFocus();
        return {};
    }
}

// All are taken, or none.
void FrmBINOPtions::cmdOK_Click() {
    std::array<int16_t, 3> sizes{};
    const std::array<QLineEdit*, 3> boxes{ui_->txtM, ui_->txtL, ui_->txtT};
    for (size_t i = 0; i < boxes.size(); ++i) {
        const auto size = SizeOf(*boxes[i]);
        if (!size)
            return;
        sizes[i] = *size;
    }
    settings_.AutoL2 = ui_->chkAutomaticallyCorrect->isChecked();
    settings_.DefInsertAfter = ui_->OptAfterSelected_0->isChecked();
    settings_.MTile = sizes[0];
    settings_.LTile = sizes[1];
    settings_.TTile = sizes[2];
    accept();
}

} // namespace vardenix

#include "moc_FrmBINOPtions.cpp"
