#pragma once

#include "workcell/treefollower.h"

#include <QObject>
#include <QString>

namespace run {

/// Follows the runs of the executor: which lines it executes, whether one was accepted and how the
/// last one ended.
class RunWatch : public QObject {
    Q_OBJECT
public:
    explicit RunWatch(workcell::TreeFollower* follower, QObject* parent = nullptr);

    /// "finished", "paused", "error" or "power" of the last run that was accepted; "refused" when
    /// none was.
    QString reason() const { return reason_; }
    /// Whether a run or single step is under way.
    bool isRunning() const { return running_; }
    /// Statements executed so far.
    int lines() const { return lines_; }

    /// The controller reports a motion's result.
    void motionEnded(int code);
    /// The robot was told to stop. Where neither a pause nor a loss of power came before, the executor has
    /// met something that it cannot go on with.
    void motionStopped() { end(QStringLiteral("error")); }

signals:
    /// A run or single step was accepted. This comes before the page hears of it.
    void begun();
    /// It is over, `reason()` says how.
    void ended();
    /// A statement begins; `line` counts from 0.
    void lineBegun(int line, const QString& type);

private:
    void onChanged(const workcell::Change& change);
    void onState(const workcell::Change& change);
    void end(const QString& reason);
    void onProgress(const workcell::Change& change);
    void begin(int line, const QString& type);

    bool stepAsked_ = false;  ///< the trigger that was written last is the one for a single step
    bool step_ = false;       ///< the run that was accepted last is a single step
    bool running_ = false;
    QString reason_ = QStringLiteral("refused");
    int line_ = -1;  ///< the walk's, its type is still to come
    int lines_ = 0;
};

}  // namespace run
