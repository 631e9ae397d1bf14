#pragma once

#include "bridge/linkreason.h"
#include "bridge/modbus/modbusmap.h"

#include <QModbusTcpClient>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <vector>

class QAbstractSocket;

namespace bridge {

/// How a device answered a telegram.
struct ModbusAnswer {
    bool isGood = false;
    int exception =
        0;           ///< of a refusal: the device's exception code; 0 where the answer is not what was asked
    QString reason;  ///< of a refusal, in words
    QVector<quint16> values;  ///< of a read
};

/// A connection to a Modbus TCP device with one telegram under way. A device that does not answer in time may
/// still carry out what was sent, even seconds later. So such a connection is reset, which drops what the
/// system has not delivered, and only that one telegram can come late.
class ModbusLink : public QObject {
    Q_OBJECT
public:
    using Then = std::function<void(const ModbusAnswer&)>;

    /// The map must outlive the link.
    explicit ModbusLink(const ModbusMap& map, QObject* parent = nullptr);
    ~ModbusLink() override;

    /// Connects, and again 50 ms after a loss; each time that fails the pause doubles, up to 1 s.
    void start();
    bool isOpen() const { return isOpen_; }
    bool isBusy() const { return bool(then_); }
    /// Calls `then` with the answer, unless the connection is lost before. Only while open and not busy.
    void read(const QModbusDataUnit& unit, const Then& then);
    void write(const QModbusDataUnit& unit, const Then& then);
    /// The device works: the next loss begins with the shortest pause again.
    void settle() { pauseMs_ = shortestPauseMs; }
    /// Resets the connection, as after a missing answer.
    void lose(const LinkReason& reason);
    /// Writes all of these without the event loop, then closes the connection for good. Waits for answers up
    /// to the map's timeout altogether, 250 ms at most; what is left is sent without waiting.
    void finish(const std::vector<QModbusDataUnit>& units);

signals:
    void opened();
    /// Not open any more, or no connection was made.
    void lost(const bridge::LinkReason& reason);

private:
    static constexpr int shortestPauseMs = 50;

    void connectNow();
    void onState(QModbusDevice::State state);
    void onDeadline();
    void onFinished();
    void await(QModbusReply* reply, const Then& then);
    ModbusAnswer answerOf(const QModbusReply& reply) const;
    void drop();
    LinkReason brokenReason() const;
    QAbstractSocket* socket() const;

    const ModbusMap& map_;
    QModbusTcpClient* client_ =
        nullptr;  ///< a new one for each connection; it keeps no state of the one before
    QPointer<QModbusReply> reply_;
    QModbusDataUnit asked_;
    bool isRead_ = false;
    Then then_;
    QTimer deadline_;  ///< of the connection or the answer
    QTimer retry_;
    int pauseMs_ = shortestPauseMs;
    bool isOpen_ = false;
};

}  // namespace bridge
