#pragma once

#include "executor/laserplan.h"
#include "executor/programindex.h"
#include "executor/queuedarc.h"
#include "executor/resumepoint.h"
#include "executor/schedule.h"
#include "executor/wait.h"
#include "module/globals.h"
#include "module/host.h"

#include <QEventLoop>
#include <QObject>
#include <QTimer>
#include <QVariant>
#include <QVariantMap>
#include <QVector>

#include <deque>
#include <map>
#include <optional>

/// Whether two positions (list nodes, metres) are less than `distanceM` apart.
bool isNearTrans(const ModuleObject* a, const ModuleObject* b, double distanceM);

/// Runs welding programs on the robot: one instance, driven by the trigger keys of the data tree.
///
/// Everything runs on the GUI thread; waits are nested event loops, in which a pause, a loss of
/// power, a refused start, a lost permission or the application's end can come at any moment. Three
/// counters tell a continuation whether it is still wanted: `aborts_` (pause, emergency stop, quit)
/// ends walks and steps, `sequence_` ends an opening or closing when a newer one, or a shutdown, has
/// begun, and the results of queued motions are counted, so that each settles the oldest.
/// docs/executor.md has the table of what each event does in each wait.
class LUMO_EXPORT LumoExecutor : public QObject {
    Q_OBJECT
    /// The innermost wait: "kind" ("move", "zone", "preflow", "dwell", "rampdown", "closedelay",
    /// "postflow", "delay", "input"), "detail" (the line, counted from 0, or the input's name),
    /// "since" and "due" (host clock ms; due -1 when open-ended). Empty when nothing is awaited.
    Q_PROPERTY(QVariantMap waiting READ waiting NOTIFY activityChanged)
    /// Port writes that are scheduled and not done; the pulse timer counts as one while it runs.
    Q_PROPERTY(int pendingSteps READ pendingSteps NOTIFY activityChanged)
    /// Walks, single steps and pauses on the stack.
    Q_PROPERTY(int depth READ depth NOTIFY activityChanged)
    /// Whether a device is on that the device page switched on. Its change is not announced.
    Q_PROPERTY(bool litByHand READ litByHand)
public:
    /// `lumo` is the package's node, the executor's parent and owner.
    explicit LumoExecutor(ModuleObject* lumo);
    /// Shuts the equipment down when a run or a sequence is under way.
    ~LumoExecutor() override;

    [[nodiscard]] QVariantMap waiting() const { return waiter_.waiting(); }
    [[nodiscard]] int pendingSteps() const;
    [[nodiscard]] int depth() const { return depth_; }
    [[nodiscard]] static bool litByHand();

    /// What a start of the hand program at a line would find of a weld or an arc that was stopped.
    struct Outlook {
        bool reopens = false;     ///< the line lies in the weld that was left open, and welding is permitted
        bool goesBack = false;    ///< the tool left the place of the stop: it goes back there first, dark
        double distanceMm = 0.0;  ///< how far it is away
    };
    [[nodiscard]] Outlook outlook(int line) const;

    // --- Driver -------------------------------------------------------------------------------

    /// Executes one line of the program under way; 0, or the motion's error code.
    int execProgram(int line);
    /// Queues the batch of moves that begins at a line. Nonzero when a full circle is impossible.
    int moveAll(int line);
    /// Queues one move statement; other types are ignored. Nonzero as moveAll.
    int addCmd(ModuleObject* stmt);

    // --- Moves --------------------------------------------------------------------------------

    void addMoveJCmd(ModuleObject* stmt);
    void addMoveLCmd(ModuleObject* stmt);
    void addMoveCCmd(ModuleObject* stmt);
    /// Nonzero, and nothing queued, when the circle starts at the posture and cannot be drawn.
    int addMoveCCCmd(ModuleObject* stmt);
    /// Waits for the statement's motion: its result, or 0 when the zone, a pause or a stop ended it.
    int waitMoveing(ModuleObject* stmt, const QString& caller);
    [[nodiscard]] bool IsLastMoveBeforeStop(ModuleObject* stmt, const QString& caller) const;
    void storeCurrentMoveData(ModuleObject* stmt, const QString& type);
    /// The nearest start-of-welding statement before the given one, null when there is none.
    [[nodiscard]] ModuleObject* findNearestForwardParam(ModuleObject* stmt) const;

