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
        QByteArray bytes = contentOf(SOURCE_FOLDER + QString(name));
        return json(bytes.replace("\xEF\xBB\xBF", "")).toObject();
    }

private slots:
    void defaultDocumentsAndSchema_haveThePortsAsTheyAreHere() {
        for (const char* file : {"lumo", "lumo_en", "lumo_ru"}) {
            QStringList expected, found;
            for (int row = 0; row < portCount; ++row) {
                const Port& port = portInfo(I_PORT(row));
                expected << QString("%1 %2 %3").arg(port.kind, port.defaultName).arg(port.isUsedByDefault);
            }
            const QJsonArray rows =
                document(qPrintable(QString("lumo/resources/%1.json").arg(file)))["port"].toArray();
            for (const QJsonValue row : rows) {
                found << QString("%1 %2 %3")
                             .arg(row["type"].toString(), row["name"].toString())
                             .arg(row["enable"].toBool());
            }
            QCOMPARE(found, expected);
        }
        const QJsonObject schema = document("docs/schema/lumo_port.schema.json");
        const QJsonArray kinds = schema["anyOf"][1]["prefixItems"].toArray();
        QCOMPARE(kinds.size(), portCount);
        for (int row = 0; row < portCount; ++row) {
            const QString kind = kinds[row]["$ref"].toString().section('/', -1);
            QCOMPARE(schema["$defs"][kind]["properties"]["type"]["const"].toString(),
                     portInfo(I_PORT(row)).kind);
        }
    }

    /// Any kind but "IO", in whichever language, is a register.
    void signal_isWhatItsKindSays() {
        const struct {
            QByteArray record;
            QString name, address, text;
        } rows[] = {
            {"{'doName':'DO1','DO_type':'IO','DO_reg':{'name':'R','bias':2}}", "DO1", "DO1", "DO1"},
            {"{'doName':'DO1','DO_type':'register','DO_reg':{'name':'R','bias':2}}", "R", "R.#2", "R[3]"},
            {"{'doName':'DO1','DO_type':'','DO_reg':{'name':'R'}}", "R", "R.#0", "R[1]"},
            {"{'DO_type':'IO','DO_reg':{'name':'R','bias':2147483647}}", "", "", ""},
            {"{'DO_type':'IQ','DO_reg':{'name':'R','bias':2147483647}}", "R", "R.#2147483647",
             "R[2147483648]"},
        };
        for (const auto& row : rows) {
            const Signal signal = Signal::from(node(row.record).get(), setOutput);
            QCOMPARE(signal.name() + ' ' + signal.address() + ' ' + signal.text(),
                     row.name + ' ' + row.address + ' ' + row.text);
        }
        const Signal io{true, "A", "R", "bit", 1}, otherBit{true, "A", "R", "bit", 2},
            reg{false, "A", "R", "bit", 1};
        QVERIFY(io.isSameAs(otherBit) && !io.isSameAs({true, "B", "R", "bit", 1}) && !io.isSameAs(reg));
        QVERIFY(reg.isSameAs({false, "B", "R", "bool", 1}) && !reg.isSameAs({false, "A", "R", "bit", 2}));
    }

    void storedSignal_readsBack_withoutRegisterTheStoredOneStays() {
        const Signal reg{false, "DI1", "R", "bool", 7};
        Signal io = reg;
        io.isIo = true;
        const auto record = node("{}");
        reg.store(this, record.get(), awaitedInput, "Register", true);
        QVERIFY(Signal::from(record.get(), awaitedInput).isSameAs(reg));
        io.registerName = "other";
        io.store(this, record.get(), awaitedInput, "Register", false);
        QCOMPARE(text(record.get()),
                 "{'DI_reg':{'bias':7,'name':'R','type':'bool'},'DI_type':'IO','diName':'DI1'}");
    }
};

LUMO_TEST(TestSignals)
#include "test_signals.moc"
