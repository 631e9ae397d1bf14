#pragma once

#include "executor/arcs.h"
#include "executor/run.h"
#include "executor/waiter.h"
#include "executor/weldedpath.h"
#include "module/host.h"

#include <QObject>
#include <QString>
#include <QVector>

#include <vector>

namespace lumo {

/// What is handed to the robot: the commands of the move statements, their results, counted in order, the
/// wait for the zone at a weld's end, the way back to the place of a stop, and what is left of an arc.
class Motions : public QObject {
    Q_OBJECT
public:
    /// `sender` stands behind commands and what is written to the tree.
    Motions(QObject* sender, Waiter& waiter);

    /// The run whose lines are queued and awaited from now on.
    void begin(const Run& run);
    /// Its end. Its motions stay counted until the next reset, pause or stop.
    void end();

    // --- Queueing -----------------------------------------------------------------------------

    /// At the start of a walk: its first move begins a batch.
    void beginBatches(int line);
    /// Queues the batch that begins at a line of moves, where it has not been queued with the lines before.
    /// Nonzero when a full circle is impossible.
    int queueBatchFrom(int line);
    /// The same, whether it has been queued or not.
    int queueBatch(int line);
    /// Queues one move statement; other types are ignored. Nonzero as queueBatch.
    int queue(ModuleObject* stmt);
    /// The same as a batch of its own.
    int queueAlone(ModuleObject* stmt);
    void queueMoveJ(ModuleObject* stmt);
    void queueMoveL(ModuleObject* stmt);
    void queueMoveC(ModuleObject* stmt);
    /// Nonzero, and nothing queued, when the circle starts at the posture and cannot be drawn.
    int queueMoveCC(ModuleObject* stmt);
    /// Goes back to the place of the last stop in a straight line, for the statement of a line, and waits.
    /// Returns the motion's result, or 0 when a pause or a stop came.
    int goBack(int line);
    /// Goes back along the welded path, for the statement of a line, and waits. Returns as goBack().
    int goBackAlong(const std::vector<prog::WayBack>& way, int line);
    /// What is wrong with the run's circle that could not be queued.
    [[nodiscard]] prog::CircleFault circleFault() const { return circleFault_; }
    /// The line of that circle.
    [[nodiscard]] int badCircle() const { return badCircle_; }

    // --- Waiting ------------------------------------------------------------------------------

    /// Waits for the statement's motion: its result, or 0 when the zone, a pause or a stop ended it. A
    /// single step does not wait for the zone.
    int await(ModuleObject* stmt, bool isStep);
    /// A motion's result settles the oldest outstanding motion.
    void onResult(const QString& kind, int code);
    /// Forgets all motions: they were reset or stopped, and no result counts any more.
    void forget();
    /// Motions without a result.
    [[nodiscard]] int outstanding() const { return motions_.size() - answered_; }

    /// The record of the move under way in `lumo.current`.
    void storeCurrent(const ModuleObject* stmt, const QString& type);
    /// The nearest start of welding before a statement, executed or not; null when there is none.
    [[nodiscard]] ModuleObject* openBefore(ModuleObject* stmt) const;

    // --- Going on after a stop ----------------------------------------------------------------

    /// A stop interrupts the run's line: keeps its arc, if it is one, with how far the tool has come.
    void keepArc();
    /// A run begins at the line of the kept arc: what is left of it is queued in its place. False where that
    /// cannot be run from where the tool stands.
    [[nodiscard]] bool takeUpArc(int line);
    /// The overlap of a weld that the run takes up at a line.
    [[nodiscard]] Overlap overlap(int line, double mm);
    /// What of the open weld is welded, from a stop in a line back. `run`: of the program as it is now.
    [[nodiscard]] WeldedPath::Pieces weldedUpTo(const Run& run, int line, const prog::Position& stop) const {
        return welded_.pieces(run, line, stop, arcs_.stoppedAt());
    }
    /// The run begins with the overlap, where the tool is.
    void beginOverlap(const Overlap& overlap);
    [[nodiscard]] Arcs& arcs() { return arcs_; }
    [[nodiscard]] const Arcs& arcs() const { return arcs_; }
    [[nodiscard]] WeldedPath& welded() { return welded_; }

signals:
    /// A motion whose wait had ended in the zone failed. `line`: whose it was; -1 on the way back.
    void failed(int code, int line);

private:
    /// A motion handed to the controller whose result settles it.
    struct Motion {
        bool zoneEnded = false;  ///< its wait ended in the zone: a result of 0 is dropped
        bool isAnswered = false;
        int code = 0;  ///< its result
    };

    [[nodiscard]] bool isOfRun(const ModuleObject* stmt) const;
    [[nodiscard]] int lineOf(const ModuleObject* stmt) const;
    [[nodiscard]] prog::Statement valueOf(const ModuleObject* stmt) const;
    [[nodiscard]] ModuleObject* targetBefore(ModuleObject* stmt) const;
    [[nodiscard]] bool isAborted() const { return run_ && run_->isAborted; }
    void setTrajectory(ModuleObject* args, ModuleObject* stmt);
    int send(const ModuleObject* stmt, QLatin1String command, const ModuleObject* args);
    int sendDark(QLatin1String command, ModuleObject* args, int line);
    int awaitDark(const std::vector<int>& motions);
    [[nodiscard]] prog::Pose startOfNext() const;
    bool queueRest(ModuleObject* stmt);
    int awaitMotion(int motion);
    int codeOf(WaitEnd end) const;
    int awaitZone(ModuleObject* stmt, int motion);
    void passedBefore(const ModuleObject* stmt, ModuleObject* circleStart);
    void testZone(ModuleObject* stmt, double radiusM, const ModuleObject* circleStart);

    QObject* sender_;
    Waiter& waiter_;
    const Run* run_ = nullptr;
    int queueLine = 0;
    bool queueNeeded = false;
    bool zoneReached = false;
    bool arcFirstReached = false, arcSecondReached = false;

    QVector<Motion> motions_;  ///< since the last reset, pause or stop
    int answered_ = 0;
    int awaited_ = -1;  ///< number of the motion whose wait is running
    qint64 awaitedSinceMs_ = 0;

    // Of the run
    QVector<int> motionOfLine_;  ///< number of the motion that a line queued, -1: none
    int queuedLastLine_ = -1;    ///< of the statement that queued the last motion
    prog::CircleFault circleFault_ = prog::CircleFault::None;
    int badCircle_ = -1;

    Arcs arcs_;
    WeldedPath welded_;
};

}  // namespace lumo
