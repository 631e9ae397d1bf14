// What reaches the robot service of a backend that keeps the rules, and of one that does not.

#include "fakes.h"
#include "support/suite.h"

using namespace test;
using bridge::Rule;

class TestAdapter : public QObject {
    Q_OBJECT
private:
    static QString rule(Rule rule, int id) { return QString("%1:%2").arg(int(rule)).arg(id); }
    /// Results only.
    static QString results(Cell* cell) {
        const QStringList all = cell->take().split(", ").filter("move.l");
        return all.join(", ");
    }

private slots:
    void postureStateAndResult_comeInThatOrder() {
        Cell cell;
        cell.lines(2);
        QCOMPARE(cell.take(), QString());
        QCOMPARE(cell.controller.takeCalls(), QStringList());  // nothing before the release
        cell.order("move.opr.enough");
        QCOMPARE(cell.controller.takeCalls(), QStringList({"queue 1", "queue 2", "release"}));
        QCOMPARE(cell.take(), "moving");
        cell.controller.tellMoving(true);
        cell.controller.tellPosture(0.55);
        cell.controller.tell(1);
        QCOMPARE(cell.take(), "at 0.55, move.l 0");
        cell.advance(10);
        cell.controller.tellPosture(0.6);
        cell.controller.tellMoving(false);
        cell.controller.tell(2);
        QCOMPARE(cell.take(), "at 0.6, idle, move.l 0");
        QCOMPARE(cell.violations, QStringList());
        const double nowMs = double(mendo::Clock::current().elapsedMs());
        QCOMPARE(cell.adapter.postureMs(), nowMs);
        emit cell.controller.postureChanged({{{0.6, 0, 0.4}, {}}, bridge::Joints(6), 2.5});
        QCOMPARE(cell.adapter.postureMs(), nowMs - 2.5);
    }

    void aMisbehavingBackend_isNamedAndItsResultsAreKeptFromThePackage() {
        Cell cell;
        cell.lines(3);
        cell.controller.tell(1);  // before the release
        cell.order("move.opr.enough");
        cell.controller.tellMoving(true);
        cell.controller.tell(7);
        QCOMPARE(results(&cell), QString());
        cell.controller.tellPosture(0.6);
        cell.controller.tell(2);  // before the first
        QCOMPARE(results(&cell), QString());
        cell.controller.tell(1);  // in the same millisecond, without a posture
        QCOMPARE(results(&cell), "move.l 0");
        cell.advance(1);
        QCOMPARE(results(&cell), "move.l 0");
        cell.controller.tellPosture(0.6);
        cell.controller.tell(2);  // again
        cell.advance(5);
        cell.controller.tellPosture(0.6);
        cell.controller.tell(3);  // while it tells that the arm moves
        QCOMPARE(results(&cell), QString());
        cell.controller.tellMoving(false);
        QCOMPARE(results(&cell), "move.l 0");
        const QStringList expected = {rule(Rule::EarlyResult, 1),     rule(Rule::UnknownResult, 7),
                                      rule(Rule::ResultOrder, 2),     rule(Rule::ResultsTogether, 2),
                                      rule(Rule::ResultsTogether, 1), rule(Rule::PostureMissing, 1),
                                      rule(Rule::SecondResult, 2),    rule(Rule::LateState, 3)};
        QCOMPARE(cell.violations, expected);
    }

    void withoutRepair_everythingIsHandedOnAsItComes() {
        Cell cell(false);
        cell.lines(2);
        cell.order("move.opr.enough");
        cell.controller.tell(2);
        cell.controller.tell(2);
        cell.controller.tell(1);
        QCOMPARE(results(&cell), "move.l 0, move.l 0, move.l 0");
        QVERIFY(cell.violations.contains(rule(Rule::SecondResult, 2)));
    }

    void aResultInsideTheRelease_comesAfterIt() {
        Cell cell;
        cell.controller.finishesInRelease = true;
        cell.line(0.5);
        cell.order("move.opr.enough");
        QCOMPARE(results(&cell), QString());
        cell.advance(2);
        QCOMPARE(results(&cell), "move.l 0");
        QCOMPARE(m("kord.r.state")->getString(), "idle");
    }

    void stop_dropsResultsAndTellsIdleWhenTheArmStands() {
        Cell cell;
        cell.lines(2);
        cell.order("move.opr.enough");
        cell.controller.tellMoving(true);
        cell.take();
        cell.order("move.stop");
        QCOMPARE(cell.controller.takeCalls().last(), "stop");
        cell.controller.tell(1);
        cell.controller.tell(2);
        cell.advance(5);
        QCOMPARE(cell.take(), QString());
        cell.controller.tellMoving(false);
        QCOMPARE(cell.take(), "idle");
        QCOMPARE(cell.violations, QStringList({rule(Rule::StoppedResult, 1), rule(Rule::StoppedResult, 2)}));
        // Stopped before the backend has told that it moves: it tells the standstill all the same.
        cell.lines(1);
        cell.order("move.opr.enough");
        cell.order("move.stop");
        QCOMPARE(m("kord.r.state")->getString(), "moving");
        cell.controller.tellMoving(false);
        QCOMPARE(m("kord.r.state")->getString(), "idle");
    }

