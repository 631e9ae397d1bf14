#pragma once

#include "simulator/motioncommand.h"

namespace sim {

/// An axis of the base that the tool is jogged along or about.
enum class JogAxis { X, Y, Z, Rx, Ry, Rz };

/// What became of a jog.
enum class JogAnswer {
    Moves,
    DriveOff,
    Moving,      ///< the robot moves already, or motions wait to be released
    OutOfReach,  ///< no posture reaches the target
    JointLimit,  ///< reached only beyond a joint's limit
};

/// The line or the turn on the spot that takes the tool from `start` one step further: along an axis
/// by metres, or about it, at the tool's tip, by radians.
MotionCommand jogMotion(const Pose& start, JogAxis axis, double step);

}  // namespace sim
