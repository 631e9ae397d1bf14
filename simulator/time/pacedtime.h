#pragma once

#include "simulator/time/timerdispatcher.h"

#include <QElapsedTimer>
#include <QVector>

#include <memory>

namespace sim {

/// An event dispatcher for the panel. All timers of the process run on a clock that is `factor` times as
/// fast as the wall clock; the host's clock is the same. Windows, input and sockets are served by the
/// platform's own dispatcher. The timers of tooltips and carets stay on the wall clock.
///
/// A timer fires at its own millisecond of this clock, even when the process is late. So the order and
/// times of timer events do not depend on the factor or the machine. Between two timers the clock follows
/// the wall clock, rounded up to the next millisecond, so that no timer fires early. A process that is
/// more than 200 ms (wall clock) late does not catch up: its clock runs slower.
///
/// Install before the QApplication is made. GUI thread only, except wakeUp() and interrupt().
class PacedTime : public TimerDispatcher {
    Q_OBJECT
public:
    /// Makes the dispatcher; Qt owns it.
    static PacedTime* install();

    /// Speed relative to the wall clock; 1 at first. Applies to armed timers, too.
    void setFactor(double factor);
    double factor() const { return factor_; }

    // mendo::Clock
    /// The wall clock's date and time plus the time gained by running faster.
    QDateTime now() const override;
    qint64 elapsedMs() const override;

    // QAbstractEventDispatcher
    bool processEvents(QEventLoop::ProcessEventsFlags flags) override;
    bool hasPendingEvents() override;
    void registerSocketNotifier(QSocketNotifier* notifier) override;
    void unregisterSocketNotifier(QSocketNotifier* notifier) override;
    void registerTimer(int timerId, int interval, Qt::TimerType type, QObject* object) override;
    bool unregisterTimer(int timerId) override;
    bool unregisterTimers(QObject* object) override;
    QList<TimerInfo> registeredTimers(QObject* object) const override;
    int remainingTime(int timerId) override;
    void wakeUp() override;
    void interrupt() override;
    void flush() override;

private:
    PacedTime();
    QAbstractEventDispatcher* platform();
    double wallMs() const;
    double gainedMs() const;
    void followWall() const;
    bool processPlatformEvents(QEventLoop::ProcessEventsFlags flags, bool timersOn);

    std::unique_ptr<QAbstractEventDispatcher> platform_;  ///< the platform's dispatcher
    QVector<QSocketNotifier*> earlyNotifiers_;            ///< registered before platform_ existed
    int alarmId_ = 0;                                     ///< platform timer that ends a sleep

    double factor_ = 1;
    QElapsedTimer wall_;
    double gainedMs_ = 0;          ///< time gained before the factor was set
    qint64 setAtMs_ = 0;           ///< this clock when the factor was set
    double setAtWallMs_ = 0;       ///< the wall clock when the factor was set
    mutable double anchorMs_ = 0;  ///< this clock and the wall clock where they were last tied together
    mutable double anchorWallMs_ = 0;
    mutable qint64 now_ = 0;
    mutable bool stale_ = false;  ///< now_ was not updated since a sleep
};

}  // namespace sim
