#include "devices/ports.h"
#include "support/suite.h"
#include "support/text.h"

#include <cmath>
#include <limits>

using namespace test;

/// Logical ports: what is written to which register, what is read, and what a port out of use does.
class TestPorts : public QObject {
    Q_OBJECT

    static void assign(int port, const QString& name, const QVariant& enable = true) {
        m("lumo.port")->c(port)->set(nullptr, "name", name)->set(nullptr, "enable", enable);
    }

private slots:
    void init() {
        const QByteArray ports = "{'port':[{}" + QByteArray(",{}").repeated(18) + "]}";
        m()->regist(this, "lumo")->loadJson(this, json(ports));
    }

    /// At once, or in the order of a batch; nothing where the port is out of use.
    void writes_goToTheRegisterThatIsAssigned() {
        QStringList calls;
        connect(kordservice(), &KordService::issued, this, [this, &calls](const KordCall& call) {
            calls << call.name + ' ' + text(call.node) + (call.sender == this ? "" : " of another");
        });
        const struct {
            I_PORT port;
            const char* name;
            double value;
            const char* record;
        } rows[] = {
            {DO_GAS, "LUMO_DO.#3", 1, "{'bias':3,'name':'LUMO_DO','type':'bit','value':1}"},
            {DO_GAS, "LUMO_DO.#15", 0, "{'bias':15,'name':'LUMO_DO','type':'bit','value':0}"},
            {DO_GAS, "A.b.#7", 1, "{'bias':7,'name':'A','type':'bit','value':1}"},
            {DO_GAS, "DO2_2", 1, "{'bias':0,'name':'DO2_2','type':'bit','value':1}"},
            {AO_LASER_POWER, "LUMO_AO_1", 0.5, "{'bias':0,'name':'LUMO_AO_1','type':'int16','value':16384}"},
            {AO_LASER_POWER, "AO.#4", 1, "{'bias':0,'name':'AO.#4','type':'int16','value':32767}"},
        };
        ModuleObject batch;
        QStringList records;
        for (const auto& row : rows) {
            const auto write = [this, &row](ModuleObject* into) {
                return row.port < AO_WIRE_SPEED ? setPortDO(this, row.port, row.value != 0.0, into)
                                                : setPortAO(this, row.port, row.value, into);
            };
            for (const QVariant& unused : {QVariant(false), QVariant("perhaps"), QVariant()}) {
                assign(row.port, row.name, unused);
                QVERIFY(!write(nullptr) && !write(&batch) && !portEnabled(row.port));
            }
            assign(row.port, row.name);
            QVERIFY(write(nullptr) && write(&batch));
            records << row.record;
            QCOMPARE(calls.last(), "register.write " + records.last());
        }
        QCOMPARE(text(&batch), "[" + records.join(',') + "]");
        QCOMPARE(calls.size(), records.size());
        m("lumo.port")->loadJson(this, QJsonArray());
        QVERIFY(!setPortDO(this, DO_GAS, true) && !setPortAO(this, AO_LASER_POWER, 1.0));
    }

    void whatCannotBeRead_isOff() {
        ModuleObject* const registers = kordservice()->dataNode("register.values");
        registers->set(this, "DI.#0", false)->set(this, "DI.#1", true)->set(this, "AO.#0", 16384);
        for (const char* const name : {"DI.#0", "DI.#9", "NONE.#1", ""}) {
            assign(DI_LASER_STATE, name);
            assign(AO_LASER_POWER, name);
            QVERIFY2(!portState(DI_LASER_STATE) && portPercent(AO_LASER_POWER) == 0.0, name);
        }
        for (const bool enabled : {true, false}) {
            assign(DI_LASER_STATE, "DI.#1", enabled);
            assign(AO_LASER_POWER, "AO", enabled);
            QCOMPARE(portState(DI_LASER_STATE), enabled);
            QCOMPARE(portPercent(AO_LASER_POWER), enabled ? 16384 / 32767.0 * 100 : 0.0);
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
