#include "support/runnerfolder.h"
#include "support/suite.h"

namespace {

const QByteArray seam =
    '[' + moveL(0.5, 0.35) + ',' + openStatement + ',' + moveL(0.52, 0.35) + ',' + closeStatement + ']';

/// Times of the lines of a kind that have this name.
QList<int> timesOf(const Result& result, const QString& kind, const QString& name) {
    QList<int> times;
    for (const QJsonObject& line : result.of(kind)) {
        if (line["name"] == name) {
            times.append(line["t"].toInt());
        }
    }
    return times;
}

}  // namespace

/// Entries that wait for events, the rules of safety, random schedules, and controllers that answer late.
class RunnerStress : public QObject {
    Q_OBJECT
private slots:
    void entries_waitForTheirEvents() {
        const Folder folder;
        const Result result = folder.trace(seam, R"([
            {"at":0,"on":{"kind":"wait","name":"dwell","ms":-1,"due":true},"do":"weld","value":true},
            {"at":0,"on":{"kind":"entry","ms":11},"do":"weld","value":true},
            {"at":0,"on":{"kind":"write","name":"laser_enable","nth":1},"do":"weld","value":true},
            {"at":0,"on":{"kind":"write","name":"wire_pullback","nth":99},"do":"pause"}])");
        QCOMPARE(reasonOf(result), QString("finished"));
        const QList<int> laser = timesOf(result, "output", "LUMO_DO.#3");
        QList<int> events;
        for (const QJsonObject& line : result.of("event")) {
            events.append(line["t"].toInt());
        }
        QCOMPARE(events, (QList<int>{laser.value(0) + 99, laser.value(0) + 110, laser.value(1)}));

        const Result wrong = folder.trace(seam, R"([{"at":0,"on":{"kind":"never"},"do":"pause"}])");
        QVERIFY2(wrong.status == 2 && wrong.err.contains("\"on.kind\" is none of"), wrong.err.constData());
    }

    void rules_tellWhatWasBroken() {
        const Folder folder;
        folder.write("p.json", seam);
        folder.write("s.json", R"([{"at":0,"on":{"kind":"state","nth":1},"do":"set",
                                    "path":"lumo.current.openmiddlecolse","value":true}])");
        const Result broken = folder.run({"p.json", "--quiet", "--rules", "--scenario", "s.json"});
        QCOMPARE(broken.status, 1);
        QVERIFY2(broken.err.contains(" ms: noWeldOutlivesItsProgram: a run has come to its end and leaves"),
                 broken.err.constData());
        QCOMPARE(folder.run({"p.json", "--quiet", "--rules"}).status, 0);
    }

    /// What takes too long only in a disturbed run is found, and the scenario that is written shows it again.
    void stress_writesAScenarioOfWhatItFinds() {
        const Folder folder;
        const int longestMs = folder.trace(seam).done()["ms"].toInt() + 300;
        const QStringList limit{"--until", QString::number(longestMs)};
        const QStringList call{"--stress", "20", "--seed", "3", "p.json"};
        const Result sound = folder.run(call);
        QVERIFY2(sound.status == 0 && sound.out == "0 of 20 schedules broke a rule\n", sound.out + sound.err);
        const Result found = folder.run(call + limit);
        QVERIFY2(found.status == 1 && found.out.contains("the run does not end: until"),
                 found.out + found.err);
        QCOMPARE(folder.run(call + limit).out, found.out);
        const QStringList scenarios =
            QDir(folder.path()).entryList({"p.stress-*.scenario.json"}).filter(QRegExp("[0-9]\\.scenario"));
        QVERIFY(!scenarios.isEmpty());
        QVERIFY(test::json(folder.read(scenarios.first())).toArray().size() <= 3);
        const Result again =
            folder.run(QStringList{"p.json", "--rules", "--quiet", "--scenario", scenarios.first()} + limit);
        QVERIFY2(again.status == 1 && again.err.contains("the run does not end"), again.err.constData());
    }

    void latency_delaysResultsAndWrites() {
        const Folder folder;
        const Result soon = folder.trace(seam);
        const Result late = folder.trace(seam, "[]", {"--latency", "result=50,write=30"});
        QCOMPARE(timesOf(late, "result", "move.l").value(0), timesOf(soon, "result", "move.l").value(0) + 50);
        QCOMPARE(timesOf(late, "output", "LUMO_DO.#3").value(0),
                 timesOf(soon, "output", "LUMO_DO.#3").value(0) + 50 + 30);
        const Result begun = folder.trace(seam, "[]", {"--latency", "start=9,corner=1000"});
        QCOMPARE(timesOf(begun, "result", "move.l").value(0), timesOf(soon, "result", "move.l").value(0) + 9);
        QCOMPARE(begun.trace.first()["options"].toObject()["latency"].toString(),
                 "result=0,posture=0,write=0,start=9,corner=1000");
        QCOMPARE(folder.run({"p.json", "--latency", "write"}).status, 2);
    }
};

LUMO_TEST_ON(RunnerStress, test::onWallClock)
#include "test_stress.moc"
