#pragma once

#include "simulator/controller.h"
#include "workcell/pathshares.h"
#include "workcell/runrecord.h"
#include "workcell/runwatch.h"
#include "workcell/seamtally.h"

#include <QHash>
#include <QObject>
#include <QVariant>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace sim {
class Cell;
}

namespace workcell {

/// Records what a run proves: its seams, and what was not as the program says.
///
/// It looks at the cell itself (emission, wired outputs, inputs of the equipment, the tool's path) at each of
/// their changes, and learns from the tree which statement is carried out. An opening of the laser shows in
/// the tree as the executor's write of the parameter set in force outside of a "param" statement: it comes
/// once the opening is permitted and certain, also at a resume, and before anything is switched on.
class EvidenceRecorder : public QObject {
    Q_OBJECT
public:
    enum class Span {
        Run,      ///< a record for each run, by hand or of a station; none for single steps
        Process,  ///< one record from begin() on, of all runs and steps
    };

    /// All arguments must outlive it. `watch` is attached to the same controller. Make it after the watch and
    /// before the package is loaded.
    EvidenceRecorder(sim::Controller* controller, sim::Cell* cell, TreeFollower* follower, RunWatch* watch,
                     Span span, QObject* parent = nullptr);
    ~EvidenceRecorder() override;

    /// The package's executor: needed with Span::Run, to know when all is switched off.
    void setExecutor(QObject* executor);
    /// Asked for the file name of the project that runs when a run or a seam begins.
    void setProjectName(std::function<QString()> name) { projectName_ = std::move(name); }
    /// The power of the laser source at 100 %, for the heat of the seams.
    void setRatedPower(std::optional<double> watts) { ratedWatts_ = watts; }

    /// Begins a record now: with Span::Process the only one; with Span::Run runs do that.
    void begin();
    /// The record up to now; with Span::Run the last one when no run is under way.
    RunRecord current();

signals:
    /// With Span::Run: a run is over, the robot stands, and everything that the executor had still to switch
    /// off is off.
    void finished(const workcell::RunRecord& record);
    /// Equipment is faulty while the laser is on: once for each fault, and again when the laser comes on
    /// anew. Also while nothing runs. `name` as in sim::Cell::equipment().
    void faultWhileLit(const QString& name);

private slots:
    void settleLater();  // a slot, to be connected by name: the executor's class is unknown here

private:
    using Seam = std::unique_ptr<SeamTally>;

    void connectAll(sim::Cell* cell, TreeFollower* follower);
    void settle();

    // What happens
    void onChanged(const Change& change);
    void onStatement(const QString& type);
    void passSkippedLines(int from, int to);
    void onSet(int set);
    void onPermission();
    void onMotion(int id, sim::Controller::MotionEvent event);
    void onRest();
    void onEmission(bool on);
    void onOutput(const QString& name, const QVariant& value);
    void onGas(bool on);
    void onInput(const QString& name, bool value);
    void onRejected(const QString& name, const QString& reason);
    void onRunBegun();
    void onRunEnded();
    void checkFaults();

    // Seams
    void openSeam(const QString& set);
    int openLine() const;
    void closeSeam(std::optional<int> line);
    void endSeamPath();
    void keepFinished();
    bool isFinished(const SeamTally* seam) const;

    void account();
    bool isBetweenPulses() const;
    bool isLit() const;
    const mendo::ModuleObject* program() const;
    QString project() const;
    double nowS() const;
    EmissionPoint here() const;
    double gasOnS() const;

    sim::Controller* controller_;
    sim::Cell* cell_;
    RunWatch* watch_;
    const Span span_;
    QObject* executor_ = nullptr;
    std::function<QString()> projectName_;
    std::optional<double> ratedWatts_;

    bool isRecording_ = false;
    bool isOver_ = false;  ///< the run is over, but not everything is off
    bool settlePosted_ = false;
    qint64 beganMs_ = 0;
    std::optional<qint64> endedMs_;
    QString endReason_;  ///< then: the watch may follow the next run by now
    RunRecord atBegin_;  ///< the totals of cell, controller and watch then
    RunRecord record_;   ///< its seams are those to which nothing can be added

    // The run, as the tree shows it. Lines from 0.
    int startLine_ = 0;  ///< of the last start trigger
    int line_ = -1, lineBefore_ = -1;
    bool isByHand_ = false;
    QString type_;  ///< of the statement under way; empty before the first

    // The cell as it is since the last call of account()
    qint64 sinceMs_ = 0;
    PathShares shares_;
    bool isEmitting_ = false;
    bool isEnabled_ = false;  ///< the laser, by the wired output
    qint64 disabledMs_ = 0;
    bool wasEnabled_ = false;  ///< since the last opening
    int power_ = 0;            ///< of the wired register
    std::optional<qint64> gasSinceMs_;
    std::vector<bool> isFaulty_;  ///< by the position in sim::Cell::equipment()
    std::vector<bool> isFaultTold_;
    double setPower_ = 0.0;  ///< of the set in force, as a register value
    int setPauseMs_ = 0;     ///< of the set in force: between two pulses

    std::vector<Seam> live_;          ///< seams to which something may be added, in their order
    SeamTally* open_ = nullptr;       ///< the last one that was opened, up to the end of its moves
    bool takesMoves_ = false;         ///< the moves that are queued now are on its path
    SeamTally* lit_ = nullptr;        ///< the emission belongs to it
    SeamTally* onPath_ = nullptr;     ///< the motion under way belongs to it
    bool isStopping_ = false;         ///< that motion was stopped, the robot brakes
    QHash<int, SeamTally*> motions_;  ///< queued ones, by their number
};

}  // namespace workcell
