#include "json/jsonwriter.h"
#include "mendo/moduleobject.h"
#include "runner/project.h"
#include "runner/scenario.h"
#include "support/suite.h"
#include "support/text.h"

#include <limits>

using mendo::JsonWriter;
using run::InputArray;
using run::Problem;
using run::Project;
using run::Scenario;
using test::quoted;

namespace {

/// What is wrong with a scenario, each with its place; ' stands for ".
QStringList faultsOf(const QByteArray& scenario) {
    Problem problem;
    const auto text = InputArray::parse(quoted(scenario), "s.json", &problem);
    if (!text) {
        return {problem.text()};
    }
    QStringList faults;
    const Scenario read = Scenario::fromText(*text, {"DI3", "LUMO_DI.#2"}, ".");
    for (const prog::Finding& finding : read.findings()) {
        faults << text->problemAt(finding.element, finding.path, prog::englishText(finding)).text();
    }
    return faults;
}

}  // namespace

/// Faults of projects and scenarios, with their places.
class RunnerInput : public QObject {
    Q_OBJECT
private slots:
    void unreadableProject_givesAProblemWithItsPlace() {
        const std::pair<const char*, const char*> cases[] = {
            {"[\n{'type': 'delay'},\n  {type}]", "p.json:3:4: no JSON: expected a key in quotes"},
            {"\n {}", "p.json:2:2: holds no array"}};
        Problem problem;
        for (const auto& [text, says] : cases) {
            QVERIFY(!InputArray::parse(quoted(text), "p.json", &problem));
            QCOMPARE(problem.text(), QString(says));
        }
        const Project project(*InputArray::parse(
            quoted("[{'type':'close'},{'end':{},'ref':{}},\n{'type':'movel'}]"), "p.json", &problem));
        QCOMPARE(project.statementCount(), 2);
        QCOMPARE(project.structureFault()->text(), "p.json:2:9: element 3: unknown statement type \"movel\"");
        for (const char* file : {"none.json", "/dev/zero", "."}) {
            QVERIFY2(!Project::read(file, file, &problem) && problem.text().startsWith(file), file);
        }
    }

    void brokenScenario_tellsEachFaultWithItsPlace() {
        const auto entry = [](const char* keys) { return QByteArray("[{'at':0,'do':") + keys + "}]"; };
        const std::pair<QByteArray, const char*> cases[] = {
            {"[[]]", "s.json:1:2: this is no record"},
            {"[{'do':'pause'}]", "s.json:1:2: the key \"at\" is missing"},
            {"[{'at':-1,'do':'pause'}]", "s.json:1:8: \"at\" is no whole number from 0"},
            {"[{'at':9223372036854775808,'do':'pause'}]",
             "s.json:1:8: \"at\" is too large: at most 9223372036854775807"},
            {"[{'at':0,'do':'pause'},\n{'at':0,'do':'stop'}]", "s.json:2:14: unknown \"do\" \"stop\""},
            {entry("'pause','value':1"), "s.json:1:31: \"pause\" has no key \"value\""},
            {entry("'power','value':true,'x':1"),
             "s.json:1:31: \"value\" is none of on, off|s.json:1:40: \"power\" has no key \"x\""},
            {entry("'weld','value':'on'"), "s.json:1:30: \"value\" is neither true nor false"},
            {entry("'input','name':'DI99','value':1"),
             "s.json:1:30: \"name\" names no input|s.json:1:45: \"value\" is neither true nor false"},
            {entry("'quirk','name':'slow','value':true"), "s.json:1:30: \"name\" names no quirk"},
            {entry("'motionError','code':3"), "s.json:1:36: \"code\" is no negative whole number"},
            {entry("'remove','line0':-1"), "s.json:1:32: \"line0\" is no whole number from 0"},
            {entry("'insert','line0':0,'statement':{'type':'weld'}"),
             "s.json:1:54: unknown statement type \"weld\""},
            {entry("'move','line0':0"), "s.json:1:2: the key \"to0\" is missing"},
            {entry("'place','trans':[1,2]"), "s.json:1:31: \"trans\" is no list of three numbers"},
            {entry("'device','name':'laser','value':true,'power':101"),
             "s.json:1:60: \"power\" is no number from 0 to 100"},
            {entry("'station','row':0,'set':{'DI3':'DI3','DI_reg':{'bias':-1}}"),
             "s.json:1:46: \"set.DI3\" is no field of a station|"
             "s.json:1:69: \"set.DI_reg.bias\" is no whole number from 0"},
            {entry("'load','file':'none.json'"), "s.json:1:29: there is no file none.json"}};
        for (const auto& [text, says] : cases) {
            QCOMPARE(faultsOf(text).join('|'), QString(says));
        }
    }

    void traceLine_isOneLineOfJsonInAFixedOrder() {
        for (const QString& text :
             {QString("a \"b\" \\ c"), QString("a\tb\nc\rd\x01"), QString("未选中🔥")}) {
            const QByteArray line = JsonWriter().beginArray().string(text).endArray().take();
            QVERIFY(!line.contains('\n'));
            QCOMPARE(QJsonDocument::fromJson(line).array().first().toString(), text);
        }
        const double infinite = std::numeric_limits<double>::infinity();
        JsonWriter numbers;
        numbers.beginArray();
        for (const double number :
             {0., 16384., 1e6, -42., 0.1, 0.1 + 0.2, double(0.1F), 1e-9, 1e300, infinite}) {
            numbers.number(number);
        }
        QCOMPARE(numbers.endArray().take(),
                 "[0,16384,1000000,-42,0.1,0.30000000000000004,0.10000000149011612,1e-09,1e+300,null]");
        mendo::ModuleObject node;
        node.set(nullptr, "traj.speed", 0.02)->set(nullptr, "point.#0", 1)->set(nullptr, "name", false);
        QCOMPARE(JsonWriter().node(&node).take(), quoted("{'traj':{'speed':0.02},'point':[1],'name':false}"));
    }

    /// Columns count characters; the second entry of a name is the one that is read.
    void place_isThatOfTheEntry() {
        const QByteArray file =
            "\xEF\xBB\xBF[{\"a\": \"}]\\\"\",\n \"b\" : [{}, 1.50]},\n\n {\"\\u0061]\": \"ö\","
            "\"p\": {\"q\":1E2}},\n{\"a\":\"\xF0\x9F\x94\xA5\", \"a\":2}]";
        Problem problem;
        const auto text = InputArray::parse(file, "f", &problem);
        QVERIFY2(text, qPrintable(problem.text()));
        const std::tuple<int, const char*, const char*> places[] = {
            {1, "", "f:4:2: x"},    {0, "b", "f:2:8: x"},      {1, "p.q", "f:4:28: x"},
            {1, "a]", "f:4:14: x"}, {1, "p.r.s", "f:4:23: x"}, {2, "a", "f:5:15: x"}};
        for (const auto& [element, path, place] : places) {
            QCOMPARE(text->problemAt(element, path, "x").text(), QString(place));
        }
        QCOMPARE(text->duplicates().size(), 1U);
        QCOMPARE(text->duplicates()[0].path, "a");
        QCOMPARE(text->duplicates()[0].place.column, 15);
        QCOMPARE(text->compact(2), QByteArray("{\"a\":\"\xF0\x9F\x94\xA5\",\"a\":2}"));
    }
};

LUMO_TEST_ON(RunnerInput, test::onWallClock)
#include "test_input.moc"
