// Project files: as the package reads, shows, looks at and saves them and compares them with their program,
// and as the runner checks them before a run.

#include "editor/statementtext.h"
#include "editor/storedstate.h"
#include "executor/programindex.h"
#include "fuzz/fuzz.h"
#include "mendo/jsonfault.h"
#include "module/keys.h"
#include "panel/projectfile.h"
#include "runner/hand.h"
#include "runner/project.h"

#include <QJsonDocument>

#include <algorithm>

namespace {

const QString fileName = "project.json";

void show() {
    const RunProgram program(m(lumo::key::program));
    fuzz::use(program.firstBadCircle(0, program.lineCount()));
    for (int line = 0; line < program.lineCount(); ++line) {
        const ModuleObject* const statement = m(lumo::key::program)->c(line);
        fuzz::use(type2cn(statement->c(lumo::field::type)->getString()), lumo::statementDetails(statement));
        fuzz::use(program.circleFaultAt(line), program.openBefore(line), program.targetBefore(line));
    }
}

/// Another record that looks like a tool set would be taken for it when the project is read again.
bool isUnambiguous(const lumo::Project& project) {
    return std::none_of(project.statements.begin(), project.statements.end(),
                        [](const QJsonValue& statement) {
                            const QJsonObject object = statement.toObject();
                            return object.contains(lumo::field::end) ||
                                   (object.contains(lumo::field::ref) && !object.contains(lumo::field::type));
                        });
}

/// A number may have more digits in the file than a tree holds, a name a mark before it that Qt drops: then
/// saving the project changes the file. So may a tool set, whose older form has empty objects.
void compareWithFile(const QByteArray& input, const lumo::Project& project) {
    static lumo::StoredState state;
    state.setProjectPath(fileName);
    state.check();
    if (project.toolset.isEmpty() && !input.contains("\xef\xbb\xbf") &&
        !input.toLower().contains("\\ufeff")) {
        const QJsonArray tree = m(lumo::key::program)->exportToJson().toArray();
        fuzz::require(
            state.isStored() == (QJsonDocument(project.statements).toJson() == QJsonDocument(tree).toJson()),
            "a project that was just read is what its file holds");
    }
}

void saveAndReadAgain(bool throughFile) {
    const QJsonValue saved = lumo::projectDocument();
    fuzz::require(!throughFile || lumo::saveProject(fileName), "a project that was read can be saved");
    const auto again = throughFile ? lumo::readProject(fileName) : lumo::projectFrom(saved);
    fuzz::require(again.has_value(), "what was saved is a project");
    lumo::loadProject(nullptr, *again);
    fuzz::require(fuzz::isSame(lumo::projectDocument(), saved), "a saved project is read as it was");
}

void check(const QByteArray& input) {
    static run::Hand hand;
    mendo::JsonFault fault;
    if (!mendo::parseJson(input, &fault))
        fuzz::require(fault.offset >= 0 && fault.offset <= input.size(), "a fault lies in the file");
    run::Problem problem;
    const std::optional<run::JsonText> text = run::JsonText::parse(input, fileName, &problem);
    const auto project = text ? run::Project::fromText(*text, &problem) : std::nullopt;
    if (!project) {
        fuzz::require(!problem.reason.isEmpty() && problem.line > 0, "what is wrong is told with its line");
        return;
    }
    for (const run::Problem& warning : project->warnings(2))
        fuzz::use(warning.text());
    hand.loadProject(project->content());
}

}  // namespace

FUZZ_TARGET(project) {
    static const QJsonValue noTools = m(lumo::key::toolset)->exportToJson();
    fuzz::write(fileName, input);
    if (const std::optional<lumo::Project> project = lumo::readProject(fileName)) {
        lumo::loadProject(nullptr, *project);
        fuzz::require(fuzz::isSame(m(lumo::key::program)->exportToJson(), project->statements),
                      "the program holds what the file holds");
        show();
        compareWithFile(input, *project);
        if (isUnambiguous(*project))
            saveAndReadAgain(fuzz::isSavedToo(input));
    }
    check(input);
    m(lumo::key::program)->loadJson(nullptr, QJsonArray());
    m(lumo::key::toolset)->loadJson(nullptr, noTools);
}
