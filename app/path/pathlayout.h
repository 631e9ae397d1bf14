#pragma once

#include "app/path/polyline.h"
#include "simulator/arm.h"

#include <QJsonArray>

#include <vector>

namespace app {

/// The way of one move of a program.
struct PathMove {
    enum class Shape { Joint, Line, Arc, Circle };

    int line = 0;  ///< of the program, counted from 0
    Shape shape = Shape::Line;
    bool weld = false;        ///< between a start and a stop of welding
    bool impossible = false;  ///< three places that make no circle, or no place at all: drawn as it was meant
    Polyline way;             ///< from the last target or corner to its own
    Polyline corner;          ///< how the zone rounds the target off; empty where the tool stops there
    Position target;          ///< as it was taught

    double length() const { return lengthOf(way) + lengthOf(corner); }
};

/// Where the robot stands before the program.
struct PathStart {
    Position place;
    sim::Joints joints;
};

/// What the executed moves of a program (its statements as in a project file) make the tool do, in
/// their order.
///
/// The way to the first target depends on where the robot stands then: it is left out, as is how it is
/// rounded off. The first move is its target alone, unless it is an arc or a circle, which begins at
/// `start`. Moves that follow each other without another statement or a skipped one between them are
/// rounded off at the target by their zone, as far as half of the shorter way. Joint moves go from the
/// joints that belong to the last target, straight where these are not known.
std::vector<PathMove> layOutPath(const QJsonArray& statements, const sim::Arm& arm, const PathStart& start);

}  // namespace app
