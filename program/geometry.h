#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <vector>

namespace prog {

constexpr double mmPerM = 1000.0;

/// x, y, z in the base, metres; also the difference of two positions.
struct Position {
    double x = 0.0, y = 0.0, z = 0.0;

    /// By the axis, 0 to 2.
    double operator[](std::size_t axis) const { return axis == 0 ? x : axis == 1 ? y : z; }
    double& operator[](std::size_t axis) { return axis == 0 ? x : axis == 1 ? y : z; }
};

inline Position operator+(const Position& a, const Position& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

inline Position operator-(const Position& a, const Position& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline Position operator*(const Position& a, double factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}

inline Position operator/(const Position& a, double divisor) {
    return {a.x / divisor, a.y / divisor, a.z / divisor};
}

[[nodiscard]] inline double dot(const Position& a, const Position& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

[[nodiscard]] inline Position cross(const Position& a, const Position& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

[[nodiscard]] inline double length(const Position& a) {
    return std::sqrt(dot(a, a));
}

[[nodiscard]] inline double distance(const Position& a, const Position& b) {
    return length(b - a);
}

/// The position at a fraction of the line from a to b.
[[nodiscard]] inline Position interpolated(const Position& a, const Position& b, double fraction) {
    return a * (1 - fraction) + b * fraction;
}

/// Orientation rx, ry, rz in rad: R = Rz·Ry·Rx.
using Orientation = std::array<double, 3>;

/// The angle in rad, 0 to π, of the rotation that takes a to b.
[[nodiscard]] double angleBetween(const Orientation& a, const Orientation& b);

/// The orientation at a fraction of the rotation that takes a to b, about its one axis the shorter way.
[[nodiscard]] Orientation interpolated(const Orientation& a, const Orientation& b, double fraction);

/// Why three points make no arc or circle.
enum class CircleFault { None, Coincident, Collinear };

/// Whether an arc goes through three points in any order. Two points within 10 µm are one; points are on a
/// line where the sine of the angle between the chords from `a` is at most 1e-6.
[[nodiscard]] CircleFault arcFault(const Position& a, const Position& b, const Position& c);

/// Whether a full circle can be sent for three points: an arc goes through them, and the single precision in
/// which its midpoints (FullCircle) are computed moves none of them by 0.5 mm. Else it is Collinear too.
[[nodiscard]] CircleFault circleFault(const Position& a, const Position& b, const Position& c);

/// An arc, or a full circle in three arcs ("legs"). Angles in rad, from the start in the direction of travel.
class Arc {
public:
    /// One leg; empty where `arcFault` finds a fault.
    static std::optional<Arc> through(const Position& start, const Position& via, const Position& end);
    /// The legs start to p1, p1 to p2, p2 to start; empty where `arcFault` finds a fault.
    static std::optional<Arc> circle(const Position& start, const Position& p1, const Position& p2);

    [[nodiscard]] double total() const { return ends_.back(); }
    [[nodiscard]] double radiusM() const { return radius_; }
    [[nodiscard]] double lengthM() const { return total() * radius_; }
    [[nodiscard]] Position at(double angle) const;
    /// Points on the arc, ends included, not more than `step` rad apart.
    [[nodiscard]] std::vector<Position> points(double step) const;
    /// The angle, at least `from`, of a moving tool at `p`. Where start and end of a circle are one place,
    /// the tool has not come further than `expected`, computed from time and speed (corners are cut by up to
    /// 10 mm).
    [[nodiscard]] double angleOnTheWay(const Position& p, double from, double expected) const;
    /// The angle, at least `from`, nearest to `p` for a tool that was at `reached` and has moved a little
    /// since, forwards or backwards.
    [[nodiscard]] double angleNear(const Position& p, double from, double reached) const;

    /// The first leg that ends behind an angle; `legCount()` where none does.
    [[nodiscard]] int legAt(double angle) const;
    [[nodiscard]] int legCount() const { return static_cast<int>(ends_.size()); }
    /// The angle at the end of a leg.
    [[nodiscard]] double legEnd(int leg) const { return ends_[static_cast<std::size_t>(leg)]; }

    /// What is left of the arc: from where the tool is to the end of `leg` through `via`, then the later
    /// legs.
    struct Rest {
        int leg;
        Position via;  ///< half-way, by angle
    };
    /// Empty where all is done. A leg with less than 0.05 mm left is done.
    [[nodiscard]] std::optional<Rest> restFrom(double angle) const;

private:
    static std::optional<Arc> make(const Position& start, const Position& middle, const Position& last,
                                   const std::vector<Position>& legEnds);
    [[nodiscard]] double rawAngle(const Position& p) const;

    Position centre_;
    Position first_, second_;  ///< unit vectors in the plane: to the start, and a right angle further on
    double radius_ = 0.0;
    std::vector<double> ends_;  ///< angle at the end of each leg
};

}  // namespace prog
