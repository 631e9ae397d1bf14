#pragma once

#include <QAbstractEventDispatcher>
#include <QHash>
#include <QList>

#include <limits>
#include <set>
#include <tuple>

namespace sim {

/// The armed timers of an event dispatcher. The dispatcher keeps the clock, in whole milliseconds, and
/// passes it as `now`.
///
/// Timers due together fire in the order they were armed. A timer does not fire while its handler runs: a
/// repeating one loses the ticks that fall into a nested loop of its handler. Zero timers (interval 0)
/// fire once a pass.
class TimerTable {
public:
    static constexpr qint64 never = std::numeric_limits<qint64>::max();

    void add(int id, int interval, Qt::TimerType type, QObject* object, qint64 now);
    bool remove(int id);
    bool removeOf(const QObject* object);

    /// Fires the timers that are due, except those armed during the call. Returns how many fired.
    int fireDue(qint64 now);
    /// Whether a timer is due; a zero timer that has fired at `now` does not count.
    bool anythingDue(qint64 now) const;
    /// When the next timer is due, zero timers excepted; `never` without one.
    qint64 nextDue() const;
    /// Whether a zero timer would fire in the next pass.
    bool hasZeroTimer() const;

    QList<QAbstractEventDispatcher::TimerInfo> timersOf(const QObject* object) const;
    /// -1 for an unknown timer.
    int remaining(int id, qint64 now) const;
    /// Number of armed timers, except those of `ignored` and its descendants.
    int count(const QObject* ignored) const;

private:
    struct Timer {
        int interval = 0;
        Qt::TimerType type = Qt::CoarseTimer;
        QObject* object = nullptr;
        qint64 due = 0;
        quint64 order = 0;
        quint64 serial = 0;       ///< differs from that of a later timer with the same id
        qint64 firedAt = -1;      ///< when it fired last
        bool activating = false;  ///< its handler is on the stack
    };
    using Entry = std::tuple<qint64, quint64, int>;  // due, order, id

    void arm(int id, Timer& timer, qint64 due);
    void disarm(int id, const Timer& timer) { queue_.erase({timer.due, timer.order, id}); }
    void rearm(int id, Timer& timer, qint64 now);
    void fire(int id, Timer& timer, qint64 now);

    quint64 orders_ = 0;
    QHash<int, Timer> timers_;
    std::set<Entry> queue_;
};

}  // namespace sim
