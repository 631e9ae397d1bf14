#pragma once

#include "bridge/motion.h"

#include <optional>
#include <vector>

namespace bridge {

/// An arc as straight pieces, for a controller that has no arcs in every plane: the poses from behind `from`
/// to the arc's end, at most `sagM` metres beside it, at least eight. The angles rx, ry and rz change evenly,
/// each by the shorter way. Nothing where the three points lie on one line or coincide.
std::optional<std::vector<Pose>> chords(const Pose& from, const Motion::Via& arc, double sagM);

}  // namespace bridge
