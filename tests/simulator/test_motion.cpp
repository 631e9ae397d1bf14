// The motion queue and its plans, behind the controller: ways, corners, stops and failures.

#include "robot.h"
#include "simulator/arm.h"
#include "simulator/speedprofile.h"
#include "support/suite.h"

using namespace test;

class TestMotion : public QObject {
    Q_OBJECT
private:
    /// How far a point is from where a straight line from `a` to `b` is at the same distance from `a`.
    static double offLine(const Point& p, const Point& a, const Point& b) {
        const double t = std::min(distance(a, p) / distance(a, b), 1.0);
        return distance(p, {a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1]), a[2] + t * (b[2] - a[2])});
    }

private slots:
    void speedProfile_keepsItsLimitsAndAcceleration() {
        // Length, speed and whether it stops at the end, section by section.
        const std::vector<std::vector<double>> rows = {{0.001, 0.5, 1},
                                                       {0.2, 0.4, 0, 0.2, 0.05, 1},
                                                       {0.05, 0.05, 0, 0.3, 0.6, 1},
                                                       {0.1, 0.1, 0, 0.002, 1.0, 0, 0.1, 0.1, 1},
                                                       {0.5, 1.0, 0, 0.01, 1.0, 1},
                                                       {0.1, 0.3, 1, 0.1, 0.3, 1},
                                                       {0.1, 0.3, 1, 0, 0.1, 0, 0.1, 0.3, 1}};
        for (const auto& row : rows) {
            sim::SpeedProfile profile;
            for (size_t i = 0; i < row.size(); i += 3)
                profile.append(row[i], row[i + 1], row[i + 2] != 0);
            profile.plan(2.0);
            const double step = profile.duration() / 5000;
            auto last = profile.at(0);
            for (int i = 1; i <= 5000; ++i) {
                const auto point = profile.at(i * step);
                QVERIFY(std::abs(point.speed - last.speed) <= 2.0 * step + 1e-9);
                QVERIFY(std::abs(point.s - last.s - (point.speed + last.speed) / 2 * step) < 2 * step * step);
                QVERIFY(std::abs(profile.at(profile.timeAt(point.s)).s - point.s) < 1e-9);
                double from = 0;
                for (size_t k = 0; k < row.size(); from += row[k], k += 3) {
                    const bool inside = point.s > from + 1e-9 && point.s < from + row[k] - 1e-9;
                    QVERIFY(!inside || point.speed <= row[k + 1] + 1e-9);
                }
                last = point;
            }
            QVERIFY(std::abs(last.s - profile.length()) < 1e-9 && last.speed < 1e-6);
        }
    }

    void ways_areStraightRoundAndEvenAndFitTheJoints() {
        for (const int axes : {6, 7}) {
            Robot robot({axes, true});
            const sim::Arm arm(axes);
            const Point target = {0.6, 0.08, 0.36};
            robot.line(target, 0.1, 0, {kPi, 0, 0.8});
            robot.go([&] {
                const auto stand = robot.controller.stand();
                const double part = distance(stand.pose.trans, kHome) / distance(target, kHome);
                QVERIFY(offLine(stand.pose.trans, kHome, target) < 1e-8);
                QVERIFY(std::abs(stand.pose.rot[2] - 0.8 * part) < 1e-6);
                QVERIFY(distance(arm.forward(stand.joints).trans, stand.pose.trans) < 1e-4);
            });
            QCOMPARE(robot.place(), target);
            QVERIFY(distance(arm.forward(robot.controller.stand().joints).trans, target) < 1e-8);

            // A tilted circle in three arcs.
            const auto at = [&](double part) {
                const double c = 0.05 * std::cos(2 * kPi * part), s = 0.05 * std::sin(2 * kPi * part);
                return Point{target[0] + 0.05 - c, target[1] + 0.8 * s, target[2] + 0.6 * s};
            };
            const Point centre = {target[0] + 0.05, target[1], target[2]};
            robot.arcs({{at(0.1), at(0.3)}, {at(0.5), at(0.6)}, {at(0.9), at(1)}}, 0.05);
            robot.start();
            const double before = robot.controller.travelled();
            robot.go([&] { QVERIFY(std::abs(distance(robot.place(), centre) - 0.05) < 1e-8); });
            QCOMPARE(robot.lines.last(), "6309 result move.c 2 0");
            QVERIFY(std::abs(robot.controller.travelled() - before - 0.1 * kPi) < 1e-9);

            // All joints move together, at the tool's speed.
            const sim::Joints from = robot.controller.stand().joints;
            const sim::Joints to = robot.joints({-0.15, -0.05, 0.05, 0.15, 0.25, 0.35, 0.1});
            robot.go([&] {
                const sim::Joints joints = robot.controller.stand().joints;
                const double share = (joints[0] - from[0]) / (to[0] - from[0]);
                for (size_t i = 0; i < joints.size(); ++i)
                    QVERIFY(std::abs(joints[i] - from[i] - share * (to[i] - from[i])) < 1e-9);
            });
            QVERIFY(std::abs(robot.controller.stand().joints[5] - to[5]) < 1e-10);
            // On the spot a radian of turning is 20 mm of way.
            robot.line(robot.place(), 0.02, 0, {kPi, 0, 0});
            robot.go();
            const double travelled = robot.controller.travelled();
            robot.line(robot.place(), 0.02, 0, {kPi, 0, 0.5});
            QVERIFY(robot.go().endsWith("510 result move.l 5 0"));
            QCOMPARE(robot.controller.travelled(), travelled);
        }
    }

    void corner_isAParabolaOfTheZonesRadiusAndNotSlowedDown() {
        // Two legs, zone and radius: the zone fits, or half of a leg is less.
        for (const std::array<double, 4>& row :
             {std::array{0.1, 0.06, 0.01, 0.01}, std::array{0.02, 0.1, 0.05, 0.01},
              std::array{0.1, 0.03, 0.05, 0.015}}) {
            Robot robot;
            const double radius = row[3];
            const Point corner = {0.5 + row[0], 0, 0.4}, end = {0.5 + row[0], row[1], 0.4};
            robot.line(corner, 0.05, row[2]);
            robot.line(end, 0.05, row[2]);
            int cut = 0;
            Point before = kHome;
            robot.go([&] {
                const Point p = robot.place();
                const double a = corner[0] - p[0], b = p[1];  // along the two legs
                const double way = distance(p, std::exchange(before, p));
                if (a >= radius || b >= radius) {
                    QVERIFY(std::min(offLine(p, kHome, corner), offLine(p, corner, end)) < 1e-8);
                } else {
                    QVERIFY(std::abs(std::sqrt(a) + std::sqrt(b) - std::sqrt(radius)) < 5e-5);
                    QVERIFY(std::abs(way - 0.00005) < 0.00005 * 0.04);
                    ++cut;
                }
            });
            QVERIFY(cut > 50);
            // The first result comes in the middle of the corner, at most a millisecond late.
            QVERIFY(distance(robot.places[0], {corner[0] - radius / 4, radius / 4, 0.4}) <
                    0.05 * 0.001 + 1e-6);
            QCOMPARE(robot.places[1], end);
        }
        // Also where unlike motions meet.
        Robot robot;
        robot.line({0.56, 0, 0.4}, 0.1, 0.01);
        robot.joints({0.3, 0.1, 0, 0, 0, 0}, 0.1, 0.01);
        robot.arcs({{{0.58, 0.22, 0.4}, {0.6, 0.2, 0.4}}}, 0.1);
        Point before = kHome;
        robot.go([&] { QVERIFY(distance(robot.place(), std::exchange(before, robot.place())) < 0.00011); });
        QCOMPARE(robot.places.size(), size_t(3));
    }

    void results_comeOneByOneAndBatchesOneAfterTheOther() {
        Robot robot;
        robot.line(kHome);  // no way to go
        robot.line(kHome);
        robot.line({0.5005, 0, 0.4}, 1.0);
        robot.advance(1000);
        QCOMPARE(robot.diary(), "0 queued 1, 0 queued 2, 0 queued 3");
        QCOMPARE(robot.go(),
                 "0 moving, 0 started 1, 1 passed 1, 1 started 2, 1 result move.l 1 0, 2 passed 2, "
                 "2 started 3, 2 result move.l 2 0, 32 passed 3, 32 idle, 32 result move.l 3 0");
        robot.line({0.6005, 0, 0.4}, 0.1, 0.02);
        robot.order("move.opr.enough");
        robot.line({0.6005, 0.1, 0.4}, 0.1, 0.02);
        QCOMPARE(robot.go(),
                 "1050 passed 4, 1050 started 5, 1050 result move.l 4 0, 2100 passed 5, 2100 idle, "
                 "2100 result move.l 5 0");
        QCOMPARE(robot.places[3], (Point{0.6005, 0, 0.4}));
    }

    void stop_brakesAlongTheWayAndReportsNothing() {
        // When, and the way and the speed then: at speed, getting faster, at the start, slowing down.
        for (const Point& row :
             {Point{500, 0.09, 0.2}, Point{40, 0.0016, 0.08}, Point{0, 0, 0}, Point{1050, 0.1975, 0.1}}) {
            Robot robot;
            robot.line({0.7, 0, 0.4}, 0.2);
            robot.line({0.7, 0.1, 0.4}, 0.2);
            robot.order("move.opr.enough");
            robot.advance(qint64(row[0]));
            robot.start();
            robot.order("move.stop");
            robot.order("move.stop");
            QCOMPARE(robot.diary(), QString("0 stopped 1, 0 dropped 2, %1 idle").arg(row[2] / 4 * 1000));
            const double way = row[1] + row[2] * row[2] / 8;
            QVERIFY(std::abs(robot.place()[0] - 0.5 - way) < 1e-8);
            QVERIFY(std::abs(robot.controller.travelled() - way) < 1e-8);
        }
    }

    void stopInACorner_staysOnTheParabolaAndTheNextMotionStartsThere() {
        Robot robot;
        robot.line({0.6, 0, 0.4}, 0.2, 0.03);
        robot.line({0.6, 0.1, 0.4}, 0.2, 0.03);
        robot.order("move.opr.enough");
        sim::VirtualTime::instance()->advanceUntil([&] { return !robot.places.empty(); }, 5000);
        robot.order("move.stop");
        robot.diary();
        const auto stand = robot.controller.stand();
        const Point from = stand.pose.trans;
        QVERIFY(std::abs(std::sqrt(0.6 - from[0]) + std::sqrt(from[1]) - std::sqrt(0.03)) < 1e-6);
        QVERIFY(distance(sim::Arm(6).forward(stand.joints).trans, from) < 1e-8);
        robot.line({0.6, 0.1, 0.4}, 0.2);
        robot.order("move.opr.enough");
        robot.advance(100);
        robot.order("move.stop");
        robot.line(kHome, 0.2);
        robot.go([&] {
            QVERIFY(std::min(offLine(robot.place(), from, {0.6, 0.1, 0.4}),
                             offLine(robot.place(), kHome, {0.6, 0.1, 0.4})) < 1);
        });
        QCOMPARE(robot.place(), kHome);
    }

    void motionThatCannotBeMade_endsTheBatchAtTheTargetBefore() {
        const Point first = {0.55, 0, 0.4};
        const std::vector<std::pair<const char*, std::function<void(Robot&)>>> rows = {
            {"move.l 2 -1",
             [](Robot& robot) {
                 robot.line({1.6, 0, 0.4});
             }},
            {"move.l 2 -2",
             [](Robot& robot) {
                 robot.line({0.08, 0, 0.25});
             }},
            {"move.l 2 -5", [](Robot& robot) { robot.line(kHome, 0); }},
            {"move.c 2 -3",
             [](Robot& robot) {
                 robot.arcs({{{0.57, 0, 0.4}, {0.6, 0, 0.4}}});
             }},
            {"move.c 2 -3",
             [&](Robot& robot) {
                 robot.arcs({{first, {0.6, 0.1, 0.4}}});
             }},
            {"move.c 2 -3",
             [&](Robot& robot) {
                 robot.arcs({{{0.6, 0.1, 0.4}, first}});
             }},
            {"move.c 2 -6", [](Robot& robot) { robot.arcs({}); }},
            {"move.j 2 -2",
             [](Robot& robot) {
                 robot.joints({0, 3, 0, 0, 0, 0});
             }},
        };
        for (const auto& [result, order] : rows) {
            Robot robot;
            robot.line(first, 0.1, 0.01);
            order(robot);
            robot.line(kHome);
            QCOMPARE(robot.go(),
                     QString("0 moving, 0 started 1, 550 passed 1, 550 result move.l 1 0, 551 failed 2, "
                             "551 dropped 3, 551 idle, 551 result ") +
                         result);
            QCOMPARE(robot.place(), first);
        }
    }

    void orderedFailure_brakesTheMotionUnderWayOrMeetsTheNextOnce() {
        Robot robot;
        robot.line({0.7, 0, 0.4}, 0.2);
        robot.line({0.7, 0.1, 0.4}, 0.2);
        robot.order("move.opr.enough");
        robot.advance(500);
        robot.start();
        robot.controller.failMotion(3);  // no failure
        robot.controller.failMotion(-42);
        QCOMPARE(robot.diary(), "0 dropped 2, 50 failed 1, 50 idle, 50 result move.l 1 -42");
        robot.controller.failMotion(-7);
        robot.line({0.6, 0, 0.4});
        QCOMPARE(robot.go(), "0 moving, 1 failed 3, 1 idle, 1 result move.l 3 -7");
        robot.line({0.7, 0, 0.4}, 0.2);
        robot.order("move.opr.enough");
        robot.advance(400);
        robot.controller.failMotion(-42);
        robot.start();
        robot.order("move.stop");
        QCOMPARE(robot.diary(), "0 stopped 4, 50 idle");
    }
};

LUMO_TEST(TestMotion)
#include "test_motion.moc"
