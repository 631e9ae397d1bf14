#include "executor/waiter.h"

#include "module/host.h"
#include "module/qtloops.h"

#include <QThread>

namespace lumo {

namespace {

/// Exit code of a loop that its own wait has ended. The application's quit ends every loop with another one,
/// also a loop that was told to end in the same turn and has not returned yet.
constexpr int ownCode = 0x10c;

/// A loop that has been told to end already was told so by the application's quit, whose exit code must stay.
void exitOwn(QEventLoop* loop, bool entered) {
    if (entered && loop->isRunning()) {
        loop->exit(ownCode);
    }
}

}  // namespace

Waiter::Waiter(QEventLoop& loop, Schedule& schedule, QObject* parent)
    : QObject(parent), loop_(loop), schedule_(schedule) {}

WaitEnd Waiter::run(QLatin1String kind, qint64 dueMs, const QString& detail) {
    if (onStack_) {
        return WaitEnd::Nested;
    }
    onStack_ = true;
    ended_ = false;
    kind_ = kind;
    reason_ = WaitEnd::Quit;
    first_ = waits_.size();
    const int wake = dueMs < 0 ? 0 : schedule_.wakeAt(dueMs, [this] { end(WaitEnd::Time); });
    push(kind, detail, dueMs);
    if (!ended_) {
        entered_ = true;
        if (loop_.exec() != ownCode) {
            reason_ = WaitEnd::Quit;
        }
        entered_ = false;
    }
    schedule_.cancelWake(wake);
    onStack_ = false;
    const WaitEnd reason = reason_;
    const int code = code_;
    pop();  // a listener may wait in its turn
    code_ = code;
    if (reason == WaitEnd::Quit) {
        emit quitting();
    }
    return reason;
}

WaitEnd Waiter::runPrivate(QLatin1String kind, qint64 dueMs) {
    QEventLoop loop;
    WaitEnd reason = WaitEnd::Quit;
    bool entered = false;
    const int wake = schedule_.wakeAt(dueMs, [this, &loop, &reason, &entered, wait = waits_.size()] {
        reason = WaitEnd::Time;
        exitOwn(&loop, entered);
        endLoopsAbove(wait);
    });
    push(kind, QString::number(line_), dueMs);
    if (reason != WaitEnd::Time) {
        entered = true;
        if (loop.exec() != ownCode) {
            reason = WaitEnd::Quit;
        }
    }
    schedule_.cancelWake(wake);
    pop();
    if (reason == WaitEnd::Quit) {
        emit quitting();
    }
    return reason;
}

void Waiter::end(WaitEnd reason, int code) {
    if (!onStack_ || ended_) {
        return;
    }
    ended_ = true;
    reason_ = reason;
    code_ = code;
    exitOwn(&loop_, entered_);
    endLoopsAbove(first_);
}

/// A menu or warning that Qt runs in a loop of its own above a wait would keep it from returning, with the
/// laser on.
void Waiter::endLoopsAbove(std::size_t wait) const {
    if (wait >= waits_.size()) {
        return;
    }
    const int waitsAbove = static_cast<int>(waits_.size() - wait) - 1;
    if (QThread::currentThread()->loopLevel() > waits_[wait].loopLevel + waitsAbove) {
        endLoopsOfQt();
    }
}

QVariantMap Waiter::waiting() const {
    if (waits_.empty()) {
        return {};
    }
    const Info& info = waits_.back();
    return {{QStringLiteral("kind"), QString(info.kind)},
            {QStringLiteral("detail"), info.detail},
            {QStringLiteral("since"), info.sinceMs},
            {QStringLiteral("due"), info.dueMs}};
}

void Waiter::push(QLatin1String kind, const QString& detail, qint64 dueMs) {
    const int level = QThread::currentThread()->loopLevel() + 1;
    waits_.push_back({kind, detail, mendo::Clock::current().elapsedMs(), dueMs, level});
    emit waitingChanged();
}

void Waiter::pop() {
    waits_.pop_back();
    emit waitingChanged();
}

}  // namespace lumo
