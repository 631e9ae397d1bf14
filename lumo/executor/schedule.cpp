#include "executor/schedule.h"

#include <algorithm>

Schedule::Schedule(QObject* parent) : QObject(parent) {
    // Single-shot: a running handler may nest an event loop, and a repeating timer stays silent in there.
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &Schedule::runDue);
}

void Schedule::setPerformer(std::function<void(const PortStep&)> performer) {
    performer_ = std::move(performer);
}

void Schedule::add(qint64 baseMs, const Sequence& sequence) {
    if (sequence.empty()) {
        return;
    }
    for (const TimedStep& timed : sequence) {
        Entry entry;
        entry.step = timed.step;
        entries_.emplace(baseMs + timed.ms, std::move(entry));
    }
    arm();
    emit pendingChanged();
}

int Schedule::wakeAt(qint64 dueMs, std::function<void()> expired) {
    Entry entry;
    entry.wakeId = ++lastWakeId_;
    entry.expired = std::move(expired);
    entries_.emplace(dueMs, std::move(entry));
    arm();
    return lastWakeId_;
}

void Schedule::cancelWake(int id) {
    removeWhere([id](const Entry& entry) { return entry.wakeId != 0 && entry.wakeId == id; });
}

void Schedule::runDue() {
    const qint64 now = mendo::Clock::current().elapsedMs();
    while (!entries_.empty() && entries_.begin()->first <= now) {
        const Entry entry = std::move(entries_.begin()->second);
        entries_.erase(entries_.begin());
        arm();  // before the step: what it sets off may wait in a nested loop for the next one
        if (entry.wakeId != 0) {
            entry.expired();
        } else {
            performer_(entry.step);
            emit pendingChanged();
        }
    }
    arm();
}

std::vector<PortStep> Schedule::takeSteps(bool withGasOff) {
    const auto isTaken = [withGasOff](const Entry& entry) {
        return entry.wakeId == 0 && (withGasOff || entry.step.role != PortStep::Role::GasOff);
    };
    std::vector<PortStep> steps;
    for (const auto& [dueMs, entry] : entries_) {
        if (isTaken(entry)) {
            steps.push_back(entry.step);
        }
    }
    removeWhere(isTaken);
    return steps;
}

void Schedule::dropProgress(I_PORT port) {
    const bool dropped = removeWhere([port](const Entry& entry) {
        return entry.wakeId == 0 && entry.step.port == port && entry.step.role == PortStep::Role::Progress;
    });
    if (dropped) {
        emit pendingChanged();
    }
}

bool Schedule::isPending(I_PORT port, PortStep::Role role) const {
    return std::any_of(entries_.begin(), entries_.end(), [port, role](const auto& due) {
        return due.second.wakeId == 0 && due.second.step.port == port && due.second.step.role == role;
    });
}

int Schedule::pendingSteps() const {
    return static_cast<int>(std::count_if(entries_.begin(), entries_.end(),
                                          [](const auto& due) { return due.second.wakeId == 0; }));
}

void Schedule::arm() {
    if (entries_.empty()) {
        timer_.stop();
        return;
    }
    const qint64 wait = entries_.begin()->first - mendo::Clock::current().elapsedMs();
    timer_.start(static_cast<int>(std::max<qint64>(0, wait)));
}

template <typename Predicate>
bool Schedule::removeWhere(Predicate predicate) {
    const std::size_t before = entries_.size();
    for (auto entry = entries_.begin(); entry != entries_.end();) {
        entry = predicate(entry->second) ? entries_.erase(entry) : std::next(entry);
    }
    arm();
    return entries_.size() != before;
}
