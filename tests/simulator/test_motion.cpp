// The arm, the motion queue and jogging: paths, corners, stops and failures.

#include "kinematics/arm.h"
#include "robot.h"
#include "support/suite.h"

using namespace test;
using kin::Arm;
using sim::JogAnswer;
using sim::JogFrame;

class TestMotion : public QObject {
    Q_OBJECT
private:
    /// Distance of a point from the point on the line `a` to `b` that is as far from `a`.
    static double offLine(const Point& p, const Point& a, const Point& b) {
        const double t = std::min(distance(a, p) / distance(a, b), 1.0);
        return distance(p, {a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1]), a[2] + t * (b[2] - a[2])});
    }
    /// "x y z rx ry rz" in millimetres and degrees.
    static QString shown(const kin::Pose& pose) {
        QStringList numbers;
        for (size_t i = 0; i < 6; ++i) {
            const double value = i < 3 ? pose.trans[i] * 1000 : pose.rot[i - 3] * 180 / pi;
            numbers << QString::number(std::round(value * 1000) / 1000 + 0.0);
        }
        return numbers.join(' ');
    }
    static QString shown(const Robot& robot) { return shown(robot.controller.posture().pose); }

private slots:
    void everyPoseInFrontOfTheArm_isReachedWithinTheLimits() {
        for (const int axes : {6, 7}) {
            const Arm arm(axes);
            QCOMPARE(QString("%1 ").arg(arm.home().size()) + shown(arm.forward(arm.home())),
                     QString("%1 500 0 400 180 0 0").arg(axes));
            for (int i = 0; i < 3 * 5 * 3 * 4; ++i) {
                const Point at = {0.4 + 0.25 * (i % 3), -0.45 + 0.2 * (i / 3 % 5), -0.1 + 0.3 * (i / 15 % 3)};
                const Point rots[] = {downwards, {pi - 0.4, 0.3, 0}, {pi, 0, 1.0}, {-2.6, -0.5, -2.0}};
                const kin::Pose pose{at, rots[i / 45]};
                const auto joints = arm.inverse(pose, arm.home());
                QVERIFY2(joints && arm.withinLimits(*joints), qPrintable(shown(pose)));
                QCOMPARE(shown(arm.forward(*joints)), shown(pose));
            }
            // The posture nearest to the seed, by whole turns of the flange, too.
            kin::Joints seed = arm.home();
            seed.back() += 2 * pi - 0.5;
            const auto turned = arm.inverse(arm.forward(arm.home()), seed);
            QVERIFY(turned && std::abs(turned->back() - arm.home().back() - 2 * pi) < 0.2);
        }
    }

    void paths_areStraightOrRoundAndEven_andFitTheJoints() {
        for (const int axes : {6, 7}) {
            Robot robot({axes, true});
            const Arm arm(axes);
            const Point target = {0.6, 0.08, 0.36};
            robot.line(target, 0.1, 0, {pi, 0, 0.8});
            robot.go([&] {
                const auto posture = robot.controller.posture();
                const double part = distance(posture.pose.trans, homePoint) / distance(target, homePoint);
                QVERIFY(offLine(posture.pose.trans, homePoint, target) < 1e-8);
                QVERIFY(std::abs(posture.pose.rot[2] - 0.8 * part) < 1e-6);
                QVERIFY(distance(arm.forward(posture.joints).trans, posture.pose.trans) < 1e-4);
            });
            QCOMPARE(robot.position(), target);
            QVERIFY(distance(arm.forward(robot.controller.posture().joints).trans, target) < 1e-8);
            // A tilted circle in three arcs.
            const auto at = [&](double part) {
                const double c = 0.05 * std::cos(2 * pi * part), s = 0.05 * std::sin(2 * pi * part);
                return Point{target[0] + 0.05 - c, target[1] + 0.8 * s, target[2] + 0.6 * s};
            };
            const Point centre = {target[0] + 0.05, target[1], target[2]};
            robot.arcs({{at(0.1), at(0.3)}, {at(0.5), at(0.6)}, {at(0.9), at(1)}});
            const double before = robot.controller.travelled();
            robot.go([&] { QVERIFY(std::abs(distance(robot.position(), centre) - 0.05) < 1e-8); });
            QVERIFY(std::abs(robot.controller.travelled() - before - 0.1 * pi) < 1e-9);
            // All joints move together, at the tool's speed.
            const kin::Joints from = robot.controller.posture().joints;
            const kin::Joints to = robot.joints({-0.15, -0.05, 0.05, 0.15, 0.25, 0.35, 0.1});
            robot.go([&] {
                const kin::Joints joints = robot.controller.posture().joints;
                const double fraction = (joints[0] - from[0]) / (to[0] - from[0]);
                for (size_t i = 0; i < joints.size(); ++i) {
                    QVERIFY(std::abs(joints[i] - from[i] - fraction * (to[i] - from[i])) < 1e-9);
                }
            });
            // A turn on the spot counts 20 mm a radian. After a stop the joints fit the pose exactly.
            robot.line(homePoint, 0.2);
            robot.play("go; wait 9999; mark");
            robot.line(homePoint, 0.02, 0, {pi, 0, 0.5});
            robot.line({0.7, 0.1, 0.4}, 0.02);
            QVERIFY(robot.play("go; wait 1234; stop").contains("510 result move.l 5 0"));
            const auto posture = robot.controller.posture();
            QVERIFY(distance(arm.forward(posture.joints).trans, posture.pose.trans) < 1e-8);
        }
    }

    void corner_isAParabolaOfTheZonesRadiusAtConstantSpeed() {
        // Both legs, the zone, and the radius (the zone, at most half of a leg), in millimetres.
        for (const std::array<int, 4>& row :
             {std::array{100, 60, 10, 10}, {20, 100, 50, 10}, {100, 30, 50, 15}}) {
            Robot robot;
            const double radius = row[3] / 1000.0, zone = row[2] / 1000.0;
            const Point corner = {0.5 + row[0] / 1000.0, 0, 0.4}, end = {corner[0], row[1] / 1000.0, 0.4};
            robot.line(corner, 0.05, zone);
            robot.line(end, 0.05, zone);
            Point before = homePoint;
            robot.go([&] {
                const Point p = robot.position();
                const double a = corner[0] - p[0], b = p[1];  // along the two legs
                const double step = distance(p, std::exchange(before, p));
                if (a >= radius || b >= radius) {
                    QVERIFY(std::min(offLine(p, homePoint, corner), offLine(p, corner, end)) < 1e-8);
                } else {
                    QVERIFY(std::abs(std::sqrt(a) + std::sqrt(b) - std::sqrt(radius)) < 5e-5);
                    QVERIFY(std::abs(step - 0.00005) < 0.00005 * 0.04);
                }
            });
        }
    }

    /// As on a controller that begins late, tells its place more often, and takes a corner as wide and as
    /// fast as an acceleration across the path needs and allows.
    void aLatency_delaysTheStartAndShapesCorners() {
        struct Row {
            double firstMmPerS, secondMmPerS, cutMm, mostMmPerS;
        };
        for (const Row& row : {Row{20, 20, 0.231, 20}, {20, 120, 5, 93.1}, {120, 20, 5, 93.1}}) {
            sim::Controller::Options options;
            options.latency = {0, 0, 0, 7, 4, 1732};
            Robot robot(options);
            const double cut = row.cutMm / 1000;
            const Point corner = {0.53, 0, 0.4}, end = {0.53, 0.03, 0.4};
            robot.line(corner, row.firstMmPerS / 1000, 0.005);
            robot.line(end, row.secondMmPerS / 1000);
            Point before = homePoint;
            double fastest = 0;  // mm/s
            int told = 0;
            connect(&robot.controller, &sim::Controller::postureMoved, this, [&told] { ++told; });
            robot.go([&] {
                const Point p = robot.position();
                QCOMPARE(robot.now() > 7, p[0] > homePoint[0]);
                const double a = corner[0] - p[0], b = p[1];  // along the two legs
                if (a < cut && b < cut) {
                    QVERIFY(std::abs(std::sqrt(a) + std::sqrt(b) - std::sqrt(cut)) < 5e-4);
                    fastest = std::max(fastest, distance(p, before) * 1e6);
                }
                before = p;
            });
            QVERIFY2(fastest < row.mostMmPerS * 1.01 && fastest > row.mostMmPerS * 0.8,
                     qPrintable(QString::number(fastest)));
            QVERIFY(std::abs(told - int(robot.now()) / 4) <= 1);
        }
    }

    void script_isCarriedOut_data() {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("log");
        const auto row = [](const char* name, const QString& script, const QString& log) {
            QTest::newRow(name) << script << log;
        };
        row("not released", "line 10 0; wait 1000", "0 queued 1 at 0 0");
        row("zero length, one by one", "line 0 0; line 0 0; line 0.5 0 1; mark; go",
            "0 moving, 0 started 1, 1 passed 1, 1 started 2, 1 result move.l 1 0, 2 passed 2, 2 started 3, "
            "2 result move.l 2 0, 32 passed 3, 32 idle, 32 result move.l 3 0 at 0.5 0");
        row("no corner between batches", "line 100 0 0.1 0.02; go; line 100 100; mark; go",
            "1050 passed 1, 1050 started 2, 1050 result move.l 1 0, 2100 passed 2, 2100 idle, "
            "2100 result move.l 2 0 at 100 100");
        row("corner while accelerating", "line 2 0 0.5 1; line 100 0 0.5; mark; go",
            "0 moving, 0 started 1, 45 passed 1, 45 started 2, 45 result move.l 1 0, "
            "448 passed 2, 448 idle, 448 result move.l 2 0 at 100 0");
        row("reset before the start", "line 100 0; reset; line 10 0; mark; go",
            "0 moving, 0 started 2, 150 passed 2, 150 idle, 150 result move.l 2 0 at 10 0");
        const QString two = "line 200 0 0.2; line 200 100 0.2; go; ";
        row("stop while accelerating", two + "wait 40; mark; stop",
            "0 stopped 1, 0 dropped 2, 20 idle at 2.4 0");
        row("stop at the start", two + "mark; stop", "0 stopped 1, 0 dropped 2, 0 idle at 0 0");
        row("stop while decelerating", two + "wait 1050; mark; stop",
            "0 stopped 1, 0 dropped 2, 25 idle at 198.75 0");
        row("batch while braking", two + "wait 500; stop; line 0 0 0.2; mark; go",
            "50 started 3, 625 passed 3, 625 idle, 625 result move.l 3 0 at 0 0");
        row("failure", two + "wait 500; fail 3; mark; fail -42",
            "0 dropped 2, 50 failed 1, 50 idle, 50 result move.l 1 -42 at 95 0");
        row("fail before any motion", "fail -7; line 100 0; go; wait 9; line 100 0; mark; go",
            "0 moving, 0 started 2, 1050 passed 2, 1050 idle, 1050 result move.l 2 0 at 100 0");
        row("fail applies to the next motion", "fail -7; line 100 0; mark; go",
            "0 moving, 1 failed 1, 1 idle, 1 result move.l 1 -7 at 0 0");
        row("stop after a failure", two + "wait 500; fail -42; mark; stop", "0 stopped 1, 50 idle at 95 0");
        row("no power", "power 0; line 10 0; line 20 0; mark; go",
            "1 failed 1, 1 dropped 2, 1 result move.l 1 -4 at 0 0");
        row("stopped before it fails", "failAtEnd; line 100 0; line 100 100; go; wait 500; mark; stop",
            "0 stopped 1, 0 dropped 2, 25 idle at 48.75 0");
        row("stop drops a held result", "bunch; line 10 0; line 200 0; go; wait 650; mark; stop",
            "0 stopped 2, 25 idle at 58.75 0");
        const QString pair = "; line 10 0; line 20 0; mark; go";
        const QString first = "0 moving, 0 started 1, 150 passed 1, 150 started 2, ";
        row("wrong kind", "wrongKind" + pair,
            first + "150 result move.c 1 0, 300 passed 2, 300 idle, 300 result move.c 2 0 at 20 0");
        row("no result", "noResult" + pair, first + "300 passed 2, 300 idle, 300 result move.l 2 0 at 20 0");
        const QList<QPair<QString, QString>> refused = {
            {"line 1100 0", "move.l 2 -1"},      {"line -420 0", "move.l 2 -2"},
            {"line 0 0 -1", "move.l 2 -5"},      {"arc 70 0 100 0", "move.c 2 -3"},
            {"arc 50 0 100 100", "move.c 2 -3"}, {"arc 100 100 50 0", "move.c 2 -3"},
            {"turn 3", "move.j 2 -2"},           {"j", "move.j 2 -5"},
            {"nowhere", "move.l 2 -6"}};
        for (const auto& [step, result] : refused) {
            row(qPrintable(step), "line 50 0 0.1 0.01; " + step + "; line 0 0; mark; go",
                "0 moving, 0 started 1, 550 passed 1, 550 result move.l 1 0, 551 failed 2, 551 dropped 3, "
                "551 idle, 551 result " +
                    result + " at 50 0");
        }
    }
    void script_isCarriedOut() {
        QFETCH(QString, script);
        Robot robot;
        QTEST(robot.play(script), "log");
    }

    void jog_movesInItsFrameAtItsSpeedWithoutMotionEvents() {
        // The tool points down: its y and z axes are opposite to the base's.
        const std::vector<std::pair<sim::JogMove, const char*>> rows = {
            {{JogFrame::Base, 1, -0.2, 0.02}, "500 -200 400 180 0 0"},
            {{JogFrame::Base, 3, -pi / 18, 0.1}, "500 0 400 170 0 0"},
            {{JogFrame::Tool, 2, 0.01, 0.005}, "500 0 390 180 0 0"},
            {{JogFrame::Tool, 5, pi / 3, 0.1}, "500 0 400 180 0 -60"},
            {{JogFrame::Joint, 0, pi / 2, 0.1}, "0 500 400 180 0 90"}};
        for (const auto& [move, expected] : rows) {
            Robot robot;
            QCOMPARE(robot.controller.jog(move), JogAnswer::Moves);
            robot.log();
            QCOMPARE(robot.lines.join(' '), QString("0 moving %1 idle").arg(robot.now()));
            QCOMPARE(shown(robot), expected);
            // Acceleration and braking take up to 100 ms more.
            const double ms = std::abs(move.distance) / move.speed * 1000;
            QVERIFY2(robot.now() >= ms && robot.now() < ms + 100, expected);
        }
    }

    void impossibleJog_isRefused_andStopJogLeavesOrderedMotionsAlone() {
        Robot robot;
        const sim::PoseMove move{{0.5, 0.05, 0.4}, Point{pi, 0, pi / 18}, 0.05};
        robot.controller.setPower(false);
        QCOMPARE(robot.controller.checkPoseMove(move), JogAnswer::DriveOff);
        robot.controller.setPower(true);
        QCOMPARE(robot.controller.jog(sim::JogAxis::X, 2), JogAnswer::OutOfReach);
        QCOMPARE(robot.controller.jog({JogFrame::Joint, 0, 3, 1}), JogAnswer::JointLimit);
        robot.line(homePoint);
        for (int i = 0; i < 2; ++i) {  // first ordered, then moving
            QCOMPARE(robot.controller.jog(sim::JogAxis::X, 0.01), JogAnswer::Moving);
            QCOMPARE(robot.controller.checkPoseMove(move), JogAnswer::Moving);
            robot.order("move.opr.enough");
        }
        robot.log();
        robot.start();
        QCOMPARE(robot.controller.moveToPose(move), JogAnswer::Moves);
        // stopJog() drops a motion ordered during the jog, and does nothing when no jog moves.
        QCOMPARE(robot.play("wait 0"), "0 moving, 1025 idle at 0 50");
        QCOMPARE(shown(robot), "500 50 400 180 0 10");
        robot.controller.jog(sim::JogAxis::X, 0.01);
        QCOMPARE(robot.play("line 0 0; go; mark; release"), "0 dropped 2, 0 idle at 0 50");
        QVERIFY(robot.play("line 0 50; go; release").endsWith("result move.l 3 0 at 0 50"));
    }

    void heldJog_endsWhenReleasedOrAtTheLimit() {
        Robot robot;
        const auto startJog = [&robot](JogFrame frame, int axis, double direction, double speed) {
            robot.start();
            return robot.controller.startJog({frame, axis, direction, speed});
        };
        QCOMPARE(startJog(JogFrame::Base, 1, 1, 0.05), JogAnswer::Moves);
        QCOMPARE(robot.play("wait 1000; release"), "0 moving, 1013 idle at 0 49.6875");
        robot.controller.setEmergencyStop(true);
        robot.controller.setPower(true);
        QCOMPARE(m("kord.r.power")->getString(), "off");
        robot.controller.setEmergencyStop(false);
        robot.controller.setPower(true);
        QCOMPARE(startJog(JogFrame::Base, 0, 1, 0.5), JogAnswer::Moves);
        robot.log();
        QVERIFY(robot.position()[0] >= 0.9 && startJog(JogFrame::Base, 0, 1, 0.5) == JogAnswer::OutOfReach);
        QCOMPARE(startJog(JogFrame::Joint, 0, -1, 0.5), JogAnswer::Moves);
        robot.log();
        QVERIFY(std::abs(robot.controller.posture().joints[0] + 170 * pi / 180) < 1e-6);
        QCOMPARE(startJog(JogFrame::Joint, 0, -1, 0.5), JogAnswer::JointLimit);
    }
};

LUMO_TEST(TestMotion)
#include "test_motion.moc"
