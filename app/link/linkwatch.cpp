#include "app/link/linkwatch.h"

#include "mendo/clock.h"
#include "simulator/controller.h"
#include "workcell/outside.h"

#include <QFileInfo>

#include <algorithm>

namespace app {

namespace {

constexpr int tellAgainS = 60;

/// "linuxcnc" to "LinuxCNC", "modbus:/cell/map.json" to "Modbus TCP, map.json", "/opt/robot.so:10.0.0.5" to
/// "robot.so, 10.0.0.5".
QString shownName(const QString& name) {
    const auto lastPart = [](const QString& path) {
        return path.contains(QLatin1Char('/')) ? QFileInfo(path).fileName() : path;
    };
    QString library = lastPart(name.section(QLatin1Char(':'), 0, 0));
    library = library == QLatin1String("linuxcnc") ? QStringLiteral("LinuxCNC")
              : library == QLatin1String("modbus") ? QStringLiteral("Modbus TCP")
                                                   : library;
    const QString argument = lastPart(name.section(QLatin1Char(':'), 1));
    return argument.isEmpty() ? library : library + QStringLiteral(", ") + argument;
}

}  // namespace

LinkWatch::LinkWatch(const sim::Controller* controller, const workcell::OutsideNames& names, QObject* parent)
    : QObject(parent), controller_(controller) {
    links_[std::size_t(bridge::LinkEnd::Robot)].name = shownName(names.robot);
    links_[std::size_t(bridge::LinkEnd::Device)].name = shownName(names.device);
    onLink();
    connect(controller, &sim::Controller::linkChanged, this, &LinkWatch::onLink);
    connect(controller, &sim::Controller::violated, this,
            [this](bridge::Rule rule, int) { onViolated(rule); });
}

bool LinkWatch::isOutside() const {
    return std::any_of(links_.begin(), links_.end(),
                       [](const LinkFacts& link) { return !link.name.isEmpty(); });
}

void LinkWatch::onLink() {
    for (const bridge::LinkEnd end : {bridge::LinkEnd::Robot, bridge::LinkEnd::Device}) {
        LinkFacts& link = links_[std::size_t(end)];
        const bool wasUp = link.isUp;
        link.isUp = controller_->isLinked(end);
        link.reason = controller_->linkReason(end);
        if (wasUp && !link.isUp) {
            ++link.losses;
            link.lostAt = mendo::Clock::current().now();
            link.lostFor = link.reason;
            emit lost(link);
        } else if (!wasUp && link.isUp && link.losses > 0) {
            emit regained(link);
        }
    }
    emit changed();
}

void LinkWatch::onViolated(bridge::Rule rule) {
    auto broken = std::find_if(broken_.begin(), broken_.end(),
                               [rule](const BrokenRule& known) { return known.rule == rule; });
    if (broken == broken_.end()) {
        broken_.append({rule, 0, {}, {}});
        broken = broken_.end() - 1;
    }
    ++broken->count;
    broken->last = mendo::Clock::current().now();
    const bool isDue = !broken->told.isValid() || broken->told.secsTo(broken->last) >= tellAgainS;
    if (isDue) {
        broken->told = broken->last;
        emit broke(rule);
    }
    emit changed();
}

}  // namespace app
