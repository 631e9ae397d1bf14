// The controller's nodes, registers, results and quirks, and the weld cell behind its outputs.

#include "robot.h"
#include "simulator/cell.h"
#include "support/suite.h"
#include "support/text.h"

#include <QSignalSpy>

using namespace test;
using mendo::ModuleObject;
using sim::Controller;
using sim::Quirk;

namespace {

/// A cell behind a controller, with its gas on bit 0, wire on 2 and 8, laser on 3.
class WeldCell : public Robot {
public:
    explicit WeldCell(bool wired = true) : cell(&controller, wired ? kWiring : sim::Wiring{}) {}

    /// Equipment signals, then milliseconds of laser, gas and wire.
    QString report() const {
        QString text;
        for (int i = 0; i < 6; ++i)
            text += controller.input(QString("LUMO_DI.#%1").arg(i)) ? '1' : '0';
        return text + QString(" %1 %2 %3").arg(cell.laserOnMs()).arg(cell.gasOnMs()).arg(cell.wireOnMs());
    }

    const sim::Wiring kWiring = {"LUMO_DO.#0", "LUMO_DO.#2", "LUMO_DO.#8",
                                 "LUMO_DO.#3", "LUMO_AO_1",  "LUMO_AO_0"};
    sim::Cell cell;
};

}  // namespace

class TestController : public QObject {
    Q_OBJECT
private:
    static QVariantHash record(const char* name, const char* type, const QVariant& value, int bias) {
        return {{"name", name}, {"type", type}, {"value", value}, {"bias", bias}};
    }

private slots:
    void cleanup() { QCOMPARE(sim::VirtualTime::instance()->armedTimers(), 0); }

    void write_isThereWhenTheCallReturnsOrIsRejected() {
        const std::vector<std::pair<QVariantHash, const char*>> rows = {
            {record("LUMO_DO", "bit", 1, 3), "LUMO_DO.#3=true"},
            {record("LUMO_DO", "bool", true, 15), "LUMO_DO.#15=true"},
            {record("LUMO_DO", "", 1, 0), "LUMO_DO.#0=true"},
            {record("LUMO_DO", "bit", 0, 3), ""},
            {record("LUMO_AO_1", "int16", 1638, 0), "LUMO_AO_1=1638"},
            {record("LUMO_AO_1", "int16", -32768, 0), "LUMO_AO_1=-32768"},
            {record("PART_COUNT", "int", 70000, 1), "PART_COUNT.#1=70000"},
            {record("DO2_3", "bit", 1, 0), "rejected DO2_3: no such register"},
            {record("", "bit", 1, 0), "rejected : no such register"},
            {record("LUMO_DO", "bit", 1, 16), "rejected LUMO_DO: no element 16, length is 16"},
            {record("LUMO_DO", "bit", 1, -1), "rejected LUMO_DO: no element -1, length is 16"},
            {record("LUMO_DI", "bit", 1, 0), "rejected LUMO_DI: read-only register"},
            {record("LUMO_AO_1", "bit", 1, 0),
             "rejected LUMO_AO_1: type bit does not fit a register of type int16"},
            {record("LUMO_AO_1", "int16", 32768, 0), "rejected LUMO_AO_1: value does not fit type int16"},
            {record("LUMO_DO", "bit", QVariant(), 0), "rejected LUMO_DO: value does not fit type bit"},
        };
        for (const auto& [fields, heard] : rows) {
            const bool rejected = QString(heard).startsWith("rejected");
            const QString path =
                mName("register.values", fields["name"].toString(), mIndex(fields["bias"].toInt()));
            for (const bool byNode : {false, true}) {
                Robot robot;
                connect(&robot.controller, &Controller::outputChanged, this,
                        [&](auto, const QVariant& value) {
                            QCOMPARE(kordservice()->dataNode(path)->value(), value);
                        });
                ModuleObject node;
                for (auto field = fields.begin(); byNode && field != fields.end(); ++field)
                    node.set(this, field.key(), field.value());
                if (byNode)
                    kordservice()->command(this, "register.write", &node);
                else
                    kordservice()->execCommand(this, "register.write", fields);
                QCOMPARE(robot.lines.join('|'), heard[0] ? QString("0 ") + heard : QString());
                QCOMPARE(kordservice()->commandNode("register.write")->getInt(1), rejected ? -1 : 0);
            }
        }
        // A wrong record is left out of its batch alone; without the command there is none.
        const QVariantList batch = {record("LUMO_AO_1", "", 5, 0), record("LUMO_DO", "", 1, 20),
                                    record("LUMO_DO", "", 1, 3)};
        for (const bool offered : {false, true}) {
            Robot robot({6, offered});
            kordservice()->command(this, "register.write_multi", batch);
            QCOMPARE(robot.diary(),
                     offered
                         ? "0 LUMO_AO_1=5, 0 rejected LUMO_DO: no element 20, length is 16, 0 LUMO_DO.#3=true"
                         : "0 rejected register.write_multi: no such command");
        }
        QCOMPARE(kordservice()->commandNode("register.write_multi")->getInt(), -1);
    }

