#pragma once

#include "module/host.h"

#include <QObject>
#include <QPointer>
#include <QVector>

namespace lumo {

/// Where the hand program goes on, and whether that still lies in the weld that was left open.
///
/// Both belong to statements, not to numbers: while nothing runs, `lumo.current.line` follows its statement
/// through insertions, removals and moves, and the flag of the open weld is cleared in the moment in which
/// an edit takes the statement out of that weld. Mending the program afterwards does not set it again.
class ResumePoint : public QObject {
    Q_OBJECT
public:
    /// `program` is `lumo.program`; `sender` stands behind what is written.
    ResumePoint(ModuleObject* program, QObject* sender);

    // --- The line -----------------------------------------------------------------------------

    /// A run writes the line itself: edits are not followed until `hold` or `release`.
    void suspend() { suspended_ = true; }
    /// A run is over at this statement of the program (null: one that is no longer there, or another
    /// program's): from now on the line is its line.
    void hold(ModuleObject* statement);
    /// A run was stopped before it reached a statement: what was held before counts again.
    void release();

    /// A run of the hand program came to its end. That counts until it is run again, lines are inserted,
    /// removed, moved or replaced, or somebody else writes the line.
    void setFinished(bool finished) { isFinished_ = finished; }
    [[nodiscard]] bool isFinished() const { return isFinished_; }

    // --- The place of a stop ------------------------------------------------------------------

    /// A run was stopped in this statement, which it holds from now on. Null: of another program, or gone.
    void stopIn(ModuleObject* statement, bool ofHandProgram);
    /// A run goes on: the last stop counts no more.
    void goOn() { isStopped_ = false; }
    /// Whether the hand program was stopped in a statement and has not gone on since.
    [[nodiscard]] bool isStopped() const { return isStopped_; }
    /// Whether a start of the hand program at this line goes on from the last stop: at its statement or,
    /// where that was removed, at the line that has its number now.
    [[nodiscard]] bool isStoppedAt(int line) const;
    /// Whether the last stop interrupted this statement.
    [[nodiscard]] bool isStoppedIn(const ModuleObject* statement) const;
    /// Whether the tool left the place of the last stop, and a run from this line needs it there: because it
    /// goes on in a weld or an arc, or lights the laser before it moves. `distanceMm`: how far it is away.
    [[nodiscard]] bool mustGoBack(int line, bool goesOnThere, double* distanceMm = nullptr) const;
    /// Whether the tool stands elsewhere than where the last stop was. Where nothing was kept it does not.
    [[nodiscard]] static bool isAway(double* distanceMm = nullptr);

    // --- The weld -----------------------------------------------------------------------------

    /// The laser is being opened by this statement of the program; null: by another program's. It counts
    /// until the flag of the open weld is cleared.
    void weldOpened(ModuleObject* open);
    /// Whether a line lies in the weld that was opened last: the nearest executed start or stop of welding
    /// before it is that weld's start. Not for its stop, nor for a line that is switched off.
    [[nodiscard]] bool liesInWeld(int line) const;

private:
    void onLineWritten(const QVariant& line, const QVariant& old, QObject* sender);
    void onFlag(const QVariant& open);
    void onProgram();
    void onRemoved(const QString& name);
    /// `leaving`: a child that is still there, but about to go.
    void follow(const ModuleObject* leaving = nullptr);
    void recheck() { follow(); }
    [[nodiscard]] bool isHeld() const;
    [[nodiscard]] bool isInWeld(const ModuleObject* statement, const ModuleObject* leaving) const;
    void watch();
    void watchField(ModuleObject* statement, const QString& name);

    ModuleObject* program_;
    QObject* sender_;
    QPointer<ModuleObject> statement_;  ///< the line is its line
    QPointer<ModuleObject> open_;
    bool weldIsOurs_ = false;  ///< the weld that was opened last is one of this program
    bool suspended_ = false;
    bool isFinished_ = false;
    bool isStopped_ = false;
    QPointer<ModuleObject> stoppedStatement_;
    QVector<QMetaObject::Connection> watched_;  ///< fields that decide about the weld
};

}  // namespace lumo
