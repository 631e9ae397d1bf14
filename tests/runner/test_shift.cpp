#include "support/runnerfolder.h"
#include "support/suite.h"

#include <QRegularExpression>

namespace {

QString textOf(const QJsonObject& line, const char* key) {
    return line[QLatin1String(key)].toString();
}

}  // namespace

/// The hour of production of examples/stations, by its trace: five stations, a gas fault, a held stop input,
/// a loss of power, an operator who stops, a damaged project.
class StationsShift : public QObject {
    Q_OBJECT

    Result result_;

private slots:
    void initTestCase() {
        result_ = runIn(EXAMPLES, {"--stations", "stations", "--scenario", "stations/scenario.json",
                                   "--quiet", "--trace", "-"});
        QCOMPARE(result_.status, 1);  // gas, power and operator cut runs off
        QCOMPARE(reasonOf(result_), "finished");
        QCOMPARE(result_.done()["t"].toInt(), 3599000);  // a second after the last entry
    }

    /// Counted from the scenario: a press during the station's own run starts nothing, a held one starts
    /// again; without power and with a damaged project nothing runs, with a message each time.
    void presses_startRuns_andStopsEndThem() {
        QVector<int> runs(5), cut(5);
        int row = -1;
        bool running = false, isCut = false;
        for (const QJsonObject& line : qAsConst(result_.trace)) {
            const QString path = textOf(line, "path");
            if (textOf(line, "kind") == "station" && textOf(line, "state") == "Running") {
                row = line["row"].toInt();
            }
            isCut |= running && (path == "lumo.execute.trigger.pause" || path == "kord.r.power");
            if (path != "lumo.execute.state") {
                continue;
            }
            if (running) {
                ++runs[row];
                cut[row] += isCut ? 1 : 0;
            }
            running = textOf(line, "value") == "busy";
            isCut = false;
        }
        QCOMPARE(runs, (QVector<int>{59, 54, 47, 47, 0}));
        QCOMPARE(cut, (QVector<int>{2, 0, 1, 1, 0}));
        QCOMPARE(result_.of("message").size(), 2);
        QCOMPARE(result_.of("answer").size(), 2);
        QCOMPARE(result_.of("file").size(), 2);
    }

    /// First come, first served; the states and the output of each station follow the queue.
    void queue_isServedInOrder_withItsOutputs() {
        QList<int> queue;
        QStringList letters{"", "", "", "", ""};
        const QStringList outputs{"DO1", "FIXTURE_DO.#0", "DO3", "FIXTURE_DO.#1", "DO5"};
        QMap<QString, QList<int>> due, seen;
        for (const QJsonObject& line : qAsConst(result_.trace)) {
            const int row = line["row"].toInt(), t = line["t"].toInt();
            const QString state = textOf(line, "state");
            if (textOf(line, "kind") == "output") {
                seen[textOf(line, "name")] << t;
            } else if (textOf(line, "kind") == "station") {
                letters[row] += state.at(0);
                if (state == "Running") {
                    QCOMPARE(queue.first(), row);
                }
                if (state == "Untriggerd" || (state == "Triggered" && !queue.contains(row))) {
                    due[outputs[row]] << t;
                }
                if (state == "Untriggerd") {
                    queue.removeAll(row);
                } else if (state == "Triggered" && !queue.contains(row)) {
                    queue << row;
                }
            }
        }
        QVERIFY(queue.isEmpty());
        for (const QString& states : letters) {
            QVERIFY2(QRegularExpression("^(T(RT?)?U)+$").match(states).hasMatch(), qPrintable(states));
        }
        for (const QString& output : outputs) {
            QVERIFY2(!due[output].isEmpty() && seen[output] == due[output], qPrintable(output));
        }
    }

    /// The laser is off within a closing's ramp after a run, at once after a loss of power. At the end only
    /// the two stop outputs are on.
    void laser_isOnInWeldsOnly() {
        constexpr int longestRampMs = 400;
        bool busy = false, enabled = false, wasOn = false, powered = true;
        int power = 0, idleSince = 0, seams = 0;
        QSet<QString> left;
        for (const QJsonObject& line : qAsConst(result_.trace)) {
            const QString path = textOf(line, "path"), name = textOf(line, "name");
            if (path == "lumo.execute.state") {
                busy = textOf(line, "value") == "busy";
                idleSince = line["t"].toInt();
            }
            powered = path == "kord.r.power" ? textOf(line, "value") == "on" : powered;
            if (textOf(line, "kind") != "output") {
                continue;
            }
            left.remove(name);
            if (line["value"].toVariant().toDouble() != 0) {
                left << name;
            }
            enabled = name == "LUMO_DO.#3" ? line["value"].toBool() : enabled;
            power = name == "LUMO_AO_1" ? line["value"].toInt() : power;
            const bool on = enabled && power > 0;
            seams += on && !wasOn ? 1 : 0;
            QVERIFY2(!on || busy || line["t"].toInt() <= idleSince + (powered ? longestRampMs : 0),
                     qPrintable(QString::number(line["t"].toInt())));
            QVERIFY(wasOn || !on || busy);
            wasOn = on;
        }
        QVERIFY2(seams >= 57 * 2 + 54 * 3 + 46 + 46, qPrintable(QString::number(seams)));
        QCOMPARE(left, (QSet<QString>{"DO10", "FIXTURE_DO.#4"}));
    }
};

LUMO_TEST_ON(StationsShift, test::onWallClock)
#include "test_shift.moc"
