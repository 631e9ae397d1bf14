#include "devices/ports.h"
#include "support/suite.h"
#include "support/text.h"

#include <cmath>
#include <limits>

using namespace test;

/// Logical ports: what is written to which register, what is read, and what a port out of use does.
class TestPorts : public QObject {
    Q_OBJECT

private slots:
    /// At once, or in the order of a batch; nothing where the port is out of use.
    void writes_goToTheRegisterThatIsAssigned() {
        m()->regist(this, "lumo")
            ->loadJson(this, json("{'port':[{}" + QByteArray(",{}").repeated(18) + "]}"));
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
            ModuleObject* const port = m("lumo.port")->c(row.port)->set(this, "name", row.name);
            for (const QVariant& unused : {QVariant(), QVariant(false), QVariant("perhaps")}) {
                port->set(this, "enable", unused);
                QVERIFY(!write(nullptr) && !write(&batch) && !portEnabled(row.port));
            }
            port->set(this, "enable", true);
            QVERIFY(write(nullptr) && write(&batch));
            records << row.record;
            QCOMPARE(calls.last(), "register.write " + records.last());
        }
        QCOMPARE(text(&batch), "[" + records.join(',') + "]");
        QCOMPARE(calls.size(), records.size());
    }

    void fractions_areRoundedAndKeptInTheRegister() {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        const QMap<double, int> values{{1.0, 32767}, {0.5, 16384},   {-0.5, -16383},    {0.07, 2294},
                                       {3.0, 32767}, {-3.0, -32768}, {infinity, 32767}, {-infinity, -32768}};
        for (auto value = values.begin(); value != values.end(); ++value) {
            QCOMPARE(scaledFraction(value.key()), value.value());
        }
        QCOMPARE(scaledFraction(std::nan("")), 0);
    }
};

LUMO_TEST(TestPorts)
#include "test_ports.moc"
