#pragma once

#include "simulator/motionplan.h"

namespace sim {

/// An axis that the tool is jogged along or about.
enum class JogAxis { X, Y, Z, Rx, Ry, Rz };

/// What a jog key moves: one joint, or the tool along and about its own axes or those of the base.
enum class JogFrame { Joint, Tool, Base };

/// What became of a jog.
enum class JogAnswer {
    Moves,
    DriveOff,
    Moving,      ///< the robot moves already, or motions wait to be released
    OutOfReach,  ///< no posture reaches the target
    JointLimit,  ///< reached only beyond a joint's limit
};

/// One jog: of a joint (from 0), or of a JogAxis, about the tool's tip.
struct JogMove {
    JogFrame frame = JogFrame::Base;
    int axis = 0;
    double way = 0;    ///< metres or radians; the sign is the direction
    double speed = 0;  ///< m/s or rad/s, positive
};

/// Whether radians, not metres, are what it moves by.
bool isTurn(const JogMove& move);

/// A step along or about an axis of the base at a speed that suits it: 0.1 m/s, 0.5 rad/s.
JogMove baseStep(JogAxis axis, double way);

/// The motion that does it, a turn of the tool by less than half a turn. What keeps the arm from it is
/// the answer, and `motion` is left as it is.
JogAnswer planJog(const Arm& arm, const MotionPlan::Stand& start, const JogMove& move, MotionCommand* motion);

/// A pose of the base that the tool is led to in a straight line.
struct PlaceMove {
    std::array<double, 3> trans{};             ///< metres
    std::optional<std::array<double, 3>> rot;  ///< radians; nothing keeps the tool's direction
    double speed = 0.05;                       ///< m/s, positive
};

/// The same for a place.
JogAnswer planPlace(const Arm& arm, const MotionPlan::Stand& start, const PlaceMove& move,
                    MotionCommand* motion);

/// The same as far as the arm gets in that direction, whatever its `way`: to the joint's limit, to within
/// 2 mm or 0.02 rad of where the tool gets on a straight way, or by 3 rad of turning. Without
/// way when there is none.
JogMove farthestJog(const Arm& arm, const MotionPlan::Stand& start, const JogMove& move);

}  // namespace sim
