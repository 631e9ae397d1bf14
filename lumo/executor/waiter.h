#pragma once

#include "executor/schedule.h"

#include <QEventLoop>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <vector>

namespace lumo {

/// What ended a wait.
enum class WaitEnd {
    Result,      ///< the motion's result, in Waiter::resultCode
    Time,        ///< its time was over
    Input,       ///< the input has the awaited state
    Zone,        ///< the tool entered the zone
    Abort,       ///< a pause or an emergency stop
    Permission,  ///< welding is no longer permitted
    Quit,        ///< the application quits; this outranks every other end
    Nested,      ///< it never began: the loop is still on the stack below
};

/// Waits on one local event loop, one wait at a time: a wait ends once, says why, and takes its timed end
/// down at every exit. What is awaited is one of the words of prog::waits.
///
/// Re-entrancy: while a wait runs, everything else goes on: timers, the operator, the robot. The handler that
/// ends the wait (`end`) goes on running first, and may wait itself: the loop is then still on the stack, so
/// a wait that begins there returns Nested at once. The caller of `run` therefore asks after every return
/// whether what it was doing is still wanted.
class Waiter : public QObject {
    Q_OBJECT
public:
    Waiter(QEventLoop& loop, Schedule& schedule, QObject* parent = nullptr);

    /// The line whose waits these are, the detail of a wait that has no other; -1: none.
    void setLine(int line) { line_ = line; }

    /// Waits until `end` is called, or until the host clock's `dueMs` (-1: for ever).
    WaitEnd run(QLatin1String kind, qint64 dueMs, const QString& detail);
    WaitEnd run(QLatin1String kind, qint64 dueMs) { return run(kind, dueMs, QString::number(line_)); }
    /// The full length, on a loop of its own, which only time or the application's end can end.
    WaitEnd runPrivate(QLatin1String kind, qint64 dueMs);

    /// Ends the wait on the loop; the first call counts, without a wait it does nothing.
    void end(WaitEnd reason, int code = 0);

    /// Whether the loop is on the stack, ended or not.
    [[nodiscard]] bool onStack() const { return onStack_; }
    [[nodiscard]] bool waitsFor(QLatin1String kind) const { return onStack_ && !ended_ && kind_ == kind; }
    /// Code of the last wait that ended with a result.
    [[nodiscard]] int resultCode() const { return code_; }

    /// The innermost wait: kind, detail, since, due (host clock ms, due -1 for none); empty for none.
    [[nodiscard]] QVariantMap waiting() const;

signals:
    void waitingChanged();
    /// A wait ended with Quit and is about to return.
    void quitting();

private:
    struct Info {
        QLatin1String kind;
        QString detail;
        qint64 sinceMs;
        qint64 dueMs;
        int loopLevel;  ///< of its loop among those of the thread
    };

    void endLoopsAbove(std::size_t wait) const;
    void push(QLatin1String kind, const QString& detail, qint64 dueMs);
    void pop();

    QEventLoop& loop_;
    Schedule& schedule_;
    std::vector<Info> waits_;
    std::size_t first_ = 0;  ///< index of the wait on the loop in `waits_`
    bool onStack_ = false;
    bool ended_ = false;
    bool entered_ = false;  ///< the loop runs, or was told to end
    QLatin1String kind_;
    WaitEnd reason_ = WaitEnd::Quit;
    int code_ = 0;
    int line_ = -1;
};

}  // namespace lumo
