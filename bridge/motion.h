#pragma once

#include <array>
#include <vector>

namespace bridge {

/// A tool pose in the base: position in metres, (rx, ry, rz) in radians with R = Rz·Ry·Rx.
struct Pose {
    std::array<double, 3> trans{};
    std::array<double, 3> rot{};
};

using Joints = std::vector<double>;  ///< radians, one per axis

/// Where the arm is.
struct Posture {
    Pose pose;  ///< of the torch, independent of the tool set
    Joints joints;
    /// How long ago the arm was there, ms, where the controller tells; 0: now.
    double ageMs = 0;
};

/// Results of motions, as the package reads them. Other negative codes are a controller's own.
enum MotionCode {
    MotionDone = 0,
    OutOfReach = -1,   ///< no posture reaches a point of the path
    JointLimit = -2,   ///< a point is reached only beyond a joint's limit
    NoCircle = -3,     ///< the three points of an arc are collinear, or two coincide
    DriveOff = -4,     ///< started without power
    NoSpeed = -5,      ///< the speed is missing, zero, negative or not a number
    NoTarget = -6,     ///< the target is missing, incomplete or for another number of axes
    FailedAtEnd = -9,  ///< reached its target and failed there
};

/// One motion as ordered.
struct Motion {
    enum class Kind { Joint, Line, Arc };
    struct Via {
        Pose aux, end;
    };

    int id = 0;  ///< from 1, counted by the adapter
    Kind kind = Kind::Line;
    Joints joints;           ///< target of a joint motion
    std::vector<Via> poses;  ///< targets of a line (one, `aux` unused), or of arcs, one after the other
    double speed = 0;        ///< m/s of the tool, in joint motions too
    double zone = 0;  ///< m, never negative: where the corner to the next motion of the batch may begin
    /// NoSpeed or NoTarget for a bad argument. Only a backend with Abilities::refusals gets such a motion; it
    /// reports this code at the motion's turn.
    int refusal = MotionDone;
};

}  // namespace bridge
