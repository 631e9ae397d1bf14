#include "support/runnerfolder.h"

/// Monitoring of stations as the caller of the program meets it.
class RunnerStations : public QObject {
    Q_OBJECT
private slots:
    void badInput_data();
    void badInput();
    void triggerRunsTheProject();
    void ending_data();
    void ending();
    void tableTellsWhoRan();
    void monitorEntryWorksBesideAProject();
    void runThatWasStoppedIsNoSuccess();
    void stationIsEditedByHand_data();
    void stationIsEditedByHand();
    void damagedProjectIsToldBeforehand();
    void stationWithoutAProgramIsRefused_data();
    void stationWithoutAProgramIsRefused();
    void noStationsNoMonitoring();
    void sameBytesAgain();
    void baselineIsTheSwitchsMoment();
};

namespace {

/// A station that a rising edge of DI1, DI2, … starts.
QJsonObject station(int number, const QString& project) {
    const QString input = QStringLiteral("DI%1").arg(number);
    const QString output = QStringLiteral("DO%1").arg(number);
    return {{"stationname", QStringLiteral("Station %1").arg(number)},
            {"filePath", project},
            {"type", "Rising Edge"},
            {"type2", "Rising Edge"},
            {"time", "100"},
            {"DI", input},
            {"DI_type", "IO"},
            {"DI2", "DI16"},
            {"DI2_type", "IO"},
            {"DO", output},
            {"DO_type", "IO"},
            {"DO2", "DO16"},
            {"DO2_type", "IO"}};
}

/// Two stations; both wait half a second, the second one twice.
class Stations : public Folder {
public:
    Stations() {
        const QJsonArray two{station(1, QStringLiteral("one.json")), station(2, QStringLiteral("two.json"))};
        write(QStringLiteral("lumo_signalsConfig.json"), QJsonDocument(two).toJson());
        write(QStringLiteral("one.json"), '[' + kDelay + ']');
        write(QStringLiteral("two.json"), '[' + kDelay + ',' + kDelay + ']');
    }
    Result monitor(const QByteArray& scenario, const QStringList& more = {"--quiet"}) const {
        write(QStringLiteral("s.json"), scenario);
        return run(QStringList{"--stations", ".", "--scenario", "s.json", "--trace", "-"} + more);
    }
};

/// An input that is on for 120 ms, and off 50 ms from a full hundred.
QByteArray pulse(int number, int hundredMs) {
    const QByteArray input = ",\"do\":\"input\",\"name\":\"DI" + QByteArray::number(number) + "\",\"value\":";
    return "{\"at\":" + QByteArray::number(hundredMs - 50) + input +
           "true},{\"at\":" + QByteArray::number(hundredMs + 70) + input + "false}";
}

QStringList statesOf(const Result& result) {
    QStringList states;
    for (const QJsonObject& line : result.of(QStringLiteral("station")))
        states.append(QString::number(line.value(QStringLiteral("row")).toInt()) + QLatin1Char(' ') +
                      line.value(QStringLiteral("state")).toString());
    return states;
}

}  // namespace

void RunnerStations::badInput_data() {
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("error");
    const QByteArray name = "lumo_signalsConfig.json";
    QTest::newRow("no file") << QByteArray() << QStringList() << "./" + name + ": there is no such file";
    QTest::newRow("no JSON") << QByteArray("[\n{]") << QStringList() << "./" + name + ":2:2: no JSON";
    QTest::newRow("no list") << QByteArray("{\"a\": 1}") << QStringList()
                             << "./" + name + ":1:1: holds no array";
    QTest::newRow("no record") << QByteArray("[{}, 5]") << QStringList()
                               << "./" + name + ":1:6: element 2 is no object";
    QTest::newRow("trace onto a station's project")
        << QByteArray("[{\"filePath\":\"one.json\"}]") << QStringList{"--trace", "one.json"}
        << QByteArray("--trace one.json would overwrite");
    QTest::newRow("trace onto the stations")
        << QByteArray("[]") << QStringList{"--trace", name} << "--trace " + name + " would overwrite";
}

