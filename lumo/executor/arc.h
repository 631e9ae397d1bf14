#pragma once

#include "module/host.h"

#include <memory>
#include <optional>
#include <vector>

namespace lumo {

/// A place in metres.
struct Position {
    double x = 0.0, y = 0.0, z = 0.0;

    /// Of a list of three numbers, missing ones 0.
    static Position of(const ModuleObject* trans);
};
[[nodiscard]] double distance(const Position& a, const Position& b);

/// The angle in rad by which two orientations (lists rx, ry, rz in rad, R = Rz·Ry·Rx) differ.
[[nodiscard]] double turnBetween(const ModuleObject* a, const ModuleObject* b);

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
    struct Vector {
        double x, y, z;
    };
    [[nodiscard]] static Vector between(const Position& from, const Position& to);
    [[nodiscard]] static double dot(const Vector& a, const Vector& b);
    [[nodiscard]] static Vector cross(const Vector& a, const Vector& b);
    [[nodiscard]] double rawAngle(const Position& p) const;

    Position centre_;
    Vector first_{}, second_{};  ///< unit vectors in the plane: to the start, and a right angle further on
    double radius_ = 0.0;
    std::vector<double> ends_;  ///< angle at the end of each leg
};

/// An arc or full circle as it was handed to the controller, in a run.
struct QueuedArc {
    Position start;
    double from = 0.0;                      ///< angle from which on it was queued: it had been resumed before
    std::shared_ptr<ModuleObject> command;  ///< its arguments, for the whole of it

    [[nodiscard]] std::optional<Arc> arc() const;
    [[nodiscard]] double speedMPerS() const;
    /// Fills `args` with the command for what is left at an angle: through the place half-way to the end of
    /// the leg, and the legs behind it. A leg with less than 0.05 mm left is done; false where all are. What
    /// else the points carry stays.
    [[nodiscard]] bool fillRest(ModuleObject* args, const Arc& arc, double angle) const;
};

}  // namespace lumo
