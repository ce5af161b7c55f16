#include "updater/Download.h"

#include "files/FileNames.h"
#include "files/PlainName.h"
#include "texts/Numbers.h"
#include "texts/RuntimeError.h"
#include "updater/ReplyHeader.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace vardenix {

namespace {

constexpr int NotFoundNumber = 1;

RuntimeError NotStarted(const std::string& why) {
    return {ErrorNumber::DeviceIo, "Error starting download.", why};
}

constexpr const char* NoLength = "The server does not say how long the file is.";

} // namespace

int32_t ContentLength(std::string_view header) {
    constexpr std::string_view name = "Content-Length:";
    const size_t at = FindAnyCase(header, name);
    if (at == std::string_view::npos)
        return 0;
    const std::string_view rest =
        header.substr(std::min(at + name.size() + 1, header.size()));
    const size_t end = rest.find("\r\n");
    if (end == std::string_view::npos)
        throw RuntimeError(ErrorNumber::InvalidCall, "the length's line does not end");
    return ToInt32(Val(rest.substr(0, end)));
}

bool IsGoodReply(std::string_view reply) {
    constexpr std::string_view begin = "HTTP/1.";
    constexpr std::string_view status = " 200";
    if (!reply.starts_with(begin) || reply.size() < begin.size() + 1 + status.size())
        return false;
    const char digit = reply[begin.size()];
    return digit >= '0' && digit <= '9' &&
           reply.substr(begin.size() + 1).starts_with(status);
}

Download::Download(TcpClient& winsock1, DownloadEvents& events,
                   const std::string& programFolder)
    : winsock1_(winsock1), events_(events), localPath_(WithTrailingSlash(programFolder)) {
}

Download::~Download() {
    if (inUse_)
        winsock1_.Close();
}

void Download::SetRemoteFile(const std::string& path) {
    remoteFile_ = path.starts_with('/') ? path : "/" + path;
}

void Download::SetLocalPath(const std::string& folder) {
    localPath_ = WithTrailingSlash(folder);
}

std::string Download::FileName() const {
    return remoteFile_.substr(remoteFile_.rfind('/') + 1);
}

void Download::Begin(Mode mode) {
    mode_ = mode;
    if (inUse_ && IsConnected()) {
        SendRequest();
        return;
    }
    fileLength_ = 0;
    bytesReceived_ = 0;
    events_.ContactingServer();
    inUse_ = true;
    winsock1_.Connect(remoteHost_, remotePort_, *this);
}

void Download::SendRequest() {
    const std::string request = (mode_ == Mode::Information ? "HEAD " : "GET ") +
                                remoteFile_ + " HTTP/1.0\r\nHost: " + remoteHost_ +
                                "\r\nUser-Agent: blah blah...\r\n\r\n";
    events_.SendingServerRequest(request);
    winsock1_.Send(request);
}

void Download::TcpConnected() {
    events_.Connected();
    SendRequest();
}

void Download::TcpData(std::string_view bytes) {
    try {
        if (mode_ == Mode::Information)
            TakeInformation(bytes);
        else
            TakeFile(bytes);
    } catch (const RuntimeError& error) {
        Close();
        Fail(error);
    }
}

void Download::Fail(const RuntimeError& error) {
    std::string text = error.Description();
    if (!error.Detail().empty())
        text += "\n" + error.Detail();
    events_.Error(error.NumberValue(), text, "Download");
}

void Download::TcpClosed() {
    const bool cut = mode_ == Mode::Download;
    const bool withoutLength = IsBegun() && fileLength_ < 1;
    Close();
    if (withoutLength)
        Fail(NotStarted(NoLength));
    else if (cut)
        events_.BrokenOff();
}

void Download::TcpError(int number, const std::string& description,
                        const std::string& source) {
    events_.Error(number, description, source);
    Close();
}

void Download::TakeInformation(std::string_view chunk) {
    if (FindAnyCase(chunk, "404 Not Found") != std::string_view::npos) {
        events_.Error(NotFoundNumber, "Not Found", "2");
        Close();
        return;
    }
    fileLength_ = ContentLength(chunk);
    events_.FileInfoRetrieved();
    Close();
}

void Download::TakeFile(std::string_view chunk) {
    if (fileLength_ == 0)
        chunk = TakeHeader(chunk);
    // A handler of the events may have cancelled.
    if (!file_.IsOpen() || chunk.empty() || fileLength_ < 1)
        return;
    // A server that sends more than it announced is not listened to.
    Append(chunk.substr(0, static_cast<size_t>(BytesRemaining())));
    events_.DownloadProgress(bytesReceived_, BytesRemaining());
    if (!file_.IsOpen() || bytesReceived_ < fileLength_)
        return;
    if (!file_.Close())
        ThrowSystemError(errno, "writing", localPath_ + FileName());
    events_.DownloadCompleted();
    Close();
}

// The chunk behind the header.
std::string_view Download::TakeHeader(std::string_view chunk) {
    if (const std::string why = WhyNotTaken(chunk); !why.empty())
        throw NotStarted(why + ".");
    if (!IsGoodReply(chunk))
        throw NotStarted(IsBegun() ? NoLength : WhatIsAnswered(chunk));
    const size_t end = chunk.find(HeaderEnd);
    if (end == std::string_view::npos)
        throw NotStarted("The header of the server's reply is cut.");
    OpenLocalFile();
    const int32_t length = ContentLength(chunk.substr(0, end + 2));
    if (length > LargestDownload)
        throw NotStarted("The server announces " + std::to_string(length) +
                         " bytes, more than an update may have.");
    fileLength_ = length;
    events_.FileInfoRetrieved();
    events_.DownloadStarted();
    return chunk.substr(end + HeaderEnd.size());
}

void Download::OpenLocalFile() {
    const std::string name = FileName();
    if (const std::string why = WhyNotPlain(name); !why.empty())
        throw NotStarted("The file's name " + why + ".");
    const std::string path = localPath_ + name;
    if (FileExists(path))
        DeleteFile(path);
    file_ = SystemFile(::open(PathAsItStands(path).c_str(),
                              O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!file_.IsOpen())
        ThrowSystemError(errno, "making", path);
    bytesReceived_ = 0;
}

void Download::Append(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file_.Handle(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            ThrowSystemError(errno, "writing", localPath_ + FileName());
        bytes.remove_prefix(static_cast<size_t>(count));
        bytesReceived_ += static_cast<int32_t>(count);
    }
}

void Download::Close() {
    if (!inUse_ || closing_)
        return;
    closing_ = true;
    file_.Close();
    if (winsock1_.State() != TcpState::Closed)
        winsock1_.Close();
    inUse_ = false;
    events_.Disconnected();
    closing_ = false;
}

} // namespace vardenix
