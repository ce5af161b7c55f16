#pragma once

#include "files/SystemFile.h"
#include "texts/RuntimeError.h"
#include "updater/TcpClient.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vardenix {

// What a download tells, each at most once a step.
class DownloadEvents {
public:
    DownloadEvents() = default;
    DownloadEvents(const DownloadEvents&) = delete;
    DownloadEvents& operator=(const DownloadEvents&) = delete;
    virtual ~DownloadEvents() = default;

    virtual void ContactingServer() {}
    virtual void Connected() {}
    virtual void Disconnected() {}
    virtual void SendingServerRequest(const std::string&) {}
    virtual void SendProgress(int64_t, int64_t) {} // bytes sent, bytes remaining
    virtual void SendCompleted() {}
    // The header of a good reply was taken off.
    virtual void DownloadStarted() {}
    virtual void DownloadProgress(int32_t, int32_t) {} // bytes received, bytes remaining
    // All bytes are in the file.
    virtual void DownloadCompleted() {}
    virtual void FileInfoRetrieved() {}
    // The server has closed the connection and the file is not whole; comes after
    // Disconnected.
    virtual void BrokenOff() {}
    virtual void Error(int, const std::string&, const std::string&) {} // UTF-8
};

// Larger files are refused, whatever the server announces.
constexpr int32_t LargestDownload = 1 << 30;

// Fetches one file by HTTP/1.0 into a folder. The reply's header must arrive whole with
// the first bytes, and must say how long the file is; nothing is written otherwise.
// Nothing is thrown out of the events of the connection: a failure closes it and is told.
class Download : private TcpEvents {
public:
    // Both are borrowed. `programFolder` is where files go unless SetLocalPath says
    // otherwise.
    Download(TcpClient& winsock1, DownloadEvents& events,
             const std::string& programFolder);
    // Closes without a word.
    ~Download() override;

    const std::string& RemoteHost() const { return remoteHost_; }
    void SetRemoteHost(const std::string& host) { remoteHost_ = host; }
    int32_t RemotePort() const { return remotePort_; }
    void SetRemotePort(int32_t port) { remotePort_ = port; }
    // The path on the server; gets a "/" in front where it has none.
    const std::string& RemoteFile() const { return remoteFile_; }
    void SetRemoteFile(const std::string& path);
    // Gets a backslash behind it where it has no slash there.
    const std::string& LocalPath() const { return localPath_; }
    void SetLocalPath(const std::string& folder);

    bool IsConnected() const { return winsock1_.State() == TcpState::Connected; }
    std::string RemoteHostIP() const { return winsock1_.RemoteHostIP(); }
    // Bytes; 0 until the server has said it.
    int32_t FileLength() const { return fileLength_; }
    int32_t BytesReceived() const { return bytesReceived_; }
    int32_t BytesRemaining() const { return fileLength_ - bytesReceived_; }

    // Asks how long the file is.
    void GetFileInformation() { Begin(Mode::Information); }
    // Fetches it. A file of its name is replaced.
    void StartDownload() { Begin(Mode::Download); }
    void Cancel() { Close(); }

    // The name that the file gets: what stands behind the last slash of RemoteFile.
    std::string FileName() const;

private:
    enum class Mode { Information = 1, Download = 2 };

    void TcpConnected() override;
    void TcpData(std::string_view bytes) override;
    void TcpClosed() override;
    void TcpError(int number, const std::string& description,
                  const std::string& source) override;
    void TcpSendProgress(int64_t sent, int64_t remaining) override {
        events_.SendProgress(sent, remaining);
    }
    void TcpSendCompleted() override { events_.SendCompleted(); }

    void Begin(Mode mode);
    void SendRequest();
    void TakeInformation(std::string_view chunk);
    void TakeFile(std::string_view chunk);
    std::string_view TakeHeader(std::string_view chunk);
    // The server's header has been taken, and the file is not whole yet.
    bool IsBegun() const { return file_.IsOpen(); }
    void Fail(const RuntimeError& error);
    void OpenLocalFile();
    void Append(std::string_view bytes);
    void Close();

    TcpClient& winsock1_;
    DownloadEvents& events_;
    std::string remoteHost_;
    int32_t remotePort_ = 80;
    std::string remoteFile_ = "/";
    std::string localPath_;
    int32_t fileLength_ = 0;
    int32_t bytesReceived_ = 0;
    Mode mode_ = Mode::Information;
    SystemFile file_;
    bool inUse_ = false; // the socket is ours from a connect to the closing
    bool closing_ = false;
};

// The announced length in the header of a reply: the number that stands 16 characters
// behind the beginning of "Content-Length:", up to the end of the line, so that a length
// without a blank before it loses its first digit. 0 when there is none; errors 6 and 5
// for a number beyond 31 bits and for a line that does not end.
int32_t ContentLength(std::string_view header);

// Whether a reply begins "HTTP/1.", a digit, " 200".
bool IsGoodReply(std::string_view reply);

} // namespace vardenix
