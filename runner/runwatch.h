#pragma once

#include "runner/treefollower.h"

#include <QObject>
#include <QString>

namespace run {

/// Follows the runs of the executor: which lines it executes, whether one was accepted and how the
/// last one ended.
class RunWatch : public QObject {
    Q_OBJECT
public:
    /// `runMode`: the package's run mode, looked at for single steps.
    RunWatch(TreeFollower* follower, QObject* parent = nullptr);

    void setRunMode(const int* runMode) { runMode_ = runMode; }

    /// "finished", "paused", "error" or "power" of the last run that was accepted; "refused" when
    /// none was.
    QString reason() const { return reason_; }
    /// Statements executed so far.
    int lines() const { return lines_; }

signals:
    /// A statement begins; `line` counts from 0.
    void lineBegun(int line, const QString& type);

private:
    void onChanged(const Change& change);
    void onState(const QString& state);
    void end(const QString& reason);
    void count(const Change& change);

    const int* runMode_ = nullptr;
    bool running_ = false;
    QString reason_ = QStringLiteral("refused");
    int lines_ = 0;
};

}  // namespace run
