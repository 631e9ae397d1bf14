#pragma once

#include "executor/laser.h"
#include "executor/motions.h"
#include "executor/outlook.h"
#include "executor/resumepoint.h"
#include "executor/resumeview.h"
#include "executor/run.h"

#include <QObject>

namespace lumo {

/// How a run begins that goes on after a stop: the tool goes back to where the weld or the arc was stopped,
/// with the laser off, and further back along what is welded where an overlap is asked for; there the laser
/// opens. A line that does not lie in the weld that was left open goes dark.
class Resumption : public QObject {
    Q_OBJECT
public:
    /// `sender` stands behind what is written.
    Resumption(QObject* sender, Laser& laser, Motions& motions, ResumePoint& resume);

    /// Waits for all that. Returns the line at which the walk begins: the given one or, where the overlap
    /// begins in an earlier move of the seam, that one.
    [[nodiscard]] int takeUp(Run& run, int line);
    /// What takeUp() would do at a line of the hand program.
    [[nodiscard]] Outlook outlook(int line) const;
    /// The seam in which the hand program was stopped, for a line that outlook() calls in the open weld.
    [[nodiscard]] ResumeView view(int line) const;

signals:
    /// A motion on the way back failed.
    void failed(int code);
    /// The controller said too early that the tool is back.
    void notThere(double awayMm);

private:
    void goBack(const Run& run, int line);
    [[nodiscard]] int goBackAlong(const Run& run, int line);
    [[nodiscard]] bool isStoppedArc(const ModuleObject* statement) const;

    QObject* sender_;
    Laser& laser_;
    Motions& motions_;
    ResumePoint& resume_;
};

}  // namespace lumo
