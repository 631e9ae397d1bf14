#include "executor/laser.h"
#include "executor/motions.h"
#include "support/executorbench.h"
#include "support/suite.h"
#include "support/text.h"

namespace {

/// A clock behind the one that the timers run on, as a coarse timer makes it look.
struct SlowClock : mendo::Clock {
    explicit SlowClock(const mendo::Clock& clock) : real(clock) { install(this); }
    ~SlowClock() override { install(&real); }
    QDateTime now() const override { return real.now(); }
    qint64 elapsedMs() const override { return real.elapsedMs() - lateMs; }

    const mendo::Clock& real;
    qint64 lateMs = 0;
};

}  // namespace

/// What the executor reads from the tree, and its public operations.
class TestRun : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;

    static ModuleObject* statement(int line) { return m("lumo.program")->c(line); }

private slots:
    void init() { bench_.reset(); }

    void welding_isPermittedByModeAndSwitches() {
        const auto isPermitted = [this](const char* mode, const QVariant& weld, const QVariant& handWeld) {
            test::ScriptedRobot::setMode(mode);
            m("lumo.allWeldBtnstatus.weldbtn")->setValue(this, weld);
            m("lumo.allWeldBtnstatus.handweldbtn")->setValue(this, handWeld);
            return LumoExecutor::weldingPermitted();
        };
        QVERIFY(isPermitted("auto", {}, {}) && isPermitted("auto", true, false));
        QVERIFY(!isPermitted("auto", false, true));
        QVERIFY(!isPermitted("manual", {}, {}) && !isPermitted("manual", true, false));
        QVERIFY(isPermitted("manual", true, true) && !isPermitted("manual", false, true));
        QVERIFY(isPermitted("", true, true) && !isPermitted("", true, false));
    }

    void zone_isEnteredWithinItsRadius() {
        const auto isNear = [](const char* a, const char* b) {
            return isNearTrans(test::node(a).get(), test::node(b).get(), 0.05);
        };
        QVERIFY(isNear("[1,2,3]", "[1.02,2.02,3.02]") && !isNear("[1,2,3]", "[1.03,2.03,3.03]"));
        QVERIFY(isNear("[]", "[0,0,0,1]") && !isNear("[0,0,0]", "[0,0,0.05]"));
    }

    /// A run executes a copy of the program. A statement of the tree that is queued meanwhile does not count
    /// as one of the run's lines.
    void statementQueuedFromTheTree_isNoLineOfTheRun() {
        bench_.load("moveL; moveL");
        int code = -1;
        bench_.at(100, [&] {
            bench_.load("moveL to=0.5,0,0; moveCC to=0.1,0.1,0 to1=0,0,0");
            code = executor->addCmd(statement(1));
        });
        bench_.run();
        QCOMPARE(bench_.robot.nowMs(), qint64(1000));
        QCOMPARE(code, 0);  // it begins at its own first line's point, not at the posture
    }

    void theSetInForceAndTheStep_areThoseOfTheTree() {
        m("lumo.param")->loadJson(this, test::json("[{'power':50}]"));
        m("lumo.cur_param")->setValue(this, QVariant());
        QVERIFY(paramNode()->isNull());
        m("lumo.cur_param")->setValue(this, 0);
        QCOMPARE(paramNode(), m("lumo.param")->c(0));
        const QVector<QPair<QVariant, int>> periods{{7, 7}, {1, 1}, {0, 20}, {-3, 20}, {"x", 20}};
        for (const auto& [written, ms] : periods) {
            m("lumo.execute.dt")->setValue(this, written);
            QCOMPARE(lumo::rampStepMs(), ms);
        }
    }

    /// The public operations, called while nothing runs.
    void operationsOutsideARun_goByTheTree() {
        bench_.load(
            "moveL speed=100; open weldspeed=20; close; moveL speed=100; moveCC to=1,0,0 to1=2,0,0; "
            "moveC to=1,0,0 to1=2,1,0; moveCC to=1,0,0 to1=2,0,0; moveCC to=1,0,0 to1=2,0,0");
        m("lumo.current.openmiddlecolse")->setValue(this, true);
        QCOMPARE(executor->findNearestForwardParam(statement(1)), nullptr);
        for (int line = 0; line < 8; ++line) {
            QCOMPARE(executor->addCmd(statement(line)), line == 4 ? -3 : 0);
        }
        QCOMPARE(executor->execProgram(0) + executor->moveAll(0), 0);
        QCOMPARE(executor->waitMoveing(statement(0), "start"), 0);
        QCOMPARE(bench_.robot.log(), QStringList({"0 move.l 0.1 0", "0 move.l 0.02 0", "0 move.c 0.02 0",
                                                  "0 move.c 0.02 0", "0 move.c 0.02 0"}));
    }

    void timerThatFiresEarly_isArmedAgain() {
        SlowClock clock(bench_.time);
        lumo::Schedule schedule;
        qint64 done = 0;
        schedule.setPerformer([&](const prog::PortStep&) { done = clock.elapsedMs(); });
        const qint64 due = clock.elapsedMs() + 20;
        schedule.add(schedule.newest(), due, {prog::TimedStep()});
        clock.lateMs = 3;
        bench_.time.advance(40);
        QCOMPARE(done, due);
    }

    /// Last: it ends the package's subtree, whose ports must still be there when the executor switches off.
    void endOfTheSubtree_shutsDown() {
        bench_.load("moveL; open; moveL; close");
        bench_.at(1100, [] { m()->root()->remove(nullptr, "lumo"); });
        bench_.run();
        QCOMPARE(bench_.robot.offSince("LASER"), qint64(1100));
        QCOMPARE(bench_.robot.offSince("GAS"), qint64(1100));
    }
};

LUMO_TEST(TestRun)
#include "test_run.moc"
