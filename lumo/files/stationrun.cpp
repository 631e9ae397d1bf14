#include "files/stationrun.h"

#include "program/words.h"

using namespace prog;

namespace lumo {

const StationRun* StationRun::current_ = nullptr;

StationRun::StationRun(const QString& station, const QString& project)
    : station_(station), project_(project), before_(QStringLiteral("toolset")) {
    before_.copyFrom(nullptr, m(key::toolset));
    current_ = this;
}

/// The page that started the run may be gone by now, so the writes name no sender.
StationRun::~StationRun() {
    m(key::toolset)->copyFrom(nullptr, &before_);
    current_ = nullptr;
    sendToolset(nullptr);
}

void StationRun::useToolset(QObject* sender, const QJsonObject& toolset) {
    if (!toolset.isEmpty()) {
        m(key::toolset)->loadJson(sender, toolset);
    }
}

const ModuleObject* projectToolset() {
    const StationRun* const run = StationRun::current();
    return run ? run->toolsetBefore() : m(key::toolset);
}

void sendToolset(QObject* sender) {
    kordservice()->set(sender, key::coordToolset, m(key::toolset));
}

}  // namespace lumo
