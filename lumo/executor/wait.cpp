#include "executor/wait.h"

namespace {

QString kindName(WaitKind kind) {
    switch (kind) {
        case WaitKind::Move:
            return QStringLiteral("move");
        case WaitKind::Zone:
            return QStringLiteral("zone");
        case WaitKind::PreFlow:
            return QStringLiteral("preflow");
        case WaitKind::Dwell:
            return QStringLiteral("dwell");
        case WaitKind::RampDown:
            return QStringLiteral("rampdown");
        case WaitKind::CloseDelay:
            return QStringLiteral("closedelay");
        case WaitKind::PostFlow:
            return QStringLiteral("postflow");
        case WaitKind::Delay:
            return QStringLiteral("delay");
        case WaitKind::Input:
            return QStringLiteral("input");
    }
    return QString();
}

}  // namespace

Waiter::Waiter(QEventLoop& loop, Schedule& schedule, QObject* parent)
    : QObject(parent), loop_(loop), schedule_(schedule) {}

WaitEnd Waiter::run(WaitKind kind, const QString& detail, qint64 dueMs) {
    if (onStack_) {
        return WaitEnd::Nested;
    }
    onStack_ = true;
    ended_ = false;
    kind_ = kind;
    reason_ = WaitEnd::Quit;
    const int wake = dueMs < 0 ? 0 : schedule_.wakeAt(dueMs, [this] { end(WaitEnd::Time); });
    push(kind, detail, dueMs);
    if (!ended_) {
        entered_ = true;
        loop_.exec();  // ended by end(), or by the application's quit, which leaves the reason as it is
        entered_ = false;
    }
    schedule_.cancelWake(wake);
    onStack_ = false;
    const WaitEnd reason = reason_;
    const int code = code_;
    pop();  // whoever hears of it may wait himself
    code_ = code;
    return reason;
}

WaitEnd Waiter::runPrivate(WaitKind kind, const QString& detail, qint64 dueMs) {
    QEventLoop loop;
    WaitEnd reason = WaitEnd::Quit;
    bool entered = false;
    const int wake = schedule_.wakeAt(dueMs, [&loop, &reason, &entered] {
        // As in end().
        reason = !entered || loop.isRunning() ? WaitEnd::Time : WaitEnd::Quit;
        loop.quit();
    });
    push(kind, detail, dueMs);
    if (reason != WaitEnd::Time) {
        entered = true;
        loop.exec();  // ended by its time, or by the application's quit
    }
    schedule_.cancelWake(wake);
    pop();
    return reason;
}

void Waiter::end(WaitEnd reason, int code) {
    if (!onStack_ || ended_) {
        return;
    }
    ended_ = true;
    // A loop that was told to end already is one of a quitting application: what comes in the same turn
    // must not let the run go on.
    if (!entered_ || loop_.isRunning()) {
        reason_ = reason;
        code_ = code;
    }
    loop_.exit();
}

QVariantMap Waiter::waiting() const {
    if (waits_.empty()) {
        return {};
    }
    const Info& info = waits_.back();
    return {{QStringLiteral("kind"), kindName(info.kind)},
            {QStringLiteral("detail"), info.detail},
            {QStringLiteral("since"), info.sinceMs},
            {QStringLiteral("due"), info.dueMs}};
}

void Waiter::push(WaitKind kind, const QString& detail, qint64 dueMs) {
    waits_.push_back({kind, detail, mendo::Clock::current().elapsedMs(), dueMs});
    emit waitingChanged();
}

void Waiter::pop() {
    waits_.pop_back();
    emit waitingChanged();
}
