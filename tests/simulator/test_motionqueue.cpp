#include "motionfixture.h"
#include "virtualmain.h"

using namespace motiontest;

Q_DECLARE_METATYPE(motiontest::Point)

class TestMotionQueue : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QCOMPARE(VirtualTime::instance()->armedTimers(), 0); }

    void results_comeOneByOneAMillisecondApart() {
        Robot robot;
        for (int i = 0; i < 5; ++i)
            robot.line(kHome);  // no way to go
        robot.line({0.5005, 0, 0.4}, 1.0);
        robot.go();
        QVERIFY(robot.results.isEmpty());
        robot.run();
        QCOMPARE(robot.results, (QStringList{"1:0", "2:0", "3:0", "4:0", "5:0", "6:0"}));
        for (int i = 1; i < robot.times.size(); ++i)
            QVERIFY(robot.times[i] > robot.times[i - 1]);
        QCOMPARE(robot.movingThen, (QList<bool>{true, true, true, true, true, false}));
    }

    void unreleasedMotions_neverStart() {
        Robot robot;
        robot.line({0.6, 0, 0.4});
        VirtualTime::instance()->advance(10000);
        QCOMPARE(robot.events, QStringList());
        QVERIFY(!robot.queue.moving());
    }

    void batchWhileMoving_followsFromStandstill() {
        Robot robot;
        robot.line({0.6, 0, 0.4}, 0.1, 0.02);
        robot.go();
        VirtualTime::instance()->advance(200);
        robot.line({0.6, 0.1, 0.4}, 0.1, 0.02);
        robot.queue.release();
        robot.run();
        const qint64 each = wholeMs(trapezoid(0.1, 0.1));
        QCOMPARE(robot.times, (QList<qint64>{each, 2 * each}));
        QVERIFY(distance(robot.places[0], {0.6, 0, 0.4}) < 1e-12);
        QCOMPARE(robot.movingThen, (QList<bool>{true, false}));
    }

    // --- Stop ---

    void stop_brakesAlongThePath_data() {
        QTest::addColumn<qint64>("at");
        QTest::addColumn<double>("behind");  // way and speed at the stop
        QTest::addColumn<double>("speed");
        QTest::newRow("at speed") << qint64(500) << 0.2 * 0.45 << 0.2;
        QTest::newRow("while it gets faster") << qint64(40) << 0.0016 << 0.08;
        QTest::newRow("at the start") << qint64(0) << 0.0 << 0.0;
        // Ends at 0.2 m after 1.1 s.
        QTest::newRow("while it slows down") << qint64(1050) << 0.2 - 0.0025 << 0.1;
    }
    void stop_brakesAlongThePath() {
        QFETCH(qint64, at);
        QFETCH(double, behind);
        QFETCH(double, speed);
        Robot robot;
        robot.line({0.7, 0, 0.4}, 0.2);
        robot.line({0.7, 0.1, 0.4}, 0.2);
        robot.go();
        VirtualTime::instance()->advance(at);
        robot.queue.stop();
        QVERIFY(std::abs(robot.place()[0] - 0.5 - behind) < 1e-9);
        robot.run();
        QCOMPARE(robot.now(), at + std::max<qint64>(wholeMs(speed / 4), 1));
        QVERIFY(std::abs(robot.place()[0] - 0.5 - behind - speed * speed / 8) < 1e-9);
        QVERIFY(std::abs(robot.queue.travelled() - behind - speed * speed / 8) < 1e-9);
        VirtualTime::instance()->advance(5000);
        QCOMPARE(robot.results, QStringList());
        QCOMPARE(robot.events, (QStringList{"started 1", "stopped 1", "dropped 2", "braked 0"}));
    }

    void stopInACorner_staysOnTheParabola_andTheNextMotionStartsThere() {
        Robot robot;
        robot.line({0.6, 0, 0.4}, 0.2, 0.03);
        robot.line({0.6, 0.1, 0.4}, 0.2, 0.03);
        robot.go();
        QVERIFY(VirtualTime::instance()->advanceUntil([&] { return !robot.results.isEmpty(); }, 5000));
        robot.queue.stop();
        robot.run();
        const auto stand = robot.queue.stand();
        const double a = 0.6 - stand.pose.trans[0], b = stand.pose.trans[1];
        QVERIFY(std::abs(std::sqrt(a) + std::sqrt(b) - std::sqrt(0.03)) < 1e-6);
        QVERIFY(distance(robot.arm.forward(stand.joints).trans, stand.pose.trans) < 1e-8);

        robot.line({0.6, 0.1, 0.4}, 0.2);
        robot.go();
        const Point from = robot.place();
        robot.run([&] { QVERIFY(offSegment(robot.place(), from, {0.6, 0.1, 0.4}) < 1e-9); });
        QCOMPARE(robot.results, (QStringList{"1:0", "3:0"}));
    }

    void secondStop_changesNothing() {
        Robot robot;
        robot.line({0.7, 0, 0.4}, 0.2);
        robot.go();
        VirtualTime::instance()->advance(500);
        robot.queue.stop();
        VirtualTime::instance()->advance(20);
        robot.queue.stop();
        robot.run();
        QCOMPARE(robot.now(), qint64(550));
        QCOMPARE(robot.events, (QStringList{"started 1", "stopped 1", "braked 0"}));
    }

    void batchWhileBraking_startsAtRest() {
        Robot robot;
        robot.line({0.7, 0, 0.4}, 0.2);
        robot.go();
        VirtualTime::instance()->advance(500);
        robot.queue.stop();
        robot.line(kHome, 0.2);
        robot.queue.release();
        robot.run([&] { QVERIFY(std::abs(robot.place()[1]) < 1e-9); });
        QVERIFY(distance(robot.place(), kHome) < 1e-12);
        QCOMPARE(robot.results, QStringList{"2:0"});
    }

    // --- Failures ---

    void motionThatCannotBeMade_dropsWhatFollows_data() {
        QTest::addColumn<int>("kind");
        QTest::addColumn<Point>("target");
        QTest::addColumn<int>("code");
        QTest::newRow("out of reach") << 0 << Point{1.6, 0, 0.4} << -1;
        QTest::newRow("joint limit") << 0 << Point{0.08, 0, 0.25} << -2;
        QTest::newRow("straight arc") << 1 << Point{0.6, 0, 0.4} << -3;
        QTest::newRow("arc through its start") << 2 << Point{0.6, 0.1, 0.4} << -3;
        QTest::newRow("arc to its start") << 3 << Point{0.55, 0, 0.4} << -3;
        QTest::newRow("joint target") << 4 << Point{} << -2;
    }
    void motionThatCannotBeMade_dropsWhatFollows() {
        QFETCH(int, kind);
        QFETCH(Point, target);
        QFETCH(int, code);
        Robot robot;
        const Point first = {0.55, 0, 0.4};
        Joints beyond = robot.arm.home();
        beyond[1] = 3.0;
        robot.line(first, 0.1, 0.01);
        if (kind == 0)
            robot.line(target);
        else if (kind == 4)
            robot.joints(beyond);
        else
            robot.arcs({{kind == 1   ? Point{0.57, 0, 0.4}
                         : kind == 2 ? first
                                     : Point{0.6, 0.1, 0.4},
                         target}});
        robot.line(kHome);
        robot.go();
        robot.run();
        // The first motion goes on to its exact target.
        QCOMPARE(robot.results, (QStringList{"1:0", QStringLiteral("2:%1").arg(code)}));
        QVERIFY(distance(robot.places[0], first) < 1e-12);
        QCOMPARE(robot.movingThen, (QList<bool>{true, false}));
        QCOMPARE(robot.events, (QStringList{"started 1", "passed 1", "failed 2", "dropped 3"}));
    }

    void refusedMotion_isReportedLater_data() {
        QTest::addColumn<int>("refusal");
        QTest::newRow("no speed") << int(sim::NoSpeed);
        QTest::newRow("no target") << int(sim::NoTarget);
        QTest::newRow("drive off") << int(sim::DriveOff);
    }
    void refusedMotion_isReportedLater() {
        QFETCH(int, refusal);
        Robot robot;
        robot.line({0.6, 0, 0.4});
        robot.line({0.7, 0, 0.4});
        robot.queue.release(refusal);
        QCOMPARE(robot.results, QStringList());
        robot.run();
        QCOMPARE(robot.results, QStringList{QStringLiteral("1:%1").arg(refusal)});
        QCOMPARE(robot.events, (QStringList{"failed 1", "dropped 2"}));
        QVERIFY(distance(robot.place(), kHome) < 1e-8);
    }

    /// Whatever its zone, it reaches its very target; the motions behind it are not made.
    void failureAtTheEnd_comesAtTheTarget() {
        for (const bool isStopped : {false, true}) {
            Robot robot;
            MotionCommand motion;
            motion.poses = {{{}, {{0.6, 0, 0.4}, kDown}}};
            motion.endCode = sim::FailedAtEnd;
            robot.add(motion, 0.1, 0.03);
            robot.line({0.6, 0.1, 0.4});
            robot.go();
            if (isStopped) {
                VirtualTime::instance()->advance(500);
                robot.queue.stop();
            }
            robot.run();
            QCOMPARE(robot.results, isStopped ? QStringList() : QStringList{"1:-9"});
            QCOMPARE(robot.events, isStopped
                                       ? (QStringList{"started 1", "stopped 1", "dropped 2", "braked 0"})
                                       : (QStringList{"started 1", "failed 1", "dropped 2"}));
            QCOMPARE(distance(robot.place(), {0.6, 0, 0.4}) < 1e-12, !isStopped);
        }
    }

    void failure_brakesTheMotionUnderWay() {
        Robot robot;
        robot.line({0.7, 0, 0.4}, 0.2);
        robot.line({0.7, 0.1, 0.4}, 0.2);
        robot.go();
        VirtualTime::instance()->advance(500);
        robot.queue.fail(-42);
        robot.run();
        QCOMPARE(robot.results, QStringList{"1:-42"});
        QCOMPARE(robot.times, QList<qint64>{550});
        QCOMPARE(robot.movingThen, QList<bool>{false});
        QCOMPARE(robot.events, (QStringList{"started 1", "dropped 2", "failed 1"}));
        QVERIFY(std::abs(robot.place()[0] - 0.5 - 0.09 - 0.005) < 1e-9);
    }

    void failure_whileStandingMeetsTheNextMotionOnce() {
        Robot robot;
        robot.queue.fail(-7);
        robot.line({0.6, 0, 0.4});
        robot.go();
        robot.run();
        robot.line({0.6, 0, 0.4});
        robot.go();
        robot.run();
        QCOMPARE(robot.results, (QStringList{"1:-7", "2:0"}));
    }

    void stopDuringAFailuresBraking_reportsNothing() {
        Robot robot;
        robot.line({0.7, 0, 0.4}, 0.2);
        robot.go();
        VirtualTime::instance()->advance(500);
        robot.queue.fail(-42);
        VirtualTime::instance()->advance(10);
        robot.queue.stop();
        robot.run();
        QCOMPARE(robot.results, QStringList());
        QCOMPARE(robot.events, (QStringList{"started 1", "stopped 1", "braked 0"}));
    }

    void ticks_comeWhileItMovesOnly() {
        Robot robot;
        QList<qint64> ticks;
        connect(&robot.queue, &MotionQueue::ticked, &robot, [&] { ticks << robot.now(); });
        robot.line({0.504, 0, 0.4}, 0.1);  // 90 ms
        robot.go();
        VirtualTime::instance()->advance(500);
        QCOMPARE(ticks, (QList<qint64>{10, 20, 30, 40, 50, 60, 70, 80}));
    }
};

VIRTUAL_TIME_MAIN(TestMotionQueue)
#include "test_motionqueue.moc"
