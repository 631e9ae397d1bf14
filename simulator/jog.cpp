#include "simulator/jog.h"

#include "kinematics/track.h"

namespace sim {

namespace {

constexpr double lineSpeed = 0.1;  // m/s
constexpr double turnSpeed = 0.5;  // rad/s

}  // namespace

JogMove baseStep(JogAxis axis, double distance) {
    JogMove move{JogFrame::Base, int(axis), distance, lineSpeed};
    if (isTurn(move)) {
        move.speed = turnSpeed;
    }
    return move;
}

JogAnswer planPoseMove(const Arm& arm, const MotionPlan::Posture& start, const PoseMove& move,
                       MotionCommand* motion) {
    const Pose target{move.trans, move.rot.value_or(start.pose.rot)};
    return kin::planLine(arm, start, kin::toFrame(target), move.speed, motion);
}

}  // namespace sim
