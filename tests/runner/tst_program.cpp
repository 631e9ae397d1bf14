#include "support/runnerfolder.h"

/// The built program as its caller meets it: exit status, output, files.
class RunnerProgram : public QObject {
    Q_OBJECT
private slots:
    void badInput_data();
    void badInput();
    void filesThatFillUp_data();
    void filesThatFillUp();
    void helpVersionAndPoint();
    void traceOnStandardOutputIsClean();
    void sameInputSameBytes();
    void outcomes_data();
    void outcomes();
    void stalls_data();
    void stalls();
    void boxesAreAnsweredAfterAWhile();
    void entriesOfOneTimeComeInOnePass();
    void longScenariosAreReadInTime();
    void scenarioEntryStandsAsWritten();
    void loadReplacesTheProgram();
    void editsChangeTheProgram();
    void jogTakesTheStandingRobotAway();
    void handWorksDevicesAndPorts();
    void warningsDoNotStopTheRun();
    void commandComesBeforeWhatItDoes();
    void stepLeavesResumeDataAlone();
    void namesOutsideAscii();
    void vcdTellsTheOutputs();
    void realtimeKeepsTheTrace();
    void damagedFilesAreReported();
};

namespace {

const QByteArray kWait = R"({"type":"waitDI","execute":true,"DI_type":"IO","diName":"DI3","value1":"true"})";
const QByteArray kSetDo = R"({"type":"setDO","execute":true,"DO_type":"IO","doName":"DO2","value":"true"})";
const QByteArray kToolset = R"({"end":{"name":"torch"},"ref":{"name":"table"}})";

/// A seam of 20 mm: about 200 mm/s² short moves, one weld.
QByteArray seam() {
    return '[' + moveL(0.5, 0.35) + ",\n" + kOpen + ",\n" + moveL(0.52, 0.35) + ",\n" + kClose + ",\n" +
           kDelay + ",\n" + kToolset + ']';
}

}  // namespace

void RunnerProgram::badInput_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("nothing") << QStringList() << QByteArray("one project file");
    QTest::newRow("no file") << QStringList{"none.json"} << QByteArray("none.json: there is no such file");
    QTest::newRow("line") << QStringList{"p.json", "--line", "x"}
                          << QByteArray("--line x is no number from 1");
    QTest::newRow("trace, no folder")
        << QStringList{"p.json", "--trace", "none/t.jsonl"} << QByteArray("--trace none/t.jsonl: ");
    QTest::newRow("dump, no folder") << QStringList{"p.json", "--vcd", "none/a.vcd", "--trace", "-"}
                                     << QByteArray("--vcd none/a.vcd: ");
    QTest::newRow("type") << QStringList{"bad.json"}
                          << QByteArray("bad.json:2:11: element 2: unknown statement type");
    QTest::newRow("no scenario") << QStringList{"p.json", "--scenario", "none.json"}
                                 << QByteArray("none.json: there is no such file");
    QTest::newRow("scenario") << QStringList{"p.json", "--scenario", "bad.json"}
                              << QByteArray("bad.json:1:2: entry 1: the key \"at\"");
    QTest::newRow("trace onto the project")
        << QStringList{"p.json", "--trace", "p.json"} << QByteArray("--trace p.json would overwrite");
    QTest::newRow("trace onto a project to load")
        << QStringList{"p.json", "--scenario", "load.json", "--trace", "bad.json"}
        << QByteArray("--trace bad.json would overwrite");
    QTest::newRow("unreachable") << QStringList{"--point", "2000,0,0,180,0,0"}
                                 << QByteArray("out of the arm's reach");
}

void RunnerProgram::badInput() {
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, error);
    const Folder folder;
    folder.write(QStringLiteral("p.json"), seam());
    folder.write(QStringLiteral("bad.json"), "[{\"type\":\"close\"},\n {\"type\": \"weld\"}]");
    folder.write(QStringLiteral("load.json"), R"([{"at":1,"do":"load","file":"bad.json"}])");
    const QByteArray kept = folder.read(QStringLiteral("bad.json"));
    if (!arguments.contains(QStringLiteral("--point")) && !arguments.contains(QStringLiteral("--trace")))
        arguments += QStringList{"--trace", "t.jsonl"};
    const Result result = folder.run(arguments);
    QCOMPARE(result.status, 2);
    QCOMPARE(result.out, QByteArray());
    QCOMPARE(result.err.count('\n'), 1);
    QVERIFY2(result.err.contains(error), result.err.constData());
    QVERIFY(!folder.has(QStringLiteral("t.jsonl")));
    QCOMPARE(folder.read(QStringLiteral("p.json")), seam());
    QCOMPARE(folder.read(QStringLiteral("bad.json")), kept);
}

