#include "controllerfixture.h"
#include "simulator/cell.h"
#include "virtualmain.h"

#include <cmath>

using sim::Cell;
using sim::Wiring;

namespace {

/// A wired cell behind a controller.
class CellFixture : public ControllerFixture {
public:
    explicit CellFixture(const Wiring& wiring = wired()) : cell(&controller, wiring) { start(); }

    static Wiring wired() {
        return {QStringLiteral("LUMO_DO.#0"), QStringLiteral("LUMO_DO.#2"), QStringLiteral("LUMO_DO.#8"),
                QStringLiteral("LUMO_DO.#3"), QStringLiteral("LUMO_AO_1"),  QStringLiteral("LUMO_AO_0")};
    }
    void bit(int number, bool on) {
        writeRegister(QStringLiteral("LUMO_DO"), QStringLiteral("bit"), on, number);
    }
    void power(int value) { writeRegister(QStringLiteral("LUMO_AO_1"), QStringLiteral("int16"), value, 0); }
    void laser(bool on) {
        power(on ? 1000 : 0);
        bit(3, on);
    }
    bool signal(int number) const { return controller.input(QStringLiteral("LUMO_DI.#%1").arg(number)); }

    Cell cell;
};

}  // namespace

class TestCell : public QObject {
    Q_OBJECT
private slots:
    void cleanup() { QCOMPARE(sim::VirtualTime::instance()->armedTimers(), 0); }

    void allIsWellAtTheStart() {
        CellFixture cell;
        for (int i = 0; i < 5; ++i)
            QVERIFY(cell.signal(i));
        QVERIFY(!cell.signal(5));
        QVERIFY(kordservice()->dataNode(QStringLiteral("register.values.LUMO_DI.#4"))->getBool());
    }

    void laser_emitsWhenEnabledWithPower_data() {
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<int>("power");
        QTest::addColumn<bool>("emits");
        QTest::newRow("off") << false << 0 << false;
        QTest::newRow("power alone") << false << 16384 << false;
        QTest::newRow("enable alone") << true << 0 << false;
        QTest::newRow("both") << true << 1 << true;
        QTest::newRow("negative power") << true << -1 << false;
    }
    void laser_emitsWhenEnabledWithPower() {
        QFETCH(bool, enabled);
        QFETCH(int, power);
        QFETCH(bool, emits);
        CellFixture cell;
        cell.bit(3, enabled);
        cell.power(power);
        QCOMPARE(cell.cell.emitting(), emits);
        QCOMPARE(cell.signal(5), emits);
        cell.bit(3, false);
        QVERIFY(!cell.cell.emitting());
        QVERIFY(!cell.signal(5));
    }

    void fault_isSignalledAndMayStopTheLaser_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("bit");
        QTest::addColumn<bool>("emits");
        QTest::newRow("laser") << "laser" << 0 << false;
        QTest::newRow("head") << "head" << 1 << false;
        QTest::newRow("chiller") << "chiller" << 2 << false;
        QTest::newRow("gas") << "gas" << 3 << true;
        QTest::newRow("temperature") << "temperature" << 4 << true;
    }
    void fault_isSignalledAndMayStopTheLaser() {
        QFETCH(QString, name);
        QFETCH(int, bit);
        QFETCH(bool, emits);
        CellFixture cell;
        cell.laser(true);
        QVERIFY(cell.cell.setFault(name, true));
        for (int i = 0; i < 5; ++i)
            QCOMPARE(cell.signal(i), i != bit);
        QCOMPARE(cell.cell.emitting(), emits);
        QCOMPARE(cell.signal(5), emits);
        QVERIFY(cell.cell.setFault(name, false));
        QVERIFY(cell.signal(bit));
        // The outputs are still there: it goes on.
        QVERIFY(cell.cell.emitting());
    }

    void unknownFault_isRefused() {
        CellFixture cell;
        QVERIFY(!cell.cell.setFault(QStringLiteral("welding"), true));
        QVERIFY(!cell.cell.setFault(QString(), true));
    }

    void unwiredEquipment_staysOff() {
        CellFixture cell(Wiring{});
        cell.laser(true);
        cell.bit(0, true);
        cell.advance(100);
        QVERIFY(!cell.cell.emitting());
        QCOMPARE(cell.cell.gasOnMs(), qint64(0));
        QCOMPARE(cell.cell.wireOnMs(), qint64(0));
    }

    void times_addUpAndCountTheOneUnderWay() {
        CellFixture cell;
        cell.bit(0, true);
        cell.advance(200);
        cell.laser(true);
        cell.advance(300);
        QCOMPARE(cell.cell.laserOnMs(), qint64(300));
        cell.laser(false);
        cell.advance(50);
        cell.laser(true);
        cell.advance(10);
        cell.laser(false);
        cell.bit(0, false);
        cell.advance(1000);
        QCOMPARE(cell.cell.laserOnMs(), qint64(310));
        QCOMPARE(cell.cell.gasOnMs(), qint64(560));
    }

    void wireTime_isFeedOrPullback() {
        CellFixture cell;
        cell.bit(2, true);
        cell.advance(100);
        cell.bit(8, true);
        cell.advance(100);
        cell.bit(2, false);
        cell.advance(100);
        cell.bit(8, false);
        cell.advance(100);
        QCOMPARE(cell.cell.wireOnMs(), qint64(300));
    }

    void weldLength_isThePathUnderTheLaser() {
        CellFixture cell;
        cell.line(0.7, 0, 0.4, 0.1);
        cell.order("move.opr.enough");
        cell.advance(550);  // 0.0525 m
        cell.laser(true);
        cell.advance(500);
        QVERIFY(std::abs(cell.cell.weldLength() - 0.05) < 1e-9);
        cell.laser(false);
        cell.advance(200);
        cell.laser(true);
        cell.diary();
        QVERIFY(std::abs(cell.cell.weldLength() - (0.05 + 0.2 - 0.0525 - 0.07)) < 1e-9);
        QVERIFY(std::abs(cell.controller.travelled() - 0.2) < 1e-9);
    }
};

VIRTUAL_TIME_MAIN(TestCell)
#include "test_cell.moc"
