#include "runner/project.h"
#include "runner/scenario.h"

#include <QtTest>

using run::JsonText;
using run::Problem;
using run::Project;
using run::Scenario;

/// What is wrong with a project or a scenario, told with its place.
class RunnerInput : public QObject {
    Q_OBJECT
private slots:
    void badProject_data();
    void badProject();
    void toolsetIsNoStatement();
    void whatIsNoFile();
    void warnings_data();
    void warnings();
    void longProjectsAreCheckedInTime();
    void badScenario_data();
    void badScenario();
    void everyAction();
    void scenarioOrder();
};

namespace {

const QStringList kInputs = {QStringLiteral("DI3"), QStringLiteral("LUMO_DI.#2")};

std::optional<Project> project(const QByteArray& text, Problem* problem) {
    const auto json = JsonText::parse(text, QStringLiteral("p.json"), problem);
    return json ? Project::fromText(*json, problem) : std::nullopt;
}

std::optional<Scenario> scenario(const QByteArray& text, Problem* problem) {
    const auto json = JsonText::parse(text, QStringLiteral("s.json"), problem);
    return json ? Scenario::fromText(*json, kInputs, problem) : std::nullopt;
}

}  // namespace

void RunnerInput::badProject_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    QTest::newRow("empty file") << QByteArray() << "p.json:1:1: no JSON: expected a value";
    QTest::newRow("not closed") << QByteArray("[{\"type\":\"delay\"}") << "p.json:1:18: no JSON";
    QTest::newRow("broken in line 3") << QByteArray("[\n{\"type\": \"delay\"},\n  {type}]")
                                      << "p.json:3:4: no JSON: expected a key in quotes";
    QTest::newRow("no comma") << QByteArray("[1 2]") << "p.json:1:4: no JSON: expected a comma";
    QTest::newRow("no value") << QByteArray("[{\"a\":}]") << "p.json:1:7: no JSON: expected a value";
    QTest::newRow("no colon") << QByteArray("[{\"a\" 1}]") << "p.json:1:7: no JSON: expected a colon";
    QTest::newRow("half a word") << QByteArray("[1, tru]") << "p.json:1:5: no JSON: expected a value";
    QTest::newRow("leading zero") << QByteArray("[01]") << "p.json:1:3: no JSON: expected a comma";
    QTest::newRow("bare minus") << QByteArray("[-x]") << "p.json:1:3: no JSON: expected a digit";
    QTest::newRow("open string") << QByteArray("[\"ab\\")
                                 << "p.json:1:6: no JSON: expected the end of a string";
    QTest::newRow("no UTF-8") << QByteArray("[\"a\xff\"]") << "p.json:1:4: no JSON: invalid UTF8";
    QTest::newRow("out of range") << QByteArray("[1e999]") << "p.json:1:7: no JSON: illegal number";
    QTest::newRow("something behind") << QByteArray("[] x") << "p.json:1:4: no JSON";
    QTest::newRow("object") << QByteArray("\n {}") << "p.json:2:2: holds no array";
    QTest::newRow("number") << QByteArray("\n 5") << "p.json:2:2: holds no array";
    QTest::newRow("text") << QByteArray("\"x\"") << "p.json:1:1: holds no array";
    QTest::newRow("element") << QByteArray("[{\"type\":\"close\"},\n 5]")
                             << "p.json:2:2: element 2 is no object";
    QTest::newRow("no type") << QByteArray("[{\"execute\":true}]")
                             << "p.json:1:2: element 1: statement without a type";
    QTest::newRow("empty type") << QByteArray("[{\"type\":\"\"}]")
                                << "p.json:1:10: element 1: the statement's type is empty";
    QTest::newRow("type no text") << QByteArray("[{\"type\":null}]")
                                  << "p.json:1:10: element 1: the statement's type is no text";
    QTest::newRow("unknown type") << QByteArray("[{\"type\":\"movel\"}]")
                                  << "p.json:1:10: element 1: unknown statement type \"movel\"";
    QTest::newRow("second tool set") << QByteArray("[{\"end\":{}},\n{\"end\":{}}]")
                                     << "p.json:2:1: element 2: statement without a type";
}

