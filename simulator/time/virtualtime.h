#pragma once

#include "simulator/time/timerdispatcher.h"

#include <functional>
#include <memory>

namespace sim {

/// An event dispatcher on virtual time: when nothing is pending, the clock jumps to the next timer. So an
/// hour takes as long as its handlers, and every run is the same to the millisecond.
///
/// A loop that would wait for ever (nothing posted, no timer armed) prints a warning and ends all loops of
/// the thread by QCoreApplication::exit(1).
///
/// Timers fire in the order that TimerTable describes; zero timers never stop the clock. The host's clock
/// is the same and starts at 2024-01-01 08:00 local time. Sockets are not served. Install before the
/// QApplication is made. GUI thread only, except wakeUp().
class VirtualTime : public TimerDispatcher {
    Q_OBJECT
public:
    /// Makes the dispatcher; Qt owns it.
    static VirtualTime* install();
    /// The installed dispatcher; null when the process runs on the wall clock.
    static VirtualTime* instance();

    qint64 nowMs() const;
    /// Dispatches events until the clock has advanced by `ms` and everything due then is handled. A
    /// handler may call it, too. Outside any event loop it also carries out deleteLater(), as
    /// advanceUntil() and settle() do.
    void advance(qint64 ms);
    /// Dispatches events until `done` returns true or `limitMs` have passed; returns the last `done`.
    bool advanceUntil(const std::function<bool()>& done, qint64 limitMs);
    /// Dispatches what is posted or due now; the clock does not advance.
    void settle();
    /// Number of armed timers, except those of `ignored` and its descendants.
    int armedTimers(const QObject* ignored = nullptr) const;
    /// Limits virtual time to the wall clock times `factor`; 0 (the default) is no limit. A process that
    /// is more than 200 ms late does not catch up.
    void setPace(double factor);

    // mendo::Clock
    QDateTime now() const override;
    qint64 elapsedMs() const override;

    // QAbstractEventDispatcher
    bool processEvents(QEventLoop::ProcessEventsFlags flags) override;
    bool hasPendingEvents() override;
    void registerSocketNotifier(QSocketNotifier* notifier) override;
    void unregisterSocketNotifier(QSocketNotifier* notifier) override;
    void wakeUp() override;
    void interrupt() override;

private:
    VirtualTime();
    ~VirtualTime() override;
    bool pass(QEventLoop::ProcessEventsFlags flags, bool wait, qint64 limit);
    void stall();
    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace sim
