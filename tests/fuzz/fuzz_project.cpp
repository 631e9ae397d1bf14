// Project files: read, shown line by line, looked at as a run does, saved and read again.

#include "editor/statementtext.h"
#include "executor/programindex.h"
#include "fuzz/bench.h"
#include "mendo/modulemanager.h"
#include "module/keys.h"
#include "panel/projectfile.h"

#include <algorithm>

namespace {

const QString fileName = QStringLiteral("project.json");

void show() {
    for (const ModuleObject* statement : m(lumo::key::program)->cmobjs()) {
        fuzz::use(type2cn(statement->c(lumo::field::type)->getString()));
        fuzz::use(lumo::statementDetails(statement));
    }
}

/// The questions that a run asks of its program.
void index() {
    const RunProgram program(m(lumo::key::program));
    fuzz::use(program.firstBadCircle(0, program.lineCount()));
    for (int line = 0; line < program.lineCount(); ++line) {
        fuzz::use(program.circleFaultAt(line));
        fuzz::use(program.openBefore(line));
        fuzz::use(program.targetBefore(line));
    }
}

/// A statement that has an `end` would be taken for the tool set when it is read again.
bool isUnambiguous(const lumo::Project& project) {
    return std::none_of(
        project.statements.begin(), project.statements.end(),
        [](const QJsonValue& statement) { return statement.toObject().contains(lumo::field::end); });
}

void saveAndReadAgain(const fuzz::Bench& bench, bool throughFile) {
    const QJsonValue saved = lumo::projectDocument();
    if (throughFile) {
        bench.moveToDisk();
        fuzz::require(lumo::saveProject(fileName), "a project that was read can be saved");
    }
    const std::optional<lumo::Project> again =
        throughFile ? lumo::readProject(fileName) : lumo::projectFrom(saved);
    fuzz::require(again.has_value(), "what was saved is a project");
    lumo::loadProject(nullptr, *again);
    fuzz::require(fuzz::isSame(lumo::projectDocument(), saved), "a saved project is read as it was");
    if (throughFile)
        bench.clearDisk();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Bench bench;
    static const QJsonValue noTools = m(lumo::key::toolset)->exportToJson();
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));
    bench.write(fileName, input);

    const fuzz::Budget budget(size);
    if (const std::optional<lumo::Project> project = lumo::readProject(fileName)) {
        lumo::loadProject(nullptr, *project);
        fuzz::require(fuzz::isSame(m(lumo::key::program)->exportToJson(), project->statements),
                      "the program holds what the file holds");
        show();
        index();
        if (isUnambiguous(*project))
            saveAndReadAgain(bench, fuzz::isChosen(input, fuzz::shareSaved));
        m(lumo::key::program)->loadJson(nullptr, QJsonArray());
        m(lumo::key::toolset)->loadJson(nullptr, noTools);
    }
    mendo::ModuleManager::purgeRemoved();
    return 0;
}