void RunnerProgram::filesThatFillUp_data() {
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("file");
    QTest::newRow("trace") << "--trace"
                           << "/dev/full";
    QTest::newRow("dump") << "--vcd"
                          << "/dev/full";
}

void RunnerProgram::filesThatFillUp() {
    QFETCH(QString, option);
    QFETCH(QString, file);
    const Folder folder;
    folder.write(QStringLiteral("p.json"), '[' + kDelay + ']');
    const Result result = folder.run({"p.json", "--quiet", option, file});
    QCOMPARE(result.status, 1);
    QCOMPARE(result.err.count('\n'), 1);
    QVERIFY2(result.err.startsWith("lumo-run: " + (option + ' ' + file).toUtf8() + ": "),
             result.err.constData());
}

void RunnerProgram::helpVersionAndPoint() {
    const Folder folder;
    const Result help = folder.run({"--help"});
    QCOMPARE(help.status, 0);
    QVERIFY(help.out.contains("--no-write-multi"));
    QVERIFY(folder.run({"--version"}).out.startsWith("lumo-run "));
    const Result home = folder.run({"--point", "500,0,400,180,0,0", "--axes", "7"});
    QCOMPARE(home.status, 0);
    const QJsonObject record = QJsonDocument::fromJson(home.out).object();
    QCOMPARE(record.value(QStringLiteral("trans")).toArray(), (QJsonArray{0.5, 0, 0.4}));
    QCOMPARE(record.value(QStringLiteral("near")).toArray().size(), 7);
}

void RunnerProgram::traceOnStandardOutputIsClean() {
    const Folder folder;
    folder.write(QStringLiteral("p.json"), seam());
    const Result result = folder.run({"p.json", "--trace", "-"});
    QVERIFY2(result.status == 0, result.err.constData());
    for (const QByteArray& line : result.out.chopped(1).split('\n')) {
        QVERIFY2(line.startsWith("{\"t\":"), line.constData());
        QVERIFY2(line.contains(",\"kind\":\""), line.constData());
        QVERIFY2(!QJsonDocument::fromJson(line).isNull(), line.constData());
        QVERIFY2(!line.contains(QFile::encodeName(folder.path())), line.constData());
    }
    const QJsonObject begin = result.trace.first();
    QCOMPARE(begin.value(QStringLiteral("kind")).toString(), QStringLiteral("begin"));
    QCOMPARE(begin.value(QStringLiteral("statements")).toInt(), 5);
    QCOMPARE(begin.value(QStringLiteral("sets")).toArray(), QJsonArray{"thin"});
    QCOMPARE(begin.value(QStringLiteral("ports")).toArray().size(), 19);
    QCOMPARE(begin.value(QStringLiteral("dt")).toInt(), 20);
    QCOMPARE(begin.value(QStringLiteral("options")).toObject().value(QStringLiteral("project")).toString(),
             QStringLiteral("p.json"));
    QCOMPARE(result.done().value(QStringLiteral("lines")).toInt(), 5);
    QVERIFY2(result.err.contains("duration"), result.err.constData());
}

void RunnerProgram::sameInputSameBytes() {
    const QByteArray scenario =
        R"([{"at":1200,"do":"pause"},{"at":3000,"do":"resume"},{"at":3500,"do":"weld","value":false}])";
    const Folder one, two;
    const Result first = one.trace(seam(), scenario, {"--posture"});
    const Result second = two.trace(seam(), scenario, {"--posture"});
    QVERIFY2(first.status == 0, first.err.constData());
    QVERIFY(first.of(QStringLiteral("posture")).size() > 20);
    QCOMPARE(second.out, first.out);
}

