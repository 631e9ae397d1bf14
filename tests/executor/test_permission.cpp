#include "module/globals.h"
#include "support/executorbench.h"

#include <QTest>

using test::sameLog;

/// The welding permission: when the laser may be driven, and what losing it does.
class TestPermission : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;

    static void setSwitch(const char* name, const QVariant& on) {
        m(QStringLiteral("lumo.allWeldBtnstatus.") + QLatin1String(name))->setValue(nullptr, on);
    }

private slots:
    void init() { bench_.reset(); }

    void permission_data() {
        QTest::addColumn<QByteArray>("mode");
        QTest::addColumn<QVariant>("weld");
        QTest::addColumn<QVariant>("handWeld");
        QTest::addColumn<bool>("permitted");
        const QVariant on(true), off(false), unsaid;
        QTest::newRow("auto") << QByteArray("auto") << on << off << true;
        QTest::newRow("auto, nothing said") << QByteArray("auto") << unsaid << unsaid << true;
        QTest::newRow("auto, switched off") << QByteArray("auto") << off << on << false;
        QTest::newRow("manual") << QByteArray("manual") << on << off << false;
        QTest::newRow("manual, nothing said") << QByteArray("manual") << unsaid << unsaid << false;
        QTest::newRow("manual with both switches") << QByteArray("manual") << on << on << true;
        QTest::newRow("manual with the second switch alone") << QByteArray("manual") << off << on << false;
        QTest::newRow("any other mode") << QByteArray("") << on << on << true;
    }

    void permission() {
        QFETCH(QByteArray, mode);
        QFETCH(QVariant, weld);
        QFETCH(QVariant, handWeld);
        QFETCH(bool, permitted);
        test::ScriptedRobot::setMode(mode);
        setSwitch("weldbtn", weld);
        setSwitch("handweldbtn", handWeld);
        bench_.load(R"([{"type":"open"},{"type":"close"}])");
        bool flagInside = false;
        bench_.at(400, [&] { flagInside = bench_.weldFlag(); });
        bench_.run();
        bench_.settle();
        QCOMPARE(bench_.robot.firstTime("GAS 1"), permitted ? qint64(0) : qint64(-1));
        QCOMPARE(bench_.robot.firstTime("PULL 1"), permitted ? qint64(400) : qint64(-1));
        QVERIFY(!bench_.weldFlag());
    }

    void lostMidWeld_theRampEndsAtTheSeamsEnd_data() {
        QTest::addColumn<bool>("comesBack");
        QTest::newRow("for good") << false;
        QTest::newRow("and comes back") << true;
    }

    void lostMidWeld_theRampEndsAtTheSeamsEnd() {
        QFETCH(bool, comesBack);
        bench_.setParam("decrease_time", 2000);
        bench_.load(R"([{"type":"open"},{"type":"moveL"},{"type":"close"},{"type":"moveL"}])");
        bench_.at(600, [] { setSwitch("weldbtn", false); });
        bench_.at(700, [comesBack] { setSwitch("weldbtn", comesBack); });
        bench_.run();
        QCOMPARE(bench_.robot.offSince("LASER"), qint64(900));
        QCOMPARE(bench_.robot.firstTime("move.l 0 0"), qint64(400));
    }

    void lostMidWeld_closesWhileTheRunGoesOn_data() {
        QTest::addColumn<QByteArray>("what");
        QTest::newRow("mode") << QByteArray("mode");
        QTest::newRow("weld switch") << QByteArray("weldbtn");
    }

    void lostMidWeld_closesWhileTheRunGoesOn() {
        QFETCH(QByteArray, what);
        bench_.load(R"([{"type":"open","weldspeed":20},{"type":"moveL","speed":100},
                        {"type":"setDO","DO_type":"IO","doName":"DO1"},{"type":"moveL","speed":100},{"type":"close"}])");
        bench_.at(600, [what] {
            if (what == "mode") {
                test::ScriptedRobot::setMode("manual");
            } else {
                setSwitch(what, false);
            }
        });
        bench_.run();
        QVERIFY(sameLog(
            bench_.robot.logBetween(800, 99999),
            {"800 PULL 0", "800 WIRE 1", "800 WIRE 0", "800 POWER 0", "800 LASER 0", "800 DUTY 0",
             "800 FREQ 0", "900 out DO1 1", "900 move.l 0.1 0", "900 move.opr.enough", "1200 GAS 0"}));
        QCOMPARE(bench_.robot.firstTime("PULL 1"), qint64(600));
        QCOMPARE(bench_.robot.nowMs(), qint64(1400));
        QVERIFY(!bench_.weldFlag());
    }

    void regained_data() {
        QTest::addColumn<QByteArray>("behind");
        QTest::addColumn<QStringList>("opened");
        QTest::addColumn<QStringList>("closed");
        QTest::newRow("the close is refused, the next opening welds")
            << QByteArray(
                   R"({"type":"close"},{"type":"open"},{"type":"delay","delaytime":100},{"type":"close"})")
            << QStringList{"0 GAS 1", "1400 GAS 1"} << QStringList{"600 PULL 1", "1900 PULL 1"};
        QTest::newRow("an opening before that close takes it for itself")
            << QByteArray(R"({"type":"open"},{"type":"delay","delaytime":100},{"type":"close"},)"
                          R"({"type":"delay","delaytime":100})")
            << QStringList{"0 GAS 1", "1400 GAS 1"} << QStringList{"600 PULL 1", "1900 PULL 1"};
        QTest::newRow("only one close is refused")
            << QByteArray(R"({"type":"close"},{"type":"close"})") << QStringList{"0 GAS 1"}
            << QStringList{"600 PULL 1", "1400 PULL 1"};
    }

    void regained() {
        QFETCH(QByteArray, behind);
        bench_.load(R"([{"type":"open"},{"type":"delay","delaytime":1000},)" + behind + "]");
        bench_.at(600, [] { test::ScriptedRobot::setMode("manual"); });
        bench_.at(700, [] { test::ScriptedRobot::setMode("auto"); });
        bench_.run();
        QTEST(bench_.robot.log().filter("GAS 1"), "opened");
        QTEST(bench_.robot.log().filter("PULL 1"), "closed");
    }

    void lostInTheOpening_theRunGoesOnDark_data() {
        QTest::addColumn<int>("atMs");
        QTest::addColumn<int>("moveAt");
        QTest::addColumn<bool>("laserCameOn");
        QTest::newRow("gas pre-flow") << 100 << 100 << false;
        QTest::newRow("dwell, which keeps its length") << 300 << 400 << true;
    }

    void lostInTheOpening_theRunGoesOnDark() {
        QFETCH(int, atMs);
        QFETCH(int, moveAt);
        QFETCH(bool, laserCameOn);
        bench_.load(R"([{"type":"open","weldspeed":20},{"type":"moveL","speed":100},{"type":"close"}])");
        bench_.at(atMs, [] { test::ScriptedRobot::setMode("manual"); });
        bench_.run();
        bench_.settle();
        QCOMPARE(bench_.robot.firstTime("move.l 0.1 0"), qint64(moveAt));
        QCOMPARE(!bench_.robot.logBetween(200, 201).filter("LASER 1").isEmpty(), laserCameOn);
        QCOMPARE(bench_.robot.firstTime("LASER 0"), qint64(atMs + 200));
        QCOMPARE(bench_.robot.firstTime("GAS 0"), qint64(atMs + 600));
        QVERIFY(!bench_.weldFlag());
    }

    void lostWhileTheOpeningSettles_nothingIsOpened() {
        bench_.setParam("move_wire_time", 900);
        bench_.load(R"([{"type":"open"},{"type":"close"},{"type":"open"},{"type":"close"}])");
        QObject scope;
        connect(kordservice(), &KordService::issued, &scope, [this](const KordCall&) {
            if (!bench_.robot.log().isEmpty() && bench_.robot.log().last() == QLatin1String("1000 PULL 0")) {
                setSwitch("weldbtn", false);
            }
        });
        bench_.run();
        QCOMPARE(bench_.robot.log().filter("GAS 1"), QStringList{"0 GAS 1"});
        QCOMPARE(bench_.robot.output("LASER"), 0.0);
    }

    void aParamWhileThatClosingRuns_doesNotRaiseThePower() {
        bench_.setParam("power", 90, 1);
        bench_.load(
            R"([{"type":"open"},{"type":"delay","delaytime":250},{"type":"param","index":1},{"type":"delay","delaytime":400}])");
        bench_.at(600, [] { test::ScriptedRobot::setMode("manual"); });
        bench_.run();
        QVERIFY(bench_.robot.logBetween(600, 9999).filter("[POWER").isEmpty());
        QCOMPARE(bench_.robot.output("POWER"), 0.0);
    }
};

LUMO_TEST_MAIN(TestPermission)
#include "test_permission.moc"
