#pragma once

#include "runner/problem.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace run {

/// The point record of a tool pose as JSON on one line: `trans` in metres, `rot` and `near` in radians.
/// `pose`: x, y, z in mm, rx, ry, rz in degrees. `near` is the solution nearest to home. Nothing, with the
/// reason in `problem`, when the arm cannot reach the pose.
std::optional<QByteArray> pointRecord(const std::vector<double>& pose, int axes, Problem* problem);

}  // namespace run
