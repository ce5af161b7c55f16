#include "support/HttpServer.h"

#include <array>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace vardenix::tests {

namespace {

// Up to the empty line; what came before the client went.
std::string ReadRequest(int socket) {
    std::string request;
    std::array<char, 4096> room{};
    while (request.find("\r\n\r\n") == std::string::npos) {
        const ssize_t count = ::recv(socket, room.data(), room.size(), 0);
        if (count <= 0)
            break;
        request.append(room.data(), static_cast<size_t>(count));
    }
    return request;
}

} // namespace

bool HttpConnection::Send(std::string_view bytes) const {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<size_t>(count));
    }
    return true;
}

bool HttpConnection::SendSlowly(std::string_view bytes) const {
    const int yes = 1;
    ::setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &yes, sizeof yes);
    for (size_t i = 0; i < bytes.size(); ++i)
        if (!Send(bytes.substr(i, 1)))
            return false;
    return true;
}

void HttpConnection::Stall() const {
    std::array<char, 64> room{};
    while (::recv(socket_, room.data(), room.size(), 0) > 0) {
    }
}

void HttpConnection::Reset() const {
    const linger atOnce{1, 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

HttpServer::HttpServer(Answer answer)
    : answer_(std::move(answer)),
      listening_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    if (::bind(listening_, any, size) != 0 || ::listen(listening_, 8) != 0 ||
        ::getsockname(listening_, any, &size) != 0)
        throw std::runtime_error("no server on this machine");
    port_ = ntohs(address.sin_port);
    thread_ = std::thread([this] { Serve(); });
}

HttpServer::HttpServer(const std::string& bytes)
    : HttpServer(
          [bytes](const HttpConnection& client, const auto&) { client.Send(bytes); }) {}

HttpServer::~HttpServer() {
    ending_ = true;
    ::shutdown(listening_, SHUT_RDWR);
    {
        const std::scoped_lock lock(mutex_);
        if (talking_ >= 0)
            ::shutdown(talking_, SHUT_RDWR);
    }
    thread_.join();
    ::close(listening_);
}

std::string HttpServer::Address() const {
    return "http://127.0.0.1:" + std::to_string(port_);
}

std::string HttpServer::Requests() const {
    const std::scoped_lock lock(mutex_);
    return requests_;
}

void HttpServer::Serve() {
    while (!ending_) {
        const int socket = ::accept4(listening_, nullptr, nullptr, SOCK_CLOEXEC);
        if (socket < 0)
            return;
        Talk(socket);
    }
}

void HttpServer::Talk(int socket) {
    {
        const std::scoped_lock lock(mutex_);
        talking_ = socket;
    }
    const std::string request = ReadRequest(socket);
    {
        const std::scoped_lock lock(mutex_);
        requests_ += request;
    }
    answer_(HttpConnection(socket), request);
    const std::scoped_lock lock(mutex_);
    talking_ = -1;
    ::close(socket);
}

std::string GoodReply(const std::string& body) {
    return "HTTP/1.1 200 OK\r\nServer: a test\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\n\r\n" + body;
}

} // namespace vardenix::tests
