#include "mendo/log.h"
#include "module/globals.h"
#include "support/executorbench.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using test::sameLog;

/// Motion results: counted, in order, early, late, doubled, failed; and a run that somebody stops.
class TestResults : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;

    /// Times at which the walk wrote the lines it executes.
    QVector<qint64> lineTimes_;

    static void stop(const QByteArray& event) {
        if (event == "pause") {
            test::ExecutorBench::pause();
        } else if (event == "power") {
            test::ScriptedRobot::setPower("off");
        } else if (event == "permission") {
            test::ScriptedRobot::setMode("manual");
        }
    }

    /// A weld that is stopped at the n-th announcement; false when there are fewer.
    bool stopAt(int n, const QByteArray& event) {
        bench_.reset();
        bench_.setParam("open_interval", 50);
        bench_.setParam("stay_time", 50);
        bench_.load(
            R"([{"type":"moveL"},{"type":"open"},{"type":"delay","delaytime":300},{"type":"param","index":0},
                        {"type":"delay","delaytime":100},{"type":"close"},{"type":"moveL"}])");
        QObject scope;
        int heard = 0;
        int logged = 0;
        const auto hear = [&] {
            if (++heard == n) {
                logged = bench_.robot.log().size();
                stop(event);
            }
        };
        connect(kordservice(), &KordService::issued, &scope, hear);
        connect(executor, &LumoExecutor::activityChanged, &scope, hear);
        connect(m("lumo.cur_param"), &ModuleObject::changed, &scope, hear);
        bench_.run();
        const QStringList afterwards = bench_.robot.log().mid(logged);
        bench_.settle();
        if (heard < n) {
            return false;
        }
        checkStopped(event, bench_.robot.log().mid(logged), afterwards);
        return true;
    }

    void checkStopped(const QByteArray& event, const QStringList& log, const QStringList& inRun) {
        const QString on = event == "power" ? "(LASER|GAS|WIRE|PULL|POWER|DUTY|FREQ) [1-9]" : "(LASER|GAS) 1";
        QCOMPARE(log.filter(QRegularExpression(on)), QStringList());
        for (const char* off : {"LASER", "GAS", "WIRE", "PULL", "POWER", "DUTY", "FREQ"}) {
            QVERIFY2(bench_.robot.output(off) == 0.0, off);
        }
        QCOMPARE(executor->pendingSteps(), 0);
        QCOMPARE(executor->depth(), 0);
        QCOMPARE(bench_.state(), QString("idle"));
        QCOMPARE(bench_.boxes(), QStringList());
        if (event == "permission") {
            QCOMPARE(bench_.resumeLine(), 6);
        } else {
            QCOMPARE(inRun.filter("move.l"), QStringList());
        }
    }

