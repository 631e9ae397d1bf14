// Arcs as straight pieces.

#include "bridge/chords.h"
#include "support/suite.h"

#include <cmath>

using bridge::Motion;
using bridge::Pose;
using Point = std::array<double, 3>;

class TestChords : public QObject {
    Q_OBJECT
private:
    static double distance(const Point& a, const Point& b) {
        return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
    }
    /// On a circle of 30 mm about (0.5, 0, 0.4), in a plane that leans on every axis.
    static Point onCircle(double angle) {
        const Point u = {2.0 / 3, 2.0 / 3, 1.0 / 3}, v = {-2.0 / 3, 1.0 / 3, 2.0 / 3};
        const double c = 0.03 * std::cos(angle), s = 0.03 * std::sin(angle);
        return {0.5 + c * u[0] + s * v[0], c * u[1] + s * v[1], 0.4 + c * u[2] + s * v[2]};
    }

private slots:
    void everyPoint_liesOnTheArcThroughTheThree() {
        // Angles of the auxiliary point and of the end: half a circle and opposite, more than that, both
        // senses.
        for (const auto& [via, end] :
             {std::pair(1.0, 2.0), {3.14159265358979, 4.0}, {2.0, 6.0}, {-1.0, -5.5}}) {
            const Motion::Via arc{{onCircle(via), {}}, {onCircle(end), {0, 0, 1}}};
            const auto poses = bridge::chords({onCircle(0), {}}, arc, 0.00002);
            QVERIFY(poses.has_value());
            double way = 0, nearest = 1;
            Point before = onCircle(0);
            for (const Pose& pose : *poses) {
                QVERIFY(std::abs(distance(pose.trans, {0.5, 0, 0.4}) - 0.03) < 1e-9);
                way += distance(before, pose.trans);
                nearest = std::min(nearest, distance(pose.trans, onCircle(via)));
                before = pose.trans;
            }
            QVERIFY2(std::abs(way - 0.03 * std::abs(end)) < 1e-4, qPrintable(QString::number(way)));
            QVERIFY(nearest < 0.0012);
            QCOMPARE(poses->back().trans, onCircle(end));
            QCOMPARE(poses->back().rot[2], 1.0);
            const double middle = (*poses)[poses->size() / 2 - 1].rot[2];
            QVERIFY(middle > 0.4 && middle < 0.6);
        }
    }

    /// A tool that points down turns by two degrees, not by 358.
    void angles_goTheShorterWay() {
        constexpr double down = 3.14159265358979, tilt = 0.02;
        const Motion::Via arc{{onCircle(1), {}}, {onCircle(2), {-(down - tilt), 0, 0}}};
        const auto poses = bridge::chords({onCircle(0), {down - tilt, 0, 0}}, arc, 0.00002);
        QVERIFY(poses.has_value());
        for (const Pose& pose : *poses) {
            QVERIFY2(std::cos(pose.rot[0]) < std::cos(down - 2 * tilt),
                     qPrintable(QString::number(pose.rot[0])));
        }
    }

    void pointsOnALine_makeNoCircle() {
        const Pose a{{0.5, 0, 0.4}, {}}, b{{0.6, 0, 0.4}, {}}, c{{0.7, 0, 0.4}, {}};
        for (const auto& [via, end] : {std::pair(b, c), {b, b}, {a, c}, {b, a}}) {
            QVERIFY(!bridge::chords(a, {via, end}, 0.001));
        }
    }
};

LUMO_TEST(TestChords)
#include "test_chords.moc"
