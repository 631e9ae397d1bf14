#include "workcell/simulatedarm.h"

#include "kinematics/jointspeed.h"
#include "program/fullcircle.h"
#include "simulator/motioncommand.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace workcell {

namespace {

using prog::StatementType;
using sim::MotionCommand;

kin::Pose poseOf(const prog::Position& trans, const prog::Orientation& rot) {
    return {{trans.x, trans.y, trans.z}, rot};
}

kin::Pose poseOf(const prog::TaughtPoint& point) {
    return poseOf(point.trans, point.rot);
}

prog::ArmPosture postureOf(const kin::Pose& pose, const kin::Joints& joints) {
    return {{pose.trans[0], pose.trans[1], pose.trans[2]}, pose.rot, joints};
}

/// The three arcs of a full circle from `start`, as a run sends them.
std::vector<MotionCommand::Via> arcsOf(const prog::Statement& circle, const kin::Pose& start) {
    const prog::Position from{start.trans[0], start.trans[1], start.trans[2]};
    const prog::FullCircle full(from, circle.point.trans, circle.point1.trans);
    const std::array<kin::Pose, 3> corners = {start, poseOf(circle.point), poseOf(circle.point1)};
    std::vector<MotionCommand::Via> arcs;
    for (std::size_t arc = 0; arc < corners.size(); ++arc) {
        kin::Pose middle = corners.at(arc);
        const QVector3D& place = full.midpoints.at(arc);
        middle.trans = {place.x(), place.y(), place.z()};
        arcs.push_back({middle, corners.at((arc + 1) % corners.size())});
    }
    return arcs;
}

MotionCommand commandFor(const prog::Statement& move, double speedMmPerS, const kin::Pose& start) {
    MotionCommand command;
    command.id = 1;
    command.speed = speedMmPerS / prog::mmPerM;
    switch (move.type) {
        case StatementType::MoveJ:
            command.kind = MotionCommand::Kind::Joint;
            command.joints = move.point.joints;
            break;
        case StatementType::MoveC:
            command.kind = MotionCommand::Kind::Arc;
            command.poses = {{poseOf(move.point), poseOf(move.point1)}};
            break;
        case StatementType::MoveCC:
            command.kind = MotionCommand::Kind::Arc;
            command.poses = arcsOf(move, start);
            break;
        default:
            command.poses = {{{}, poseOf(move.point)}};
            break;
    }
    return command;
}

}  // namespace

prog::ArmPosture SimulatedArm::home() const {
    return postureOf(arm_.forward(arm_.home()), arm_.home());
}

std::optional<prog::ReachFault> SimulatedArm::follow(const prog::Statement& move, double speedMmPerS,
                                                     prog::ArmPosture* posture) const {
    const sim::MotionPlan::Posture start{poseOf(posture->trans, posture->rot), posture->joints};
    const MotionCommand command = commandFor(move, speedMmPerS, start.pose);
    const sim::MotionPlan plan(arm_, start, {command});
    const sim::MotionPlan::Failure& failure = plan.failure();
    if (failure.code == sim::MotionDone) {
        *posture = postureOf(plan.end().pose, plan.end().joints);
        return fasterThanJoints(plan, command.speed);
    }
    if (command.kind != MotionCommand::Kind::Joint) {
        const kin::Pose& target = command.poses.back().end;
        if (const auto joints = arm_.inverse(target, start.joints)) {
            *posture = postureOf(target, *joints);
        }
    }
    if (failure.code != sim::OutOfReach && failure.code != sim::JointLimit) {
        return std::nullopt;  // no circle: another rule tells it
    }
    prog::ReachFault fault;
    fault.kind = failure.code == sim::OutOfReach ? prog::ReachFault::Kind::OutOfReach
                                                 : prog::ReachFault::Kind::JointLimit;
    fault.atMm = failure.atM * prog::mmPerM;
    return fault;
}

/// The axis that a move asks most of, where that is more than it can. Between standstills a short move does
/// not reach its speed.
std::optional<prog::ReachFault> SimulatedArm::fasterThanJoints(const sim::MotionPlan& plan,
                                                               double speedMPerS) const {
    const double length = plan.profile().length();
    const double speed = std::min(speedMPerS, std::sqrt(sim::motionAcceleration * length));
    const auto joints = [&plan](double s) { return plan.at(s).joints; };
    const auto fast = kin::fastestJoint(length, joints, arm_.axes(), speed);
    if (!fast) {
        return std::nullopt;
    }
    return prog::ReachFault{prog::ReachFault::Kind::JointSpeed, fast->axis + 1, fast->asked,
                            kin::jointSpeed(arm_.axes(), fast->axis), fast->atM * prog::mmPerM};
}

}  // namespace workcell
