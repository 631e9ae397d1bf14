#include "program/geometry.h"

#include <algorithm>
#include <limits>

namespace prog {

namespace {

constexpr double turn = 2 * 3.14159265358979323846;

/// Two points that are nearer than this are one: no robot repeats a position better.
constexpr double samePointM = 1e-5;

using Matrix = std::array<std::array<double, 3>, 3>;

Matrix matrixOf(const Orientation& rot) {
    const double cx = std::cos(rot[0]), sx = std::sin(rot[0]);
    const double cy = std::cos(rot[1]), sy = std::sin(rot[1]);
    const double cz = std::cos(rot[2]), sz = std::sin(rot[2]);
    return {{{cz * cy, cz * sy * sx - sz * cx, cz * sy * cx + sz * sx},
             {sz * cy, sz * sy * sx + cz * cx, sz * sy * cx - cz * sx},
             {-sy, cy * sx, cy * cx}}};
}

/// The inverse of matrixOf().
Orientation orientationOf(const Matrix& m) {
    constexpr double upright = 1e-9;
    const double cy = std::hypot(m[0][0], m[1][0]);
    if (cy < upright) {  // the tool's z lies along x: only the sum or the difference of the others is known
        return {std::atan2(-m[1][2], m[1][1]), std::atan2(-m[2][0], cy), 0.0};
    }
    return {std::atan2(m[2][1], m[2][2]), std::atan2(-m[2][0], cy), std::atan2(m[1][0], m[0][0])};
}

/// The product; with `Transposed` of the transpose of `a`.
enum class First { AsItIs, Transposed };
Matrix product(const Matrix& a, const Matrix& b, First first = First::AsItIs) {
    Matrix result{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            for (std::size_t k = 0; k < 3; ++k) {
                result[row][column] += (first == First::AsItIs ? a[row][k] : a[k][row]) * b[k][column];
            }
        }
    }
    return result;
}

/// The axis, a unit vector, of a rotation by `angle`.
Position axisOf(const Matrix& m, double angle) {
    constexpr double nearlyHalf = 1e-4;
    const Position twist{m[2][1] - m[1][2], m[0][2] - m[2][0], m[1][0] - m[0][1]};
    if (std::abs(std::sin(angle)) > nearlyHalf) {
        return twist / (2 * std::sin(angle));
    }
    // Half a turn: m = 2·a·aᵀ − 1, so the longest column of m + 1 lies along the axis.
    Position longest;
    for (std::size_t column = 0; column < 3; ++column) {
        Position along{m[0][column], m[1][column], m[2][column]};
        along[column] += 1.0;
        longest = length(along) > length(longest) ? along : longest;
    }
    const Position axis = longest / length(longest);
    return dot(axis, twist) < 0.0 ? axis * -1.0 : axis;
}

/// Rodrigues' formula.
Matrix rotation(const Position& axis, double angle) {
    const double c = std::cos(angle), s = std::sin(angle);
    Matrix m{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            m[row][column] = axis[row] * axis[column] * (1 - c) + (row == column ? c : 0.0);
        }
        const std::size_t next = (row + 1) % 3, last = (row + 2) % 3;
        m[row][next] -= axis[last] * s;
        m[row][last] += axis[next] * s;
    }
    return m;
}

double largest(const Position& a) {
    return std::max({std::abs(a.x), std::abs(a.y), std::abs(a.z)});
}

}  // namespace

/// The trace of the one rotation against the other is 1 + 2·cos of the angle between them.
double angleBetween(const Orientation& a, const Orientation& b) {
    const Matrix first = matrixOf(a);
    const Matrix second = matrixOf(b);
    double trace = 0.0;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            trace += first[row][column] * second[row][column];
        }
    }
    return std::acos(std::clamp((trace - 1.0) / 2.0, -1.0, 1.0));
}

Orientation interpolated(const Orientation& a, const Orientation& b, double fraction) {
    constexpr double sameRad = 1e-6;
    const double angle = angleBetween(a, b);
    if (angle < sameRad || fraction <= 0.0 || fraction >= 1.0) {
        return fraction < 1.0 ? a : b;
    }
    const Matrix from = matrixOf(a);
    const Matrix change = product(from, matrixOf(b), First::Transposed);
    return orientationOf(product(from, rotation(axisOf(change, angle), angle * fraction)));
}

CircleFault arcFault(const Position& a, const Position& b, const Position& c) {
    const Position u = b - a;
    const Position v = c - a;
    const Position n = cross(u, v);
    if (std::min({length(u), length(v), distance(b, c)}) < samePointM) {
        return CircleFault::Coincident;
    }
    constexpr double straight = 1e-6;
    const bool bends = dot(n, n) > straight * straight * dot(u, u) * dot(v, v);
    return bends ? CircleFault::None : CircleFault::Collinear;
}

