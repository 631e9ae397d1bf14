#include "executor/schedule.h"

#include "module/host.h"

#include <algorithm>

namespace lumo {

using prog::PortStep;

Schedule::Schedule(QObject* parent) : QObject(parent) {
    // Single-shot: a running handler may nest an event loop, and a repeating timer stays silent in there.
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &Schedule::runDue);
}

void Schedule::setPerformer(std::function<void(const PortStep&)> performer) {
    performer_ = std::move(performer);
}

int Schedule::begin(bool keepsGasOff) {
    const int sequence = ++newest_;
    const std::vector<PortStep> pending = takeSteps(!keepsGasOff);
    for (const PortStep& off : prog::shutdownSteps()) {
        const bool wasPending = std::any_of(pending.begin(), pending.end(), [&off](const PortStep& step) {
            return step.role == PortStep::Role::SwitchOff && step.port == off.port;
        });
        if (wasPending) {
            settling_.push_back(off);
        }
    }
    while (!settling_.empty()) {
        const PortStep off = settling_.front();
        settling_.pop_front();
        performer_(off);
    }
    if (!pending.empty()) {
        emit pendingChanged();
    }
    return sequence;
}

void Schedule::drop() {
    settling_.clear();
    takeSteps(true);
}

void Schedule::perform(int sequence, const PortStep& step) {
    if (!isSuperseded(sequence)) {
        performer_(step);
    }
}

void Schedule::add(int sequence, qint64 baseMs, const std::vector<prog::TimedStep>& steps) {
    if (steps.empty() || isSuperseded(sequence)) {
        return;
    }
    for (const prog::TimedStep& timed : steps) {
        Entry entry;
        entry.step = timed.step;
        entries_.emplace(baseMs + timed.ms, std::move(entry));
    }
    arm();
    emit pendingChanged();
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

}  // namespace lumo
