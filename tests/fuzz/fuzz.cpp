#include "fuzz/fuzz.h"

#include "app/preferences.h"
#include "bridge/linuxcnc/progress.h"
#include "bridge/modbus/modbusplan.h"
#include "editor/statementtext.h"
#include "editor/storedstate.h"
#include "equipment/ports.h"
#include "equipment/signalio.h"
#include "executor/laser.h"
#include "files/projectfile.h"
#include "files/settingsfile.h"
#include "flight/posturerecord.h"
#include "json/jsonwriter.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "program/runprogram.h"
#include "program/words.h"
#include "runner/project.h"
#include "runner/replay/script.h"
#include "runner/scenario.h"
#include "runner/treeoperator.h"
#include "stations/station.h"
#include "workcell/workcell.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QJsonDocument>

#include <map>

namespace {

bool isSavedToo(const QByteArray& input) {
    return qHash(input, 0) % fuzz::shareSaved == 0;
}

void require(bool holds, const char* what) {
    if (!holds) {
        qFatal("does not hold: %s", what);
    }
}

/// Writes a file to the current folder.
void write(const QString& name, const QByteArray& content) {
    QFile file(name);
    require(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(content) == content.size(),
            "an input file can be written");
}

/// Uses values, so that reading them is not optimised away.
template <typename... Values>
void use(const Values&...) {}

/// A value as the tree stores it: integers with the digits of a double, names as in Qt's variants.
QByteArray textOf(const QJsonValue& value) {
    return mendo::JsonWriter().json(QJsonValue::fromVariant(value.toVariant())).take();
}

// Project files: read, shown, compared with their program and saved by the package, and checked by the
// runner.

const QString fileName = "project.json";

void show() {
    const prog::RunProgram program(m(prog::key::program));
    for (int line = 0; line < program.lineCount(); ++line) {
        const ModuleObject* const statement = m(prog::key::program)->c(line);
        use(type2cn(statement->c(prog::field::type)->getString()), lumo::statementDetails(statement));
        use(program.circleFaultAt(line), program.openBefore(line), program.targetBefore(line));
    }
}

/// False when reading the saved project again would take another record for the tool set.
bool isUnambiguous(const lumo::Project& project) {
    const lumo::Project again = lumo::projectFrom(project.statements).value_or(lumo::Project());
    return again.toolset.isEmpty() && again.statements == project.statements;
}

/// Not compared when saving may change the file: for a name with a byte-order mark, which Qt drops, and for a
/// tool set, whose older form has empty objects.
void compareWithFile(const QByteArray& input, const lumo::Project& project) {
    static lumo::StoredState state;
    state.setProjectPath(fileName);
    state.check();
    if (project.toolset.isEmpty() && !input.contains("\xef\xbb\xbf") &&
        !input.toLower().contains("\\ufeff")) {
        const QJsonArray tree = m(prog::key::program)->exportToJson().toArray();
        require(
            state.isStored() == (QJsonDocument(project.statements).toJson() == QJsonDocument(tree).toJson()),
            "a project that was just read is what its file holds");
    }
}

void saveAndReadAgain(bool throughFile) {
    const QJsonValue saved = lumo::projectDocument();
    require(!throughFile || lumo::saveProject(fileName), "a project that was read can be saved");
    const auto again = throughFile ? lumo::readProject(fileName) : lumo::projectFrom(saved);
    require(again.has_value(), "what was saved is a project");
    lumo::loadProject(nullptr, *again);
    require(textOf(lumo::projectDocument()) == textOf(saved), "a saved project is read as it was");
}

void check(const QByteArray& input) {
    static run::TreeOperator tree;
    run::Problem problem;
    const std::optional<run::InputArray> text = run::InputArray::parse(input, fileName, &problem);
    if (!text) {
        require(!problem.reason.isEmpty() && problem.place.line > 0, "what is wrong is told with its line");
        return;
    }
    const run::Project project(*text);
    const QJsonValue sets = QJsonArray{QJsonObject(), QJsonObject()};
    for (const prog::Finding& finding : prog::checkProgram(*text, sets, QJsonValue(), prog::CellFacts())) {
        use(prog::englishText(finding), text->place(finding.element, finding.path));
    }
    use(text->duplicates());
    if (!project.structureFault()) {
        tree.loadProject(project.content());
    }
}

void project(const QByteArray& input) {
    static const QJsonValue noTools = m(prog::key::toolset)->exportToJson();
    write(fileName, input);
    if (const std::optional<lumo::Project> project = lumo::readProject(fileName)) {
        lumo::loadProject(nullptr, *project);
        require(textOf(m(prog::key::program)->exportToJson()) == textOf(project->statements),
                "the program holds what the file holds");
        show();
        compareWithFile(input, *project);
        if (isUnambiguous(*project)) {
            saveAndReadAgain(isSavedToo(input));
        }
    }
    check(input);
    m(prog::key::program)->loadJson(nullptr, QJsonArray());
    m(prog::key::toolset)->loadJson(nullptr, noTools);
}

// Settings files: read, used as the package uses them, saved and read again; preferences; scenarios.

/// Restores the content of the list afterwards.
void readSettings(lumo::Settings list, QLatin1String path, const QByteArray& input,
                  void (*look)(const ModuleObject* records)) {
    const QJsonValue usual = m(path)->exportToJson();
    write(lumo::settingsFile(list), input);
    lumo::loadSettings(nullptr, list);
    if (QJsonDocument::fromJson(input).isNull() && !input.startsWith("\xEF\xBB\xBF")) {
        return;  // it changes nothing
    }
    look(m(path));
    if (isSavedToo(input)) {
        const QJsonValue held = m(path)->exportToJson();
        require(lumo::saveSettings(list), "settings that were read can be saved");
        lumo::loadSettings(nullptr, list);
        require(textOf(m(path)->exportToJson()) == textOf(held), "saved settings are read as they were");
    }
    m(path)->loadJson(nullptr, usual);
}

void plan(const ModuleObject* sets) {
    for (int index = 0; index < sets->size(); ++index) {
        const prog::LaserParams params = prog::LaserParams::from(sets->c(index));
        const int dtMs = lumo::rampStepMs();
        use(prog::openingPlan(params, dtMs), prog::closingPlan(params, dtMs, prog::Closing::Awaited));
        ModuleObject number;
        number.setValue(nullptr, index);
        use(index2cn(&number), laserPower2cn(&number), laserDutyCycle2cn(&number));
    }
}

void drive(const ModuleObject* rows) {
    for (int row = 0; row < rows->size(); ++row) {
        const auto port = static_cast<I_PORT>(row);
        use(portEnabled(port), portState(port), portPercent(port));
        setPortDO(nullptr, port, true);
        setPortAO(nullptr, port, 0.5);
        switchOffPort(nullptr, port);
    }
}

void sample(const ModuleObject* stations) {
    using lumo::StationSignal;
    for (const ModuleObject* station : stations->cmobjs()) {
        const prog::Signal input = lumo::readSignal(station, StationSignal::StopInput);
        use(lumo::kindText(StationSignal::StopInput, input), lumo::signalText(input));
        use(lumo::edgeText(station, StationSignal::StopInput), lumo::signalLevel(nullptr, input));
        lumo::switchOutput(nullptr, lumo::readSignal(station, StationSignal::StopOutput), true);
        use(lumo::samplePeriodMs(station->c(prog::field::time)->getString()));
    }
}

void params(const QByteArray& input) {
    readSettings(lumo::Settings::Params, prog::key::param, input, plan);
}

void ports(const QByteArray& input) {
    readSettings(lumo::Settings::Ports, prog::key::port, input, drive);
    write("cell.json", input);
    mendo::FileProblem problem;
    use(workcell::readWiring("cell.json", &problem));
}

void stations(const QByteArray& input) {
    readSettings(lumo::Settings::Stations, prog::key::signalsConfig, input, sample);
    write(lumo::settingsFile(lumo::Settings::Stations), input);
    run::Problem problem;
    if (const auto list = run::StationList::read(".", ".", &problem)) {
        const prog::Record rows = list->text() ? prog::Record(*list->text()) : QJsonValue();
        for (const prog::Finding& finding : prog::checkStations(rows, QJsonValue(), prog::CellFacts())) {
            use(prog::englishText(finding));
        }
    }
}

void scenario(const QByteArray& input) {
    static run::TreeOperator tree;
    static const QJsonValue usual = m()->root()->exportToJson();
    run::Problem problem;
    const std::optional<run::InputArray> text = run::InputArray::parse(input, "scenario.json", &problem);
    const auto scenario =
        text ? std::make_optional(run::Scenario::fromText(*text, {"DI1"}, ".")) : std::nullopt;
    require(scenario || !problem.text().isEmpty(), "what is wrong is told");
    if (!scenario || !scenario->has(run::Action::Set)) {
        return;
    }
    for (const run::ScenarioEntry& entry : scenario->entries()) {
        if (entry.action == run::Action::Set) {
            tree.set(entry.keys.value("path").toString(), entry.keys.value("value"));
        }
    }
    m()->root()->loadJson(nullptr, usual);
}

void preferences(const QByteArray& input) {
    QCoreApplication::setOrganizationName(".");
    QCoreApplication::setApplicationName("panel");
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(QDir::currentPath()));
    write("panel.json", input);
    const QString language = app::Preferences::language();
    require(language.isEmpty() || language.size() == 2, "only a language of the panel is taken");
    use(app::Preferences::folder(), app::Preferences::docks(), app::Preferences::factor());
}

