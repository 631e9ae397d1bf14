#pragma once

#include <array>
#include <optional>

namespace bridge {

/// An axis to jog the tool along or about.
enum class JogAxis { X, Y, Z, Rx, Ry, Rz };

/// What is jogged: one joint, or the tool relative to its own axes or to those of the base.
enum class JogFrame { Joint, Tool, Base };

/// Whether a jog moves, or why not.
enum class JogAnswer {
    Moves,
    DriveOff,
    Moving,      ///< the robot moves already, or motions wait to be released
    OutOfReach,  ///< no posture reaches the target
    JointLimit,  ///< reached only beyond a joint's limit
    TooFast,     ///< a joint would have to turn faster than it can
    NotOffered,  ///< this controller takes no jogs from here
};

/// One jog of a joint, or of the tool about its tip.
struct JogMove {
    JogFrame frame = JogFrame::Base;
    int axis = 0;         ///< of JogAxis, or the joint from 0
    double distance = 0;  ///< metres or radians; the sign is the direction
    double speed = 0;     ///< m/s or rad/s, positive
};

}  // namespace bridge
