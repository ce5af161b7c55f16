#include "updater/windows/frmDispTxt.h"

#include "platform/windows/RunTimeBarrier.h"
#include "ui_frmDispTxt.h"
#include "updater/ShownText.h"

namespace vardenix {

frmDispTxt::frmDispTxt() : ui_(std::make_unique<Ui::frmDispTxt>()) {
    ui_->setupUi(this);
    OnSignal(ui_->Command1, &QAbstractButton::clicked, this, [this] { accept(); });
    ui_->Command1->setFocus();
}

frmDispTxt::~frmDispTxt() = default;

void frmDispTxt::OpenTxtFile(const std::string& path) {
    ui_->Text1->setPlainText(QString::fromStdString(ReadShownText(path)));
}

} // namespace vardenix

#include "moc_frmDispTxt.cpp"
