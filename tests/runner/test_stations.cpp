#include "support/runnerfolder.h"
#include "support/suite.h"

#include <QRegularExpression>

namespace {

/// A station that is started by a rising edge of DI1, DI2, …
QJsonObject station(int number, const QString& project) {
    return {{"stationname", QString("Station %1").arg(number)},
            {"filePath", project},
            {"type", "Rising Edge"},
            {"time", "100"},
            {"DI", QString("DI%1").arg(number)},
            {"DI_type", "IO"},
            {"DO", QString("DO%1").arg(number)},
            {"DO_type", "IO"}};
}

/// Two stations: the project of the first waits half a second, that of the second a whole one.
class Stations : public Folder {
public:
    explicit Stations(const QString& first = "one.json") {
        const QJsonArray two{station(1, first), station(2, "two.json")};
        write("lumo_signalsConfig.json", QJsonDocument(two).toJson());
        write("one.json", '[' + delayStatement + ']');
        write("two.json", '[' + delayStatement + ',' + delayStatement + ']');
    }
    Result monitor(const QByteArray& scenario, const QStringList& more = {"--quiet"}) const {
        write("s.json", scenario);
        return run(QStringList{"--stations", ".", "--scenario", "s.json", "--trace", "-"} + more);
    }
};

/// An input that is on for 120 ms, and off 50 ms from a full hundred.
QByteArray pulse(int number, int hundredMs) {
    const QByteArray input = ",\"do\":\"input\",\"name\":\"DI" + QByteArray::number(number) + "\",\"value\":";
    return "{\"at\":" + QByteArray::number(hundredMs - 50) + input +
           "true},{\"at\":" + QByteArray::number(hundredMs + 70) + input + "false}";
}

/// "0 Triggered", "0 Running" …
QStringList statesOf(const Result& result) {
    QStringList states;
    for (const QJsonObject& line : result.of("station")) {
        states << QString("%1 %2").arg(line["row"].toInt()).arg(line["state"].toString());
    }
    return states;
}

const QStringList oneRun{"0 Triggered", "0 Running", "0 Untriggerd"};
const QByteArray bothPulses = pulse(1, 1100) + ',' + pulse(2, 1100);

}  // namespace

/// The built program with --stations.
class RunnerStations : public QObject {
    Q_OBJECT
private slots:
    void badStationsFile_endsBeforeAnythingRuns() {
        const QByteArray name = "lumo_signalsConfig.json";
        const std::tuple<QByteArray, QStringList, QByteArray> cases[] = {
            {"", {}, name + ": there is no such file"},
            {"[{}, 5]", {}, name + ":1:6: error: [field] station 2: this is no record"},
            {"[{\"filePath\":\"one.json\"}]", {"--trace", "one.json"}, "--trace one.json would overwrite"},
            {"[]", {"--trace", name}, "--trace " + name + " would overwrite"}};
        for (const auto& [file, options, error] : cases) {
            const Folder folder;
            folder.write("one.json", "[]");
            if (!file.isEmpty()) {
                folder.write(name, file);
            }
            const Result result = folder.run(QStringList{"--stations", "."} + options);
            QVERIFY2(result.status == 2 && result.out.isEmpty(), file.constData());
            QVERIFY2(result.err.contains("lumo-run: " + error), result.err.constData());
            QCOMPARE(folder.read("one.json"), QByteArray("[]"));
        }
    }

    void press_runsTheProjectWithItsOutputOn() {
        const Stations folder;
        const Result result = folder.monitor('[' + pulse(1, 1100) + ']');
        QVERIFY2(result.status == 0, result.err.constData());
        // Sampled every 100 ms, served every 200 ms from the moment the switch was pressed.
        QCOMPARE(statesOf(result), oneRun);
        QCOMPARE(result.of("station")[1]["t"].toInt(), 1200);
        QVERIFY(result.out.contains(R"({"t":1100,"kind":"output","name":"DO1","value":true})"));
        QVERIFY(result.out.contains(R"({"t":1700,"kind":"output","name":"DO1","value":false})"));
        const QJsonObject options = result.trace.first()["options"].toObject();
        QCOMPARE(options["stations"].toString(), QFileInfo(folder.path()).fileName());
    }

    void monitoring_endsWhenNothingIsLeftToDo() {
        const QByteArray off = R"(,{"at":1300,"do":"monitor","value":false})";
        const std::tuple<QByteArray, QString, int> shifts[] = {
            {pulse(1, 1100), "finished", 2170},  // a second after the last entry
            {"", "refused", 1000},
            {bothPulses, "finished", 2800},  // when the queue is empty
            // The run of station 1 ends at 1700; what is queued is given up a second later.
            {bothPulses + off, "stalled", 2700},
            {bothPulses + off + R"(,{"at":9000,"do":"monitor","value":true})", "finished", 10200},
            // The project starts again and again until the end of a run.
            {R"({"at":50,"do":"input","name":"DI1","value":true})", "finished", 1500},
            {pulse(1, 1100), "until", 1400}};
        for (const auto& [scenario, reason, ms] : shifts) {
            const QString until = QString::number(reason == "until" ? ms : 30000);
            const Result result = Stations().monitor('[' + scenario + ']', {"--quiet", "--until", until});
            QCOMPARE(reasonOf(result), reason);
            QCOMPARE(result.done()["ms"].toInt(), ms);
            QCOMPARE(result.status, reason == "finished" ? 0 : 1);
        }
    }

