#pragma once

#include "app/path/polyline.h"
#include "program/runprogram.h"
#include "simulator/motionplan.h"

#include <QSet>

#include <vector>

namespace app {

/// The path of one move of a program.
struct PathMove {
    enum class Shape { Joint, Line, Arc, Circle };

    int line = 0;  ///< of the program, counted from 0
    Shape shape = Shape::Line;
    bool weld = false;        ///< between a start and a stop of welding
    int seam = -1;            ///< of a weld: which one of the program, counted from 0
    bool impossible = false;  ///< the check of the program says so; drawn straight where there is no arc
    Polyline path;            ///< from the last target or corner to its own
    Polyline corner;          ///< how the zone rounds the target off; empty where the tool stops there
    Position target;          ///< as it was taught

    double length() const { return lengthOf(path) + lengthOf(corner); }
};

/// The paths of the executed moves of a program, in their order, as a run from the first line makes them.
///
/// The path to the first target depends on where the robot stands then: it is left out, and its corner too.
/// The first move is its target alone, unless it is an arc or a circle, which begins at `start`. Within a
/// batch a target is rounded off by its zone, as far as half of the shorter path. Joint moves go from the
/// joints that belong to the last target, straight where these are not known. `impossible`: lines of the
/// moves that the check of the program refuses.
std::vector<PathMove> layOutPath(const prog::RunProgram& program, const sim::Arm& arm,
                                 const sim::MotionPlan::Posture& start, const QSet<int>& impossible = {});

/// The weld in which a line lies, counted from 0; -1 for a line outside.
[[nodiscard]] int seamOf(const std::vector<PathMove>& moves, int line);
/// How many welds there are.
[[nodiscard]] int seamCount(const std::vector<PathMove>& moves);
/// The path of a weld from its start to its end, corners and all.
[[nodiscard]] Polyline seamPath(const std::vector<PathMove>& moves, int seam);

}  // namespace app
