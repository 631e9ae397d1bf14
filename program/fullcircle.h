#pragma once

#include "program/geometry.h"

#include <QVector3D>

namespace prog {

/// The three arcs s→p1→p2→s of a full circle as the robot is sent them: each through its midpoint. Computed
/// in single precision but for the centre.
struct FullCircle {
    FullCircle(const Position& s, const Position& p1, const Position& p2);

    std::array<QVector3D, 3> points;  ///< s, p1, p2
    QVector3D centre;
    std::array<QVector3D, 3> radii;  ///< from the centre to each point
    std::array<double, 3> angles;    ///< of each arc, rad
    bool anglesFit;  ///< false where they sum up to more than a turn: the points make no circle
    std::array<QVector3D, 3> midpoints;  ///< of each arc
};

/// The angle from a to b turning about the unit vector `axis`, in [0, 2π).
[[nodiscard]] double calcTheta(const QVector3D& a, const QVector3D& b, const QVector3D& axis);

/// v turned by theta about the unit vector `axis` (Rodrigues' rotation formula).
[[nodiscard]] QVector3D calcRotation(const QVector3D& v, const QVector3D& axis, double theta);

}  // namespace prog
