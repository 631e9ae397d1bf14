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

/// The kinematics of the simulated arm: a chain of revolute joints with six or seven axes, described
/// by its DH table. Forward and inverse kinematics come from the Orocos Kinematics and Dynamics Library.
class Arm {
public:
    enum class Fault { None, OutOfReach, JointLimit };

    explicit Arm(int axes);
    ~Arm();

    int axes() const;
    /// Joint angles at home, tool at (0.5, 0, 0.4), pointing down.
    const Joints& home() const;
    Pose forward(const Joints& joints) const;
    /// The solution nearest to `seed`; nothing, with the reason in `fault`, when there is none.
    std::optional<Joints> inverse(const Pose& pose, const Joints& seed, Fault* fault = nullptr) const;
    bool withinLimits(const Joints& joints) const;

private:
    struct Private;
    std::unique_ptr<Private> d_;
};

}  // namespace sim