    void whatCannotBeMade_isAnsweredByTheAdapterAtItsTurn() {
        Cell cell;
        cell.line(0.6);
        cell.line(0.7, 0);  // no speed
        cell.line(0.8);
        cell.order("move.opr.enough");
        QCOMPARE(cell.controller.takeCalls(), QStringList({"queue 1", "release"}));
        cell.controller.tellMoving(true);
        cell.advance(50);
        QCOMPARE(results(&cell), QString());
        cell.controller.tellPosture(0.6);
        cell.controller.tellMoving(false);
        cell.controller.tell(1);
        cell.advance(5);
        QCOMPARE(results(&cell), "move.l 0, move.l -5");
        cell.controller.tellPower(false);
        cell.lines(2);
        cell.order("move.opr.enough");
        cell.advance(5);
        QCOMPARE(results(&cell), "move.l -4");
        QCOMPARE(cell.controller.takeCalls(), QStringList());
        QCOMPARE(m("kord.r.state")->getString(), "idle");
    }

    void aFailure_dropsWhatComesBehind() {
        Cell cell;
        cell.lines(3);
        cell.order("move.opr.enough");
        cell.lines(1);  // waits
        cell.controller.tellMoving(true);
        cell.controller.tellPosture(0.6);
        cell.controller.tell(1);
        cell.advance(5);
        cell.controller.tellPosture(0.6);
        cell.controller.tellMoving(false);
        cell.controller.tell(2, -1);
        cell.controller.takeCalls();
        cell.order("move.opr.enough");
        cell.advance(50);
        QCOMPARE(results(&cell), "move.l 0, move.l -1");
        QCOMPARE(cell.controller.takeCalls(), QStringList());
        QVERIFY(cell.adapter.standsStill());
    }

    void aLostLink_isALossOfPowerUntilAnOperatorSwitchesOn() {
        Cell cell;
        cell.lines(1);
        cell.order("move.opr.enough");
        cell.controller.tellMoving(true);
        cell.take();
        cell.controller.tellLink(false, QString("no answer"));
        QCOMPARE(cell.take(), "off, unknown, idle");
        QVERIFY(!cell.adapter.isLinked());
        QCOMPARE(cell.adapter.linkReason().text(), "no answer");
        cell.controller.tell(1);
        cell.controller.takeCalls();
        cell.order("move.stop");
        cell.write("LUMO_DO", 0, 1);
        QCOMPARE(cell.controller.takeCalls(), QStringList());
        QCOMPARE(cell.take(), "rejected LUMO_DO.#0: no connection: no answer, register.write -1");
        // Back, with drives that were never off.
        cell.controller.comeUp();
        QVERIFY(cell.take().contains("auto") && m("kord.r.power")->getString() == "off");
        QCOMPARE(cell.controller.takeCalls(), QStringList("off"));
        QVERIFY(cell.adapter.isPowerHeld());
        cell.adapter.setPower(true);
        QCOMPARE(cell.take(), "on");
        // Or switched off and on at the controller.
        cell.controller.tellLink(false, QString("no answer"));
        cell.controller.comeUp();
        cell.controller.tellPower(false);
        QCOMPARE(m("kord.r.power")->getString(), "off");
        cell.controller.tellPower(true);
        QCOMPARE(m("kord.r.power")->getString(), "on");
    }

    void aLostDevice_stopsTheRobotToo() {
        FakePort device({{FakePort::Row::Kind::Register, "LUMO_DO", "bit", true, 2}});
        Cell cell(true, &device);
        QCOMPARE(m("kord.r.power")->getString(), "off");  // the device cannot be reached yet
        emit device.linkChanged(true, {});
        QCOMPARE(m("kord.r.power")->getString(), "on");
        cell.lines(1);
        cell.order("move.opr.enough");
        cell.controller.takeCalls();
        emit device.linkChanged(false, QString("cable"));
        QCOMPARE(cell.controller.takeCalls(), QStringList({"stop", "off"}));
        QCOMPARE(m("kord.r.power")->getString(), "off");
        QVERIFY(cell.adapter.isLinked(bridge::LinkEnd::Robot) &&
                !cell.adapter.isLinked(bridge::LinkEnd::Device));
        QCOMPARE(cell.adapter.linkReason().text(), "cable");
        cell.take();
        cell.write("LUMO_AO_1", 0, 5);  // of the controller, which can be reached
        QCOMPARE(cell.take(), "register.write 0");
    }

    void aLossOfPower_endsAllMotionsAndTheStateWithThem() {
        Cell cell;
        cell.lines(2);
        cell.order("move.opr.enough");
        cell.controller.tellMoving(true);
        cell.take();
        cell.controller.tellMoving(false);  // it stands before it tells why
        cell.controller.tellPower(false);
        QCOMPARE(cell.take(), "idle, off");
        cell.controller.tell(1);
        cell.advance(5);
        QCOMPARE(cell.take(), QString());
    }

    void theToolset_isSentAgainWhenTheLinkIsBack() {
        Cell cell;
        mendo::ModuleObject toolset("tmp");
        toolset.loadJson(this, QJsonObject{{"end", QJsonObject{{"name", "torch"}}}});
        kordservice()->set(this, "pel.coord.toolset", &toolset);
        QCOMPARE(cell.controller.takeCalls(), QStringList("tool torch"));
        cell.controller.tellLink(false, QString("cable"));
        cell.controller.takeCalls();
        cell.controller.comeUp();
        QVERIFY(cell.controller.takeCalls().contains("tool torch"));
    }
};

LUMO_TEST(TestAdapter)
#include "test_adapter.moc"
