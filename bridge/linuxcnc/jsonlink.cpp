#include "bridge/linuxcnc/jsonlink.h"

#include <QHostAddress>
#include <QJsonDocument>

namespace bridge::linuxcnc {

namespace {
constexpr int againMs = 100;
constexpr qint64 longestLine = 1 << 20;
}  // namespace

JsonLink::JsonLink(quint16 port, int silenceMs, QObject* parent) : QObject(parent), port_(port) {
    again_.setSingleShot(true);
    again_.setInterval(againMs);
    silence_.setSingleShot(true);
    silence_.setInterval(silenceMs);
    connect(&again_, &QTimer::timeout, this, &JsonLink::open);
    connect(&silence_, &QTimer::timeout, this, [this] {
        close({LinkReason::Kind::NoAnswer, QStringLiteral("LinuxCNC")});
    });
    connect(&socket_, &QTcpSocket::stateChanged, this, &JsonLink::onState);
    connect(&socket_, &QTcpSocket::errorOccurred, this, &JsonLink::onError);
    connect(&socket_, &QTcpSocket::readyRead, this, &JsonLink::onLines);
}

/// The socket closes itself, which is no news.
JsonLink::~JsonLink() {
    socket_.disconnect(this);
}

void JsonLink::open() {
    if (socket_.state() == QAbstractSocket::UnconnectedState) {
        socket_.connectToHost(QHostAddress(QHostAddress::LocalHost), port_);
    }
}

void JsonLink::close(const LinkReason& reason) {
    reason_ = reason;
    socket_.abort();
}

void JsonLink::closeBroken(const QString& why) {
    close({LinkReason::Kind::Lost, QStringLiteral("LinuxCNC"), why});
}

void JsonLink::rest() {
    close({LinkReason::Kind::Cut, {}});
    again_.stop();
}

void JsonLink::send(const QJsonObject& message) {
    if (isOpen()) {
        socket_.write(QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n');
        socket_.flush();
    }
}

void JsonLink::onState(QAbstractSocket::SocketState state) {
    if (state == QAbstractSocket::ConnectedState) {
        socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        wasOpen_ = true;
        reason_ = {};
        if (silence_.interval() > 0) {
            silence_.start();
        }
        emit opened();
    } else if (state == QAbstractSocket::UnconnectedState) {
        silence_.stop();
        again_.start();
        if (wasOpen_) {
            wasOpen_ = false;
            emit closed(reason_.isEmpty() ? LinkReason(LinkReason::Kind::Closed, QStringLiteral("LinuxCNC"))
                                          : reason_);
        }
    }
}

void JsonLink::onError(QAbstractSocket::SocketError error) {
    if (!wasOpen_ && error == QAbstractSocket::ConnectionRefusedError) {
        emit refused({LinkReason::Kind::Refused, QStringLiteral("LinuxCNC (127.0.0.1:%1)").arg(port_)});
    }
}

void JsonLink::onLines() {
    if (silence_.interval() > 0) {
        silence_.start();
    }
    // A receiver may close the connection.
    while (isOpen() && socket_.canReadLine()) {
        const QJsonDocument line = QJsonDocument::fromJson(socket_.readLine());
        if (!line.isObject()) {
            closeBroken(QStringLiteral("what it sends cannot be read"));
            return;
        }
        emit received(line.object());
    }
    if (isOpen() && socket_.bytesAvailable() > longestLine) {
        closeBroken(QStringLiteral("it sends a line without an end"));
    }
}

}  // namespace bridge::linuxcnc
