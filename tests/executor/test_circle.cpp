#include "executor/circle.h"
#include "executor/queuedarc.h"
#include "support/suite.h"
#include "support/text.h"

#include <QSignalSpy>
#include <QtMath>

#include <cmath>
#include <random>

using prog::Arc;
using prog::Position;

namespace {

/// A circle in space and the point at an angle, in degrees, on it.
struct Circle {
    Position centre;
    Position normal;
    double radius;

    [[nodiscard]] Position at(double degrees) const {
        const bool isFlat = std::abs(normal[0]) < std::abs(normal[2]);
        const Position u = prog::cross(normal, {isFlat ? 1.0 : 0.0, 0, isFlat ? 0.0 : 1.0});
        const Position v = prog::cross(normal, u);
        const double along = radius * std::cos(qDegreesToRadians(degrees)) / prog::length(u);
        const double across = radius * std::sin(qDegreesToRadians(degrees)) / prog::length(v);
        Position point = centre;
        for (std::size_t i = 0; i < 3; ++i) {
            point[i] += along * u[i] + across * v[i];
        }
        return point;
    }
};

double distance(const Position& a, const Position& b) {
    return prog::length(prog::between(a, b));
}

std::unique_ptr<ModuleObject> nodeAt(const Position& p) {
    return test::node(QString("{'trans':[%1,%2,%3],'rot':[0,0,0]}")
                          .arg(p[0], 0, 'g', 17)
                          .arg(p[1], 0, 'g', 17)
                          .arg(p[2], 0, 'g', 17)
                          .toUtf8());
}

std::array<Position, 3> midpoints(const Position& s, const Position& p1, const Position& p2) {
    const auto aux1 = nodeAt({9, 9, 9}), aux2 = nodeAt({9, 9, 9}), aux3 = nodeAt({9, 9, 9});
    calcAux(nodeAt(s).get(), nodeAt(p1).get(), nodeAt(p2).get(), aux1.get(), aux2.get(), aux3.get());
    return {lumo::positionOf(aux1->c("trans")), lumo::positionOf(aux2->c("trans")),
            lumo::positionOf(aux3->c("trans"))};
}

CircleFault faultOf(const Position& s, const Position& p1, const Position& p2) {
    return circleFault(nodeAt(s).get(), nodeAt(p1).get(), nodeAt(p2).get());
}

/// A place on a circle of 50 mm; a quarter from 0, or all of it in three legs.
Position on(double degrees) {
    return Circle{{0.3, 0, 0}, {0, 0, 1}, 0.05}.at(degrees);
}
Arc arc(bool whole) {
    const std::vector<Arc::Leg> circle{{on(60), on(120)}, {on(180), on(240)}, {on(300), on(0)}};
    return *Arc::through(on(0), whole ? circle : std::vector<Arc::Leg>{{on(45), on(90)}});
}

}  // namespace

