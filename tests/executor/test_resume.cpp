#include "devices/handlit.h"
#include "module/globals.h"
#include "support/executorbench.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>

#include <cmath>

using test::sameLog;

using Edit = std::function<void(ModuleObject* program)>;
Q_DECLARE_METATYPE(Edit)

/// Where a stopped program goes on after somebody edited it or moved the tool, and what a hand lit.
class TestResume : public QObject {
    Q_OBJECT

    test::ExecutorBench bench_;
    QVector<QJsonObject> arcs_;  ///< arguments of "move.c" commands

    static Edit removeAt(int line) {
        return [line](ModuleObject* program) { program->remove(nullptr, mIndex(line)); };
    }
    static Edit insertAt(int line, const char* type) {
        return [line, type](ModuleObject* program) {
            auto* const added = new ModuleObject(ModuleObject::generateId(program));
            added->set(nullptr, "type", QString(type));
            program->insert(nullptr, added, true, line);
        };
    }
    static Edit enable(int line, bool on) {
        return [line, on](ModuleObject* program) { program->c(line)->set(nullptr, "execute", on); };
    }
    static Edit move(int from, int to) {
        return [from, to](ModuleObject* program) { program->reorder(nullptr, from, to); };
    }

    /// A weld of lines 1 to 5, the moves 500 ms each.
    void loadWeld() {
        bench_.load(
            R"([{"type":"moveL"},{"type":"open"},{"type":"moveL","speed":100,"execute":true},{"type":"moveL"},
                        {"type":"moveL"},{"type":"close"},{"type":"moveL"}])");
    }

    /// Runs that weld and pauses it in line 3.
    void pauseInLine3() {
        loadWeld();
        bench_.at(1600, [] { test::ExecutorBench::pause(); });
        bench_.run();
        bench_.settle();
        QCOMPARE(bench_.resumeLine(), 3);
        QVERIFY(bench_.weldFlag());
    }

    [[nodiscard]] bool lit() const { return bench_.robot.firstTime("GAS 1") >= 0; }

    /// A pose beside that of the pause.
    static void jog(double mm, double degrees = 0) {
        ModuleObject* const posture = kordservice()->dataNode("sys.posture");
        posture->set(nullptr, "trans.#1", posture->r("trans.#1")->getDouble() + mm / 1000);
        posture->set(nullptr, "rot.#2", posture->r("rot.#2")->getDouble() + degrees * 3.14159265358979 / 180);
    }