void RunnerProgram::outcomes_data() {
    QTest::addColumn<QByteArray>("scenario");
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("reason");
    const QStringList none;
    QTest::newRow("finished") << QByteArray("[]") << none << "finished";
    QTest::newRow("line past the end") << QByteArray("[]") << QStringList{"--line", "6"} << "refused";
    QTest::newRow("power off") << QByteArray("[]") << QStringList{"--power", "off"} << "refused";
    QTest::newRow("refused, then started")
        << QByteArray(R"([{"at":5,"do":"start","line0":3}])") << QStringList{"--line", "6"} << "finished";
    QTest::newRow("refused later") << QByteArray(R"([{"at":0,"do":"start","line0":0}])") << none
                                   << "finished";
    QTest::newRow("paused") << QByteArray(R"([{"at":1200,"do":"pause"}])") << none << "paused";
    QTest::newRow("paused and resumed")
        << QByteArray(R"([{"at":1200,"do":"pause"},{"at":2500,"do":"resume"}])") << none << "finished";
    QTest::newRow("power lost") << QByteArray(R"([{"at":1200,"do":"power","value":"off"}])") << none
                                << "power";
    QTest::newRow("motion error") << QByteArray(R"([{"at":1200,"do":"motionError","code":-42}])") << none
                                  << "error";
    QTest::newRow("out of time") << QByteArray("[]") << QStringList{"--until", "900"} << "until";
    QTest::newRow("single step") << QByteArray("[]") << QStringList{"--once", "1"} << "finished";
    QTest::newRow("single step that fails") << QByteArray(R"([{"at":100,"do":"motionError","code":-1}])")
                                            << QStringList{"--once", "1"} << "error";
    QTest::newRow("state written by somebody else")
        << QByteArray(R"([{"at":1200,"do":"set","path":"lumo.execute.state","value":"idle"}])") << none
        << "error";
    QTest::newRow("quit in the weld")
        << QByteArray(R"([{"at":1200,"do":"quit"},{"at":1300,"do":"resume"}])") << none << "quit";
    QTest::newRow("result that never comes")
        << QByteArray(R"([{"at":600,"do":"quirk","name":"noResult","value":true}])") << none << "stalled";
    QTest::newRow("motion that fails at its end")
        << QByteArray(R"([{"at":600,"do":"quirk","name":"failAtEnd","value":true}])") << none << "error";
    QTest::newRow("step of no move") << QByteArray("[]") << QStringList{"--once", "2"} << "refused";
}

void RunnerProgram::outcomes() {
    QFETCH(QByteArray, scenario);
    QFETCH(QStringList, options);
    QFETCH(QString, reason);
    const Folder folder;
    const Result result = folder.trace(seam(), scenario, options);
    QCOMPARE(reasonOf(result), reason);
    QCOMPARE(result.status, reason == QLatin1String("finished") ? 0 : 1);
    const QJsonObject done = result.done();
    QCOMPARE(done.value(QStringLiteral("ms")), done.value(QStringLiteral("t")));
    QCOMPARE(result.of(QStringLiteral("done")).size(), 1);
    QCOMPARE(result.of(QStringLiteral("message")).size(), result.of(QStringLiteral("answer")).size());
    if (reason == QLatin1String("until"))
        QCOMPARE(done.value(QStringLiteral("ms")).toInt(), 900);
}

void RunnerProgram::stalls_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("ms");
    QTest::newRow("nothing pending") << "1" << 0;
    QTest::newRow("a page's timer goes on") << "2" << 1000;
}

/// A run that waits for ever is told from one that waits long, and the runner leaves it.
void RunnerProgram::stalls() {
    QFETCH(QString, line);
    QFETCH(int, ms);
    const Folder folder;
    folder.write(QStringLiteral("p.json"), '[' + kDelay + ',' + kDelay + ']');
    const Result result =
        folder.run({"p.json", "--quiet", "--trace", "-", "--line", line}, QStringLiteral(STUCK_RUN));
    QCOMPARE(result.status, 1);
    QCOMPARE(reasonOf(result), QStringLiteral("stalled"));
    QCOMPARE(result.done().value(QStringLiteral("ms")).toInt(), ms);
    QCOMPARE(result.done().value(QStringLiteral("state")).toString(), QStringLiteral("busy"));
}

