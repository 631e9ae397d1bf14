#pragma once

#include "simulator/arm.h"

#include <kdl/frames.hpp>

namespace sim {

/// A pose as the kinematics library has it.
KDL::Frame toFrame(const Pose& pose);

/// The pose of a frame; angles that are -π but for rounding come out as π.
Pose toPose(const KDL::Frame& frame);

}  // namespace sim
