#include "app/scope/signalrecord.h"

#include <algorithm>

namespace app {

SignalRecord::SignalRecord(const std::vector<double>& values, qint64 nowMs)
    : first_(values), beginMs_(nowMs) {}

void SignalRecord::add(const Change& change) {
    changes_.push_back(change);
    while (int(changes_.size()) > mostChanges || changes_.front().ms < change.ms - keptMs) {
        const Change& oldest = changes_.front();
        first_[size_t(oldest.signal)] = oldest.value;
        beginMs_ = oldest.ms;
        changes_.pop_front();
    }
    // What led to the values at the beginning is no longer known.
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

}  // namespace app
