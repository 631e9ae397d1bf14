// A port and two kinds of devices in processes of their own: order, refusals, a device that restarts or
// hangs.

#include "modbus/deviceprocess.h"
#include "modbus/fixture.h"
#include "support/suite.h"

#include <csignal>
#include <numeric>

using test::Client;
using test::DeviceProcess;
using test::waitFor;
using Kind = DeviceProcess::Kind;

class PortTest : public QObject {
    Q_OBJECT
private slots:
    void writesAreCarriedOutInTheirOrder_data() { kinds(); }
    void writesAreCarriedOutInTheirOrder();
    void refusedWriteIsToldOnceAndTheConnectionStays_data() { kinds(); }
    void refusedWriteIsToldOnceAndTheConnectionStays();
    void restartedDeviceIsSwitchedOffFirst_data() { kinds(); }
    void restartedDeviceIsSwitchedOffFirst();
    void hangingDeviceDoesNothingLate_data() { kinds(); }
    void hangingDeviceDoesNothingLate();
    void endSwitchesOff();
    void deviceSwitchesOffWhenTheProcessHangsOrDies();
    void refusedHeartbeatIsNoLink();

private:
    static void kinds() {
        QTest::addColumn<Kind>("kind");
        QTest::newRow("pymodbus") << Kind::Pymodbus;
        QTest::newRow("libmodbus") << Kind::Libmodbus;
    }
};

namespace {

/// Of tests in which no answer may be missed: a busy machine lets them wait.
const QByteArray unhurried = R"(, "timeout_ms": 20000, "late_ms": 60000)";

}  // namespace

void PortTest::writesAreCarriedOutInTheirOrder() {
    QFETCH(const Kind, kind);
    DeviceProcess device(kind);
    Client client(test::modbusMap(device.port(), unhurried));
    QVERIFY(waitFor([&] { return client.isUp; }));
    const int before = device.log().size();

    QStringList expected;
    constexpr int count = 300;
    for (int i = 0; i < count; ++i) {
        const int bit = i % 16;
        const int on = (i / 32) % 2;
        if (i % 3 == 0) {
            client.write("LUMO_DO", bit, on);
            expected << QStringLiteral("coil %1 %2").arg(bit).arg(on);
        } else {
            client.write(i % 3 == 1 ? "LUMO_AO_0" : "LUMO_AO_1", 0, 100 * i - 15000);
            expected << QStringLiteral("register %1 %2").arg(i % 3 - 1).arg(100 * i - 15000);
        }
    }
    using Register = bridge::SignalWrite;
    const auto asRegister = bridge::SignalRow::Kind::Register;
    client.port->write({Register{asRegister, "LUMO_DO", 2, 1}, Register{asRegister, "LUMO_DO", 3, 0},
                        Register{asRegister, "LUMO_DO", 1, 1}, Register{asRegister, "LUMO_AO_0", 0, 7},
                        Register{asRegister, "LUMO_AO_1", 0, -8}, Register{asRegister, "FIXTURE_DO", 7, 1}},
                       client.nextTicket++);
    expected << "coil 2 1 0"
             << "coil 1 1"
             << "register 0 7 -8"
             << "register 4 2048";
    QVERIFY(waitFor([&] { return client.isAnswered(); }));

    QVector<int> inTurn(count + 1);
    std::iota(inTurn.begin(), inTurn.end(), 0);
    QCOMPARE(client.tickets, inTurn);
    QVERIFY(!client.accepted.contains(false));
    waitFor([&] { return device.log().mid(before) == expected; });
    QCOMPARE(device.log().mid(before), expected);
    // The device wires outputs to inputs.
    waitFor([&] { return client.values.value("PART.#0") == -8; });
    QCOMPARE(client.values.value("PART.#0"), -8);
    waitFor([&] { return client.values.value("LUMO_DI.#1") == 1; });
    QCOMPARE(client.values.value("LUMO_DI.#1"), 1);
    QCOMPARE(client.values.value("LUMO_AO_0.#0"), 7);
}

