#include "module/globals.h"
#include "support/executorbench.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTest>

using test::sameLog;

/// The walk over a program: batches, speeds, the zone wait, single steps, refusals.
class TestRun : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;

    /// Motions, equipment and messages are elsewhere: what goes to the robot, without times.
    QStringList commands() const {
        QStringList lines;
        for (const QString& line : bench_.robot.log()) {
            lines << line.section(QLatin1Char(' '), 1, 1);
        }
        return lines;
    }

private slots:
    void init() { bench_.reset(); }

    void batches_data() {
        QTest::addColumn<int>("line");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("from the first line")
            << 0 << QStringList{"move.reset", "move.l", "move.l",          "move.j", "move.opr.enough", "out",
                                "move.l",     "move.l", "move.opr.enough", "move.l", "move.opr.enough"};
        QTest::newRow("from inside a batch")
            << 1 << QStringList{"move.reset", "move.l",          "move.j", "move.opr.enough", "out", "move.l",
                                "move.l",     "move.opr.enough", "move.l", "move.opr.enough"};
        QTest::newRow("from the line that ends a batch")
            << 6 << QStringList{"move.reset", "move.l", "move.opr.enough"};
    }

    void batches() {
        QFETCH(int, line);
        bench_.load(R"([{"type":"moveL"},{"type":"moveL"},{"type":"moveJ"},
                        {"type":"setDO","DO_type":"IO","doName":"DO1","value":"true"},
                        {"type":"moveL"},{"type":"moveL"},{"type":"moveL","execute":false},{"type":"moveL"}])");
        bench_.run(line);
        QFETCH(QStringList, expected);
        QVERIFY(sameLog(commands(), expected));
        QCOMPARE(bench_.state(), QString("idle"));
        QCOMPARE(bench_.resumeLine(), 7);
    }

    void nothingToExecute_onlyResets() {
        bench_.load(R"([{"type":"moveL","execute":false},{"type":"open","execute":false}])");
        bench_.run();
        QCOMPARE(commands(), QStringList{"move.reset"});
        QCOMPARE(bench_.state(), QString("idle"));
    }

    void unknownTypes_areWalkedOver() {
        bench_.load(R"([{"type":"moveX"},{"type":"dance"},{},{"type":"moveL"}])");
        bench_.run();
        QCOMPARE(commands(), QStringList({"move.reset", "move.opr.enough", "move.l", "move.opr.enough"}));
    }

    void speeds() {
        bench_.load(R"([{"type":"moveL","speed":100},{"type":"open","weldspeed":20},
                        {"type":"moveL","speed":100},{"type":"delay"},{"type":"moveL","speed":100},
                        {"type":"close"},{"type":"moveL","speed":"100"}])");
        bench_.run();
        QCOMPARE(bench_.robot.speeds, QVector<double>({0.1, 0.02, 0.02, 0.1}));
    }

    void speedsWithoutPermission_areTheMovesOwn() {
        bench_.robot.setMode("manual");
        bench_.load(R"([{"type":"open","weldspeed":20},{"type":"moveL","speed":100},{"type":"close"}])");
        bench_.run();
        QVERIFY(sameLog(bench_.robot.log(), {"0 move.reset", "0 move.l 0.1 0", "0 move.opr.enough"}));
    }

    void zoneAndSpeed_areSentInMetres() {
        bench_.load(R"([{"type":"moveJ","speed":35.5,"zone":2,"point":{"near":[0.1,0.2]}}])");
        bench_.run();
        QVERIFY(sameLog(bench_.robot.log(), {"0 move.reset", "0 move.j 0.0355 0.002", "0 move.opr.enough"}));
    }

    void fieldsThatAMoveLacks_areNotTakenFromDeepInside_data() {
        QTest::addColumn<QByteArray>("program");
        QTest::addColumn<QByteArray>("expected");
        const QByteArray trajectory = R"("traj":{"speed":0,"zone":0})";
        const QByteArray note =
            R"("note":{"speed":9,"zone":9,"point":{"trans":[1,1,0]},"point1":{"trans":[2,0,0]}})";
        QTest::newRow("line") << R"([{"type":"moveL",)" + note + "}]"
                              << "move.l {" + trajectory + "}";
        QTest::newRow("arc without its end") << R"([{"type":"moveC","point":{"trans":[3,0,0]},)" + note + "}]"
                                             << R"(move.c {"aux":{"trans":[3,0,0]},)" + trajectory + "}";
        QTest::newRow("arc without its middle")
            << R"([{"type":"moveC","point1":{"trans":[3,0,0]},)" + note + "}]"
            << R"(move.c {"point":{"trans":[3,0,0]},)" + trajectory + "}";
        QTest::newRow("welding speed")
            << R"([{"type":"open","note":{"weldspeed":20}},{"type":"moveL","speed":100,"point":{"trans":[1]}}])" +
                   QByteArray()
            << R"(move.l {"point":{"trans":[1]},)" + trajectory + "}";
        QTest::newRow("type") << QByteArray(R"([{"note":{"type":"moveL"}}])") << QByteArray();
        QTest::newRow("parameter set")
            << QByteArray(R"([{"type":"open","note":{"index":7}}])") << QByteArray();
    }

    void fieldsThatAMoveLacks_areNotTakenFromDeepInside() {
        QFETCH(QByteArray, program);
        bench_.load(program);
        QObject scope;
        QByteArray motion;
        connect(kordservice(), &KordService::issued, &scope, [&motion](const KordCall& call) {
            if (call.name.size() == 6 && call.name.startsWith(QLatin1String("move."))) {
                QJsonObject arguments = call.node->exportToJson().toObject();
                for (const char* point : {"aux", "point"}) {
                    if (arguments.value(QLatin1String(point)).toObject().isEmpty()) {
                        arguments.remove(QLatin1String(point));
                    }
                }
                motion += call.name.toUtf8() + ' ' + QJsonDocument(arguments).toJson(QJsonDocument::Compact);
            }
        });
        m("lumo.cur_param")->setValue(this, 0);
        bench_.run();
        QTEST(motion, "expected");
        QCOMPARE(m("lumo.cur_param")->getInt(), 0);
    }

    void nearness_data() {
        QTest::addColumn<QByteArray>("a");
        QTest::addColumn<QByteArray>("b");
        QTest::addColumn<bool>("near");
        QTest::newRow("less than the distance")
            << QByteArray("[1,2,3]") << QByteArray("[1.02,2.02,3.02]") << true;
        QTest::newRow("more") << QByteArray("[1,2,3]") << QByteArray("[1.03,2.03,3.03]") << false;
        QTest::newRow("exactly") << QByteArray("[0,0,0]") << QByteArray("[0,0,0.05]") << false;
        // What is missing is zero.
        QTest::newRow("nothing") << QByteArray("[]") << QByteArray("[]") << true;
        QTest::newRow("nothing and the origin") << QByteArray("[]") << QByteArray("[0,0,0]") << true;
        QTest::newRow("the origin and nothing") << QByteArray("[0,0,0]") << QByteArray("[]") << true;
        QTest::newRow("only the first three count")
            << QByteArray("[0,0,0,1]") << QByteArray("[0,0,0,2]") << true;
        for (int axis = 0; axis < 3; ++axis) {
            QByteArray far("[0,0,0]");
            far[1 + 2 * axis] = '1';
            QTest::addRow("axis %d", axis) << QByteArray("[0,0,0]") << far << false;
        }
    }

    void nearness() {
        QFETCH(QByteArray, a);
        QFETCH(QByteArray, b);
        ModuleObject first, second;
        first.loadJson(nullptr, QJsonDocument::fromJson(a).array());
        second.loadJson(nullptr, QJsonDocument::fromJson(b).array());
        QTEST(isNearTrans(&first, &second, 0.05), "near");
    }

    void zoneWait_data() {
        QTest::addColumn<QByteArray>("between");
        QTest::addColumn<int>("closedAt");
        // The tool is at the target 120 ms before the result of a motion of 500 ms; polls every 50 ms.
        QTest::newRow("directly before the close") << QByteArray() << 400;
        QTest::newRow("statements that are no moves do not matter")
            << QByteArray(R"({"type":"param","index":0},)") << 400;
        QTest::newRow("not before another move")
            << QByteArray(R"({"type":"moveL","zone":2,"point":{"trans":[2,0,0]}},)") << 900;
    }

    void zoneWait() {
        QFETCH(QByteArray, between);
        QFETCH(int, closedAt);
        bench_.load(R"([{"type":"moveL","zone":2,"point":{"trans":[1,0,0]}},)" + between +
                    R"({"type":"close"}])");
        bench_.robot.zoneLeadMs = 120;
        bench_.run();
        QCOMPARE(bench_.robot.firstTime("PULL 1"), qint64(closedAt));
    }

    void zoneOfAMove_data() {
        QTest::addColumn<QVariant>("standard");
        QTest::addColumn<QByteArray>("move");
        QTest::addColumn<int>("closedAt");
        const QByteArray bare = R"("point":{"trans":[1]},"note":{"zone":0})";
        QTest::newRow("its own") << QVariant(0.0) << R"("zone":2,)" + bare << 400;
        QTest::newRow("its own of zero is never entered") << QVariant(0.002) << R"("zone":0,)" + bare << 500;
        QTest::newRow("the controller's") << QVariant(0.002) << bare << 400;
        QTest::newRow("none known") << QVariant() << R"("point":{"trans":[0.5]})" + QByteArray() << 500;
    }

    void zoneOfAMove() {
        QFETCH(QVariant, standard);
        QFETCH(QByteArray, move);
        kordservice()->dataNode("move.default_zone")->setValue(this, standard);
        bench_.load(R"([{"type":"moveL",)" + move + R"(},{"type":"close"}])");
        bench_.robot.zoneLeadMs = 120;
        bench_.run();
        QTEST(int(bench_.robot.firstTime("PULL 1")), "closedAt");
    }

    void noZoneWait_withoutACloseBehind_data() {
        QTest::addColumn<QByteArray>("behind");
        QTest::newRow("a close deep inside another statement") << QByteArray(R"(,{"note":{"type":"close"}})");
        QTest::newRow("an opening before the close") << QByteArray(R"(,{"type":"open"},{"type":"close"})");
    }

    void noZoneWait_withoutACloseBehind() {
        QFETCH(QByteArray, behind);
        bench_.robot.zoneLeadMs = 120;
        bench_.load(R"([{"type":"moveL","zone":2,"point":{"trans":[1,0,0]}},
                        {"type":"setDO","DO_type":"IO","doName":"DO1"})" +
                    behind + "]");
        bench_.run();
        QCOMPARE(bench_.robot.firstTime("out DO1 1"), qint64(500));
    }

    void zoneWaitOfAnArc_passesItsMiddlePointFirst() {
        bench_.load(R"([{"type":"moveC","zone":2,"point":{"trans":[1,0,0]},"point1":{"trans":[2,0,0]}},
                        {"type":"close"}])");
        bench_.at(120, [this] { bench_.robot.standAt({2, 0, 0}); });  // the end does not count yet
        bench_.at(220, [this] { bench_.robot.standAt({1.001, 0, 0}); });
        bench_.at(320, [this] { bench_.robot.standAt({2, 0.0019, 0}); });
        bench_.run();
        QCOMPARE(bench_.robot.firstTime("PULL 1"), qint64(350));
    }

    void zoneWaitOfACircle_comesBackToItsStart() {
        bench_.load(R"([{"type":"moveL","point":{"trans":[0,0,0]}},
                        {"type":"moveCC","zone":2,"point":{"trans":[0.1,0.1,0]},"point1":{"trans":[0.2,0,0]}},
                        {"type":"close"}])");
        bench_.at(610, [this] { bench_.robot.standAt({0.1, 0.1, 0}); });
        bench_.at(710, [this] { bench_.robot.standAt({0.2, 0, 0}); });
        bench_.at(810, [this] { bench_.robot.standAt({0, 0, 0}); });
        bench_.run();
        QCOMPARE(bench_.robot.firstTime("PULL 1"), qint64(850));
    }

    void everyZoneWaitBeginsAnew_data() {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<QStringList>("closings");
        // What was passed on the first path does not count on the second, which ends by its result.
        QTest::newRow("arc") << QByteArray("moveC") << QStringList{"200 PULL 1", "1000 PULL 1"};
        QTest::newRow("circle") << QByteArray("moveCC") << QStringList{"300 PULL 1", "1000 PULL 1"};
    }

    void everyZoneWaitBeginsAnew() {
        QFETCH(QByteArray, type);
        const QByteArray path =
            QByteArray(R"({"type":"move","zone":2,"point":{"trans":[0.1,0.1,0]},"point1":{"trans":[0.2,0,0]}},
                          {"type":"close"})")
                .replace("move", type);
        bench_.load("[" + path + "," + path + "]");
        bench_.at(60, [this] { bench_.robot.standAt({0.1, 0.1, 0}); });
        bench_.at(160, [this] { bench_.robot.standAt({0.2, 0, 0}); });
        bench_.at(260, [this] { bench_.robot.standAt({0, 0, 0}); });
        bench_.run();
        QTEST(bench_.robot.log().filter("PULL 1"), "closings");
    }

    void refusals_data() {
        QTest::addColumn<int>("line");
        QTest::addColumn<QByteArray>("power");
        QTest::addColumn<QByteArray>("robot");
        QTest::addColumn<QString>("text");
        QTest::newRow("past the end") << 2 << QByteArray("on") << QByteArray("idle") << "未选中启动行";
        QTest::newRow("before the beginning")
            << -1 << QByteArray("off") << QByteArray("moving") << "未选中启动行";
        QTest::newRow("no power") << 0 << QByteArray("off") << QByteArray("moving") << "机器人未上电";
        QTest::newRow("robot moves") << 0 << QByteArray("on") << QByteArray("moving") << "机器人正在运行中";
    }

    void refusals() {
        QFETCH(int, line);
        QFETCH(QByteArray, power);
        QFETCH(QByteArray, robot);
        bench_.load(R"([{"type":"moveL"},{"type":"delay"}])");
        bench_.robot.setPower(power);
        m("kord.r.state")->setValue(this, QString(robot));
        QSignalSpy states(m("lumo.execute.state"), &ModuleObject::changed);
        bench_.run(line);
        bench_.once(line);
        QTEST(bench_.boxes().join('|'), "text");  // the second one is on the screen already
        QCOMPARE(states.count(), 0);
        QCOMPARE(bench_.robot.log(), QStringList());
    }

    void triggersThatAreNoNumbers_startNothing() {
        bench_.load(R"([{"type":"moveL"}])");
        for (const QVariant& value : {QVariant(), QVariant("abc")}) {
            m("lumo.execute.trigger.start")->setValue(this, value);
            QCOMPARE(bench_.boxes(), QStringList{"未选中启动行"});
            QCOMPARE(bench_.robot.log(), QStringList());
        }
    }

    void startDuringARun_isRefused() {
        bench_.load(R"([{"type":"delay","delaytime":1000}])");
        bench_.at(100, [] { test::ExecutorBench::trigger("start", 0); });
        bench_.at(200, [] { test::ExecutorBench::trigger("once", 0); });
        bench_.run();
        QCOMPARE(bench_.boxes(), QStringList{"当前不是空闲状态"});
        QCOMPARE(bench_.robot.nowMs(), qint64(1000));
    }

    void aStationsRun_doesNotShowItsLine() {
        bench_.load(R"([{"type":"delay"},{"type":"delay"}])");
        m("lumo")->append(this, "signalbind_program")->copyFrom(this, m("lumo.program"));
        bench_.run(0, 1);
        QCOMPARE(m("lumo.execute.line")->getInt(), -1);
        QCOMPARE(bench_.resumeLine(), 1);
    }

    void singleStep() {
        bench_.load(
            R"([{"type":"open","weldspeed":20},{"type":"moveL","speed":100,"zone":2},{"type":"close"}])");
        QString detail;
        bench_.at(100, [&detail] { detail = executor->waiting().value("detail").toString(); });
        bench_.once(1);
        QCOMPARE(detail, QString("1"));
        QVERIFY(sameLog(bench_.robot.log(), {"0 move.reset", "0 move.l 0.1 0.002", "0 move.opr.enough"}));
        QCOMPARE(bench_.robot.nowMs(), qint64(500));
        QCOMPARE(m("lumo.execute.line")->getInt(), 1);
        QCOMPARE(bench_.resumeLine(), 0);
        bench_.once(0);
        QCOMPARE(bench_.boxes(), QStringList{"单步只能运行运动指令"});
    }

    void singleStepOfALineThatIsNotExecuted_onlyResets() {
        bench_.load(R"([{"type":"moveL","execute":false}])");
        bench_.once(0);
        QVERIFY(sameLog(bench_.robot.log(), {"0 move.reset"}));
        QCOMPARE(m("lumo.execute.line")->getInt(), -1);
        QCOMPARE(bench_.state(), QString("idle"));
    }

    void singleStepOfANonMoveWithoutASender_waitsForNothing_data() {
        QTest::addColumn<QByteArray>("statement");
        QTest::newRow("output") << QByteArray(R"({"type":"setDO","DO_type":"IO","doName":"DO1"})");
        QTest::newRow("no type, but one deep inside") << QByteArray(R"({"note":{"type":"moveL"}})");
    }

    void singleStepOfANonMoveWithoutASender_waitsForNothing() {
        QFETCH(QByteArray, statement);
        bench_.load("[" + statement + "]");
        bench_.once(0, false);
        QVERIFY(sameLog(bench_.robot.log(), {"0 move.reset", "0 move.opr.enough"}));
        QCOMPARE(bench_.state(), QString("idle"));
    }

    void impossibleCircles_data() {
        QTest::addColumn<QByteArray>("program");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("log");
        const QByteArray line =
            R"({"type":"moveCC","point":{"trans":[0.1,0,0]},"point1":{"trans":[0.2,0,0]}})";
        const QByteArray point =
            R"({"type":"moveCC","point":{"trans":[0.1,0,0]},"point1":{"trans":[0.1,0,0]}})";
        const QByteArray move = R"({"type":"moveL","point":{"trans":[0.5,0,0]}})";
        QTest::newRow("collinear: refused at the start")
            << "[" + move + "," + line + "]"
            << "第 2 行：整圆的三个点共线，无法确定圆" << QStringList();
        QTest::newRow("coincident: refused at the start")
            << "[" + move + "," + move + "," + point + "]"
            << "第 3 行：整圆的点重合，无法确定圆" << QStringList();
        QTest::newRow("from the posture: found at queueing")
            << "[" + line + "]"
            << "第 1 行：整圆的三个点共线，无法确定圆" << QStringList{"0 move.reset", "0 PULL 1"};
        const QByteArray note = R"("note":{"point":{"trans":[0.1,0.1,0]},"point1":{"trans":[0.2,0,0]}}})";
        QTest::newRow("first point only deep inside")
            << R"([{"type":"moveCC","point1":{"trans":[0.2,0,0]},)" + note + "]"
            << "第 1 行：整圆的点重合，无法确定圆" << QStringList{"0 move.reset", "0 PULL 1"};
        QTest::newRow("second point only deep inside")
            << R"([{"type":"moveCC","point":{"trans":[0.1,0.1,0]},)" + note + "]"
            << "第 1 行：整圆的点重合，无法确定圆" << QStringList{"0 move.reset", "0 PULL 1"};
    }

    void impossibleCircles() {
        QFETCH(QByteArray, program);
        QFETCH(QStringList, log);
        bench_.load(program);
        m("lumo.cur_param")->setValue(this, 0);
        bench_.run();
        QTEST(bench_.boxes().join('|'), "text");
        QVERIFY(sameLog(bench_.robot.log().mid(0, log.size()), log));
        QCOMPARE(bench_.state(), QString("idle"));
    }

    void singleStep_concernsTheCirclesOfItsLineAlone_data() {
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("log");
        const QStringList stopped{"0 move.reset", "0 PULL 1"};
        QTest::newRow("from the posture") << 0 << "第 1 行：整圆的点重合，无法确定圆" << stopped;
        QTest::newRow("before one") << 1 << QString() << QStringList{"0 move.reset", "0 move.l 0 0"};
        QTest::newRow("of one") << 2 << "第 3 行：整圆的点重合，无法确定圆" << QStringList();
    }

    void singleStep_concernsTheCirclesOfItsLineAlone() {
        QFETCH(int, line);
        QFETCH(QStringList, log);
        const QByteArray circle = R"({"type":"moveCC","point":{"trans":[1,0,0]},"point1":{"trans":[1,0,0]}})";
        bench_.load("[" + circle + R"(,{"type":"moveL","point":{"trans":[0.5,0,0]}},)" + circle + "]");
        m("lumo.cur_param")->setValue(this, 0);
        bench_.once(line);
        QTEST(bench_.boxes().join('|'), "text");
        QVERIFY(sameLog(bench_.robot.log().mid(0, 2), log));
        QCOMPARE(bench_.state(), QString("idle"));
    }

    /// The operations of others, called while nothing runs.
    void outsideOfARun() {
        bench_.load(R"([{"type":"moveL","speed":100},{"note":{"type":"open"}},{"type":"open","weldspeed":20},
                        {"type":"close"},{"type":"moveL","speed":100},
                        {"type":"moveCC","point":{"trans":[1,0,0]},"point1":{"trans":[2,0,0]}}])");
        const auto statement = [](int line) { return m("lumo.program")->c(line); };
        m("lumo.current.openmiddlecolse")->setValue(this, true);
        bench_.robot.mark();
        QCOMPARE(executor->findNearestForwardParam(statement(2)), nullptr);
        QCOMPARE(executor->findNearestForwardParam(statement(4)), statement(2));
        QCOMPARE(executor->addCmd(statement(0)), 0);
        QCOMPARE(executor->addCmd(statement(2)), 0);
        QCOMPARE(executor->addCmd(statement(4)), 0);
        QCOMPARE(executor->addCmd(statement(5)), -3);
        QCOMPARE(executor->execProgram(0), 0);
        QCOMPARE(executor->moveAll(0), 0);
        QVERIFY(sameLog(bench_.robot.log(), {"0 move.l 0.1 0", "0 move.l 0.02 0"}));
        QCOMPARE(executor->waitMoveing(statement(0), "start"), 0);
        QCOMPARE(bench_.robot.nowMs(), qint64(0));
        m("lumo.current.openmiddlecolse")->setValue(this, QVariant());
        QCOMPARE(executor->addCmd(statement(4)), 0);
        QCOMPARE(bench_.robot.speeds.last(), 0.1);
    }

    /// A run goes by its own copy of the program: what others queue meanwhile is none of its lines.
    void aStatementOfTheTree_isNoneOfTheRun() {
        const auto statement = [](int line) { return m("lumo.program")->c(line); };
        bench_.load(R"([{"type":"moveL"},{"type":"moveL"}])");
        bench_.at(100, [statement] { QCOMPARE(executor->addCmd(statement(1)), 0); });
        bench_.run();
        QCOMPARE(bench_.robot.nowMs(), qint64(1000));

        bench_.reset();
        bench_.load(R"([{"type":"delay","delaytime":300}])");
        int code = -1;
        bench_.at(100, [this, statement, &code] {
            bench_.load(R"([{"type":"moveL","point":{"trans":[0.5,0,0]}},
                            {"type":"moveCC","point":{"trans":[0.1,0.1,0]},"point1":{"trans":[0,0,0]}}])");
            code = executor->addCmd(statement(1));
        });
        bench_.run();
        QCOMPARE(code, 0);  // it begins at its own first line's point, not at the posture
    }

    void ioStatements() {
        bench_.load(R"([{"type":"setDO","DO_type":"IO","doName":"DO2","value":""},
                        {"type":"setDO","DO_type":"IO","doName":"DO2","value":"false"},
                        {"type":"setDO","DO_type":"register","value":"","DO_reg":{"name":"R","type":"bit","bias":"4"}},
                        {"type":"setDO","DO_type":"register","value":"true","DO_reg":{"name":"R","type":"bit","bias":5}},
                        {"type":"setDO","DO_type":"register","value":"true","DO_reg":{"name":"R","type":"bit"}},
                        {"type":"delay","delaytime":-5},{"type":"delay","delaytime":"70"},
                        {"type":"delay","note":{"delaytime":99}},{"note":{"type":"delay","delaytime":99}},
                        {"type":"waitDI","DI_type":"IO","diName":"DI1","value1":""},
                        {"type":"waitDI","DI_type":"register","DI_reg":{"name":"LUMO_DI","bias":2},"value1":"false"}])");
        bench_.at(250, [this] { kordservice()->dataNode("device.io")->set(this, "DI.DI1", true); });
        bench_.run();
        QVERIFY(sameLog(bench_.robot.log(), {"0 move.reset", "0 out DO2 1", "0 out DO2 0", "0 exec R.4 false",
                                             "0 exec R.5 true", "0 exec R.0 true"}));
        QCOMPARE(bench_.robot.nowMs(), qint64(70 + 200 + 100));  // polled at 170 and 270, then at 370
    }

    void anInputRegisterWithoutABit_isItsFirst() {
        bench_.load(
            R"([{"type":"waitDI","DI_type":"register","DI_reg":{"name":"LUMO_DI"},"value1":"true"}])");
        bench_.at(150, [this] { kordservice()->dataNode("register.values")->set(this, "LUMO_DI.#0", true); });
        bench_.at(5000, [] { test::ExecutorBench::pause(); });
        bench_.run();
        QCOMPARE(bench_.robot.nowMs(), qint64(200));
    }

    void resumeDataAreWritten() {
        bench_.load(R"([{"type":"moveL","speed":33,"point":{"trans":[1,2,3]}}])");
        bench_.run();
        QCOMPARE(m("lumo.current.programtype")->getString(), QString("moveL"));
        QCOMPARE(m("lumo.current.programmovetype")->getString(), QString("moveL"));
        QCOMPARE(m("lumo.current.program.moveL.speed")->getInt(), 33);
        QVERIFY(m("lumo.current.startpoint")->hasCmobj("trans"));
    }
};

LUMO_TEST_MAIN(TestRun)
#include "test_run.moc"