// What other programs send, and what they have left: recordings, a device's map, the states of LinuxCNC.

/// A record from a line: four characters for kind, writer, inside and tree, then the body.
std::optional<flight::Record> recordOf(const QByteArray& line) {
    QByteArray bytes(20 + std::max(0, line.size() - 4), char(1));
    for (int i = 0; i < std::min(4, line.size()); ++i) {
        bytes[i] = char(line[i] - 'a');
    }
    bytes.replace(20, bytes.size(), line.mid(4));
    flight::Record record;
    return flight::Record::decode(bytes, &record) ? std::make_optional(record) : std::nullopt;
}

void recording(const QByteArray& input) {
    flight::Recording recording;
    for (const QByteArray& line : input.split('\n')) {
        if (const auto record = recordOf(line)) {
            recording.records.push_back(*record);
            recording.records.back().number = recording.records.size();
        }
    }
    const std::vector<flight::RecordedRun> runs = flight::runsOf(recording);
    for (std::size_t run = 0; run < runs.size(); ++run) {
        const std::size_t first = flight::firstOfChain(runs, run);
        require(first <= run, "a chain begins before its end");
        use(flight::stateAt(recording, runs[first]), flight::mayGoOnFromLost(runs, first));
        const run::replay::Script script = run::replay::scriptOf(recording, runs[first], runs[run]);
        for (const flight::Record* const output : script.outputs) {
            require(run::replay::isSame(*output, *output), "a record is the same as itself");
            use(run::replay::textOf(*output));
        }
    }
    const flight::Posture posture = flight::Posture::decoded(input);
    require(posture.trans.empty() || posture.encoded() == input.left(posture.encoded().size()),
            "a posture that was read is written as it was");
}

