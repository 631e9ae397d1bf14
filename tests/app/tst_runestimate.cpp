#include "app/progress/runestimate.h"

#include <QDir>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtTest>

#include <numeric>

namespace {

QJsonArray readArray(const QString& file) {
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(in.readAll()).array();
}

app::RunStart atHome(const sim::Arm& arm) {
    app::RunStart start;
    start.stand = {arm.forward(arm.home()), arm.home()};
    return start;
}

QJsonArray parse(const char* text) {
    return QJsonDocument::fromJson(QByteArray(text).replace('\'', '"')).array();
}

qint64 total(const std::vector<app::LineEstimate>& lines) {
    return std::accumulate(lines.begin(), lines.end(), qint64(0),
                           [](qint64 sum, const app::LineEstimate& line) { return sum + line.ms; });
}

/// The whole estimate, made in parts.
std::vector<app::LineEstimate> estimate(const QJsonArray& statements, const QJsonArray& sets,
                                        const app::RunStart& start, const sim::Arm& arm) {
    app::RunEstimate made(statements, sets, start, arm);
    while (!made.advance(3)) {
    }
    return made.lines();
}

/// What the runner's trace says of a run: when each line began, and the end.
struct Measured {
    QMap<int, qint64> begins;
    qint64 endMs = -1;
};

Measured readTrace(const QByteArray& trace) {
    Measured measured;
    measured.begins[0] = 0;
    for (const QByteArray& text : trace.split('\n')) {
        const QJsonObject line = QJsonDocument::fromJson(text).object();
        if (line[QStringLiteral("path")] == QLatin1String("lumo.current.line"))
            measured.begins[line[QStringLiteral("value")].toInt()] = line[QStringLiteral("t")].toInt();
        if (line[QStringLiteral("kind")] == QLatin1String("done") &&
            line[QStringLiteral("reason")] == QLatin1String("finished"))
            measured.endMs = line[QStringLiteral("ms")].toInt();
    }
    return measured;
}

}  // namespace

/// How well the time of a run is known before.
class AppRunEstimate : public QObject {
    Q_OBJECT
private slots:
    void example_takesWhatTheRunnerMeasures_data();
    void example_takesWhatTheRunnerMeasures();
    void lines_data();
    void lines();

private:
    const sim::Arm arm_{6};
};

void AppRunEstimate::example_takesWhatTheRunnerMeasures_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<int>("line");
    QTest::addColumn<bool>("permitted");
    for (const char* name : {"lap_seam", "flange", "box_stitch"}) {
        const QString example = QString::fromLatin1(name);
        QTest::addRow("%s", name) << example << QStringList() << 1 << true;
        QTest::addRow("%s without welding", name) << example << QStringList{"--weld", "off"} << 1 << false;
        QTest::addRow("%s from line 4", name) << example << QStringList{"--line", "4"} << 4 << true;
    }
}

void AppRunEstimate::example_takesWhatTheRunnerMeasures() {
    QFETCH(QString, name);
    QFETCH(QStringList, options);
    QFETCH(int, line);
    QFETCH(bool, permitted);
    const QDir folder(QStringLiteral(LUMO_EXAMPLES "/") + name);
    const QString project = folder.filePath(name + QStringLiteral(".json"));
    QProcess runner;
    runner.start(QStringLiteral(LUMO_RUN), QStringList{project, "--trace", "-", "--quiet"} + options);
    QVERIFY(runner.waitForFinished(-1));
    const Measured measured = readTrace(runner.readAllStandardOutput());
    QVERIFY2(measured.endMs > 0, runner.readAllStandardError().constData());

    QJsonArray statements = readArray(project);
    statements.removeLast();  // the tool set
    app::RunStart start = atHome(arm_);
    start.line = line - 1;
    start.permitted = permitted;
    const auto lines =
        estimate(statements, readArray(folder.filePath(QStringLiteral("lumo_param.json"))), start, arm_);
    QVERIFY2(qAbs(total(lines) - measured.endMs) * 10 <= measured.endMs,
             qPrintable(QStringLiteral("%1 ms for %2 ms").arg(total(lines)).arg(measured.endMs)));
    for (auto begin = measured.begins.begin(); begin != measured.begins.end(); ++begin) {
        if (begin.key() < start.line)
            continue;
        const auto next = std::next(begin);
        const qint64 ms = (next == measured.begins.end() ? measured.endMs : next.value()) - begin.value();
        const qint64 estimate = lines[size_t(begin.key())].ms;
        QVERIFY2(qAbs(estimate - ms) <= qMax<qint64>(ms / 10, 60),
                 qPrintable(
                     QStringLiteral("line %1: %2 ms for %3 ms").arg(begin.key() + 1).arg(estimate).arg(ms)));
    }
}

