#include "robot.h"
#include "support/suite.h"

using namespace test;
using sim::JogAnswer;
using sim::JogFrame;

class TestJog : public QObject {
    Q_OBJECT
private:
    /// "x y z rx ry rz" in millimetres and degrees.
    static QString shown(const Robot& robot) {
        const auto pose = robot.controller.stand().pose;
        QStringList numbers;
        for (size_t i = 0; i < 6; ++i) {
            const double value = i < 3 ? pose.trans[i] * 1000 : pose.rot[i - 3] * 180 / kPi;
            numbers << QString::number(std::round(value * 1000) / 1000 + 0.0);
        }
        return numbers.join(' ');
    }

private slots:
    void jog_goesItsWayInItsFrameAtItsSpeedAndTellsNothingElse() {
        struct Row {
            JogFrame frame;
            int axis;
            double way, speed;
            const char* expected;
        };
        // The tool points down, its x axis ahead: its y and z are against the base's.
        const std::vector<Row> rows = {{JogFrame::Base, 0, 0.01, 0.005, "510 0 400 180 0 0"},
                                       {JogFrame::Base, 1, -0.2, 0.02, "500 -200 400 180 0 0"},
                                       {JogFrame::Base, 2, 0.0001, 0.005, "500 0 400.1 180 0 0"},
                                       {JogFrame::Base, 3, -kPi / 18, 0.1, "500 0 400 170 0 0"},
                                       {JogFrame::Base, 4, kPi / 18, 0.1, "500 0 400 180 10 0"},
                                       {JogFrame::Base, 5, kPi / 180, 0.1, "500 0 400 180 0 1"},
                                       {JogFrame::Tool, 1, 0.01, 0.005, "500 -10 400 180 0 0"},
                                       {JogFrame::Tool, 2, 0.01, 0.005, "500 0 390 180 0 0"},
                                       {JogFrame::Tool, 3, -kPi / 18, 0.1, "500 0 400 170 0 0"},
                                       {JogFrame::Tool, 5, kPi / 3, 0.1, "500 0 400 180 0 -60"},
                                       {JogFrame::Joint, 0, kPi / 2, 0.1, "0 500 400 180 0 90"},
                                       {JogFrame::Joint, 5, kPi / 3, 0.1, "500 0 400 180 0 -60"}};
        for (const Row& row : rows) {
            Robot robot;
            QCOMPARE(robot.controller.jog({row.frame, row.axis, row.way, row.speed}), JogAnswer::Moves);
            QCOMPARE(robot.diary(), QString("0 moving, %1 idle").arg(robot.now()));
            QCOMPARE(shown(robot), row.expected);
            // Some milliseconds are for speeding up and braking.
            const double ms = std::abs(row.way) / row.speed * 1000;
            QVERIFY2(robot.now() >= ms && robot.now() < ms + 100, row.expected);
        }
    }

    void robotThatMovesOrHasNoPowerOrReach_isNotJogged() {
        const QList<std::pair<QString, JogAnswer>> rows = {
            {"power", JogAnswer::DriveOff},   {"jog", JogAnswer::Moving},
            {"motion", JogAnswer::Moving},    {"waiting", JogAnswer::Moving},
            {"reach", JogAnswer::OutOfReach}, {"limit", JogAnswer::JointLimit}};
        for (const auto& [given, answer] : rows) {
            Robot robot;
            robot.controller.setPower(given != "power");
            if (given == "jog")
                robot.controller.jog(sim::JogAxis::Y, 0.01);
            if (given == "motion" || given == "waiting")
                robot.line({0.5, 0.01, 0.4});
            if (given == "motion")
                robot.order("move.opr.enough");
            const JogFrame frame = given == "limit" ? JogFrame::Joint : JogFrame::Base;
            QCOMPARE(robot.controller.jog({frame, 0, 3, 1}), answer);
            const bool placed = given == "reach" || given == "limit";
            QCOMPARE(robot.controller.askPlace({{0.5, 0.05, 0.4}, {}, 0.05}),
                     placed ? JogAnswer::Moves : answer);
            robot.diary();
            QCOMPARE(robot.place()[0], 0.5);
        }
    }

    void place_isGoneToStraightAtItsSpeedBeforeWhatIsOrderedMeanwhile() {
        Robot robot;
        sim::PlaceMove move{{0.5, 0.05, 0.4}, {}, 0.05};
        QCOMPARE(robot.controller.place(move), JogAnswer::Moves);
        QCOMPARE(robot.controller.place(move), JogAnswer::Moving);
        QCOMPARE(robot.diary() + ' ' + shown(robot), "0 moving, 1025 idle 500 50 400 180 0 0");
        move.rot = Point{kPi, 0, kPi / 18};
        QCOMPARE(robot.controller.place(move), JogAnswer::Moves);
        robot.line({0.5, 0.05, 0.4});
        robot.order("move.opr.enough");
        robot.controller.stopJog();
        QCOMPARE(robot.diary().section(", ", 2), "1025 moving, 1025 dropped 1, 1026 idle");
        robot.line({0.5, 0.05, 0.4});
        robot.order("move.opr.enough");
        robot.controller.stopJog();  // concerns the jog alone
        QVERIFY(robot.diary().endsWith("result move.l 2 0"));
    }

    void heldJog_endsWhenLetGoOrStoppedOrAtTheLastPlaceInReach() {
        Robot robot;
        const auto jogOn = [&robot](JogFrame frame, int axis, double direction, double speed) {
            robot.start();
            return robot.controller.jogOn({frame, axis, direction, speed});
        };
        QCOMPARE(jogOn(JogFrame::Base, 2, 1, 0.05), JogAnswer::Moves);
        robot.advance(1000);
        robot.controller.stopJog();
        QCOMPARE(robot.diary() + ' ' + shown(robot), "0 moving, 1013 idle 500 0 449.688 180 0 0");
        jogOn(JogFrame::Base, 1, -1, 0.1);
        robot.advance(500);
        robot.controller.setEmergencyStop(true);
        QCOMPARE(robot.diary() + ' ' + shown(robot), "0 moving, 525 idle 500 -48.75 449.688 180 0 0");
        for (const char* power : {"off", "on"}) {
            robot.controller.setPower(true);
            QCOMPARE(m("kord.r.power")->getString(), power);
            robot.controller.setEmergencyStop(false);
        }
        QCOMPARE(jogOn(JogFrame::Base, 0, 1, 0.5), JogAnswer::Moves);
        robot.diary();
        QVERIFY(robot.place()[0] >= 0.9 && jogOn(JogFrame::Base, 0, 1, 0.5) == JogAnswer::OutOfReach);
        QCOMPARE(jogOn(JogFrame::Joint, 0, -1, 0.5), JogAnswer::Moves);
        robot.diary();
        QVERIFY(std::abs(robot.controller.stand().joints[0] + 170 * kPi / 180) < 1e-6);
        QCOMPARE(jogOn(JogFrame::Joint, 0, -1, 0.5), JogAnswer::JointLimit);
    }
};

LUMO_TEST(TestJog)
#include "test_jog.moc"
