#pragma once

#include "workcell/cellsignals.h"

#include <QObject>

#include <deque>
#include <vector>

namespace app {

/// The last minutes of some signals: their values at the beginning and every change since. The oldest
/// changes are dropped when they are too old or too many.
class SignalRecord {
public:
    struct Change {
        qint64 ms = 0;
        int signal = 0;
        double value = 0;
    };
    static constexpr qint64 keptMs = 10 * 60 * 1000;
    static constexpr int maxChanges = 300000;

    /// `values` are the current values of all signals.
    SignalRecord(const std::vector<double>& values, qint64 nowMs);

    /// Changes must be added in the order of time.
    void add(const Change& change);
    const std::deque<Change>& changes() const { return changes_; }
    /// The earliest known time.
    qint64 beginMs() const { return beginMs_; }

    /// Index of the first change at a time or later.
    size_t firstAt(qint64 ms) const;
    /// The values just before a time, and at it; for earlier times those at the beginning.
    std::vector<double> before(qint64 ms) const { return valuesAt(firstAt(ms)); }
    std::vector<double> at(qint64 ms) const { return valuesAt(firstAt(ms + 1)); }

private:
    std::vector<double> valuesAt(size_t position) const;

    std::vector<double> first_;  ///< values at beginMs_
    std::deque<Change> changes_;
    qint64 beginMs_;
};

/// A section of time in milliseconds of the host's clock.
struct TimeSpan {
    qint64 fromMs = 0, toMs = 0;

    qint64 length() const { return toMs - fromMs; }
};

/// Records all signals of the cell since the panel's start.
class SignalRecorder : public QObject {
    Q_OBJECT
public:
    SignalRecorder(sim::Controller* controller, sim::Cell* cell, workcell::TreeFollower* follower,
                   QObject* parent = nullptr);

    const workcell::CellSignals& cellSignals() const { return signals_; }
    const SignalRecord& record() const { return record_; }
    static qint64 nowMs();
    /// Added to a time of the record it gives milliseconds since 1970.
    qint64 epochMs() const { return epochMs_; }

    /// The whole record.
    TimeSpan all() const { return {record_.beginMs(), nowMs()}; }
    bool hasRun() const { return runMs_ >= 0; }
    /// From the beginning of the last run (or of the record, if later) to the last change, which includes the
    /// switching-off after the run. Empty when there was no run.
    TimeSpan lastRun() const;

private:
    void onChanged(int signal, double value);

    workcell::CellSignals signals_;
    SignalRecord record_;
    qint64 epochMs_;
    qint64 runMs_ = -1;  ///< when the last run began
};

}  // namespace app
