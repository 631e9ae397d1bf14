#include "support/suite.h"
#include "support/vcd.h"
#include "workcell/vcdwriter.h"

#include <QProcess>

using Kind = workcell::VcdWriter::Kind;

/// Signals written as a value change dump, converted and read back by the tools of a wave viewer.
class WorkcellVcd : public QObject {
    Q_OBJECT
private slots:
    void dump_isReadByAWaveViewer() {
        workcell::VcdWriter writer;
        QString error;
        QVERIFY2(writer.open("a.vcd", &error), qPrintable(error));
        const int bit = writer.declare("LUMO_DO", "bit.#3", Kind::Wire);
        const int power = writer.declare("LUMO_AO", "LUMO_AO_1", Kind::Integer);
        QVector<int> more;
        for (int i = 0; i < 200; ++i) {
            more.append(writer.declare("LUMO_DO", QString("n%1").arg(i), Kind::Wire));
        }
        const int x = writer.declare("run", "x_mm", Kind::Real);
        writer.alias("equipment", "gas", bit);
        writer.set(x, 500, 0);
        writer.begin();
        writer.set(bit, 1, 0);
        writer.set(power, 16384, 20);
        writer.set(power, 16384, 30);
        writer.set(x, 500.125, 40);
        writer.set(power, -1, 40);
        writer.set(more[150], 1, 41);
        writer.set(bit, 0, 3600000);
        QVERIFY2(writer.close(3600001, &error), qPrintable(error));

        QCOMPARE(QProcess::execute("vcd2fst", {"a.vcd", "a.fst"}), 0);
        QCOMPARE(QProcess::execute("fst2vcd", {"-f", "a.fst", "-o", "b.vcd"}), 0);
        const auto changes = readDump("b.vcd");
        QCOMPARE(changes.size(), 204);
        QCOMPARE(changes["LUMO_DO.bit__3"].mid(changes["LUMO_DO.bit__3"].size() - 2),
                 (QStringList{"0:1", "3600000:0"}));
        QCOMPARE(changes["equipment.gas"], changes["LUMO_DO.bit__3"]);
        QCOMPARE(changes["LUMO_AO.LUMO_AO_1"], (QStringList{"0:0", "20:16384", "40:-1"}));
        QCOMPARE(changes["run.x_mm"], (QStringList{"0:500", "40:500.125"}));
        QCOMPARE(changes["LUMO_DO.n150"], (QStringList{"0:0", "41:1"}));
    }
};

LUMO_TEST(WorkcellVcd)
#include "test_vcd.moc"
