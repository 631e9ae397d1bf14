// The controller's nodes, registers and results, and the weld cell at its outputs.

#include "robot.h"
#include "simulator/cell.h"
#include "support/suite.h"
#include "support/text.h"

using namespace test;
using mendo::ModuleObject;
using sim::Controller;

class TestController : public QObject {
    Q_OBJECT
private:
    static QVariantHash record(const char* name, const char* type, const QVariant& value, int bias) {
        return {{"name", name}, {"type", type}, {"value", value}, {"bias", bias}};
    }

    /// Equipment signals, then milliseconds of laser, gas and wire.
    static QString report(const Robot& robot, const sim::Cell& cell) {
        QString text;
        for (int i = 0; i < 6; ++i) {
            text += robot.controller.input(QString("LUMO_DI.#%1").arg(i)) ? '1' : '0';
        }
        return text + QString(" %1 %2 %3").arg(cell.laserOnMs()).arg(cell.gasOnMs()).arg(cell.wireOnMs());
    }

private slots:
    void cleanup() { QCOMPARE(sim::VirtualTime::instance()->armedTimers(), 0); }

    void write_isShownInTheNodeBeforeTheCallReturns_orRejected() {
        const std::vector<std::pair<QVariantHash, const char*>> rows = {
            {record("LUMO_DO", "bit", 1, 3), "LUMO_DO.#3=true"},
            {record("LUMO_DO", "", 1, 0), "LUMO_DO.#0=true"},
            {record("LUMO_DO", "bit", 0, 3), ""},
            {record("LUMO_AO_1", "int16", -32768, 0), "LUMO_AO_1=-32768"},
            {record("PART_COUNT", "int", 70000, 1), "PART_COUNT.#1=70000"},
            {record("DO2_3", "bit", 1, 0), "rejected DO2_3: no such register"},
            {record("LUMO_DO", "bit", 1, 16), "rejected LUMO_DO: no element 16, length is 16"},
            {record("LUMO_DO", "bit", 1, -1), "rejected LUMO_DO: no element -1, length is 16"},
            {record("LUMO_DI", "bit", 1, 0), "rejected LUMO_DI: read-only register"},
            {record("LUMO_AO_1", "bit", 1, 0),
             "rejected LUMO_AO_1: type bit does not fit a register of type int16"},
            {record("LUMO_AO_1", "int16", 32768, 0), "rejected LUMO_AO_1: value does not fit type int16"},
            {record("LUMO_DO", "bit", QVariant(), 0), "rejected LUMO_DO: value does not fit type bit"},
        };
        const ModuleObject* const shown = kordservice()->dataNode("register.values");
        for (const auto& [fields, expected] : rows) {
            const bool rejected = QString(expected).startsWith("rejected");
            const QString path = fields["name"].toString() + ".#" + fields["bias"].toString();
            for (const bool byNode : {false, true}) {
                Robot robot;
                connect(&robot.controller, &Controller::outputChanged, this,
                        [&](auto, const QVariant& value) { QCOMPARE(shown->r(path)->value(), value); });
                ModuleObject node;
                for (auto field = fields.begin(); byNode && field != fields.end(); ++field) {
                    node.set(this, field.key(), field.value());
                }
                if (byNode) {
                    kordservice()->command(this, "register.write", &node);
                } else {
                    kordservice()->execCommand(this, "register.write", fields);
                }
                QCOMPARE(robot.lines.join('|'), expected[0] ? QString("0 ") + expected : QString());
                QCOMPARE(kordservice()->commandNode("register.write")->getInt(1), rejected ? -1 : 0);
            }
        }
        // In a batch, only the wrong record is rejected.
        Robot robot;
        kordservice()->command(this, "register.write_multi",
                               QVariantList{record("LUMO_AO_1", "", 5, 0), record("LUMO_DO", "", 1, 20),
                                            record("LUMO_DO", "", 1, 3)});
        QCOMPARE(robot.log(),
                 "0 LUMO_AO_1=5, 0 rejected LUMO_DO: no element 20, length is 16, 0 LUMO_DO.#3=true");
        QCOMPARE(kordservice()->commandNode("register.write_multi")->getInt(), -1);
    }

