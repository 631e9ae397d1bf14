#include "campaign/recorder.h"

#include "devices/ports.h"
#include "executor/lumoexecutor.h"
#include "mendo/clock.h"
#include "module/globals.h"
#include "module/host.h"
#include "module/keys.h"

#include <QApplication>
#include <QJsonObject>
#include <QMessageBox>

#include <algorithm>
#include <cmath>

namespace campaign {

namespace {

constexpr double mmPerM = 1000.0;

QJsonArray targetOf(const QJsonObject& move) {
    const QString type = move["type"].toString();
    if (type == lumo::statement::moveCC) {
        return {};  // ends where it began
    }
    const QLatin1String name = type == lumo::statement::moveC ? lumo::field::point1 : lumo::field::point;
    return move[name].toObject()["trans"].toArray();
}

}  // namespace

Recorder::Recorder(Checker& checker) : checker_(checker), startMs_(mendo::Clock::current().elapsedMs()) {}

qint64 Recorder::nowMs() const {
    return mendo::Clock::current().elapsedMs() - startMs_;
}

Event Recorder::record(Event event) {
    event.ms = nowMs();
    event.facts = facts();
    if (!isNews(event)) {
        event.action = -1;
        return event;
    }
    if (event.kind == Event::Kind::Zone) {
        event.value = outsideZone();
    } else if (event.kind == Event::Kind::Done) {
        event.facts.boxes = messageCount();
    } else if (event.kind == Event::Kind::Activity && event.facts.depth > 0 && !events_.empty() &&
               events_.back().kind == Event::Kind::Start) {
        walked_ = asked_;
    } else if (event.kind == Event::Kind::Line) {
        resumeLines_ = walked_.size();
    }
    events_.push_back(event);
    if (listener_) {
        listener_(event);
    }
    checker_.on(event);
    if (brokenAt_ < 0 && !checker_.broken().isEmpty()) {
        brokenAt_ = static_cast<int>(events_.size());
    }
    return event;
}

/// An activity counts when the depth, the wait or whether something is pending has changed.
bool Recorder::isNews(Event& event) {
    if (event.kind != Event::Kind::Activity || !executor) {
        return true;
    }
    const QVariantMap wait = executor->waiting();
    const bool otherWait = wait != wait_;
    const bool news =
        otherWait || event.facts.depth != last_.depth || (event.facts.pending > 0) != (last_.pending > 0);
    event.value = otherWait && !wait.isEmpty();
    event.text = wait.value(QStringLiteral("detail")).toString();
    wait_ = wait;
    last_ = event.facts;
    return news;
}

Facts Recorder::facts() {
    Facts facts;
    facts.idle = m(lumo::key::executeState)->getString() == lumo::word::idle;
    facts.powered = m(lumo::key::robotPower)->getString() == lumo::word::on;
    facts.robotIdle = m(lumo::key::robotState)->getString() == lumo::word::idle;
    const bool weld = m(lumo::key::weldSwitch)->getBool(true);
    const bool automatic = m(lumo::key::robotMode)->getString() == lumo::word::automatic;
    facts.permitted = weld && (automatic || m(lumo::key::handWeldSwitch)->getBool(false));
    facts.gasUsed = portEnabled(DO_GAS);
    facts.resumeLine = m(lumo::key::currentLine)->getInt(-1);
    facts.weldOpen = m(lumo::key::weldOpen)->getBool(false);
    const int set = m(lumo::key::curParam)->getInt(-1);
    const ModuleObject* const inForce = m(lumo::key::param)->c(set);
    constexpr int longestMs = 500000000;  // longer ones are cut
    facts.decreaseMs = qBound(0, inForce->c(QStringLiteral("decrease_time"))->getInt(0), longestMs);
    facts.postFlowMs = qBound(0, inForce->c(QStringLiteral("delay_after_blow"))->getInt(0), longestMs);
    if (executor) {
        facts.depth = executor->depth();
        facts.pending = executor->pendingSteps();
        facts.wait = executor->waiting().value(QStringLiteral("kind")).toString();
    }
    return facts;
}

/// How far the tool is outside the zone of the move that the current line holds, in µm.
int Recorder::outsideZone() const {
    const QJsonObject move = walked_.at(m(lumo::key::currentLine)->getInt(-1)).toObject();
    const QJsonArray target = targetOf(move);
    if (target.size() < 3) {
        return 0;
    }
    const ModuleObject* here = kordservice()->get(nullptr, lumo::key::posture, lumo::field::trans);
    double squares = 0.0;
    for (int i = 0; i < 3; ++i) {
        squares += std::pow(here->c(i)->getDouble() - target.at(i).toDouble(), 2);
    }
    const double radius = move.contains(lumo::field::zone)
                              ? move[lumo::field::zone].toVariant().toDouble() / mmPerM
                              : kordservice()->get(nullptr, lumo::key::defaultZone)->getDouble();
    return static_cast<int>(std::ceil((std::sqrt(squares) - radius) * 1e6));
}

int messageCount() {
    const QWidgetList windows = QApplication::topLevelWidgets();
    return static_cast<int>(std::count_if(windows.begin(), windows.end(), [](const QWidget* window) {
        return qobject_cast<const QMessageBox*>(window) && window->isVisible();
    }));
}

}  // namespace campaign
