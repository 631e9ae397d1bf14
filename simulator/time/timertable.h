#pragma once

#include <QAbstractEventDispatcher>
#include <QHash>
#include <QList>

#include <limits>
#include <set>
#include <tuple>

namespace sim {

/// The armed timers of an event dispatcher, due at whole milliseconds of a clock that the dispatcher
/// keeps and hands in as `now`.
///
/// Timers due together fire in the order they were armed; a timer's handler is not entered again while
/// it runs (a repeating one loses the ticks that fall into its own handler's nested loop); zero timers
/// (interval 0) fire once a pass.
class TimerTable {
public:
    static constexpr qint64 never = std::numeric_limits<qint64>::max();

    void add(int id, int interval, Qt::TimerType type, QObject* object, qint64 now);
    bool remove(int id);
    bool removeOf(const QObject* object);

    /// Fires what is due, but nothing that is armed meanwhile. Returns how many fired.
    int fireDue(qint64 now);
    /// Whether something is due that has not fired at this instant as a zero timer.
    bool anythingDue(qint64 now) const;
    /// When the next timer is due that is no zero timer; never for none.
    qint64 nextDue() const;
    /// Whether a zero timer would fire in the next pass.
    bool hasZeroTimer() const;

    QList<QAbstractEventDispatcher::TimerInfo> timersOf(const QObject* object) const;
    /// -1 for an unknown timer.
    int remaining(int id, qint64 now) const;
    /// Armed timers but for those of the tree below `ignored`, itself included.
    int count(const QObject* ignored) const;

private:
    struct Timer {
        int interval = 0;
        Qt::TimerType type = Qt::CoarseTimer;
        QObject* object = nullptr;
        qint64 due = 0;
        quint64 order = 0;
        quint64 serial = 0;       ///< tells a timer from a later one that got the same id
        qint64 firedAt = -1;      ///< the instant at which it fired last
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
