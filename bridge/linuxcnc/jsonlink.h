#pragma once

#include "bridge/linkreason.h"

#include <QJsonObject>
#include <QObject>
#include <QTcpSocket>
#include <QTimer>

namespace bridge::linuxcnc {

/// A connection to a program of this machine that talks in JSON, one object a line. It is made anew until it
/// stands, and closed when nothing is heard for too long.
class JsonLink : public QObject {
    Q_OBJECT
public:
    /// `silenceMs`: so long the other side may say nothing; 0: for ever.
    JsonLink(quint16 port, int silenceMs, QObject* parent);
    ~JsonLink() override;

    /// Connects, and connects again after each close, until the object is deleted or rests.
    void open();
    bool isOpen() const { return socket_.state() == QAbstractSocket::ConnectedState; }
    /// At once; nothing that was sent and is still on its way here is kept.
    void close(const LinkReason& reason);
    /// Does not connect until the next open().
    void rest();
    /// Sends when open, else does nothing.
    void send(const QJsonObject& message);

signals:
    void opened();
    /// A line that is no object closes the connection.
    void received(const QJsonObject& message);
    /// After opened().
    void closed(const bridge::LinkReason& reason);
    /// Nothing listens there: LinuxCNC does not run.
    void refused(const bridge::LinkReason& reason);

private:
    void onState(QAbstractSocket::SocketState state);
    void onError(QAbstractSocket::SocketError error);
    void onLines();
    void closeBroken(const QString& why);

    quint16 port_;
    QTcpSocket socket_;
    QTimer again_, silence_;
    bool wasOpen_ = false;
    LinkReason reason_;
};

}  // namespace bridge::linuxcnc
