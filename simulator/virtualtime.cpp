#include "simulator/virtualtime.h"

#include <qpa/qwindowsysteminterface.h>

#include <QCoreApplication>
#include <QDebug>
#include <QElapsedTimer>
#include <QHash>
#include <QScopedValueRollback>
#include <QThread>
#include <QTimerEvent>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <limits>
#include <mutex>
#include <set>
#include <tuple>

namespace sim {

namespace {

constexpr qint64 kNever = std::numeric_limits<qint64>::max();
// Handlers that post or arm the next one at once, without end, must not freeze the clock either.
constexpr int kPassesPerInstant = 100000;
constexpr qint64 kLagMs = 200;

VirtualTime* installed = nullptr;

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

bool isBelow(const QObject* object, const QObject* root) {
    while (object && object != root)
        object = object->parent();
    return object != nullptr;
}

}  // namespace

struct VirtualTime::Private {
    qint64 now = 0;
    quint64 orders = 0;
    QHash<int, Timer> timers;
    std::set<Entry> queue;
    std::atomic<bool> woken{false};
    std::atomic<bool> interrupted{false};
    int handlers = 0;    ///< event and timer handlers on the stack
    bool quiet = false;  ///< inside a nested advance(): no aboutToBlock
    int passes = 0;      ///< at this instant
    std::function<void()> stalled;

    double pace = 0;
    QElapsedTimer wall;
    qint64 anchorMs = 0;  ///< virtual time at which `wall` was started
    std::mutex mutex;
    std::condition_variable wake;

    void arm(int id, Timer& timer, qint64 due) {
        timer.due = due;
        timer.order = ++orders;
        queue.emplace(due, timer.order, id);
    }
    void disarm(int id, const Timer& timer) { queue.erase({timer.due, timer.order, id}); }
    void rearm(int id, Timer& timer);
    void fire(int id, Timer& timer);
    int fireDue();
    bool anythingDue() const;
    qint64 nextDue() const;
    void sleepUntil(qint64 dueMs);
    bool jump(qint64 limit);
};

void VirtualTime::Private::rearm(int id, Timer& timer) {
    disarm(id, timer);
    if (timer.interval <= 0) {
        arm(id, timer, now);
        return;
    }
    // Ticks that were lost keep the rhythm.
    const qint64 missed = (now - timer.due) / timer.interval;
    arm(id, timer, timer.due + (missed + 1) * timer.interval);
}

void VirtualTime::Private::fire(int id, Timer& timer) {
    timer.activating = true;
    timer.firedAt = now;
    const quint64 serial = timer.serial;
    QTimerEvent event(id);
    ++handlers;
    QCoreApplication::sendEvent(timer.object, &event);
    --handlers;
    // The handler may have stopped or replaced the timer, and the hash may have moved it.
    const auto found = timers.find(id);
    if (found != timers.end() && found->serial == serial)
        found->activating = false;
}

int VirtualTime::Private::fireDue() {
    const quint64 last = orders;  // what is armed from here on waits for the next pass
    int fired = 0;
    for (;;) {
        auto entry = queue.begin();
        while (entry != queue.end() && std::get<0>(*entry) <= now && std::get<1>(*entry) > last)
            ++entry;
        if (entry == queue.end() || std::get<0>(*entry) > now)
            return fired;
        const int id = std::get<2>(*entry);
        Timer& timer = timers[id];
        rearm(id, timer);
        if (timer.activating)
            continue;
        fire(id, timer);
        ++fired;
    }
}

bool VirtualTime::Private::anythingDue() const {
    for (const Entry& entry : queue) {
        if (std::get<0>(entry) > now)
            return false;
        const Timer& timer = *timers.constFind(std::get<2>(entry));
        if (!timer.activating && (timer.interval > 0 || timer.firedAt != now))
            return true;
    }
    return false;
}

qint64 VirtualTime::Private::nextDue() const {
    for (const Entry& entry : queue) {
        const Timer& timer = *timers.constFind(std::get<2>(entry));
        if (!timer.activating && timer.interval > 0)
            return std::get<0>(entry);
    }
    return kNever;
}

/// Sleeps until the wall clock has caught up with a virtual moment; ends early when woken.
void VirtualTime::Private::sleepUntil(qint64 dueMs) {
    const auto wallMs = [this](qint64 virtualMs) { return qint64(std::ceil((virtualMs - anchorMs) / pace)); };
    const qint64 left = wallMs(dueMs) - wall.elapsed();
    if (left < -kLagMs) {
        anchorMs = dueMs;
        wall.restart();
    } else if (left > 0) {
        std::unique_lock<std::mutex> lock(mutex);
        wake.wait_for(lock, std::chrono::milliseconds(left),
                      [this] { return woken.load() || interrupted.load(); });
    }
}

/// Moves the clock to the next timer, but not past `limit`. False when it stays.
bool VirtualTime::Private::jump(qint64 limit) {
    const qint64 due = nextDue();
    if (due == kNever && limit == kNever)
        return false;
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
    if (installed)
        return installed;
    installed = new VirtualTime;
    QCoreApplication::setEventDispatcher(installed);
    mendo::Clock::install(installed);
    return installed;
}

VirtualTime* VirtualTime::instance() {
    return installed;
}

VirtualTime::VirtualTime() : d_(std::make_unique<Private>()) {}

VirtualTime::~VirtualTime() {
    mendo::Clock::install(nullptr);
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
    d_->interrupted = false;
    ++d_->passes;
    emit awake();

    bool did = d_->woken.exchange(false);
    ++d_->handlers;
    QCoreApplication::sendPostedEvents();
    did |= QWindowSystemInterface::sendWindowSystemEvents(flags);
    --d_->handlers;

    const bool endless = d_->passes >= kPassesPerInstant;
    const bool mayWait = wait && !d_->interrupted && (!d_->woken || endless);
    if (mayWait && !d_->quiet)
        emit aboutToBlock();
    if (d_->interrupted)
        return did;

    bool stuck = false;
    if (mayWait && (endless || (!did && !d_->woken && !(timersOn && d_->anythingDue()))))
        stuck = !timersOn || !d_->jump(limit);
    const int fired = timersOn ? d_->fireDue() : 0;
    if (stuck && (fired == 0 || endless))
        stall();
    return did || fired > 0;
}

void VirtualTime::stall() {
    const bool handled = bool(d_->stalled);
    d_->passes = 0;
    if (handled) {
        const std::function<void()> handler = d_->stalled;  // it may set another one
        ++d_->handlers;
        handler();
        --d_->handlers;
    }
    if (handled && (d_->woken || d_->interrupted || d_->nextDue() != kNever || d_->anythingDue()))
        return;
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
        if (settled)
            return false;
        pass(QEventLoop::AllEvents, true, target);
        if (!nested && QThread::currentThread()->loopLevel() == 0)
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        settled =
            d_->now >= target && ((!d_->woken && !d_->anythingDue()) || d_->passes >= kPassesPerInstant);
    }
    return true;
}

