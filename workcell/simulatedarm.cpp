#include "workcell/simulatedarm.h"

#include "program/fullcircle.h"
#include "simulator/motioncommand.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace workcell {

namespace {

using prog::StatementType;
using sim::MotionCommand;

constexpr double pi = 3.14159265358979323846;

/// °/s, base to flange: of six axes, and of seven with the roll of the upper arm.
constexpr std::array<double, 6> sixSpeeds = {200, 200, 220, 400, 400, 600};
constexpr std::array<double, 7> sevenSpeeds = {200, 200, 220, 220, 400, 400, 600};

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

double SimulatedArm::jointSpeed(int axis) const {
    const auto position = static_cast<std::size_t>(axis);
    const double degrees =
        arm_.axes() == int(sevenSpeeds.size()) ? sevenSpeeds.at(position) : sixSpeeds.at(position);
    return degrees * pi / 180;
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
    constexpr double sampleM = 0.002;
    constexpr int fewest = 4;
    const double length = plan.profile().length();
    const double speed = std::min(speedMPerS, std::sqrt(sim::motionAcceleration * length));
    const int samples = std::max(fewest, int(std::ceil(length / sampleM)));
    const double step = length / samples;
    std::optional<prog::ReachFault> worst;
    double most = 1.0;
    kin::Joints before = plan.at(0.0).joints;
    for (int i = 1; i <= samples && step > 0; ++i) {
        const kin::Joints joints = plan.at(step * i).joints;
        for (int axis = 0; axis < arm_.axes(); ++axis) {
            const auto position = static_cast<std::size_t>(axis);
            const double asked = std::abs(joints[position] - before[position]) / step * speed;
            if (asked > most * jointSpeed(axis)) {
                most = asked / jointSpeed(axis);
                worst = prog::ReachFault{prog::ReachFault::Kind::JointSpeed, axis + 1, asked,
                                         jointSpeed(axis), step * i * prog::mmPerM};
            }
        }
        before = joints;
    }
    return worst;
}

}  // namespace workcell
