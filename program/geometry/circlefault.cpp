#include "program/geometry/circlefault.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace prog {

namespace {

/// Points nearer than this are one point: no robot repeats a position better. Metres.
constexpr double samePoint = 1e-5;
/// How far rounding may move a midpoint, in metres. From twice that on a run takes the arc for one that was
/// turned the wrong way.
constexpr double mostError = 0.0005;

double largest(const Position& a) {
    return std::max({std::abs(a[0]), std::abs(a[1]), std::abs(a[2])});
}

}  // namespace

CircleFault circleFault(const Position& s, const Position& p1, const Position& p2) {
    const std::array<double, 3> sides{length(between(s, p1)), length(between(p1, p2)),
                                      length(between(p2, s))};
    const auto [shortest, longest] = std::minmax_element(sides.begin(), sides.end());
    if (*shortest < samePoint) {
        return CircleFault::Coincident;
    }
    const double doubleArea = length(cross(between(s, p1), between(s, p2)));
    const double height = doubleArea / *longest;
    const double radius = sides[0] * sides[1] * sides[2] / (2 * doubleArea);
    // Single precision tilts the plane about the points' longest side, which moves the far side of
    // the circle most. Beyond half the tolerance of the rotation the arcs could run backwards. The
    // comparison is false for points on one line, whose radius is infinite or not a number.
    const double reach = std::max({largest(s), largest(p1), largest(p2), radius});
    const double rounding = reach * double(std::numeric_limits<float>::epsilon());
    const double error = rounding * 2 * radius / height;
    return error < mostError ? CircleFault::None : CircleFault::Collinear;
}

}  // namespace prog