void RunnerProgram::boxesAreAnsweredAfterAWhile() {
    const Folder folder;
    const Result result = folder.trace(seam(), "[]", {"--line", "6", "--ack", "750"});
    QCOMPARE(result.status, 1);
    const QList<QJsonObject> messages = result.of(QStringLiteral("message"));
    const QList<QJsonObject> answers = result.of(QStringLiteral("answer"));
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].value(QStringLiteral("icon")).toString(), QStringLiteral("warning"));
    QCOMPARE(messages[0].value(QStringLiteral("title")).toString(), QStringLiteral("Running Error"));
    QCOMPARE(answers[0].value(QStringLiteral("answer")).toString(), QStringLiteral("OK"));
    QCOMPARE(answers[0].value(QStringLiteral("t")).toInt() - messages[0].value(QStringLiteral("t")).toInt(),
             750);
}

/// A start runs its program inside the write; the entries behind it come all the same.
void RunnerProgram::entriesOfOneTimeComeInOnePass() {
    const Folder folder;
    const Result result = folder.trace(
        '[' + kDelay + ',' + kDelay + ']',
        R"([{"at":2000,"do":"start","line0":0},{"at":2000,"do":"input","name":"DI3","value":true},
        {"at":2000,"do":"input","name":"DI4","value":true}])");
    QCOMPARE(reasonOf(result), QStringLiteral("finished"));
    QCOMPARE(result.done().value(QStringLiteral("ms")).toInt(), 3000);
    for (const QJsonObject& input : result.of(QStringLiteral("input")))
        QCOMPARE(input.value(QStringLiteral("t")).toInt(), 2000);
    QCOMPARE(result.of(QStringLiteral("input")).size(), 2);
}

/// Time that grows with the square of the entries would be far beyond what a run is given.
void RunnerProgram::longScenariosAreReadInTime() {
    constexpr int kEntries = 80000;
    QByteArray scenario = "[";
    for (int i = 0; i < kEntries; ++i)
        scenario += "{\"at\":" + QByteArray::number(i) + ",\"do\":\"weld\",\"value\":true},";
    scenario.back() = ']';
    const Folder folder;
    folder.write(QStringLiteral("p.json"), '[' + kDelay + ']');
    folder.write(QStringLiteral("s.json"), scenario);
    const Result result = folder.run({"p.json", "--scenario", "s.json"});
    QCOMPARE(result.status, 0);
    QVERIFY2(result.out.contains("79.999 s"), result.out.constData());
}

void RunnerProgram::scenarioEntryStandsAsWritten() {
    const Folder folder;
    const Result result =
        folder.trace('[' + kDelay + ']',
                     R"([{"value": [2, {"z": 1.0, "a": null}], "path": "lumo.x", "do": "set", "at": 7}])");
    QVERIFY2(
        result.out.contains(
            R"({"t":7,"kind":"event","action":{"value":[2,{"z":1,"a":null}],"path":"lumo.x","do":"set","at":7}})"),
        result.out.constData());
}

void RunnerProgram::loadReplacesTheProgram() {
    const Folder folder;
    folder.write(QStringLiteral("other.json"), '[' + kSetDo + ']');
    const Result result = folder.trace(
        '[' + kDelay + ']', R"([{"at":800,"do":"load","file":"other.json"},{"at":900,"do":"resume"}])");
    QCOMPARE(reasonOf(result), QStringLiteral("finished"));
    const QList<QJsonObject> outputs = result.of(QStringLiteral("output"));
    QCOMPARE(outputs.size(), 1);
    QCOMPARE(outputs[0].value(QStringLiteral("name")).toString(), QStringLiteral("DO2"));
    QCOMPARE(outputs[0].value(QStringLiteral("t")).toInt(), 900);
}

