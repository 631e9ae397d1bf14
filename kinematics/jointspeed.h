#pragma once

#include "kinematics/arm.h"

#include <functional>
#include <optional>

namespace kin {

/// The highest speed of an axis, from 0, of an arm with six or seven axes, rad/s.
double jointSpeed(int axes, int axis);

/// A joint that would have to turn faster than it can.
struct FastJoint {
    int axis = 0;      ///< from 0
    double asked = 0;  ///< rad/s
    double atM = 0;    ///< along the path
};

/// The joint that a path asks most of, where that is more than it can. `joints`: along the path, which is
/// `lengthM` long and travelled at `speed` (m/s).
std::optional<FastJoint> fastestJoint(double lengthM, const std::function<Joints(double)>& joints, int axes,
                                      double speed);

}  // namespace kin
