#include "simulator/time/timertable.h"

#include <QCoreApplication>
#include <QTimerEvent>

#include <algorithm>

namespace sim {

namespace {

bool isBelow(const QObject* object, const QObject* root) {
    while (object && object != root) {
        object = object->parent();
    }
    return object != nullptr;
}

}  // namespace

void TimerTable::add(int id, int interval, Qt::TimerType type, QObject* object, qint64 now) {
    Timer timer;
    timer.interval = std::max(interval, 0);
    timer.type = type;
    timer.object = object;
    arm(id, timer, now + timer.interval);
    timer.serial = timer.order;
    timers_.insert(id, timer);
}

bool TimerTable::remove(int id) {
    const auto found = timers_.find(id);
    if (found == timers_.end()) {
        return false;
    }
    disarm(id, *found);
    timers_.erase(found);
    return true;
}

bool TimerTable::removeOf(const QObject* object) {
    bool any = false;
    for (auto timer = timers_.begin(); timer != timers_.end();) {
        if (timer->object == object) {
            disarm(timer.key(), *timer);
            timer = timers_.erase(timer);
            any = true;
        } else {
            ++timer;
        }
    }
    return any;
}

void TimerTable::arm(int id, Timer& timer, qint64 due) {
    timer.due = due;
    timer.order = ++orders_;
    queue_.emplace(due, timer.order, id);
}

void TimerTable::rearm(int id, Timer& timer, qint64 now) {
    disarm(id, timer);
    if (timer.interval <= 0) {
        arm(id, timer, now);
        return;
    }
    // Lost ticks do not shift the later ones.
    const qint64 missed = (now - timer.due) / timer.interval;
    arm(id, timer, timer.due + (missed + 1) * timer.interval);
}

void TimerTable::fire(int id, Timer& timer, qint64 now) {
    timer.activating = true;
    timer.firedAt = now;
    const quint64 serial = timer.serial;
    QTimerEvent event(id);
    QCoreApplication::sendEvent(timer.object, &event);
    // `timer` may be invalid: the handler may have stopped or replaced it, or the hash has been moved.
    const auto found = timers_.find(id);
    if (found != timers_.end() && found->serial == serial) {
        found->activating = false;
    }
}

int TimerTable::fireDue(qint64 now) {
    const quint64 last = orders_;  // timers armed from here on wait for the next pass
    int fired = 0;
    for (;;) {
        auto entry = queue_.begin();
        while (entry != queue_.end() && std::get<0>(*entry) <= now && std::get<1>(*entry) > last) {
            ++entry;
        }
        if (entry == queue_.end() || std::get<0>(*entry) > now) {
            return fired;
        }
        const int id = std::get<2>(*entry);
        Timer& timer = timers_[id];
        rearm(id, timer, now);
        if (timer.activating) {
            continue;
        }
        fire(id, timer, now);
        ++fired;
    }
}

bool TimerTable::anythingDue(qint64 now) const {
    for (const Entry& entry : queue_) {
        if (std::get<0>(entry) > now) {
            return false;
        }
        const Timer& timer = *timers_.constFind(std::get<2>(entry));
        if (!timer.activating && (timer.interval > 0 || timer.firedAt != now)) {
            return true;
        }
    }
    return false;
}

qint64 TimerTable::nextDue() const {
    for (const Entry& entry : queue_) {
        const Timer& timer = *timers_.constFind(std::get<2>(entry));
        if (!timer.activating && timer.interval > 0) {
            return std::get<0>(entry);
        }
    }
    return never;
}

bool TimerTable::hasZeroTimer() const {
    return std::any_of(timers_.cbegin(), timers_.cend(),
                       [](const Timer& timer) { return timer.interval == 0 && !timer.activating; });
}

QList<QAbstractEventDispatcher::TimerInfo> TimerTable::timersOf(const QObject* object) const {
    QList<QAbstractEventDispatcher::TimerInfo> infos;
    for (const Entry& entry : queue_) {
        const int id = std::get<2>(entry);
        const Timer& timer = *timers_.constFind(id);
        if (timer.object == object) {
            infos.append(QAbstractEventDispatcher::TimerInfo(id, timer.interval, timer.type));
        }
    }
    return infos;
}

int TimerTable::remaining(int id, qint64 now) const {
    const auto found = timers_.constFind(id);
    return found == timers_.constEnd() ? -1 : int(std::max<qint64>(found->due - now, 0));
}

int TimerTable::count(const QObject* ignored) const {
    return int(std::count_if(timers_.cbegin(), timers_.cend(), [ignored](const Timer& timer) {
        return !ignored || !isBelow(timer.object, ignored);
    }));
}

}  // namespace sim
