#pragma once

#include "kinematics/arm.h"

#include <QString>

#include <vector>

struct KordCall;

namespace sim {

using kin::Arm;
using kin::Joints;
using kin::Pose;

/// The id of a motion that no command ordered: a jog. It has no result.
constexpr int jogId = 0;

/// Results of motions, as written to command nodes.
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
struct MotionCommand {
    enum class Kind { Joint, Line, Arc };
    struct Via {
        Pose aux, end;
    };

    int id = 0;
    Kind kind = Kind::Line;
    Joints joints;             ///< target of a joint motion
    std::vector<Via> poses;    ///< targets of a line (one, `aux` unused) or of arcs
    double speed = 0;          ///< m/s
    double zone = 0;           ///< m, never negative
    int refusal = 0;           ///< NoSpeed or NoTarget for a bad argument
    int endCode = MotionDone;  ///< reported at its target; after a failure the following motions are dropped
};

/// The kind of motion that a command of the robot service orders; false when it orders none.
bool motionKind(const QString& name, MotionCommand::Kind* kind);
/// "move.j", "move.l" or "move.c".
QString commandName(MotionCommand::Kind kind);

/// Reads a motion from a call's arguments, for an arm with `axes` axes.
MotionCommand readMotion(const KordCall& call, MotionCommand::Kind kind, int id, int axes);

}  // namespace sim