    void deviceSignals_areSwitchedByNameAndAnnouncedWhenTheyChange() {
        Robot robot;
        for (const char* name : {"DO3", "DO17", "DI3", "LUMO_DO.#3"})
            kordservice()->command(nullptr, "device.io.out.do", QVariantHash{{"name", name}, {"value", 1}});
        kordservice()->command(nullptr, "device.io.out.do", QVariantHash{{"name", "DO4"}});
        for (const char* name : {"DI3", "DI3", "LUMO_DI.#2"})
            QVERIFY(robot.controller.setInput(name, true));
        for (const char* wrong :
             {"DI0", "DI17", "LUMO_DI", "LUMO_DI.#16", "DO1", "LUMO_DO.#1", "PART_NUMBER", ""})
            QVERIFY2(!robot.controller.setInput(wrong, true), wrong);
        QCOMPARE(robot.diary(),
                 "0 DO3=true, 0 rejected DO17: no such output, 0 rejected DI3: no such output, "
                 "0 rejected LUMO_DO.#3: no such output, 0 rejected DO4: value is no switch state, "
                 "0 DI3=true, 0 LUMO_DI.#2=true");
        for (const char* path : {"device.io.DO.DO3", "device.io.DI.DI3", "register.values.LUMO_DI.#2"})
            QVERIFY2(kordservice()->dataNode(path)->getBool(), path);
        QVERIFY(robot.controller.input("LUMO_DI.#2") && !robot.controller.input("LUMO_DI.#3"));
    }

    void senselessMotion_isAnswered() {
        const std::vector<std::tuple<const char*, QVariant, int>> rows = {
            {"traj.speed", QVariant(), -5}, {"traj.speed", -0.1, -5},
            {"traj.speed", "fast", -5},     {"point.trans.#1", QVariant(), -6},
            {"point.rot.#2", "x", -6},      {"traj.zone", QVariant(), 0},
            {"traj.speed", "0.1", 0}};
        for (const auto& [spoilt, value, code] : rows) {
            Robot robot;
            ModuleObject arguments("tmp");
            arguments.loadJson(this, QJsonObject{{"point", Robot::pose({0.55, 0, 0.4})}});
            arguments.set(this, "traj.speed", 0.1)->set(this, "traj.zone", 0.001)->set(this, spoilt, value);
            kordservice()->command(this, "move.l", &arguments);
            QVERIFY2(robot.play("go").contains(QString("result move.l 1 %1 ").arg(code)), spoilt);
        }
    }

    void result_findsThePostureWrittenAndMayRunAnEventLoop() {
        Robot robot;
        QSignalSpy moved(&robot.controller, &Controller::postureMoved);
        QStringList found;
        connect(kordservice()->commandNode("move.l"), &ModuleObject::changed, &robot, [&] {
            found << m("kord.r.state")->getString() + robot.posture("trans.#0")->getString();
            if (found.size() == 1)
                robot.advance(5000);
        });
        robot.play("line 10 0; line 20 0; line 30 0; go");
        QCOMPARE(found.join(' '), "moving0.51 moving0.52 idle0.53");
        QCOMPARE(moved.count(), 44);
    }

