#include "executor/laserplan.h"
#include "executor/programindex.h"
#include "executor/script.h"
#include "support/text.h"

#include <cmath>
#include <limits>

/// What a run takes from the tree and when, and where a stopped program goes on after it was edited.
class TestRun : public QObject {
    Q_OBJECT

    test::Script script_;
    test::ExecutorBench& bench_ = script_.bench;

    static ModuleObject* statement(int line) { return m("lumo.program")->c(line); }

private slots:
    void init() { bench_.reset(); }

    /// A weld of lines 1 to 5, the moves 500 ms each, was paused in line 3.
    void editedWhilePaused_theLineFollowsItsStatement() {
        const struct {
            const char* edits;
            int line;
            bool reopens;
        } cases[] = {{"wait 0", 3, true},
                     {"remove 0", 2, true},
                     {"insert 0 delay; insert 2 delay", 5, true},
                     {"move 3 2", 2, true},
                     {"move 0 6", 2, true},
                     {"move 3 6", 6, false},
                     {"move 3 6; move 6 3", 3, false},
                     {"remove 3", 3, false},
                     {"enable 3 false", 3, false},
                     {"enable 3 false; enable 3 true", 3, false},
                     {"remove 1", 2, false},
                     {"remove 5; remove 1", 2, false},
                     {"enable 1 false; enable 1 true", 3, false},
                     {"insert 3 close; remove 3", 3, false},
                     {"insert 2 open", 4, false},
                     {"insert 2 open off", 4, true}};
        for (const auto& [edits, line, reopens] : cases) {
            script_.play("moveL; open execute=1; moveL; moveL; moveL; close; moveL",
                         QString("1600 pause; run; settle; ") + edits);
            QVERIFY2(bench_.resumeLine() == line && bench_.weldFlag() == reopens, edits);
            QVERIFY2(executor->outlook(line).reopens == reopens, edits);
            bench_.run(line);
            QVERIFY2(bench_.robot.firstTime("GAS 1") == (reopens ? 0 : -1), edits);
        }
    }

    void permission() {
        const struct {
            const char* mode;
            QVariant weld, handWeld;
            bool permitted;
        } cases[] = {{"auto", true, false, true},    {"auto", {}, {}, true},    {"auto", false, true, false},
                     {"manual", true, false, false}, {"manual", {}, {}, false}, {"manual", true, true, true},
                     {"manual", false, true, false}, {"", true, true, true},    {"", true, false, false}};
        for (const auto& row : cases) {
            test::ScriptedRobot::setMode(row.mode);
            m("lumo.allWeldBtnstatus.weldbtn")->setValue(this, row.weld);
            m("lumo.allWeldBtnstatus.handweldbtn")->setValue(this, row.handWeld);
            QCOMPARE(LumoExecutor::weldingPermitted(), row.permitted);
        }
    }

    /// What a statement lacks is not taken from deep inside it.
    void fieldsOfChildren_areNotTheStatements() {
        const QByteArray note =
            "'note':{'type':'open','execute':false,'speed':9,'zone':9,'weldspeed':20,'index':7,'delaytime':"
            "99,"
            "'point':{'trans':[1,1,0]},'point1':{'trans':[2,0,0]}}}";
        bench_.load("[{'type':'moveL'," + note + ",{'type':'moveC','point':{'trans':[3]}," + note +
                    ",{'type':'moveC','point1':{'trans':[3]}," + note + ",{" + note + ",{'type':'delay'," +
                    note + ",{'type':'open'," + note +
                    ",{'type':'moveL','speed':100,'point':{'trans':[1]}}]");
        QObject scope;
        QStringList moves;
        connect(kordservice(), &KordService::issued, &scope, [&moves](const KordCall& call) {
            if (call.name == "move.l" || call.name == "move.c") {
                moves << test::text(call.node);
            }
        });
        bench_.run();
        const QString trajectory = "'traj':{'speed':0,'zone':0}}";
        QVERIFY(test::sameLog(
            moves,
            {"{'point':null," + trajectory, "{'aux':{'trans':[3]},'point':null," + trajectory,
             "{'aux':null,'point':{'trans':[3]}," + trajectory, "{'point':{'trans':[1]}," + trajectory}));
        QCOMPARE(m("lumo.cur_param")->getInt(), 0);
        for (const char* circle : {"'point':{'trans':[1,1,0]},", "'point1':{'trans':[1,1,0]},"}) {
            bench_.load("[{'type':'moveL','point':{'trans':[0]}},{'type':'moveCC'," + (circle + note) + "]");
            QCOMPARE(RunProgram(m("lumo.program")).firstBadCircle(0, 2), 1);
        }
    }

