#include "stations/inputwatch.h"

#include "equipment/signalio.h"

#include <algorithm>

using namespace prog;

namespace lumo {

namespace {

QList<ModuleObject*> stations() {
    return m(key::signalsConfig)->cmobjs();
}

}  // namespace

InputWatch::Baseline InputWatch::present(QObject* sender, const ModuleObject* station) const {
    Baseline now;
    now.source = readSignal(station, input_);
    now.edge = readEdge(station, input_);
    now.level = signalLevel(sender, now.source);
    return now;
}

void InputWatch::takeBaselines(QObject* sender) {
    clear();
    const QVector<int> none = sample(sender);
    Q_ASSERT(none.isEmpty());
    for (Baseline& baseline : baselines_) {
        baseline.followsRelease = !isStart(input_);
    }
}

void InputWatch::rearm(QObject* sender) {
    for (int row = 0; row < baselines_.size(); ++row) {
        rearm(sender, row);
    }
}

void InputWatch::rearm(QObject* sender, int row) {
    if (row >= 0 && row < baselines_.size()) {
        const Baseline now = present(sender, m(key::signalsConfig)->c(row));
        baselines_[row] = now;
    }
}

QVector<int> InputWatch::sample(QObject* sender) {
    const QList<ModuleObject*> all = stations();
    baselines_.resize(all.size());
    QVector<int> triggered;
    for (int row = 0; row < all.size(); ++row) {
        const Baseline now = present(sender, all[row]);
        Baseline& baseline = baselines_[row];
        if (!baseline.isOf(now)) {
            baseline = now;
        } else if (triggers(now.edge, baseline.level, now.level)) {
            triggered << row;
        } else if (baseline.followsRelease && !isAtTriggerLevel(now.edge, now.source, *now.level)) {
            baseline.level = now.level;
        }
    }
    return triggered;
}

bool InputWatch::anyAtTriggerLevel(QObject* sender) const {
    const QList<ModuleObject*> all = stations();
    return std::any_of(all.begin(), all.end(), [this, sender](const ModuleObject* station) {
        const Baseline now = present(sender, station);
        return isAtTriggerLevel(now.edge, now.source, *now.level);
    });
}

void InputWatch::clear() {
    baselines_.clear();
}

void InputWatch::removeRow(int row) {
    if (row >= 0 && row < baselines_.size()) {
        baselines_.removeAt(row);
    }
}

void InputWatch::insertRow(int row) {
    if (row >= 0 && row < baselines_.size()) {
        baselines_.insert(row, Baseline());
    }
}

}  // namespace lumo
