#pragma once

#include "workcell/treefollower.h"

#include <QObject>
#include <QString>

namespace sim {
class Controller;
}

namespace workcell {

/// Follows the runs of the executor: whether one was accepted, which lines it executes, how it ended.
class RunWatch : public QObject {
    Q_OBJECT
public:
    explicit RunWatch(TreeFollower* follower, QObject* parent = nullptr);

    /// "finished", "paused", "error" or "power" of the last run that was accepted; "refused" when
    /// none was.
    QString reason() const { return reason_; }
    /// Whether a run or single step is under way.
    bool isRunning() const { return running_; }
    /// Whether the last one that was accepted is a single step.
    bool isStep() const { return step_; }
    /// Statements executed so far.
    int lines() const { return lines_; }

    /// Follows the motions of a controller, which must outlive it. Without one they are told below.
    void attach(const sim::Controller* controller);
    /// The controller reports a motion's result.
    void motionEnded(int code);
    /// The executor stopped the robot. Without a pause or a loss of power before, that is an error.
    void motionStopped() { end(QStringLiteral("error")); }

signals:
    /// A run or single step was accepted. Emitted before the page is notified.
    void begun();
    /// Something ends it early; reason() says what. The robot still brakes, the laser is still being closed.
    void interrupted();
    /// It is over; reason() says how.
    void ended();
    /// A statement begins; `line` counts from 0.
    void lineBegun(int line, const QString& type);

private:
    void onChanged(const Change& change);
    void onState(const Change& change);
    void end(const QString& reason);
    void onProgress(const Change& change);
    void begin(int line, const QString& type);

    bool stepAsked_ = false;  ///< the last trigger was that of a single step
    bool step_ = false;       ///< the last accepted run is a single step
    bool running_ = false;
    QString reason_ = QStringLiteral("refused");
    int line_ = -1;  ///< of the walk; its type is written next
    int lines_ = 0;
};

}  // namespace workcell
