#include "simulator/time/pacedtime.h"

#include <private/qguiapplication_p.h>
#include <qpa/qplatformintegration.h>

#include <QCoreApplication>

#include <algorithm>
#include <cmath>
#include <limits>

namespace sim {

namespace {

constexpr double lagMs = 200;
constexpr double nsPerMs = 1e6;
constexpr double roundingError = 1e-6;  // of a whole number of milliseconds

/// Tooltips (QApplication times when they appear) and blinking carets.
bool keepsWallClock(const QObject* object) {
    return object == QCoreApplication::instance() || object->inherits("QTipLabel") ||
           object->inherits("QWidgetLineControl") || object->inherits("QWidgetTextControl");
}

}  // namespace

PacedTime* PacedTime::install() {
    auto* time = new PacedTime;
    time->takeOver();
    return time;
}

PacedTime::PacedTime() {
    wall_.start();
}

// --- The clock -----------------------------------------------------------------------------------

double PacedTime::wallMs() const {
    return double(wall_.nsecsElapsed()) / nsPerMs;
}

/// Advances the clock to the wall clock, but not past a timer that has not fired.
void PacedTime::followWall() const {
    stale_ = false;
    const double wall = wallMs();
    const double exact = anchorMs_ + (wall - anchorWallMs_) * factor_;
    const qint64 due = timers_.nextDue();
    if (due == TimerTable::never) {
        now_ = std::max(now_, qint64(std::ceil(exact - roundingError)));
        return;
    }
    // The clock shows a timer's own millisecond only when the wall clock has reached it.
    now_ = std::max(now_, exact >= due - roundingError ? due : std::min(qint64(std::ceil(exact)), due - 1));
    if (exact - due > lagMs * factor_) {
        anchorMs_ = double(now_);
        anchorWallMs_ = wall;
    }
}

qint64 PacedTime::elapsedMs() const {
    if (stale_) {
        followWall();
    }
    return now_;
}

void PacedTime::setFactor(double factor) {
    followWall();
    gainedMs_ = gainedMs();
    setAtMs_ = now_;
    setAtWallMs_ = wallMs();
    anchorMs_ += (setAtWallMs_ - anchorWallMs_) * factor_;
    anchorWallMs_ = setAtWallMs_;
    factor_ = factor;
    wakeUp();
}

double PacedTime::gainedMs() const {
    if (factor_ == 1) {  // at normal speed a late process must not move the date back
        return gainedMs_;
    }
    return gainedMs_ + double(elapsedMs() - setAtMs_) - (wallMs() - setAtWallMs_);
}

QDateTime PacedTime::now() const {
    return QDateTime::currentDateTime().addMSecs(qint64(gainedMs()));
}

// --- The dispatcher ------------------------------------------------------------------------------

/// Null until the QApplication has made the platform integration.
QAbstractEventDispatcher* PacedTime::platform() {
    const QPlatformIntegration* integration = QGuiApplicationPrivate::platformIntegration();
    if (platform_ || !integration) {
        return platform_.get();
    }
    platform_.reset(integration->createEventDispatcher());
    connect(platform_.get(), &QAbstractEventDispatcher::awake, this, &QAbstractEventDispatcher::awake);
    connect(platform_.get(), &QAbstractEventDispatcher::aboutToBlock, this,
            &QAbstractEventDispatcher::aboutToBlock);
    platform_->startingUp();
    for (QSocketNotifier* notifier : qAsConst(earlyNotifiers_)) {
        platform_->registerSocketNotifier(notifier);
    }
    earlyNotifiers_.clear();
    alarmId_ = platform_->registerTimer(1, Qt::PreciseTimer, this);
    platform_->unregisterTimer(alarmId_);
    return platform_.get();
}

bool PacedTime::processEvents(QEventLoop::ProcessEventsFlags flags) {
    if (!platform()) {
        return false;
    }
    const bool timersOn = !(flags & QEventLoop::X11ExcludeTimers);
    interrupted_ = false;
    followWall();
    const bool served = processPlatformEvents(flags, timersOn);
    if (interrupted_ || !timersOn) {
        return served;
    }
    followWall();
    return timers_.fireDue(now_) > 0 || served;
}

/// Serves everything except timers. Sleeps until the next timer when `flags` allow it and nothing is
/// pending.
bool PacedTime::processPlatformEvents(QEventLoop::ProcessEventsFlags flags, bool timersOn) {
    const qint64 due = timersOn ? timers_.nextDue() : TimerTable::never;
    if (!(flags & QEventLoop::WaitForMoreEvents) || due <= now_ || (timersOn && timers_.hasZeroTimer())) {
        return platform_->processEvents(flags & ~QEventLoop::WaitForMoreEvents);
    }
    if (due != TimerTable::never) {
        const double exact = anchorMs_ + (wallMs() - anchorWallMs_) * factor_;
        const double sleepMs = std::ceil((double(due) - exact) / factor_);
        platform_->unregisterTimer(alarmId_);  // an outer loop may have set it
        platform_->registerTimer(alarmId_,
                                 int(std::clamp(sleepMs, 0.0, double(std::numeric_limits<int>::max()))),
                                 Qt::PreciseTimer, this);
    }
    stale_ = true;
    const bool served = platform_->processEvents(flags);
    platform_->unregisterTimer(alarmId_);
    return served;
}

bool PacedTime::hasPendingEvents() {
    return platform_ && platform_->hasPendingEvents();
}

void PacedTime::registerSocketNotifier(QSocketNotifier* notifier) {
    if (platform()) {
        platform_->registerSocketNotifier(notifier);
    } else {
        earlyNotifiers_.append(notifier);
    }
}

void PacedTime::unregisterSocketNotifier(QSocketNotifier* notifier) {
    earlyNotifiers_.removeAll(notifier);
    if (platform_) {
        platform_->unregisterSocketNotifier(notifier);
    }
}

void PacedTime::registerTimer(int timerId, int interval, Qt::TimerType type, QObject* object) {
    if (keepsWallClock(object) && platform()) {
        platform_->registerTimer(timerId, interval, type, object);
    } else {
        TimerDispatcher::registerTimer(timerId, interval, type, object);
    }
}

bool PacedTime::unregisterTimer(int timerId) {
    return TimerDispatcher::unregisterTimer(timerId) || (platform_ && platform_->unregisterTimer(timerId));
}

bool PacedTime::unregisterTimers(QObject* object) {
    const bool any = TimerDispatcher::unregisterTimers(object);
    return (platform_ && platform_->unregisterTimers(object)) || any;
}

QList<QAbstractEventDispatcher::TimerInfo> PacedTime::registeredTimers(QObject* object) const {
    const QList<TimerInfo> paced = TimerDispatcher::registeredTimers(object);
    return platform_ ? paced + platform_->registeredTimers(object) : paced;
}

int PacedTime::remainingTime(int timerId) {
    const int paced = TimerDispatcher::remainingTime(timerId);
    return paced < 0 && platform_ ? platform_->remainingTime(timerId) : paced;
}

void PacedTime::wakeUp() {
    if (platform_) {
        platform_->wakeUp();
    }
}

void PacedTime::interrupt() {
    interrupted_ = true;
    if (platform_) {
        platform_->interrupt();
    }
}

void PacedTime::flush() {
    if (platform_) {
        platform_->flush();
    }
}

}  // namespace sim
