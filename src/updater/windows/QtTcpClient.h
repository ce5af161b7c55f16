#pragma once

#include "updater/TcpClient.h"
#include "updater/Timer.h"

#include <QTimer>

#include <memory>

class QTcpSocket;

namespace vardenix {

// A connection on the message loop.
class QtTcpClient : public QObject, public TcpClient {
public:
    QtTcpClient();
    ~QtTcpClient() override;

    void Connect(const std::string& host, int32_t port, TcpEvents& events) override;
    void Send(std::string_view bytes) override;
    void Close() override;
    TcpState State() const override;
    std::string RemoteHostIP() const override;

private:
    void HandOver();
    void Ended();
    void Failed(int socketError);
    void Written(qint64 count);

    std::unique_ptr<QTcpSocket> socket_;
    TcpEvents* events_ = nullptr;
    int64_t sent_ = 0;
};

// A timer on the message loop.
class QtTimer : public Timer {
public:
    QtTimer();

    void Start(int milliseconds, std::function<void()> whenOver) override;
    void Stop() override { timer_.stop(); }

private:
    QTimer timer_;
    std::function<void()> whenOver_;
};

} // namespace vardenix
