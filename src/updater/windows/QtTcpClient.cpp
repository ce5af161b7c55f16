#include "updater/windows/QtTcpClient.h"

#include "platform/windows/RunTimeBarrier.h"

#include <QHostAddress>
#include <QNetworkProxy>
#include <QTcpSocket>

#include <utility>

namespace vardenix {

namespace {

constexpr qint64 WaitingBytes = 1 << 18; // a server that sends faster has to wait
constexpr int32_t LastPort = 65535;

} // namespace

QtTcpClient::QtTcpClient() : socket_(std::make_unique<QTcpSocket>()) {
    socket_->setProxy(QNetworkProxy::NoProxy);
    socket_->setReadBufferSize(WaitingBytes);
    OnSignal(socket_.get(), &QTcpSocket::connected, this, [this] {
        if (events_ != nullptr)
            events_->TcpConnected();
    });
    OnSignal(socket_.get(), &QTcpSocket::readyRead, this, [this] { HandOver(); });
    OnSignal(socket_.get(), &QTcpSocket::disconnected, this, [this] { Ended(); });
    OnSignal(socket_.get(), &QTcpSocket::errorOccurred, this,
             [this](QAbstractSocket::SocketError error) { Failed(error); });
    OnSignal(socket_.get(), &QTcpSocket::bytesWritten, this,
             [this](qint64 count) { Written(count); });
}

QtTcpClient::~QtTcpClient() {
    // Nobody is left to be told of the end.
    events_ = nullptr;
    socket_->disconnect(this);
}

void QtTcpClient::Connect(const std::string& host, int32_t port, TcpEvents& events) {
    Close();
    events_ = &events;
    sent_ = 0;
    // Port 0 is nobody's, and is refused as one by the system.
    const auto number = static_cast<quint16>(port > LastPort ? 0 : port);
    socket_->connectToHost(QString::fromStdString(host), number);
}

void QtTcpClient::Send(std::string_view bytes) {
    socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
}

void QtTcpClient::Close() {
    events_ = nullptr;
    socket_->abort();
}

TcpState QtTcpClient::State() const {
    if (events_ == nullptr)
        return TcpState::Closed;
    return socket_->state() == QAbstractSocket::ConnectedState ? TcpState::Connected
                                                               : TcpState::Connecting;
}

std::string QtTcpClient::RemoteHostIP() const {
    return socket_->peerAddress().toString().toStdString();
}

// A handler may close the connection, or open another one.
void QtTcpClient::HandOver() {
    while (events_ != nullptr && socket_->bytesAvailable() > 0) {
        const QByteArray bytes = socket_->readAll();
        events_->TcpData({bytes.data(), static_cast<size_t>(bytes.size())});
    }
}

void QtTcpClient::Ended() {
    HandOver();
    TcpEvents* events = std::exchange(events_, nullptr);
    if (events != nullptr)
        events->TcpClosed();
}

void QtTcpClient::Failed(int socketError) {
    // That the server has closed is told by the signal that follows.
    if (socketError == QAbstractSocket::RemoteHostClosedError || events_ == nullptr)
        return;
    TcpEvents* events = events_;
    const std::string text = socket_->errorString().toStdString();
    Close();
    events->TcpError(socketError, text, "QTcpSocket");
}

void QtTcpClient::Written(qint64 count) {
    sent_ += count;
    TcpEvents* events = events_;
    if (events == nullptr)
        return;
    events->TcpSendProgress(sent_, socket_->bytesToWrite());
    if (socket_->bytesToWrite() == 0)
        events->TcpSendCompleted();
}

QtTimer::QtTimer() {
    timer_.setSingleShot(true);
    OnSignal(&timer_, &QTimer::timeout, &timer_, [this] {
        const auto whenOver = whenOver_;
        whenOver();
    });
}

void QtTimer::Start(int milliseconds, std::function<void()> whenOver) {
    whenOver_ = std::move(whenOver);
    timer_.start(milliseconds);
}

} // namespace vardenix
