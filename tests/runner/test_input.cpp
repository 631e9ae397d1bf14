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

/// A text with ' for ", and the expected problem.
struct Case {
    QByteArray text;
    const char* says;
};

std::optional<Project> project(const QByteArray& text, Problem* problem) {
    const auto json = InputArray::parse(quoted(text), "p.json", problem);
    return json ? Project::fromText(*json, problem) : std::nullopt;
}

std::optional<Scenario> scenario(const QByteArray& text, Problem* problem) {
    const auto json = InputArray::parse(quoted(text), "s.json", problem);
    return json ? Scenario::fromText(*json, {"DI3", "LUMO_DI.#2"}, problem) : std::nullopt;
}

template <typename Read>
void refuses(const std::vector<Case>& cases, Read read) {
    for (const Case& bad : cases) {
        Problem problem;
        QVERIFY2(!read(bad.text, &problem), bad.text.constData());
        QVERIFY2(problem.text().contains(bad.says) && !problem.text().contains('\n'),
                 qPrintable(problem.text()));
    }
}

}  // namespace

/// Faults of projects and scenarios, with their places.
class RunnerInput : public QObject {
    Q_OBJECT
private slots:
    void brokenProject_givesAProblemWithItsPlace() {
        refuses({{"[\n{'type': 'delay'},\n  {type}]", "p.json:3:4: no JSON: expected a key in quotes"},
                 {"\n {}", "p.json:2:2: holds no array"},
                 {"[{'type':'close'},\n 5]", "p.json:2:2: element 2 is no object"},
                 {"[{'execute':true}]", "p.json:1:2: element 1: statement without a type"},
                 {"[{'type':''}]", "p.json:1:10: element 1: the statement's type is empty"},
                 {"[{'type':null}]", "p.json:1:10: element 1: the statement's type is no text"},
                 {"[{'type':'movel'}]", "p.json:1:10: element 1: unknown statement type \"movel\""},
                 {"[{'end':{}},\n{'end':{}}]", "p.json:2:1: element 2: statement without a type"}},
                project);
        Problem problem;
        QCOMPARE(project("[{'type':'close'},{'end':{},'ref':{}}]", &problem)->statementCount(), 1);
        for (const char* file : {"none.json", "/dev/zero", "."}) {
            QVERIFY2(!Project::read(file, file, &problem) && problem.text().startsWith(file), file);
        }
    }

    void brokenScenario_givesAProblemWithItsPlace() {
        const auto entry = [](const char* keys) { return QByteArray("[{'at':0,'do':") + keys + "}]"; };
        refuses(
            {{"[[]]", "s.json:1:2: entry 1: is no object"},
             {"[{'do':'pause'}]", "s.json:1:2: entry 1: the key \"at\" is missing"},
             {"[{'at':-1,'do':'pause'}]", "s.json:1:8: entry 1: \"at\" is no whole number from 0"},
             {"[{'at':0,'do':'pause'},\n{'at':0,'do':'stop'}]",
              "s.json:2:14: entry 2: unknown \"do\" \"stop\""},
             {entry("'pause','value':1"), "s.json:1:31: entry 1: \"pause\" has no key \"value\""},
             {entry("'power','value':true"), "\"value\" is none of on, off"},
             {entry("'weld','value':'on'"), "\"value\" is neither true nor false"},
             {entry("'input','name':'DI99','value':true"), "s.json:1:30: entry 1: \"name\" names no input"},
             {entry("'quirk','name':'slow','value':true"), "\"name\" names no quirk"},
             {entry("'motionError','code':3"), "\"code\" is no negative whole number"},
             {entry("'remove','line0':-1"), "\"line0\" is no whole number from 0"},
             {entry("'insert','line0':0,'statement':{'type':'weld'}"),
              "s.json:1:54: entry 1: unknown statement"},
             {entry("'move','line0':0"), "the key \"to0\" is missing"},
             {entry("'place','trans':[1,2]"), "\"trans\" is no list of three numbers"},
             {entry("'device','name':'laser','value':true,'power':101"),
              "\"power\" is no number from 0 to 100"},
             {entry("'station','row':0,'set':{'DI3':'DI3'}"), "\"set.DI3\" is no field of a station"},
             {entry("'station','row':0,'set':{'DI_reg':{'bias':-1}}"),
              "\"set.DI_reg.bias\" is no whole number"}},
            scenario);
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
            const Problem found = *path ? text->problemAt(element, path, "x") : text->problemAt(element, "x");
            QCOMPARE(found.text(), QString(place));
        }
        QCOMPARE(text->compact(2), QByteArray("{\"a\":\"\xF0\x9F\x94\xA5\",\"a\":2}"));
    }
};

LUMO_TEST_ON(RunnerInput, test::onWallClock)
#include "test_input.moc"
