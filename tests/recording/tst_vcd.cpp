#include "recording/vcdwriter.h"

#include <QtTest>

using rec::VcdWriter;
using Kind = rec::VcdWriter::Kind;

/// Signals written as a value change dump, converted and read back by the tools of a wave viewer.
class RecordingVcd : public QObject {
    Q_OBJECT
private slots:
    void roundTrip();
};

namespace {

/// Changes by signal name, read from a dump: "time:value".
QMap<QString, QStringList> readDump(const QString& file) {
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly))
        return {};
    QHash<QString, QStringList> names;
    QMap<QString, QStringList> changes;
    QString time, scope;
    for (const QString& line : QString::fromUtf8(in.readAll()).split(QLatin1Char('\n'))) {
        const QStringList words = line.simplified().split(QLatin1Char(' '));
        if (words.first() == QLatin1String("$scope"))
            scope = words[2];
        else if (words.first() == QLatin1String("$var"))
            names[words[3]].append(scope + QLatin1Char('.') + words[4]);
        else if (line.startsWith(QLatin1Char('#')))
            time = line.mid(1);
        else if (line.contains(QRegularExpression(QStringLiteral("^[01br]"))) && !names.isEmpty()) {
            const bool vector = words.size() > 1;
            const QString code = vector ? words[1] : line.mid(1);
            QString value = vector ? words[0].mid(1) : line.left(1);
            if (line.startsWith(QLatin1Char('b')))
                value = QString::number(qint32(value.toUInt(nullptr, 2)));
            for (const QString& name : names.value(code))
                changes[name].append(time + QLatin1Char(':') + value);
        }
    }
    return changes;
}

int convert(const QString& tool, const QStringList& arguments) {
    return QProcess::execute(tool, arguments);
}

}  // namespace

void RecordingVcd::roundTrip() {
    if (QStandardPaths::findExecutable(QStringLiteral("vcd2fst")).isEmpty())
        QSKIP("vcd2fst is not installed");
    const QTemporaryDir folder;
    const QString vcd = folder.filePath(QStringLiteral("a.vcd"));
    const QString fst = folder.filePath(QStringLiteral("a.fst"));
    const QString back = folder.filePath(QStringLiteral("b.vcd"));

    VcdWriter writer;
    QString error;
    QVERIFY2(writer.open(vcd, &error), qPrintable(error));
    const int bit = writer.declare(QStringLiteral("LUMO_DO"), QStringLiteral("bit.#3"), Kind::Wire);
    const int power = writer.declare(QStringLiteral("LUMO_AO"), QStringLiteral("LUMO_AO_1"), Kind::Integer);
    QVector<int> more;
    for (int i = 0; i < 200; ++i)
        more.append(writer.declare(QStringLiteral("LUMO_DO"), QStringLiteral("n%1").arg(i), Kind::Wire));
    const int x = writer.declare(QStringLiteral("run"), QStringLiteral("x_mm"), Kind::Real);
    writer.alias(QStringLiteral("equipment"), QStringLiteral("gas"), bit);
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

    QCOMPARE(convert(QStringLiteral("vcd2fst"), {vcd, fst}), 0);
    QCOMPARE(convert(QStringLiteral("fst2vcd"), {QStringLiteral("-f"), fst, QStringLiteral("-o"), back}), 0);
    const auto changes = readDump(back);
    QCOMPARE(changes.size(), 204);
    const QStringList bitChanges = {QStringLiteral("0:1"), QStringLiteral("3600000:0")};
    QCOMPARE(
        changes[QStringLiteral("LUMO_DO.bit__3")].mid(changes[QStringLiteral("LUMO_DO.bit__3")].size() - 2),
        bitChanges);
    QCOMPARE(changes[QStringLiteral("equipment.gas")], changes[QStringLiteral("LUMO_DO.bit__3")]);
    QCOMPARE(changes[QStringLiteral("LUMO_AO.LUMO_AO_1")],
             (QStringList{QStringLiteral("0:0"), QStringLiteral("20:16384"), QStringLiteral("40:-1")}));
    QCOMPARE(changes[QStringLiteral("run.x_mm")],
             (QStringList{QStringLiteral("0:500"), QStringLiteral("40:500.125")}));
    QCOMPARE(changes[QStringLiteral("LUMO_DO.n150")],
             (QStringList{QStringLiteral("0:0"), QStringLiteral("41:1")}));
}

QTEST_GUILESS_MAIN(RecordingVcd)
#include "tst_vcd.moc"
