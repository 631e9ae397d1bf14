#pragma once

#include "program/geometry.h"
#include "program/statement.h"

#include <optional>
#include <vector>

namespace prog {

/// Where a robot stands.
struct ArmPosture {
    Position trans;
    Orientation rot{};
    std::vector<double> joints;  ///< rad, one for each axis
};

/// Why an arm cannot make a motion.
struct ReachFault {
    enum class Kind {
        OutOfReach,
        JointLimit,  ///< of `axis`
        JointSpeed,  ///< `axis` would have to turn faster than it can
    };

    Kind kind = Kind::OutOfReach;
    int axis = 0;        ///< from 1; 0: none in particular
    double value = 0.0;  ///< of a joint's speed: what the motion asks for, rad/s
    double limit = 0.0;  ///< of a joint's speed: the highest, rad/s
    double atMm = 0.0;   ///< along the motion's path
};

/// The kinematics of the robot of a cell. The robot service cannot be asked for them: a host that knows its
/// arm gives the package one; without it a check leaves the reach out.
class ArmModel {
public:
    virtual ~ArmModel() = default;

    /// Where the arm is when a program begins.
    [[nodiscard]] virtual ArmPosture home() const = 0;
    /// Makes one taught move from `posture`, which becomes where it ends; where the arm cannot make it, the
    /// target if that can be reached, else `posture` stays. Nothing when the arm can make it. The points of
    /// `move` are taught; a full circle begins and ends at `posture`.
    [[nodiscard]] virtual std::optional<ReachFault> follow(const Statement& move, double speedMmPerS,
                                                           ArmPosture* posture) const = 0;
};

}  // namespace prog
