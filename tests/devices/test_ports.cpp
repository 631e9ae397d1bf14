// Logical ports: what is written to which register, what is read, and what a port out of use does.

#include "devices/ports.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <cmath>
#include <limits>

class TestPorts : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void digital_writesABit_data();
    void digital_writesABit();
    void analogue_writesAScaledValue_data();
    void analogue_writesAScaledValue();
    void outOfUse_doesNothing_data();
    void outOfUse_doesNothing();
    void batch_collectsInOrder();
    void state_data();
    void state();
    void percent_data();
    void percent();
    void switchOff_data();
    void switchOff();
    void scaling_data();
    void scaling();

private:
    void assign(I_PORT port, const QString& name, const QVariant& enable = true);

    QStringList calls_;  // command and record, as compact JSON
    QObject sender_;
    QObject* lastSender_ = nullptr;
};

void TestPorts::initTestCase() {
    connect(kordservice(), &KordService::issued, this, [this](const KordCall& call) {
        const QJsonDocument record(call.node->exportToJson().toObject());
        calls_ << call.name + ' ' + record.toJson(QJsonDocument::Compact);
        lastSender_ = call.sender;
    });
}

void TestPorts::init() {
    calls_.clear();
    QJsonArray rows;
    for (int i = 0; i <= AO_LASER_DUTY_CYCLE; ++i) {
        rows.append(QJsonObject{{"name", QStringLiteral("unassigned")}, {"enable", false}});
    }
    m()->regist(this, "lumo")->loadJson(this, QJsonObject{{"port", rows}});
}

void TestPorts::assign(I_PORT port, const QString& name, const QVariant& enable) {
    m("lumo.port")->c(port)->set(this, "name", name)->set(this, "enable", enable);
}

void TestPorts::digital_writesABit_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("on");
    QTest::addColumn<QString>("call");
    const auto row = [](const char* name, bool on, const QString& record) {
        QTest::newRow(qPrintable(QString(name) + (on ? " on" : " off")))
            << name << on << "register.write " + record;
    };
    row("LUMO_DO.#3", true, R"({"bias":3,"name":"LUMO_DO","type":"bit","value":1})");
    row("LUMO_DO.#3", false, R"({"bias":3,"name":"LUMO_DO","type":"bit","value":0})");
    row("LUMO_DO.#15", true, R"({"bias":15,"name":"LUMO_DO","type":"bit","value":1})");
    row("A.b.#7", true, R"({"bias":7,"name":"A","type":"bit","value":1})");
    row("DO2_2", true, R"({"bias":0,"name":"DO2_2","type":"bit","value":1})");
    row("", true, R"({"bias":0,"name":"","type":"bit","value":1})");
}

void TestPorts::digital_writesABit() {
    QFETCH(QString, name);
    QFETCH(bool, on);
    QFETCH(QString, call);
    assign(DO_WIRE_ENABLE, name);
    QVERIFY(setPortDO(&sender_, DO_WIRE_ENABLE, on));
    QCOMPARE(calls_, QStringList{call});
    QCOMPARE(lastSender_, &sender_);
}

void TestPorts::analogue_writesAScaledValue_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<double>("fraction");
    QTest::addColumn<QString>("call");
    QTest::newRow("half") << "LUMO_AO_1" << 0.5
                          << R"(register.write {"bias":0,"name":"LUMO_AO_1","type":"int16","value":16384})";
    QTest::newRow("full") << "lumo_ao_2" << 1.0
                          << R"(register.write {"bias":0,"name":"lumo_ao_2","type":"int16","value":32767})";
    QTest::newRow("name unsplit") << "AO.#4" << 0.0
                                  << R"(register.write {"bias":0,"name":"AO.#4","type":"int16","value":0})";
}

void TestPorts::analogue_writesAScaledValue() {
    QFETCH(QString, name);
    QFETCH(double, fraction);
    QFETCH(QString, call);
    assign(AO_LASER_POWER, name);
    QVERIFY(setPortAO(&sender_, AO_LASER_POWER, fraction));
    QCOMPARE(calls_, QStringList{call});
    QCOMPARE(lastSender_, &sender_);
}

void TestPorts::outOfUse_doesNothing_data() {
    QTest::addColumn<QJsonValue>("rows");
    const QJsonObject disabled{{"name", "LUMO_DO.#1"}, {"enable", false}};
    const QJsonObject unsaid{{"name", "LUMO_DO.#1"}};
    const QJsonObject nonsense{{"name", "LUMO_DO.#1"}, {"enable", "perhaps"}};
    const auto rowsOf = [](const QJsonObject& row) {
        QJsonArray rows;
        for (int i = 0; i <= AO_LASER_DUTY_CYCLE; ++i) {
            rows.append(row);
        }
        return rows;
    };
    QTest::newRow("disabled") << QJsonValue(rowsOf(disabled));
    QTest::newRow("no enable") << QJsonValue(rowsOf(unsaid));
    QTest::newRow("enable is no boolean") << QJsonValue(rowsOf(nonsense));
    QTest::newRow("row missing") << QJsonValue(QJsonArray{QJsonObject{{"name", "x"}, {"enable", true}}});
    QTest::newRow("no rows") << QJsonValue(QJsonArray());
}

void TestPorts::outOfUse_doesNothing() {
    QFETCH(QJsonValue, rows);
    m("lumo.port")->loadJson(this, rows);
    ModuleObject batch;
    QVERIFY(!setPortDO(&sender_, DO_GAS, true));
    QVERIFY(!setPortAO(&sender_, AO_LASER_POWER, 1.0));
    QVERIFY(!setPortDO(&sender_, DO_GAS, true, &batch));
    QVERIFY(!setPortAO(&sender_, AO_LASER_POWER, 1.0, &batch));
    QVERIFY(!portEnabled(DO_GAS));
    QCOMPARE(batch.size(), 0);
    QVERIFY(calls_.isEmpty());
}

