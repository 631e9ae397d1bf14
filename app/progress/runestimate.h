#pragma once

#include "simulator/motionplan.h"

#include <QJsonArray>

#include <memory>
#include <vector>

namespace app {

/// What the time of a run depends on, besides program and parameter sets.
struct RunStart {
    int line = 0;       ///< counted from 0
    bool step = false;  ///< only the move at `line`
    sim::MotionPlan::Posture stand;
    bool permitted = true;  ///< welding; without it openings and closings take no time
    bool weldOpen = false;  ///< a weld is resumed
    int set = 0;            ///< number of the parameter set in force
    double defaultZoneM = 0;
};

/// How long one line of a program will take.
struct LineEstimate {
    qint64 ms = 0;
    bool waitsForInput = false;  ///< as long as that takes: `ms` is the least
};

/// What each line of a program (its statements as in a project file) will take, with those before the
/// start and those that are not executed as 0. Moves are planned as the robot of the cell plans them,
/// gas, ramps and delays are counted from the parameter sets (as in the settings file). What comes
/// behind a move that cannot be made counts as 0 too.
///
/// Planning a long program takes seconds: it may be done a part at a time.
class RunEstimate {
public:
    /// `arm` must outlive it.
    RunEstimate(const QJsonArray& statements, const QJsonArray& sets, const RunStart& start,
                const sim::Arm& arm);
    ~RunEstimate();

    /// Goes on by some lines; whether all is done then.
    bool advance(int lines);
    /// Of the lines passed so far; the others are 0.
    const std::vector<LineEstimate>& lines() const;

private:
    struct Walk;
    std::unique_ptr<Walk> walk_;
};

}  // namespace app
