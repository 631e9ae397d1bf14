#include "executor/circle.h"

#include "program/words.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double turn = 2 * pi;

/// How far, in metres, a rotated radius vector may miss its target before it counts as turned the
/// wrong way.
constexpr double rotationTolerance = 0.001;

struct Vector {
    double x = 0.0, y = 0.0, z = 0.0;

    QVector3D single() const { return {float(x), float(y), float(z)}; }
    prog::Position exact() const { return {x, y, z}; }
};

Vector position(const ModuleObject* point) {
    const ModuleObject* trans = point->c(prog::field::trans);
    return {trans->c(0)->getDouble(0.0), trans->c(1)->getDouble(0.0), trans->c(2)->getDouble(0.0)};
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
Vector intersection(const Plane& p, const Plane& q, const Plane& r) {
    const double whole = determinant(p.a, p.b, p.c, q.a, q.b, q.c, r.a, r.b, r.c);
    return {determinant(-p.d, p.b, p.c, -q.d, q.b, q.c, -r.d, r.b, r.c) / whole,
            determinant(p.a, -p.d, p.c, q.a, -q.d, q.c, r.a, -r.d, r.c) / whole,
            determinant(p.a, p.b, -p.d, q.a, q.b, -q.d, r.a, r.b, -r.d) / whole};
}

Plane planeThrough(const Vector& p, const Vector& q, const Vector& r) {
    return {p.y * (q.z - r.z) + q.y * (r.z - p.z) + r.y * (p.z - q.z),
            -(p.x * (q.z - r.z) + q.x * (r.z - p.z) + r.x * (p.z - q.z)),
            p.x * (q.y - r.y) + q.x * (r.y - p.y) + r.x * (p.y - q.y),
            -(p.x * (q.y * r.z - r.y * q.z) + q.x * (r.y * p.z - p.y * r.z) + r.x * (p.y * q.z - q.y * p.z))};
}

/// The plane of the points as far from p as from q.
Plane bisector(const Vector& p, const Vector& q) {
    return {2 * (q.x - p.x), 2 * (q.y - p.y), 2 * (q.z - p.z),
            (p.x * p.x + p.y * p.y + p.z * p.z) - (q.x * q.x + q.y * q.y + q.z * q.z)};
}

Vector centreOf(const Vector& s, const Vector& p1, const Vector& p2) {
    return intersection(planeThrough(s, p1, p2), bisector(s, p1), bisector(s, p2));
}

/// QVector3D::normalized() gives a null vector for the normals of circles of a few millimetres.
QVector3D unit(const QVector3D& v) {
    return v / v.length();
}

void warnOfImpossible(const std::array<double, 3>& theta) {
    const auto degrees = [](double radians) { return radians * 180 / 3.14; };
    lumo::logE() << "calc wrong theta:" << degrees(theta[0]) << degrees(theta[1]) << degrees(theta[2]);
}

/// Turned the long way round, each of the three angles is a turn too long.
void correctTurns(std::array<double, 3>& theta) {
    constexpr double largestSum = turn + 1;
    const auto sum = [&theta] { return theta[0] + theta[1] + theta[2]; };
    if (sum() > largestSum) {
        for (double& angle : theta) {
            angle -= turn;
        }
    }
    if (std::abs(sum()) > largestSum) {
        warnOfImpossible(theta);
    }
}

void writeTrans(ModuleObject* point, const QVector3D& position) {
    for (int i = 0; i < 3; ++i) {
        point->set(point, QStringLiteral("trans.") + mIndex(i), double(position[i]));
    }
}

}  // namespace

ModuleObject* findLastTargetPosNode(ModuleObject* stmt) {
    for (ModuleObject* before = stmt->prevBmobj(); !before->isNull(); before = before->prevBmobj()) {
        if (before->c(prog::field::type)->getString() == prog::statement::moveCC) {
            continue;
        }
        if (before->hasCmobj(prog::field::point1)) {
            return before->c(prog::field::point1);
        }
        if (before->hasCmobj(prog::field::point)) {
            return before->c(prog::field::point);
        }
    }
    return kordservice()->get(nullptr, prog::key::posture);
}

void calcAux(const ModuleObject* s, const ModuleObject* p1, const ModuleObject* p2, ModuleObject* aux1,
             ModuleObject* aux2, ModuleObject* aux3) {
    const std::array<Vector, 3> exact{position(s), position(p1), position(p2)};
    const std::array<QVector3D, 3> point{exact[0].single(), exact[1].single(), exact[2].single()};
    const QVector3D centre = centreOf(exact[0], exact[1], exact[2]).single();
    const QVector3D axis = unit(QVector3D::crossProduct(point[1] - point[0], point[2] - point[0]));

    const std::array<QVector3D, 3> radius{point[0] - centre, point[1] - centre, point[2] - centre};
    std::array<double, 3> theta{calcTheta(radius[0], radius[1], axis), calcTheta(radius[1], radius[2], axis),
                                calcTheta(radius[2], radius[0], axis)};
    correctTurns(theta);

    const float mean = (radius[0].length() + radius[1].length() + radius[2].length()) / 3;
    lumo::logI() << "point1:" << point[0] << ", point2:" << point[1] << ", point3:" << point[2];
    lumo::logI() << "center:" << centre << "r:" << mean;
    lumo::logI() << "vc1:" << radius[0] << ", vc2:" << radius[1] << ", vc3:" << radius[2];

    std::array<QVector3D, 3> aux;
    for (std::size_t i = 0; i < aux.size(); ++i) {
        aux[i] = centre + calcRotation(radius[i], axis, theta[i] * 0.5);
    }
    lumo::logW() << "aux1:" << aux[0] << "aux2:" << aux[1] << "aux3:" << aux[2];
    writeTrans(aux1, aux[0]);
    writeTrans(aux2, aux[1]);
    writeTrans(aux3, aux[2]);
}

double calcTheta(const QVector3D& a, const QVector3D& b, const QVector3D& axis) {
    const float cosine = QVector3D::dotProduct(a, b) / (a.length() * b.length());
    // Rounding can push the cosine of equal or opposite vectors out of its range.
    const double theta = std::acos(double(std::clamp(cosine, -1.0F, 1.0F)));
    const bool turnedAway = (calcRotation(a, axis, theta) - b).length() > float(rotationTolerance);
    return turnedAway ? turn - theta : theta;
}

QVector3D calcRotation(const QVector3D& v, const QVector3D& axis, double theta) {
    const auto cosine = float(std::cos(theta));
    const auto sine = float(std::sin(theta));
    return v * cosine + QVector3D::crossProduct(axis, v) * sine +
           axis * QVector3D::dotProduct(axis, v) * (1 - cosine);
}

CircleFault circleFault(const ModuleObject* s, const ModuleObject* p1, const ModuleObject* p2) {
    return prog::circleFault(position(s).exact(), position(p1).exact(), position(p2).exact());
}
