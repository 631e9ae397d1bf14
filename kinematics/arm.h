#pragma once

#include "bridge/motion.h"

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace KDL {
class Frame;
}

namespace kin {

using bridge::Joints;
using bridge::Pose;

/// A pose as the kinematics library has it.
KDL::Frame toFrame(const Pose& pose);
/// The pose of a frame. Angles that are -π up to rounding come out as π.
Pose toPose(const KDL::Frame& frame);

/// The kinematics of the welding arm: a spherical wrist with a torch of 150 mm, and six axes
/// or, with a roll of the upper arm, seven. The Orocos Kinematics and Dynamics Library solves them.
///
/// Denavit-Hartenberg rows: turn by θ about z, move d along z and a along the new x, turn by α about
/// that x (distances in metres, angles in degrees):
///
///     six axes                                     seven axes
///     axis   θ        d     a     α    limits      axis   θ        d     a     α    limits
///      1     q1      0.45  0.08  -90   ±170         1     q1      0.45  0.08  -90   ±170
///      2     q2-90   0     0.62    0   -100..135    2     q2      0     0      90   -100..135
///      3     q3      0     0     -90   -210..75     3     q3      0.62  0     -90   ±170
///      4     q4      0.70  0      90   ±190         4     q4      0     0      90   ±165
///      5     q5      0     0     -90   ±130         5     q5      0.70  0     -90   ±190
///      6     q6      0.25  0       0   ±360         6     q6      0     0      90   ±130
///                                                   7     q7+180  0.25  0       0   ±360
///
/// The wrist reaches 1.4 m from axis 1. The base is the origin, z points up. The limits of axis 3 stop
/// the elbow 15 degrees before it is folded.
class Arm {
public:
    enum class Fault { None, OutOfReach, JointLimit };

    /// Seven axes for 7, six for any other number.
    explicit Arm(int axes);
    ~Arm();

    int axes() const;
    /// Joint angles at home: the tool at (0.5, 0, 0.4) with rot (π, 0, 0), pointing down.
    const Joints& home() const;
    /// `joints` has one angle per axis. rx and rz of the result are in (-π, π], ry in [-π/2, π/2].
    Pose forward(const Joints& joints) const;
    /// Where its parts meet, m, from the base to the tool: base, the height of axis 1, shoulder, elbow,
    /// wrist, the torch's end at the flange, and the tool. For a picture of the arm.
    std::vector<std::array<double, 3>> skeleton(const Joints& joints) const;
    /// The solution nearest to `seed` (sum of the squared joint differences). It is exact to 0.1 nm and
    /// 1e-10 rad, at singular poses to 2 µm and 2 µrad. Without a solution: nothing, and the reason in
    /// `fault`. The same input gives the same solution.
    std::optional<Joints> inverse(const Pose& pose, const Joints& seed, Fault* fault = nullptr) const;
    bool withinLimits(const Joints& joints) const;

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace kin
