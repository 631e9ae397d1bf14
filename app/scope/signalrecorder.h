#pragma once

#include "app/scope/signalrecord.h"
#include "workcell/cellsignals.h"

#include <QObject>

namespace app {

/// A section of time, milliseconds of the host's clock.
struct TimeSpan {
    qint64 fromMs = 0, toMs = 0;

    qint64 length() const { return toMs - fromMs; }
};

/// Records all signals of the cell from the start of the panel on.
class SignalRecorder : public QObject {
    Q_OBJECT
public:
    SignalRecorder(sim::Controller* controller, sim::Cell* cell, workcell::TreeFollower* follower,
                   QObject* parent = nullptr);

    const workcell::CellSignals& cellSignals() const { return signals_; }
    const SignalRecord& record() const { return record_; }
    static qint64 nowMs();
    /// What is to be added to a time of the record to get milliseconds since 1970.
    qint64 epochMs() const { return epochMs_; }

    /// All that is recorded.
    TimeSpan all() const { return {record_.beginMs(), nowMs()}; }
    bool hasRun() const { return runMs_ >= 0; }
    /// The last run, with what was switched off after it: from its beginning (or the record's, if that is
    /// later) to the last change. Empty when there was none.
    TimeSpan lastRun() const;

private:
    void onChanged(int signal, double value);

    workcell::CellSignals signals_;
    SignalRecord record_;
    qint64 epochMs_;
    qint64 runMs_ = -1;  ///< when the last run began
};

}  // namespace app
