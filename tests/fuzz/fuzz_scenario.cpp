// Scenarios of the command line runner; what they set in the data tree is set.

#include "fuzz/bench.h"
#include "mendo/modulemanager.h"
#include "runner/hand.h"
#include "runner/scenario.h"

namespace {

/// Whether something was set, anywhere in the tree.
bool set(run::Hand* hand, const run::Scenario& scenario) {
    if (!scenario.has(run::Action::Set))
        return false;
    for (const run::ScenarioEntry& entry : scenario.entries()) {
        if (entry.action == run::Action::Set)
            hand->set(entry.keys.value(QStringLiteral("path")).toString(),
                      entry.keys.value(QStringLiteral("value")));
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Bench bench;
    static run::Hand hand;
    static const QJsonValue usual = m()->root()->exportToJson();
    const QByteArray input(reinterpret_cast<const char*>(data), int(size));

    const fuzz::Budget budget(size);
    run::Problem problem;
    const QString name = QStringLiteral("scenario.json");
    const std::optional<run::JsonText> text = run::JsonText::parse(input, name, &problem);
    const auto scenario =
        text ? run::Scenario::fromText(*text, {QStringLiteral("DI1")}, &problem) : std::nullopt;
    if (!scenario) {
        fuzz::require(!problem.text().isEmpty(), "what is wrong is told");
        return 0;
    }
    fuzz::use(scenario->files(QStringLiteral("folder")));
    fuzz::use(scenario->lastMs());
    if (set(&hand, *scenario)) {
        m()->root()->loadJson(nullptr, usual);
        mendo::ModuleManager::purgeRemoved();
    }
    return 0;
}
