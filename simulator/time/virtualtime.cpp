#include "simulator/time/virtualtime.h"

#include <qpa/qwindowsysteminterface.h>

#include <QCoreApplication>
#include <QDebug>
#include <QElapsedTimer>
#include <QScopedValueRollback>
#include <QThread>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <mutex>

namespace sim {

namespace {

constexpr qint64 never = TimerTable::never;
// Handlers that post an event or arm a zero timer without end must not stop the clock.
constexpr int passesPerInstant = 100000;
constexpr qint64 lagMs = 200;

VirtualTime* installed = nullptr;

}  // namespace

struct VirtualTime::Private {
    Private(TimerTable& table, std::atomic<bool>& interruption) : timers(table), interrupted(interruption) {}

    TimerTable& timers;
    std::atomic<bool>& interrupted;
    qint64 now = 0;
    std::atomic<bool> woken{false};
    int handlers = 0;    ///< event and timer handlers on the stack
    bool quiet = false;  ///< inside a nested advance(): no aboutToBlock
    int passes = 0;      ///< at this instant

    double pace = 0;
    QElapsedTimer wall;
    qint64 anchorMs = 0;  ///< virtual time at which `wall` was started
    std::mutex mutex;
    std::condition_variable wake;

    int fireDue();
    bool anythingDue() const { return timers.anythingDue(now); }
    void sleepUntil(qint64 dueMs);
    bool jump(qint64 limit);
};

int VirtualTime::Private::fireDue() {
    ++handlers;
    const int fired = timers.fireDue(now);
    --handlers;
    return fired;
}

/// Sleeps until the wall clock has reached a time of the virtual clock; ends early when woken.
void VirtualTime::Private::sleepUntil(qint64 dueMs) {
    const auto wallMs = [this](qint64 virtualMs) { return qint64(std::ceil((virtualMs - anchorMs) / pace)); };
    const qint64 left = wallMs(dueMs) - wall.elapsed();
    if (left < -lagMs) {
        anchorMs = dueMs;
        wall.restart();
    } else if (left > 0) {
        std::unique_lock<std::mutex> lock(mutex);
        wake.wait_for(lock, std::chrono::milliseconds(left),
                      [this] { return woken.load() || interrupted.load(); });
    }
}

/// Moves the clock to the next timer, but not past `limit`. False when it cannot move.
bool VirtualTime::Private::jump(qint64 limit) {
    const qint64 due = timers.nextDue();
    if (due == never && limit == never) {
        return false;
    }
    const qint64 target = std::min(due, limit);
    qint64 reached = target;
    if (pace > 0) {
        sleepUntil(target);
        reached = std::min(target, anchorMs + qint64(wall.elapsed() * pace));
    }
    now = std::max(now, reached);
    passes = 0;
    return true;
}

VirtualTime* VirtualTime::install() {
    if (installed) {
        return installed;
    }
    installed = new VirtualTime;
    installed->takeOver();
    return installed;
}

VirtualTime* VirtualTime::instance() {
    return installed;
}

VirtualTime::VirtualTime() : d_(std::make_unique<Private>(timers_, interrupted_)) {}

VirtualTime::~VirtualTime() {
    installed = nullptr;
}

qint64 VirtualTime::nowMs() const {
    return d_->now;
}

QDateTime VirtualTime::now() const {
    static const QDateTime start(QDate(2024, 1, 1), QTime(8, 0));
    return start.addMSecs(d_->now);
}

qint64 VirtualTime::elapsedMs() const {
    return d_->now;
}

bool VirtualTime::pass(QEventLoop::ProcessEventsFlags flags, bool wait, qint64 limit) {
    const bool timersOn = !(flags & QEventLoop::X11ExcludeTimers);
    interrupted_ = false;
    ++d_->passes;
    emit awake();

    bool did = d_->woken.exchange(false);
    ++d_->handlers;
    QCoreApplication::sendPostedEvents();
    did |= QWindowSystemInterface::sendWindowSystemEvents(flags);
    --d_->handlers;

    const bool endless = d_->passes >= passesPerInstant;
    const bool mayWait = wait && !interrupted_ && (!d_->woken || endless);
    if (mayWait && !d_->quiet) {
        emit aboutToBlock();
    }
    if (interrupted_) {
        return did;
    }

    bool stuck = false;
    if (mayWait && (endless || (!did && !d_->woken && !(timersOn && d_->anythingDue())))) {
        stuck = !timersOn || !d_->jump(limit);
    }
    const int fired = timersOn ? d_->fireDue() : 0;
    if (stuck && (fired == 0 || endless)) {
        stall();
    }
    return did || fired > 0;
}

void VirtualTime::stall() {
    d_->passes = 0;
    qWarning("Virtual time stands still: something is awaited and nothing is pending.");
    QCoreApplication::exit(1);
}

void VirtualTime::advance(qint64 ms) {
    advanceUntil([] { return false; }, ms);
}

bool VirtualTime::advanceUntil(const std::function<bool()>& done, qint64 limitMs) {
    const bool nested = d_->handlers > 0;
    const QScopedValueRollback<bool> quiet(d_->quiet, d_->quiet || nested);
    const qint64 target = d_->now + std::max<qint64>(limitMs, 0);
    bool settled = false;
    while (!done()) {
        if (settled) {
            return false;
        }
        pass(QEventLoop::AllEvents, true, target);
        if (!nested && QThread::currentThread()->loopLevel() == 0) {
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        settled = d_->now >= target && ((!d_->woken && !d_->anythingDue()) || d_->passes >= passesPerInstant);
    }
    return true;
}

void VirtualTime::settle() {
    advance(0);
}

int VirtualTime::armedTimers(const QObject* ignored) const {
    return timers_.count(ignored);
}

void VirtualTime::setPace(double factor) {
    d_->pace = std::max(factor, 0.0);
    d_->anchorMs = d_->now;
    d_->wall.start();
}

bool VirtualTime::processEvents(QEventLoop::ProcessEventsFlags flags) {
    return pass(flags, flags & QEventLoop::WaitForMoreEvents, never);
}

bool VirtualTime::hasPendingEvents() {
    return d_->woken || d_->anythingDue() || QWindowSystemInterface::windowSystemEventsQueued() > 0;
}

// The other end of a socket would not follow virtual time.
void VirtualTime::registerSocketNotifier(QSocketNotifier*) {}
void VirtualTime::unregisterSocketNotifier(QSocketNotifier*) {}

void VirtualTime::wakeUp() {
    d_->woken = true;
    // Without the lock, the notification could come between the sleeper's test and its sleep.
    { const std::lock_guard<std::mutex> lock(d_->mutex); }
    d_->wake.notify_one();
}

void VirtualTime::interrupt() {
    interrupted_ = true;
    wakeUp();
}

}  // namespace sim
