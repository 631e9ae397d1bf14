#pragma once

#include "bridge/modbus/modbusport.h"

#include <QEventLoop>
#include <QMap>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <memory>

namespace test {

/// Runs the event loop until the condition holds. False after half a minute, which is for a busy machine.
/// QTRY_VERIFY sleeps 10 ms after each look, so that every telegram would take that long.
inline bool waitFor(const std::function<bool()>& holds) {
    QEventLoop loop;
    QTimer look, limit;
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        if (holds()) {
            loop.quit();
        }
    });
    QObject::connect(&limit, &QTimer::timeout, &loop, &QEventLoop::quit);
    look.start(2);
    limit.start(30000);
    loop.exec();
    return holds();
}

/// A map for the devices of the tests; `more` is put into its object, before the registers.
inline bridge::ModbusMap modbusMap(int port, const QByteArray& more = QByteArray()) {
    const QByteArray text =
        R"({"host": "127.0.0.1", "port": )" + QByteArray::number(port) + more + R"(, "registers": {
        "LUMO_DO": {"table": "coil", "address": 0, "length": 16},
        "LUMO_DI": {"table": "discrete_input", "address": 0, "length": 16},
        "LUMO_AO_0": {"table": "holding_register", "address": 0},
        "LUMO_AO_1": {"table": "holding_register", "address": 1},
        "FIXTURE_DO": {"table": "holding_register", "address": 4, "bit": 4, "length": 8},
        "PART": {"table": "input_register", "address": 1}}})";
    mendo::FileProblem problem;
    const auto json = mendo::JsonText::parse(text, &problem);
    return json ? bridge::ModbusMap::from(*json, &problem).value_or(bridge::ModbusMap())
                : bridge::ModbusMap();
}

/// A port that is started, and all that it has told.
class Client : public QObject {
public:
    explicit Client(const bridge::ModbusMap& map) : port(std::make_unique<bridge::ModbusPort>(map)) {
        using bridge::ModbusPort;
        connect(port.get(), &ModbusPort::linkChanged, this, [this](bool up, const bridge::LinkReason& why) {
            isUp = up;
            links << (up ? QStringLiteral("up") : why.text());
        });
        connect(port.get(), &ModbusPort::written, this, [this](int ticket, bool isAccepted) {
            tickets << ticket;
            accepted << isAccepted;
        });
        connect(port.get(), &ModbusPort::told, this, [this](const QString& text) { told << text; });
        connect(port.get(), &ModbusPort::changed, this,
                [this](bridge::SignalRow::Kind, const QString& name, int bias, int value) {
                    values[name + QStringLiteral(".#%1").arg(bias)] = value;
                });
        port->start();
    }

    /// Orders a value for an element; the ticket counts up from 0.
    void write(const QString& name, int bias, int value) {
        port->write({{bridge::SignalRow::Kind::Register, name, bias, value}}, nextTicket++);
    }
    /// Waits for the first link; what went before it is forgotten: the device takes a while to start.
    bool comesUp() {
        const bool came = waitFor([this] { return isUp; });
        links.clear();
        return came;
    }
    bool isAnswered() const { return tickets.size() == nextTicket; }

    std::unique_ptr<bridge::ModbusPort> port;
    bool isUp = false;
    QStringList links, told;
    QVector<int> tickets;
    QVector<bool> accepted;
    QMap<QString, int> values;
    int nextTicket = 0;
};

}  // namespace test
