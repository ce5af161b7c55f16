#include "updater/UpdateDownload.h"

#include "files/FileNames.h"
#include "files/OwnFolders.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"
#include "updater/Url.h"

namespace vardenix {

std::string SizeText(int64_t bytes) {
    constexpr double step = 1024;
    const double kilobytes = static_cast<double>(bytes) / step;
    return kilobytes < step ? FormatFixed(kilobytes, 2) + "KB"
                            : FormatFixed(kilobytes / step, 2) + "MB";
}

UpdateDownload::UpdateDownload(TcpClient& winsock1, Timer& timer, DownloadView& view,
                               Dialogs& dialogs, const std::string& updateTempFolder,
                               std::function<void(const std::string&)> applyUpdate)
    : winsock1_(winsock1), timer_(timer), view_(view), dialogs_(dialogs),
      updateTempFolder_(updateTempFolder), applyUpdate_(std::move(applyUpdate)) {}

void UpdateDownload::Init_Download(const std::string& url) {
    try {
        Begin(url);
    } catch (const RuntimeError& error) {
        Error(error.NumberValue(), error.Description() + "\n" + error.Detail(), {});
    }
}

void UpdateDownload::Begin(const std::string& text) {
    const Url url = SplitUrl(text);
    if (!IsHttp(url) || !CanBeRequested(url))
        throw RuntimeError(ErrorNumber::BadFileName,
                           "the update's address is none that can be fetched");
    download_ = std::make_unique<Download>(winsock1_, static_cast<DownloadEvents&>(*this),
                                           updateTempFolder_);
    // What an earlier try has left must not pass for this one's.
    DeleteFolderTree(updateTempFolder_);
    MakeScratchFolder(updateTempFolder_);
    view_.ShowLabel1("Downloading Update...");
    view_.ShowLabel2({});
    view_.ShowProgress(0);
    download_->SetRemoteHost(url.Host);
    download_->SetRemotePort(url.Port > 0 ? url.Port : 80);
    download_->SetRemoteFile(url.Path);
    WaitAgain();
    download_->StartDownload();
}

void UpdateDownload::Cancel() {
    timer_.Stop();
    if (download_)
        download_->Cancel();
    view_.Unload();
}

void UpdateDownload::WaitAgain() {
    timer_.Start(ServerPatience, [this] {
        download_->Cancel();
        Error(static_cast<int>(ErrorNumber::DeviceIo),
              "The server has sent nothing for half a minute.", {});
    });
}

void UpdateDownload::DownloadProgress(int32_t received, int32_t remaining) {
    WaitAgain();
    const int64_t whole = int64_t{received} + remaining;
    view_.ShowProgress(Percent(received, whole));
    view_.ShowLabel2(SizeText(received) + " from " + SizeText(whole) + " downloaded");
}

void UpdateDownload::DownloadCompleted() {
    timer_.Stop();
    download_->Cancel();
    view_.ShowLabel1("Applying Update...");
    view_.LetEventsThrough();
    applyUpdate_(download_->FileName());
    view_.Unload();
}

void UpdateDownload::BrokenOff() {
    Error(static_cast<int>(ErrorNumber::DeviceIo),
          "The server has broken off before the file was whole.", {});
}

void UpdateDownload::Error(int number, const std::string& description,
                           const std::string&) {
    timer_.Stop();
    dialogs_.Notice("An error occured:\n" + std::to_string(number) + ": " + description,
                    {}, BoxIcon::Critical);
    view_.Unload();
}

} // namespace vardenix
