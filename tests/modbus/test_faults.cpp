// A port and a device, with a wire between them that is cut, loses what it carries, is slow or spoils
// answers.

#include "modbus/deviceprocess.h"
#include "modbus/fixture.h"
#include "modbus/relay.h"
#include "support/suite.h"

using test::Client;
using test::DeviceProcess;
using test::waitFor;

class FaultsTest : public QObject {
    Q_OBJECT
private slots:
    void cutWireSwitchesOffAfterwards();
    void whatALosingWireSwallowsNeverComesLate();
    void slowDeviceKeepsTheOrderAndTheInputs();
    void writesThatWaitTooLongEndTheConnection();
    void spoiltAnswerRefusesTheWrite_data();
    void spoiltAnswerRefusesTheWrite();
    void halfAnAnswerEndsTheConnection();

private:
    static QStringList offs() {
        return {"coil 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0", "register 0 0 0", "register 4 0"};
    }

    DeviceProcess device_{DeviceProcess::Kind::Libmodbus};
    test::Relay relay_{device_.port()};
};

void FaultsTest::cutWireSwitchesOffAfterwards() {
    Client client(test::modbusMap(relay_.port(), R"(, "timeout_ms": 20000)"));
    QVERIFY(client.comesUp());
    client.write("LUMO_DO", 3, 1);
    QVERIFY(waitFor([&] { return client.isAnswered(); }));
    const int before = device_.log().size();
    client.write("LUMO_DO", 4, 1);
    client.write("LUMO_DO", 5, 1);
    relay_.cut();
    QVERIFY(waitFor([&] { return client.isUp && client.links.size() == 2; }));
    QVERIFY2(client.links[0].startsWith("connection to 127.0.0.1:"), qPrintable(client.links.join('\n')));
    QCOMPARE(client.accepted, (QVector<bool>{true, false, false}));
    waitFor([&] { return device_.log().mid(before) == offs(); });
    QCOMPARE(device_.log().mid(before), offs());
}

void FaultsTest::whatALosingWireSwallowsNeverComesLate() {
    Client client(test::modbusMap(relay_.port(), R"(, "timeout_ms": 300)"));
    QVERIFY(client.comesUp());
    const int before = device_.log().size();
    relay_.isLosing = true;
    client.write("LUMO_DO", 4, 1);
    QVERIFY(waitFor([&] { return !client.isUp && client.isAnswered(); }));
    QCOMPARE(client.accepted, QVector<bool>{false});
    relay_.isLosing = false;
    QVERIFY(client.comesUp());
    waitFor([&] { return device_.log().mid(before) == offs(); });
    QCOMPARE(device_.log().mid(before), offs());
}

void FaultsTest::slowDeviceKeepsTheOrderAndTheInputs() {
    Client client(test::modbusMap(relay_.port(), R"(, "timeout_ms": 20000, "late_ms": 60000)"));
    QVERIFY(client.comesUp());
    const int before = device_.log().size();
    relay_.delayMs = 25;
    QStringList expected;
    int answeredAtInput = 0;
    connect(client.port.get(), &bridge::ModbusPort::changed, &client,
            [&](bridge::SignalRow::Kind, const QString& name, int bias, int value) {
                if (name == "LUMO_DI" && bias == 15 && value == 1 && answeredAtInput == 0) {
                    answeredAtInput = client.tickets.size();
                }
            });
    for (int i = 0; i < 20; ++i) {
        client.write(i % 2 ? "LUMO_AO_0" : "LUMO_DO", i % 2 ? 0 : 15 - i / 2, 1);
        expected << (i % 2 ? QStringLiteral("register 0 1") : QStringLiteral("coil %1 1").arg(15 - i / 2));
    }
    QVERIFY(waitFor([&] { return client.isAnswered(); }));
    QVERIFY(!client.accepted.contains(false));
    QCOMPARE(device_.log().mid(before), expected);
    QVERIFY2(answeredAtInput > 0 && answeredAtInput < 10, qPrintable(QString::number(answeredAtInput)));
    relay_.delayMs = 0;
}

void FaultsTest::writesThatWaitTooLongEndTheConnection() {
    Client client(test::modbusMap(relay_.port(), R"(, "timeout_ms": 20000, "late_ms": 100)"));
    QVERIFY(client.comesUp());
    const int before = device_.log().size();
    relay_.delayMs = 60;
    for (int bit = 0; bit < 16; ++bit) {
        client.write("LUMO_DO", bit, 1);
    }
    QVERIFY(waitFor([&] { return client.isAnswered(); }));
    relay_.delayMs = 0;
    QVERIFY2(client.links[0].contains("answers too slowly"), qPrintable(client.links[0]));
    QVERIFY(!client.accepted.last());
    waitFor([&] { return device_.log().mid(before).filter("register 4 0").size() == 1; });
    QCOMPARE(device_.log().mid(before).filter("register 4 0").size(), 1);
    QVERIFY(!device_.log().mid(before).contains("coil 15 1"));
    QVERIFY(device_.isOff());
}

void FaultsTest::spoiltAnswerRefusesTheWrite_data() {
    QTest::addColumn<QByteArray>("pdu");  // instead of the answer's, behind the unit
    QTest::addColumn<QString>("reason");
    QTest::newRow("another value") << QByteArray::fromHex("060000000b") << "an answer that was not asked for";
    QTest::newRow("another address") << QByteArray::fromHex("060001000a")
                                     << "an answer that was not asked for";
    QTest::newRow("too short") << QByteArray::fromHex("060000") << "an answer that was not asked for";
    QTest::newRow("device busy") << QByteArray::fromHex("8606") << "exception 6, device busy";
}

void FaultsTest::spoiltAnswerRefusesTheWrite() {
    QFETCH(const QByteArray, pdu);
    Client client(test::modbusMap(relay_.port(), R"(, "timeout_ms": 20000)"));
    QVERIFY(client.comesUp());
    relay_.spoil = [&pdu](QByteArray* answer) {
        constexpr int lengthAt = 5, pduAt = 7, writeSingleRegister = 6;
        if (answer->size() > pduAt && answer->at(pduAt) == writeSingleRegister) {
            (*answer)[lengthAt] = char(pdu.size() + 1);
            *answer = answer->left(pduAt) + pdu;
        }
    };
    client.write("LUMO_AO_0", 0, 10);
    client.write("LUMO_AO_0", 0, 10);
    QVERIFY(waitFor([&] { return client.isAnswered(); }));
    relay_.spoil = nullptr;
    client.write("LUMO_AO_0", 0, 10);
    QVERIFY(waitFor([&] { return client.isAnswered(); }));
    QCOMPARE(client.accepted, (QVector<bool>{false, false, true}));
    QCOMPARE(client.told.size(), 1);
    QTEST(client.told[0].section(": ", 1), "reason");
    QVERIFY(client.links.isEmpty());
}

void FaultsTest::halfAnAnswerEndsTheConnection() {
    Client client(test::modbusMap(relay_.port(), R"(, "timeout_ms": 300)"));
    QVERIFY(client.comesUp());
    relay_.spoil = [](QByteArray* answer) { answer->chop(2); };
    QVERIFY(waitFor([&] { return !client.isUp; }));
    QVERIFY2(client.links[0].endsWith("does not answer"), qPrintable(client.links[0]));
    relay_.spoil = nullptr;
    QVERIFY(client.comesUp());
}

LUMO_TEST_ON(FaultsTest, test::onWallClock)
#include "test_faults.moc"
