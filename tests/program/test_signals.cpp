#include "program/ports.h"
#include "program/signal.h"
#include "support/suite.h"
#include "support/text.h"

using namespace prog;
using namespace test;

/// Ports and signals as values.
class TestSignals : public QObject {
    Q_OBJECT

    static QJsonObject document(const char* name) {
        return json(contentOf(SOURCE_FOLDER + QString(name)).replace("\xEF\xBB\xBF", "")).toObject();
    }

private slots:
    void defaultDocument_hasThePortsOfTheTable() {
        const QJsonArray defaults = document("lumo/resources/lumo.json")["port"].toArray();
        QCOMPARE(defaults.size(), portCount);
        for (int row = 0; row < portCount; ++row) {
            const Port& port = portInfo(I_PORT(row));
            const QJsonValue made = defaults[row];
            QVERIFY2(made["type"] == port.kind && made["name"] == port.defaultName, port.word.data());
            QCOMPARE(made["enable"].toBool(), port.isUsedByDefault);
        }
    }

    /// Any kind but "IO", in any language, is a register.
    void signal_isWhatItsKindSays() {
        const QStringList rows[] = {
            {"'doName':'DO1','DO_type':'IO','DO_reg':{'name':'R','bias':2}", "DO1 DO1 DO1"},
            {"'doName':'DO1','DO_type':'register','DO_reg':{'name':'R','bias':2}", "R R.#2 R[3]"},
            {"'doName':'DO1','DO_type':'','DO_reg':{'name':'R'}", "R R.#0 R[1]"},
            {"'DO_type':'IO','DO_reg':{'name':'R'}", "  "},
            {"'DO_type':'io','DO_reg':{'name':'R','bias':2147483647}", "R R.#2147483647 R[2147483648]"}};
        for (const QStringList& row : rows) {
            const Signal signal = Signal::from(node('{' + row[0].toUtf8() + '}').get(), setOutput);
            QCOMPARE(signal.name() + ' ' + signal.address() + ' ' + signal.text(), row[1]);
        }
        const Signal io{true, "A", "R", "bit", 1}, reg{false, "A", "R", "bit", 1};
        QVERIFY(io.isSameAs({true, "A", "R", "bit", 2}) && !io.isSameAs({true, "B", "R", "bit", 1}));
        QVERIFY(reg.isSameAs({false, "B", "R", "", 1}) && !reg.isSameAs({false, "A", "R", "bit", 2}));
        QVERIFY(!io.isSameAs({false, "R", "A", "bit", 1}));
    }
};

LUMO_TEST(TestSignals)
#include "test_signals.moc"
