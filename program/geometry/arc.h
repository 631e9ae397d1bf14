#pragma once

#include "program/geometry/vector.h"

#include <optional>
#include <vector>

namespace prog {

/// An arc, or a circle in three of them, as values: where it goes, where on it a place lies, and what is left
/// from there. Angles in rad, counted from its start in the direction of travel.
class Arc {
public:
    /// One command's worth: through `via` to `end`.
    struct Leg {
        Position via, end;
    };
    /// Nothing where the points make no circle.
    static std::optional<Arc> through(const Position& start, const std::vector<Leg>& legs);

    [[nodiscard]] double total() const { return ends_.back(); }
    [[nodiscard]] double radiusM() const { return radius_; }
    /// The angle, from `from` on, at which a tool that is on its way stands at `p`. On a circle, whose start
    /// and end are one place, it has not come further than `expected` (by time and speed; corners are cut by
    /// up to a centimetre).
    [[nodiscard]] double angleOnTheWay(const Position& p, double from, double expected) const;
    /// The angle, from `from` on, of the place nearest to `p` for a tool that was at `reached` and has moved
    /// a little since, either way.
    [[nodiscard]] double angleNear(const Position& p, double from, double reached) const;
    [[nodiscard]] Position at(double angle) const;
    /// The first leg that has not ended at an angle.
    [[nodiscard]] int legAt(double angle) const;
    [[nodiscard]] int legCount() const { return static_cast<int>(ends_.size()); }
    [[nodiscard]] double legEnd(int leg) const { return ends_[static_cast<std::size_t>(leg)]; }

private:
    [[nodiscard]] double rawAngle(const Position& p) const;

    Position centre_{};
    Position first_{}, second_{};  ///< unit vectors in the plane: to the start, and a right angle further on
    double radius_ = 0.0;
    std::vector<double> ends_;  ///< angle at the end of each leg
};

}  // namespace prog