/// The run goes on as it was accepted; the next one has the lines as they stand then.
void RunnerProgram::editsChangeTheProgram() {
    const QByteArray scenario = R"([{"at":100,"do":"insert","line0":2,"statement":)" + kSetDo +
                                R"(},{"at":100,"do":"move","line0":2,"to0":0},
        {"at":100,"do":"enable","line0":1,"value":false},{"at":100,"do":"remove","line0":3},
        {"at":2000,"do":"start","line0":0}])";
    const Folder folder;
    const Result result = folder.trace('[' + kDelay + ',' + kDelay + ']', scenario);
    QVERIFY2(result.status == 0, result.err.constData());
    QCOMPARE(result.done().value(QStringLiteral("ms")).toInt(), 2500);
    QCOMPARE(result.done().value(QStringLiteral("lines")).toInt(), 4);
    QCOMPARE(result.of(QStringLiteral("output")).size(), 1);
    const QList<QJsonObject> events = result.of(QStringLiteral("event"));
    for (const QJsonObject& event : events) {
        const QString verb = event.value(QStringLiteral("action")).toObject().value("do").toString();
        QCOMPARE(event.contains(QStringLiteral("refused")), verb == QLatin1String("remove"));
    }
}

void RunnerProgram::jogTakesTheStandingRobotAway() {
    const Folder folder;
    const Result result = folder.trace(seam(), R"([{"at":100,"do":"place","trans":[0.5,0,0.4]},
        {"at":1200,"do":"pause"},{"at":3000,"do":"place","trans":[0.5,0.1,0.4],"rot":[3,0,0]}])",
                                       {"--posture"});
    QCOMPARE(reasonOf(result), QStringLiteral("paused"));
    const QList<QJsonObject> events = result.of(QStringLiteral("event"));
    QCOMPARE(events.first().value(QStringLiteral("refused")).toBool(), true);
    QVERIFY(!events.last().contains(QStringLiteral("refused")));
    QVERIFY(result.done().value(QStringLiteral("ms")).toInt() > 5000);  // more than 100 mm at 50 mm/s
    const QJsonObject last = result.of(QStringLiteral("posture")).last();
    QVERIFY(std::abs(last.value(QStringLiteral("trans"))[1].toDouble() - 0.1) < 1e-6);
    QVERIFY(std::abs(last.value(QStringLiteral("rot"))[0].toDouble() - 3) < 1e-6);
    QCOMPARE(result.of(QStringLiteral("motion")).last().value(QStringLiteral("id")).toInt(), 2);
}

/// The laser's button is pressed when the page has seen its lock; the end of the application puts it out.
void RunnerProgram::handWorksDevicesAndPorts() {
    const Folder folder;
    const Result result =
        folder.trace('[' + kDelay + ']', R"([{"at":1000,"do":"device","name":"laserLock","value":true},
        {"at":1000,"do":"device","name":"laser","value":true,"power":40,"frequency":10,"dutyCycle":100},
        {"at":1100,"do":"device","name":"gas","value":true},
        {"at":2000,"do":"device","name":"laser","value":true},{"at":2000,"do":"port","row":6,"enable":false},
        {"at":2000,"do":"port","row":19,"enable":true},{"at":3000,"do":"quit"}])");
    QVERIFY2(result.status == 0, result.err.constData());
    QCOMPARE(reasonOf(result), QStringLiteral("quit"));
    QStringList outputs;
    for (const QJsonObject& output : result.of(QStringLiteral("output")))
        outputs.append(output.value(QStringLiteral("name")).toString().section(QLatin1Char('_'), 1) +
                       QLatin1Char('=') + output.value(QStringLiteral("value")).toVariant().toString());
    QCOMPARE(outputs.mid(0, 5),
             (QStringList{"DO.#5=true", "DO.#3=true", "AO_2=3277", "AO_1=13107", "AO_3=32767"}));
    QVERIFY(outputs.contains(QStringLiteral("DO.#3=false")));
    QVERIFY2(result.err.contains("the button of \"gas\" is not enabled"), result.err.constData());
    QVERIFY2(result.err.contains("there is no row 19"), result.err.constData());
    QCOMPARE(result.of(QStringLiteral("message")).size(), 1);
    const QJsonArray ports = QJsonDocument::fromJson(folder.read(QStringLiteral("lumo_port.json"))).array();
    QCOMPARE(ports[6].toObject().value(QStringLiteral("enable")).toBool(), false);
}

void RunnerProgram::warningsDoNotStopTheRun() {
    const Folder folder;
    const Result result =
        folder.trace(R"([{"type":"delay","delaytime":"250"},{"type":"delay","execute":false}])");
    QCOMPARE(result.status, 0);
    QCOMPARE(result.done().value(QStringLiteral("ms")).toInt(), 250);
    QVERIFY2(result.err.startsWith("lumo-run: warning: p.json:1:37: line 2 (delay) lacks delaytime"),
             result.err.constData());
    QCOMPARE(result.err.count('\n'), 1);
}

