#pragma once

#include "platform/Dialogs.h"
#include "updater/Download.h"
#include "updater/Timer.h"

#include <functional>
#include <memory>
#include <string>

namespace vardenix {

// The window of a download, as far as the download knows it.
class DownloadView {
public:
    DownloadView() = default;
    DownloadView(const DownloadView&) = delete;
    DownloadView& operator=(const DownloadView&) = delete;
    virtual ~DownloadView() = default;

    virtual void ShowLabel1(const std::string& text) = 0; // UTF-8
    virtual void ShowLabel2(const std::string& text) = 0;
    virtual void ShowProgress(int percent) = 0; // 0 to 100
    virtual void LetEventsThrough() = 0;
    virtual void Unload() = 0;
};

// Kilobytes with two decimals, "512.00KB"; from 1024 of them on megabytes, "1.00MB".
std::string SizeText(int64_t bytes);

// Fetches the archive of an update into an empty UpdateTempFolder and hands it on. A
// server that sends nothing for ServerPatience is given up.
class UpdateDownload : private DownloadEvents {
public:
    // All are borrowed; `applyUpdate` is given the archive's name.
    UpdateDownload(TcpClient& winsock1, Timer& timer, DownloadView& view,
                   Dialogs& dialogs, const std::string& updateTempFolder,
                   std::function<void(const std::string&)> applyUpdate);

    void Init_Download(const std::string& url);
    // Gives up, as the user wants.
    void Cancel();

private:
    void Connected() override { WaitAgain(); }
    void DownloadProgress(int32_t received, int32_t remaining) override;
    void DownloadCompleted() override;
    void BrokenOff() override;
    void Error(int number, const std::string& description,
               const std::string& source) override;

    void WaitAgain();
    void Begin(const std::string& url);

    TcpClient& winsock1_;
    Timer& timer_;
    DownloadView& view_;
    Dialogs& dialogs_;
    std::string updateTempFolder_;
    std::function<void(const std::string&)> applyUpdate_;
    std::unique_ptr<Download> download_;
};

} // namespace vardenix
