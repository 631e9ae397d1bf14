#pragma once

#include <optional>
#include <vector>

namespace app {

/// A place in the base, metres.
struct Place {
    double x = 0, y = 0, z = 0;
};

Place operator+(const Place& a, const Place& b);
Place operator-(const Place& a, const Place& b);
Place operator*(const Place& a, double factor);
double dot(const Place& a, const Place& b);
double norm(const Place& a);
/// The place that lies `share` of the way from a to b.
Place between(const Place& a, const Place& b, double share);

/// A way as the straight pieces that it is drawn with.
using Polyline = std::vector<Place>;

double lengthOf(const Polyline& line);
/// The place at a length from the start; the ends for lengths outside. `line` has at least one place.
Place along(const Polyline& line, double length);
/// The part from one length to another, with exact ends.
Polyline cut(const Polyline& line, double from, double to);

/// The arc from `start` through `aux` to `end`; nothing where two of them are one place or all are on
/// one line, as the controller judges it.
std::optional<Polyline> arcThrough(const Place& start, const Place& aux, const Place& end);
/// The whole circle from `start` through p1 and p2 back to `start`; nothing where a run refuses it.
std::optional<Polyline> circleThrough(const Place& start, const Place& p1, const Place& p2);

/// The corner between two ways, cut `radius` before the end of the first one and behind the start of
/// the second one: between two lines a parabola with the corner as its middle control point.
Polyline roundedCorner(const Polyline& in, const Polyline& out, double radius);

}  // namespace app
