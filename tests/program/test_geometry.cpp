#include "program/fullcircle.h"
#include "program/pathpiece.h"
#include "support/suite.h"

#include <QtMath>

#include <random>

using prog::Arc;
using prog::CircleFault;
using prog::Position;

namespace {

/// A circle in space and the point at an angle, in degrees, on it.
struct Circle {
    Position centre;
    Position normal;
    double radius;

    [[nodiscard]] Position at(double degrees) const {
        const bool isFlat = std::abs(normal.x) < std::abs(normal.z);
        const Position u = prog::cross(normal, {isFlat ? 1.0 : 0.0, 0, isFlat ? 0.0 : 1.0});
        const Position v = prog::cross(normal, u);
        const double angle = qDegreesToRadians(degrees);
        return centre + u * (radius * std::cos(angle) / length(u)) +
               v * (radius * std::sin(angle) / length(v));
    }
};

Position positionOf(const QVector3D& v) {
    return {double(v.x()), double(v.y()), double(v.z())};
}

std::array<Position, 3> midpoints(const Position& s, const Position& p1, const Position& p2) {
    const auto found = prog::FullCircle(s, p1, p2).midpoints;
    return {positionOf(found[0]), positionOf(found[1]), positionOf(found[2])};
}

/// A point of a circle of 50 mm; of the circle a quarter from 0, or all of it.
Position on(double degrees) {
    return Circle{{0.3, 0, 0}, {0, 0, 1}, 0.05}.at(degrees);
}
Arc arc(bool whole) {
    return whole ? *Arc::circle(on(0), on(120), on(240)) : *Arc::through(on(0), on(45), on(90));
}

}  // namespace

/// Arcs and full circles: which points make one, the midpoints that the robot is sent, and positions on them.
class ProgramGeometry : public QObject {
    Q_OBJECT

    /// How far the midpoints of the arcs between three angles are off, in metres.
    static double error(const Circle& circle, double s, double p1, double p2) {
        const auto aux = midpoints(circle.at(s), circle.at(p1), circle.at(p2));
        return std::max({distance(aux[0], circle.at((s + p1) / 2)),
                         distance(aux[1], circle.at((p1 + p2) / 2)),
                         distance(aux[2], circle.at((p2 + s + 360) / 2))});
    }

private slots:
    void midpoints_halveTheArcs() {
        const QVector3D z(0, 0, 1);
        for (int i = 1; i <= 40; ++i) {  // the cosine rounds to a number above 1 for some of these vectors
            const QVector3D v(0.1F + 0.013F * float(i), 0.2F, 0.3F - 0.007F * float(i));
            QVERIFY(prog::calcTheta(v, v, QVector3D::crossProduct(v, z).normalized()) < 1e-3);
        }
        // A half turn puts the cosine at its limit, a long last arc needs an angle above a half turn.
        QVERIFY(error({{0.1, 0, 0}, {0, 0, -1}, 0.1}, 0, 90, 180) < 1e-6);
        QVERIFY(error({{0.5, 0, 0.4}, {0, 0, 1}, 0.05}, 0, 20, 50) < 1e-5);
        QVERIFY(error({{0.6, -0.3, 0.5}, {1, 2, 3}, 0.12}, 15, 140, 260) < 1e-6);
        QVERIFY(error({{1.1, 0.6, 0.3}, {0, 0, 1}, 0.003}, 0, 120, 240) < 1e-6);  // a pipe of 6 mm
        QVERIFY(error({{40, -25, 10}, {1, 1, 1}, 0.1}, 0, 110, 230) < 2e-5);      // far from the origin
    }

    /// Each circle that is accepted sends the robot once round, the right way.
    void midpointsOfRandomCircles_lieOnTheirArcs() {
        std::mt19937 random(20240611);
        std::uniform_real_distribution<double> unit(0, 1), side(-1, 1);
        int accepted = 0;
        for (int n = 0; n < 3000; ++n) {
            const Circle circle{{1.4 * side(random), 1.4 * side(random), 1.4 * side(random)},
                                {side(random), side(random), side(random) + 1.5},
                                std::pow(10.0, -3.3 + 4.3 * unit(random))};  // 0.5 mm to 10 m
            // From three points all round to three within a sliver.
            const double spread = 350 * std::pow(10.0, -3 * unit(random));
            const double first = spread * (0.02 + 0.96 * unit(random));
            const Position s = circle.at(0), p1 = circle.at(first), p2 = circle.at(spread);
            if (circleFault(s, p1, p2) == CircleFault::None) {
                ++accepted;
                const auto aux = midpoints(s, p1, p2);
                const double ends[] = {0, first, spread, 360};
                for (std::size_t arc = 0; arc < 3; ++arc) {
                    const double half = qDegreesToRadians(ends[arc + 1] - ends[arc]) / 2;
                    const Position middle = circle.at((ends[arc] + ends[arc + 1]) / 2);
                    QVERIFY(distance(aux[arc], middle) < 2 * circle.radius * std::sin(half / 2));
                    QVERIFY(std::abs(distance(aux[arc], circle.centre) - circle.radius) < 0.001);
                }
            }
        }
        QVERIFY(accepted > 1500 && accepted < 2900);
    }

