#pragma once

#include <array>
#include <cmath>

namespace prog {

/// x, y, z in metres; also the way from one place to another.
using Position = std::array<double, 3>;

[[nodiscard]] inline Position between(const Position& from, const Position& to) {
    return {to[0] - from[0], to[1] - from[1], to[2] - from[2]};
}

[[nodiscard]] inline double dot(const Position& a, const Position& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

[[nodiscard]] inline Position cross(const Position& a, const Position& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

[[nodiscard]] inline double length(const Position& a) {
    return std::sqrt(dot(a, a));
}

}  // namespace prog
