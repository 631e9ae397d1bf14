#pragma once

#include "executor/cellstatements.h"
#include "executor/dryrun.h"
#include "executor/laser.h"
#include "executor/motions.h"
#include "executor/outlook.h"
#include "executor/resumepoint.h"
#include "executor/resumption.h"
#include "executor/run.h"
#include "executor/runmessages.h"
#include "executor/schedule.h"
#include "executor/waiter.h"
#include "module/host.h"

#include <QEventLoop>
#include <QObject>
#include <QVariant>

#include <optional>

namespace lumo {

/// Accepts or refuses starts and single steps, walks over the program and hands each statement to the laser,
/// the motions or the statements of the cell; pauses, stops and goes on after a stop.
///
/// Whatever may run handlers of others (a wait, a write, a command) can come back with the run aborted, so
/// each step asks the run for that afterwards.
class Driver : public QObject {
    Q_OBJECT
public:
    /// `sender` stands behind everything that is written.
    explicit Driver(QObject* sender);

    /// The triggers. A line that is no number is -1.
    void start(const QVariant& line);
    /// `onlyMoves`: other statements are refused.
    void runOnce(const QVariant& line, bool onlyMoves);
    void pause();
    /// The robot's power was written: anything but "on" stops all.
    void estop(const QVariant& power);
    /// The application or the package's subtree ends: as an emergency stop, and nothing starts before the
    /// event loop goes on.
    void quit();

    /// Executes one line of the program under way; 0, or the motion's error code.
    int execProgram(int line);

    [[nodiscard]] Outlook outlook(int line) const { return resumption_.outlook(line); }
    [[nodiscard]] ResumeView resumeView(int line) const { return resumption_.view(line); }
    /// Whether the last run of the hand program came to its end, and nothing has changed since.
    [[nodiscard]] bool isFinished() const { return resume_.isFinished(); }
    [[nodiscard]] QVariantMap waiting() const { return waiter_.waiting(); }
    /// Walks, single steps and pauses on the stack.
    [[nodiscard]] int depth() const { return depth_; }
    /// Whether the last run or step, of whatever program, came behind its last line.
    [[nodiscard]] bool reachedEnd() const { return reachedEnd_; }
    [[nodiscard]] Laser& laser() { return laser_; }
    [[nodiscard]] Motions& motions() { return motions_; }
    [[nodiscard]] CellStatements& cell() { return cell_; }

signals:
    /// What is awaited, planned or on the stack may have changed.
    void activityChanged();

private:
    void connectTree();
    void onPermission();
    void onOpened();
    void onRemoved(const QString& name);
    void failOnTheWay(int code);
    void onNotThere(double awayMm);

    // Starting
    [[nodiscard]] std::optional<RunMessage> refusal(int line, const ModuleObject* program) const;
    [[nodiscard]] bool isOfHand() const;
    [[nodiscard]] bool refuseCircle(const Run& run, int from, int to) const;
    void begin(Run& run);
    void end(Run& run);
    bool prepareRobot(const Run& run);
    void setLine(int line);

    // Walking
    void walk(Run& run, int line);
    [[nodiscard]] bool execute(Run& run, int line);
    [[nodiscard]] static bool isOfOverlap(const prog::Statement& statement);
    bool passDry(prog::StatementType type);
    void enterDryWeld(Run& run, bool isIn);
    int executeMove(int line);
    void endWeldOfWalk(bool reachedEnd);
    void step(Run& run, int line);
    void failRun(int code, int line);

    // Stopping
    void abort();
    void keepStop();
    void emergencyStop();

    [[nodiscard]] bool isAborted() const { return run_ && run_->isAborted; }
    void setState(QLatin1String state);
    void changeDepth(int by);

    QObject* sender_;
    QEventLoop waitLoop;
    Schedule schedule_;
    Waiter waiter_{waitLoop, schedule_};
    Laser laser_{sender_, schedule_, waiter_};
    Motions motions_{sender_, waiter_};
    CellStatements cell_{sender_, waiter_};
    DryRun dry_{sender_};
    ResumePoint resume_;
    Resumption resumption_{sender_, laser_, motions_, resume_};
    Run* run_ = nullptr;  ///< the walk or step on the stack
    int depth_ = 0;
    bool reachedEnd_ = false;
    int aborts_ = 0;         ///< pauses, emergency stops and ends of the application so far
    bool quitting_ = false;  ///< the application ends its loops: nothing may start
    bool stopping_ = false;  ///< an emergency stop is being done: no pause may come in between
};

}  // namespace lumo
