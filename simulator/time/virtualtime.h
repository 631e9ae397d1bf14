#pragma once

#include "mendo/clock.h"

#include <QAbstractEventDispatcher>

#include <functional>
#include <memory>

namespace sim {

/// An event dispatcher on virtual time: when nothing else is to be done it jumps to the next timer,
/// so an hour passes in the time its handlers take, and every run is the same to the millisecond.
///
/// Timers due together fire in the order they were armed; a timer's handler is not entered again
/// while it runs (a repeating one loses the ticks that fall into its own handler's nested loop); zero
/// timers (interval 0) fire once a pass and never keep the clock from going on when a later timer is
/// due. Install before the QApplication is made; installs the host's clock too, which then starts at
/// 2024-01-01 08:00 local time. Sockets are not served. GUI thread only, but for wakeUp().
class VirtualTime : public QAbstractEventDispatcher, public mendo::Clock {
    Q_OBJECT
public:
    /// Makes the dispatcher and hands it to Qt, which owns it from then on.
    static VirtualTime* install();
    /// The installed one, null when the process runs on the wall clock.
    static VirtualTime* instance();

    qint64 nowMs() const;
    /// Dispatches until the virtual clock has gone on by `ms` and everything due then was handled.
    /// May be called inside a handler (nested) too. Like settle() and advanceUntil() it also deletes
    /// what deleteLater() was called for outside any event loop, unless it is nested.
    void advance(qint64 ms);
    /// Dispatches until `done` returns true or `limitMs` have passed; returns whether it was done.
    bool advanceUntil(const std::function<bool()>& done, qint64 limitMs);
    /// Posted events and what is due now, without the clock going on.
    void settle();
    /// Armed timers, for the check that none outlives its operation. Those of the tree below
    /// `ignored`, itself included, don't count.
    int armedTimers(const QObject* ignored = nullptr) const;
    /// Called when a loop would wait for ever: nothing posted, no timer armed. It has to post, arm or
    /// end something; when it does not, or without a handler, a warning is printed and every loop of
    /// the thread is ended with the exit code 1, as QCoreApplication::exit(1) does.
    void setStallHandler(std::function<void()> handler);
    /// Paces virtual time by the wall clock times `factor`; 0 (the default): as fast as can be. One
    /// that falls more than 200 ms behind does not catch up.
    void setPace(double factor);

    // mendo::Clock
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
    VirtualTime();
    ~VirtualTime() override;
    bool pass(QEventLoop::ProcessEventsFlags flags, bool wait, qint64 limit);
    void stall();
    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace sim