void PortTest::refusedWriteIsToldOnceAndTheConnectionStays() {
    QFETCH(const Kind, kind);
    DeviceProcess device(kind);
    bridge::ModbusMap map = test::modbusMap(device.port(), unhurried);
    for (bridge::ModbusElement& element : map.elements) {
        if (element.table == QModbusDataUnit::Coils) {
            element.address += 24;  // the device has 32: those of the bits 8 to 15 are missing
        }
    }
    Client client(map);
    QVERIFY(client.comesUp());
    // Those that the device has were switched off all the same.
    QVERIFY(waitFor([&] { return device.log().contains("coil 31 0"); }));
    for (const int bit : {8, 3, 8}) {
        client.write("LUMO_DO", bit, 1);
    }
    client.write("LUMO_AO_0", 0, 40000);
    client.write("LUMO_DI", 0, 1);
    QVERIFY(waitFor([&] { return client.isAnswered(); }));
    QCOMPARE(client.accepted, (QVector<bool>{false, true, false, false, false}));
    QVERIFY(waitFor([&] { return device.log().contains("coil 27 1"); }));
    QCOMPARE(client.values.value("LUMO_DO.#8"), 0);
    QCOMPARE(client.told.filter("LUMO_DO.#8").size(), 1);
    QVERIFY2(client.told.filter("LUMO_DO.#8")[0].endsWith("at address 32: exception 2, illegal data address"),
             qPrintable(client.told.join('\n')));
    QCOMPARE(client.told.filter("cannot be written").size(), 2);
    QVERIFY(client.links.isEmpty());
}

void PortTest::restartedDeviceIsSwitchedOffFirst() {
    QFETCH(const Kind, kind);
    DeviceProcess device(kind);
    Client client(test::modbusMap(device.port(), unhurried));
    QVERIFY(waitFor([&] { return client.isUp; }));
    client.write("LUMO_DO", 3, 1);
    waitFor([&] { return client.values.value("LUMO_DI.#3") == 1; });
    QCOMPARE(client.values.value("LUMO_DI.#3"), 1);

    device.crash();
    client.write("LUMO_DO", 4, 1);  // whether the loss is known yet or not
    QVERIFY(waitFor([&] { return !client.isUp; }));
    client.write("LUMO_DO", 5, 1);
    QVERIFY(waitFor([&] { return client.isAnswered(); }));
    QCOMPARE(client.accepted, (QVector<bool>{true, false, false}));

    device.restart();
    QVERIFY(waitFor([&] { return client.isUp; }));
    client.write("LUMO_AO_0", 0, 9);
    waitFor([&] {
        return device.log() == (QStringList{"coil 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0", "register 0 0 0",
                                            "register 4 0", "register 0 9"});
    });
    QCOMPARE(device.log(), (QStringList{"coil 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0", "register 0 0 0",
                                        "register 4 0", "register 0 9"}));
    QCOMPARE(client.values.value("LUMO_DO.#3"), 0);
    waitFor([&] { return client.values.value("LUMO_DI.#3") == 0; });
    QCOMPARE(client.values.value("LUMO_DI.#3"), 0);
}

void PortTest::hangingDeviceDoesNothingLate() {
    QFETCH(const Kind, kind);
    DeviceProcess device(kind);
    Client client(test::modbusMap(device.port(), R"(, "timeout_ms": 500, "late_ms": 60000)"));
    QVERIFY(waitFor([&] { return client.isUp; }));
    const int before = device.log().size();

    device.hang();
    for (int bit = 0; bit < 16; ++bit) {
        client.write("LUMO_DO", bit, 1);
    }
    QVERIFY(waitFor([&] { return !client.isUp; }));
    client.write("LUMO_AO_0", 0, 1);
    QVERIFY(client.isAnswered());
    QVERIFY(!client.accepted.contains(true));
    QVERIFY2(client.links.last().endsWith("does not answer"), qPrintable(client.links.last()));
    device.goOn();
    QVERIFY(waitFor([&] { return client.isUp; }));

    // Only the one write that was under way can be carried out late, before the outputs are switched off.
    QVERIFY(waitFor([&] { return device.log().mid(before).contains("register 4 0"); }));
    QStringList late = device.log().mid(before);
    late.removeAll("coil 0 1");
    QVERIFY2(device.log().mid(before).count("coil 0 1") <= 1, qPrintable(device.log().join('\n')));
    QCOMPARE(late, (QStringList{"coil 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0", "register 0 0 0", "register 4 0"}));
    QVERIFY(device.isOff());
}