void RunnerStations::badInput() {
    QFETCH(QByteArray, file);
    QFETCH(QStringList, options);
    QFETCH(QByteArray, error);
    const Folder folder;
    folder.write(QStringLiteral("one.json"), "[]");
    if (!file.isEmpty())
        folder.write(QStringLiteral("lumo_signalsConfig.json"), file);
    const Result result = folder.run(QStringList{"--stations", "."} + options);
    QCOMPARE(result.status, 2);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.err.count('\n'), 1);
    QVERIFY2(result.err.startsWith("lumo-run: " + error), result.err.constData());
    QCOMPARE(folder.read(QStringLiteral("one.json")), QByteArray("[]"));
}

void RunnerStations::triggerRunsTheProject() {
    const Stations folder;
    const Result result = folder.monitor('[' + pulse(1, 1100) + ']');
    QVERIFY2(result.status == 0, result.err.constData());
    QCOMPARE(statesOf(result), (QStringList{"0 Triggered", "0 Running", "0 Untriggerd"}));
    QList<int> times;
    for (const QJsonObject& line : result.of(QStringLiteral("station")))
        times.append(line.value(QStringLiteral("t")).toInt());
    // Sampled every 100 ms, served every 200 ms from the moment the switch was pressed.
    QCOMPARE(times, (QList<int>{1100, 1200, 1700}));
    QVERIFY(result.out.contains(R"({"t":1100,"kind":"output","name":"DO1","value":true})"));
    QVERIFY(result.out.contains(R"({"t":1700,"kind":"output","name":"DO1","value":false})"));
    const QJsonObject options = result.trace.first().value(QStringLiteral("options")).toObject();
    QCOMPARE(options.value(QStringLiteral("stations")).toString(), QFileInfo(folder.path()).fileName());
    QVERIFY(!options.contains(QStringLiteral("project")) && !options.contains(QStringLiteral("line")));
}

void RunnerStations::ending_data() {
    QTest::addColumn<QByteArray>("scenario");
    QTest::addColumn<QString>("reason");
    QTest::addColumn<int>("ms");
    QTest::newRow("a second after the last entry") << '[' + pulse(1, 1100) + ']' << "finished" << 2170;
    QTest::newRow("a second without entries") << QByteArray("[]") << "refused" << 1000;
    QTest::newRow("when the queue is empty")
        << '[' + pulse(1, 1100) + ',' + pulse(2, 1100) + ']' << "finished" << 2800;
    QTest::newRow("switched off in a run")
        << '[' + pulse(2, 1100) + R"(,{"at":1500,"do":"monitor","value":false}])"
        << "finished" << 2500;
    // The run of station 1 ends at 1700; what is queued is given up a second later.
    QTest::newRow("switched off with a queue")
        << '[' + pulse(1, 1100) + ',' + pulse(2, 1100) + R"(,{"at":1300,"do":"monitor","value":false}])"
        << "stalled" << 2700;
    QTest::newRow("switched off with a queue and on again")
        << '[' + pulse(1, 1100) + ',' + pulse(2, 1100) +
               R"(,{"at":1300,"do":"monitor","value":false},{"at":9000,"do":"monitor","value":true}])"
        << "finished" << 10200;
    // It starts the project again and again, until a run ends late enough.
    QTest::newRow("input that stays")
        << QByteArray(R"([{"at":50,"do":"input","name":"DI1","value":true}])") << "finished" << 1500;
    QTest::newRow("out of time") << '[' + pulse(1, 1100) + ']' << "until" << 1400;
}

void RunnerStations::ending() {
    QFETCH(QByteArray, scenario);
    QFETCH(QString, reason);
    QFETCH(int, ms);
    const Stations folder;
    const Result result = folder.monitor(
        scenario, {"--quiet", "--until", QString::number(reason == QLatin1String("until") ? ms : 30000)});
    QCOMPARE(reasonOf(result), reason);
    QCOMPARE(result.done().value(QStringLiteral("ms")).toInt(), ms);
    QCOMPARE(result.status, reason == QLatin1String("finished") ? 0 : 1);
}