    void quirks_misbehaveAsTheyAreCalled() {
        // Three motions of 150 ms each.
        const QHash<QString, QString> rows = {
            {"", "150 1, 300 2, 450 idle, 450 3"},
            {"bunch", "300 1, 300 2, 450 idle, 450 3"},
            {"sync", "450 idle"},
            {"late", "150 1, 300 2, 450 idle, 450 3"},
            {"double", "150 1, 151 1, 300 2, 301 2, 450 idle, 450 3, 451 3"},
            {"wrongKind", "150 c1, 300 c2, 450 idle, 450 c3"},
            {"slowState", "150 1, 300 2, 450 3, 500 idle"},
            {"noResult", "300 2, 450 idle, 450 3"},
            {"failAtEnd", "150 idle, 150 1"}};
        for (auto row = rows.begin(); row != rows.end(); ++row) {
            Robot robot;
            Quirk quirk = Quirk::Bunch;
            QCOMPARE(Controller::quirkFromName(row.key(), &quirk), !row.key().isEmpty());
            if (!row.key().isEmpty())
                robot.controller.setQuirk(quirk, true);
            robot.play("line 10 0; line 20 0; line 30 0; wait 10; mark; go");
            QStringList heard = robot.lines.filter(QRegularExpression("result|idle"));
            heard.replaceInStrings(QRegularExpression("result move\\.(l|(c)) (\\d) -?\\d"), "\\2\\3");
            QCOMPARE(heard.join(", "), row.value());
        }
    }

    void laser_emitsWhenEnabledWithPowerAndNothingItNeedsIsFaulty() {
        WeldCell robot;
        robot.write("LUMO_AO_1", 16384);
        QCOMPARE(robot.report(), "111110 0 0 0");
        robot.write("LUMO_DO", 1, 3);
        const QHash<QString, QString> faults = {{"laser", "011110"},
                                                {"head", "101110"},
                                                {"chiller", "110110"},
                                                {"gas", "111011"},
                                                {"temperature", "111101"}};
        for (auto fault = faults.begin(); fault != faults.end(); ++fault) {
            QVERIFY(robot.cell.emitting() && robot.cell.setFault(fault.key(), true));
            QCOMPARE(robot.report().left(6), fault.value());
            QCOMPARE(robot.cell.emitting(), fault.value().endsWith('1'));
            QVERIFY(robot.cell.setFault(fault.key(), false));
            QCOMPARE(robot.report().left(6), "111111");
        }
        QVERIFY(!robot.cell.setFault("welding", true));
        for (const int power : {0, -1, 1}) {
            robot.write("LUMO_AO_1", power);
            QCOMPARE(robot.cell.emitting(), power > 0);
        }
        robot.write("LUMO_DO", 0, 3);
        QCOMPARE(robot.report(), "111110 0 0 0");
    }

    void timesAndWeldedWay_addUpAndCountTheOneUnderWay() {
        WeldCell robot, unwired(false);
        robot.line({0.7, 0, 0.4}, 0.1);
        robot.order("move.opr.enough");
        robot.advance(1000);
        // Wire is fed or pulled back; each step takes 100 ms, in which the tool goes 10 mm.
        for (const auto& [bit, on] : std::vector<std::pair<int, bool>>{
                 {0, 1}, {3, 1}, {2, 1}, {8, 1}, {2, 0}, {8, 0}, {3, 0}, {0, 0}, {3, 1}}) {
            for (WeldCell* each : {&robot, &unwired}) {
                each->write("LUMO_AO_1", 1);
                each->write("LUMO_DO", on, bit);
            }
            robot.advance(100);
        }
        QCOMPARE(robot.report(), "111111 600 700 300");
        QCOMPARE(unwired.report(), "111110 0 0 0");
        QVERIFY(std::abs(robot.cell.weldLength() - 0.06) < 1e-9);
        robot.write("LUMO_DO", 0, 3);
        robot.diary();
        QVERIFY(std::abs(robot.cell.weldLength() - 0.06) < 1e-9);
    }
};

LUMO_TEST(TestController)
#include "test_controller.moc"