CircleFault circleFault(const Position& a, const Position& b, const Position& c) {
    const CircleFault fault = arcFault(a, b, c);
    if (fault != CircleFault::None) {
        return fault;
    }
    const std::array<double, 3> sides{distance(a, b), distance(b, c), distance(c, a)};
    const double doubleArea = length(cross(b - a, c - a));
    const double height = doubleArea / *std::max_element(sides.begin(), sides.end());
    const double radius = sides[0] * sides[1] * sides[2] / (2 * doubleArea);
    // Rounding to single precision tilts the plane about the longest side, which moves the far side of the
    // circle most. From twice this error on, the midpoints' angles may be taken the wrong way round
    // (turnToleranceM in fullcircle.cpp).
    constexpr double mostErrorM = 0.0005;
    const double reach = std::max({largest(a), largest(b), largest(c), radius});
    const double rounding = reach * double(std::numeric_limits<float>::epsilon());
    const double error = rounding * 2 * radius / height;
    return error < mostErrorM ? CircleFault::None : CircleFault::Collinear;
}

std::optional<Arc> Arc::through(const Position& start, const Position& via, const Position& end) {
    return make(start, via, end, {end});
}

std::optional<Arc> Arc::circle(const Position& start, const Position& p1, const Position& p2) {
    return make(start, p1, p2, {p1, p2, start});
}

/// The circumcentre of the triangle with the sides u and v from `start`, n = u × v:
/// start + (|u|²·(v × n) + |v|²·(n × u)) / 2|n|².
std::optional<Arc> Arc::make(const Position& start, const Position& middle, const Position& last,
                             const std::vector<Position>& legEnds) {
    if (arcFault(start, middle, last) != CircleFault::None) {
        return std::nullopt;
    }
    const Position u = middle - start;
    const Position v = last - start;
    const Position n = cross(u, v);
    const Position toCentre = (cross(v, n) * dot(u, u) + cross(n, u) * dot(v, v)) / (2 * dot(n, n));
    Arc arc;
    arc.centre_ = start + toCentre;
    arc.radius_ = length(toCentre);
    arc.first_ = toCentre / -arc.radius_;
    arc.second_ = cross(n / length(n), arc.first_);
    double reached = 0.0;
    for (const Position& end : legEnds) {
        const double angle = arc.rawAngle(end);
        // The last leg of a circle ends where the first began.
        constexpr double atStart = 1e-6;
        reached = angle <= reached + atStart ? turn : angle;
        arc.ends_.push_back(reached);
    }
    return arc;
}

double Arc::rawAngle(const Position& p) const {
    const Position radius = p - centre_;
    const double angle = std::atan2(dot(radius, second_), dot(radius, first_));
    return angle < 0 ? angle + turn : angle;
}

double Arc::angleOnTheWay(const Position& p, double from, double expected) const {
    constexpr double cutCornerM = 0.01;
    constexpr double sameM = 0.0005;
    const double furthest = expected + std::min(cutCornerM / radius_, turn / 2);
    const double raw = rawAngle(p);
    double best = from;
    double bestMiss = std::numeric_limits<double>::infinity();
    for (const double candidate : {raw - turn, raw, raw + turn}) {
        const double angle = std::clamp(candidate, from, total());
        const double outside = std::abs(candidate - angle);
        const double miss = outside * radius_ < sameM ? 0.0 : outside;
        const bool isNearer = std::abs(angle - expected) < std::abs(best - expected);
        if (angle <= furthest && (miss < bestMiss || (miss == bestMiss && isNearer))) {
            best = angle;
            bestMiss = miss;
        }
    }
    return best;
}

double Arc::angleNear(const Position& p, double from, double reached) const {
    const double raw = rawAngle(p);
    return std::clamp(raw + turn * std::round((reached - raw) / turn), from, total());
}

Position Arc::at(double angle) const {
    return centre_ + first_ * (radius_ * std::cos(angle)) + second_ * (radius_ * std::sin(angle));
}

std::vector<Position> Arc::points(double step) const {
    const int count = std::max(1, int(std::ceil(total() / step)));
    std::vector<Position> points;
    for (int i = 0; i <= count; ++i) {
        points.push_back(at(total() * i / count));
    }
    return points;
}

int Arc::legAt(double angle) const {
    const auto leg = std::find_if(ends_.begin(), ends_.end(), [angle](double end) { return angle < end; });
    return static_cast<int>(leg - ends_.begin());
}

std::optional<Arc::Rest> Arc::restFrom(double angle) const {
    constexpr double doneM = 0.00005;
    const int leg = legAt(angle + doneM / radius_);
    if (leg == legCount()) {
        return std::nullopt;
    }
    return Rest{leg, at((angle + ends_[static_cast<std::size_t>(leg)]) / 2)};
}

}  // namespace prog