    /// A kilometre from the origin single precision sees a sliver from its other side, and all three arcs are
    /// found the long way round; still further away they fit neither way.
    void pointsThatRoundingMixesUp_areFound() {
        const Position s{844.202, 0.000482}, p1{844.2015, -0.001025}, p2{844.2042, 0.007426};
        const auto aux = midpoints(s, p1, p2);
        QVERIFY(distance(aux[0], s) < 0.005 && distance(aux[1], p1) > 0.5 && distance(aux[2], p2) < 0.005);
        QVERIFY(prog::FullCircle(s, p1, p2).anglesFit);
        QVERIFY(!prog::FullCircle({8577.2, 0.051}, {8578.107, 0.267}, {8577.912, -0.587}).anglesFit);
    }

    void pointsThatMakeNoCircle_areRefused() {
        using Fault = CircleFault;
        const Position a{0.513, 0.127, 0.351}, b{0.613, 0.227, 0.351};
        const struct {
            Position s, p1, p2;
            CircleFault circle, arc;
        } cases[] = {
            {a, a, b, Fault::Coincident, Fault::Coincident},
            // Taught twice, 2 um apart; 5 um of noise.
            {a, b, {0.613001, 0.227001, 0.351001}, Fault::Coincident, Fault::Coincident},
            {a, {0.553, 0.167, 0.351005}, b, Fault::Collinear, Fault::None},
            {{0.4, 0, 0.3}, {0.55, 0, 0.3}, {0.7, 0, 0.3}, Fault::Collinear, Fault::Collinear},
            {{0.4, 0, 0.3}, {0.55, 0.00002, 0.3}, {0.7, 0, 0.3}, Fault::Collinear, Fault::None},
            // Far from the origin.
            {{400, 0, 0}, {400.1, 0.001, 0}, {400.2, 0, 0}, Fault::Collinear, Fault::None},
            {{0.5, 0, 0.3}, {0.55, 0.00085, 0.3}, {0.6, 0, 0.3}, Fault::Collinear, Fault::None},
            // Just high enough.
            {{0.5, 0, 0.3}, {0.55, 0.00098, 0.3}, {0.6, 0, 0.3}, Fault::None, Fault::None},
            {{0.5, 0, 0.3}, {0.5005, 0.0005, 0.3}, {0.501, 0, 0.3}, Fault::None, Fault::None},
            {{0.5, 0, 0.3}, {0.5, 0.001, 0.3}, {0.7, 0, 0.3}, Fault::None, Fault::None},
            {{40, 0, 0}, {40.1, 0.1, 0}, {40.2, 0, 0}, Fault::None, Fault::None},
        };
        for (const auto& [s, p1, p2, circle, arc] : cases) {  // in any order of teaching
            QVERIFY(circleFault(s, p1, p2) == circle && circleFault(p1, p2, s) == circle &&
                    circleFault(p2, p1, s) == circle);
            QVERIFY(arcFault(s, p1, p2) == arc && arcFault(p2, p1, s) == arc);
            QCOMPARE(Arc::through(s, p1, p2).has_value(), arc == Fault::None);
        }
    }

