#include "simulator/cell.h"

#include "robot.h"
#include "support/suite.h"

namespace {

/// A cell behind a controller, with its gas on bit 0, wire on 2 and 8, laser on 3.
class WeldCell : public test::Robot {
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

class TestCell : public QObject {
    Q_OBJECT
private slots:
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

LUMO_TEST(TestCell)
#include "test_cell.moc"
