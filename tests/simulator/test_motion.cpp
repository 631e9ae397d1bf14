#include "motionfixture.h"
#include "simulator/speedprofile.h"
#include "virtualmain.h"

using namespace motiontest;
using sim::SpeedProfile;

Q_DECLARE_METATYPE(std::vector<double>)

class TestMotion : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QCOMPARE(VirtualTime::instance()->armedTimers(), 0); }

    // --- Speed ---

    void profile_keepsLimitsAndAcceleration_data() {
        QTest::addColumn<std::vector<double>>("sections");  // length, speed, stop
        QTest::newRow("trapezoid") << std::vector<double>{0.2, 0.1, 1};
        QTest::newRow("triangle") << std::vector<double>{0.001, 0.5, 1};
        QTest::newRow("slower ahead") << std::vector<double>{0.2, 0.4, 0, 0.2, 0.05, 1};
        QTest::newRow("faster ahead") << std::vector<double>{0.05, 0.05, 0, 0.3, 0.6, 1};
        QTest::newRow("short fast one between")
            << std::vector<double>{0.1, 0.1, 0, 0.002, 1.0, 0, 0.1, 0.1, 1};
        QTest::newRow("no room to brake in the last") << std::vector<double>{0.5, 1.0, 0, 0.01, 1.0, 1};
        QTest::newRow("stop between") << std::vector<double>{0.1, 0.3, 1, 0.1, 0.3, 1};
        QTest::newRow("nothing between") << std::vector<double>{0.1, 0.3, 0, 0, 0.1, 0, 0.1, 0.3, 1};
    }
    void profile_keepsLimitsAndAcceleration() {
        QFETCH(std::vector<double>, sections);
        SpeedProfile profile;
        for (size_t i = 0; i < sections.size(); i += 3)
            profile.append(sections[i], sections[i + 1], sections[i + 2] != 0);
        profile.plan(2.0);
        const double step = profile.duration() / 5000;
        SpeedProfile::Point last = profile.at(0);
        for (int i = 1; i <= 5000; ++i) {
            const SpeedProfile::Point point = profile.at(i * step);
            QVERIFY(std::abs(point.speed - last.speed) <= 2.0 * step + 1e-9);
            QVERIFY(std::abs(point.s - last.s - (point.speed + last.speed) / 2 * step) < 2.0 * step * step);
            double from = 0;
            for (size_t k = 0; k < sections.size(); from += sections[k], k += 3) {
                if (point.s > from + 1e-9 && point.s < from + sections[k] - 1e-9)
                    QVERIFY(point.speed <= sections[k + 1] + 1e-9);
            }
            QVERIFY(std::abs(profile.at(profile.timeAt(point.s)).s - point.s) < 1e-9);
            last = point;
        }
        QVERIFY(std::abs(last.s - profile.length()) < 1e-9);
        QVERIFY(last.speed < 1e-6);
    }

    void motion_takesTheTimeOfItsTrapezoid_data() {
        QTest::addColumn<double>("length");
        QTest::addColumn<double>("speed");
        QTest::newRow("weld") << 0.1 << 0.02;
        QTest::newRow("approach") << 0.25 << 0.2;
        QTest::newRow("never at speed") << 0.01 << 1.0;
        QTest::newRow("crawl") << 0.001 << 0.001;
    }
    void motion_takesTheTimeOfItsTrapezoid() {
        QFETCH(double, length);
        QFETCH(double, speed);
        Robot robot;
        robot.line({0.5 + length, 0, 0.4}, speed);
        robot.go();
        robot.run();
        QCOMPARE(robot.times, QList<qint64>{wholeMs(trapezoid(length, speed))});
        QVERIFY(std::abs(robot.queue.travelled() - length) < 1e-9);
    }

    // --- Paths ---

    void line_isStraightAndEndsAtItsTarget() {
        Robot robot;
        const Point target = {0.55, 0.08, 0.36};
        robot.line(target, 0.1);
        robot.go();
        double last = 0;
        robot.run([&] {
            QVERIFY(offSegment(robot.place(), kHome, target) < 1e-9);
            QVERIFY(distance(robot.place(), kHome) >= last);
            last = distance(robot.place(), kHome);
        });
        QVERIFY(distance(robot.place(), target) < 1e-12);
    }

    void line_turnsTheToolEvenly() {
        Robot robot;
        robot.line({0.6, 0, 0.4}, 0.1, 0, {kPi, 0, 0.8});
        robot.go();
        robot.run([&] {
            const auto pose = robot.queue.stand().pose;
            QVERIFY(std::abs(pose.rot[2] - 0.8 * (pose.trans[0] - 0.5) / 0.1) < 1e-6);
            QVERIFY(std::abs(pose.rot[0] - kPi) < 1e-6);
        });
    }

    void posture_fitsItsJoints_data() {
        QTest::addColumn<int>("axes");
        QTest::newRow("six axes") << 6;
        QTest::newRow("seven axes") << 7;
    }
    void posture_fitsItsJoints() {
        QFETCH(int, axes);
        Robot robot(axes);
        robot.line({0.6, 0.1, 0.3}, 0.2, 0.004);
        robot.arcs({{{0.62, 0.12, 0.3}, {0.64, 0.1, 0.3}}}, 0.2, 0.004);
        robot.line({0.5, -0.2, 0.35}, 0.2);
        robot.go();
        robot.run([&] {
            const auto stand = robot.queue.stand();
            const double off = distance(robot.arm.forward(stand.joints).trans, stand.pose.trans);
            QVERIFY2(off < 1e-4, qPrintable(QString::number(off)));
        });
        const auto stand = robot.queue.stand();
        QVERIFY(distance(robot.arm.forward(stand.joints).trans, stand.pose.trans) < 1e-8);
        QCOMPARE(robot.results, (QStringList{"1:0", "2:0", "3:0"}));
    }

    void arc_staysOnItsCircle_data() {
        QTest::addColumn<int>("parts");
        QTest::addColumn<double>("whole");
        QTest::addColumn<double>("radius");
        QTest::newRow("half, one arc") << 1 << kPi << 0.05;
        QTest::newRow("three quarters, one arc") << 1 << 1.5 * kPi << 0.05;
        QTest::newRow("full, three arcs") << 3 << 2 * kPi << 0.05;
        QTest::newRow("small full") << 3 << 2 * kPi << 0.004;
    }
    void arc_staysOnItsCircle() {
        QFETCH(int, parts);
        QFETCH(double, whole);
        QFETCH(double, radius);
        // A tilted circle through home, about `centre`.
        const Point centre = {0.5 + radius, 0, 0.4};
        const auto at = [&](double angle) {
            const double c = -std::cos(angle), s = std::sin(angle);
            return Point{centre[0] + radius * c, centre[1] + radius * s * 0.8, centre[2] + radius * s * 0.6};
        };
        std::vector<std::pair<Point, Point>> points;
        for (int i = 0; i < parts; ++i)
            points.emplace_back(at(whole * (i + 0.4) / parts), at(whole * (i + 1) / parts));
        Robot robot;
        robot.arcs(points, 0.05);
        robot.go();
        robot.run([&] { QVERIFY(std::abs(distance(robot.place(), centre) - radius) < 1e-9); });
        QCOMPARE(robot.results, QStringList{"1:0"});
        QCOMPARE(robot.times, QList<qint64>{wholeMs(trapezoid(whole * radius, 0.05))});
        QVERIFY(std::abs(robot.queue.travelled() - whole * radius) < 1e-9);
    }

    void jointMotion_movesAllJointsTogetherAtTheToolsSpeed() {
        Robot robot;
        const Joints home = robot.arm.home();
        Joints target = home;
        for (size_t i = 0; i < target.size(); ++i)
            target[i] += 0.1 * (double(i) - 1.5);
        robot.joints(target, 0.1);
        robot.go();
        VirtualTime::instance()->advance(300);
        const Point before = robot.place();
        VirtualTime::instance()->advance(100);
        QVERIFY(std::abs(distance(robot.place(), before) - 0.01) < 1e-5);
        robot.run([&] {
            const Joints now = robot.queue.stand().joints;
            const double share = (now[0] - home[0]) / (target[0] - home[0]);
            for (size_t i = 0; i < now.size(); ++i)
                QVERIFY(std::abs(now[i] - home[i] - share * (target[i] - home[i])) < 1e-9);
        });
        QCOMPARE(robot.queue.stand().joints, target);
    }

    void turnOnTheSpot_takesTime() {
        Robot robot;
        robot.line(kHome, 0.02, 0, {kPi, 0, 0.5});
        robot.go();
        robot.run();
        QCOMPARE(robot.times, QList<qint64>{wholeMs(trapezoid(0.02 * 0.5, 0.02))});
        QVERIFY(robot.queue.travelled() < 1e-9);
    }

    // --- Corners ---

    void corner_isAParabolaAtTheZonesRadius_data() {
        QTest::addColumn<double>("first");
        QTest::addColumn<double>("second");
        QTest::addColumn<double>("zone");
        QTest::addColumn<double>("radius");
        QTest::newRow("zone fits") << 0.1 << 0.06 << 0.01 << 0.01;
        QTest::newRow("half of the first") << 0.02 << 0.1 << 0.05 << 0.01;
        QTest::newRow("half of the second") << 0.1 << 0.03 << 0.05 << 0.015;
    }
    void corner_isAParabolaAtTheZonesRadius() {
        QFETCH(double, first);
        QFETCH(double, second);
        QFETCH(double, zone);
        QFETCH(double, radius);
        Robot robot;
        const Point corner = {0.5 + first, 0, 0.4};
        const Point end = {0.5 + first, second, 0.4};
        robot.line(corner, 0.05, zone);
        robot.line(end, 0.05, zone);
        robot.go();
        int cut = 0;
        robot.run([&] {
            const Point p = robot.place();
            const double a = corner[0] - p[0], b = p[1];  // along the two legs
            if (a >= radius || b >= radius) {
                QVERIFY(std::min(offSegment(p, kHome, corner), offSegment(p, corner, end)) < 1e-9);
            } else {
                QVERIFY(std::abs(std::sqrt(a) + std::sqrt(b) - std::sqrt(radius)) < 1e-6);
                ++cut;
            }
        });
        QVERIFY(cut > 50);
        // The first result comes in the middle of the corner, at most a millisecond late.
        const Point middle = {corner[0] - radius / 4, radius / 4, 0.4};
        QVERIFY(distance(robot.places[0], middle) < 0.05 * 0.001 + 1e-6);
        QVERIFY(distance(robot.places[1], end) < 1e-12);
        QCOMPARE(robot.movingThen, (QList<bool>{true, false}));
        QCOMPARE(robot.events, (QStringList{"started 1", "passed 1", "started 2", "passed 2"}));
    }

    void corner_isNotSlowedDown() {
        Robot robot;
        robot.line({0.6, 0, 0.4}, 0.05, 0.01);
        robot.line({0.6, 0.1, 0.4}, 0.05);
        robot.go();
        VirtualTime::instance()->advance(1000);
        Point last = robot.place();
        for (int i = 0; i < 1500; ++i) {
            VirtualTime::instance()->advance(1);
            QVERIFY(std::abs(distance(robot.place(), last) - 0.05 * 0.001) < 0.05 * 0.001 * 0.04);
            last = robot.place();
        }
        robot.run();
    }

    void cornerWithoutZone_isReachedExactly() {
        Robot robot;
        robot.line({0.6, 0, 0.4}, 0.1, 0);
        robot.line({0.6, 0.05, 0.4}, 0.1, 0.02);
        robot.go();
        robot.run();
        const double first = trapezoid(0.1, 0.1), second = trapezoid(0.05, 0.1);
        QCOMPARE(robot.times, (QList<qint64>{wholeMs(first), wholeMs(first + second)}));
        QVERIFY(distance(robot.places[0], {0.6, 0, 0.4}) < 1e-6);
    }

    void corner_betweenUnlikeMotionsIsContinuous() {
        Robot robot;
        robot.line({0.56, 0, 0.4}, 0.1, 0.01);
        const auto near = robot.arm.inverse({{0.56, 0.1, 0.4}, kDown}, robot.arm.home());
        robot.joints(*near, 0.1, 0.01);
        robot.arcs({{{0.58, 0.12, 0.4}, {0.6, 0.1, 0.4}}}, 0.1);
        robot.go();
        Point last = robot.place();
        robot.run([&] {
            QVERIFY(distance(robot.place(), last) < 0.1 * 0.001 * 1.1);
            last = robot.place();
        });
        QCOMPARE(robot.results, (QStringList{"1:0", "2:0", "3:0"}));
    }
};

VIRTUAL_TIME_MAIN(TestMotion)
#include "test_motion.moc"
