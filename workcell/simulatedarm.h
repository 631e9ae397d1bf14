#pragma once

#include "kinematics/arm.h"
#include "program/armmodel.h"
#include "simulator/motionplan.h"

namespace workcell {

/// The arm of the simulated controller. It plans a move as the controller does, so what it refuses the
/// controller would refuse.
class SimulatedArm : public prog::ArmModel {
public:
    /// The controller's own arm, which outlives it.
    explicit SimulatedArm(const kin::Arm& arm) : arm_(arm) {}

    [[nodiscard]] prog::ArmPosture home() const override;
    [[nodiscard]] std::optional<prog::ReachFault> follow(const prog::Statement& move, double speedMmPerS,
                                                         prog::ArmPosture* posture) const override;

private:
    [[nodiscard]] std::optional<prog::ReachFault> fasterThanJoints(const sim::MotionPlan& plan,
                                                                   double speedMPerS) const;

    const kin::Arm& arm_;
};

}  // namespace workcell
