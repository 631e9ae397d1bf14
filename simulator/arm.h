#pragma once

#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace sim {

/// A tool pose: position in metres, (rx, ry, rz) in radians with R = Rz·Ry·Rx.
struct Pose {
    std::array<double, 3> trans{};
    std::array<double, 3> rot{};
};

using Joints = std::vector<double>;  ///< radians, one per axis

/// The kinematics of the simulated arm: a welding arm with a spherical wrist and a torch of 150 mm on it,
/// six axes or, with a roll of the upper arm, seven. Forward and inverse kinematics come from the
/// Orocos Kinematics and Dynamics Library.
///
/// Each row turns by θ about z, then moves d along z, a along the new x and turns α about it
/// (distances in metres, angles in degrees):
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
/// The wrist reaches 1.4 m from axis 1, the base stands at the origin, z is up. The limits of axis 3
/// keep the elbow 15 degrees from folding up.
class Arm {
public:
    enum class Fault { None, OutOfReach, JointLimit };

    /// `axes` is 7 or anything else for 6.
    explicit Arm(int axes);
    ~Arm();

    int axes() const;
    /// Joint angles at home, tool at (0.5, 0, 0.4), rot (π, 0, 0): pointing down.
    const Joints& home() const;
    /// `joints` has one angle per axis. Angles of `rot` are in (-π, π], that of y in [-π/2, π/2].
    Pose forward(const Joints& joints) const;
    /// The solution nearest to `seed` (sum of the squared differences), which meets the pose to
    /// 0.1 nm and 1e-10 rad, at singular poses to 2 µm and 2 µrad; nothing, with the reason in
    /// `fault`, when there is none. The same input gives the same solution.
    std::optional<Joints> inverse(const Pose& pose, const Joints& seed, Fault* fault = nullptr) const;
    bool withinLimits(const Joints& joints) const;

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace sim
