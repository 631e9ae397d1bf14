#include "../bridge/fakes.h"
#include "app/cell/signalbutton.h"
#include "app/events/eventlist.h"
#include "app/startsteps.h"
#include "panelfixture.h"

#include <QTableView>

using bridge::LinkReason;

/// The panel on a controller and an I/O device that are not simulated.
class AppOutside : public test::PanelTest {
    Q_OBJECT

    test::FakeController controller_;
    test::FakePort device_{{{bridge::SignalRow::Kind::Register, "DEVICE_DO", "bit", true, 2}}};

    /// How often the event log has it: kind and details.
    int countOf(const QString& event) const {
        docks()->open("log");
        pass(5000);
        const auto* const rows = docks()->content("log")->findChild<QTableView*>("eventTable")->model();
        int count = 0;
        for (int row = 0; row < rows->rowCount(); ++row) {
            const QString what = rows->index(row, app::EventList::What).data().toString();
            const QString details = rows->index(row, app::EventList::ColumnCount - 1).data().toString();
            count += what + '|' + details == event ? 1 : 0;
        }
        docks()->closeAll();
        docks()->open("cell");
        return count;
    }
    QString state() const {
        pass(0);
        return textOf("lblWhy").section("  ·  ", 0, 0);
    }

private slots:
    void initTestCase() {
        panel_.reset();
        sim::Controller::Options options;
        options.robot = &controller_;
        options.device = &device_;
        panel_ = std::make_unique<app::Panel>(
            options, workcell::OutsideNames{"/opt/robot.so:10.0.0.5", "modbus:/cell/map.json"});
        QString error;
        QVERIFY2(panel_->open(LUMO_LIBRARY, &error), qPrintable(error));
        window()->resize(1280, 800);
        window()->show();
        panel_->complete();
        docks()->open("cell");
    }

    void cleanupTestCase() { panel_.reset(); }

    void links_areShownWithTheReasonsOfTheirLosses() {
        QCOMPARE(textOf("lblNameRobot"), "robot.so, 10.0.0.5");
        QCOMPARE(textOf("lblNameDevice"), "Modbus TCP, map.json");
        QCOMPARE(textOf("lblLinkRobot"), "Not connected yet");
        QCOMPARE(state(), "The controller cannot be reached");
        controller_.comeUp();
        emit device_.linkChanged(true, {});
        QCOMPARE(textOf("lblLinkRobot") + textOf("lblLinkDevice"), "ConnectedConnected");
        QCOMPARE(textOf("lblLossDevice"), "Not lost since the panel's start");

        emit device_.linkChanged(false, {LinkReason::Kind::NoAnswer, "10.0.0.7:502"});
        emit device_.linkChanged(false, {LinkReason::Kind::Refused, "10.0.0.7:502"});
        QCOMPARE(state(),
                 "The I/O device cannot be reached: 10.0.0.7:502 takes no connection: not running, or a "
                 "wrong address");
        QVERIFY(textOf("lblLossDevice").startsWith("Lost once"));
        QVERIFY(textOf("lblLossDevice").endsWith(": 10.0.0.7:502 does not answer"));
        QCOMPARE(countOf("Fault|Link lost: Modbus TCP, map.json: 10.0.0.7:502 does not answer"), 1);
        emit device_.linkChanged(true, {});
        QCOMPARE(countOf("Fault|Link is back: Modbus TCP, map.json"), 1);
        QCOMPARE(textOf("lblLinkDevice"), "Connected");

        // A backend's own words are not translated.
        controller_.tellLink(false, QString("Tür offen"));
        QCOMPARE(state(), "The controller cannot be reached: Tür offen");
        controller_.comeUp();
    }

    void brokenRules_areCounted_andLoggedOnceAMinute() {
        QCOMPARE(textOf("lblBrokenRules"), "None");
        for (int i = 0; i < 3; ++i) {
            controller_.tell(77);  // nobody has ordered it
        }
        QVERIFY(textOf("lblBrokenRules").startsWith("•  a result of a motion that nobody ordered: 3 times"));
        const QString event = "Error|The controller broke a rule: a result of a motion that nobody ordered";
        QCOMPARE(countOf(event), 1);
        pass(60000);
        controller_.tell(77);
        QCOMPARE(countOf(event), 2);
    }

    void whatHasNoEffect_isLeftOut() {
        QCOMPARE(find("cellTab0")->text(), "Link");
        QVERIFY(!window()->findChild<QWidget*>("cellTab3"));  // faults
        QVERIFY(!window()->findChild<QWidget*>("speedBox"));
        click("cellTab1");
        QVERIFY(!find<app::SignalButton>("LUMO_DI.#0")->isEnabled());
        QVERIFY(textOf("lblLinkNote").contains("simulated controller only"));
    }

    void aWindowThatIsNotPainted_startsInItsTime() {
        app::PanelWindow hidden;
        QStringList taken;
        const auto note = [&taken](const char* step) {
            return [&taken, step] {
                taken << step;
                return true;
            };
        };
        const app::StartSteps steps(&hidden, {note("fill"), note("complete")});
        pass(1000);
        QCOMPARE(taken, QStringList("fill"));
        pass(1000);
        QCOMPARE(taken, QStringList({"fill", "complete"}));
        emit hidden.painted();  // shown later
        pass(5000);
        QCOMPARE(taken.size(), 2);
    }
};

LUMO_TEST(AppOutside)
#include "test_outside.moc"