/// The midpoints of a full circle's arcs, which points make none, and where on an arc a tool stands.
class TestCircle : public QObject {
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
        // A half turn puts the cosine at its limit, a long last arc needs an angle above a half turn.
        QVERIFY(error({{0.1, 0, 0}, {0, 0, -1}, 0.1}, 0, 90, 180) < 1e-6);
        QVERIFY(error({{0.5, 0, 0.4}, {0, 0, 1}, 0.05}, 0, 20, 50) < 1e-5);
        QVERIFY(error({{0.6, -0.3, 0.5}, {1, 2, 3}, 0.12}, 15, 140, 260) < 1e-6);
        QVERIFY(error({{1.1, 0.6, 0.3}, {0, 0, 1}, 0.003}, 0, 120, 240) < 1e-6);  // a pipe of 6 mm
        QVERIFY(error({{40, -25, 10}, {1, 1, 1}, 0.1}, 0, 110, 230) < 2e-5);      // far from the origin
    }

    /// Whatever is accepted must send the robot round the circle.
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
            if (faultOf(circle.at(0), circle.at(first), circle.at(spread)) == CircleFault::None) {
                ++accepted;
                const auto aux = midpoints(circle.at(0), circle.at(first), circle.at(spread));
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

    void midpoints_replaceTransOnlyInSinglePrecision() {
        const auto aux = nodeAt({9, 9, 9}), other = nodeAt({9, 9, 9});
        const auto start = test::node("{'trans':[]}"), first = test::node("{'trans':[0.1]}");
        calcAux(start.get(), first.get(), nodeAt({0, 0.1, 0}).get(), other.get(), aux.get(), other.get());
        QCOMPARE(aux->exportToJson().toObject().keys(), QStringList({"rot", "trans"}));
        const Position half = lumo::positionOf(aux->c("trans"));
        QVERIFY(aux->c("trans")->cmobjCount() == 3 && half[0] == double(float(half[0])));
        QVERIFY(distance(half, {0.1, 0.1, 0}) < 1e-6);
    }

    /// A kilometre away single precision sees a sliver from its other side, and all three arcs are found the
    /// long way round; still further away they fit neither way, which is told.
    void pointsThatRoundingMixesUp_areTold() {
        const Position s{844.202, 0.000482}, p1{844.2015, -0.001025}, p2{844.2042, 0.007426};
        const auto aux = midpoints(s, p1, p2);
        QVERIFY(distance(aux[0], s) < 0.005 && distance(aux[1], p1) > 0.5 && distance(aux[2], p2) < 0.005);
        QSignalSpy log(mendo::LogHub::instance(), &mendo::LogHub::line);
        midpoints({8577.2, 0.051}, {8578.107, 0.267}, {8577.912, -0.587});
        const QRegularExpression told("^calc wrong theta: -122\\.1\\d* -249\\.7\\d* -232\\.5\\d*$");
        QVERIFY2(told.match(log.at(0).at(1).toString()).hasMatch(), qPrintable(log.at(0).at(1).toString()));
    }

    void anglesAndRotations_goRoundTheAxis() {
        const QVector3D x(1, 0, 0), y(0, 1, 0), z(0, 0, 1);
        const auto theta = [](const QVector3D& a, const QVector3D& b, const QVector3D& axis) {
            return qRound(qRadiansToDegrees(calcTheta(a, b, axis)));
        };
        QVERIFY(theta(x, y, z) == 90 && theta(y, x, z) == 270 && theta(x, y, -z) == 270);
        QCOMPARE(theta(x * 0.2F, (x + y).normalized() * 0.2F, z), 45);
        for (int i = 1; i <= 40; ++i) {  // the quotient rounds to a number above 1 for some of these vectors
            const QVector3D v(0.1F + 0.013F * float(i), 0.2F, 0.3F - 0.007F * float(i));
            const QVector3D axis = QVector3D::crossProduct(v, z).normalized();
            QCOMPARE(theta(v, v, axis), 0);
            QCOMPARE(theta(v, -v, axis), 180);
        }
        const QVector3D back = calcRotation({1, 0, 5}, z, qDegreesToRadians(-90.0));
        QVERIFY((back - QVector3D(0, -1, 5)).length() < 1e-5F);
        const QVector3D cyclic = calcRotation({1, 2, 3}, (x + y + z).normalized(), qDegreesToRadians(120.0));
        QVERIFY((cyclic - QVector3D(3, 1, 2)).length() < 1e-5F);
    }

    void pointsThatMakeNoCircle_areRefused() {
        using Fault = CircleFault;
        const Position a{0.513, 0.127, 0.351}, b{0.613, 0.227, 0.351};
        const struct {
            Position s, p1, p2;
            CircleFault fault;
        } cases[] = {
            {a, a, b, Fault::Coincident},
            {a, b, {0.613001, 0.227001, 0.351001}, Fault::Coincident},  // taught twice, 2 um apart
            {a, {0.553, 0.167, 0.351005}, b, Fault::Collinear},         // 5 um of noise
            {{0.4, 0, 0.3}, {0.55, 0.00002, 0.3}, {0.7, 0, 0.3}, Fault::Collinear},
            {{400, 0, 0}, {400.1, 0.001, 0}, {400.2, 0, 0}, Fault::Collinear},  // far from the origin
            {{0.5, 0, 0.3}, {0.55, 0.00085, 0.3}, {0.6, 0, 0.3}, Fault::Collinear},
            {{0.5, 0, 0.3}, {0.55, 0.00098, 0.3}, {0.6, 0, 0.3}, Fault::None},  // just high enough
            {{0.5, 0, 0.3}, {0.5005, 0.0005, 0.3}, {0.501, 0, 0.3}, Fault::None},
            {{0.5, 0, 0.3}, {0.5, 0.001, 0.3}, {0.7, 0, 0.3}, Fault::None},
            {{40, 0, 0}, {40.1, 0.1, 0}, {40.2, 0, 0}, Fault::None},
        };
        for (const auto& [s, p1, p2, fault] : cases) {  // in any order of teaching
            QVERIFY(faultOf(s, p1, p2) == fault && faultOf(p1, p2, s) == fault &&
                    faultOf(p2, p1, s) == fault);
        }
    }

    void placesOnAnArc_areFound() {
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
        QVERIFY(!Arc::through({0, 0, 0}, {{{0.1, 0, 0}, {0.2, 0, 0}}}));
        const auto moved = [](double degrees, double reached) {
            return qRadiansToDegrees(arc(true).angleNear(on(degrees), 0.0, qDegreesToRadians(reached)));
        };
        QVERIFY(std::abs(moved(8, 359) - 360) < 1e-6);    // braked past a circle's end
        QVERIFY(std::abs(moved(-3, 1)) < 1e-6);           // pushed back before its start
        QVERIFY(std::abs(moved(198, 200) - 198) < 1e-6);  // pushed back in the middle
    }

    void turnBetweenOrientations_isTheShortestOne() {
        const auto turn = [](const char* a, const char* b) {
            return lumo::turnBetween(test::node(a).get(), test::node(b).get());
        };
        QVERIFY(turn("[3.14159265,0.2,0.3]", "[3.14159265,0.2,0.3]") < 1e-6);
        QVERIFY(std::abs(turn("[3.14159265,0,0]", "[-3.14159265,0,0.1]") - 0.1) < 1e-6);
        QVERIFY(std::abs(turn("[0.3,0.2,0.5]", "[0.3,0.2,0.9]") - 0.4) < 1e-6);
    }
};

LUMO_TEST(TestCircle)
#include "test_circle.moc"
