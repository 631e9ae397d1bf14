#include "module/globals.h"
#include "support/executorbench.h"

#include <QRegularExpression>
#include <QTest>
#include <QTimer>

using test::sameLog;

/// What the equipment gets, as (ms, port, value), for whole programs and their interruptions.
class TestLaser : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;

    static QByteArray weld(const QByteArray& inside) {
        return R"([{"type":"open"},)" + inside + R"(,{"type":"close"}])";
    }

    QStringList equipment() const {
        QStringList lines = bench_.robot.log();
        lines.erase(
            std::remove_if(lines.begin(), lines.end(),
                           [](const QString& line) { return line.contains(QLatin1String(" move.")); }),
            lines.end());
        return lines;
    }

    /// Pauses a weld a second after its start, and returns when the pause's ramp has begun.
    void pauseInAWeld(double rampMs) {
        bench_.setParam("decrease_time", rampMs);
        bench_.load(weld(R"({"type":"delay","delaytime":5000})"));
        bench_.at(1000, [] { test::ExecutorBench::pause(); });
        bench_.run();
    }

private slots:
    void init() { bench_.reset(); }

    void aWholeWeld() {
        bench_.setParam("increase_time", 50);
        bench_.setParam("decrease_time", 50);
        bench_.load(weld(R"({"type":"delay","delaytime":300})"));
        bench_.at(500, [] { QCOMPARE(executor->pendingSteps(), 1); });  // the pulses
        bench_.run();
        QVERIFY(
            sameLog(equipment(),
                    {"0 SPEED 8192", "0 GAS 1", "200 [POWER 0, LASER 1, DUTY 9830, FREQ 13107]",
                     "220 POWER 6553", "240 POWER 13107", "250 POWER 16384", "250 WIRE 1",
                     // dwell until 400, delay until 700
                     "700 PULL 1", "720 POWER 9830", "740 POWER 3277", "750 POWER 0", "750 LASER 0",
                     "750 DUTY 0", "750 FREQ 0", "900 PULL 0", "900 WIRE 1", "900 WIRE 0", "1150 GAS 0"}));
        QCOMPARE(bench_.robot.nowMs(), qint64(1150));
        QVERIFY(!bench_.weldFlag());
    }

    void theRampOfTheDefaults() {
        bench_.load(weld(R"({"type":"delay"})"));
        bench_.run();
        const QStringList ramp{"220 POWER 1638",  "240 POWER 3277",  "260 POWER 4915",  "280 POWER 6553",
                               "300 POWER 8192",  "320 POWER 9830",  "340 POWER 11468", "360 POWER 13107",
                               "380 POWER 14745", "400 POWER 16384", "400 WIRE 1"};
        QVERIFY(sameLog(bench_.robot.logBetween(201, 401).mid(0, 11), ramp));
    }

    void withoutBatches_theGroupGoesOneByOne() {
        kordservice()->offerCommand(QStringLiteral("register.write_multi"), false);
        bench_.load(weld(R"({"type":"delay"})"));
        bench_.run();
        QVERIFY(sameLog(bench_.robot.logBetween(200, 201),
                        {"200 POWER 0", "200 LASER 1", "200 DUTY 9830", "200 FREQ 13107"}));
    }

    void anEmptyBatch_isNotSent() {
        for (int port = 0; port < 19; ++port) {
            bench_.enablePort(port, port == 0);
        }
        bench_.load(weld(R"({"type":"delay"})"));
        bench_.run();
        QCOMPARE(equipment(), QStringList());
        QCOMPARE(bench_.robot.nowMs(), qint64(1000));
    }

    void stepPeriodsThatAreNoPeriods_countAs20_data() {
        QTest::addColumn<QVariant>("dt");
        QTest::newRow("zero") << QVariant(0);
        QTest::newRow("negative") << QVariant(-3);
        QTest::newRow("text") << QVariant("x");
    }

    void stepPeriodsThatAreNoPeriods_countAs20() {
        QFETCH(QVariant, dt);
        m("lumo.execute.dt")->setValue(this, dt);
        bench_.setParam("increase_time", 50);
        bench_.load(weld(R"({"type":"delay"})"));
        bench_.run();
        QCOMPARE(bench_.robot.firstTime("POWER 13107"), qint64(240));
    }

    void pulsing() {
        bench_.setParam("increase_time", 0);
        bench_.setParam("open_time", 100);
        bench_.setParam("open_interval", 40);
        bench_.setParam("stay_time", 0);
        bench_.load(weld(R"({"type":"delay","delaytime":300})"));
        bench_.run();
        QVERIFY(sameLog(bench_.robot.logBetween(201, 500),
                        {"300 LASER 0", "300 WIRE 0", "340 LASER 1", "340 WIRE 1", "440 LASER 0",
                         "440 WIRE 0", "480 LASER 1", "480 WIRE 1"}));
    }

    void aRampStepAndAPulseAtOneTime_keepTheirOrder() {
        // Scheduled before the pulse timer was started, so before it at the same moment.
        bench_.setParam("open_interval", 50);
        bench_.load(weld(R"({"type":"delay","delaytime":300})"));
        bench_.run();
        QVERIFY(sameLog(bench_.robot.logBetween(400, 401),
                        {"400 POWER 16384", "400 WIRE 1", "400 LASER 0", "400 WIRE 0"}));
    }

    void pulseTimesOfZeroAndOne_areOneMillisecond_data() {
        QTest::addColumn<int>("on");
        QTest::addColumn<int>("off");
        QTest::addColumn<QStringList>("laser");
        QTest::newRow("on for nothing")
            << 0 << 3 << QStringList{"201 LASER 0", "204 LASER 1", "205 LASER 0", "208 LASER 1"};
        QTest::newRow("off for one") << 3 << 1
                                     << QStringList{"203 LASER 0", "204 LASER 1", "207 LASER 0",
                                                    "208 LASER 1"};
    }

    void pulseTimesOfZeroAndOne_areOneMillisecond() {
        QFETCH(int, on);
        QFETCH(int, off);
        bench_.setParam("open_time", on);
        bench_.setParam("open_interval", off);
        bench_.setParam("increase_time", 0);
        bench_.setParam("stay_time", 0);
        bench_.load(weld(R"({"type":"delay","delaytime":9})"));
        bench_.run();
        QTEST(bench_.robot.logBetween(201, 209).filter("LASER"), "laser");
    }

    void aParamInsideTheRamp_replacesThePower() {
        bench_.setParam("stay_time", 0);
        bench_.setParam("power", 80, 1);
        bench_.setParam("speed", 10, 1);
        bench_.load(weld(
            R"({"type":"delay","delaytime":30},{"type":"param","index":1},{"type":"delay","delaytime":300})"));
        bench_.run();
        QVERIFY(sameLog(
            bench_.robot.logBetween(201, 500),
            {"220 POWER 1638", "230 [POWER 26214, DUTY 9830, FREQ 13107]", "230 SPEED 3277", "400 WIRE 1"}));
    }

    void aParamBetweenTwoPulses_comesWithTheNext() {
        bench_.setParam("open_time", 100);
        bench_.setParam("open_interval", 100);
        bench_.setParam("power", 20, 1);
        bench_.setParam("stay_time", 0);
        bench_.load(weld(
            R"({"type":"delay","delaytime":150},{"type":"param","index":1},{"type":"delay","delaytime":200})"));
        bench_.run();
        // Enabled at 200, the first gap begins at 300; the ramp has not ended.
        QVERIFY(sameLog(bench_.robot.logBetween(340, 405),
                        {"340 POWER 11468", "350 SPEED 8192", "400 WIRE 1",
                         "400 [POWER 6553, DUTY 9830, FREQ 13107]", "400 LASER 1", "400 WIRE 1"}));
        QCOMPARE(bench_.robot.logBetween(405, 550).filter("POWER"), QStringList());
    }

    void aParamInTheDark_changesOnlyTheWireSpeed() {
        bench_.load(R"([{"type":"param","index":0}])");
        bench_.run();
        QCOMPARE(equipment(), QStringList{"0 SPEED 8192"});
        QCOMPARE(m("lumo.cur_param")->getInt(), 0);
    }

    void aSetThatDoesNotExist_isAllZeros() {
        bench_.load(R"([{"type":"open","index":7},{"type":"close"}])");
        bench_.run();
        QVERIFY(sameLog(equipment(), {"0 SPEED 0", "0 GAS 1", "0 [POWER 0, LASER 1, DUTY 0, FREQ 0]",
                                      "0 POWER 0", "0 WIRE 1", "0 PULL 1", "0 PULL 0", "0 WIRE 1", "0 WIRE 0",
                                      "0 POWER 0", "0 LASER 0", "0 DUTY 0", "0 FREQ 0", "0 GAS 0"}));
    }

    void aPauseInsideAWait_countsEverythingFromThePause() {
        bench_.load(weld(R"({"type":"delay","delaytime":5000})"));
        bench_.at(1000, [] { test::ExecutorBench::pause(); });
        bench_.run();
        QCOMPARE(bench_.robot.nowMs(), qint64(1000));
        bench_.settle();
        const QStringList log = bench_.robot.logBetween(1000, 9999);
        QCOMPARE(log.first(), QString("1000 PULL 1"));
        QVERIFY(
            sameLog(log.mid(log.size() - 8), {"1200 PULL 0", "1200 WIRE 1", "1200 WIRE 0", "1200 POWER 0",
                                              "1200 LASER 0", "1200 DUTY 0", "1200 FREQ 0", "1200 GAS 0"}));
        QVERIFY(bench_.weldFlag());
        QCOMPARE(bench_.resumeLine(), 1);
    }

    void resuming_opensTheLaserAgain() {
        bench_.load(weld(R"({"type":"moveL"})"));
        bench_.at(500, [] { test::ExecutorBench::pause(); });
        bench_.run();
        bench_.settle();
        bench_.run(bench_.resumeLine());
        QVERIFY(sameLog(
            bench_.robot.logBetween(0, 201).mid(0, 4),
            {"0 move.reset", "0 SPEED 8192", "0 GAS 1", "200 [POWER 0, LASER 1, DUTY 9830, FREQ 13107]"}));
        QCOMPARE(bench_.robot.firstTime("move.l 0 0"), qint64(400));
        QVERIFY(!bench_.weldFlag());
    }

    void resumingInAnotherProgram_staysDark_data() {
        QTest::addColumn<int>("mode");
        QTest::addColumn<bool>("replaced");
        QTest::newRow("replaced meanwhile") << 0 << true;
        QTest::newRow("a station's program") << 1 << false;
    }

    void resumingInAnotherProgram_staysDark() {
        QFETCH(int, mode);
        QFETCH(bool, replaced);
        const QByteArray program = weld(R"({"type":"moveL"})");
        bench_.load(program);
        m("lumo")->append(this, "signalbind_program")->copyFrom(this, m("lumo.program"));
        bench_.at(500, [] { test::ExecutorBench::pause(); });
        bench_.run();
        bench_.settle();
        if (replaced) {
            bench_.load(program);
        }
        bench_.run(1, mode);
        QCOMPARE(bench_.robot.firstTime("GAS 1"), qint64(-1));
        QVERIFY(!bench_.weldFlag());
    }

    void afterAPause_theGasOutlastsTheRamp() {
        bench_.setParam("delay_after_blow", 100);
        pauseInAWeld(600);
        bench_.settle();
        QCOMPARE(bench_.robot.offSince("LASER"), qint64(1600));
        QCOMPARE(bench_.robot.log().last(), QString("1600 GAS 0"));
    }

    /// Who hears of the switch-offs that an opening settles may take the permission back.
    void anOpeningThatIsNotPermittedAnyMore_leavesNoGasOn() {
        pauseInAWeld(2000);
        bench_.time.advance(50);
        QObject scope;
        connect(kordservice(), &KordService::issued, &scope, [this] {
            if (bench_.robot.firstTime("LASER 0") >= 0) {
                test::ScriptedRobot::setMode("manual");
            }
        });
        bench_.at(4000, [] { test::ExecutorBench::pause(); });
        bench_.run(1);
        bench_.settle();
        QCOMPARE(bench_.robot.firstTime("GAS 1"), qint64(-1));
        QVERIFY(bench_.robot.output("GAS") == 0.0);
    }

    void aSecondPause_switchesOffAtOnce() {
        pauseInAWeld(2000);
        bench_.time.advance(500);
        test::ExecutorBench::pause();
        QVERIFY(
            sameLog(bench_.robot.logBetween(1500, 1501), {"1500 POWER 12288", "1500 POWER 0", "1500 LASER 0",
                                                          "1500 DUTY 0", "1500 FREQ 0", "1500 PULL 1"}));
    }

    void aDarkStartInsideARamp_switchesTheLaserOffFirst_data() {
        QTest::addColumn<bool>("once");
        QTest::newRow("start") << false;
        QTest::newRow("single step") << true;
    }

    /// The weld is not opened again after a reset; its ramp must not go along with the robot.
    void aDarkStartInsideARamp_switchesTheLaserOffFirst() {
        QFETCH(bool, once);
        bench_.setParam("decrease_time", 2000);
        bench_.load(
            R"([{"type":"open"},{"type":"delay","delaytime":5000},{"type":"close"},{"type":"moveL"}])");
        bench_.at(1000, [] { test::ExecutorBench::pause(); });
        bench_.run();
        bench_.time.advance(50);
        m("lumo.current.openmiddlecolse")->setValue(this, false);
        if (once) {
            bench_.once(3);
        } else {
            bench_.run(3);
        }
        QCOMPARE(bench_.robot.offSince("LASER"), qint64(0));
        QVERIFY(bench_.robot.log().indexOf("0 LASER 0") < bench_.robot.log().indexOf("0 move.l 0 0"));
        bench_.settle();
        QCOMPARE(bench_.robot.offSince("GAS"), qint64(2000 - 50));  // as the pause wanted it
    }

    void aPauseWhileTheNextRunSettles_switchesOffAtOnceToo() {
        pauseInAWeld(2000);
        bench_.time.advance(50);
        QObject scope;
        bool paused = false;
        connect(kordservice(), &KordService::issued, &scope, [&paused](const KordCall& call) {
            if (call.name == QLatin1String("register.write") && !std::exchange(paused, true)) {
                test::ExecutorBench::pause();
            }
        });
        test::ExecutorBench::trigger("start", 1);
        QCOMPARE(bench_.robot.offSince("LASER"), qint64(1050));
    }

    void aPauseByWhoeverHearsThatNothingIsPending_findsTheLaserOff_data() {
        QTest::addColumn<bool>("powerLost");
        QTest::newRow("second pause") << false;
        QTest::newRow("power lost") << true;
    }
    void aPauseByWhoeverHearsThatNothingIsPending_findsTheLaserOff() {
        QFETCH(bool, powerLost);
        pauseInAWeld(2000);
        bench_.time.advance(50);
        QObject scope;
        bool paused = false;
        connect(executor, &LumoExecutor::activityChanged, &scope, [&paused] {
            if (executor->pendingSteps() == 0 && !std::exchange(paused, true)) {
                test::ExecutorBench::pause();
            }
        });
        if (powerLost) {
            bench_.robot.setPower("off");
        } else {
            test::ExecutorBench::pause();
        }
        QVERIFY(paused);
        QCOMPARE(bench_.robot.offSince("LASER"), qint64(1050));
    }

    void aClosingDuringTheRampUp_neverRaisesThePower() {
        bench_.setParam("increase_time", 1000);
        bench_.setParam("stay_time", 0);
        bench_.load(weld(R"({"type":"delay","delaytime":100})"));
        bench_.run();
        int last = 100000;
        for (const QString& line : bench_.robot.logBetween(300, 1000).filter(" POWER ")) {
            const int power = line.section(QLatin1Char(' '), 2).toInt();
            QVERIFY2(power <= last && power <= 1638, qPrintable(line));
            last = power;
        }
        QCOMPARE(last, 0);
    }

    void aWeldLeftOpenAtTheEnd_isClosed() {
        bench_.load(R"([{"type":"open"},{"type":"delay","delaytime":100}])");
        bench_.run();
        QCOMPARE(bench_.robot.firstTime("PULL 1"), qint64(500));
        QCOMPARE(bench_.robot.output("LASER"), 0.0);
        QCOMPARE(bench_.robot.output("GAS"), 0.0);
        QVERIFY(!bench_.weldFlag());
    }

    void aWeldWhoseFlagSomebodyCleared_isClosedAtTheEnd() {
        bench_.load(R"([{"type":"open"},{"type":"delay","delaytime":100}])");
        bench_.at(450, [this] { m("lumo.current.openmiddlecolse")->setValue(this, false); });
        bench_.run();
        QCOMPARE(bench_.robot.offSince("LASER"), qint64(700));
        QCOMPARE(executor->pendingSteps(), 0);
    }

    void powerLoss_shutsDownInOneGo() {
        bench_.load(weld(R"({"type":"moveL"})"));
        bench_.at(310, [] { test::ScriptedRobot::setPower("off"); });
        bench_.run();
        QVERIFY(sameLog(bench_.robot.logBetween(310, 99999),
                        {"310 move.stop", "310 PULL 0", "310 WIRE 0", "310 POWER 0", "310 LASER 0",
                         "310 DUTY 0", "310 FREQ 0", "310 GAS 0"}));
        bench_.settle();
        QCOMPARE(executor->pendingSteps(), 0);
    }

    void aPauseInsideAnEmergencyStop_doesNotDelayIt_data() {
        QTest::addColumn<bool>("paused");
        QTest::newRow("of a run") << false;
        QTest::newRow("of the closing of a pause") << true;
    }

    void aPauseInsideAnEmergencyStop_doesNotDelayIt() {
        QFETCH(bool, paused);
        bench_.load(weld(R"({"type":"moveL"})"));
        if (paused) {
            bench_.at(650, [] { test::ExecutorBench::pause(); });
        }
        QObject scope;
        bool again = false;
        connect(executor, &LumoExecutor::activityChanged, &scope, [&again] {
            if (m("kord.r.power")->getString() == "off" && !std::exchange(again, true)) {
                test::ExecutorBench::pause();
            }
        });
        QString stateAfter;
        bench_.at(710, [&] {
            test::ScriptedRobot::setPower("off");
            stateAfter = bench_.state();
        });
        bench_.run();
        bench_.settle();
        QCOMPARE(stateAfter, QString("idle"));
        QCOMPARE(bench_.robot.offSince("LASER"), qint64(710));
        QCOMPARE(bench_.robot.logBetween(710, 99999).filter("PULL 1"), QStringList());
    }

    void aQuitInTheTurnInWhichAWaitEnds_shutsDown_data() {
        QTest::addColumn<int>("ms");
        QTest::addColumn<bool>("before");
        QTest::addColumn<QByteArray>("inside");
        const QByteArray delay(R"({"type":"delay","delaytime":300})");
        for (const bool before : {true, false}) {
            QTest::addRow("pre-flow, %d", before) << 200 << before << delay;
            QTest::addRow("dwell, %d", before) << 450 << before << delay;
            QTest::addRow("delay, %d", before) << 750 << before << delay;
        }
        QTest::newRow("input") << 750 << true
                               << QByteArray(
                                      R"({"type":"waitDI","DI_type":"IO","diName":"DI1","value1":"true"})");
        QTest::newRow("move") << 750 << true << QByteArray(R"({"type":"moveL"},{"type":"moveL"})");
        QTest::newRow("zone") << 750 << true << QByteArray(R"({"type":"moveL"})");
    }

    /// The wait's own time comes right behind the request or before it; no loop has returned yet.
    void aQuitInTheTurnInWhichAWaitEnds_shutsDown() {
        QFETCH(int, ms);
        bench_.setParam("stay_time", 250);  // the ramp is over before
        QFETCH(QByteArray, inside);
        bench_.load(weld(inside));
        QFETCH(bool, before);
        const auto quit = [] { QCoreApplication::quit(); };
        // Of what is due together, that comes first which was armed first.
        bench_.at(before ? ms : ms - 1,
                  [before, quit] { before ? quit() : QTimer::singleShot(1, Qt::PreciseTimer, qApp, quit); });
        QTimer::singleShot(0, qApp, [this] { bench_.run(); });
        QCoreApplication::exec();
        const QString at = QString::number(ms);
        QStringList off{" PULL 0", " WIRE 0", " POWER 0", " LASER 0", " DUTY 0", " FREQ 0", " GAS 0"};
        off.replaceInStrings(QRegularExpression("^"), at);
        QVERIFY(sameLog(equipment().filter(QRegularExpression("^" + at + " ")), off));
        QCOMPARE(bench_.robot.nowMs(), qint64(ms));
        QCOMPARE(bench_.state(), "idle");
        bench_.time.advance(1);  // starts are taken again by who goes on
    }

    void powerLossAfterAPause_shutsDownToo() {
        bench_.setParam("decrease_time", 1000);
        bench_.load(weld(R"({"type":"moveL"})"));
        bench_.at(600, [] { test::ExecutorBench::pause(); });
        bench_.run();
        bench_.time.advance(300);
        test::ScriptedRobot::setPower("off");
        QVERIFY(sameLog(bench_.robot.logBetween(900, 99999).mid(1),
                        {"900 PULL 0", "900 WIRE 0", "900 POWER 0", "900 LASER 0", "900 DUTY 0", "900 FREQ 0",
                         "900 GAS 0"}));
        bench_.time.advance(1);
        test::ScriptedRobot::setPower("error");  // nothing is pending any more
        bench_.time.advance(2000);
        QVERIFY(bench_.robot.logBetween(901, 99999).isEmpty());
    }

    void powerLossInAnIdlePausesClosing_endsIt_data() {
        QTest::addColumn<int>("ms");
        QTest::newRow("ramp") << 100;
        QTest::newRow("close delay, with nothing pending") << 300;
        QTest::newRow("gas post-flow") << 450;
    }

    void powerLossInAnIdlePausesClosing_endsIt() {
        QFETCH(int, ms);
        bench_.load(R"([{"type":"delay"}])");
        bench_.run();
        m("lumo.cur_param")->setValue(this, 0);
        bench_.robot.mark();
        QString detail;
        QTimer::singleShot(ms, this, [&detail] {
            detail = executor->waiting().value("detail").toString();
            test::ScriptedRobot::setPower("off");
        });
        test::ExecutorBench::pause();
        QCOMPARE(detail, QString("-1"));  // no line is executed any more
        QCOMPARE(bench_.robot.nowMs(), qint64(ms));
        QCOMPARE(bench_.robot.log().last(), QStringLiteral("%1 GAS 0").arg(ms));
        QCOMPARE(executor->depth(), 0);
    }

    void powerLossWithNothingUnderWay_writesNothing_data() {
        QTest::addColumn<bool>("paused");
        QTest::newRow("after a run") << false;
        QTest::newRow("after the closing of a pause") << true;
    }

    void powerLossWithNothingUnderWay_writesNothing() {
        QFETCH(bool, paused);
        bench_.load(weld(R"({"type":"delay","delaytime":100})"));
        if (paused) {
            bench_.at(450, [] { test::ExecutorBench::pause(); });
        }
        bench_.run();
        bench_.settle();
        bench_.robot.mark();
        test::ScriptedRobot::setPower("off");
        test::ScriptedRobot::setMode("manual");
        bench_.time.advance(2000);
        QCOMPARE(bench_.robot.log(), QStringList());
    }

    void permissionLostWithOrAfterThePower_closesNothing_data() {
        QTest::addColumn<QString>("call");
        QTest::newRow("as the robot is stopped") << "move.stop";
        QTest::newRow("as the equipment is switched off") << "register.write";
        QTest::newRow("afterwards") << QString();
    }

    void permissionLostWithOrAfterThePower_closesNothing() {
        QFETCH(QString, call);
        bench_.load(weld(R"({"type":"moveL"})"));
        QObject scope;
        connect(kordservice(), &KordService::issued, &scope, [this, call](const KordCall& issued) {
            if (bench_.robot.nowMs() == 610 && issued.name == call) {
                test::ScriptedRobot::setMode("manual");
            }
        });
        bench_.at(610, [] { test::ScriptedRobot::setPower("off"); });
        bench_.run();
        bench_.time.advance(10);
        test::ScriptedRobot::setMode("manual");
        bench_.time.advance(2000);
        QCOMPARE(bench_.robot.firstTime("PULL 1"), qint64(-1));
        QCOMPARE(bench_.robot.log().last(), QString("610 GAS 0"));
    }

    void pendingSteps_areToldWheneverTheyChange() {
        bench_.load(
            R"([{"type":"open"},{"type":"delay","delaytime":5000},{"type":"close"},{"type":"moveL"}])");
        bench_.at(1000, [] { test::ExecutorBench::pause(); });
        QObject scope;
        int told = -1;
        connect(executor, &LumoExecutor::activityChanged, &scope,
                [&told] { told = executor->pendingSteps(); });
        QVector<int> stale;
        const auto compare = [&] {
            if (told != executor->pendingSteps()) {
                stale << told << executor->pendingSteps();
            }
        };
        connect(kordservice(), &KordService::issued, &scope, [&compare](const KordCall& call) {
            if (call.name == QLatin1String("move.l")) {
                compare();
            }
        });
        QTimer looks;
        connect(&looks, &QTimer::timeout, &scope, compare);
        looks.start(7);
        bench_.run();
        bench_.time.advance(50);
        m("lumo.current.openmiddlecolse")->setValue(this, false);
        bench_.run(3);  // settles the closing of the pause but its gas
        bench_.run(0);
        QCOMPARE(stale, QVector<int>());
    }

    void anIdlePause_runsItsClosing() {
        m("lumo.cur_param")->setValue(this, 0);
        bench_.robot.mark();
        test::ExecutorBench::pause();
        QCOMPARE(bench_.robot.nowMs(), qint64(600));
        QCOMPARE(bench_.robot.firstTime("PULL 1"), qint64(0));
        QCOMPARE(bench_.robot.firstTime("GAS 0"), qint64(600));
        QCOMPARE(bench_.robot.firstTime("move.stop"), qint64(-1));
    }

    void aNewOpening_settlesTheWireStepsOfTheClosingBefore() {
        bench_.setParam("move_wire_time", 3000);
        bench_.setParam("stop_wire_time", 3500);
        bench_.setParam("give_wire_time", 4000);
        bench_.load(R"([{"type":"open"},{"type":"close"},{"type":"open"},{"type":"close"}])");
        bench_.run();
        // The first closing begins at 400 and takes 600 ms.
        QVERIFY(sameLog(bench_.robot.logBetween(1000, 1001),
                        {"1000 GAS 0", "1000 PULL 0", "1000 WIRE 0", "1000 SPEED 8192", "1000 GAS 1"}));
    }
};

LUMO_TEST_MAIN(TestLaser)
#include "test_laser.moc"
