#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vardenix {

// What happens on a connection. Everything is told on the program's one thread; a handler
// may close the connection.
class TcpEvents {
public:
    TcpEvents() = default;
    TcpEvents(const TcpEvents&) = delete;
    TcpEvents& operator=(const TcpEvents&) = delete;
    virtual ~TcpEvents() = default;

    virtual void TcpConnected() = 0;
    // What has arrived since the last time, byte for byte; never empty.
    virtual void TcpData(std::string_view bytes) = 0;
    // The other side has closed the connection, and all it sent has been handed over.
    virtual void TcpClosed() = 0;
    // No connection, or its end; the description is UTF-8.
    virtual void TcpError(int number, const std::string& description,
                          const std::string& source) = 0;
    virtual void TcpSendProgress(int64_t, int64_t) {} // bytes sent, bytes remaining
    virtual void TcpSendCompleted() {}
};

enum class TcpState { Closed = 0, Connecting = 6, Connected = 7 };

// One connection at a time to a server.
class TcpClient {
public:
    TcpClient() = default;
    TcpClient(const TcpClient&) = delete;
    TcpClient& operator=(const TcpClient&) = delete;
    virtual ~TcpClient() = default;

    // Begins to connect, and tells `events` of it and of all that follows, until Close.
    // They are borrowed until then. A port that is none (above 65535) is told as an
    // error.
    virtual void Connect(const std::string& host, int32_t port, TcpEvents& events) = 0;
    virtual void Send(std::string_view bytes) = 0;
    // Nothing is told any more.
    virtual void Close() = 0;
    virtual TcpState State() const = 0;
    // Of the server that it is connected to, else empty.
    virtual std::string RemoteHostIP() const = 0;
};

} // namespace vardenix
