#include "panel/stationrun.h"

#include "module/keys.h"
#include "panel/toolset.h"

namespace lumo {

const StationRun* StationRun::current_ = nullptr;

StationRun::StationRun(const QString& station, const QString& project)
    : station_(station), project_(project), before_(QStringLiteral("toolset")) {
    before_.copyFrom(nullptr, m(key::toolset));
    current_ = this;
}

/// The page that started the run may be gone by now.
StationRun::~StationRun() {
    m(key::toolset)->copyFrom(nullptr, &before_);
    current_ = nullptr;
    sendToolset(nullptr);
}

void StationRun::useToolset(QObject* sender, QJsonObject toolset) {
    if (toolset.isEmpty()) {
        return;
    }
    for (const QLatin1String part : {field::end, field::ref}) {
        if (!toolset.contains(part)) {
            toolset[part] = m(key::defaultToolset)->c(part)->exportToJson();
        }
    }
    m(key::toolset)->loadJson(sender, toolset);
}

const ModuleObject* projectToolset() {
    const StationRun* const run = StationRun::current();
    return run ? run->toolsetBefore() : m(key::toolset);
}

}  // namespace lumo
