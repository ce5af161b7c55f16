#pragma once

#include "updater/TcpClient.h"
#include "updater/Timer.h"

#include <string>

namespace vardenix::tests {

// A connection that does what the test says, and writes down what it is asked:
// "connect host:80|send GET ...|close".
class FakeTcp : public TcpClient {
public:
    std::string Story;
    std::string Sent;

    void Connect(const std::string& host, int32_t port, TcpEvents& events) override {
        Tell("connect " + host + ":" + std::to_string(port));
        events_ = &events;
        state_ = TcpState::Connecting;
    }
    void Send(std::string_view bytes) override {
        Tell("send");
        Sent += bytes;
    }
    void Close() override {
        Tell("close");
        events_ = nullptr;
        state_ = TcpState::Closed;
    }
    TcpState State() const override { return state_; }
    std::string RemoteHostIP() const override {
        return state_ == TcpState::Connected ? "192.0.2.7" : "";
    }

    void SayConnected() {
        state_ = TcpState::Connected;
        events_->TcpConnected();
    }
    // Nobody hears it once the connection is closed.
    void SayData(std::string_view bytes) {
        if (events_ != nullptr)
            events_->TcpData(bytes);
    }
    void SayClosed() {
        TcpEvents* events = events_;
        events_ = nullptr;
        state_ = TcpState::Closed;
        if (events != nullptr)
            events->TcpClosed();
    }
    void SayError(int number, const std::string& text) {
        if (events_ != nullptr)
            events_->TcpError(number, text, "a test");
    }
    TcpEvents* Events() { return events_; }

private:
    void Tell(const std::string& what) { Story += (Story.empty() ? "" : "|") + what; }

    TcpEvents* events_ = nullptr;
    TcpState state_ = TcpState::Closed;
};

// Time is over when the test says so.
class FakeTimer : public Timer {
public:
    int Milliseconds = 0; // 0 while it does not run

    void Start(int milliseconds, std::function<void()> whenOver) override {
        Milliseconds = milliseconds;
        whenOver_ = std::move(whenOver);
    }
    void Stop() override { Milliseconds = 0; }
    void GoOff() {
        if (Milliseconds == 0)
            return;
        Milliseconds = 0;
        const auto whenOver = whenOver_;
        whenOver();
    }

private:
    std::function<void()> whenOver_;
};

} // namespace vardenix::tests
