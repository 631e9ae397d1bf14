#pragma once

#include "bridge/jog.h"
#include "simulator/motionplan.h"

#include <optional>

namespace sim {

using bridge::JogAnswer;
using bridge::JogAxis;
using bridge::JogFrame;
using bridge::JogMove;

/// Whether the jog is a turn, in radians.
bool isTurn(const JogMove& move);

/// A step along or about an axis of the base at 0.1 m/s or 0.5 rad/s.
JogMove baseStep(JogAxis axis, double distance);

/// Plans a jog; the tool turns by less than half a turn. `motion` is written only for JogAnswer::Moves.
JogAnswer planJog(const Arm& arm, const MotionPlan::Posture& start, const JogMove& move,
                  MotionCommand* motion);

/// A straight move of the tool to a pose in base coordinates.
struct PoseMove {
    std::array<double, 3> trans{};             ///< metres
    std::optional<std::array<double, 3>> rot;  ///< radians; without it the tool keeps its orientation
    double speed = 0.05;                       ///< m/s, positive
};

/// Plans a move to a pose; as planJog().
JogAnswer planPoseMove(const Arm& arm, const MotionPlan::Posture& start, const PoseMove& move,
                       MotionCommand* motion);

/// `move` extended as far as the arm gets in its direction: to the joint's limit; or to within 2 mm or
/// 0.02 rad of where the tool gets on a straight line, at most 3 m or 3 rad. Its distance is 0 when the
/// arm cannot move in that direction.
JogMove farthestJog(const Arm& arm, const MotionPlan::Posture& start, const JogMove& move);

}  // namespace sim
