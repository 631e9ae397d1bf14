#include "controllerfixture.h"
#include "virtualmain.h"

#include <QSignalSpy>

#include <cmath>

using mendo::ModuleObject;
using sim::Controller;
using sim::Quirk;

class TestControllerMotion : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QCOMPARE(sim::VirtualTime::instance()->armedTimers(), 0); }

    void batch_movesWhenEnoughCame_idleBeforeTheLastResult() {
        ControllerFixture robot;
        robot.start();
        robot.order("move.reset");
        robot.line(0.6, 0, 0.4, 0.1, 0.01);
        robot.line(0.6, 0.1, 0.4, 0.1, 0.01);
        robot.advance(1000);
        QCOMPARE(robot.state(), QStringLiteral("idle"));
        robot.order("move.opr.enough");
        QCOMPARE(robot.state(), QStringLiteral("moving"));
        const QString diary = robot.diary();
        QVERIFY2(diary.startsWith(QLatin1String("0 queued 1, 0 queued 2, 1000 moving, 1000 started 1, ")),
                 qPrintable(diary));
        QStringList order;
        for (const QString& line : robot.lines.mid(4))
            order << line.section(QLatin1Char(' '), 1);
        QCOMPARE(order, (QStringList{"passed 1", "started 2", "result move.l 1 0", "passed 2", "idle",
                                     "result move.l 2 0"}));
        QCOMPARE(robot.posture(QStringLiteral("trans.#0"))->getDouble(), 0.6);
        QCOMPARE(robot.posture(QStringLiteral("trans.#1"))->getDouble(), 0.1);
    }

    void enoughWithoutMotions_doesNothing() {
        ControllerFixture robot;
        robot.start();
        robot.order("move.opr.enough");
        QCOMPARE(robot.diary(), QString());
    }

    void result_findsThePostureWritten() {
        ControllerFixture robot;
        QList<double> places;
        QStringList states;
        const auto listening =
            connect(kordservice()->commandNode(QStringLiteral("move.l")), &ModuleObject::changed, this, [&] {
                places << robot.posture(QStringLiteral("trans.#0"))->getDouble();
                states << robot.state();
            });
        robot.line(0.6, 0, 0.4);
        robot.line(0.65, 0, 0.4);
        robot.order("move.opr.enough");
        robot.diary();
        QVERIFY(std::abs(places.value(0) - 0.6) < 1e-6);
        QCOMPARE(places.value(1), 0.65);
        QCOMPARE(states, (QStringList{"moving", "idle"}));
        disconnect(listening);
    }

    void posture_isRefreshedWhileMovingOnly() {
        ControllerFixture robot;
        QSignalSpy moved(&robot.controller, &Controller::postureMoved);
        robot.line(0.604, 0, 0.4);  // 1090 ms
        robot.order("move.opr.enough");
        robot.advance(500);
        QVERIFY(std::abs(robot.posture(QStringLiteral("trans.#0"))->getDouble() - 0.5475) < 1e-6);
        robot.advance(5000);
        QCOMPARE(moved.count(), 108);
    }

    void fullCircle_isOneMotionWithOneResult() {
        ControllerFixture robot;
        robot.start();
        ModuleObject arguments(QStringLiteral("tmp"));
        robot.traj(&arguments, 0.1, 0);
        const double r = 0.05, c = r * std::sqrt(0.5);
        const double points[][4] = {{r - c, c, r, r}, {r + c, c, 2 * r, 0}, {r, -r, 0, 0}};
        for (int i = 0; i < 3; ++i) {
            arguments.set(this, QStringLiteral("path.#%1.note").arg(i), i, true);
            robot.point(&arguments, QStringLiteral("path.#%1.aux").arg(i), 0.5 + points[i][0], points[i][1],
                        0.4);
            robot.point(&arguments, QStringLiteral("path.#%1.point").arg(i), 0.5 + points[i][2], points[i][3],
                        0.4);
        }
        kordservice()->command(this, QStringLiteral("move.c"), &arguments);
        robot.order("move.opr.enough");
        robot.diary();
        QCOMPARE(robot.lines.filter(QStringLiteral("result")).size(), 1);
        QVERIFY(robot.lines.last().endsWith(QLatin1String("result move.c 1 0")));
        QVERIFY(std::abs(robot.controller.travelled() - 2 * 3.14159265358979 * r) < 1e-6);
    }

    void motionsThatMakeNoSense_areAnswered_data() {
        QTest::addColumn<QString>("spoilt");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<int>("code");
        QTest::newRow("no speed") << "traj.speed" << QVariant() << -5;
        QTest::newRow("speed zero") << "traj.speed" << QVariant(0) << -5;
        QTest::newRow("speed negative") << "traj.speed" << QVariant(-0.1) << -5;
        QTest::newRow("speed in words") << "traj.speed" << QVariant("fast") << -5;
        QTest::newRow("no place") << "point.trans.#1" << QVariant() << -6;
        QTest::newRow("no zone") << "traj.zone" << QVariant() << 0;
        QTest::newRow("speed as text") << "traj.speed" << QVariant("0.1") << 0;
    }
    void motionsThatMakeNoSense_areAnswered() {
        QFETCH(QString, spoilt);
        QFETCH(QVariant, value);
        QFETCH(int, code);
        ControllerFixture robot;
        ModuleObject arguments(QStringLiteral("tmp"));
        robot.point(&arguments, QStringLiteral("point"), 0.55, 0, 0.4);
        robot.traj(&arguments, 0.1, 0.001);
        arguments.r(spoilt)->setValue(this, value);
        kordservice()->command(this, QStringLiteral("move.l"), &arguments);
        robot.order("move.opr.enough");
        robot.diary();
        QVERIFY(robot.lines.last().endsWith(QStringLiteral("result move.l 1 %1").arg(code)));
        QCOMPARE(robot.state(), QStringLiteral("idle"));
    }

    void motionWithoutArguments_isAnswered_data() {
        QTest::addColumn<QString>("name");
        for (const char* name : {"move.j", "move.l", "move.c"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }
    void motionWithoutArguments_isAnswered() {
        QFETCH(QString, name);
        ControllerFixture robot;
        robot.order(qPrintable(name));
        robot.order("move.opr.enough");
        robot.diary();
        QVERIFY(robot.lines.last().endsWith(QStringLiteral("result %1 1 -5").arg(name)));
    }

    void stop_brakesAndReportsNothing() {
        ControllerFixture robot;
        robot.line(0.7, 0, 0.4, 0.2);
        robot.line(0.7, 0.1, 0.4, 0.2);
        robot.writeRegister(QStringLiteral("LUMO_DO"), QStringLiteral("bit"), 1, 3);
        robot.order("move.opr.enough");
        robot.advance(500);
        robot.start();
        robot.order("move.stop");
        QCOMPARE(robot.state(), QStringLiteral("moving"));
        QCOMPARE(robot.diary(), QStringLiteral("0 stopped 1, 0 dropped 2, 50 idle"));
        QVERIFY(std::abs(robot.posture(QStringLiteral("trans.#0"))->getDouble() - 0.595) < 1e-9);
        QVERIFY(robot.controller.output(QStringLiteral("LUMO_DO.#3")).toBool());
        robot.advance(5000);
        QCOMPARE(robot.lines.size(), 3);
    }

    void powerLoss_brakesTooAndTheDriveStaysOff() {
        ControllerFixture robot;
        robot.line(0.7, 0, 0.4, 0.2);
        robot.order("move.opr.enough");
        robot.writeRegister(QStringLiteral("LUMO_DO"), QStringLiteral("bit"), 1, 3);
        robot.advance(500);
        robot.start();
        robot.controller.setPower(false);
        QCOMPARE(m(QStringLiteral("kord.r.power"))->getString(), QStringLiteral("off"));
        QCOMPARE(robot.diary(), QStringLiteral("0 stopped 1, 50 idle"));
        QVERIFY(robot.controller.output(QStringLiteral("LUMO_DO.#3")).toBool());

        robot.start();
        robot.line(0.6, 0, 0.4);
        robot.order("move.opr.enough");
        QCOMPARE(robot.diary(), QStringLiteral("0 queued 2, 1 failed 2, 1 result move.l 2 -4"));
        robot.start();
        robot.controller.setPower(true);
        robot.line(0.65, 0, 0.4);
        robot.order("move.opr.enough");
        QCOMPARE(robot.diary(), QStringLiteral("0 queued 3, 0 moving, 0 started 3, 600 passed 3, 600 idle, "
                                               "600 result move.l 3 0"));
    }

    void reset_startsFromAnEmptyQueue() {
        ControllerFixture robot;
        robot.start();
        robot.line(0.7, 0, 0.4);
        robot.order("move.reset");
        robot.line(0.51, 0, 0.4);
        robot.order("move.opr.enough");
        QCOMPARE(robot.diary(), QStringLiteral("0 queued 1, 0 dropped 1, 0 queued 2, 0 moving, 0 started 2, "
                                               "150 passed 2, 150 idle, 150 result move.l 2 0"));
    }

    void motionError_endsTheMotionUnderWayOrTheNext() {
        ControllerFixture robot;
        robot.line(0.7, 0, 0.4, 0.2);
        robot.order("move.opr.enough");
        robot.advance(500);
        robot.start();
        robot.controller.failMotion(-42);
        QCOMPARE(robot.diary(), QStringLiteral("50 failed 1, 50 idle, 50 result move.l 1 -42"));
        robot.start();
        robot.controller.failMotion(-3);
        robot.joint(0.1);
        robot.order("move.opr.enough");
        QCOMPARE(robot.diary(),
                 QStringLiteral("0 queued 2, 0 moving, 1 failed 2, 1 idle, 1 result move.j 2 -3"));
    }

    // --- Quirks ---

    void quirks_misbehaveAsTheyAreCalled_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("results");
        // Three motions of 150 ms each.
        QTest::newRow("none") << ""
                              << "150 1, 300 2, 450 idle, 450 3";
        QTest::newRow("bunch") << "bunch"
                               << "300 1, 300 2, 450 idle, 450 3";
        QTest::newRow("sync") << "sync"
                              << "0 1, 0 2, 0 3, 450 idle";
        QTest::newRow("late") << "late"
                              << "150 1, 300 2, 450 idle, 450 3";
        QTest::newRow("double") << "double"
                                << "150 1, 151 1, 300 2, 301 2, 450 idle, 450 3, 451 3";
        QTest::newRow("wrong kind") << "wrongKind"
                                    << "150 c1, 300 c2, 450 idle, 450 c3";
        QTest::newRow("slow state") << "slowState"
                                    << "150 1, 300 2, 450 3, 500 idle";
        QTest::newRow("no result") << "noResult"
                                   << "300 2, 450 idle, 450 3";
        QTest::newRow("fails at its end") << "failAtEnd"
                                          << "150 idle, 150 1";
    }
    void quirks_misbehaveAsTheyAreCalled() {
        QFETCH(QString, name);
        QFETCH(QString, results);
        ControllerFixture robot;
        Quirk quirk = Quirk::Bunch;
        QCOMPARE(Controller::quirkFromName(name, &quirk), !name.isEmpty());
        if (!name.isEmpty())
            robot.controller.setQuirk(quirk, true);
        robot.start();
        for (int i = 1; i <= 3; ++i)
            robot.line(0.5 + 0.01 * i, 0, 0.4);
        robot.order("move.opr.enough");
        robot.diary();
        QStringList heard;
        for (const QString& line : qAsConst(robot.lines)) {
            const QStringList words = line.split(QLatin1Char(' '));
            if (words[1] == QLatin1String("result"))
                heard << words[0] + QLatin1Char(' ') +
                             (words[2] == QLatin1String("move.c") ? QStringLiteral("c") : QString()) +
                             words[3];
            else if (words[1] == QLatin1String("idle"))
                heard << line;
        }
        QCOMPARE(heard.join(QLatin1String(", ")), results);
    }

    void lateQuirk_reportsTheStoppedMotionAfterwards() {
        ControllerFixture robot;
        robot.controller.setQuirk(Quirk::Late, true);
        robot.line(0.7, 0, 0.4, 0.2);
        robot.line(0.7, 0.1, 0.4, 0.2);
        robot.order("move.opr.enough");
        robot.advance(500);
        robot.start();
        robot.order("move.stop");
        QCOMPARE(robot.diary(), QStringLiteral("0 stopped 1, 0 dropped 2, 50 idle, 300 result move.l 1 0"));
    }

    void bunchQuirk_forgetsTheHeldResultAtAStop() {
        ControllerFixture robot;
        robot.controller.setQuirk(Quirk::Bunch, true);
        robot.line(0.51, 0, 0.4);
        robot.line(0.7, 0, 0.4);
        robot.order("move.opr.enough");
        robot.advance(400);
        robot.order("move.stop");
        robot.diary();
        QCOMPARE(robot.lines.filter(QStringLiteral("result")), QStringList());
        QVERIFY(robot.controller.standsStill());
    }

    void bunchQuirk_deliversTheHeldResultThoughTheLastWasAnsweredAtOnce() {
        ControllerFixture robot;
        robot.controller.setQuirk(Quirk::Bunch, true);
        robot.start();
        robot.line(0.51, 0, 0.4);
        robot.controller.setQuirk(Quirk::Sync, true);
        robot.line(0.52, 0, 0.4);
        robot.order("move.opr.enough");
        robot.diary();
        QCOMPARE(robot.lines.filter(QStringLiteral("result")).size(), 2);
        QVERIFY(robot.controller.standsStill());
    }

    void standsStill_waitsForBrakingAndResults() {
        ControllerFixture robot;
        robot.line(0.7, 0, 0.4, 0.2);
        QVERIFY(robot.controller.standsStill());
        robot.order("move.opr.enough");
        QVERIFY(!robot.controller.standsStill());
        robot.advance(500);
        robot.order("move.stop");
        QVERIFY(!robot.controller.standsStill());
        robot.advance(50);
        QVERIFY(robot.controller.standsStill());
    }

    void eventLoopInsideAResult_doesNotHoldTheRobotUp() {
        ControllerFixture robot;
        QList<double> places;
        const auto listening =
            connect(kordservice()->commandNode(QStringLiteral("move.l")), &ModuleObject::changed, this, [&] {
                if (places.isEmpty()) {
                    places << 0;
                    robot.advance(5000);
                }
                places << robot.posture(QStringLiteral("trans.#0"))->getDouble();
            });
        robot.line(0.51, 0, 0.4);
        robot.line(0.52, 0, 0.4);
        robot.line(0.53, 0, 0.4);
        robot.order("move.opr.enough");
        robot.diary();
        QCOMPARE(places.last(), 0.53);
        QCOMPARE(places.size(), 4);
        disconnect(listening);
    }
};

VIRTUAL_TIME_MAIN(TestControllerMotion)
#include "test_controllermotion.moc"
