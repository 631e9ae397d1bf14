#include "executor/arcs.h"

#include "program/words.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <memory>
#include <utility>

using namespace prog;

namespace lumo {

QString pointsOf(const ModuleObject* stmt) {
    const QJsonArray points{stmt->c(field::point)->exportToJson(), stmt->c(field::point1)->exportToJson()};
    return QString::fromUtf8(QJsonDocument(points).toJson(QJsonDocument::Compact));
}

void Arcs::endRun() {
    queued_.clear();
    rest_.reset();
    restLine_ = -1;
}

void Arcs::keep(int line, const Pose& start, const ModuleObject* command) {
    QueuedArc& kept = queued_[line];
    kept.start = start;
    kept.command = std::make_shared<ModuleObject>(QStringLiteral("arc"));
    kept.command->copyFrom(nullptr, command);
}

void Arcs::keepRest(int line, const Begun& rest) {
    QueuedArc& kept = queued_[line];
    kept = rest.queued;
    kept.from = rest.reached;
}

const QueuedArc* Arcs::queuedBy(int line) const {
    const auto queued = queued_.find(line);
    return queued == queued_.end() ? nullptr : &queued->second;
}

void Arcs::stopIn(int line, const ModuleObject* record, const Position& tool, double seconds) {
    stopped_.reset();
    const QueuedArc* const queued = queuedBy(line);
    if (!queued) {
        if (rest_ && restLine_ == line) {
            stopped_ = rest_;  // stopped before the rest was queued
        }
        return;
    }
    const std::optional<Arc> arc = queued->arc();
    if (!arc) {
        return;
    }
    const double expected = queued->from + queued->speedMPerS() * seconds / arc->radiusM();
    stopped_ = Begun{*queued, arc->angleOnTheWay(tool, queued->from, std::min(expected, arc->total())),
                     pointsOf(record)};
}

bool Arcs::takeUp(int line, const ModuleObject* record, const Position& tool) {
    constexpr double nearM = 0.002;
    Begun rest = *stopped_;
    const std::optional<Arc> arc = rest.queued.arc();
    rest.reached = arc ? arc->angleNear(tool, rest.queued.from, rest.reached) : 0.0;
    if (!arc || rest.points != pointsOf(record) || distance(tool, arc->at(rest.reached)) > nearM) {
        return false;
    }
    setRest(line, rest);
    return true;
}

double Arcs::reachedOn(int line) const {
    return rest_ && restLine_ == line ? rest_->reached : 0.0;
}

void Arcs::setRest(int line, const std::optional<Begun>& rest) {
    rest_ = rest;
    restLine_ = line;
}

std::optional<Arcs::Begun> Arcs::takeRest(int line) {
    return restLine_ == line ? std::exchange(rest_, std::nullopt) : std::nullopt;
}

}  // namespace lumo
