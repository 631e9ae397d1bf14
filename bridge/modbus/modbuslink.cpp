#include "bridge/modbus/modbuslink.h"

#include <QDeadlineTimer>
#include <QTcpSocket>

#include <algorithm>
#include <utility>

#include <sys/socket.h>

namespace bridge {

namespace {

constexpr int longestPauseMs = 1000;
constexpr int longestFinishMs = 250;
/// Qt stops its own timer at the first byte of an answer, so a device that hangs in the middle of one would
/// be awaited for ever. The deadline here counts; Qt's never comes.
constexpr int neverMs = 24 * 3600 * 1000;

QString exceptionWords(int code) {
    switch (code) {
        case QModbusPdu::IllegalFunction:
            return QStringLiteral("exception 1, illegal function");
        case QModbusPdu::IllegalDataAddress:
            return QStringLiteral("exception 2, illegal data address");
        case QModbusPdu::IllegalDataValue:
            return QStringLiteral("exception 3, illegal data value");
        case QModbusPdu::ServerDeviceFailure:
            return QStringLiteral("exception 4, device failure");
        case QModbusPdu::ServerDeviceBusy:
            return QStringLiteral("exception 6, device busy");
        default:
            return QStringLiteral("exception %1").arg(code);
    }
}

}  // namespace

ModbusLink::ModbusLink(const ModbusMap& map, QObject* parent) : QObject(parent), map_(map) {
    for (QTimer* timer : {&deadline_, &retry_}) {
        timer->setSingleShot(true);
        timer->setTimerType(Qt::PreciseTimer);
    }
    connect(&deadline_, &QTimer::timeout, this, &ModbusLink::onDeadline);
    connect(&retry_, &QTimer::timeout, this, &ModbusLink::connectNow);
}

ModbusLink::~ModbusLink() {
    drop();
}

void ModbusLink::start() {
    connectNow();
}

QAbstractSocket* ModbusLink::socket() const {
    return client_ ? qobject_cast<QAbstractSocket*>(client_->device()) : nullptr;
}

void ModbusLink::connectNow() {
    client_ = new QModbusTcpClient(this);
    client_->setConnectionParameter(QModbusDevice::NetworkAddressParameter, map_.host);
    client_->setConnectionParameter(QModbusDevice::NetworkPortParameter, map_.port);
    client_->setNumberOfRetries(0);
    client_->setTimeout(neverMs);
    connect(client_, &QModbusDevice::stateChanged, this, &ModbusLink::onState);
    deadline_.start(map_.connectMs);
    if (!client_->connectDevice()) {
        lose({LinkReason::Kind::NoConnection, map_.place(), client_->errorString()});
    }
}

void ModbusLink::onState(QModbusDevice::State state) {
    if (state == QModbusDevice::ConnectedState) {
        deadline_.stop();
        isOpen_ = true;
        socket()->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        emit opened();
    } else if (state == QModbusDevice::UnconnectedState) {
        lose(brokenReason());
    }
}

void ModbusLink::onDeadline() {
    const QPointer<QModbusReply> reply = reply_;
    // After a pause of this process the answer may be there, unread.
    if (reply) {
        socket()->waitForReadyRead(0);
    }
    if (!reply || reply == reply_) {
        lose({LinkReason::Kind::NoAnswer, map_.place()});
    }
}

void ModbusLink::read(const QModbusDataUnit& unit, const Then& then) {
    asked_ = unit;
    isRead_ = true;
    await(client_->sendReadRequest(unit, map_.unit), then);
}

void ModbusLink::write(const QModbusDataUnit& unit, const Then& then) {
    asked_ = unit;
    isRead_ = false;
    await(client_->sendWriteRequest(unit, map_.unit), then);
}

/// The answer comes from the socket, never within the call.
void ModbusLink::await(QModbusReply* reply, const Then& then) {
    if (!reply) {
        lose({LinkReason::Kind::Lost, map_.place(), client_->errorString()});
        return;
    }
    reply_ = reply;
    then_ = then;
    deadline_.start(map_.timeoutMs);
    connect(reply, &QModbusReply::finished, this, &ModbusLink::onFinished);
}

void ModbusLink::onFinished() {
    const QPointer<QModbusReply> reply = reply_;
    if (!reply || sender() != reply) {
        return;
    }
    const QModbusDevice::Error error = reply->error();
    if (error != QModbusDevice::NoError && error != QModbusDevice::ProtocolError &&
        error != QModbusDevice::UnknownError) {
        lose(brokenReason());
        return;
    }
    deadline_.stop();
    const ModbusAnswer answer = answerOf(*reply);
    // Qt keeps a finished reply and would let it finish again when the connection ends.
    reply->deleteLater();
    reply_ = nullptr;
    const Then then = std::exchange(then_, nullptr);
    then(answer);
}

ModbusAnswer ModbusLink::answerOf(const QModbusReply& reply) const {
    if (reply.error() == QModbusDevice::ProtocolError) {
        // Not exceptionCode(): Qt keeps the function with its exception bit in an enum without such a value.
        const QByteArray told = reply.rawResult().data();
        const int code = told.isEmpty() ? 0 : quint8(told.at(0));
        return {false, code, exceptionWords(code), {}};
    }
    // An answer to a read has the values; one to a write repeats a single value (a coil that is on as
    // 0xff00), of several their number.
    const QModbusDataUnit got = reply.result();
    const bool isCoil = asked_.registerType() == QModbusDataUnit::Coils;
    const bool isSame =
        isCoil ? (got.value(0) != 0) == (asked_.value(0) != 0) : got.value(0) == asked_.value(0);
    const bool isAsked = isRead_ ? got.values().size() >= int(asked_.valueCount())
                                 : got.startAddress() == asked_.startAddress() &&
                                       got.valueCount() == asked_.valueCount() &&
                                       (asked_.valueCount() > 1 || isSame);
    if (reply.error() != QModbusDevice::NoError || !isAsked) {
        return {false, 0, QStringLiteral("an answer that was not asked for"), {}};
    }
    return {true, 0, QString(), got.values()};
}

/// Why the system has ended the connection, or made none.
LinkReason ModbusLink::brokenReason() const {
    using Kind = LinkReason::Kind;
    switch (socket()->error()) {
        case QAbstractSocket::ConnectionRefusedError:
            return {Kind::Refused, map_.place()};
        case QAbstractSocket::HostNotFoundError:
            return {Kind::UnknownHost, map_.place()};
        case QAbstractSocket::RemoteHostClosedError:
            return {Kind::Closed, map_.place()};
        default:
            return {isOpen_ ? Kind::Lost : Kind::NoConnection, map_.place(), socket()->errorString()};
    }
}

void ModbusLink::lose(const LinkReason& reason) {
    if (!client_) {
        return;
    }
    drop();
    retry_.start(pauseMs_);
    pauseMs_ = std::min(2 * pauseMs_, longestPauseMs);
    emit lost(reason);
}

/// Ends the connection so that the system delivers nothing any more.
void ModbusLink::drop() {
    deadline_.stop();
    retry_.stop();
    isOpen_ = false;
    then_ = nullptr;
    reply_ = nullptr;
    if (!client_) {
        return;
    }
    client_->disconnect(this);
    for (const auto* reply : client_->findChildren<QModbusReply*>()) {
        reply->disconnect(this);
    }
    QAbstractSocket* const connection = socket();
    const linger reset{1, 0};
    setsockopt(int(connection->socketDescriptor()), SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
    connection->abort();
    client_->deleteLater();  // may be on the call stack
    client_ = nullptr;
}

void ModbusLink::finish(const std::vector<QModbusDataUnit>& units) {
    if (!isOpen_ || units.empty()) {
        drop();
        return;
    }
    const QDeadlineTimer end(std::min(map_.timeoutMs, longestFinishMs), Qt::PreciseTimer);
    QPointer<QModbusReply> reply = reply_;
    if (reply) {
        reply->disconnect(this);
    }
    client_->disconnect(this);
    const auto waitForAnswer = [&] {
        while (reply && !reply->isFinished() && !end.hasExpired() &&
               socket()->waitForReadyRead(int(end.remainingTime()))) {
        }
    };
    waitForAnswer();
    for (const QModbusDataUnit& unit : units) {
        reply = client_->sendWriteRequest(unit, map_.unit);
        waitForAnswer();
    }
    socket()->waitForBytesWritten(int(end.remainingTime()));
    // Closed in order, not reset: what is on its way is to arrive.
    delete std::exchange(client_, nullptr);
    drop();
}

}  // namespace bridge
