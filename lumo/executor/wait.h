#pragma once

#include "executor/schedule.h"

#include <QEventLoop>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <vector>

/// What the executor may be waiting for.
enum class WaitKind { Move, Zone, PreFlow, Dwell, RampDown, CloseDelay, PostFlow, Delay, Input };

/// What ended a wait.
enum class WaitEnd {
    Result,      ///< the motion's result, in Waiter::resultCode
    Time,        ///< its time was over
    Input,       ///< the input has the awaited state
    Zone,        ///< the tool entered the zone
    Abort,       ///< a pause or an emergency stop
    Permission,  ///< welding is no longer permitted
    Quit,        ///< the application quits; whatever else would end the wait comes too late then
    Nested,      ///< it never began: the loop is still on the stack below
};

/// Waits on one local event loop, one wait at a time: it ends once, says why, and takes its timed
/// end down at every exit.
///
/// Re-entrancy: while a wait runs, everything else goes on: timers, the operator, the robot. Whoever
/// ends the wait (`end`) goes on running first, and may wait itself: the loop is then still on the
/// stack, so a wait that begins there returns Nested at once. The caller of `run` therefore asks
/// after every return whether what it was doing is still wanted.
class Waiter : public QObject {
    Q_OBJECT
public:
    Waiter(QEventLoop& loop, Schedule& schedule, QObject* parent = nullptr);

    /// Waits until `end` is called, or until the host clock's `dueMs` (-1: for ever).
    WaitEnd run(WaitKind kind, const QString& detail, qint64 dueMs);
    /// The full length, on a loop of its own, which only time or the application's end can end.
    WaitEnd runPrivate(WaitKind kind, const QString& detail, qint64 dueMs);

    /// Ends the wait on the loop; the first call counts, without a wait it does nothing.
    void end(WaitEnd reason, int code = 0);

    /// Whether the loop is on the stack, ended or not.
    [[nodiscard]] bool onStack() const { return onStack_; }
    [[nodiscard]] bool waitsFor(WaitKind kind) const { return onStack_ && !ended_ && kind_ == kind; }
    /// Code of the last wait that ended with a result.
    [[nodiscard]] int resultCode() const { return code_; }

    /// The innermost wait: kind, detail, since, due (host clock ms, due -1 for none); empty for none.
    [[nodiscard]] QVariantMap waiting() const;

signals:
    void waitingChanged();

private:
    struct Info {
        WaitKind kind;
        QString detail;
        qint64 sinceMs;
        qint64 dueMs;
        int loopLevel;  ///< of its loop among those of the thread
    };

    void endLoopsAbove(std::size_t wait) const;
    void push(WaitKind kind, const QString& detail, qint64 dueMs);
    void pop();

    QEventLoop& loop_;
    Schedule& schedule_;
    std::vector<Info> waits_;
    std::size_t first_ = 0;  ///< which of them is that on the loop
    bool onStack_ = false;
    bool ended_ = false;
    bool entered_ = false;  ///< the loop runs, or was told to end
    WaitKind kind_ = WaitKind::Move;
    WaitEnd reason_ = WaitEnd::Quit;
    int code_ = 0;
};
