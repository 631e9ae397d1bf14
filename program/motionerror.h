#pragma once

#include <vector>

namespace prog {

/// What the negative result of a motion means, in English, each without a full stop: "the path leaves the
/// robot's reach". The texts are the sources of their translations (context "MotionError").
struct MotionError {
    int code;
    const char* reason;
    const char* remedy;  ///< what the operator can do about it
};

/// The meaning of a result of the robot service. docs/integrator.md lists the codes that have one; every
/// other code is a fault that only the controller can explain.
[[nodiscard]] const MotionError& motionError(int code);

/// All texts that may be asked for, for a test of their translations.
[[nodiscard]] std::vector<const char*> motionErrorWords();

}  // namespace prog
