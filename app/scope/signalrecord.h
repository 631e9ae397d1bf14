#pragma once

#include <QtGlobal>

#include <deque>
#include <vector>

namespace app {

/// The last minutes of some signals: their values at a time, and every change since then. What is too
/// old or too much is forgotten, the oldest first.
class SignalRecord {
public:
    struct Change {
        qint64 ms = 0;
        int signal = 0;
        double value = 0;
    };
    static constexpr qint64 keptMs = 10 * 60 * 1000;
    static constexpr int mostChanges = 300000;

    /// The values now, of all signals.
    SignalRecord(const std::vector<double>& values, qint64 nowMs);

    /// Changes come in the order of time.
    void add(const Change& change);
    const std::deque<Change>& changes() const { return changes_; }
    /// The earliest time that is known.
    qint64 beginMs() const { return beginMs_; }

    /// The position in changes() of the first one at a time or later.
    size_t firstAt(qint64 ms) const;
    /// The values just before a time, and at it; those at the beginning for earlier times.
    std::vector<double> before(qint64 ms) const { return valuesAt(firstAt(ms)); }
    std::vector<double> at(qint64 ms) const { return valuesAt(firstAt(ms + 1)); }

private:
    std::vector<double> valuesAt(size_t position) const;

    std::vector<double> first_;  ///< values at beginMs_
    std::deque<Change> changes_;
    qint64 beginMs_;
};

}  // namespace app
