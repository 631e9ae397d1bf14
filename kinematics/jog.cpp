#include "kinematics/jog.h"

#include "kinematics/track.h"

#include <cmath>

namespace kin {

using bridge::JogAxis;
using bridge::JogFrame;

namespace {

// The search for the farthest target of a held jog: coarse and fine steps.
constexpr double lineSteps[] = {0.01, 0.002};            // metres
constexpr double turnSteps[] = {0.08, 0.02};             // rad
constexpr double maxJoint = 4 * 3.14159265358979323846;  // rad
constexpr int halvings = 40;
constexpr double minJoint = 1e-6;  // rad; less counts as none

KDL::Rotation turn(int axis, double angle) {
    switch (JogAxis(axis)) {
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

KDL::Frame targetFrame(const Pose& start, const JogMove& move) {
    KDL::Frame target = toFrame(start);
    const bool ofTool = move.frame == JogFrame::Tool;
    if (isTurn(move)) {
        const KDL::Rotation rotation = turn(move.axis, move.distance);
        target.M = ofTool ? target.M * rotation : rotation * target.M;
    } else {
        KDL::Vector step;
        step[move.axis] = move.distance;
        target.p += ofTool ? target.M * step : step;
    }
    return target;
}

Joints targetJoints(const Joints& start, const JogMove& move) {
    Joints joints = start;
    joints[size_t(move.axis)] += move.distance;
    return joints;
}

JogAnswer answerTo(Arm::Fault fault) {
    switch (fault) {
        case Arm::Fault::None:
            return JogAnswer::Moves;
        case Arm::Fault::OutOfReach:
            return JogAnswer::OutOfReach;
        case Arm::Fault::JointLimit:
            break;
    }
    return JogAnswer::JointLimit;
}

JogAnswer planJoint(const Arm& arm, const Joints& start, const JogMove& move, Motion* motion) {
    const Joints target = targetJoints(start, move);
    if (!arm.withinLimits(target)) {
        return JogAnswer::JointLimit;
    }
    *motion = {};
    motion->kind = Motion::Kind::Joint;
    motion->joints = target;
    // A motion's speed is that of the tool, which moves on a circle about the joint.
    motion->speed = move.speed * JointTrack(arm, start, target).length() / std::abs(move.distance);
    return JogAnswer::Moves;
}

JogAnswer planTool(const Arm& arm, const Posture& start, const JogMove& move, Motion* motion) {
    const double speed = isTurn(move) ? move.speed * turnRadius : move.speed;
    return planLine(arm, start, targetFrame(start.pose, move), speed, motion);
}

/// How far the joint can turn. By halving, since every angle between the limits can be reached.
double jointRange(const Arm& arm, const Joints& start, JogMove move, double direction) {
    double reached = 0, missed = maxJoint;
    for (int i = 0; i < halvings; ++i) {
        const double middle = (reached + missed) / 2;
        move.distance = direction * middle;
        (arm.withinLimits(targetJoints(start, move)) ? reached : missed) = middle;
    }
    return reached > minJoint ? reached : 0;
}

/// How far the tool can move. In steps, because each posture depends on the one before; first in coarse,
/// then in fine ones.
double toolRange(const Arm& arm, const Posture& start, JogMove move, double direction, double most) {
    Joints joints = start.joints;
    double reached = 0;
    for (const double step : isTurn(move) ? turnSteps : lineSteps) {
        while (reached + step <= most) {
            move.distance = direction * (reached + step);
            const auto next = arm.inverse(toPose(targetFrame(start.pose, move)), joints);
            if (!next) {
                break;
            }
            joints = *next;
            reached += step;
        }
    }
    // The planner takes other steps, which can end in another posture with less range.
    Motion motion;
    for (move.distance = direction * reached; reached > 0; move.distance = direction * reached) {
        if (planTool(arm, start, move, &motion) == JogAnswer::Moves) {
            return reached;
        }
        reached -= isTurn(move) ? turnSteps[0] : lineSteps[0];
    }
    return 0;
}

}  // namespace

bool isTurn(const JogMove& move) {
    return move.frame == JogFrame::Joint || move.axis >= int(JogAxis::Rx);
}

JogAnswer planJog(const Arm& arm, const Posture& start, const JogMove& move, Motion* motion) {
    return move.frame == JogFrame::Joint ? planJoint(arm, start.joints, move, motion)
                                         : planTool(arm, start, move, motion);
}

JogAnswer planLine(const Arm& arm, const Posture& start, const KDL::Frame& target, double speed,
                   Motion* motion) {
    const Arm::Fault fault = PoseTrack::line(toFrame(start.pose), target)->follow(arm, start.joints);
    if (fault != Arm::Fault::None) {
        return answerTo(fault);
    }
    *motion = {};
    motion->kind = Motion::Kind::Line;
    motion->poses.push_back({Pose(), toPose(target)});
    motion->speed = speed;
    return JogAnswer::Moves;
}

JogMove farthestJog(const Arm& arm, const Posture& start, const JogMove& move, double mostLine,
                    double mostTurn) {
    const double direction = move.distance < 0 ? -1 : 1;
    JogMove farthest = move;
    const double range = move.frame == JogFrame::Joint
                             ? jointRange(arm, start.joints, move, direction)
                             : toolRange(arm, start, move, direction, isTurn(move) ? mostTurn : mostLine);
    farthest.distance = range > 0 ? direction * range : move.distance;
    return farthest;
}

}  // namespace kin
