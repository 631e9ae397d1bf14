#include "workcell/runwatch.h"

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "program/words.h"
#include "simulator/controller.h"

namespace workcell {

namespace {

const QString finished = QStringLiteral("finished");

}  // namespace

RunWatch::RunWatch(TreeFollower* follower, QObject* parent) : QObject(parent) {
    connect(follower, &TreeFollower::changed, this, &RunWatch::onChanged);
}

void RunWatch::attach(const sim::Controller* controller) {
    connect(controller, &sim::Controller::result, this,
            [this](const QString&, int, int code) { motionEnded(code); });
    connect(kordservice(), &KordService::issued, this, [this](const KordCall& call) {
        if (call.name == prog::command::stop) {
            motionStopped();
        }
    });
}

// Notifications arrive here before the executor acts on them: the first reason of a run is the true one. A
// motion error shows as a stored pause point without a pause trigger or a loss of power.
void RunWatch::onChanged(const Change& change) {
    if (change.path == prog::key::triggerStart) {
        stepAsked_ = false;
    } else if (change.path == prog::key::triggerOnce) {
        stepAsked_ = true;
    } else if (change.path == prog::key::executeState) {
        onState(change);
    } else if (change.path == prog::key::triggerPause) {
        end(QStringLiteral("paused"));
    } else if (change.path == prog::key::robotPower) {
        if (change.value.toString() != prog::word::on) {
            end(QStringLiteral("power"));
        }
    } else if (change.path == prog::key::currentPausePoint) {
        if (change.byExecutor()) {
            end(QStringLiteral("error"));
        }
    } else if (change.byExecutor()) {
        onProgress(change);
    }
}

void RunWatch::onState(const Change& change) {
    const bool busy = change.value.toString() == prog::word::busy;
    if (!change.byExecutor()) {
        // Stops a walk at its next line, but no single step.
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

// Any failed motion ends a walk, also when it is reported after the walk. The executor ignores the result of
// a single step.
void RunWatch::motionEnded(int code) {
    if (code < 0 && reason_ == finished && (running_ || !step_)) {
        reason_ = QStringLiteral("error");
        if (running_) {
            emit interrupted();
        }
    }
}

void RunWatch::end(const QString& reason) {
    if (running_ && reason_ == finished) {
        reason_ = reason;
        emit interrupted();
    }
}

void RunWatch::onProgress(const Change& change) {
    if (step_) {
        if (change.path == prog::key::executeLine) {
            const mendo::ModuleObject* statement = m(prog::key::program)->c(change.value.toInt());
            begin(change.value.toInt(), statement->r(prog::field::type)->getString());
        }
    } else if (change.path == prog::key::currentLine) {
        line_ = change.value.toInt();
    } else if (change.path == prog::key::currentType) {
        begin(line_, change.value.toString());
    }
}

void RunWatch::begin(int line, const QString& type) {
    ++lines_;
    emit lineBegun(line, type);
}

}  // namespace workcell