void RunnerInput::badProject() {
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    Problem problem;
    QVERIFY(!project(text, &problem));
    QVERIFY2(problem.text().startsWith(error), qPrintable(problem.text()));
    QVERIFY(!problem.text().contains(QLatin1Char('\n')));
}

void RunnerInput::toolsetIsNoStatement() {
    Problem problem;
    const auto read =
        project("[{\"type\":\"close\"},{\"end\":{},\"ref\":{}},{\"type\":\"close\"}]", &problem);
    QVERIFY2(read, qPrintable(problem.text()));
    QCOMPARE(read->statementCount(), 2);
    QCOMPARE(project("[]", &problem)->statementCount(), 0);
}

void RunnerInput::whatIsNoFile() {
    const QTemporaryDir folder;
    Problem problem;
    QVERIFY(!Project::read(folder.filePath(QStringLiteral("x.json")), QStringLiteral("x.json"), &problem));
    QCOMPARE(problem.text(), QStringLiteral("x.json: there is no such file"));
    QVERIFY(!Project::read(folder.path(), QStringLiteral("y"), &problem));
    QCOMPARE(problem.text(), QStringLiteral("y: is a folder"));
    QVERIFY(!Project::read(QStringLiteral("/dev/zero"), QStringLiteral("z"), &problem));
    QCOMPARE(problem.text(), QStringLiteral("z: this is no plain file"));
}

void RunnerInput::warnings_data() {
    QTest::addColumn<QByteArray>("statement");
    QTest::addColumn<QString>("warning");
    const QByteArray whole =
        "\"execute\":true,\"speed\":20,\"zone\":2,\"point\":{\"trans\":[0,0,0],\"rot\":[0,0,0],\"near\":[0,0,"
        "0,0,0,0]}";
    QTest::newRow("moveJ") << "\"type\":\"moveJ\"," + whole << QString();
    QTest::newRow("moveL") << "\"type\":\"moveL\"," + whole << QString();
    QTest::newRow("moveC") << "\"type\":\"moveC\"," + whole
                           << "p.json:1:2: line 1 (moveC) lacks point1.trans, point1.rot";
    QTest::newRow("bare moveL") << QByteArray("\"type\":\"moveL\"")
                                << "p.json:1:2: line 1 (moveL) lacks point.trans, point.rot, speed, zone";
    QTest::newRow("text speed")
        << "\"type\":\"moveL\"," + QByteArray(whole).replace("20", "\"20\"")
        << "p.json:1:41: line 1 (moveL): \"speed\" is the text \"20\" where a number is usual";
    QTest::newRow("text coordinate") << "\"type\":\"moveJ\"," +
                                            QByteArray(whole).replace("[0,0,0,0,0,0]", "[0,\"1\",0]")
                                     << "\"point.near\" is the text \"1\"";
    QTest::newRow("no coordinates") << "\"type\":\"moveJ\"," +
                                           QByteArray(whole).replace("[0,0,0,0,0,0]", "[]")
                                    << "\"point.near\" is no list of coordinates";
    QTest::newRow("index") << QByteArray("\"type\":\"open\",\"execute\":true,\"index\":1,\"weldspeed\":20")
                           << QString();
    QTest::newRow("index past the end")
        << QByteArray("\"type\":\"open\",\"execute\":true,\"index\":2,\"weldspeed\":20")
        << "p.json:1:40: line 1 (open): \"index\" names no parameter set (2 of 2)";
    QTest::newRow("index negative") << QByteArray("\"type\":\"param\",\"execute\":true,\"index\":-1")
                                    << "names no parameter set (-1 of 2)";
    QTest::newRow("entries as text")
        << QByteArray(R"("type":"open","index":0,"weldspeed":"20.5","laserPower":"50","laserDutyCycle":"5")")
        << QString();
    QTest::newRow("delay of no number")
        << QByteArray(R"("type":"delay","delaytime":"soon")") << "\"delaytime\" is the text \"soon\"";
    QTest::newRow("delay of no kind")
        << QByteArray(R"("type":"delay","delaytime":true)") << "\"delaytime\" is no number";
    QTest::newRow("output by name")
        << QByteArray(
               "\"type\":\"setDO\",\"execute\":true,\"DO_type\":\"IO\",\"doName\":\"DO1\",\"value\":\"true\"")
        << QString();
    QTest::newRow("output by bit")
        << QByteArray("\"type\":\"setDO\",\"execute\":true,\"DO_type\":\"register\",\"value\":\"true\"")
        << "lacks DO_reg.name, DO_reg.type, DO_reg.bias";
    QTest::newRow("output of no kind")
        << QByteArray("\"type\":\"setDO\",\"execute\":true,\"value\":\"true\",\"doName\":\"DO1\"")
        << "lacks DO_type, DO_reg.name, DO_reg.type, DO_reg.bias";
    QTest::newRow("input of no kind")
        << QByteArray("\"type\":\"waitDI\",\"execute\":true,\"value1\":\"true\",\"diName\":\"DI1\"")
        << "lacks DI_type, DI_reg.name, DI_reg.bias";
    QTest::newRow("input") << QByteArray("\"type\":\"waitDI\",\"execute\":true,\"DI_type\":\"IO\"")
                           << "lacks diName, value1";
    QTest::newRow("close") << QByteArray("\"type\":\"close\",\"execute\":false") << QString();
}

