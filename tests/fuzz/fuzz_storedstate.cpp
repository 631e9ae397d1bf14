// The project file as it is compared with the program that was read from it.

#include "editor/storedstate.h"
#include "fuzz/bench.h"
#include "mendo/modulemanager.h"
#include "module/keys.h"
#include "panel/projectfile.h"

#include <QJsonDocument>

namespace {

QByteArray text(const QJsonArray& statements) {
    return QJsonDocument(statements).toJson(QJsonDocument::Compact);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Bench bench;
    static lumo::StoredState state;
    static const QJsonValue noTools = m(lumo::key::toolset)->exportToJson();
    const QString fileName = QStringLiteral("project.json");
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));
    bench.write(fileName, input);

    const fuzz::Budget budget(size);
    const std::optional<lumo::Project> project = lumo::readProject(fileName);
    lumo::loadProject(nullptr, project.value_or(lumo::Project()));
    state.setProjectPath(fileName);
    state.check();
    // A number may have more digits in the file than a tree holds, a name a mark before it that Qt drops:
    // then saving the project changes the file. So may a tool set, whose older form has empty objects.
    const bool hasMarks = input.contains("\xef\xbb\xbf") || input.toLower().contains("\\ufeff");
    if (project && project->toolset.isEmpty() && !hasMarks) {
        const bool isSame =
            text(project->statements) == text(m(lumo::key::program)->exportToJson().toArray());
        fuzz::require(state.isStored() == isSame, "a project that was just read is what its file holds");
    }
    m(lumo::key::program)->loadJson(nullptr, QJsonArray());
    m(lumo::key::toolset)->loadJson(nullptr, noTools);
    mendo::ModuleManager::purgeRemoved();
    return 0;
}
