#pragma once

#include "platform/Dialogs.h"
#include "updater/UpdateDownload.h"
#include "updater/windows/QtTcpClient.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <string>

namespace Ui {
class frmDownload;
}

namespace vardenix {

// The window of an update's download. No other window can be used while it is up, since
// the program ends behind it.
class frmDownload : public QDialog, private DownloadView {
    Q_OBJECT

public:
    // `dialogs` is borrowed for the window's life. `applyUpdate` is given the name of the
    // archive in `updateTempFolder`.
    frmDownload(Dialogs& dialogs, const std::string& updateTempFolder,
                std::function<void(const std::string&)> applyUpdate);
    ~frmDownload() override;

    // The address is set before the download begins.
    void SetUrl(const std::string& url) { url_ = url; }
    void Init_Download();

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    void ShowLabel1(const std::string& text) override;
    void ShowLabel2(const std::string& text) override;
    void ShowProgress(int percent) override;
    void LetEventsThrough() override;
    void Unload() override;

    std::unique_ptr<Ui::frmDownload> ui_;
    QtTcpClient winsock1_;
    QtTimer timer_;
    UpdateDownload download_;
    std::string url_;
};

} // namespace vardenix
