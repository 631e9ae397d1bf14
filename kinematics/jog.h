#pragma once

#include "bridge/jog.h"
#include "kinematics/arm.h"

namespace KDL {
class Frame;
}

namespace kin {

using bridge::JogAnswer;
using bridge::JogMove;
using bridge::Motion;
using bridge::Posture;

/// Whether the jog is a turn, in radians.
bool isTurn(const JogMove& move);

/// Plans a jog as a joint motion or a line; the tool turns by less than half a turn. `motion` is written only
/// for JogAnswer::Moves.
JogAnswer planJog(const Arm& arm, const Posture& start, const JogMove& move, Motion* motion);

/// Plans a straight move of the tool; as planJog().
JogAnswer planLine(const Arm& arm, const Posture& start, const KDL::Frame& target, double speed,
                   Motion* motion);

constexpr double farthestLine = 3;  ///< m
constexpr double farthestTurn = 3;  ///< rad; below π the direction is unambiguous

/// `move` extended as far as the arm gets in its direction: to the joint's limit; or to within 2 mm or
/// 0.02 rad of where the tool gets on a straight line, at most `mostLine` or `mostTurn`. Unchanged where the
/// arm cannot move in that direction: planJog() says why. 3 m may take 50 ms.
JogMove farthestJog(const Arm& arm, const Posture& start, const JogMove& move, double mostLine = farthestLine,
                    double mostTurn = farthestTurn);

}  // namespace kin
