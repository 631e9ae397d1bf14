// The project file as it is compared with the program that was read from it.

#include "editor/storedstate.h"
#include "fuzz/bench.h"
#include "mendo/modulemanager.h"
#include "module/keys.h"
#include "panel/projectfile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Bench bench;
    static lumo::StoredState state;
    static const QJsonValue noTools = m(lumo::key::toolset)->exportToJson();
    const QString fileName = QStringLiteral("project.json");
    bench.write(fileName, QByteArray(reinterpret_cast<const char*>(data), int(size)));

    const fuzz::Budget budget(size);
    const std::optional<lumo::Project> project = lumo::readProject(fileName);
    lumo::loadProject(nullptr, project.value_or(lumo::Project()));
    state.setProjectPath(fileName);
    state.check();
    // Of a tool set in the file some lists may be written in their older form, as empty objects.
    if (project && project->toolset.isEmpty())
        fuzz::require(state.isStored(), "a project that was just read is what its file holds");
    m(lumo::key::program)->loadJson(nullptr, QJsonArray());
    m(lumo::key::toolset)->loadJson(nullptr, noTools);
    mendo::ModuleManager::purgeRemoved();
    return 0;
}
