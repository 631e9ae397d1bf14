#pragma once

#include "program/geometry.h"

#include <optional>
#include <vector>

namespace prog {

/// Where the tool is, and how it is turned.
struct Pose {
    Position trans;
    Orientation rot{};
};

/// The path of one motion: a line, or an arc or full circle. Distances along it in metres, from its start.
class PathPiece {
public:
    static PathPiece line(const Pose& start, const Pose& end);
    /// `turns`: how the tool is turned at the start and at the end of each leg.
    static PathPiece arc(const Arc& arc, std::vector<Orientation> turns);

    [[nodiscard]] double lengthM() const;
    /// The tool turns evenly: on a line from start to end, on an arc from the one end of a leg to the other.
    /// Outside of the piece its nearer end.
    [[nodiscard]] Pose at(double alongM) const;
    /// How far along a line the place nearest to a position is. Of an arc, which may pass a place twice, the
    /// one nearest to `nearM`.
    [[nodiscard]] double nearestM(const Position& position, double nearM = 0.0) const;
    [[nodiscard]] const std::optional<Arc>& arc() const { return arc_; }

private:
    Position start_, end_;  ///< of a line
    std::optional<Arc> arc_;
    std::vector<Orientation> turns_;
};

/// A motion back along a piece: through `via`, where it is an arc, to `target`.
struct WayBack {
    Pose target;
    std::optional<Pose> via;
};

/// Back along a piece, from one place to an earlier one. Arcs are divided so that none is longer than half a
/// turn.
[[nodiscard]] std::vector<WayBack> wayBack(const PathPiece& piece, double fromM, double toM);

}  // namespace prog