void AppRunEstimate::lines_data() {
    QTest::addColumn<QByteArray>("program");
    QTest::addColumn<int>("from");
    QTest::addColumn<bool>("resumed");
    QTest::addColumn<QString>("times");
    const QByteArray weld = "[{'type':'open','index':0},{'type':'delay','delaytime':1500},{'type':'close'}]";
    QTest::newRow("gas, dwell and ramp") << weld << 0 << false << "220 1500 390";
    QTest::newRow("from the second line") << weld << 1 << false << "0 1500 390";
    QTest::newRow("a weld that is resumed") << weld << 1 << true << "0 1720 390";
    QTest::newRow("the set of a later line")
        << QByteArray("[{'type':'open','index':0},{'type':'param','index':1},{'type':'close'}]") << 0 << false
        << "220 0 39";
    QTest::newRow("what is not executed")
        << QByteArray("[{'type':'delay','delaytime':50,'execute':false},{'type':'delay','delaytime':'70'}]")
        << 0 << false << "0 70";
    QTest::newRow("an input") << QByteArray("[{'type':'waitDI'},{'type':'delay','delaytime':5}]") << 0
                              << false << "100? 5";
    QTest::newRow("a move that cannot be made") << QByteArray(
                                                       "[{'type':'delay','delaytime':5},{'type':'moveL','"
                                                       "speed':10,'point':{'trans':[9,9,9],'rot':[0,0,"
                                                       "0]}},{'type':'delay','delaytime':7}]")
                                                << 0 << false << "5 0 0";
    QTest::newRow("a line of 100 mm, and up again")  // 2 m/s², 100 mm/s: 50 ms more than at full speed
        << QByteArray(
               "[{'type':'moveL','speed':100,'point':{'trans':[0.5,0,0.3],'rot':[3.141592653589793,0,0]}},"
               "{'type':'delay'},{'type':'moveL','speed':50,'point':{'trans':[0.5,0,0.4],'rot':[3."
               "141592653589793,0,0]}}]")
        << 0 << false << "1050 0 2025";
}

void AppRunEstimate::lines() {
    QFETCH(QByteArray, program);
    QFETCH(int, from);
    QFETCH(bool, resumed);
    const QJsonArray sets = parse(
        "[{'delay_before_blow':200,'stay_time':20,'decrease_time':80,'close_delay':10,'delay_after_blow':300}"
        ","
        "{'delay_before_blow':9,'stay_time':9,'decrease_time':8,'close_delay':1,'delay_after_blow':30}]");
    app::RunStart start = atHome(arm_);
    start.line = from;
    start.weldOpen = resumed;
    QStringList times;
    for (const app::LineEstimate& line : estimate(parse(program.constData()), sets, start, arm_))
        times << QString::number(line.ms) + (line.waitsForInput ? QStringLiteral("?") : QString());
    QTEST(times.join(QLatin1Char(' ')), "times");
}

QTEST_GUILESS_MAIN(AppRunEstimate)
#include "tst_runestimate.moc"
