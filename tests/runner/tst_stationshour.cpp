#include "support/runnerfolder.h"
#include "runner/stationshift.h"

#include <QRegularExpression>

#include <algorithm>

/// The hour of production of examples/stations, checked from its trace alone against what its files
/// say must happen.
class StationsHour : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void endsWithTheShift();
    void pressesBecomeRuns_data();
    void pressesBecomeRuns();
    void everyPressIsAnswered();
    void runsEndAsTheScenarioSays();
    void interruptedRunsAreKnown();
    void statesComeInTheirOrder();
    void queueIsServedInOrder();
    void startOutputsComeInPairs();
    void stopOutputsStayOn();
    void heldStopPausesAgainAndAgain();
    void laserBelongsToWelds();
    void nothingIsLeftOn();
    void runsBringTheirToolSet();
    void refusalsAreTold();
    void stationRunsAreNotCounted();

private:
    struct Run {
        int row = -1;
        int begin = 0, end = 0;
        QString cause;         ///< what stopped it; empty: it came to its end
        bool welding = false;  ///< the laser emitted when it was stopped
    };

    void readRuns();
    QList<int> endsOf(int row) const;
    StationShift shift() const { return {stations_, scenario_}; }
    QList<QJsonObject> outputsOf(const QString& name) const;

    Result result_;
    QJsonArray stations_, scenario_;
    QList<Run> runs_;
};

namespace {

const QString kEnd = QStringLiteral("Untriggerd");
const QString kEmission = QStringLiteral("LUMO_DI.#5");
constexpr int kStartLookMs = 100;  // valid time of the first station
constexpr int kStopLookMs = 300;

int timeOf(const QJsonObject& line) {
    return line.value(QStringLiteral("t")).toInt();
}

QString textOf(const QJsonObject& line, const char* key) {
    return line.value(QLatin1String(key)).toString();
}

QJsonArray arrayIn(const QString& name) {
    QFile file(QStringLiteral(EXAMPLES "/stations/") + name);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).array() : QJsonArray();
}

}  // namespace

void StationsHour::initTestCase() {
    stations_ = arrayIn(QStringLiteral("lumo_signalsConfig.json"));
    scenario_ = arrayIn(QStringLiteral("scenario.json"));
    result_ = runIn(QStringLiteral(EXAMPLES), {"--stations", "stations", "--scenario",
                                               "stations/scenario.json", "--quiet", "--trace", "-"});
    QCOMPARE(stations_.size(), 5);
    QVERIFY(scenario_.size() > 500);
    QVERIFY2(!result_.trace.isEmpty(), result_.err.constData());
    readRuns();
}

/// Runs and what ended them, from the executor's state and what came before its end.
void StationsHour::readRuns() {
    bool running = false, emits = false, welding = false, operatorsHand = false;
    QString cause;
    for (const QJsonObject& line : qAsConst(result_.trace)) {
        const QString kind = textOf(line, "kind");
        const QString path = textOf(line, "path");
        const QString value = textOf(line, "value");
        const QString action = textOf(line.value(QStringLiteral("action")).toObject(), "do");
        if (kind == QLatin1String("event")) {
            operatorsHand = action == QLatin1String("pause");
        } else if (kind == QLatin1String("station")) {
            if (textOf(line, "state") == QLatin1String("Running"))
                runs_.last().row = line.value(QStringLiteral("row")).toInt();
        } else if (kind == QLatin1String("input")) {
            if (textOf(line, "name") == kEmission)
                emits = line.value(QStringLiteral("value")).toBool();
        } else if (running && cause.isEmpty() && path == QLatin1String("lumo.execute.trigger.pause")) {
            cause = operatorsHand ? QStringLiteral("operator") : QStringLiteral("stop input");
            welding = emits;
        } else if (running && cause.isEmpty() && path == QLatin1String("kord.r.power")) {
            cause = QStringLiteral("power");
            welding = emits;
        } else if (path == QLatin1String("lumo.execute.state") && value == QLatin1String("busy")) {
            runs_.append(Run{-1, timeOf(line), 0, QString(), false});
            running = true;
        } else if (path == QLatin1String("lumo.execute.state") && running) {
            runs_.last().end = timeOf(line);
            runs_.last().cause = cause;
            runs_.last().welding = welding;
            running = false;
            cause.clear();
        }
    }
}