void VirtualTime::settle() {
    advance(0);
}

int VirtualTime::armedTimers(const QObject* ignored) const {
    return int(std::count_if(d_->timers.cbegin(), d_->timers.cend(), [ignored](const Timer& timer) {
        return !ignored || !isBelow(timer.object, ignored);
    }));
}

void VirtualTime::setStallHandler(std::function<void()> handler) {
    d_->stalled = std::move(handler);
}

void VirtualTime::setPace(double factor) {
    d_->pace = std::max(factor, 0.0);
    d_->anchorMs = d_->now;
    d_->wall.start();
}

bool VirtualTime::processEvents(QEventLoop::ProcessEventsFlags flags) {
    return pass(flags, flags & QEventLoop::WaitForMoreEvents, kNever);
}

bool VirtualTime::hasPendingEvents() {
    return d_->woken || d_->anythingDue() || QWindowSystemInterface::windowSystemEventsQueued() > 0;
}

// There is nothing behind a socket that would follow virtual time.
void VirtualTime::registerSocketNotifier(QSocketNotifier*) {}
void VirtualTime::unregisterSocketNotifier(QSocketNotifier*) {}

void VirtualTime::registerTimer(int timerId, int interval, Qt::TimerType type, QObject* object) {
    Timer timer;
    timer.interval = std::max(interval, 0);
    timer.type = type;
    timer.object = object;
    d_->arm(timerId, timer, d_->now + timer.interval);
    timer.serial = timer.order;
    d_->timers.insert(timerId, timer);
}

bool VirtualTime::unregisterTimer(int timerId) {
    const auto found = d_->timers.find(timerId);
    if (found == d_->timers.end())
        return false;
    d_->disarm(timerId, *found);
    d_->timers.erase(found);
    return true;
}

bool VirtualTime::unregisterTimers(QObject* object) {
    bool any = false;
    for (auto timer = d_->timers.begin(); timer != d_->timers.end();) {
        if (timer->object == object) {
            d_->disarm(timer.key(), *timer);
            timer = d_->timers.erase(timer);
            any = true;
        } else {
            ++timer;
        }
    }
    return any;
}

QList<QAbstractEventDispatcher::TimerInfo> VirtualTime::registeredTimers(QObject* object) const {
    QList<TimerInfo> infos;
    for (const Entry& entry : d_->queue) {
        const int id = std::get<2>(entry);
        const Timer& timer = *d_->timers.constFind(id);
        if (timer.object == object)
            infos.append(TimerInfo(id, timer.interval, timer.type));
    }
    return infos;
}

int VirtualTime::remainingTime(int timerId) {
    const auto found = d_->timers.constFind(timerId);
    return found == d_->timers.constEnd() ? -1 : int(std::max<qint64>(found->due - d_->now, 0));
}

void VirtualTime::wakeUp() {
    d_->woken = true;
    // The empty lock keeps the notification from falling between a sleeper's test and its sleep.
    { const std::lock_guard<std::mutex> lock(d_->mutex); }
    d_->wake.notify_one();
}

void VirtualTime::interrupt() {
    d_->interrupted = true;
    wakeUp();
}

void VirtualTime::flush() {}

}  // namespace sim
