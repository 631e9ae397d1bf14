#include "binding/inputwatch.h"

#include "module/keys.h"

namespace lumo {

void InputWatch::takeBaselines(QObject* sender) {
    clear();
    const QVector<int> none = look(sender);
    Q_ASSERT(none.isEmpty());
}

QVector<int> InputWatch::look(QObject* sender) {
    const QList<ModuleObject*> stations = m(key::signalsConfig)->cmobjs();
    baselines_.resize(stations.size());
    QVector<int> triggered;
    for (int row = 0; row < stations.size(); ++row) {
        const bool level = inputLevel(sender, readSource(stations[row], input_));
        Level& baseline = baselines_[row];
        if (!baseline) {
            baseline = level;
        } else if (triggers(readEdge(stations[row], input_), baseline, level)) {
            triggered << row;
        }
    }
    return triggered;
}

void InputWatch::clear() {
    baselines_.clear();
}

void InputWatch::forget(int row) {
    if (row >= 0 && row < baselines_.size()) {
        baselines_[row].reset();
    }
}

void InputWatch::removeRow(int row) {
    if (row >= 0 && row < baselines_.size()) {
        baselines_.removeAt(row);
    }
}

}  // namespace lumo
