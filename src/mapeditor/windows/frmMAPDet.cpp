#include "mapeditor/windows/frmMAPDet.h"

#include "mapeditor/MapPalette.h"
#include "platform/windows/RunTimeBarrier.h"
#include "texts/RuntimeError.h"
#include "ui_frmMAPDet.h"

namespace vardenix {

frmMAPDet::frmMAPDet(int index, const MapPaletteEntry& entry, Dialogs& dialogs,
                     QWidget* parent)
    : QDialog(parent), dialogs_(dialogs), ui_(std::make_unique<Ui::frmMAPDet>()),
      entry_(entry) {
    ui_->setupUi(this);
    setWindowTitle(QString("Palete Details - #:%1").arg(index));
    const EntryTexts texts = EntryTextsOf(entry);
    NumberBox* const boxes[] = {ui_->Text1, ui_->Text2, ui_->Text3, ui_->Text4};
    for (size_t i = 0; i < texts.size(); ++i)
        boxes[i]->setText(QString::fromStdString(texts[i]));
    ui_->Text1->setFocus();
    OnSignal(ui_->Command1, &QAbstractButton::clicked, this,
             [this] { Command1_Click(); });
    OnSignal(ui_->Command2, &QAbstractButton::clicked, this, [this] { reject(); });
}

frmMAPDet::~frmMAPDet() = default;

void frmMAPDet::Command1_Click() {
    const auto text = [](const QLineEdit* box) { return box->text().toStdString(); };
    try {
        entry_ = EntryOf(
            {text(ui_->Text1), text(ui_->Text2), text(ui_->Text3), text(ui_->Text4)});
    } catch (const RuntimeError& error) {
        dialogs_.Notice(TrapText(error), "Error...", BoxIcon::Critical);
        return;
    }
    accept();
}

} // namespace vardenix

#include "moc_frmMAPDet.cpp"
