#include "runner/runwatch.h"

#include "mendo/modulemanager.h"

namespace run {

namespace {

const QString finished = QStringLiteral("finished");

}  // namespace

RunWatch::RunWatch(workcell::TreeFollower* follower, QObject* parent) : QObject(parent) {
    connect(follower, &workcell::TreeFollower::changed, this, &RunWatch::onChanged);
}

// Each notification arrives here before the executor acts on it, so what is first seen in a run is
// what ended it: a motion error stores the point of the pause without a trigger or a loss of power.
void RunWatch::onChanged(const workcell::Change& change) {
    if (change.path == QLatin1String("lumo.execute.trigger.start")) {
        stepAsked_ = false;
    } else if (change.path == QLatin1String("lumo.execute.trigger.once")) {
        stepAsked_ = true;
    } else if (change.path == QLatin1String("lumo.execute.state")) {
        onState(change);
    } else if (change.path == QLatin1String("lumo.execute.trigger.pause")) {
        end(QStringLiteral("paused"));
    } else if (change.path == QLatin1String("kord.r.power")) {
        if (change.value.toString() != QLatin1String("on")) {
            end(QStringLiteral("power"));
        }
    } else if (change.path == QLatin1String("lumo.current.pausepoint")) {
        if (change.byExecutor()) {
            end(QStringLiteral("error"));
        }
    } else if (change.byExecutor()) {
        onProgress(change);
    }
}

void RunWatch::onState(const workcell::Change& change) {
    const bool busy = change.value.toString() == QLatin1String("busy");
    if (!change.byExecutor()) {
        // It stops a walk at its next line, and has nothing to stop in a single step.
        if (!busy && !step_) {
            end(QStringLiteral("error"));
        }
        return;
    }
    const bool wasRunning = running_;
    running_ = busy;
    if (running_) {
        reason_ = finished;
        step_ = stepAsked_;
        emit begun();
    } else if (wasRunning) {
        emit ended();
    }
}

// A failed motion ends a walk, also one that is not a statement's; it may come when the walk is over already.
// The executor does not look at a step's result.
void RunWatch::motionEnded(int code) {
    if (code < 0 && reason_ == finished && (running_ || !step_)) {
        reason_ = QStringLiteral("error");
    }
}

void RunWatch::end(const QString& reason) {
    if (running_ && reason_ == finished) {
        reason_ = reason;
    }
}

void RunWatch::onProgress(const workcell::Change& change) {
    if (step_) {
        if (change.path == QLatin1String("lumo.execute.line")) {
            const mendo::ModuleObject* statement = m(QStringLiteral("lumo.program"))->c(change.value.toInt());
            begin(change.value.toInt(), statement->r(QStringLiteral("type"))->getString());
        }
    } else if (change.path == QLatin1String("lumo.current.line")) {
        line_ = change.value.toInt();
    } else if (change.path == QLatin1String("lumo.current.programtype")) {
        begin(line_, change.value.toString());
    }
}

void RunWatch::begin(int line, const QString& type) {
    ++lines_;
    emit lineBegun(line, type);
}

}  // namespace run