    void nearness() {
        const auto isNear = [](const char* a, const char* b) {
            return isNearTrans(test::node(a).get(), test::node(b).get(), 0.05);
        };
        QVERIFY(isNear("[1,2,3]", "[1.02,2.02,3.02]") && !isNear("[1,2,3]", "[1.03,2.03,3.03]"));
        QVERIFY(isNear("[]", "[0,0,0,1]") && !isNear("[0,0,0]", "[0,0,0.05]"));
    }

    /// A run goes by its own copy of the program: what others queue meanwhile is none of its lines.
    void aStatementOfTheTree_isNoneOfTheRun() {
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

    void oddParameterValues_readAsZero() {
        const LaserParams params = LaserParams::from(
            test::node("{'power':'60','increase_time':-5,'stay_time':'x','note':{'speed':60,'open_time':50}}")
                .get());
        QCOMPARE(params.power, 0.6);
        QCOMPARE(params.wireSpeed, 0.0);
        QCOMPARE(params.increaseMs, 0);
        QCOMPARE(params.stayMs, 0);
        QCOMPARE(params.openMs, 0);
        QCOMPARE(LaserParams::from(ModuleObject::null()).power, 0.0);
    }

    void theSetInForceAndTheStep_areThoseOfTheTree() {
        m("lumo.param")->loadJson(this, test::json("[{'power':50}]"));
        m("lumo.cur_param")->setValue(this, QVariant());
        QVERIFY(paramNode()->isNull());
        m("lumo.cur_param")->setValue(this, 0);
        QCOMPARE(paramNode(), m("lumo.param")->c(0));
        const QVector<QPair<QVariant, int>> periods{{7, 7},   {1, 1},    {0, 20},
                                                    {-3, 20}, {"x", 20}, {QVariant(), 20}};
        for (const auto& [written, ms] : periods) {
            m("lumo.execute.dt")->setValue(this, written);
            QCOMPARE(rampStepMs(), ms);
        }
    }

    /// No dialog takes such times, but a file may hold them: they are cut to what fits, and their ramps
    /// go the whole length in few steps.
    void timesOfWeeks_neitherOverflowNorFillTheMemory() {
        const LaserParams params = LaserParams::from(
            test::node(
                "{'power':50,'increase_time':2000000000,'decrease_time':2000000000,'close_delay':2000000000,"
                "'delay_after_blow':2000000000}")
                .get());
        QVERIFY(qint64(params.decreaseMs) + params.closeDelayMs + params.postFlowMs <=
                std::numeric_limits<int>::max());
        for (const Sequence& plan : {openingPlan(params, 1), closingPlan(params, 1)}) {
            QVERIFY(plan.size() < 6000);
            QCOMPARE(plan.back().ms, params.increaseMs);
            double last = -1.0;
            for (const TimedStep& timed : plan) {
                if (timed.step.port == AO_LASER_POWER) {
                    QVERIFY(last < 0.0 || std::abs(timed.step.value - last) < 0.001);
                    last = timed.step.value;
                }
            }
        }
    }

    /// The operations of others, called while nothing runs.
    void outsideOfARun() {
        bench_.load(
            "moveL speed=100; open weldspeed=20; close; moveL speed=100; moveCC to=1,0,0 to1=2,0,0; "
            "moveC to=1,0,0 to1=2,1,0; moveCC to=1,0,0 to1=2,0,0; moveCC to=1,0,0 to1=2,0,0");
        m("lumo.current.openmiddlecolse")->setValue(this, true);
        QCOMPARE(executor->findNearestForwardParam(statement(1)), nullptr);
        const QVector<int> codes{0, 0, 0, 0, -3, 0, 0, 0};
        for (int line = 0; line < 8; ++line) {
            QCOMPARE(executor->addCmd(statement(line)), codes[line]);
        }
        QCOMPARE(
            executor->execProgram(0) + executor->moveAll(0) + executor->waitMoveing(statement(0), "start"),
            0);
        QVERIFY(test::sameLog(bench_.robot.log(), {"0 move.l 0.1 0", "0 move.l 0.02 0", "0 move.c 0.02 0",
                                                   "0 move.c 0.02 0", "0 move.c 0.02 0"}));
    }

    /// Last: it ends the package's subtree, whose ports must still be there when the executor switches off.
    void theEndOfTheSubtree_shutsDown() {
        bench_.load("moveL; open; moveL; close");
        bench_.at(1100, [] { m()->root()->remove(nullptr, "lumo"); });
        bench_.run();
        QCOMPARE(bench_.robot.offSince("LASER"), qint64(1100));
        QCOMPARE(bench_.robot.offSince("GAS"), qint64(1100));
    }
};

LUMO_TEST(TestRun)
#include "test_run.moc"