void StationsHour::endsWithTheShift() {
    QCOMPARE(result_.status, 1);  // gas, power and operator cut runs off
    QCOMPARE(reasonOf(result_), QStringLiteral("finished"));
    // A second after the last entry, which switches the monitoring off.
    QCOMPARE(timeOf(result_.done()), 3599000);
    QCOMPARE(textOf(result_.done(), "state"), QStringLiteral("idle"));
}

// What is on the way from presses to runs: a second press during the own run (station 1), one that is
// held until the run is over and starts another (4), the drive without power (1 and 3), the damaged
// project. From runs to finished ones: the gas (1), the operator (3), the power (1), the stop input that
// is held (4).
void StationsHour::pressesBecomeRuns_data() {
    QTest::addColumn<int>("presses");
    QTest::addColumn<int>("runs");
    QTest::addColumn<int>("finished");
    QTest::newRow("Station 1") << 61 << 61 - 1 - 1 << 59 - 2;
    QTest::newRow("Station 2") << 54 << 54 << 54;
    QTest::newRow("Station 3") << 48 << 48 - 1 << 47 - 1;
    QTest::newRow("Station 4") << 46 << 46 + 1 << 47 - 1;
    QTest::newRow("Rework") << 2 << 2 - 2 << 0;
}

void StationsHour::pressesBecomeRuns() {
    QFETCH(int, presses);
    QFETCH(int, runs);
    QFETCH(int, finished);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    int row = 0;
    while (textOf(stations_[row].toObject(), "stationname") != name)
        ++row;
    QCOMPARE(shift().presses(row, kStartLookMs), presses);
    const auto mine = [row](const Run& run) { return run.row == row; };
    QCOMPARE(int(std::count_if(runs_.begin(), runs_.end(), mine)), runs);
    QCOMPARE(int(std::count_if(runs_.begin(), runs_.end(),
                               [&mine](const Run& run) { return mine(run) && run.cause.isEmpty(); })),
             finished);
}

/// When the state of a station said that it was done.
QList<int> StationsHour::endsOf(int row) const {
    QList<int> times;
    for (const QJsonObject& line : result_.of(QStringLiteral("station"))) {
        if (line.value(QStringLiteral("row")).toInt() == row && textOf(line, "state") == kEnd)
            times.append(timeOf(line));
    }
    return times;
}

/// A look that sees the input of a station that is at rest has one answer: a run, or a refusal, which
/// needs a reason in the files. What is seen until then changes nothing.
void StationsHour::everyPressIsAnswered() {
    for (int row = 0; row < stations_.size(); ++row) {
        const bool readable = !arrayIn(textOf(stations_[row].toObject(), "filePath")).isEmpty();
        const QList<int> ends = endsOf(row);
        QList<int> answered;
        int runs = 0;
        for (const int t : shift().seen(row, StationShift::Input::Start, kStartLookMs)) {
            if (!answered.isEmpty() && t <= answered.last())
                continue;
            const auto end = std::find_if(ends.begin(), ends.end(), [t](int ms) { return ms > t; });
            QVERIFY2(end != ends.end(), qPrintable(QString::number(t)));
            answered.append(*end);
            const bool ran = std::any_of(runs_.begin(), runs_.end(), [=](const Run& run) {
                return run.row == row && run.begin >= t && run.end == *end;
            });
            QCOMPARE(ran, readable && (shift().hasPowerAt(*end) || shift().hasPowerAt(t)));
            runs += ran ? 1 : 0;
        }
        QCOMPARE(answered, ends);
        QCOMPARE(
            int(std::count_if(runs_.begin(), runs_.end(), [row](const Run& run) { return run.row == row; })),
            runs);
    }
}

void StationsHour::runsEndAsTheScenarioSays() {
    for (const Run& run : qAsConst(runs_)) {
        const QString cause = shift().causeBetween(run.begin, run.end, kStopLookMs);
        QVERIFY2(run.cause == cause,
                 qPrintable(QStringLiteral("%1: %2, not %3").arg(run.end).arg(run.cause, cause)));
    }
}

void StationsHour::interruptedRunsAreKnown() {
    QStringList stopped;
    for (const Run& run : qAsConst(runs_)) {
        QVERIFY(run.row >= 0 && run.end > run.begin);
        if (!run.cause.isEmpty())
            stopped.append(
                QStringLiteral("%1 %2 %3").arg(run.row + 1).arg(run.cause, run.welding ? "welding" : "dark"));
        // Nothing begins while a stop input is held.
        QVERIFY(shift().causeBetween(run.begin - kStopLookMs + 1, run.begin, kStopLookMs) !=
                QLatin1String("stop input"));
    }
    QCOMPARE(stopped, (QStringList{"1 stop input welding", "3 operator welding", "1 power welding",
                                   "4 stop input welding"}));
}