    // --- Laser --------------------------------------------------------------------------------

    [[nodiscard]] static bool weldingPermitted();
    int limitopenLaser(ModuleObject* stmt);
    int limitcloseLaser();
    int openLaser();
    int closeLaser();
    void changeAOParamUpdate(ModuleObject* stmt);
    void changeAOParam();

    // --- I/O and delay ------------------------------------------------------------------------

    int setDO(ModuleObject* stmt);
    int waitDI(ModuleObject* stmt);
    int delay(ModuleObject* stmt);

public slots:
    void runOnce(const QVariant& var, const QVariant& old, QObject* context);
    void start(const QVariant& var);
    void pause();
    void estop(const QVariant& var);

signals:
    /// `waiting`, `pendingSteps` or `depth` may have changed.
    void activityChanged();

private slots:
    void handleMove(const QString& type, int code);

private:
    /// How far the laser is in its life.
    enum class Weld { Dark, Opening, Open };

    /// An arc or full circle that a stop interrupted.
    struct StoppedArc {
        lumo::QueuedArc queued;
        double reached = 0.0;  ///< angle on it at the stop
        QString points;        ///< the statement's points then
    };

    /// A walk or a single step on the stack.
    struct Run {
        Run(const ModuleObject* source, int runMode, int abortsNow);
        [[nodiscard]] bool ofHandProgram() const;
        /// The statement of the tree that a line was copied from; null when it is gone, or in other programs.
        [[nodiscard]] ModuleObject* original(int line) const { return originals.value(line); }

        RunProgram program;
        int mode;             ///< run mode when it was accepted
        int aborts;           ///< `aborts_` when it was accepted
        bool isStep = false;  ///< a single step
        bool inWeld = false;  ///< it begins inside the weld that was left open
        QVector<QPointer<ModuleObject>> originals;
        QVector<int> motionOfLine;            ///< number of the motion that a line queued, -1: none
        std::map<int, lumo::QueuedArc> arcs;  ///< arcs and circles by the line that queued them
        std::optional<StoppedArc> rest;       ///< what is left of the arc of `restLine`
        int restLine = -1;
        QString circleError;  ///< text of the impossible circle met at queueing
    };

    /// A motion handed to the controller whose result settles it.
    struct Motion {
        bool zoneEnded = false;  ///< its wait ended in the zone: the result is dropped
        bool settled = false;
        int code = 0;  ///< of a settled one
    };

    // Driver
    void connectTree();
    [[nodiscard]] QString refusal(int line, const ModuleObject* program) const;
    [[nodiscard]] bool refuseCircle(const Run& run, int from, int to) const;
    void walk(Run& run, int line);
    void takeUp(Run& run, int line);
    void takeUpArc(Run& run, int line);
    void goBack(const Run& run, int line);
    [[nodiscard]] bool isStopped(int line) const;
    [[nodiscard]] bool isStoppedArc(const ModuleObject* statement) const;
    [[nodiscard]] bool mustGoBack(int line, bool goesOnThere, double* distanceMm = nullptr) const;
    [[nodiscard]] static bool opensBeforeItMoves(const ModuleObject* program, int line);
    [[nodiscard]] static bool isAway(double* distanceMm = nullptr);
    void keepStop();
    void keepArc();
    void onRemoved(const QString& name);
    void endWeldOfWalk(bool reachedEnd);
    void step(Run& run, int line);
    void failRun(int code);
    void endRun();
    void emergencyStop();
    void quit();
    [[nodiscard]] bool isIdle() const;
    [[nodiscard]] bool isBusy() const;
    void setState(QLatin1String state);
    void changeDepth(int by);
    [[nodiscard]] bool isAborted() const { return run_ && run_->aborts != aborts_; }
    void warn(const QString& text) const;
    [[nodiscard]] static QString circleText(CircleFault fault, int line);

