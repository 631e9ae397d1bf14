// Project files as the command line runner checks them before a run.

#include "fuzz/bench.h"
#include "mendo/jsonfault.h"
#include "mendo/modulemanager.h"
#include "runner/hand.h"
#include "runner/project.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Bench bench;
    static run::Hand hand;
    const QString name = QStringLiteral("project.json");
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));

    const fuzz::Budget budget(size);
    mendo::JsonFault fault;
    if (!mendo::parseJson(input, &fault))
        fuzz::require(fault.offset >= 0 && fault.offset <= input.size(), "a fault lies in the file");
    run::Problem problem;
    const std::optional<run::JsonText> text = run::JsonText::parse(input, name, &problem);
    const auto project = text ? run::Project::fromText(*text, &problem) : std::nullopt;
    if (!project) {
        fuzz::require(!problem.reason.isEmpty() && problem.line > 0, "what is wrong is told with its line");
        return 0;
    }
    for (const run::Problem& warning : project->warnings(2))
        fuzz::use(warning.text());
    hand.loadProject(project->content());
    hand.loadProject(QJsonArray());
    mendo::ModuleManager::purgeRemoved();
    return 0;
}
