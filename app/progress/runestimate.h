#pragma once

#include "program/parameters.h"
#include "program/runprogram.h"
#include "simulator/motionplan.h"

#include <memory>
#include <vector>

namespace app {

/// What the time of a run depends on, besides program and parameter sets.
struct RunStart {
    int line = 0;       ///< counted from 0
    bool step = false;  ///< only the move at `line`
    sim::MotionPlan::Posture posture;
    bool permitted = true;  ///< welding; without it openings and closings take no time
    bool inWeld = false;  ///< the line lies in a weld that was left open, which is opened again if permitted
    double dryPercent = 0.0;  ///< speed of a dry run in welds, % of the weld speed; 0: no dry run
    int set = 0;              ///< number of the parameter set in force
    double defaultZoneM = 0;
};

/// How long one line of a program will take.
struct LineEstimate {
    qint64 ms = 0;
    bool waitsForInput = false;  ///< as long as that takes: `ms` is the least
};

/// What each line of a program will take; 0 for those before the start, those that are not executed, and
/// those behind a move that cannot be made. Moves are planned as the robot of the cell plans them; gas, ramps
/// and delays are counted from the parameter sets.
///
/// Planning a long program takes seconds: it can be done a part at a time.
class RunEstimate {
public:
    /// `arm` must outlive it.
    RunEstimate(prog::RunProgram program, std::vector<prog::LaserParams> sets, const RunStart& start,
                const sim::Arm& arm);

    /// Goes on by some lines; whether all is done then.
    bool advance(int lines);
    /// Of the lines passed so far; the others are 0.
    const std::vector<LineEstimate>& lines() const { return lines_; }

private:
    void passLine(int line);
    prog::LaserParams params() const;
    qint64 openingMs() const;
    qint64 closingMs() const;
    void queueBatch(int line);
    sim::MotionCommand motionOf(int line);
    void addCircle(int line, sim::MotionCommand* motion);
    void waitForMove(int line);
    qint64 zoneEntryMs(int line) const;

    const prog::RunProgram program_;
    const std::vector<prog::LaserParams> sets_;
    const RunStart start_;
    const sim::Arm& arm_;
    std::vector<LineEstimate> lines_;

    int next_;  ///< line
    qint64 nowMs_ = 0;
    bool weldOpen_;
    int set_;
    // The batch queued last.
    int batchFrom_ = 0, batchTo_ = 0;  ///< lines, the second one behind it
    qint64 batchMs_ = 0;               ///< when it begins
    /// When the robot stands still: it may still move when the run goes on at the entrance of a zone.
    qint64 robotFreeMs_ = 0;
    sim::Pose target_;  ///< of the move planned last
    sim::MotionPlan::Posture posture_;
    std::unique_ptr<sim::MotionPlan> plan_;
    bool failed_ = false;
};

/// How far a run has come, by the estimates of its lines. Times are in ms of one clock.
class RunProgress {
public:
    struct View {
        qint64 leftMs = 0;      ///< without the time that the run waits for inputs
        double fraction = 0;    ///< 0 to 1; never decreases
        bool waits = false;     ///< the run waits for an input
        bool willWait = false;  ///< a later line waits for one
    };

    RunProgress(std::vector<LineEstimate> lines, int line, qint64 nowMs);

    /// Lines outside the program are ignored.
    void beginLine(int line, qint64 nowMs);
    View at(qint64 nowMs) const;

private:
    std::vector<LineEstimate> lines_;
    std::vector<qint64> behindMs_;   ///< by line: the time of all lines behind it
    std::vector<bool> inputBehind_;  ///< by line: one behind it waits for an input
    int line_ = 0;
    qint64 lineBegunMs_ = 0;
    qint64 totalMs_ = 0;
};

}  // namespace app