void RunnerStations::tableTellsWhoRan() {
    const Stations folder;
    const Result result =
        folder.monitor('[' + pulse(1, 1100) + ',' + pulse(2, 3100) + ',' + pulse(2, 6100) +
                           R"(,{"at":6500,"do":"pause"},{"at":8000,"do":"input","name":"DI9","value":true}])",
                       {});
    QCOMPARE(reasonOf(result), QStringLiteral("paused"));
    const QString table = QString::fromUtf8(result.err).simplified();
    QVERIFY2(table.contains(QStringLiteral("Station 1 one.json 1 1 0.500 s")), qPrintable(table));
    QVERIFY2(table.contains(QStringLiteral("Station 2 two.json 2 1 1.300 s")), qPrintable(table));
}

/// The page is opened and its switch pressed by a scenario, while a project runs.
void RunnerStations::monitorEntryWorksBesideAProject() {
    const Stations folder;
    folder.write(QStringLiteral("p.json"), '[' + kDelay + ',' + kDelay + ',' + kDelay + ']');
    folder.write(QStringLiteral("s.json"), R"([{"at":100,"do":"monitor","value":true},)" + pulse(1, 600) +
                                               R"(,{"at":3000,"do":"monitor","value":false}])");
    const Result result = folder.run({"p.json", "--scenario", "s.json", "--quiet", "--trace", "-"});
    QVERIFY2(result.status == 0, result.err.constData());
    QCOMPARE(statesOf(result), (QStringList{"0 Triggered", "0 Running", "0 Untriggerd"}));
    QCOMPARE(result.done().value(QStringLiteral("lines")).toInt(), 4);
}

/// Though the last run came to its end.
void RunnerStations::runThatWasStoppedIsNoSuccess() {
    const Result result =
        Stations().monitor('[' + pulse(1, 1100) + R"(,{"at":1500,"do":"pause"},)" + pulse(2, 3100) + ']');
    QCOMPARE(reasonOf(result), QStringLiteral("finished"));
    QCOMPARE(result.status, 1);
}

void RunnerStations::stationIsEditedByHand_data() {
    QTest::addColumn<QByteArray>("set");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("input and project")
        << QByteArray(R"("DI":"DI5","filePath":"two.json","time":50)") << QByteArray();
    QTest::newRow("kind and edge in another language")
        << QByteArray(R"("DI_type":"IO","DI":"DI5","DI2_type":"Register","filePath":"two.json",)"
                      R"("DI2_reg":{"name":"LUMO_DI","bias":9},"type":"上升沿")")
        << QByteArray();
    QTest::newRow("input that is not offered")
        << QByteArray(R"("filePath":"two.json","DI":"DI99")") << QByteArray("station row 0: cmbDI \"DI99\"");
    QTest::newRow("name that is fixed")
        << QByteArray(R"("DI":"DI5","stationname":"A")") << QByteArray("the name \"Station 1\" is fixed");
}

/// What cannot be chosen leaves the whole station as it was.
void RunnerStations::stationIsEditedByHand() {
    QFETCH(QByteArray, set);
    QFETCH(QByteArray, error);
    const Stations folder;
    const Result result = folder.monitor(R"([{"at":100,"do":"station","row":0,"set":{)" + set + "}}," +
                                         pulse(error.isEmpty() ? 5 : 1, 1500) + ']');
    QVERIFY2(result.err.contains(error), result.err.constData());
    QCOMPARE(result.status, error.isEmpty() ? 0 : 1);
    QCOMPARE(statesOf(result), (QStringList{"0 Triggered", "0 Running", "0 Untriggerd"}));
    QCOMPARE(result.done().value(QStringLiteral("lines")).toInt(), error.isEmpty() ? 2 : 1);
}