void RunnerInput::warnings() {
    QFETCH(QByteArray, statement);
    QFETCH(QString, warning);
    Problem problem;
    const auto read = project("[{" + statement + "}]", &problem);
    QVERIFY2(read, qPrintable(problem.text()));
    const std::vector<Problem> found = read->warnings(2);
    QCOMPARE(int(found.size()), warning.isEmpty() ? 0 : 1);
    if (!warning.isEmpty())
        QVERIFY2(found.front().text().contains(warning), qPrintable(found.front().text()));
}

/// All on one line, with a warning for each statement: time that grows with the square of its
/// length would be far beyond what a test is given.
void RunnerInput::longProjectsAreCheckedInTime() {
    constexpr int kStatements = 10000;
    const QByteArray statement = "{\"type\":\"delay\",\"execute\":true,\"note\":\"" + QByteArray(10000, 'x') +
                                 "\",\"delaytime\":\"soon\"},";
    QByteArray text = '[' + statement.repeated(kStatements);
    text.back() = ']';
    Problem problem;
    const auto read = project(text, &problem);
    QVERIFY2(read, qPrintable(problem.text()));
    const std::vector<Problem> found = read->warnings(2);
    QCOMPARE(int(found.size()), kStatements);
    QCOMPARE(found.back().line, 1);
    QCOMPARE(found.back().column, 2 + (kStatements - 1) * statement.size() + statement.indexOf("\"soon\""));
}

