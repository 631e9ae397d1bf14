#include "controllerfixture.h"
#include "virtualmain.h"

#include <cmath>

using sim::JogAnswer;
using sim::JogAxis;

namespace {

constexpr double kPi = 3.14159265358979323846;

/// "x y z rx ry rz" in millimetres and degrees.
QString place(const ControllerFixture& robot) {
    QStringList numbers;
    for (int i = 0; i < 6; ++i) {
        const QString path = QLatin1String(i < 3 ? "trans." : "rot.") + mIndex(i % 3);
        const double value = robot.posture(path)->getDouble() * (i < 3 ? 1000 : 180 / kPi);
        numbers << QString::number(std::round(value * 1000) / 1000 + 0.0);
    }
    return numbers.join(QLatin1Char(' '));
}

}  // namespace

class TestJog : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QCOMPARE(sim::VirtualTime::instance()->armedTimers(), 0); }

    void step_movesTheTool_data() {
        QTest::addColumn<int>("axis");
        QTest::addColumn<double>("step");
        QTest::addColumn<QString>("expected");
        QTest::newRow("x") << int(JogAxis::X) << 0.01 << "510 0 400 180 0 0";
        QTest::newRow("y") << int(JogAxis::Y) << -0.001 << "500 -1 400 180 0 0";
        QTest::newRow("z") << int(JogAxis::Z) << 0.0001 << "500 0 400.1 180 0 0";
        QTest::newRow("rx") << int(JogAxis::Rx) << -kPi / 18 << "500 0 400 170 0 0";
        // About the base's axes: the tool points down, so its own angles turn the other way.
        QTest::newRow("ry") << int(JogAxis::Ry) << kPi / 18 << "500 0 400 180 10 0";
        QTest::newRow("rz") << int(JogAxis::Rz) << kPi / 180 << "500 0 400 180 0 1";
    }
    void step_movesTheTool() {
        QFETCH(int, axis);
        QFETCH(double, step);
        ControllerFixture robot;
        robot.start();
        QCOMPARE(robot.controller.jog(JogAxis(axis), step), JogAnswer::Moves);
        QCOMPARE(robot.state(), QStringLiteral("moving"));
        const QString diary = robot.diary(2000);
        QTEST(place(robot), "expected");
        // Nothing of a motion or a result: whoever awaits one must not take this for it.
        QVERIFY2(QRegularExpression(QStringLiteral("^0 moving, \\d+ idle$")).match(diary).hasMatch(),
                 qPrintable(diary));
    }

    void stepsAddUp() {
        ControllerFixture robot;
        for (int i = 0; i < 5; ++i) {
            QCOMPARE(robot.controller.jog(JogAxis::X, 0.001), JogAnswer::Moves);
            robot.diary();
        }
        QCOMPARE(place(robot), QStringLiteral("505 0 400 180 0 0"));
    }

    void refused_data() {
        QTest::addColumn<QString>("given");
        QTest::addColumn<double>("step");
        QTest::addColumn<int>("answer");
        QTest::newRow("no power") << "off" << 0.01 << int(JogAnswer::DriveOff);
        QTest::newRow("a jog before") << "jog" << 0.01 << int(JogAnswer::Moving);
        QTest::newRow("a motion under way") << "motion" << 0.01 << int(JogAnswer::Moving);
        QTest::newRow("a motion not released") << "waiting" << 0.01 << int(JogAnswer::Moving);
        QTest::newRow("too far") << "" << 2.0 << int(JogAnswer::OutOfReach);
    }
    void refused() {
        QFETCH(QString, given);
        QFETCH(double, step);
        ControllerFixture robot;
        if (given == QLatin1String("off"))
            robot.controller.setPower(false);
        if (given == QLatin1String("jog"))
            QCOMPARE(robot.controller.jog(JogAxis::Y, 0.01), JogAnswer::Moves);
        if (given == QLatin1String("motion") || given == QLatin1String("waiting"))
            robot.line(0.5, 0.01, 0.4);
        if (given == QLatin1String("motion"))
            robot.order("move.opr.enough");
        QTEST(int(robot.controller.jog(JogAxis::X, step)), "answer");
        robot.diary();
        QCOMPARE(robot.posture(QStringLiteral("trans.#0"))->getDouble(), 0.5);
    }

    void place_goesStraightAtItsSpeed() {
        ControllerFixture robot;
        robot.start();
        sim::PlaceMove move;
        move.trans = {0.5, 0.05, 0.4};
        QCOMPARE(robot.controller.askPlace(move), JogAnswer::Moves);
        QCOMPARE(robot.controller.place(move), JogAnswer::Moves);
        QCOMPARE(robot.controller.place(move), JogAnswer::Moving);
        QCOMPARE(robot.diary(), QStringLiteral("0 moving, 1025 idle"));  // 50 mm at 50 mm/s
        QCOMPARE(place(robot), QStringLiteral("500 50 400 180 0 0"));
        move.rot = std::array<double, 3>{kPi, 0, kPi / 18};
        QCOMPARE(robot.controller.place(move), JogAnswer::Moves);
        robot.diary();
        QCOMPARE(place(robot), QStringLiteral("500 50 400 180 0 10"));
        robot.controller.setPower(false);
        QCOMPARE(robot.controller.place(move), JogAnswer::DriveOff);
    }

    void frames_data() {
        QTest::addColumn<int>("frame");
        QTest::addColumn<int>("axis");
        QTest::addColumn<double>("way");
        QTest::addColumn<QString>("expected");
        using sim::JogFrame;
        // The tool points down, its x axis ahead: its y and z are against the base's.
        QTest::newRow("tool x") << int(JogFrame::Tool) << int(JogAxis::X) << 0.01 << "510 0 400 180 0 0";
        QTest::newRow("tool y") << int(JogFrame::Tool) << int(JogAxis::Y) << 0.01 << "500 -10 400 180 0 0";
        QTest::newRow("tool z") << int(JogFrame::Tool) << int(JogAxis::Z) << 0.01 << "500 0 390 180 0 0";
        QTest::newRow("tool rx") << int(JogFrame::Tool) << int(JogAxis::Rx) << -kPi / 18
                                 << "500 0 400 170 0 0";
        QTest::newRow("tool rz") << int(JogFrame::Tool) << int(JogAxis::Rz) << kPi / 180
                                 << "500 0 400 180 0 -1";
        // About the base's z axis, the tool with it.
        QTest::newRow("joint 1") << int(JogFrame::Joint) << 0 << kPi / 2 << "0 500 400 180 0 90";
        QTest::newRow("joint 6") << int(JogFrame::Joint) << 5 << kPi / 180 << "500 0 400 180 0 -1";
    }
    void frames() {
        QFETCH(int, frame);
        QFETCH(int, axis);
        QFETCH(double, way);
        ControllerFixture robot;
        QCOMPARE(robot.controller.jog({sim::JogFrame(frame), axis, way, 0.2}), JogAnswer::Moves);
        robot.diary();
        QTEST(place(robot), "expected");
    }

    void speed_isKept_data() {
        QTest::addColumn<int>("frame");
        QTest::addColumn<int>("axis");
        QTest::addColumn<double>("way");
        QTest::addColumn<double>("speed");
        QTest::newRow("line") << int(sim::JogFrame::Base) << int(JogAxis::Y) << 0.2 << 0.02;
        QTest::newRow("turn") << int(sim::JogFrame::Tool) << int(JogAxis::Rz) << 1.0 << 0.1;
        QTest::newRow("joint far from the tool") << int(sim::JogFrame::Joint) << 0 << 1.0 << 0.1;
        QTest::newRow("joint at the tool") << int(sim::JogFrame::Joint) << 5 << 1.0 << 0.1;
    }
    /// Ten seconds of way at its speed, and some for speeding up and braking.
    void speed_isKept() {
        QFETCH(int, frame);
        QFETCH(int, axis);
        QFETCH(double, way);
        QFETCH(double, speed);
        ControllerFixture robot;
        robot.start();
        robot.controller.jog({sim::JogFrame(frame), axis, way, speed});
        const int tookMs = robot.diary().section(QLatin1Char(' '), -2, -2).toInt();
        QVERIFY2(tookMs >= 10000 && tookMs < 10100, qPrintable(QString::number(tookMs)));
    }

    void held_movesUntilItIsLetGo() {
        ControllerFixture robot;
        robot.start();
        QCOMPARE(robot.controller.jogOn({sim::JogFrame::Base, int(JogAxis::Z), 1, 0.05}), JogAnswer::Moves);
        robot.advance(1000);
        robot.controller.stopJog();
        const QString diary = robot.diary();
        QVERIFY2(QRegularExpression(QStringLiteral("^0 moving, \\d+ idle$")).match(diary).hasMatch(),
                 qPrintable(diary));
        const double z = robot.posture(QStringLiteral("trans.#2"))->getDouble();
        QVERIFY2(z > 0.448 && z < 0.451, qPrintable(QString::number(z)));
    }

    void held_endsAtTheLastPlaceInReach_data() {
        QTest::addColumn<int>("frame");
        QTest::addColumn<int>("axis");
        QTest::addColumn<int>("direction");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("node");
        QTest::addColumn<double>("atLeast");
        QTest::newRow("ahead") << int(sim::JogFrame::Base) << int(JogAxis::X) << 1
                               << int(JogAnswer::OutOfReach) << "trans.#0" << 0.9;
        QTest::newRow("joint") << int(sim::JogFrame::Joint) << 0 << 1 << int(JogAnswer::JointLimit)
                               << "near.#0" << 170 * kPi / 180 - 1e-6;
    }
    void held_endsAtTheLastPlaceInReach() {
        QFETCH(int, frame);
        QFETCH(int, axis);
        QFETCH(int, direction);
        QFETCH(QString, node);
        QFETCH(double, atLeast);
        ControllerFixture robot;
        const sim::JogMove move{sim::JogFrame(frame), axis, double(direction), 0.5};
        QCOMPARE(robot.controller.jogOn(move), JogAnswer::Moves);
        robot.diary();
        const double reached = robot.posture(node)->getDouble();
        QVERIFY2(reached >= atLeast, qPrintable(QString::number(reached)));
        QTEST(int(robot.controller.jogOn(move)), "answer");
        QCOMPARE(robot.posture(node)->getDouble(), reached);
    }

    /// Letting go of a key concerns the jog alone.
    void letGo_leavesCommandedMotion() {
        ControllerFixture robot;
        robot.start();
        robot.line(0.5, 0.05, 0.4);
        robot.order("move.opr.enough");
        robot.advance(100);
        robot.controller.stopJog();
        QVERIFY(robot.diary().endsWith(QLatin1String("result move.l 1 0")));
    }

    void emergencyStop_keepsThePowerOff() {
        ControllerFixture robot;
        robot.controller.jogOn({sim::JogFrame::Base, int(JogAxis::Y), 1, 0.1});
        robot.advance(500);
        robot.controller.setEmergencyStop(true);
        QCOMPARE(m(QStringLiteral("kord.r.power"))->getString(), QStringLiteral("off"));
        robot.diary();
        const double y = robot.posture(QStringLiteral("trans.#1"))->getDouble();
        QVERIFY2(y > 0.04 && y < 0.055, qPrintable(QString::number(y)));
        robot.controller.setPower(true);
        QCOMPARE(m(QStringLiteral("kord.r.power"))->getString(), QStringLiteral("off"));
        robot.controller.setEmergencyStop(false);
        QCOMPARE(m(QStringLiteral("kord.r.power"))->getString(), QStringLiteral("off"));
        robot.controller.setPower(true);
        QCOMPARE(m(QStringLiteral("kord.r.power"))->getString(), QStringLiteral("on"));
    }

    void lostPower_endsIt() {
        ControllerFixture robot;
        robot.start();
        robot.controller.jog(JogAxis::X, 0.1);
        robot.advance(500);
        robot.controller.setPower(false);
        const QString diary = robot.diary();
        const double x = robot.posture(QStringLiteral("trans.#0"))->getDouble();
        QVERIFY2(x > 0.54 && x < 0.56, qPrintable(QString::number(x)));
        QCOMPARE(diary.section(QLatin1Char(' '), -1), QStringLiteral("idle"));
        QVERIFY2(!diary.contains(QLatin1String("stopped")), qPrintable(diary));
    }

    void commandedMotion_comesAfterIt() {
        ControllerFixture robot;
        robot.controller.jog(JogAxis::X, 0.01);
        robot.start();
        robot.line(0.5, 0.05, 0.4);
        robot.order("move.opr.enough");
        const QString diary = robot.diary();
        QVERIFY2(diary.endsWith(QLatin1String("result move.l 1 0")), qPrintable(diary));
        QCOMPARE(place(robot), QStringLiteral("500 50 400 180 0 0"));
    }
};

VIRTUAL_TIME_MAIN(TestJog)
#include "test_jog.moc"
