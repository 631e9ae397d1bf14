#pragma once

#include "program/geometry/vector.h"

namespace prog {

/// Why no circle goes through three points.
enum class CircleFault { None, Coincident, Collinear };

/// Whether a circle goes through the three points, as a run draws it: judged in double precision against
/// the single precision that a run's midpoints are computed in.
[[nodiscard]] CircleFault circleFault(const Position& s, const Position& p1, const Position& p2);

}  // namespace prog