void RunnerInput::badScenario_data() {
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    QTest::newRow("no JSON") << QByteArray("[\n{\"at\":1,}]")
                             << "s.json:2:9: no JSON: expected a key in quotes";
    QTest::newRow("no array") << QByteArray("{}") << "s.json:1:1: holds no array";
    QTest::newRow("no object") << QByteArray("[[]]") << "s.json:1:2: entry 1: is no object";
    QTest::newRow("no at") << QByteArray("[{\"do\":\"pause\"}]")
                           << "s.json:1:2: entry 1: the key \"at\" is missing";
    QTest::newRow("no do") << QByteArray("[{\"at\":0}]") << "s.json:1:2: entry 1: the key \"do\" is missing";
    QTest::newRow("at negative") << QByteArray("[{\"at\":-1,\"do\":\"pause\"}]")
                                 << "s.json:1:8: entry 1: \"at\" is no whole number from 0";
    QTest::newRow("at text") << QByteArray("[{\"at\":\"1\",\"do\":\"pause\"}]") << "s.json:1:8:";
    QTest::newRow("unknown do") << QByteArray("[{\"at\":0,\"do\":\"pause\"},\n{\"at\":0,\"do\":\"stop\"}]")
                                << "s.json:2:14: entry 2: unknown \"do\" \"stop\"";
    QTest::newRow("missing key") << QByteArray("[{\"at\":0,\"do\":\"start\"}]")
                                 << "entry 1: the key \"line0\" is missing";
    QTest::newRow("key too many") << QByteArray("[{\"at\":0,\"do\":\"pause\",\"value\":1}]")
                                  << "s.json:1:31: entry 1: \"pause\" has no key \"value\"";
    QTest::newRow("line0 text") << QByteArray("[{\"at\":0,\"do\":\"once\",\"line0\":\"1\"}]")
                                << "\"line0\" is no whole number";
    QTest::newRow("power") << QByteArray("[{\"at\":0,\"do\":\"power\",\"value\":true}]")
                           << "\"value\" is none of on, off";
    QTest::newRow("mode") << QByteArray("[{\"at\":0,\"do\":\"mode\",\"value\":\"t1\"}]")
                          << "\"value\" is none of auto, manual";
    QTest::newRow("weld") << QByteArray("[{\"at\":0,\"do\":\"weld\",\"value\":\"on\"}]")
                          << "\"value\" is neither true nor false";
    QTest::newRow("input") << QByteArray("[{\"at\":0,\"do\":\"input\",\"name\":\"DI99\",\"value\":true}]")
                           << "s.json:1:30: entry 1: \"name\" names no input";
    QTest::newRow("key") << QByteArray("[{\"at\":0,\"do\":\"key\",\"name\":\"up\",\"value\":true}]")
                         << "\"name\" is none of next, last";
    QTest::newRow("fault") << QByteArray("[{\"at\":0,\"do\":\"fault\",\"name\":\"water\",\"value\":true}]")
                           << "\"name\" is none of laser";
    QTest::newRow("quirk") << QByteArray("[{\"at\":0,\"do\":\"quirk\",\"name\":\"slow\",\"value\":true}]")
                           << "\"name\" names no quirk";
    QTest::newRow("motionError") << QByteArray("[{\"at\":0,\"do\":\"motionError\",\"code\":3}]")
                                 << "\"code\" is no negative whole number";
    const auto entry = [](const char* keys) { return QByteArray("[{\"at\":0,\"do\":") + keys + "}]"; };
    QTest::newRow("remove before the first line")
        << entry(R"("remove","line0":-1)") << "\"line0\" is no whole number from 0";
    QTest::newRow("inserted type") << entry(R"("insert","line0":0,"statement":{"type":"weld"})")
                                   << "s.json:1:54: entry 1: unknown statement type \"weld\"";
    QTest::newRow("move to nowhere") << entry(R"("move","line0":0)") << "the key \"to0\" is missing";
    QTest::newRow("place in a plane")
        << entry(R"("place","trans":[1,2])") << "\"trans\" is no list of three numbers";
    QTest::newRow("device") << entry(R"("device","name":"lock","value":true)")
                            << "\"name\" is none of laserLock";
    QTest::newRow("more than the whole") << entry(R"("device","name":"laser","value":true,"power":101)")
                                         << "s.json:1:60: entry 1: \"power\" is no number from 0 to 100";
    QTest::newRow("port without row") << entry(R"("port","enable":true)") << "the key \"row\" is missing";
    QTest::newRow("station without fields")
        << entry(R"("station","row":0,"set":[])") << "\"set\" is no object";
    QTest::newRow("field of no station") << entry(R"("station","row":0,"set":{"DI3":"DI3"})")
                                         << "s.json:1:46: entry 1: \"set.DI3\" is no field of a station";
    QTest::newRow("bit of a station") << entry(R"("station","row":0,"set":{"DI_reg":{"bias":-1}})")
                                      << "\"set.DI_reg.bias\" is no whole number from 0";
    QTest::newRow("quit with a value") << entry(R"("quit","value":true)") << "\"quit\" has no key \"value\"";
    QTest::newRow("monitor") << QByteArray("[{\"at\":0,\"do\":\"monitor\",\"value\":\"on\"}]")
                             << "s.json:1:33: entry 1: \"value\" is neither true nor false";
}

