#include "modbus/relay.h"

#include <QTimer>

namespace test {

Relay::Relay(int devicePort) : devicePort_(devicePort) {
    server_.listen(QHostAddress::LocalHost);
    connect(&server_, &QTcpServer::newConnection, this, &Relay::join);
}

void Relay::cut() {
    for (const QPointer<QTcpSocket>& end : {client_, device_}) {
        if (end) {
            end->abort();
        }
    }
}

void Relay::join() {
    client_ = server_.nextPendingConnection();
    device_ = new QTcpSocket(client_);
    QTcpSocket* const client = client_;
    QTcpSocket* const device = device_;
    device->connectToHost(QHostAddress(QHostAddress::LocalHost), quint16(devicePort_));
    connect(client, &QTcpSocket::readyRead, this, [this, client, device] {
        const QByteArray bytes = client->readAll();
        if (!isLosing) {
            device->write(bytes);
        }
    });
    connect(device, &QTcpSocket::readyRead, client, [this, client, device] {
        QByteArray answer = device->readAll();
        if (spoil) {
            spoil(&answer);
        }
        QTimer::singleShot(delayMs, client, [client, answer] {
            if (client->state() == QTcpSocket::ConnectedState) {
                client->write(answer);
            }
        });
    });
    connect(device, &QTcpSocket::disconnected, client, &QTcpSocket::close);
    connect(device, &QTcpSocket::errorOccurred, client, &QTcpSocket::abort);
    connect(client, &QTcpSocket::disconnected, device, &QTcpSocket::abort);
    connect(client, &QTcpSocket::disconnected, client, &QObject::deleteLater);
}

}  // namespace test