    void toolsAndWorkObjects_exist() {
        const Robot robot;
        QVERIFY(m("rova.project.tool._list")->size() > 0 && m("rova.project.wobj._list")->size() > 0);
    }

    void deviceSignals_areSwitchedByNameAndReportedWhenTheyChange() {
        Robot robot;
        for (const char* name : {"DO3", "DO17", "DI3", "LUMO_DO.#3"}) {
            kordservice()->command(nullptr, "device.io.out.do", QVariantHash{{"name", name}, {"value", 1}});
        }
        kordservice()->command(nullptr, "device.io.out.do", QVariantHash{{"name", "DO4"}});
        for (const char* name : {"DI3", "DI3", "LUMO_DI.#2"}) {
            QVERIFY(robot.controller.setInput(name, true));
        }
        for (const char* wrong : {"DI0", "LUMO_DI", "LUMO_DI.#16", "DO1", "LUMO_DO.#1", "PART_NUMBER"}) {
            QVERIFY2(!robot.controller.setInput(wrong, true), wrong);
        }
        QCOMPARE(robot.log(),
                 "0 DO3=true, 0 rejected DO17: no such output, 0 rejected DI3: no such output, "
                 "0 rejected LUMO_DO.#3: no such output, 0 rejected DO4: value is no switch state, "
                 "0 DI3=true, 0 LUMO_DI.#2=true");
        for (const char* path : {"device.io.DO.DO3", "device.io.DI.DI3", "register.values.LUMO_DI.#2"}) {
            QVERIFY2(kordservice()->dataNode(path)->getBool(), path);
        }
        QVERIFY(robot.controller.input("LUMO_DI.#2") && !robot.controller.input("LUMO_DI.#3"));
    }

    void laser_emitsOnlyEnabledWithPowerAndWithoutFaults() {
        Robot robot;
        sim::Cell cell(&robot.controller, {"", "", "", "LUMO_DO.#3", "LUMO_AO_1", ""});
        robot.write("LUMO_AO_1", 16384);
        QCOMPARE(report(robot, cell), "111110 0 0 0");
        robot.write("LUMO_DO", 1, 3);
        for (const QString fault :
             {"011110 laser", "101110 head", "110110 chiller", "111011 gas", "111101 temperature"}) {
            QVERIFY(cell.emitting() && cell.setFault(fault.mid(7), true));
            QCOMPARE(report(robot, cell).left(6), fault.left(6));
            QCOMPARE(cell.emitting(), fault[5] == '1');
            QVERIFY(cell.setFault(fault.mid(7), false));
        }
        QVERIFY(!cell.setFault("welding", true));
        for (const int power : {0, -1, 1}) {
            robot.write("LUMO_AO_1", power);
            QCOMPARE(cell.emitting(), power > 0);
        }
        robot.write("LUMO_DO", 0, 3);
        QCOMPARE(report(robot, cell), "111110 0 0 0");
    }

    void timesAndWeldLength_addUpIncludingTheCurrentPeriod() {
        Robot robot;
        const sim::Cell cell(&robot.controller,
                             {"LUMO_DO.#0", "LUMO_DO.#2", "LUMO_DO.#8", "LUMO_DO.#3", "LUMO_AO_1", ""});
        robot.write("LUMO_AO_1", 1);
        robot.line({0.7, 0, 0.4}, 0.1);
        robot.order("move.opr.enough");
        robot.advance(1000);
        // Bits: 0 gas, 2 wire, 3 laser, 8 wire pull-back. Each step takes 100 ms, the tool moves 10 mm.
        const int steps[][2] = {{0, 1}, {3, 1}, {2, 1}, {8, 1}, {2, 0}, {8, 0}, {3, 0}, {0, 0}, {3, 1}};
        for (const auto& [bit, on] : steps) {
            robot.write("LUMO_DO", on, bit);
            robot.advance(100);
        }
        QCOMPARE(report(robot, cell), "111111 600 700 300");
        QVERIFY(std::abs(cell.weldLength() - 0.06) < 1e-9);
        robot.write("LUMO_DO", 0, 3);
        robot.log();
        QVERIFY(std::abs(cell.weldLength() - 0.06) < 1e-9);
    }
};

LUMO_TEST(TestController)
#include "test_controller.moc"
