#pragma once

#include "program/geometry.h"

#include <vector>

namespace app {

using prog::Position;

/// A path as straight pieces, as it is drawn.
using Polyline = std::vector<Position>;

double lengthOf(const Polyline& line);
/// The position at a length (metres) from the start; the ends for lengths outside. `line` is not empty.
Position along(const Polyline& line, double length);
/// The part from one length to another, with exact ends.
Polyline cut(const Polyline& line, double from, double to);

/// The corner between two paths, cut `radius` before the end of the first one and behind the start of
/// the second one: between two lines a parabola with the corner as its middle control point.
Polyline roundedCorner(const Polyline& in, const Polyline& out, double radius);

}  // namespace app