void TestPorts::batch_collectsInOrder() {
    assign(DO_LASER_ENABLE, "LUMO_DO.#2");
    assign(DO_GAS, "LUMO_DO.#0");
    assign(AO_LASER_POWER, "LUMO_AO_1");
    ModuleObject batch;
    QVERIFY(setPortDO(&sender_, DO_LASER_ENABLE, true, &batch));
    QVERIFY(setPortAO(&sender_, AO_LASER_POWER, 0.0, &batch));
    QVERIFY(setPortDO(&sender_, DO_GAS, false, &batch));
    QVERIFY(calls_.isEmpty());
    const QJsonArray expected{
        QJsonObject{{"name", "LUMO_DO"}, {"type", "bit"}, {"value", 1}, {"bias", 2}},
        QJsonObject{{"name", "LUMO_AO_1"}, {"type", "int16"}, {"value", 0}, {"bias", 0}},
        QJsonObject{{"name", "LUMO_DO"}, {"type", "bit"}, {"value", 0}, {"bias", 0}}};
    QCOMPARE(batch.exportToJson().toArray(), expected);
}

void TestPorts::state_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("enable");
    QTest::addColumn<bool>("expected");
    QTest::newRow("on") << "LUMO_DI.#1" << true << true;
    QTest::newRow("off") << "LUMO_DI.#0" << true << false;
    QTest::newRow("disabled") << "LUMO_DI.#1" << false << false;
    QTest::newRow("no such bit") << "LUMO_DI.#9" << true << false;
    QTest::newRow("no such register") << "NONE.#1" << true << false;
    QTest::newRow("not assigned") << "" << true << false;
}

void TestPorts::state() {
    QFETCH(QString, name);
    QFETCH(bool, enable);
    QFETCH(bool, expected);
    ModuleObject bits;
    bits.loadJson(nullptr, QJsonArray{false, true});
    kordservice()->set(nullptr, "register.values.LUMO_DI", &bits);
    assign(DI_LASER_STATE, name, enable);
    QCOMPARE(portState(DI_LASER_STATE), expected);
}

void TestPorts::percent_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("enable");
    QTest::addColumn<double>("expected");
    QTest::newRow("half") << "LUMO_AO_1" << true << 16384 / 32767.0 * 100;
    QTest::newRow("disabled") << "LUMO_AO_1" << false << 0.0;
    QTest::newRow("no such register") << "LUMO_AO_77" << true << 0.0;
}

void TestPorts::percent() {
    QFETCH(QString, name);
    QFETCH(bool, enable);
    QFETCH(double, expected);
    ModuleObject values;
    values.loadJson(nullptr, QJsonArray{16384});
    kordservice()->set(nullptr, "register.values.LUMO_AO_1", &values);
    assign(AO_LASER_POWER, name, enable);
    QCOMPARE(portPercent(AO_LASER_POWER), expected);
}

void TestPorts::switchOff_data() {
    QTest::addColumn<int>("port");
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("calls");
    const auto write = [](const char* name, const char* type) {
        return QStringList(QStringLiteral(R"(register.write {"bias":0,"name":"%1","type":"%2","value":0})")
                               .arg(QLatin1String(name), QLatin1String(type)));
    };
    QTest::newRow("input") << int(DI_LASER_STATE) << 1 << QStringList();
    QTest::newRow("first output") << int(DO_GAS) << 1 << write("OUT", "bit");
    QTest::newRow("last output") << int(DO_WIRE_PULLBACK) << 1 << write("OUT", "bit");
    QTest::newRow("output, off already") << int(DO_GAS) << 0 << QStringList();
    QTest::newRow("first analogue output") << int(AO_WIRE_SPEED) << 1 << write("OUT", "int16");
    QTest::newRow("last analogue output") << int(AO_LASER_DUTY_CYCLE) << 32767 << write("OUT", "int16");
    QTest::newRow("analogue output below zero") << int(AO_LASER_POWER) << -328 << write("OUT", "int16");
    QTest::newRow("analogue output, off already") << int(AO_LASER_POWER) << 0 << QStringList();
}

void TestPorts::switchOff() {
    QFETCH(int, port);
    QFETCH(int, value);
    kordservice()->dataNode("register.values")->set(nullptr, "OUT.#0", value);
    const auto which = static_cast<I_PORT>(port);
    assign(which, which < AO_WIRE_SPEED ? "OUT.#0" : "OUT");
    switchOffPort(&sender_, which);
    QTEST(calls_, "calls");
}

void TestPorts::scaling_data() {
    QTest::addColumn<double>("fraction");
    QTest::addColumn<int>("value");
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("full") << 1.0 << 32767;
    QTest::newRow("a half rounds up") << 0.5 << 16384;
    QTest::newRow("a negative half rounds up") << -0.5 << -16383;
    QTest::newRow("nearest below") << 0.05 << 1638;
    QTest::newRow("nearest above") << 0.07 << 2294;
    QTest::newRow("too much") << 3.0 << 32767;
    QTest::newRow("far too much") << 1e300 << 32767;
    QTest::newRow("too little") << -3.0 << -32768;
    QTest::newRow("infinite") << infinity << 32767;
    QTest::newRow("minus infinite") << -infinity << -32768;
    QTest::newRow("not a number") << std::nan("") << 0;
}

void TestPorts::scaling() {
    QFETCH(double, fraction);
    QFETCH(int, value);
    QCOMPARE(scaledFraction(fraction), value);
}

QTEST_GUILESS_MAIN(TestPorts)
#include "test_ports.moc"
