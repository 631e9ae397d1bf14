#include "runner/runwatch.h"

#include "mendo/modulemanager.h"
#include "program/words.h"

namespace run {

namespace {

const QString finished = QStringLiteral("finished");

}  // namespace

RunWatch::RunWatch(workcell::TreeFollower* follower, QObject* parent) : QObject(parent) {
    connect(follower, &workcell::TreeFollower::changed, this, &RunWatch::onChanged);
}

// Notifications arrive here before the executor acts on them: the first reason of a run is the true one. A
// motion error shows as a stored pause point without a pause trigger or a loss of power.
void RunWatch::onChanged(const workcell::Change& change) {
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

void RunWatch::onState(const workcell::Change& change) {
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
    }
}

void RunWatch::end(const QString& reason) {
    if (running_ && reason_ == finished) {
        reason_ = reason;
    }
}

void RunWatch::onProgress(const workcell::Change& change) {
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

StationWatch::StationWatch(std::function<qint64()> clock, std::function<qint64()> laserOn)
    : clock_(std::move(clock)), laserOn_(std::move(laserOn)) {}

void StationWatch::runBegun(bool byStation) {
    addLaserTime();
    begun_ += byStation ? 1 : 0;
    byStation_ = byStation;
    unclaimed_ = byStation;
    row_ = -1;
    begunMs_ = clock_();
}

// The page shows a new run after runBegun(): the first row to change is that of the run.
void StationWatch::stateChanged(int row) {
    if (!unclaimed_) {
        return;
    }
    unclaimed_ = false;
    row_ = row;
    if (figures_.size() <= std::size_t(row)) {
        figures_.resize(std::size_t(row) + 1);
    }
    ++figures_[std::size_t(row)].runs;
}

void StationWatch::runEnded(const QString& reason) {
    unclaimed_ = false;
    const bool isFinished = reason == finished;
    finished_ += byStation_ && isFinished ? 1 : 0;
    byStation_ = false;
    if (row_ < 0) {
        return;
    }
    StationFigures& station = figures_[std::size_t(row_)];
    station.busyMs += clock_() - begunMs_;
    if (isFinished) {
        ++station.finished;
    }
}

void StationWatch::addLaserTime() {
    const qint64 now = laserOn_();
    if (row_ >= 0) {
        figures_[std::size_t(row_)].laserMs += now - laserBeforeMs_;
    }
    laserBeforeMs_ = now;
}

std::vector<StationFigures> StationWatch::figures() const {
    std::vector<StationFigures> figures = figures_;
    if (row_ >= 0) {
        figures[std::size_t(row_)].laserMs += laserOn_() - laserBeforeMs_;
    }
    return figures;
}

}  // namespace run