/// Triggered, running, over; further presses may show in between, and a refusal leaves the run out.
void StationsHour::statesComeInTheirOrder() {
    for (int row = 0; row < stations_.size(); ++row) {
        QString letters;
        for (const QJsonObject& line : result_.of(QStringLiteral("station"))) {
            if (line.value(QStringLiteral("row")).toInt() == row)
                letters += textOf(line, "state").at(0);
        }
        const QRegularExpression order(QStringLiteral("^(T(RT?)?U)+$"));
        QVERIFY2(order.match(letters).hasMatch(), qPrintable(letters));
    }
}

void StationsHour::queueIsServedInOrder() {
    QList<int> queue;
    for (const QJsonObject& line : result_.of(QStringLiteral("station"))) {
        const int row = line.value(QStringLiteral("row")).toInt();
        const QString state = textOf(line, "state");
        if (state == QLatin1String("Triggered") && !queue.contains(row))
            queue.append(row);
        else if (state == QLatin1String("Running"))
            QCOMPARE(queue.first(), row);
        else if (state == kEnd)
            queue.removeAll(row);
    }
    QVERIFY(queue.isEmpty());
}

QList<QJsonObject> StationsHour::outputsOf(const QString& name) const {
    QList<QJsonObject> found;
    for (const QJsonObject& line : result_.of(QStringLiteral("output"))) {
        if (textOf(line, "name") == name)
            found.append(line);
    }
    return found;
}

/// On with the first trigger, off when the run is over or refused; both in the same millisecond as
/// the state's text.
void StationsHour::startOutputsComeInPairs() {
    for (int row = 0; row < stations_.size(); ++row) {
        QList<int> on, off, triggered, over;
        for (const QJsonObject& line :
             outputsOf(StationShift::signalOf(stations_[row].toObject(), QStringLiteral("DO"))))
            (line.value(QStringLiteral("value")).toBool() ? on : off).append(timeOf(line));
        for (const QJsonObject& line : result_.of(QStringLiteral("station"))) {
            if (line.value(QStringLiteral("row")).toInt() != row)
                continue;
            if (textOf(line, "state") == kEnd)
                over.append(timeOf(line));
            else if (triggered.size() == over.size())
                triggered.append(timeOf(line));
        }
        QVERIFY(!on.isEmpty());
        QCOMPARE(on, triggered);
        QCOMPARE(off, over);
    }
}

/// Nothing switches a stop output off again: the ones of the two stop inputs that came.
void StationsHour::stopOutputsStayOn() {
    QStringList on;
    for (const QJsonValue& station : qAsConst(stations_)) {
        for (const QJsonObject& line :
             outputsOf(StationShift::signalOf(station.toObject(), QStringLiteral("DO2"))))
            on.append(textOf(line, "name") + QLatin1Char(line.value("value").toBool() ? '+' : '-'));
    }
    QCOMPARE(on, (QStringList{"DO10+", "FIXTURE_DO.#4+"}));
}

/// A stop input is looked at every 300 ms, but for what falls into the closing that a pause waits for.
void StationsHour::heldStopPausesAgainAndAgain() {
    constexpr int kLongestClosingMs = 300 + 100 + 400;  // bushing crater: power down, close delay, gas
    constexpr int kLongestGapMs = 300 + kLongestClosingMs;
    QList<int> times{2401000};  // held from here
    for (const QJsonObject& line : result_.of(QStringLiteral("changed"))) {
        if (textOf(line, "path") == QLatin1String("lumo.execute.trigger.pause") &&
            timeOf(line) >= times.first() && timeOf(line) <= 2441000)
            times.append(timeOf(line));
    }
    times.append(2441000);  // to here
    for (int i = 1; i < times.size(); ++i)
        QVERIFY2(times[i] - times[i - 1] <= kLongestGapMs, qPrintable(QString::number(times[i])));
}

