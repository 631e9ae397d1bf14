#include "program/fullcircle.h"

#include <algorithm>

namespace prog {

namespace {

constexpr double turn = 2 * 3.14159265358979323846;

/// How far, in metres, a rotated radius vector may miss its target before it counts as turned the wrong way.
constexpr double turnToleranceM = 0.001;

QVector3D single(const Position& p) {
    return {float(p.x), float(p.y), float(p.z)};
}

/// The plane a·x + b·y + c·z + d = 0.
struct Plane {
    double a, b, c, d;
};

double determinant(double a1, double b1, double c1, double a2, double b2, double c2, double a3, double b3,
                   double c3) {
    return a1 * (b2 * c3 - b3 * c2) - b1 * (a2 * c3 - a3 * c2) + c1 * (a2 * b3 - a3 * b2);
}

/// The point on three planes, by Cramer's rule.
Position intersection(const Plane& p, const Plane& q, const Plane& r) {
    const double whole = determinant(p.a, p.b, p.c, q.a, q.b, q.c, r.a, r.b, r.c);
    return {determinant(-p.d, p.b, p.c, -q.d, q.b, q.c, -r.d, r.b, r.c) / whole,
            determinant(p.a, -p.d, p.c, q.a, -q.d, q.c, r.a, -r.d, r.c) / whole,
            determinant(p.a, p.b, -p.d, q.a, q.b, -q.d, r.a, r.b, -r.d) / whole};
}

Plane planeThrough(const Position& p, const Position& q, const Position& r) {
    return {p.y * (q.z - r.z) + q.y * (r.z - p.z) + r.y * (p.z - q.z),
            -(p.x * (q.z - r.z) + q.x * (r.z - p.z) + r.x * (p.z - q.z)),
            p.x * (q.y - r.y) + q.x * (r.y - p.y) + r.x * (p.y - q.y),
            -(p.x * (q.y * r.z - r.y * q.z) + q.x * (r.y * p.z - p.y * r.z) + r.x * (p.y * q.z - q.y * p.z))};
}

/// The plane of the points that are as far from p as from q.
Plane bisector(const Position& p, const Position& q) {
    return {2 * (q.x - p.x), 2 * (q.y - p.y), 2 * (q.z - p.z), dot(p, p) - dot(q, q)};
}

/// QVector3D::normalized() gives a null vector for the normals of circles of a few millimetres.
QVector3D unit(const QVector3D& v) {
    return v / v.length();
}

/// Turned the long way round, each of the three angles is a turn too long. False where they fit neither way.
bool correctTurns(std::array<double, 3>* angles) {
    constexpr double largestSum = turn + 1;
    const auto sum = [angles] { return (*angles)[0] + (*angles)[1] + (*angles)[2]; };
    if (sum() > largestSum) {
        for (double& angle : *angles) {
            angle -= turn;
        }
    }
    return std::abs(sum()) <= largestSum;
}

}  // namespace

FullCircle::FullCircle(const Position& s, const Position& p1, const Position& p2)
    : points{single(s), single(p1), single(p2)},
      centre(single(intersection(planeThrough(s, p1, p2), bisector(s, p1), bisector(s, p2)))),
      radii{points[0] - centre, points[1] - centre, points[2] - centre} {
    const QVector3D axis = unit(QVector3D::crossProduct(points[1] - points[0], points[2] - points[0]));
    angles = {calcTheta(radii[0], radii[1], axis), calcTheta(radii[1], radii[2], axis),
              calcTheta(radii[2], radii[0], axis)};
    anglesFit = correctTurns(&angles);
    for (std::size_t i = 0; i < midpoints.size(); ++i) {
        midpoints[i] = centre + calcRotation(radii[i], axis, angles[i] * 0.5);
    }
}

double calcTheta(const QVector3D& a, const QVector3D& b, const QVector3D& axis) {
    const float cosine = QVector3D::dotProduct(a, b) / (a.length() * b.length());
    // Rounding can push the cosine of equal or opposite vectors out of its range.
    const double theta = std::acos(double(std::clamp(cosine, -1.0F, 1.0F)));
    const bool turnedAway = (calcRotation(a, axis, theta) - b).length() > float(turnToleranceM);
    return turnedAway ? turn - theta : theta;
}

QVector3D calcRotation(const QVector3D& v, const QVector3D& axis, double theta) {
    const auto cosine = float(std::cos(theta));
    const auto sine = float(std::sin(theta));
    return v * cosine + QVector3D::crossProduct(axis, v) * sine +
           axis * QVector3D::dotProduct(axis, v) * (1 - cosine);
}

}  // namespace prog
