#pragma once

#include "kinematics/arm.h"

namespace sim {

using kin::Arm;
using kin::Joints;
using kin::Pose;

using bridge::DriveOff;
using bridge::FailedAtEnd;
using bridge::JointLimit;
using bridge::MotionCode;
using bridge::MotionDone;
using bridge::NoCircle;
using bridge::NoSpeed;
using bridge::NoTarget;
using bridge::OutOfReach;

/// The id of a motion that no command ordered: a jog. It has no result.
constexpr int jogId = 0;

/// One motion as ordered.
struct MotionCommand : bridge::Motion {
    int endCode = MotionDone;  ///< reported at its target; after a failure the following motions are dropped
};

}  // namespace sim