    /// Even when the last run finished.
    void stoppedRun_givesStatus1_andTheTableOfStations() {
        const Result result = Stations().monitor('[' + pulse(1, 1100) + ',' + pulse(2, 3100) +
                                                     R"(,{"at":3500,"do":"pause"},)" + pulse(2, 6100) + ']',
                                                 {});
        QCOMPARE(reasonOf(result), "finished");
        QCOMPARE(result.status, 1);
        const QString table = QString::fromUtf8(result.err).simplified();
        QVERIFY2(table.contains("Station 1 one.json 1 1 0.500 s"), qPrintable(table));
        QVERIFY2(table.contains("Station 2 two.json 2 1 1.300 s"), qPrintable(table));
    }

    void monitoring_canBeSwitchedByAScenarioDuringARun() {
        const Stations folder;
        folder.write("p.json", '[' + delayStatement + ',' + delayStatement + ',' + delayStatement + ']');
        folder.write("s.json", R"([{"at":100,"do":"monitor","value":true},)" + pulse(1, 600) +
                                   R"(,{"at":3000,"do":"monitor","value":false}])");
        const Result result = folder.run({"p.json", "--scenario", "s.json", "--quiet", "--trace", "-"});
        QVERIFY2(result.status == 0, result.err.constData());
        QCOMPARE(statesOf(result), oneRun);
        QCOMPARE(result.done()["lines"].toInt(), 4);
    }

    void editedStation_isSavedWholeOrNotAtAll() {
        const std::pair<QByteArray, QByteArray> edits[] = {
            {R"("DI":"DI5","filePath":"two.json","time":50)", ""},
            {R"("DI_type":"IO","DI":"DI5","DI2_type":"Register","filePath":"two.json",)"
             R"("DI2_reg":{"name":"LUMO_DI","bias":9},"type":"上升沿")",
             ""},
            {R"("filePath":"two.json","DI":"DI99")", "station row 0: cmbDI \"DI99\""},
            {R"("DI":"DI5","stationname":"A")", "the name \"Station 1\" is fixed"}};
        for (const auto& [set, error] : edits) {
            const Result result = Stations().monitor(R"([{"at":100,"do":"station","row":0,"set":{)" + set +
                                                     "}}," + pulse(error.isEmpty() ? 5 : 1, 1500) + ']');
            QVERIFY2(result.err.contains(error), result.err.constData());
            QCOMPARE(result.status, error.isEmpty() ? 0 : 1);
            QCOMPARE(statesOf(result), oneRun);
            QCOMPARE(result.done()["lines"].toInt(), error.isEmpty() ? 2 : 1);
        }
    }

    /// Its output is on while it is queued; then the next station is served.
    void stationWithoutAProgram_isSkipped() {
        const std::tuple<QString, QByteArray, int, int> projects[] = {
            {"gone.json", "error: [station] station 1 \"Station 1\": the project gone.json is missing", 0, 1},
            {"damaged.json", "the project damaged.json cannot be read: line 2: no JSON", 0, 1},
            {"none.json", "", 1, 0},  // no program in it
            {"", "warning: [station] station 1 \"Station 1\": the station has no project", 0, 0}};
        for (const auto& [project, said, messages, status] : projects) {
            const Stations folder(project);
            folder.write("none.json", "[]");
            folder.write("damaged.json", "[\n{\"type\":");
            const Result result = folder.monitor('[' + pulse(1, 1100) + ',' + pulse(2, 2100) + ']');
            QCOMPARE(statesOf(result), (QStringList{"0 Triggered", "0 Untriggerd", "1 Triggered", "1 Running",
                                                    "1 Untriggerd"}));
            QVERIFY(result.out.contains(R"("kind":"output","name":"DO1","value":true})"));
            QVERIFY(result.out.contains(R"("kind":"output","name":"DO1","value":false})"));
            QCOMPARE(result.of("message").size(), messages);
            QCOMPARE(result.of("file").size(), status);
            QCOMPARE(result.status, status);
            QVERIFY2(result.err.contains(said) && result.err.isEmpty() == said.isEmpty(), result.err);
        }
    }

    /// Entries of time 0 are applied after monitoring was switched on.
    void inputThatIsOnBeforeMonitoring_startsNothing() {
        const QByteArray on = R"({"at":0,"do":"input","name":"DI1","value":true})";
        const Stations folder;
        const Result edge =
            folder.monitor('[' + on + R"(,{"at":150,"do":"input","name":"DI1","value":false}])");
        QCOMPARE(statesOf(edge), oneRun);
        const Result level = folder.monitor(R"([{"at":0,"do":"monitor","value":false},)" + on +
                                            R"(,{"at":10,"do":"monitor","value":true}])");
        QCOMPARE(statesOf(level), QStringList());
        QCOMPARE(reasonOf(level), "refused");
        folder.write("lumo_signalsConfig.json", "{}");
        QCOMPARE(reasonOf(folder.monitor('[' + pulse(1, 1100) + ']')), "refused");
    }
};

LUMO_TEST_ON(RunnerStations, test::onWallClock)
#include "test_stations.moc"