void RunnerStations::damagedProjectIsToldBeforehand() {
    const Stations folder;
    folder.write(QStringLiteral("one.json"), "[\n{\"type\":");
    const Result result = folder.monitor("[]");
    QVERIFY2(result.err.startsWith("lumo-run: warning: one.json:2:"), result.err.constData());
    QVERIFY(result.of(QStringLiteral("file")).isEmpty());
}

void RunnerStations::stationWithoutAProgramIsRefused_data() {
    QTest::addColumn<QString>("project");
    QTest::addColumn<QByteArray>("warning");
    QTest::addColumn<int>("messages");
    QTest::newRow("missing") << "gone.json" << QByteArray("gone.json: there is no such file") << 0;
    QTest::newRow("no program in it") << "none.json" << QByteArray() << 1;
    QTest::newRow("none bound") << "" << QByteArray() << 0;  // the entry is dropped in silence
}

/// It asks, its output is on until it is its turn; nothing runs, and the next one gets the robot.
void RunnerStations::stationWithoutAProgramIsRefused() {
    QFETCH(QString, project);
    QFETCH(QByteArray, warning);
    QFETCH(int, messages);
    const Stations folder;
    folder.write(QStringLiteral("none.json"), "[]");
    const QJsonArray two{station(1, project), station(2, QStringLiteral("two.json"))};
    folder.write(QStringLiteral("lumo_signalsConfig.json"), QJsonDocument(two).toJson());
    const Result result = folder.monitor('[' + pulse(1, 1100) + ',' + pulse(2, 2100) + ']');
    QCOMPARE(statesOf(result),
             (QStringList{"0 Triggered", "0 Untriggerd", "1 Triggered", "1 Running", "1 Untriggerd"}));
    QVERIFY(result.out.contains(R"("kind":"output","name":"DO1","value":true})"));
    QVERIFY(result.out.contains(R"("kind":"output","name":"DO1","value":false})"));
    QCOMPARE(result.of(QStringLiteral("message")).size(), messages);
    QCOMPARE(result.of(QStringLiteral("file")).size(), warning.isEmpty() ? 0 : 1);
    QCOMPARE(result.status, 0);
    QVERIFY2(
        warning.isEmpty() ? result.err.isEmpty() : result.err.startsWith("lumo-run: warning: " + warning),
        result.err.constData());
}

void RunnerStations::noStationsNoMonitoring() {
    const Stations folder;
    folder.write(QStringLiteral("lumo_signalsConfig.json"), "{}");
    const Result result = folder.monitor('[' + pulse(1, 1100) + ']');
    QCOMPARE(reasonOf(result), QStringLiteral("refused"));
    QCOMPARE(result.done().value(QStringLiteral("ms")).toInt(), 2170);
    QCOMPARE(result.err, QByteArray());
}

void RunnerStations::sameBytesAgain() {
    const Stations folder;
    const QByteArray scenario = '[' + pulse(1, 1100) + ',' + pulse(2, 1100) + ',' + pulse(1, 3100) + ']';
    const QByteArray first = folder.monitor(scenario).out;
    QVERIFY(first.contains("\"Running\""));
    QCOMPARE(folder.monitor(scenario).out, first);
}

/// Entries of time 0 come after the switch: what is on then is an edge. Off and on again takes it
/// as it stands.
void RunnerStations::baselineIsTheSwitchsMoment() {
    const QByteArray on = R"({"at":0,"do":"input","name":"DI1","value":true})";
    const Stations folder;
    const Result edge = folder.monitor('[' + on + R"(,{"at":150,"do":"input","name":"DI1","value":false}])");
    QCOMPARE(statesOf(edge), (QStringList{"0 Triggered", "0 Running", "0 Untriggerd"}));
    const Result level = folder.monitor(R"([{"at":0,"do":"monitor","value":false},)" + on +
                                        R"(,{"at":10,"do":"monitor","value":true}])");
    QCOMPARE(statesOf(level), QStringList());
    QCOMPARE(reasonOf(level), QStringLiteral("refused"));
}

QTEST_GUILESS_MAIN(RunnerStations)
#include "tst_stations.moc"
