#pragma once

#include "runner/problem.h"

#include <QByteArray>

#include <optional>
#include <vector>

namespace run {

/// The point record (`trans` in metres, `rot` and `near` in radians) of a tool pose, as JSON on one
/// line. `pose`: x, y, z in mm, rx, ry, rz in degrees; `near` is the solution nearest to home.
/// Nothing, with the reason, when the arm does not get there.
std::optional<QByteArray> pointRecord(const std::vector<double>& pose, int axes, Problem* problem);

}  // namespace run