void RunnerInput::badScenario() {
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    Problem problem;
    QVERIFY(!scenario(text, &problem));
    QVERIFY2(problem.text().contains(error), qPrintable(problem.text()));
}

void RunnerInput::everyAction() {
    Problem problem;
    const auto read = scenario(
        R"([{"at":0,"do":"start","line0":-1},{"at":0,"do":"once","line0":2},{"at":0,"do":"resume"},
        {"at":0,"do":"pause"},{"at":0,"do":"power","value":"off"},{"at":0,"do":"mode","value":"manual"},
        {"at":0,"do":"weld","value":false},{"at":0,"do":"handWeld","value":true},
        {"at":0,"do":"input","name":"LUMO_DI.#2","value":true},{"at":0,"do":"set","path":"lumo.x","value":null},
        {"at":0,"do":"key","name":"delete","value":false},{"at":0,"do":"load","file":"b.json"},
        {"at":0,"do":"motionError","code":-42},{"at":0,"do":"fault","name":"gas","value":true},
        {"at":0,"do":"quirk","name":"slowState","value":true},{"at":0,"do":"remove","line0":1},
        {"at":0,"do":"insert","line0":9,"statement":{"type":"close"}},{"at":0,"do":"move","line0":1,"to0":0},
        {"at":0,"do":"enable","line0":1,"value":false},{"at":0,"do":"place","trans":[0,0,1]},
        {"at":0,"do":"place","trans":[0,0,1],"rot":[0,0,0]},{"at":0,"do":"device","name":"gas","value":true},
        {"at":0,"do":"device","name":"laser","value":true,"power":1,"frequency":0.5,"dutyCycle":100,
        "wireSpeed":0},{"at":0,"do":"port","row":18,"enable":true},{"at":0,"do":"station","row":0,
        "set":{"time":"100","DI":"","DI_type":"IO","DO2_reg":{"name":"LUMO_DO","bias":3,"type":"bit"}}},
        {"at":0,"do":"quit"}])",
        &problem);
    QVERIFY2(read, qPrintable(problem.text()));
    for (const char* quirk :
         {"bunch", "sync", "late", "double", "wrongKind", "slowState", "noResult", "failAtEnd"}) {
        const QByteArray entry =
            QByteArray("[{\"at\":0,\"do\":\"quirk\",\"value\":true,\"name\":\"") + quirk + "\"}]";
        QVERIFY2(scenario(entry, &problem), quirk);
    }
}

void RunnerInput::scenarioOrder() {
    Problem problem;
    const auto read = scenario(
        R"([{"at":300,"do":"pause"},{"at":0,"do":"resume"},{"at":300,"do":"resume"},{"do":"pause","at":20}])",
        &problem);
    QVERIFY2(read, qPrintable(problem.text()));
    QByteArrayList texts;
    for (const run::ScenarioEntry& entry : read->entries())
        texts += entry.text;
    QCOMPARE(texts, (QByteArrayList{R"({"at":0,"do":"resume"})", R"({"do":"pause","at":20})",
                                    R"({"at":300,"do":"pause"})", R"({"at":300,"do":"resume"})"}));
}

QTEST_GUILESS_MAIN(RunnerInput)
#include "tst_input.moc"
