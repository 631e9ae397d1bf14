#include "bridge/chords.h"

#include <algorithm>
#include <cmath>

namespace bridge {

namespace {

constexpr int fewest = 8, most = 100000;
constexpr double pi = 3.14159265358979323846;
constexpr double sameM = 1e-6;  // points nearer than this coincide

using Vector = std::array<double, 3>;

/// Angles, each by the shorter way: where a tool points down, 180° and -180° are the same.
Vector turned(const Vector& from, const Vector& to, double part) {
    Vector angles{};
    for (size_t i = 0; i < angles.size(); ++i) {
        angles[i] = from[i] + part * std::remainder(to[i] - from[i], 2 * pi);
    }
    return angles;
}

/// (p - o)·(q - o)
double dot(const Vector& o, const Vector& p, const Vector& q) {
    return (p[0] - o[0]) * (q[0] - o[0]) + (p[1] - o[1]) * (q[1] - o[1]) + (p[2] - o[2]) * (q[2] - o[2]);
}

/// A circle's centre, and two radii: one to where the arc begins, one a right angle further.
struct Circle {
    Vector centre, first, second;
    double radius = 0, angle = 0;  ///< rad, of the arc
};

/// The centre is a + s·(b - a) + t·(c - a), as far from a as from b and c.
std::optional<Circle> circleThrough(const Vector& a, const Vector& b, const Vector& c) {
    const double bb = dot(a, b, b), cc = dot(a, c, c), bc = dot(a, b, c);
    const double det = bb * cc - bc * bc;
    if (std::min({bb, cc, dot(b, c, c)}) < sameM * sameM || det < 1e-9 * bb * cc) {
        return std::nullopt;
    }
    const double s = cc * (bb - bc) / (2 * det), t = bb * (cc - bc) / (2 * det);
    Circle circle;
    for (size_t i = 0; i < 3; ++i) {
        circle.centre[i] = a[i] + s * (b[i] - a[i]) + t * (c[i] - a[i]);
    }
    const Vector& m = circle.centre;
    circle.radius = std::sqrt(dot(m, a, a));
    // Across the first radius, in the plane, on the side of b; of c where b lies opposite.
    const auto acrossOf = [&](const Vector& p) {
        const double along = dot(m, a, p) / dot(m, a, a);
        return Vector{p[0] - m[0] - along * (a[0] - m[0]), p[1] - m[1] - along * (a[1] - m[1]),
                      p[2] - m[2] - along * (a[2] - m[2])};
    };
    const Vector zero{};
    Vector across = acrossOf(b);
    if (dot(zero, across, across) < 1e-6 * circle.radius * circle.radius) {
        across = acrossOf(c);
        across = {-across[0], -across[1], -across[2]};
    }
    const double length = std::sqrt(dot(zero, across, across));
    for (size_t i = 0; i < 3; ++i) {
        circle.first[i] = a[i] - m[i];
        circle.second[i] = across[i] * circle.radius / length;
    }
    const auto angleOf = [&](const Vector& p) {
        const Vector from = {p[0] - m[0], p[1] - m[1], p[2] - m[2]};
        const double angle = std::atan2(dot(zero, circle.second, from), dot(zero, circle.first, from));
        return angle < 0 ? angle + 2 * pi : angle;
    };
    circle.angle = angleOf(c);
    return circle;
}

}  // namespace

std::optional<std::vector<Pose>> chords(const Pose& from, const Motion::Via& arc, double sagM) {
    const std::optional<Circle> circle = circleThrough(from.trans, arc.aux.trans, arc.end.trans);
    if (!circle) {
        return std::nullopt;
    }
    // A chord over the angle w lies r·(1 - cos(w / 2)) beside the arc.
    const double widest = 2 * std::acos(1 - std::min(1.0, sagM / circle->radius));
    const int count = int(std::clamp<double>(std::ceil(circle->angle / widest), fewest, most));
    std::vector<Pose> poses;
    for (int i = 1; i < count; ++i) {
        const double u = circle->angle * i / count;
        Pose pose;
        for (size_t k = 0; k < 3; ++k) {
            pose.trans[k] =
                circle->centre[k] + std::cos(u) * circle->first[k] + std::sin(u) * circle->second[k];
        }
        pose.rot = turned(from.rot, arc.end.rot, double(i) / count);
        poses.push_back(pose);
    }
    poses.push_back(arc.end);
    return poses;
}

}  // namespace bridge
