#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace vardenix::tests {

// One connection that a client has made, after its request has come.
class HttpConnection {
public:
    explicit HttpConnection(int socket) : socket_(socket) {}

    // False when the client has gone.
    bool Send(std::string_view bytes) const;
    // Each byte in a packet of its own.
    bool SendSlowly(std::string_view bytes) const;
    // Says nothing more until the client goes.
    void Stall() const;
    // The end of the answer is a reset, as of a server that has died.
    void Reset() const;

private:
    int socket_;
};

// A server on this machine alone that answers every request as it is told, one after the
// other, and closes.
class HttpServer {
public:
    using Answer =
        std::function<void(const HttpConnection& client, const std::string& request)>;
    explicit HttpServer(Answer answer);
    // Always the same bytes.
    explicit HttpServer(const std::string& bytes);
    HttpServer(const HttpServer&) = delete;
    HttpServer& operator=(const HttpServer&) = delete;
    ~HttpServer();

    int32_t Port() const { return port_; }
    // "http://127.0.0.1:port"
    std::string Address() const;
    // All requests that have come so far, one behind the other.
    std::string Requests() const;

private:
    void Serve();
    void Talk(int socket);

    Answer answer_;
    int listening_;
    int32_t port_ = 0;
    mutable std::mutex mutex_;
    std::string requests_;
    int talking_ = -1;
    std::atomic<bool> ending_ = false;
    std::thread thread_;
};

// A reply with that body and its length.
std::string GoodReply(const std::string& body);

} // namespace vardenix::tests
