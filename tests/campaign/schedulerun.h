#pragma once

#include "campaign/invariants.h"
#include "campaign/scenario.h"

#include <functional>
#include <vector>

namespace campaign {

class World;

/// What came of one schedule.
struct Outcome {
    QStringList broken;  ///< what did not hold, in words, in the order in which it was broken
    std::vector<Event> events;
    int brokenAt = -1;  ///< how many events there were when the first invariant was broken, -1: none was
    qint64 virtualMs = 0;
};

/// Who wants to know of a schedule while it runs.
struct Observers {
    /// Each event as it is kept, inside what caused it.
    std::function<void(const Event&)> heard;
    /// The world is complete, nothing has happened yet.
    std::function<void(World&)> ready;
    /// The executor cannot be brought to rest. There is no way back to a clean beginning from below it:
    /// the process ends when this returns.
    std::function<void(const Outcome&)> stuck;
};

/// Runs one schedule from its beginning to the end of everything that it set going.
Outcome runSchedule(World& world, const Scenario& scenario, const Observers& observers = {});

/// Hands what Qt reports to the schedule that runs: nothing but misuse does.
void watchQt();

/// Where the second run of a schedule differs from the first, in words; empty: nowhere.
QString difference(const Outcome& first, const Outcome& second);

/// The last `count` events before the first invariant was broken (before the end when none was).
QStringList eventsBefore(const Outcome& outcome, int count);

}  // namespace campaign
