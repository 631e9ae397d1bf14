#include "runner/endwatch.h"

#include "program/words.h"
#include "runner/messagewatch.h"
#include "runner/pageoperator.h"
#include "runner/scenarioplayer.h"
#include "runner/stationpage.h"
#include "runner/treeoperator.h"
#include "simulator/controller.h"
#include "simulator/time/virtualtime.h"

#include <QVariantMap>

namespace run {

namespace {

constexpr int stuckMs = 1000;
const QString stalled = QStringLiteral("stalled");

}  // namespace

EndWatch::EndWatch(QObject* parent) : QObject(parent) {
    connect(&until_, &LongTimer::timeout, this, [this] { emit gaveUp(QStringLiteral("until")); });
    connect(&calm_, &LongTimer::timeout, this, &EndWatch::schedule);
    stuck_->setSingleShot(true);
    stuck_->setInterval(stuckMs);
    connect(stuck_, &QTimer::timeout, this, [this] {
        if (isStuck() || isForgotten()) {
            emit gaveUp(stalled);
        }
    });
    if (sim::VirtualTime::instance()) {
        connect(sim::VirtualTime::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                &EndWatch::onAboutToBlock);
    }
}

void EndWatch::begin(const Parts& parts, qint64 untilMs) {
    parts_ = parts;
    until_.start(untilMs);
}

void EndWatch::waitCalmly() {
    if (parts_.stations) {
        calm_.start(parts_.player->calmMs());
    }
}

void EndWatch::endQuit() {
    quit_ = Quit::Done;
    schedule();
}

void EndWatch::stop() {
    stopped_ = true;
    until_.stop();
    stuck_->stop();
}

/// Ends the run when no timer is armed but that of the time limit.
void EndWatch::onAboutToBlock() {
    if (!isActive() || parts_.player->isPending()) {
        return;  // the remaining entries have timers
    }
    if (sim::VirtualTime::instance()->armedTimers(&until_) == 0) {
        QMetaObject::invokeMethod(
            this, [this] { checkStall(); }, Qt::QueuedConnection);
    }
}

void EndWatch::checkStall() {
    check();
    if (!stopped_ && quit_ != Quit::Asked && sim::VirtualTime::instance()->armedTimers(&until_) == 0) {
        emit gaveUp(stalled);
    }
}

void EndWatch::schedule() {
    if (checkPosted_ || !parts_.executor) {
        return;
    }
    checkPosted_ = true;
    QMetaObject::invokeMethod(
        this, [this] { check(); }, Qt::QueuedConnection);
}

void EndWatch::check() {
    checkPosted_ = false;
    if (quit_ == Quit::Asked) {
        return;  // the event loops have not returned yet
    }
    if (!isOver()) {
        watchStuckRun();
    } else if (!parts_.player->playEnd()) {
        emit over();
    }
}

/// Gives up a run that has waited for a while for a motion while the robot stands still: timers of pages, and
/// laser pulses, may go on for ever.
void EndWatch::watchStuckRun() {
    if (!isStuck() && !isForgotten()) {
        stuck_->stop();
    } else if (!stuck_->isActive()) {
        stuck_->start();
    }
}

bool EndWatch::isStuck() const {
    if (!parts_.controller->standsStill() || parts_.player->isPending() || parts_.pages->isBusy() ||
        parts_.messages->isPending()) {
        return false;  // asked after each step of the robot
    }
    const QVariantMap waiting = parts_.executor->property("waiting").toMap();
    const QString kind = waiting.value(QStringLiteral("kind")).toString();
    return kind == prog::waits::move || kind == prog::waits::zone;
}

bool EndWatch::isOver() const {
    return isAtRest() && areStationsDone();
}

bool EndWatch::isAtRest() const {
    return parts_.controller->standsStill() && !parts_.tree->isWriting() && !parts_.pages->isBusy() &&
           !parts_.player->isPlaying() && !parts_.messages->isPending() && TreeOperator::isIdle() &&
           parts_.executor->property("depth").toInt() == 0 &&
           parts_.executor->property("pendingSteps").toInt() == 0;
}

bool EndWatch::areStationsDone() const {
    return !parts_.stations || quit_ != Quit::No || (parts_.stations->queued() == 0 && !calm_.isActive());
}

/// Projects are queued, but the station page is switched off.
bool EndWatch::isForgotten() const {
    return parts_.stations && !parts_.stations->isMonitoring() && parts_.stations->queued() > 0 && isAtRest();
}

}  // namespace run
