#include "updater/windows/frmDownload.h"

#include "platform/windows/RunTimeBarrier.h"
#include "ui_frmDownload.h"

#include <QCloseEvent>
#include <QCoreApplication>

namespace vardenix {

frmDownload::frmDownload(Dialogs& dialogs, const std::string& updateTempFolder,
                         std::function<void(const std::string&)> applyUpdate)
    : ui_(std::make_unique<Ui::frmDownload>()),
      download_(winsock1_, timer_, static_cast<DownloadView&>(*this), dialogs,
                updateTempFolder, std::move(applyUpdate)) {
    ui_->setupUi(this);
    setWindowModality(Qt::ApplicationModal);
    OnSignal(ui_->Command1, &QAbstractButton::clicked, this,
             [this] { download_.Cancel(); });
}

frmDownload::~frmDownload() = default;

void frmDownload::Init_Download() {
    show();
    download_.Init_Download(url_);
}

void frmDownload::ShowLabel1(const std::string& text) {
    ui_->Label1->setText(QString::fromStdString(text));
}

void frmDownload::ShowLabel2(const std::string& text) {
    ui_->Label2->setText(QString::fromStdString(text));
}

void frmDownload::ShowProgress(int percent) { ui_->ProgressBar1->setValue(percent); }

void frmDownload::LetEventsThrough() {
    // Nobody can cancel what is being applied.
    ui_->Command1->setEnabled(false);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    ui_->Command1->setEnabled(true);
}

void frmDownload::Unload() { hide(); }

// The close box and Esc are the button's.
void frmDownload::closeEvent(QCloseEvent*) {
    if (isVisible())
        download_.Cancel();
}

void frmDownload::reject() { close(); }

} // namespace vardenix

#include "moc_frmDownload.cpp"
