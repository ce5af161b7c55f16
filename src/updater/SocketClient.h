#pragma once

#include "files/SystemFile.h"
#include "updater/TcpClient.h"
#include "updater/Timer.h"

#include <chrono>
#include <memory>
#include <optional>

struct addrinfo;

namespace vardenix {

// A connection for programs without a message loop: whatever happens on it is told from
// within Step.
class SocketClient : public TcpClient {
public:
    SocketClient();
    ~SocketClient() override;

    void Connect(const std::string& host, int32_t port, TcpEvents& events) override;
    void Send(std::string_view bytes) override;
    void Close() override;
    TcpState State() const override { return state_; }
    std::string RemoteHostIP() const override;

    // Waits for something to happen, at most so long, and tells it. False when the
    // connection is closed.
    bool Step(std::chrono::milliseconds patience);

private:
    struct FreeAddresses {
        void operator()(addrinfo* addresses) const;
    };

    void TryNextAddress();
    void FinishConnecting();
    void SendWaiting();
    void Receive();
    void Fail(int number, const std::string& description);

    TcpEvents* events_ = nullptr;
    TcpState state_ = TcpState::Closed;
    SystemFile socket_;
    std::unique_ptr<addrinfo, FreeAddresses> addresses_;
    addrinfo* next_ = nullptr;
    int refusal_ = 0;         // the last address's errno value
    std::string description_; // of a host that is not known
    std::string toSend_;
    size_t sent_ = 0;
};

// A timer for the same programs: goes off within Step once its time is over.
class SteppedTimer : public Timer {
public:
    void Start(int milliseconds, std::function<void()> whenOver) override;
    void Stop() override { whenOver_ = {}; }

    // What is left of its time, for the next wait; nothing while it does not run.
    std::optional<std::chrono::milliseconds> Left() const;
    void Step();

private:
    std::chrono::steady_clock::time_point end_;
    std::function<void()> whenOver_;
};

} // namespace vardenix