    void positionsOnAnArc_areFound() {
        const struct {
            bool whole;
            double degrees, from, expected, angle;
            int leg;
        } cases[] = {
            {false, 30, 0, 30, 30, 0},   {false, 92, 0, 90, 90, 1},   // braked past the end
            {false, -1, 0, 0, 0, 0},     {false, 29, 30, 30, 30, 0},  // before where it was taken up
            {true, 200, 0, 190, 200, 1}, {true, 0, 0, 5, 0, 0},
            {true, 0, 0, 360, 360, 3},  // at a circle's end
            {true, -5, 0, 3, 0, 0},     // before its start, in the corner
            {true, 20, 0, 360, 20, 0},  // not as far as it could be
        };
        for (const auto& [whole, degrees, from, expected, angle, leg] : cases) {
            const Arc way = arc(whole);
            const double found =
                way.angleOnTheWay(on(degrees), qDegreesToRadians(from), qDegreesToRadians(expected));
            QVERIFY(std::abs(qRadiansToDegrees(found) - angle) < 1e-6);
            QVERIFY(distance(way.at(found), on(angle)) < 1e-12 && way.legAt(found) == leg);
        }
        const auto moved = [](double degrees, double reached) {
            return qRadiansToDegrees(arc(true).angleNear(on(degrees), 0.0, qDegreesToRadians(reached)));
        };
        QVERIFY(std::abs(moved(8, 359) - 360) < 1e-6);    // braked past a circle's end
        QVERIFY(std::abs(moved(-3, 1)) < 1e-6);           // pushed back before its start
        QVERIFY(std::abs(moved(198, 200) - 198) < 1e-6);  // pushed back in the middle
    }

    void restOfAnArc_goesThroughTheMiddleOfWhatIsLeft() {
        const auto rest = [](bool whole, double degrees) {
            return arc(whole).restFrom(qDegreesToRadians(degrees));
        };
        QVERIFY(rest(false, 30)->leg == 0 && distance(rest(false, 30)->via, on(60)) < 1e-12);
        QVERIFY(rest(true, 200)->leg == 1 && distance(rest(true, 200)->via, on(220)) < 1e-12);
        // Less than 0.05 mm (0.057 degrees) of a leg is nothing.
        QVERIFY(rest(true, 119.93)->leg == 0 && rest(true, 119.95)->leg == 1);
        QVERIFY(rest(false, 89.93) && !rest(false, 89.95));
    }

    void angleBetweenOrientations_isTheShortestOne() {
        QVERIFY(prog::angleBetween({3.14159265, 0.2, 0.3}, {3.14159265, 0.2, 0.3}) < 1e-6);
        QVERIFY(std::abs(prog::angleBetween({3.14159265, 0, 0}, {-3.14159265, 0, 0.1}) - 0.1) < 1e-6);
        QVERIFY(std::abs(prog::angleBetween({0.3, 0.2, 0.5}, {0.3, 0.2, 0.9}) - 0.4) < 1e-6);
    }

    /// A tool that turns evenly has done a quarter of its turn after a quarter of the way, about the same
    /// axis.
    void orientationsInBetween_divideTheTurn() {
        std::mt19937 random(7);
        std::uniform_real_distribution<double> angle(-3.1, 3.1);
        for (int n = 0; n < 2000; ++n) {
            const prog::Orientation a{angle(random), angle(random) / 2.1, angle(random)};
            const prog::Orientation b = n % 9 == 0 ? prog::Orientation{-a[0], -a[1], a[2] + 3.14159265}
                                                   : prog::Orientation{angle(random), 0.0, angle(random)};
            const double turn = prog::angleBetween(a, b);
            const prog::Orientation quarter = prog::interpolated(a, b, 0.25);
            QVERIFY(std::abs(prog::angleBetween(a, quarter) - turn / 4) < 1e-5);
            QVERIFY(std::abs(prog::angleBetween(quarter, b) - turn * 3 / 4) < 1e-5);
        }
    }

    void wayBack_comesBackAlongTheArc() {
        const prog::PathPiece circle = prog::PathPiece::arc(arc(true), {{}, {}, {}, {}});
        const double whole = circle.lengthM();
        const std::vector<prog::WayBack> way = prog::wayBack(circle, whole * 0.9, whole * 0.1);
        QVERIFY(way.size() == 2 && distance(way[0].via->trans, on(360 * 0.7)) < 1e-9);
        QVERIFY(distance(way[0].target.trans, on(180)) < 1e-9);
        QVERIFY(distance(way[1].target.trans, on(36)) < 1e-9);
        const prog::PathPiece line = prog::PathPiece::line({{0, 0, 0}, {}}, {{0.1, 0, 0}, {0, 0, 1}});
        QVERIFY(std::abs(line.nearestM({0.03, 0.02, 0}) - 0.03) < 1e-12 && line.nearestM({0.3, 0, 0}) == 0.1);
        QVERIFY(std::abs(prog::wayBack(line, 0.1, 0.05)[0].target.rot[2] - 0.5) < 1e-9);
    }
};

LUMO_TEST(ProgramGeometry)
#include "test_geometry.moc"
