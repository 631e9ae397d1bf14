#pragma once

#include "program/pathpiece.h"
#include "program/runprogram.h"

#include <vector>

namespace prog {

/// The path of the executed moves from a line on to the weld's end: to the next start or stop of welding that
/// is executed. `start`: where the tool is when the line begins. A joint move, whose path only the robot
/// knows, and an arc through points that make none, count as the line to their end.
[[nodiscard]] std::vector<PathPiece> seamAhead(const RunProgram& program, int line, Pose start);

}  // namespace prog
