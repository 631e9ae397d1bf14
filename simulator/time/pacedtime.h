#pragma once

#include "mendo/clock.h"
#include "simulator/time/timertable.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QVector>

#include <atomic>
#include <memory>

namespace app {

/// An event dispatcher for the panel: windows, input and sockets as the platform's own serves them, and
/// every timer of the process, the package's and Qt's own too, on a clock that runs `factor` times as
/// fast as the wall clock. It is the host's clock as well. Tooltips and carets keep the wall clock's time:
/// they are for the operator, not for the cell.
///
/// A timer fires at its own millisecond of that clock, however late the wall clock has become: the
/// order and the times of all that timers do are those of a real second, at any factor and on any
/// machine. Between two timers the clock follows the wall clock, rounded up to its next millisecond, so
/// that no timer fires early. A process that cannot keep up slows the clock: what is more than 200 ms
/// (of the wall clock) late is not caught up.
///
/// Install before the QApplication is made. GUI thread only, but for wakeUp() and interrupt().
class PacedTime : public QAbstractEventDispatcher, public mendo::Clock {
    Q_OBJECT
public:
    /// Makes the dispatcher and hands it to Qt, which owns it from then on.
    static PacedTime* install();

    /// How many times as fast as the wall clock; 1 at first. Armed timers go on at the new pace.
    void setFactor(double factor);
    double factor() const { return factor_; }

    // mendo::Clock
    /// The wall clock's date and time, ahead by what was gained while the time ran faster.
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
    ~PacedTime() override;
    QAbstractEventDispatcher* platform();
    double wallMs() const;
    double gainedMs() const;
    void followWall() const;
    bool serve(QEventLoop::ProcessEventsFlags flags, bool timersOn);

    /// The platform's own, which does everything but timers.
    std::unique_ptr<QAbstractEventDispatcher> platform_;
    QVector<QSocketNotifier*> early_;  ///< registered before there was a platform
    int alarmId_ = 0;                  ///< the platform's timer that ends a sleep
    std::atomic<bool> interrupted_{false};

    sim::TimerTable timers_;
    double factor_ = 1;
    QElapsedTimer wall_;
    double gainedMs_ = 0;          ///< until the factor was set
    qint64 setAtMs_ = 0;           ///< the clock when the factor was set
    double setAtWallMs_ = 0;       ///< and the wall clock
    mutable double anchorMs_ = 0;  ///< the clock follows the wall clock from here
    mutable double anchorWallMs_ = 0;
    mutable qint64 now_ = 0;
    mutable bool behind_ = false;  ///< the clock has not followed the wall clock since a sleep
};

}  // namespace app
