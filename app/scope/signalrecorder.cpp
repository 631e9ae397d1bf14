#include "app/scope/signalrecorder.h"

#include "mendo/clock.h"

#include <algorithm>

namespace app {

SignalRecord::SignalRecord(const std::vector<double>& values, qint64 nowMs)
    : first_(values), beginMs_(nowMs) {}

void SignalRecord::add(const Change& change) {
    changes_.push_back(change);
    while (int(changes_.size()) > maxChanges || changes_.front().ms < change.ms - keptMs) {
        const Change& oldest = changes_.front();
        first_[size_t(oldest.signal)] = oldest.value;
        beginMs_ = oldest.ms;
        changes_.pop_front();
    }
    // The record covers at most keptMs, also when nothing was dropped.
    beginMs_ = std::max(beginMs_, change.ms - keptMs);
}

size_t SignalRecord::firstAt(qint64 ms) const {
    const auto first = std::lower_bound(changes_.begin(), changes_.end(), ms,
                                        [](const Change& change, qint64 time) { return change.ms < time; });
    return size_t(first - changes_.begin());
}

std::vector<double> SignalRecord::valuesAt(size_t position) const {
    std::vector<double> values = first_;
    for (size_t i = 0; i < position; ++i) {
        values[size_t(changes_[i].signal)] = changes_[i].value;
    }
    return values;
}

SignalRecorder::SignalRecorder(sim::Controller* controller, sim::Cell* cell, workcell::TreeFollower* follower,
                               QObject* parent)
    : QObject(parent),
      signals_(controller, cell, follower),
      record_(signals_.values(), nowMs()),
      epochMs_(mendo::Clock::current().now().toMSecsSinceEpoch() - nowMs()) {
    connect(&signals_, &workcell::CellSignals::changed, this, &SignalRecorder::onChanged);
}

qint64 SignalRecorder::nowMs() {
    return mendo::Clock::current().elapsedMs();
}

TimeSpan SignalRecorder::lastRun() const {
    if (!hasRun()) {
        return {};
    }
    const auto& changes = record_.changes();
    return {std::max(runMs_, record_.beginMs()), changes.empty() ? runMs_ : changes.back().ms};
}

void SignalRecorder::onChanged(int signal, double value) {
    const qint64 now = nowMs();
    record_.add({now, signal, value});
    if (value != 0 && signals_.all()[size_t(signal)].name == workcell::signalname::busy) {
        runMs_ = now;
    }
}

}  // namespace app