/// The laser goes on only by a weld statement of a run, and it is off when a run begins, at once when
/// the power goes, and otherwise within the ramps of a closing once the executor is idle.
void StationsHour::laserBelongsToWelds() {
    constexpr int kClosingMs = 400;
    bool enabled = false, busy = false, driveOn = true;
    int power = 0, idleSince = 0, litUp = 0;
    QString statement;
    for (const QJsonObject& line : qAsConst(result_.trace)) {
        const QString path = textOf(line, "path");
        if (path == QLatin1String("lumo.current.programtype"))
            statement = textOf(line, "value");
        if (path == QLatin1String("lumo.execute.state")) {
            busy = textOf(line, "value") == QLatin1String("busy");
            QVERIFY2(!busy || !enabled || power == 0, qPrintable(QString::number(timeOf(line))));
            idleSince = timeOf(line);
        }
        if (path == QLatin1String("kord.r.power"))
            driveOn = textOf(line, "value") == QLatin1String("on");
        const bool wasOn = enabled && power > 0;
        if (textOf(line, "name") == QLatin1String("LUMO_DO.#3"))
            enabled = line.value(QStringLiteral("value")).toBool();
        if (textOf(line, "name") == QLatin1String("LUMO_AO_1"))
            power = line.value(QStringLiteral("value")).toInt();
        const bool isOn = enabled && power > 0;
        if (isOn && !wasOn) {
            QVERIFY2(busy, qPrintable(QString::number(timeOf(line))));
            litUp += statement == QLatin1String("open") ? 1 : 0;
        }
        if (isOn && !busy)
            QVERIFY2(timeOf(line) <= idleSince + (driveOn ? kClosingMs : 0),
                     qPrintable(QString::number(timeOf(line))));
    }
    QVERIFY(!enabled);
    QVERIFY(litUp >= 57 * 2 + 54 * 3 + 46 + 46);  // the welds of the runs that came to their end
}

/// When everybody has gone home only the stop outputs are on, which nothing switches off.
void StationsHour::nothingIsLeftOn() {
    QMap<QString, QJsonValue> outputs;
    for (const QJsonObject& line : result_.of(QStringLiteral("output")))
        outputs.insert(textOf(line, "name"), line.value(QStringLiteral("value")));
    QStringList on;
    for (auto output = outputs.cbegin(); output != outputs.cend(); ++output) {
        if (output.value().toVariant().toDouble() != 0)
            on.append(output.key());
    }
    QCOMPARE(on, (QStringList{"DO10", "FIXTURE_DO.#4"}));
    QVERIFY(outputs.contains(QStringLiteral("LUMO_DO.#3")) && outputs.contains(QStringLiteral("LUMO_AO_1")));
}

/// The controller has the project's tool when a run begins, and the hand's again when it is over.
void StationsHour::runsBringTheirToolSet() {
    QHash<int, QString> toolAt;  // the last one handed over in that millisecond
    for (const QJsonObject& line : result_.of(QStringLiteral("set"))) {
        const QJsonObject end =
            line.value(QStringLiteral("value")).toObject().value(QStringLiteral("end")).toObject();
        toolAt.insert(timeOf(line), textOf(end, "name"));
    }
    for (const Run& run : qAsConst(runs_)) {
        const QJsonArray project = arrayIn(textOf(stations_[run.row].toObject(), "filePath"));
        const auto toolset = std::find_if(project.begin(), project.end(), [](const QJsonValue& element) {
            return element.toObject().contains(QStringLiteral("end"));
        });
        QVERIFY(toolset != project.end());
        const QJsonObject end = (*toolset).toObject().value(QStringLiteral("end")).toObject();
        QCOMPARE(toolAt.value(run.begin), textOf(end, "name"));
        QCOMPARE(toolAt.value(run.end), QStringLiteral("tool0"));
    }
}

void StationsHour::refusalsAreTold() {
    QStringList texts;
    for (const QJsonObject& line : result_.of(QStringLiteral("message")))
        texts.append(textOf(line, "text"));
    const QString power = QStringLiteral("The robot is power off.");
    QCOMPARE(texts, (QStringList{power, power}));
    QCOMPARE(result_.of(QStringLiteral("answer")).size(), texts.size());
    const QList<QJsonObject> files = result_.of(QStringLiteral("file"));
    QCOMPARE(files.size(), 2);
    for (const QJsonObject& file : files)
        QVERIFY(textOf(file, "name") == QLatin1String("rework.json") &&
                textOf(file, "reason").contains("line"));
}

/// The production counter is that of programs that the operator starts.
void StationsHour::stationRunsAreNotCounted() {
    for (const QJsonObject& line : result_.of(QStringLiteral("changed")))
        QVERIFY(textOf(line, "path") != QLatin1String("lumo.count"));
}

QTEST_GUILESS_MAIN(StationsHour)
#include "tst_stationshour.moc"
