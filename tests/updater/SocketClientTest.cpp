#include "updater/SocketClient.h"

#include "support/HttpServer.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/socket.h>

namespace {

// What the next call of this thread is refused with, in the place of the system; 0 for
// none. The server of the test has a thread of its own.
thread_local int sendRefusal = 0;
thread_local int receiveRefusal = 0;

bool IsRefused(int& refusal) {
    if (refusal == 0)
        return false;
    errno = refusal;
    refusal = 0;
    return true;
}

} // namespace

extern "C" ssize_t send(int socket, const void* bytes, size_t count, int flags) {
    return IsRefused(sendRefusal) ? -1
                                  : ::sendto(socket, bytes, count, flags, nullptr, 0);
}

extern "C" ssize_t recv(int socket, void* bytes, size_t count, int flags) {
    return IsRefused(receiveRefusal)
               ? -1
               : ::recvfrom(socket, bytes, count, flags, nullptr, nullptr);
}

namespace vardenix {
namespace {

class SocketClientTest : public testing::Test, protected TcpEvents {
protected:
    void TcpConnected() override {
        story_ += "connected|";
        client_.Send("GET / HTTP/1.0\r\n\r\n");
        sendRefusal = sendRefused_;
    }
    void TcpData(std::string_view bytes) override { received_ += bytes; }
    void TcpClosed() override { story_ += "closed|"; }
    void TcpError(int number, const std::string&, const std::string& source) override {
        story_ += "error " + std::to_string(number) + " " + source + "|";
    }
    void TcpSendCompleted() override {
        story_ += "sent|";
        receiveRefusal = receiveRefused_;
    }

    // Its story.
    std::string Talk() {
        story_.clear();
        received_.clear();
        const tests::HttpServer server("Hello");
        client_.Connect("127.0.0.1", server.Port(), *this);
        while (client_.Step(std::chrono::seconds(30))) {
        }
        return story_;
    }

    SocketClient client_;
    std::string story_;
    std::string received_;
    int sendRefused_ = 0;
    int receiveRefused_ = 0;
};

TEST_F(SocketClientTest, ASystemThatIsNotReadyIsAskedAgain) {
    for (const int notReady : {EAGAIN, EINTR}) {
        sendRefused_ = notReady;
        receiveRefused_ = notReady;
        EXPECT_EQ(Talk(), "connected|sent|closed|") << notReady;
        EXPECT_EQ(received_, "Hello");
    }
}

TEST_F(SocketClientTest, AnyOtherRefusalEndsTheConnection) {
    sendRefused_ = EPIPE;
    EXPECT_EQ(Talk(), "connected|error 32 SocketClient|");
    EXPECT_EQ(client_.State(), TcpState::Closed);
    sendRefused_ = 0;
    receiveRefused_ = ECONNRESET;
    EXPECT_EQ(Talk(), "connected|sent|error 104 SocketClient|");
    EXPECT_EQ(client_.State(), TcpState::Closed);
}

} // namespace
} // namespace vardenix
