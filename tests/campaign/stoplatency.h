#pragma once

#include "campaign/event.h"

#include <QMap>
#include <QString>

#include <vector>

namespace campaign {

/// How long the laser stays enabled after a stop: from a loss of power, a pause, a quit or the loss of the
/// welding permission that meets an enabled laser until the write that disables it, in virtual ms.
class StopLatency {
public:
    /// How many stops of one kind met one situation, and what came of them.
    struct Count {
        qint64 atOnce = 0;     ///< in the same millisecond
        qint64 inItsRamp = 0;  ///< within the power ramp-down of the parameter set in force
        qint64 later = 0;
    };

    void begin() { *this = StopLatency(); }
    /// An event of the schedule; `situation` says in words where it finds the executor.
    void on(const Event& event, const QString& situation);

    /// Of the schedule that runs: by stop and by situation.
    [[nodiscard]] const QMap<QString, QMap<QString, Count>>& counts() const { return counts_; }

private:
    struct Stop {
        QString kind;
        QString situation;
        qint64 sinceMs;
        qint64 rampMs;
    };

    void onDisabled(qint64 ms);

    bool enabled_ = false;
    bool permitted_ = true;
    std::vector<Stop> open_;
    QMap<QString, QMap<QString, Count>> counts_;
};

}  // namespace campaign
