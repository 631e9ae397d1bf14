#pragma once

#include "kinematics/jog.h"
#include "simulator/motionplan.h"

#include <optional>

namespace sim {

using bridge::JogAnswer;
using bridge::JogAxis;
using bridge::JogFrame;
using bridge::JogMove;
using kin::isTurn;

/// A step along or about an axis of the base at 0.1 m/s or 0.5 rad/s.
JogMove baseStep(JogAxis axis, double distance);

/// A straight move of the tool to a pose in base coordinates.
struct PoseMove {
    std::array<double, 3> trans{};             ///< metres
    std::optional<std::array<double, 3>> rot;  ///< radians; without it the tool keeps its orientation
    double speed = 0.05;                       ///< m/s, positive
};

/// Plans a move to a pose; as kin::planJog().
JogAnswer planPoseMove(const Arm& arm, const MotionPlan::Posture& start, const PoseMove& move,
                       MotionCommand* motion);

}  // namespace sim