void RunnerProgram::commandComesBeforeWhatItDoes() {
    const Folder folder;
    const Result result = folder.trace('[' + kSetDo + ']');
    QStringList order;
    for (const QJsonObject& line : result.trace)
        order.append(line.value(QStringLiteral("kind")).toString() + QLatin1Char(' ') +
                     line.value(QStringLiteral("path")).toString());
    const int trigger = order.indexOf(QStringLiteral("changed lumo.execute.trigger.start"));
    const int busy = order.indexOf(QStringLiteral("changed lumo.execute.state"));
    const int output = order.indexOf(QStringLiteral("output "));
    QVERIFY(trigger >= 0 && trigger < busy && busy < output);
    QCOMPARE(order[output - 1], QStringLiteral("command "));
}

void RunnerProgram::stepLeavesResumeDataAlone() {
    const Folder folder;
    const Result result = folder.trace(seam(), "[]", {"--once", "3"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.done().value(QStringLiteral("lines")).toInt(), 1);
    for (const QJsonObject& change : result.of(QStringLiteral("changed")))
        QVERIFY(change.value(QStringLiteral("path")) != QLatin1String("lumo.current.line"));
}

void RunnerProgram::namesOutsideAscii() {
    const Folder folder;
    folder.write(QStringLiteral("焊缝.json"), '[' + kDelay + ']');
    qputenv("LC_ALL", "C");
    const Result result = folder.run({QStringLiteral("焊缝.json"), "--quiet", "--trace", "-"});
    qunsetenv("LC_ALL");
    QCOMPARE(result.status, 0);
    QCOMPARE(result.trace.first()
                 .value(QStringLiteral("options"))
                 .toObject()
                 .value(QStringLiteral("project"))
                 .toString(),
             QStringLiteral("焊缝.json"));
}

void RunnerProgram::vcdTellsTheOutputs() {
    const Folder folder;
    const Result result =
        folder.trace('[' + kDelay + ',' + kSetDo + ',' + kDelay + ']', "[]", {"--vcd", "a.vcd"});
    QCOMPARE(result.status, 0);
    const QString dump = QString::fromUtf8(folder.read(QStringLiteral("a.vcd")));
    const auto variable = QRegularExpression(QStringLiteral("\\$var wire 1 (\\S+) DO2 \\$end")).match(dump);
    QVERIFY(variable.hasMatch());
    QVERIFY(dump.contains(QStringLiteral("\n#500\n")));
    QVERIFY(dump.section(QStringLiteral("\n#500\n"), 1)
                .contains(QLatin1Char('1') + variable.captured(1) + QLatin1Char('\n')));
    QVERIFY(dump.contains(QStringLiteral("\n#1000\n")));
}

void RunnerProgram::realtimeKeepsTheTrace() {
    const Folder folder;
    const QByteArray program = '[' + kDelay + ']';
    const Result fast = folder.trace(program);
    QElapsedTimer timer;
    timer.start();
    const Result paced = folder.trace(program, "[]", {"--realtime"});
    QVERIFY(timer.elapsed() >= 500);
    QCOMPARE(paced.status, 0);
    QCOMPARE(paced.out, fast.out);
}

void RunnerProgram::damagedFilesAreReported() {
    const Folder folder;
    folder.write(QStringLiteral("lumo_param.json"), "[\n{]");
    folder.write(QStringLiteral("other.json"), "[}");
    const Result result = folder.trace('[' + kDelay + ']', R"([{"at":100,"do":"load","file":"other.json"}])");
    QCOMPARE(result.status, 0);
    QVERIFY2(result.err.contains("warning: lumo_param.json:2:"), result.err.constData());
    const QList<QJsonObject> files = result.of(QStringLiteral("file"));
    QCOMPARE(files.size(), 1);
    QCOMPARE(files[0].value(QStringLiteral("name")).toString(), QStringLiteral("other.json"));
    QCOMPARE(files[0].value(QStringLiteral("t")).toInt(), 100);
}

QTEST_GUILESS_MAIN(RunnerProgram)
#include "tst_program.moc"
