#include "updater/SocketClient.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <netdb.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <system_error>

namespace vardenix {

namespace {

constexpr int32_t LastPort = 65535;

std::string SystemSays(int number) { return std::system_category().message(number); }

} // namespace

void SocketClient::FreeAddresses::operator()(addrinfo* addresses) const {
    ::freeaddrinfo(addresses);
}

SocketClient::SocketClient() = default;
SocketClient::~SocketClient() = default;

void SocketClient::Connect(const std::string& host, int32_t port, TcpEvents& events) {
    Close();
    events_ = &events;
    state_ = TcpState::Connecting;
    refusal_ = 0;
    description_.clear();
    if (port < 1 || port > LastPort) {
        description_ = "There is no port " + std::to_string(port);
        return;
    }
    addrinfo wanted{};
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    const int refusal =
        ::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &wanted, &found);
    if (refusal != 0) {
        description_ = ::gai_strerror(refusal);
        return;
    }
    addresses_.reset(found);
    next_ = found;
    TryNextAddress();
}

// Begins with the next address of the host. When none is left, no socket is open, which
// the next step tells.
void SocketClient::TryNextAddress() {
    for (; next_ != nullptr; next_ = next_->ai_next) {
        socket_ = SystemFile(
            ::socket(next_->ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
        if (socket_.IsOpen() &&
            (::connect(socket_.Handle(), next_->ai_addr, next_->ai_addrlen) == 0 ||
             errno == EINPROGRESS)) {
            next_ = next_->ai_next;
            return;
        }
        refusal_ = errno;
        socket_ = SystemFile();
    }
}

void SocketClient::Close() {
    state_ = TcpState::Closed;
    events_ = nullptr;
    socket_ = SystemFile();
    addresses_.reset();
    next_ = nullptr;
    toSend_.clear();
    sent_ = 0;
}

std::string SocketClient::RemoteHostIP() const {
    sockaddr_storage address{};
    socklen_t size = sizeof address;
    std::array<char, NI_MAXHOST> text{};
    if (state_ != TcpState::Connected ||
        ::getpeername(socket_.Handle(), reinterpret_cast<sockaddr*>(&address), &size) !=
            0 ||
        ::getnameinfo(reinterpret_cast<const sockaddr*>(&address), size, text.data(),
                      text.size(), nullptr, 0, NI_NUMERICHOST) != 0)
        return {};
    return text.data();
}

void SocketClient::Send(std::string_view bytes) { toSend_ += bytes; }

bool SocketClient::Step(std::chrono::milliseconds patience) {
    if (state_ == TcpState::Closed)
        return false;
    if (!socket_.IsOpen()) {
        Fail(refusal_, description_.empty() ? SystemSays(refusal_) : description_);
        return false;
    }
    const bool connecting = state_ == TcpState::Connecting;
    const bool sending = sent_ < toSend_.size();
    pollfd watched{socket_.Handle(),
                   static_cast<short>((connecting ? 0 : POLLIN) |
                                      (connecting || sending ? POLLOUT : 0)),
                   0};
    if (::poll(&watched, 1, static_cast<int>(patience.count())) <= 0)
        return true;
    if (connecting)
        FinishConnecting();
    else if ((watched.revents & POLLOUT) != 0)
        SendWaiting();
    else
        Receive();
    return state_ != TcpState::Closed;
}

void SocketClient::FinishConnecting() {
    int refusal = 0;
    socklen_t size = sizeof refusal;
    ::getsockopt(socket_.Handle(), SOL_SOCKET, SO_ERROR, &refusal, &size);
    if (refusal != 0) {
        refusal_ = refusal;
        socket_ = SystemFile();
        TryNextAddress();
        return;
    }
    state_ = TcpState::Connected;
    events_->TcpConnected();
}

void SocketClient::SendWaiting() {
    const ssize_t count = ::send(socket_.Handle(), toSend_.data() + sent_,
                                 toSend_.size() - sent_, MSG_NOSIGNAL);
    if (count < 0) {
        if (errno != EAGAIN && errno != EINTR)
            Fail(errno, SystemSays(errno));
        return;
    }
    sent_ += static_cast<size_t>(count);
    TcpEvents& events = *events_;
    const auto left = static_cast<int64_t>(toSend_.size() - sent_);
    events.TcpSendProgress(static_cast<int64_t>(sent_), left);
    if (left == 0)
        events.TcpSendCompleted();
}

void SocketClient::Receive() {
    std::array<char, 65536> room; // NOLINT(cppcoreguidelines-pro-type-member-init)
    const ssize_t count = ::recv(socket_.Handle(), room.data(), room.size(), 0);
    TcpEvents& events = *events_;
    if (count > 0) {
        events.TcpData({room.data(), static_cast<size_t>(count)});
    } else if (count == 0) {
        Close();
        events.TcpClosed();
    } else if (errno != EAGAIN && errno != EINTR) {
        Fail(errno, SystemSays(errno));
    }
}

void SocketClient::Fail(int number, const std::string& description) {
    TcpEvents& events = *events_;
    Close();
    events.TcpError(number, description, "SocketClient");
}

void SteppedTimer::Start(int milliseconds, std::function<void()> whenOver) {
    end_ = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    whenOver_ = std::move(whenOver);
}

std::optional<std::chrono::milliseconds> SteppedTimer::Left() const {
    if (!whenOver_)
        return std::nullopt;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(
        end_ - std::chrono::steady_clock::now());
    return std::max(left, std::chrono::milliseconds(0));
}

void SteppedTimer::Step() {
    if (!whenOver_ || std::chrono::steady_clock::now() < end_)
        return;
    const auto whenOver = std::move(whenOver_);
    whenOver_ = {};
    whenOver();
}

} // namespace vardenix
