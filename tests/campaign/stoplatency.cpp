#include "campaign/stoplatency.h"

#include "devices/ports.h"

#include <utility>

namespace campaign {

namespace {

using Kind = Event::Kind;

QString stopBy(const Event& event, bool permissionLost) {
    switch (event.kind) {
        case Kind::Pause:
            return QStringLiteral("a pause");
        case Kind::Power:
            return event.value == 0 ? QStringLiteral("a loss of power") : QString();
        case Kind::Quit:
            return QStringLiteral("a quit");
        default:
            return permissionLost ? QStringLiteral("the permission lost") : QString();
    }
}

}  // namespace

void StopLatency::on(const Event& event, const QString& situation) {
    const bool permissionLost = event.kind == Kind::Permission && permitted_ && !event.facts.permitted;
    if (event.kind == Kind::Permission) {
        permitted_ = event.facts.permitted;
    }
    const bool isLaser =
        event.port == DO_LASER_ENABLE && (event.kind == Kind::Write || event.kind == Kind::Foreign);
    if (isLaser && event.value != 0) {
        enabled_ = event.kind == Kind::Write;  // what somebody enables by hand is no weld
    } else if (isLaser) {
        enabled_ = false;
        onDisabled(event.ms);
    }
    const QString kind = enabled_ ? stopBy(event, permissionLost) : QString();
    if (!kind.isEmpty()) {
        open_.push_back({kind, situation, event.ms, event.facts.decreaseMs});
    }
}

void StopLatency::onDisabled(qint64 ms) {
    for (const Stop& stop : std::exchange(open_, {})) {
        Count& count = counts_[stop.kind][stop.situation];
        const qint64 passedMs = ms - stop.sinceMs;
        // The closing begins in the next turn where the stop comes inside a write.
        ++(passedMs == 0 ? count.atOnce : passedMs <= stop.rampMs + 1 ? count.inItsRamp : count.later);
    }
}

}  // namespace campaign
