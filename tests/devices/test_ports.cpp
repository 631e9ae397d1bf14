#include "devices/ports.h"
#include "support/suite.h"
#include "support/text.h"

#include <cmath>
#include <limits>

using namespace test;

/// Logical ports: what is written to which register, what is read, and what a port out of use does.
class TestPorts : public QObject {
    Q_OBJECT

    QStringList calls_;

    static void assign(I_PORT port, const QString& name, const QVariant& enable = true) {
        m("lumo.port")->c(port)->set(nullptr, "name", name)->set(nullptr, "enable", enable);
    }

private slots:
    void initTestCase() {
        connect(kordservice(), &KordService::issued, this, [this](const KordCall& call) {
            calls_ << call.name + ' ' + text(call.node) + (call.sender == this ? "" : " of another");
        });
    }

    void init() {
        calls_.clear();
        m()->regist(this, "lumo")
            ->loadJson(this, json("{'port':[" + QByteArray(",{}").repeated(19).mid(1) + "]}"));
    }

    void writes_goToTheRegisterThatIsAssigned_data() {
        QTest::addColumn<int>("port");
        QTest::addColumn<QString>("name");
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("record");
        const auto row = [](int port, const char* name, double value, const char* record) {
            QTest::addRow("%s %g", name, value) << port << name << value << record;
        };
        row(DO_WIRE_ENABLE, "LUMO_DO.#3", 1, "{'bias':3,'name':'LUMO_DO','type':'bit','value':1}");
        row(DO_WIRE_ENABLE, "LUMO_DO.#15", 0, "{'bias':15,'name':'LUMO_DO','type':'bit','value':0}");
        row(DO_WIRE_ENABLE, "A.b.#7", 1, "{'bias':7,'name':'A','type':'bit','value':1}");
        row(DO_WIRE_ENABLE, "DO2_2", 1, "{'bias':0,'name':'DO2_2','type':'bit','value':1}");
        row(AO_LASER_POWER, "LUMO_AO_1", 0.5, "{'bias':0,'name':'LUMO_AO_1','type':'int16','value':16384}");
        row(AO_LASER_POWER, "AO.#4", 1, "{'bias':0,'name':'AO.#4','type':'int16','value':32767}");
    }

    /// At once, or in the order of a batch; nothing where the port is out of use.
    void writes_goToTheRegisterThatIsAssigned() {
        QFETCH(int, port);
        QFETCH(QString, name);
        QFETCH(double, value);
        QFETCH(QString, record);
        ModuleObject batch;
        const auto write = [this, port, value](ModuleObject* into) {
            return port < AO_WIRE_SPEED ? setPortDO(this, I_PORT(port), value != 0.0, into)
                                        : setPortAO(this, I_PORT(port), value, into);
        };
        for (const QVariant& unused : {QVariant(false), QVariant("perhaps"), QVariant()}) {
            assign(I_PORT(port), name, unused);
            QVERIFY(!write(nullptr) && !write(&batch) && !portEnabled(I_PORT(port)));
        }
        assign(I_PORT(port), name);
        QVERIFY(write(nullptr) && write(&batch));
        QCOMPARE(calls_, QStringList("register.write " + record));
        assign(DO_GAS, "LUMO_DO.#0");
        QVERIFY(setPortDO(this, DO_GAS, false, &batch));
        QCOMPARE(text(&batch), "[" + record + ",{'bias':0,'name':'LUMO_DO','type':'bit','value':0}]");
        QCOMPARE(calls_.size(), 1);
        m("lumo.port")->loadJson(this, QJsonArray());
        QVERIFY(!write(nullptr));
    }

    void state_ofWhatCannotBeReadIsOff() {
        kordservice()
            ->dataNode("register.values")
            ->set(this, "LUMO_DI.#0", false)
            ->set(this, "LUMO_DI.#1", true);
        kordservice()->dataNode("register.values")->set(this, "LUMO_AO_1.#0", 16384);
        for (const char* const name : {"LUMO_DI.#0", "LUMO_DI.#9", "NONE.#1", ""}) {
            assign(DI_LASER_STATE, name);
            QVERIFY2(!portState(DI_LASER_STATE), name);
            assign(AO_LASER_POWER, name);
            QCOMPARE(portPercent(AO_LASER_POWER), 0.0);
        }
        for (const bool enabled : {true, false}) {
            assign(DI_LASER_STATE, "LUMO_DI.#1", enabled);
            QCOMPARE(portState(DI_LASER_STATE), enabled);
            assign(AO_LASER_POWER, "LUMO_AO_1", enabled);
            QCOMPARE(portPercent(AO_LASER_POWER), enabled ? 16384 / 32767.0 * 100 : 0.0);
        }
    }

    void output_isSwitchedOffOnlyWhereItIsOn() {
        const struct {
            I_PORT port;
            int value;
            const char* written;  // its kind of register
        } rows[] = {{DI_LASER_STATE, 1, nullptr},    {DO_GAS, 1, "bit"},
                    {DO_WIRE_PULLBACK, 1, "bit"},    {DO_GAS, 0, nullptr},
                    {AO_WIRE_SPEED, 1, "int16"},     {AO_LASER_DUTY_CYCLE, 32767, "int16"},
                    {AO_LASER_POWER, -328, "int16"}, {AO_LASER_POWER, 0, nullptr}};
        for (const auto& row : rows) {
            init();
            kordservice()->dataNode("register.values")->set(this, "OUT.#0", row.value);
            assign(row.port, row.port < AO_WIRE_SPEED ? "OUT.#0" : "OUT");
            switchOffPort(this, row.port);
            const QString record = "register.write {'bias':0,'name':'OUT','type':'%1','value':0}";
            QCOMPARE(calls_, row.written ? QStringList(record.arg(row.written)) : QStringList());
        }
    }

    void fractions_areRoundedAndKeptInTheRegister() {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        const QMap<double, int> values{{0.0, 0},       {1.0, 32767},      {0.5, 16384},       {-0.5, -16383},
                                       {0.05, 1638},   {0.07, 2294},      {3.0, 32767},       {1e300, 32767},
                                       {-3.0, -32768}, {infinity, 32767}, {-infinity, -32768}};
        for (auto value = values.begin(); value != values.end(); ++value) {
            QCOMPARE(scaledFraction(value.key()), value.value());
        }
        QCOMPARE(scaledFraction(std::nan("")), 0);
    }
};

LUMO_TEST(TestPorts)
#include "test_ports.moc"
