#include "app/scope/signalrecorder.h"

#include "mendo/clock.h"

#include <algorithm>

namespace app {

namespace {

std::vector<double> valuesOf(const workcell::CellSignals& cellSignals) {
    std::vector<double> values;
    for (const workcell::CellSignal& signal : cellSignals.all()) {
        values.push_back(signal.value);
    }
    return values;
}

}  // namespace

SignalRecorder::SignalRecorder(sim::Controller* controller, sim::Cell* cell, workcell::TreeFollower* follower,
                               QObject* parent)
    : QObject(parent),
      signals_(controller, cell, follower),
      record_(valuesOf(signals_), nowMs()),
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
