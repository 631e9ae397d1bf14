#include "simulator/jog.h"

#include "simulator/frames.h"
#include "simulator/track.h"

#include <cmath>

namespace sim {

namespace {

constexpr double lineSpeed = 0.1;  // m/s
constexpr double turnSpeed = 0.5;  // rad/s

// How far a jog that is held is looked ahead for, and in which steps.
constexpr double lineEach[] = {0.01, 0.002}, lineMost = 3;  // metres
constexpr double turnEach[] = {0.08, 0.02}, turnMost = 3;   // rad; half a turn could go either way round
constexpr double jointMost = 4 * 3.14159265358979323846;
constexpr int halvings = 40;
constexpr double leastJoint = 1e-6;  // rad; less is none

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
        const KDL::Rotation rotation = turn(move.axis, move.way);
        target.M = ofTool ? target.M * rotation : rotation * target.M;
    } else {
        KDL::Vector way;
        way[move.axis] = move.way;
        target.p += ofTool ? target.M * way : way;
    }
    return target;
}

Joints targetJoints(const Joints& start, const JogMove& move) {
    Joints joints = start;
    joints[size_t(move.axis)] += move.way;
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

JogAnswer planJoint(const Arm& arm, const Joints& start, const JogMove& move, MotionCommand* motion) {
    const Joints target = targetJoints(start, move);
    if (!arm.withinLimits(target)) {
        return JogAnswer::JointLimit;
    }
    *motion = {};
    motion->kind = MotionCommand::Kind::Joint;
    motion->joints = target;
    // The speed of a motion is that of the tool, on the circle that it goes round the joint.
    motion->speed = move.speed * JointTrack(arm, start, target).length() / std::abs(move.way);
    return JogAnswer::Moves;
}

JogAnswer planLine(const Arm& arm, const MotionPlan::Stand& start, const KDL::Frame& target, double speed,
                   MotionCommand* motion) {
    const Arm::Fault fault = PoseTrack::line(toFrame(start.pose), target)->follow(arm, start.joints);
    if (fault != Arm::Fault::None) {
        return answerTo(fault);
    }
    *motion = {};
    motion->kind = MotionCommand::Kind::Line;
    motion->poses.push_back({Pose(), toPose(target)});
    motion->speed = speed;
    return JogAnswer::Moves;
}

JogAnswer planTool(const Arm& arm, const MotionPlan::Stand& start, const JogMove& move,
                   MotionCommand* motion) {
    const double speed = isTurn(move) ? move.speed * turnRadius : move.speed;
    return planLine(arm, start, targetFrame(start.pose, move), speed, motion);
}

/// By halving: between the limits everything can be reached.
double jointWay(const Arm& arm, const Joints& start, JogMove move, double direction) {
    double reached = 0, missed = jointMost;
    for (int i = 0; i < halvings; ++i) {
        const double middle = (reached + missed) / 2;
        move.way = direction * middle;
        (arm.withinLimits(targetJoints(start, move)) ? reached : missed) = middle;
    }
    return reached > leastJoint ? reached : 0;
}

/// In steps, because the next posture depends on the last; in small ones only at the end.
double toolWay(const Arm& arm, const MotionPlan::Stand& start, JogMove move, double direction) {
    const double most = isTurn(move) ? turnMost : lineMost;
    Joints joints = start.joints;
    double reached = 0;
    for (const double each : isTurn(move) ? turnEach : lineEach) {
        while (reached + each <= most) {
            move.way = direction * (reached + each);
            const auto next = arm.inverse(toPose(targetFrame(start.pose, move)), joints);
            if (!next) {
                break;
            }
            joints = *next;
            reached += each;
        }
    }
    // The planner's own steps may lead to another posture, and from there no further.
    MotionCommand motion;
    for (move.way = direction * reached; reached > 0; move.way = direction * reached) {
        if (planTool(arm, start, move, &motion) == JogAnswer::Moves) {
            return reached;
        }
        reached -= isTurn(move) ? turnEach[0] : lineEach[0];
    }
    return 0;
}

}  // namespace

bool isTurn(const JogMove& move) {
    return move.frame == JogFrame::Joint || move.axis >= int(JogAxis::Rx);
}

JogMove baseStep(JogAxis axis, double way) {
    JogMove move{JogFrame::Base, int(axis), way, lineSpeed};
    if (isTurn(move)) {
        move.speed = turnSpeed;
    }
    return move;
}

JogAnswer planJog(const Arm& arm, const MotionPlan::Stand& start, const JogMove& move,
                  MotionCommand* motion) {
    return move.frame == JogFrame::Joint ? planJoint(arm, start.joints, move, motion)
                                         : planTool(arm, start, move, motion);
}

JogAnswer planPlace(const Arm& arm, const MotionPlan::Stand& start, const PlaceMove& move,
                    MotionCommand* motion) {
    const Pose target{move.trans, move.rot.value_or(start.pose.rot)};
    return planLine(arm, start, toFrame(target), move.speed, motion);
}

JogMove farthestJog(const Arm& arm, const MotionPlan::Stand& start, const JogMove& move) {
    const double direction = move.way < 0 ? -1 : 1;
    JogMove farthest = move;
    farthest.way = direction * (move.frame == JogFrame::Joint ? jointWay(arm, start.joints, move, direction)
                                                              : toolWay(arm, start, move, direction));
    return farthest;
}

}  // namespace sim