void modbus(const QByteArray& input) {
    mendo::FileProblem problem;
    const std::optional<mendo::JsonText> text = mendo::JsonText::parse(input, &problem);
    const auto map = text ? bridge::ModbusMap::from(*text, &problem) : std::nullopt;
    if (!map) {
        require(!problem.text().isEmpty(), "what is wrong with a map is told");
        return;
    }
    for (const bridge::ModbusWrite& write : bridge::writesOff(*map)) {
        require(bridge::unitOf(*map, write, {}).valueCount() <= 1968, "a telegram has room");
    }
    for (const bridge::ModbusPoll& poll : bridge::pollsOf(*map)) {
        require(poll.unit.valueCount() <= 2000, "a telegram has room");
        for (const int index : poll.elements) {
            const bridge::ModbusElement& element = map->elements[std::size_t(index)];
            use(element.toDevice(element.fromDevice(0xFFFF)), element.label());
        }
    }
}

void linuxcnc(const QByteArray& input) {
    using namespace bridge::linuxcnc;
    Batch batch;
    for (int id = 1; id < 4; ++id) {
        batch.lines << QStringLiteral("G1");
        batch.owners.push_back(id - 1);
        batch.targets.push_back({id, {}, true, id == 2});
    }
    Progress progress(1, batch);
    for (const QByteArray& line : input.split('\n')) {
        if (const auto state = MachineState::read(QJsonDocument::fromJson(line).object())) {
            progress.follow(*state, {});
            require(progress.due() >= 0 && progress.due() <= progress.untold(), "no motion ends twice");
            use(progress.due() > 0 ? progress.tell() : 0, progress.currentId());
            use(state->errors.isEmpty() ? 0 : errorCode(state->errors.first()));
        }
    }
}

bool makeTree() {
    mendo::LogHub::instance()->setConsole(false);
    m()->regist(m(), "lumo")->loadJson(nullptr, mendo::ModuleManager::readFromJson(":/lumo/lumo.json"));
    return true;
}

}  // namespace

void fuzz::read(const QString& target, const QByteArray& input) {
    static const bool isMade = makeTree();
    static const std::map<QString, void (*)(const QByteArray&)> targets{
        {"params", params},    {"ports", ports},       {"preferences", preferences},
        {"project", project},  {"scenario", scenario}, {"stations", stations},
        {"flight", recording}, {"modbus", modbus},     {"linuxcnc", linuxcnc}};
    require(isMade && targets.count(target) == 1, "the target is known");
    targets.at(target)(input);
    mendo::ModuleManager::purgeRemoved();
    QDir folder;
    for (const QString& name : folder.entryList(QDir::Files | QDir::System | QDir::Hidden)) {
        folder.remove(name);
    }
}
