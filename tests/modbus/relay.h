#pragma once

#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>

namespace test {

/// A wire between a client and a device that can be cut, lose what it carries, delay answers or spoil them.
class Relay : public QObject {
    Q_OBJECT
public:
    explicit Relay(int devicePort);

    int port() const { return server_.serverPort(); }
    void cut();

    bool isLosing = false;  ///< bytes towards the device vanish
    int delayMs = 0;        ///< of each answer
    /// Changes an answer.
    std::function<void(QByteArray*)> spoil;

private:
    void join();

    QTcpServer server_;
    int devicePort_;
    QPointer<QTcpSocket> client_, device_;
};

}  // namespace test
