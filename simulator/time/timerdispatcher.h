#pragma once

#include "mendo/clock.h"
#include "simulator/time/timertable.h"

#include <QAbstractEventDispatcher>

#include <atomic>

namespace sim {

/// An event dispatcher whose timers run on a clock of its own, which is the host's clock as well. Subclasses
/// say how that clock passes (`elapsedMs`) and serve everything but timers.
class TimerDispatcher : public QAbstractEventDispatcher, public mendo::Clock {
    Q_OBJECT
public:
    // QAbstractEventDispatcher
    void registerTimer(int timerId, int interval, Qt::TimerType type, QObject* object) override;
    bool unregisterTimer(int timerId) override;
    bool unregisterTimers(QObject* object) override;
    QList<TimerInfo> registeredTimers(QObject* object) const override;
    int remainingTime(int timerId) override;
    void flush() override {}

protected:
    TimerDispatcher() = default;
    ~TimerDispatcher() override;
    /// Makes it the dispatcher and the clock of the process. Qt owns it from then on.
    void takeOver();

    TimerTable timers_;
    std::atomic<bool> interrupted_{false};
};

}  // namespace sim
