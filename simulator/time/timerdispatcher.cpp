#include "simulator/time/timerdispatcher.h"

#include <QCoreApplication>

namespace sim {

TimerDispatcher::~TimerDispatcher() {
    mendo::Clock::install(nullptr);
}

void TimerDispatcher::takeOver() {
    QCoreApplication::setEventDispatcher(this);
    mendo::Clock::install(this);
}

void TimerDispatcher::registerTimer(int timerId, int interval, Qt::TimerType type, QObject* object) {
    timers_.add(timerId, interval, type, object, elapsedMs());
}

bool TimerDispatcher::unregisterTimer(int timerId) {
    return timers_.remove(timerId);
}

bool TimerDispatcher::unregisterTimers(QObject* object) {
    return timers_.removeOf(object);
}

QList<QAbstractEventDispatcher::TimerInfo> TimerDispatcher::registeredTimers(QObject* object) const {
    return timers_.timersOf(object);
}

int TimerDispatcher::remainingTime(int timerId) {
    return timers_.remaining(timerId, elapsedMs());
}

}  // namespace sim
