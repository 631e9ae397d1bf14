#pragma once

#include "executor/outlook.h"
#include "executor/resumeview.h"
#include "module/globals.h"
#include "module/host.h"

#include <QObject>
#include <QVariant>
#include <QVariantMap>

#include <memory>

namespace lumo {
class Driver;
}

/// Runs welding programs on the robot: one instance, driven by the trigger keys of the data tree.
///
/// A face with the names that others know. Behind it work lumo::Driver, which walks over the program,
/// lumo::Motions, what the robot is given to do, and lumo::Laser, what is lit. All run on the GUI thread;
/// waits are nested event loops, in which a pause, a loss of power, a refused start, a lost permission or the
/// application's end can come at any moment. docs/executor.md has the table of what each event does in each
/// wait.
class LUMO_EXPORT LumoExecutor : public QObject {
    Q_OBJECT
    /// The innermost wait: "kind" (a word of prog::waits), "detail" (the line, counted from 0, or the input's
    /// name), "since" and "due" (host clock ms; due -1 when open-ended). Empty when nothing is awaited.
    Q_PROPERTY(QVariantMap waiting READ waiting NOTIFY activityChanged)
    /// Port writes that are scheduled and not done; the pulse timer counts as one while it runs.
    Q_PROPERTY(int pendingSteps READ pendingSteps NOTIFY activityChanged)
    /// Walks, single steps and pauses on the stack.
    Q_PROPERTY(int depth READ depth NOTIFY activityChanged)
    /// Whether a device is on that the device page switched on. Its change is not announced.
    Q_PROPERTY(bool litByHand READ litByHand)
    /// Whether the last run of the hand program came to its end and nothing has changed since: the page's
    /// Start begins at the first line. It changes before the state does, and when the program or the resume
    /// line is changed.
    Q_PROPERTY(bool finished READ finished)
public:
    using Outlook = lumo::Outlook;

    /// `lumo` is the package's node, the executor's parent and owner.
    explicit LumoExecutor(ModuleObject* lumo);
    /// Shuts the equipment down when a run or a sequence is under way.
    ~LumoExecutor() override;

    [[nodiscard]] QVariantMap waiting() const;
    [[nodiscard]] int pendingSteps() const;
    [[nodiscard]] int depth() const;
    [[nodiscard]] static bool litByHand();
    [[nodiscard]] bool finished() const;
    /// Whether the last run, of whatever program, came behind its last line; false while one is under way.
    [[nodiscard]] bool reachedEnd() const;
    /// The line at which the page's Start begins: the first one after a run that came to its end, else the
    /// resume line.
    [[nodiscard]] Q_INVOKABLE int startLine() const;
    /// What a start of the hand program at a line would do.
    [[nodiscard]] Outlook outlook(int line) const;
    /// What is known of the seam in which the hand program was stopped, for a line in the open weld.
    [[nodiscard]] lumo::ResumeView resumeView(int line) const;
    /// The same as outlook(), as a map, for programs that load the package at run time.
    [[nodiscard]] Q_INVOKABLE QVariantMap startAt(int line) const;

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
    /// Waits for the statement's motion: its result, or 0 when the zone, a pause or a stop ended it. No zone
    /// for the caller "runOnce".
    int waitMoveing(ModuleObject* stmt, const QString& caller);
    [[nodiscard]] bool IsLastMoveBeforeStop(ModuleObject* stmt, const QString& caller) const;
    void storeCurrentMoveData(ModuleObject* stmt, const QString& type);
    /// The nearest start-of-welding statement before the given one, null when there is none.
    [[nodiscard]] ModuleObject* findNearestForwardParam(ModuleObject* stmt) const;

    // --- Laser. All return 0. -----------------------------------------------------------------

    [[nodiscard]] static bool weldingPermitted();
    int limitopenLaser(ModuleObject* stmt);
    int limitcloseLaser();
    int openLaser();
    int closeLaser();
    void changeAOParamUpdate(ModuleObject* stmt);
    void changeAOParam();

    // --- I/O and delay. All return 0. ---------------------------------------------------------

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
    std::unique_ptr<lumo::Driver> driver_;
};

/// The one executor, owned by the `lumo` node; null until the first panel is made.
extern LUMO_EXPORT LumoExecutor* executor;