void PortTest::endSwitchesOff() {
    DeviceProcess device(Kind::Libmodbus);
    Client client(test::modbusMap(device.port(), unhurried));
    QVERIFY(waitFor([&] { return client.isUp; }));
    client.write("LUMO_DO", 0, 1);
    QVERIFY(waitFor([&] { return client.isAnswered(); }));
    for (int bit = 1; bit < 16; ++bit) {
        client.write("LUMO_DO", bit, 1);  // most still wait at the end
    }
    client.port.reset();
    QVERIFY(waitFor([&] { return device.log().contains("coil 0 1"); }));
    QVERIFY(waitFor([&] { return device.isOff(); }));
    QVERIFY(!device.log().contains("coil 15 1"));
}

void PortTest::deviceSwitchesOffWhenTheProcessHangsOrDies() {
    constexpr int watchdogMs = 1500;
    DeviceProcess device(Kind::Libmodbus, watchdogMs);
    QFile map(QStringLiteral("map.json"));
    QVERIFY(map.open(QIODevice::WriteOnly));
    map.write(R"({"host": "127.0.0.1", "port": )" + QByteArray::number(device.port()) +
              R"(, "timeout_ms": 20000, "heartbeat": {"address": 31, "period_ms": 10, "watchdog_ms": 1500},
                 "signals": {"DO1": {"table": "coil", "address": 3}}})");
    map.close();
    QProcess client;
    client.start(QStringLiteral(LUMO_MODBUS), {"map.json", "set", "DO1", "1"});
    QVERIFY(waitFor([&] { return device.log().contains("coil 3 1"); }));
    QVERIFY(waitFor([&] { return device.log().contains("register 31 100"); }));
    QStringList log = device.log().filter("register 31");
    for (int i = 0; i < log.size(); ++i) {
        QCOMPARE(log[i], QStringLiteral("register 31 %1").arg(i + 1));
    }
    QVERIFY(device.log().filter("watchdog").isEmpty());
    // After a pause it gives the link up, and switches off before it goes on.
    ::kill(pid_t(client.processId()), SIGSTOP);
    QVERIFY(waitFor([&] { return device.log().last().startsWith("watchdog"); }));
    const int before = device.log().size();
    ::kill(pid_t(client.processId()), SIGCONT);
    QVERIFY(waitFor([&] { return device.log().mid(before).contains("coil 3 1"); }));
    QCOMPARE(device.log().mid(before).filter("coil 3").mid(0, 2), (QStringList{"coil 3 0", "coil 3 1"}));
    QVERIFY(client.readAllStandardOutput().contains("got no heartbeat for"));
    client.kill();
    client.waitForFinished();
    waitFor([&] { return device.log().filter("watchdog").size() == 2; });
    QCOMPARE(device.log().filter("watchdog").size(), 2);
    QVERIFY(device.log().last().startsWith("watchdog"));
}

/// Its outputs would stay on when the panel dies.
void PortTest::refusedHeartbeatIsNoLink() {
    DeviceProcess device(Kind::Libmodbus);
    Client client(test::modbusMap(device.port(), R"(, "heartbeat": {"address": 40, "period_ms": 10})"));
    QVERIFY(waitFor([&] { return client.links.join('\n').contains("refuses the heartbeat: exception 2"); }));
    QVERIFY2(!client.links.contains("up"), qPrintable(client.links.join('\n')));
}

LUMO_TEST_ON(PortTest, test::onWallClock)
#include "test_port.moc"
