#include "app/cell/signalbutton.h"
#include "app/noticebar.h"
#include "panelfixture.h"

#include "app/menu/menutools.h"

#include <QMenu>
#include <QSignalSpy>

/// The panel with its simulated cell.
class AppPanel : public test::PanelTest {
    Q_OBJECT

    app::NoticeBar* const notices_ = window()->notices();

    app::SignalButton* lamp(const QString& name) const { return find<app::SignalButton>(name); }

private slots:
    void init() {
        waitUntilIdle();
        robot()->setPower(false);
        docks()->open("cell");
        click("cellTab0");
    }

    void project_isOpenedOnThePackagesPage() {
        QCOMPARE(window()->pages()->currentWidget()->metaObject()->className(), "LumoWidget");
        QVERIFY(find("nav_rova.robot.pack.lumo")->isChecked());
        QSignalSpy example(panel_.get(), &app::Panel::exampleChosen);
        click("btnMenu");
        click("btnExample_box_stitch");
        QCOMPARE(example.value(0).value(0).toString(), "box_stitch");
        openSample();
        QCOMPARE(m("lumo.program")->cmobjCount(), 15);
        QCOMPARE(textOf("lblProject"), "seam");
        QVERIFY(!QApplication::activeModalWidget());
    }

    void signals_areShownAndSwitched() {
        click("DI3");
        QVERIFY(robot()->input("DI3") && lamp("DI3")->isOn());
        robot()->setInput("DI3", false);
        QVERIFY(!lamp("DI3")->isOn() && !lamp("DI3")->isFault());
        // Off is a fault only for the equipment's inputs.
        for (const bool fault : {true, false}) {
            click("LUMO_DI.#3");
            QCOMPARE(lamp("LUMO_DI.#3")->isFault(), fault);
        }
        click("cellTab1");
        for (const int value : {1, 0}) {
            write("LUMO_DO", value, 7);
            write("LUMO_DO", value, 4);  // the alarm
            write("LUMO_AO_5", value * 16384);
            click("LUMO_DO.#7");  // an output is only shown
            QCOMPARE(lamp("LUMO_DO.#7")->valueText(), QString::number(value));
            QCOMPARE(lamp("LUMO_AO_5")->valueText(), value ? "50.0 %" : "0.0 %");
            QVERIFY(lamp("LUMO_DO.#4")->isFault() == bool(value) && !lamp("LUMO_DO.#7")->isFault());
        }
    }

    void fault_isInjectedAndCleared() {
        const auto input = [this](int bit) { return robot()->input(QString("LUMO_DI.#%1").arg(bit)); };
        write("LUMO_DO", 1, 3);
        QVERIFY(!input(5));
        write("LUMO_AO_1", 10000);
        click("cellTab2");
        int bit = 0;
        for (const char* name :
             {"fault_laser", "fault_head", "fault_chiller", "fault_gas", "fault_temperature"}) {
            click(name);
            QVERIFY2(!input(bit) && input(5) == (bit > 2), name);
            QVERIFY(find(name)->isChecked() && find("cellTab2")->text() == "Faults (1)");
            click("btnClearFaults");
            QVERIFY2(input(bit++) && input(5), name);
        }
        write("LUMO_DO", 0, 3);
        robot()->setPower(true);
        click("failMotion");
        load("lumo.program", "[{'type':'moveL','speed':10,'point':{'trans':[0.5,0,0.31],'rot':[3.14,0,0]}}]");
        run(0, {});
        QCOMPARE(kordservice()->commandNode("move.l")->getInt(), -42);
        test::closeBoxes();
    }

    void notices_showFileProblemsUntilDismissed() {
        using Kind = mendo::FileProblem::Kind;
        test::writeFile("damaged.json", "[\n  {\"type\": \"moveL\" \"note\": \"\"}\n]\n");
        mendo::ModuleManager::readFromJson("damaged.json");
        QVERIFY(textOf("lblNotice").contains("damaged.json, line 2, column 20: this is not valid JSON"));
        QVERIFY(find<QWidget>("noticeBar")->isVisible() && find<QWidget>("whyLine")->isVisible());
        for (int i = 0; i < 24; ++i) {  // each twice
            notices_->report({QString("/x/%1.json").arg(i / 2), {}, {{Kind::NoPermission}}});
        }
        QVERIFY(textOf("lblNotice").contains("/11.json") && notices_->texts().size() == 10);
        QVERIFY(notices_->texts()[0].contains("/11.json") && notices_->texts()[9].contains("/2.json"));
        click("btnNotices");
        QVERIFY(notices_->list()->isVisible());
        click("btnDismiss");
        QVERIFY(!notices_->isVisible() && !notices_->list()->isVisible());
        notices_->report({"/x/0.json", {}, {{Kind::NoPermission}}});
        QVERIFY(notices_->isVisible() && notices_->texts().size() == 1);
    }

    void closing_asksWhenSomethingIsUnsaved() {
        openSample();
        panel_->keepEdits();
        load("lumo.program", "[{'type':'delay','delaytime':1}]");
        QSignalSpy examples(panel_.get(), &app::Panel::exampleChosen);
        emit panel_->findChild<app::MenuTools*>()->exampleChosen("flange");
        QVERIFY(test::answerBox("Cancel"));
        pass(0);
        QCOMPARE(examples.count(), 0);
        QVERIFY(!window()->close() && window()->isVisible() && test::shown<QMessageBox>());
        QVERIFY(test::answerBox("Cancel"));
        pass(2100);
        QVERIFY(window()->isVisible() && QFile::exists("seam.json.recovery"));
        emit panel_->findChild<app::MenuTools*>()->exampleChosen("flange");
        QVERIFY(test::answerBox("Discard"));
        pass(0);
        QVERIFY(examples.count() == 1 && !QFile::exists("seam.json.recovery"));
        *panel_->packageFlags().recovery = false;
    }

    /// Must be the last test, because it quits the application.
    void closing_switchesTheLaserOff() {
        robot()->setPower(true);
        load("lumo.program", "[{'type':'open','index':0},{'type':'delay','delaytime':60000}]");
        bool welding = false;
        QTimer::singleShot(0, this, [] { set("lumo.execute.trigger.start", 0); });
        QTimer::singleShot(5000, this, [this, &welding] {
            welding = robot()->input("LUMO_DI.#5");
            window()->close();
        });
        QCOMPARE(QApplication::exec(), 0);
        QVERIFY(welding && !robot()->output("LUMO_DO.#3").toBool() && robot()->output("LUMO_AO_1") == 0);
    }
};

LUMO_TEST(AppPanel)
#include "test_panel.moc"
