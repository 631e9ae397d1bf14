#pragma once

#include "simulator/arm.h"

#include <QString>

#include <vector>

struct KordCall;

namespace sim {

/// Results of motions, as they are written to command nodes.
enum MotionCode {
    MotionDone = 0,
    OutOfReach = -1,   ///< a point on the way that no posture reaches
    JointLimit = -2,   ///< reached only beyond a joint's limit
    NoCircle = -3,     ///< three points of an arc on one line, or two in one place
    DriveOff = -4,     ///< started without power
    NoSpeed = -5,      ///< a speed that is missing, zero, negative or no number
    NoTarget = -6,     ///< a target that is missing, incomplete or made for another number of axes
    FailedAtEnd = -9,  ///< reached its target, and reports a failure there
};

/// One motion as it was ordered.
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
    int refusal = 0;           ///< NoSpeed or NoTarget when it cannot be meant
    int endCode = MotionDone;  ///< reported at its target; a failure lets nothing behind it be moved
};

/// The kind of a command of the robot service; false for one that orders no motion.
bool motionKind(const QString& name, MotionCommand::Kind* kind);
/// "move.j", "move.l" or "move.c".
QString commandName(MotionCommand::Kind kind);

/// Takes what a motion needs out of a call's arguments, for an arm with `axes` axes.
MotionCommand readMotion(const KordCall& call, MotionCommand::Kind kind, int id, int axes);

}  // namespace sim
