#include "runner/runwatch.h"

#include "mendo/modulemanager.h"

namespace run {

namespace {

constexpr int kStationRun = 1;
constexpr int kSingleStep = 2;

const QString kFinished = QStringLiteral("finished");

}  // namespace

RunWatch::RunWatch(TreeFollower* follower, QObject* parent) : QObject(parent) {
    connect(follower, &TreeFollower::changed, this, &RunWatch::onChanged);
}

// Each notification arrives here before the executor acts on it, so what is first seen in a run is
// what ended it: a motion error stores the point of the pause without a trigger or a loss of power.
void RunWatch::onChanged(const Change& change) {
    if (change.path == QLatin1String("lumo.execute.state")) {
        if (change.byExecutor())
            onState(change.value.toString());
    } else if (change.path == QLatin1String("lumo.execute.trigger.pause")) {
        end(QStringLiteral("paused"));
    } else if (change.path == QLatin1String("kord.r.power")) {
        if (change.value.toString() != QLatin1String("on"))
            end(QStringLiteral("power"));
    } else if (change.path == QLatin1String("lumo.current.pausepoint")) {
        if (change.byExecutor())
            end(QStringLiteral("error"));
    } else if (change.byExecutor()) {
        count(change);
    }
}

void RunWatch::onState(const QString& state) {
    running_ = state == QLatin1String("busy");
    if (running_)
        reason_ = kFinished;
}

void RunWatch::end(const QString& reason) {
    if (running_ && reason_ == kFinished)
        reason_ = reason;
}

void RunWatch::count(const Change& change) {
    const bool step = runMode_ && *runMode_ == kSingleStep;
    if (change.path != QLatin1String(step ? "lumo.execute.line" : "lumo.current.line"))
        return;
    ++lines_;
    const bool station = runMode_ && *runMode_ == kStationRun;
    const int line = change.value.toInt();
    const mendo::ModuleObject* program =
        m(station ? QStringLiteral("lumo.signalbind_program") : QStringLiteral("lumo.program"));
    emit lineBegun(line, program->c(line)->r(QStringLiteral("type"))->getString());
}

}  // namespace run
