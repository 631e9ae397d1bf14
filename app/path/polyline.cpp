#include "app/path/polyline.h"

#include "program/geometry/circlefault.h"

#include <algorithm>
#include <cmath>

namespace app {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double arcStep = 2 * pi / 180;
constexpr int cornerSteps = 16;
// What the controller takes for one place (metres) and for one line (sine of an angle).
constexpr double samePlace = 1e-5;
constexpr double straight = 1e-6;

Place cross(const Place& a, const Place& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// The circle through three places: a place on it is centre + u·cos + v·sin of its angle, which is
/// zero at the first of them and grows towards the second one.
struct Circle {
    Place centre, u, v;

    double angleOf(const Place& place) const {
        const Place radius = place - centre;
        const double angle = std::atan2(dot(radius, v), dot(radius, u));
        return angle > 0 ? angle : angle + 2 * pi;
    }
    Polyline arc(double angle) const {
        const int steps = std::max(1, int(std::ceil(angle / arcStep)));
        Polyline line;
        for (int i = 0; i <= steps; ++i) {
            const double a = angle * i / steps;
            line.push_back(centre + u * std::cos(a) + v * std::sin(a));
        }
        return line;
    }
};

std::optional<Circle> circle(const Place& a, const Place& b, const Place& c) {
    const Place ab = b - a, ac = c - a;
    const Place n = cross(ab, ac);
    const double bb = dot(ab, ab), cc = dot(ac, ac), nn = dot(n, n);
    if (!(std::sqrt(bb) > samePlace && std::sqrt(cc) > samePlace && norm(c - b) > samePlace &&
          nn > straight * straight * bb * cc)) {
        return std::nullopt;
    }
    Circle circle;
    circle.centre = a + cross(ab * cc - ac * bb, n) * (-1 / (2 * nn));
    circle.u = a - circle.centre;
    circle.v = cross(n * (1 / std::sqrt(nn)), circle.u);
    return circle;
}

}  // namespace

Place operator+(const Place& a, const Place& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

Place operator-(const Place& a, const Place& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Place operator*(const Place& a, double factor) {
    return {a.x * factor, a.y * factor, a.z * factor};
}

double dot(const Place& a, const Place& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

double norm(const Place& a) {
    return std::sqrt(dot(a, a));
}

Place between(const Place& a, const Place& b, double share) {
    return a * (1 - share) + b * share;
}

double lengthOf(const Polyline& line) {
    double length = 0;
    for (size_t i = 1; i < line.size(); ++i) {
        length += norm(line[i] - line[i - 1]);
    }
    return length;
}

Place along(const Polyline& line, double length) {
    double rest = std::max(length, 0.0);
    for (size_t i = 1; i < line.size(); ++i) {
        const double step = norm(line[i] - line[i - 1]);
        if (rest < step) {
            return between(line[i - 1], line[i], rest / step);
        }
        rest -= step;
    }
    return line.back();
}

Polyline cut(const Polyline& line, double from, double to) {
    Polyline part{along(line, from)};
    double length = 0;
    for (size_t i = 1; i < line.size(); ++i) {
        length += norm(line[i] - line[i - 1]);
        if (length > from && length < to) {
            part.push_back(line[i]);
        }
    }
    part.push_back(along(line, to));
    return part;
}

std::optional<Polyline> arcThrough(const Place& start, const Place& aux, const Place& end) {
    const auto found = circle(start, aux, end);
    return found ? std::make_optional(found->arc(found->angleOf(end))) : std::nullopt;
}

std::optional<Polyline> circleThrough(const Place& start, const Place& p1, const Place& p2) {
    const auto exact = [](const Place& place) { return prog::Position{place.x, place.y, place.z}; };
    if (prog::circleFault(exact(start), exact(p1), exact(p2)) != prog::CircleFault::None) {
        return std::nullopt;
    }
    const auto found = circle(start, p1, p2);
    return found ? std::make_optional(found->arc(2 * pi)) : std::nullopt;
}

Polyline roundedCorner(const Polyline& in, const Polyline& out, double radius) {
    const double length = lengthOf(in);
    Polyline corner;
    for (int i = 0; i <= cornerSteps; ++i) {
        const double u = double(i) / cornerSteps;
        corner.push_back(between(along(in, length - radius * (1 - u)), along(out, radius * u), u));
    }
    return corner;
}

}  // namespace app