    // Moves
    void setTrajectory(ModuleObject* args, ModuleObject* stmt);
    void queueMotion(ModuleObject* stmt, QLatin1String command, const ModuleObject* args);
    [[nodiscard]] prog::Position startOfNextMotion() const;
    void keepQueuedArc(ModuleObject* stmt, const prog::Position& start, const ModuleObject* args);
    bool queueRest(ModuleObject* stmt);
    int awaitMotion(int motion, int line);
    void passedBefore(const ModuleObject* stmt, ModuleObject* circleStart);
    int waitZone(ModuleObject* stmt);
    void testZone(ModuleObject* stmt, const QString& type, double radiusM, const ModuleObject* circleStart);
    /// Gives the oldest outstanding motion its result and returns its number.
    int settle(int code);
    int motionCode(WaitEnd end);
    void forgetMotions();
    [[nodiscard]] int outstanding() const { return motions_.size() - settled_; }

    // Laser
    void pulseStep();
    [[nodiscard]] bool isBetweenPulses() const;
    void writeSetPoints(const LaserParams& params);
    void onPermission();
    /// Whether the gas is the new sequence's own, or flows on as the one before wanted it.
    enum class Gas { Own, Left };
    /// Begins a sequence: what earlier ones left is settled. The number tells who is superseded.
    int beginSequence(Gas gas = Gas::Own);
    /// A robot that moves must not take the ramp of an earlier closing along.
    void settleBeforeMoving() { beginSequence(Gas::Left); }
    void runClosing(int mine, bool waitless);
    /// Begins the closing that is sequence `mine`; false when it was superseded meanwhile.
    bool beginClosing(int mine, qint64 startMs, const LaserParams& params);
    void shutDown();
    void switchOffByHand();
    void settleCutWeld();
    /// Whether a hand has switched this device off since the weld was opened: it has to stay off.
    [[nodiscard]] bool isOffByHand(I_PORT port) const;
    void stopPulsing();
    void writePort(const PortStep& step, ModuleObject* batch = nullptr);
    void writeGroup(std::initializer_list<PortStep> steps);
    WaitEnd waitFor(WaitKind kind, qint64 dueMs);
    void setWeldFlag(bool open);

    // I/O
    [[nodiscard]] static bool inputState(const ModuleObject* stmt);

    QEventLoop waitLoop;
    QTimer pulseTimer;
    int queueLine = 0;
    bool queueNeeded = false;
    int openTime = 0, openInterval = 0, stayTime = 0;  ///< ms, of the parameter set in force
    bool laserOn = false;
    bool zoneReached = false;
    bool arcFirstReached = false, arcSecondReached = false;

    Schedule schedule_;
    Waiter waiter_;
    ResumePoint resume_;
    Run* run_ = nullptr;  ///< the walk or step on the stack
    int line_ = -1;       ///< the line it executes, or is about to
    /// A statement of the program is being executed, and no stop has come: a stop now interrupts it.
    bool inStatement_ = false;
    bool stopKept_ = false;  ///< the hand program was stopped in a statement and has not gone on since
    QPointer<ModuleObject> stoppedStatement_;   ///< that statement
    std::optional<StoppedArc> stopped_;         ///< the arc that the last stop interrupted
    const ModuleObject* queuedLast_ = nullptr;  ///< statement that queued the last motion
    int awaited_ = -1;                          ///< number of the motion whose wait is running
    qint64 awaitedSinceMs_ = 0;
    int depth_ = 0;
    int aborts_ = 0;
    bool quitting_ = false;  ///< the application ends its loops: nothing may start
    bool stopping_ = false;  ///< an emergency stop is being done: no pause may come in between
    int sequence_ = 0;
    std::deque<PortStep> settling_;  ///< switch-offs of superseded sequences still to be written
    int closing_ = -1;               ///< number of the sequence whose closing is on the stack
    QVector<Motion> motions_;        ///< since the last reset, pause or stop
    int settled_ = 0;
    Weld weld_ = Weld::Dark;
    bool weldCut_ = false;  ///< the weld under way was closed because permission was lost
    int laserOffsByHand_ = 0, wireOffsByHand_ = 0;  ///< when the weld was opened
    bool paramWaits_ = false;                       ///< a parameter change met the gap between two pulses
    double lastPower_ = 0.0;                        ///< laser power that the executor wrote last
};

/// The one executor, owned by the `lumo` node; null until the first panel is made.
extern LUMO_EXPORT LumoExecutor* executor;
