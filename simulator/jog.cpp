#include "simulator/jog.h"

#include "simulator/frames.h"

namespace sim {

namespace {

constexpr double kLineSpeed = 0.1;   // m/s
constexpr double kTurnSpeed = 0.01;  // m/s of the way that turning counts as: half a radian a second

KDL::Rotation turn(JogAxis axis, double angle) {
    switch (axis) {
        case JogAxis::Rx:
            return KDL::Rotation::RotX(angle);
        case JogAxis::Ry:
            return KDL::Rotation::RotY(angle);
        case JogAxis::Rz:
            return KDL::Rotation::RotZ(angle);
        default:
            return KDL::Rotation::Identity();
    }
}

}  // namespace

MotionCommand jogMotion(const Pose& start, JogAxis axis, double step) {
    KDL::Frame target = toFrame(start);
    const bool turning = axis >= JogAxis::Rx;
    if (turning)
        target.M = turn(axis, step) * target.M;
    else
        target.p[int(axis)] += step;
    MotionCommand motion;
    motion.kind = MotionCommand::Kind::Line;
    motion.poses.push_back({Pose(), toPose(target)});
    motion.speed = turning ? kTurnSpeed : kLineSpeed;
    return motion;
}

}  // namespace sim
