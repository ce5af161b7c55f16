// A download's reply of any bytes, cut anywhere: the first byte says where. What is in
// the file is never more than was announced, nor than has come.
#include "Require.h"
#include "updater/Download.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>

using namespace vardenix;

namespace {

class Server : public TcpClient {
public:
    void Connect(const std::string&, int32_t, TcpEvents& events) override {
        events_ = &events;
    }
    void Send(std::string_view) override {}
    void Close() override { events_ = nullptr; }
    TcpState State() const override {
        return events_ == nullptr ? TcpState::Closed : TcpState::Connected;
    }
    std::string RemoteHostIP() const override { return {}; }
    void Say(std::string_view bytes) {
        if (events_ != nullptr && !bytes.empty())
            events_->TcpData(bytes);
    }
    void Connected() { events_->TcpConnected(); }

private:
    TcpEvents* events_ = nullptr;
};

std::string MadeFolder() {
    std::string pattern =
        (std::filesystem::temp_directory_path() / "vardenix-fuzz-XXXXXX").string();
    return mkdtemp(pattern.data());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::string folder = MadeFolder();
    if (size == 0)
        return 0;
    const std::string_view reply(reinterpret_cast<const char*>(data) + 1, size - 1);
    const size_t cut = reply.size() * data[0] / 255;
    Server server;
    DownloadEvents deaf;
    Download download(server, deaf, folder);
    download.SetRemoteHost("host");
    download.SetRemoteFile("file");
    download.StartDownload();
    server.Connected();
    server.Say(reply.substr(0, cut));
    server.Say(reply.substr(cut));
    Require(download.BytesReceived() >= 0);
    Require(static_cast<size_t>(download.BytesReceived()) <= reply.size());
    Require(download.BytesReceived() == 0 ||
            download.BytesReceived() <= download.FileLength());
    Require(download.FileLength() <= LargestDownload);
    return 0;
}