private slots:
    void initTestCase() {
        connect(kordservice(), &KordService::issued, this, [this](const KordCall& call) {
            if (call.name == QLatin1String("move.c")) {
                arcs_ << call.node->exportToJson().toObject();
            }
        });
    }

    void init() {
        bench_.reset();
        arcs_.clear();
        kordservice()->dataNode("sys.posture")->set(nullptr, "rot", QVariant());
        bench_.robot.standAt({0, 0, 0});
    }

    void edits_data() {
        QTest::addColumn<QVector<Edit>>("edits");
        QTest::addColumn<int>("line");
        QTest::addColumn<bool>("reopens");
        using Edits = QVector<Edit>;
        QTest::newRow("none") << Edits{} << 3 << true;
        QTest::newRow("a line above goes") << Edits{removeAt(0)} << 2 << true;
        QTest::newRow("lines above come") << Edits{insertAt(0, "delay"), insertAt(2, "delay")} << 5 << true;
        QTest::newRow("moved in the weld") << Edits{move(3, 2)} << 2 << true;
        QTest::newRow("another one moved past it") << Edits{move(0, 6)} << 2 << true;
        QTest::newRow("moved out of the weld") << Edits{move(3, 6)} << 6 << false;
        QTest::newRow("and back") << Edits{move(3, 6), move(6, 3)} << 3 << false;
        QTest::newRow("the statement goes") << Edits{removeAt(3)} << 3 << false;
        QTest::newRow("it is switched off") << Edits{enable(3, false)} << 3 << false;
        QTest::newRow("and on again") << Edits{enable(3, false), enable(3, true)} << 3 << false;
        QTest::newRow("the weld's start goes") << Edits{removeAt(1)} << 2 << false;
        QTest::newRow("start and stop go") << Edits{removeAt(5), removeAt(1)} << 2 << false;
        QTest::newRow("the start is switched off") << Edits{enable(1, false), enable(1, true)} << 3 << false;
        QTest::newRow("a stop comes before it") << Edits{insertAt(3, "close"), removeAt(3)} << 3 << false;
        QTest::newRow("another start comes before it") << Edits{insertAt(2, "open")} << 4 << false;
        QTest::newRow("a start that is off comes") << Edits{[](ModuleObject* program) {
            auto* const off = new ModuleObject(ModuleObject::generateId(program));
            off->set(nullptr, "type", "open")->set(nullptr, "execute", false);
            program->insert(nullptr, off, true, 2);
        }} << 4 << true;
    }

    void edits() {
        QFETCH(QVector<Edit>, edits);
        QFETCH(bool, reopens);
        pauseInLine3();
        for (const Edit& edit : edits) {
            edit(m("lumo.program"));
        }
        QTEST(bench_.resumeLine(), "line");
        QCOMPARE(bench_.weldFlag(), reopens);
        QCOMPARE(executor->outlook(bench_.resumeLine()).reopens, reopens);
        bench_.run(bench_.resumeLine());
        QCOMPARE(lit(), reopens);
        QCOMPARE(bench_.state(), QString("idle"));
    }

    void editsDuringTheRun_data() {
        QTest::addColumn<Edit>("edit");
        QTest::addColumn<QByteArray>("stop");
        QTest::addColumn<int>("line");
        QTest::addColumn<bool>("open");
        for (const char* stop : {"pause", "power", "error"}) {
            QTest::addRow("above, %s", stop) << removeAt(0) << QByteArray(stop) << 2 << true;
        }
        QTest::newRow("the statement itself") << removeAt(3) << QByteArray("pause") << 3 << false;
        QTest::newRow("the weld's start") << enable(1, false) << QByteArray("pause") << 3 << false;
    }

    void editsDuringTheRun() {
        QFETCH(Edit, edit);
        QFETCH(QByteArray, stop);
        loadWeld();
        bench_.robot.codes = {0, 0, stop == "error" ? -9 : 0};
        bench_.at(600, [edit] { edit(m("lumo.program")); });
        bench_.at(1600, [stop] {
            stop == "pause" ? test::ExecutorBench::pause() : test::ScriptedRobot::setPower("off");
        });
        bench_.run();
        QTEST(bench_.resumeLine(), "line");
        QTEST(bench_.weldFlag(), "open");
    }

    void startsAtOtherLines_data() {
        QTest::addColumn<int>("line");
        QTest::addColumn<bool>("reopens");
        for (const int line : {2, 3, 4}) {
            QTest::addRow("line %d of the weld", line) << line << true;
        }
        QTest::newRow("its stop") << 5 << false;
        QTest::newRow("behind it") << 6 << false;
    }

    void startsAtOtherLines() {
        QFETCH(int, line);
        pauseInLine3();
        bench_.run(line);
        QTEST(lit(), "reopens");
        QVERIFY(!bench_.weldFlag());
    }

    void aFlagThatNoWeldLeft_isCleared() {
        loadWeld();
        bench_.run();
        m("lumo.current.openmiddlecolse")->setValue(this, true);
        bench_.run(3);
        QVERIFY(!lit());
        QVERIFY(!bench_.weldFlag());
    }

    void theToolWasMoved_data() {
        QTest::addColumn<double>("mm");
        QTest::addColumn<double>("degrees");
        QTest::addColumn<QByteArray>("fields");
        QTest::addColumn<QByteArray>("mode");
        QTest::addColumn<QString>("back");
        const QByteArray line = R"("type":"moveL","speed":80)";
        QTest::newRow("a little") << 1.9 << 1.9 << line << QByteArray("auto") << QString();
        QTest::newRow("away") << 2.1 << 0.0 << line << QByteArray("auto") << QString("0 move.l 0.08 0");
        QTest::newRow("turned") << 0.0 << 2.1 << line << QByteArray("auto") << QString("0 move.l 0.08 0");
        QTest::newRow("joints") << 5.0 << 0.0 << QByteArray(R"("type":"moveJ","speed":80)")
                                << QByteArray("auto") << QString("0 move.l 0.05 0");
        QTest::newRow("no speed") << 5.0 << 0.0 << QByteArray(R"("type":"delay","delaytime":3000)")
                                  << QByteArray("auto") << QString("0 move.l 0.05 0");
        QTest::newRow("not permitted") << 5.0 << 0.0 << line << QByteArray("manual") << QString();
    }

    void theToolWasMoved() {
        QFETCH(double, mm);
        QFETCH(double, degrees);
        QFETCH(QByteArray, fields);
        QFETCH(QByteArray, mode);
        QFETCH(QString, back);
        bench_.load(R"([{"type":"open","weldspeed":10},{)" + fields + R"(},{"type":"close"}])");
        bench_.at(600, [] { test::ExecutorBench::pause(); });
        bench_.run();
        bench_.settle();
        jog(mm, degrees);
        bench_.robot.setMode(mode);
        QCOMPARE(executor->outlook(1).goesBack, !back.isEmpty());
        QVERIFY(back.isEmpty() || std::abs(executor->outlook(1).distanceMm - mm) < 1e-6);
        bench_.run(1);
        QCOMPARE(bench_.robot.log().value(1), back.isEmpty() ? bench_.robot.log().value(1) : back);
        QCOMPARE(bench_.robot.log().contains("0 move.opr.enough"), !back.isEmpty() || mode == "manual");
        // It stands there before the gas comes on.
        QCOMPARE(bench_.robot.firstTime("GAS 1"), qint64(mode == "manual" ? -1 : back.isEmpty() ? 0 : 500));
    }

    void aStopAheadOfTheOpening_data() {
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("stopMs");
        QTest::newRow("in the delay before it") << 1 << 550;
        QTest::newRow("in its pre-flow") << 2 << 700;
        QTest::newRow("in its dwell") << 2 << 900;
        QTest::newRow("in the delay, which is removed") << -1 << 550;
    }

    /// The laser would light where somebody moved the tool to.
    void aStopAheadOfTheOpening() {
        QFETCH(int, line);
        QFETCH(int, stopMs);
        bench_.load(R"([{"type":"moveL"},{"type":"delay","delaytime":100},{"type":"open"},{"type":"moveL"},
                        {"type":"close"}])");
        bench_.at(stopMs, [] { test::ExecutorBench::pause(); });
        bench_.run();
        bench_.settle();
        QCOMPARE(bench_.resumeLine(), std::abs(line));
        if (line < 0) {
            m("lumo.program")->remove(this, "#1");
            line = 1;
        }
        jog(30);
        QVERIFY(executor->outlook(line).goesBack);
        bench_.run(line);
        QCOMPARE(bench_.robot.log().value(1), QString("0 move.l 0.05 0"));
        const bool delayed = line == 1 && m("lumo.program")->size() == 5;
        QCOMPARE(bench_.robot.firstTime("GAS 1"), qint64(delayed ? 600 : 500));
    }

    /// A seam that was gone over dark once is not taken up by a later start, from wherever that was stopped.
    void aResumeThatIsNotPermitted_leavesTheWeldBehind() {
        pauseInLine3();
        jog(60);
        bench_.robot.setMode("manual");
        bench_.at(200, [] { test::ExecutorBench::pause(); });
        bench_.run(3);
        bench_.settle();
        bench_.robot.setMode("auto");
        QVERIFY(!executor->outlook(bench_.resumeLine()).reopens);
        bench_.run(bench_.resumeLine());
        QVERIFY(!lit());
    }

    void aWayBackThatIsAnsweredTooEarly_opensNothing() {
        pauseInLine3();
        jog(60);
        bench_.robot.answersInside = true;
        bench_.run(3);
        bench_.settle();
        QVERIFY(!lit());
        QCOMPARE(bench_.boxes(), QStringList("机器人正在运行中"));
        QVERIFY(bench_.weldFlag());
    }

    void aStoppedStep_movesNoPausePoint_data() {
        QTest::addColumn<bool>("inWeld");
        QTest::newRow("of an open weld") << true;
        QTest::newRow("of a program that was stopped dark") << false;
    }

    void aStoppedStep_movesNoPausePoint() {
        QFETCH(bool, inWeld);
        pauseInLine3();
        m("lumo.current.openmiddlecolse")->setValue(this, inWeld);
        const QJsonValue stop = m("lumo.current.pausepoint")->exportToJson();
        jog(30);
        bench_.at(100, [] { test::ExecutorBench::pause(); });
        bench_.once(6);
        bench_.settle();
        QCOMPARE(m("lumo.current.pausepoint")->exportToJson(), stop);
    }

    void onTheWayBack_aStopLeavesTheResumeData_data() {
        QTest::addColumn<QByteArray>("how");
        for (const char* how : {"error", "pause", "power"}) {
            QTest::newRow(how) << QByteArray(how);
        }
    }

    void onTheWayBack_aStopLeavesTheResumeData() {
        QFETCH(QByteArray, how);
        pauseInLine3();
        const QJsonValue stop = m("lumo.current.pausepoint")->exportToJson();
        jog(30);
        if (how == "error") {
            bench_.robot.codes = {-9};
        } else {
            bench_.at(200, [how] {
                how == "pause" ? test::ExecutorBench::pause() : test::ScriptedRobot::setPower("off");
            });
        }
        bench_.run(3);
        bench_.settle();
        QVERIFY(!lit());
        QCOMPARE(bench_.boxes().size(), how == "error" ? 1 : 0);
        QCOMPARE(m("lumo.current.pausepoint")->exportToJson(), stop);
        test::ExecutorBench::pause();  // while idle
        QCOMPARE(m("lumo.current.pausepoint")->exportToJson(), stop);
        QVERIFY(bench_.weldFlag());
        bench_.robot.codes.clear();
        bench_.robot.setPower("on");
        bench_.run(bench_.resumeLine());
        // This robot fails when it has arrived.
        QCOMPARE(bench_.robot.firstTime("GAS 1"), qint64(how == "error" ? 0 : 500));
    }

    void whatIsLeftOfAnArc_data() {
        QTest::addColumn<bool>("whole");
        QTest::addColumn<double>("stop");    // degrees on the arc
        QTest::addColumn<double>("stands");  // at the resume
        QTest::addColumn<double>("via");     // -1: nothing is left, -2: all of it, dark
        QTest::addColumn<int>("legs");
        QTest::newRow("arc, past its intermediate point") << false << 60.0 << 60.0 << 75.0 << 1;
        QTest::newRow("arc, braked past the stop") << false << 30.0 << 31.0 << 60.5 << 1;
        QTest::newRow("arc, at its end") << false << 89.99 << 90.0 << -1.0 << 0;
        QTest::newRow("circle, first leg") << true << 20.0 << 20.0 << 70.0 << 3;
        QTest::newRow("circle, second leg") << true << 200.0 << 200.0 << 220.0 << 2;
        QTest::newRow("circle, last leg") << true << 300.0 << 300.0 << 330.0 << 1;
        QTest::newRow("circle, microns before a leg's end") << true << 119.98 << 119.98 << 179.99 << 2;
    }

    /// A quarter or a circle of 50 mm from (50, 0); the robot stands where the case says.
    void whatIsLeftOfAnArc() {
        QFETCH(bool, whole);
        QFETCH(double, stop);
        QFETCH(double, stands);
        QFETCH(double, via);
        const auto at = [](double degrees) {
            const double angle = degrees * 3.14159265358979 / 180;
            return QVector<double>{0.05 * std::cos(angle), 0.05 * std::sin(angle), 0};
        };
        const auto point = [at](double degrees) {
            return QString(R"({"trans":[%1,%2,0]})")
                .arg(at(degrees)[0], 0, 'g', 17)
                .arg(at(degrees)[1], 0, 'g', 17);
        };
        bench_.robot.standAt(at(0));
        bench_.load(
            QString(
                R"([{"type":"open","weldspeed":50},{"type":"%1","point":%2,"point1":%3},{"type":"close"}])")
                .arg(whole ? "moveCC" : "moveC", point(whole ? 120 : 45), point(whole ? 240 : 90))
                .toUtf8());
        bench_.robot.motionMs = 100000;
        // At 1 rad/s, from 400 ms on, it has come at most that far.
        bench_.at(500 + int(stop * 20), [this, at, stop] {
            bench_.robot.standAt(at(stop));
            test::ExecutorBench::pause();
        });
        bench_.run();
        bench_.settle();
        bench_.robot.standAt(at(stands));
        bench_.robot.motionMs = 500;
        arcs_.clear();
        bench_.run(1);
        QVERIFY(lit());
        if (via == -1) {
            QCOMPARE(arcs_.size(), 0);
            return;
        }
        QCOMPARE(arcs_.size(), 1);
        const QJsonArray path = whole ? arcs_[0].value("path").toArray() : QJsonArray{arcs_[0]};
        QTEST(path.size(), "legs");
        const QJsonArray half = path.first().toObject().value("aux").toObject().value("trans").toArray();
        QVERIFY2(std::abs(half.at(0).toDouble() - at(via)[0]) < 1e-6 &&
                     std::abs(half.at(1).toDouble() - at(via)[1]) < 1e-6,
                 QJsonDocument(half).toJson());
        const QJsonArray end = path.last().toObject().value("point").toObject().value("trans").toArray();
        QVERIFY(std::abs(end.at(0).toDouble() - at(whole ? 0 : 90)[0]) < 1e-9);
    }

    void anArcThatCannotBeTakenUp_runsWholeAndDark_data() {
        QTest::addColumn<bool>("taught");
        QTest::newRow("the points were changed") << true;
        QTest::newRow("the tool does not lie on it") << false;
    }

    void anArcThatCannotBeTakenUp_runsWholeAndDark() {
        QFETCH(bool, taught);
        bench_.robot.standAt({0.05, 0, 0});
        bench_.load(R"([{"type":"open"},{"type":"moveC","point":{"trans":[0.035355,0.035355,0]},
                        "point1":{"trans":[0,0.05,0]}},{"type":"close"}])");
        bench_.at(500, [this, taught] {
            bench_.robot.standAt({0.0433, taught ? 0.025 : 0.05, 0});
            test::ExecutorBench::pause();
        });
        bench_.run();
        bench_.settle();
        if (taught) {
            m("lumo.program.#1.point1.trans.#2")->setValue(this, 0.001);
        }
        bench_.run(1);
        QVERIFY(!lit());
        QVERIFY(!bench_.weldFlag());
        QCOMPARE(arcs_.size(), 2);
        QCOMPARE(arcs_[1].value("aux"), arcs_[0].value("aux"));
    }

    void litByHand_goesOff_data() {
        QTest::addColumn<QByteArray>("what");
        for (const char* what : {"power", "start", "once"}) {
            QTest::newRow(what) << QByteArray(what);
        }
    }

    void litByHand_goesOff() {
        QFETCH(QByteArray, what);
        bench_.load(R"([{"type":"moveL"}])");
        for (const I_PORT device : {DO_LASER_ENABLE, DO_RED_LIGHT, DO_WIRE_ENABLE, DO_GAS}) {
            lumo::noteByHand(device, true);
        }
        bench_.robot.mark();
        if (what == "power") {
            test::ScriptedRobot::setPower("off");
        } else if (what == "start") {
            bench_.run();
        } else {
            bench_.once(0);
        }
        QStringList off{"WIRE 0", "SPEED 0", "POWER 0", "LASER 0", "DUTY 0", "FREQ 0", "RED 0", "GAS 0"};
        off.replaceInStrings(QRegularExpression("^"), "0 ");
        const int first = what == "power" ? 0 : 1;  // behind "move.reset"
        QVERIFY(sameLog(bench_.robot.log().mid(first, off.size()), off));
        QVERIFY(!executor->litByHand());
    }

    void whatAHandSwitchesOffInAPulsedWeld_staysOff() {
        bench_.setParam("open_time", 100);
        bench_.setParam("open_interval", 100);
        bench_.load(R"([{"type":"open"},{"type":"delay","delaytime":1000},{"type":"close"},
                        {"type":"open"},{"type":"close"}])");
        // A lock is released: its device goes off first, here in a gap.
        bench_.at(550, [] {
            lumo::noteByHand(DO_LASER_ENABLE, false);
            lumo::noteByHand(DO_WIRE_ENABLE, false);
        });
        bench_.run();
        QCOMPARE(bench_.robot.logBetween(550, 2000).filter(QRegularExpression("(LASER|WIRE) 1")),
                 QStringList());
        QVERIFY(!bench_.robot.logBetween(2000, 9999).filter("LASER 1").isEmpty());  // the next seam
    }

    void aStartWhileTheApplicationQuits_startsNothing() {
        loadWeld();
        bool quit = false;
        const auto quits =
            connect(m("lumo.execute.state"), &ModuleObject::changed, this, [&](const QVariant& state) {
                if (state.toString() == "idle" && quit) {
                    test::ExecutorBench::trigger("start", 0);
                }
            });
        bench_.at(1600, [&quit] {
            quit = true;
            QMetaObject::invokeMethod(QCoreApplication::instance(), "aboutToQuit");
        });
        bench_.run();
        disconnect(quits);
        QCOMPARE(bench_.robot.log().filter("move.reset").size(), 1);
        QCOMPARE(bench_.state(), QString("idle"));
        bench_.time.advance(1);
    }

    /// Last: it ends the package's subtree, whose ports must still be there when the executor switches off.
    void theEndOfTheSubtree_shutsDown() {
        loadWeld();
        bench_.at(1600, [] { m()->root()->remove(nullptr, "lumo"); });
        bench_.run();
        QCOMPARE(bench_.robot.offSince("LASER"), qint64(1600));
        QCOMPARE(bench_.robot.offSince("GAS"), qint64(1600));
    }
};

LUMO_TEST_MAIN(TestResume)
#include "test_resume.moc"
