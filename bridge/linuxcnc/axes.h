#pragma once

#include "kinematics/arm.h"

#include <kdl/frames.hpp>

#include <array>

namespace bridge::linuxcnc {

/// X, Y, Z in mm and A, B, C in degrees, or six joints in degrees, as LinuxCNC counts them.
using Axes = std::array<double, 6>;

/// LinuxCNC's joints are (j1, j2 - 90°, j3, j4, j5, -j6) of the arm.
Axes jointWords(const kin::Joints& joints);
kin::Joints jointsOf(const Axes& words);

/// A torch's pose in LinuxCNC's axes, where a torch that points down is A = B = C = 0. One orientation has
/// many A, B, C, and LinuxCNC goes from one to the next along a straight line of numbers: these are the
/// nearest to those before.
Axes axesNear(const KDL::Frame& torch, const Axes& before);
/// As LinuxCNC takes them anew from the joints, after a stop or a joint motion: |A|, |C| ≤ 180, |B| ≤ 90.
Axes axesAnew(const KDL::Frame& torch);

}  // namespace bridge::linuxcnc