private slots:
    void initTestCase() {
        connect(m("lumo.current.line"), &ModuleObject::changed, this,
                [this](const QVariant&, const QVariant&, QObject* sender) {
                    if (sender == executor) {
                        lineTimes_ << bench_.robot.nowMs();
                    }
                });
    }

    void init() {
        bench_.reset();
        lineTimes_.clear();
    }

    void eachResultSettlesTheOldestMove_data() {
        QTest::addColumn<bool>("inside");
        QTest::addColumn<bool>("bunched");
        QTest::addColumn<QVector<qint64>>("times");
        QTest::newRow("one by one") << false << false << QVector<qint64>{0, 500, 1000, 1500};
        QTest::newRow("inside the command") << true << false << QVector<qint64>{0, 0, 0, 0};
        QTest::newRow("two in one pass") << false << true << QVector<qint64>{0, 500, 1000, 1000};
    }

    void eachResultSettlesTheOldestMove() {
        QFETCH(bool, inside);
        QFETCH(bool, bunched);
        bench_.robot.answersInside = inside;
        bench_.robot.bunched = bunched;
        bench_.load(R"([{"type":"moveL"},{"type":"moveL"},{"type":"moveL"},{"type":"delay"}])");
        bench_.run();
        QTEST(lineTimes_, "times");
    }

    void aResultWithNothingOutstanding_endsNothing() {
        QSignalSpy log(mendo::LogHub::instance(), &mendo::LogHub::line);
        bench_.load(R"([{"type":"delay","delaytime":300}])");
        bench_.at(100, [] { test::ScriptedRobot::answer("move.l", -7); });
        bench_.run();
        QCOMPARE(bench_.robot.nowMs(), qint64(300));
        QCOMPARE(log.at(0).at(1).toString(), QString("LumoExecutor::handleMove move l -7"));
        QCOMPARE(bench_.boxes(), QStringList());
    }

    void theResultAfterTheZone_isDroppedOnce() {
        QSignalSpy log(mendo::LogHub::instance(), &mendo::LogHub::line);
        bench_.robot.zoneLeadMs = 120;
        bench_.load(R"([{"type":"moveL","zone":2,"point":{"trans":[1,0,0]}},{"type":"close"},
                        {"type":"moveL","point":{"trans":[2,0,0]}},{"type":"delay"}])");
        m("lumo.cur_param")->setValue(this, 0);
        bench_.run();
        // The closing begins at 400 and takes three times 200 ms, the second move 500 ms more.
        QCOMPARE(lineTimes_, QVector<qint64>({0, 400, 1000, 1500}));
        QStringList texts;
        for (const auto& line : log) {
            texts << line.at(1).toString();
        }
        QCOMPARE(texts.count("ignore move result!"), 1);
        QVERIFY(texts.contains("enter zone! moveL:  [1,0,0]"));
    }

    void aPauseInTheMomentTheZoneIsEntered_isAPause_data() {
        QTest::addColumn<int>("armedAt");
        // The poll that finds the tool in the zone is armed at 350.
        QTest::newRow("the poll first") << 360;
        QTest::newRow("the pause first") << 340;
    }

    void aPauseInTheMomentTheZoneIsEntered_isAPause() {
        QFETCH(int, armedAt);
        bench_.robot.zoneLeadMs = 120;
        bench_.load(R"([{"type":"moveL","zone":2,"point":{"trans":[1,0,0]}},{"type":"close"}])");
        // Due together with the poll that ends the wait: the walk has not gone on yet.
        bench_.at(armedAt, [armedAt] {
            QTimer::singleShot(400 - armedAt, executor, [] { test::ExecutorBench::pause(); });
        });
        bench_.run();
        QCOMPARE(bench_.resumeLine(), 0);
        QCOMPARE(bench_.state(), QString("idle"));
    }

    void anErrorAfterTheZone_isTold_data() {
        QTest::addColumn<QByteArray>("behind");
        QTest::addColumn<QByteArray>("mode");
        QTest::addColumn<qint64>("ends");
        QTest::addColumn<int>("line");
        QTest::newRow("in the closing")
            << QByteArray(R"(,{"type":"open"},{"type":"moveL"})") << QByteArray("auto") << qint64(500) << 1;
        QTest::newRow("in the move behind it") << QByteArray(R"(,{"type":"moveL"},{"type":"delay"})")
                                               << QByteArray("manual") << qint64(500) << 2;
        QTest::newRow("when the run is over") << QByteArray() << QByteArray("manual") << qint64(400) << 1;
    }

    void anErrorAfterTheZone_isTold() {
        QFETCH(QByteArray, behind);
        QFETCH(QByteArray, mode);
        bench_.robot.zoneLeadMs = 120;
        bench_.load(R"([{"type":"moveL","zone":2,"point":{"trans":[1,0,0]}},{"type":"close"})" + behind +
                    "]");
        bench_.robot.setMode(mode);
        bench_.robot.codes = {-9};
        m("lumo.cur_param")->setValue(this, 0);
        bench_.run();
        QTEST(bench_.robot.nowMs(), "ends");
        bench_.time.advance(1000);
        bench_.settle();
        QCOMPARE(bench_.boxes(), QStringList{"机器人运动错误：-0x9"});
        QTEST(bench_.resumeLine(), "line");
        QCOMPARE(bench_.robot.firstTime("GAS 1"), qint64(-1));
    }

    void motionsThatNobodyWaitsForAnyMore_data() {
        QTest::addColumn<QByteArray>("how");
        QTest::addColumn<bool>("once");
        for (const char* how : {"pause", "power", "lost"}) {
            QTest::addRow("%s, start", how) << QByteArray(how) << false;
            QTest::addRow("%s, single step", how) << QByteArray(how) << true;
        }
    }

    /// What was queued before a stop, or lost after its run was over, counts no more.
    void motionsThatNobodyWaitsForAnyMore() {
        QFETCH(QByteArray, how);
        QFETCH(bool, once);
        bench_.load(R"([{"type":"moveL","zone":2,"point":{"trans":[1,0,0]}},{"type":"close"}])");
        bench_.robot.zoneLeadMs = 120;
        bench_.at(250, [how] { stop(how); });
        bench_.run();
        if (how == "lost") {
            kordservice()->command(this, QLatin1String("move.stop"),
                                   static_cast<const ModuleObject*>(nullptr));
        } else {
            QSignalSpy log(mendo::LogHub::instance(), &mendo::LogHub::line);
            test::ScriptedRobot::answer("move.l", 0);
            QCOMPARE(log.at(1).at(1).toString(), QString("unexpected move result!"));
            bench_.robot.mark();
            test::ExecutorBench::pause();
            QCOMPARE(bench_.robot.firstTime("move.stop"), qint64(-1));
        }
        test::ScriptedRobot::setPower("on");
        bench_.load(R"([{"type":"moveL","point":{"trans":[2,0,0]}}])");
        bench_.at(5000, [] { test::ExecutorBench::pause(); });
        if (once) {
            bench_.once(0);
        } else {
            bench_.run();
        }
        QCOMPARE(bench_.robot.nowMs(), qint64(500));
    }

    void pausePoint_isThePosture_data() {
        QTest::addColumn<bool>("pause");
        QTest::newRow("pause") << true;
        QTest::newRow("power lost") << false;
    }

    void pausePoint_isThePosture() {
        QFETCH(bool, pause);
        ModuleObject* const point = m("lumo.current.pausepoint");
        point->set(this, "left.over", 1);
        QSignalSpy told(point, &ModuleObject::changed);
        bench_.robot.standAt({1, 2, 3});
        bench_.load(R"([{"type":"delay","delaytime":100}])");
        bench_.at(50,
                  [pause] { pause ? test::ExecutorBench::pause() : test::ScriptedRobot::setPower("off"); });
        bench_.run();
        QCOMPARE(told.count(), 1);
        QCOMPARE(point->exportToJson(), kordservice()->dataNode("sys.posture")->exportToJson());
    }

    void aMotionError_pausesAndIsReported_data() {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("text");
        QTest::newRow("-42") << -42 << "机器人运动错误：-0x2a";
        QTest::newRow("-1") << -1 << "机器人运动错误：-0x1";
    }

    void aMotionError_pausesAndIsReported() {
        QFETCH(int, code);
        bench_.robot.codes = {0, code};
        bench_.load(
            R"([{"type":"open"},{"type":"moveL"},{"type":"moveL"},{"type":"moveL"},{"type":"close"}])");
        QStringList boxesBefore;
        bench_.at(950, [&boxesBefore] { boxesBefore = test::ExecutorBench::boxes(); });
        bench_.run();
        QTEST(bench_.boxes().join('|'), "text");
        QCOMPARE(boxesBefore, QStringList());
        QCOMPARE(bench_.resumeLine(), 2);
        QVERIFY(bench_.weldFlag());
        QCOMPARE(bench_.state(), QString("idle"));
        QCOMPARE(bench_.robot.firstTime("move.stop"), qint64(1400));  // the third move is still queued
        QCOMPARE(bench_.robot.output("LASER"), 0.0);
        QCOMPARE(bench_.robot.output("GAS"), 0.0);
    }

    void pauseStopsMotionsThatHaveNotBegun() {
        // The robot still says "idle" although motions were handed over.
        bench_.load(R"([{"type":"moveL"},{"type":"moveL"}])");
        bench_.at(100, [this] {
            m("kord.r.state")->setValue(this, "idle");
            test::ExecutorBench::pause();
        });
        bench_.run();
        QCOMPARE(bench_.robot.firstTime("move.stop"), qint64(100));
        QCOMPARE(bench_.resumeLine(), 0);
    }

    void aPauseInsideAHandler_stopsBeforeTheStatement_data() {
        QTest::addColumn<QString>("node");
        QTest::newRow("state") << "lumo.execute.state";
        QTest::newRow("line") << "lumo.execute.line";
        QTest::newRow("resume line") << "lumo.current.line";
        QTest::newRow("type") << "lumo.current.programtype";
    }

    void aPauseInsideAHandler_stopsBeforeTheStatement() {
        QFETCH(QString, node);
        bench_.load(R"([{"type":"setDO","DO_type":"IO","doName":"DO1"},{"type":"moveL"}])");
        m("lumo.current.programtype")->setValue(this, "before");
        QObject scope;
        bool fired = false;
        connect(m(node), &ModuleObject::changed, &scope, [&fired] {
            if (!std::exchange(fired, true)) {
                test::ExecutorBench::pause();
            }
        });
        bench_.run();
        QCOMPARE(bench_.robot.firstTime("out DO1 1"), qint64(-1));
        QCOMPARE(m("lumo.current.programtype")->getString(),
                 QString(node == "lumo.current.programtype" ? "setDO" : "before"));
        QCOMPARE(bench_.state(), QString("idle"));
        QCOMPARE(executor->depth(), 0);
    }

    void stoppedByWhoeverHears_data() {
        QTest::addColumn<QByteArray>("event");
        for (const char* event : {"pause", "power", "permission"}) {
            QTest::newRow(event) << QByteArray(event);
        }
    }

    /// One run for each thing that a weld announces, by a call, by a write or by activity: whoever hears
    /// of it stops the weld then and there, and nothing comes on any more.
    void stoppedByWhoeverHears() {
        QFETCH(QByteArray, event);
        int runs = 0;
        for (bool heardAll = false; !heardAll; ++runs) {
            heardAll = !stopAt(runs + 1, event);
            QVERIFY2(!QTest::currentTestFailed(),
                     qPrintable(QStringLiteral("announcement %1").arg(runs + 1)));
        }
        QVERIFY(runs > 50);
    }

    void powerLostInsideAPause_leavesEverythingOff() {
        bench_.load(R"([{"type":"open"},{"type":"moveL"},{"type":"close"}])");
        QObject scope;
        bool lost = false;
        connect(kordservice(), &KordService::issued, &scope, [&lost](const KordCall& call) {
            if (call.name == QLatin1String("move.stop") && !std::exchange(lost, true)) {
                test::ScriptedRobot::setPower("off");
            }
        });
        bench_.at(600, [] { test::ExecutorBench::pause(); });
        bench_.run();
        QVERIFY(bench_.robot.logBetween(600, 99999).filter(QRegularExpression(" [1-9]\\d*$")).isEmpty());
        QCOMPARE(executor->pendingSteps(), 0);
    }

    void startsAreRefusedWhileTheDwellOfAPausedOpeningIsOnTheStack() {
        bench_.setParam("stay_time", 3000);
        bench_.load(R"([{"type":"open"},{"type":"moveL"},{"type":"close"}])");
        bench_.at(500, [] { test::ExecutorBench::pause(); });
        QString state;
        bench_.at(2000, [&] {
            state = bench_.state();
            test::ExecutorBench::trigger("start", 0);
        });
        bench_.run();
        QCOMPARE(state, QString("idle"));
        QCOMPARE(bench_.boxes(), QStringList{"当前不是空闲状态"});
        QCOMPARE(bench_.robot.nowMs(), qint64(3200));
        QCOMPARE(bench_.robot.firstTime("move.l 0 0"), qint64(-1));
    }

    void aRunIsTheProgramThatWasAccepted() {
        bench_.load(R"([{"type":"delay","delaytime":100},{"type":"setDO","DO_type":"IO","doName":"DO1"}])");
        bench_.at(50, [this] { bench_.load(R"([{"type":"setDO","DO_type":"IO","doName":"DO9"}])"); });
        bench_.run();
        QVERIFY(sameLog(bench_.robot.log(), {"0 move.reset", "100 out DO1 1"}));
    }

    void aForeignStateWrite_endsTheRunDark() {
        bench_.load(
            R"([{"type":"open"},{"type":"delay","delaytime":1000},{"type":"moveL"},{"type":"close"}])");
        bench_.at(700, [this] { m("lumo.execute.state")->setValue(this, "idle"); });
        bench_.run();
        bench_.settle();
        QCOMPARE(bench_.robot.output("LASER"), 0.0);
        QCOMPARE(bench_.robot.firstTime("move.l 0 0"), qint64(-1));
    }
};

LUMO_TEST_MAIN(TestResults)
#include "test_results.moc"
