#include "app/cell/signalbutton.h"
#include "app/noticebar.h"
#include "panelfixture.h"

#include <QMenu>
#include <QSignalSpy>

/// The panel with its simulated cell, as an operator finds it.
class AppPanel : public test::PanelTest {
    Q_OBJECT

    app::NoticeBar* const notices_ = window()->notices();

    app::SignalButton* lamp(const QString& name) const { return find<app::SignalButton>(name); }

private slots:
    void init() {
        settle();
        robot()->setPower(false);
        click("cellTab0");
    }

    void project_isOpenedOnThePackagesPage() {
        QCOMPARE(window()->pages()->currentWidget()->metaObject()->className(), "LumoWidget");
        QVERIFY(find("nav_rova.robot.pack.lumo")->isChecked());
        QVERIFY(find("btnExamples")->isVisible());
        QSignalSpy chosen(panel_.get(), &app::Panel::exampleChosen);
        find("btnExamples")->findChild<QMenu*>()->actions().first()->trigger();
        QCOMPARE(chosen.value(0).value(0).toString(), "box_stitch");
        openSample();
        QCOMPARE(m("lumo.program")->cmobjCount(), 15);
        QCOMPARE(textOf("lblProject"), "seam");
        QVERIFY(!QApplication::activeModalWidget() && !find("btnExamples")->isVisible());
    }

    void signals_areShownAndSwitched() {
        click("DI3");
        QVERIFY(robot()->input("DI3") && lamp("DI3")->isOn());
        robot()->setInput("DI3", false);
        QVERIFY(!lamp("DI3")->isOn() && !lamp("DI3")->isFault());
        // Off is as normal as on, but where equipment tells its state.
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
        QCOMPARE(lamp("LUMO_DO.#0")->label() + lamp("LUMO_DO.#12")->label(), "Gas Enable");
        set("lumo.port.#6.name", "LUMO_DO.#12");
        click("cellTab0");
        click("cellTab1");
        QVERIFY(lamp("LUMO_DO.#12")->label() == "Gas Enable" && lamp("LUMO_DO.#0")->label().isEmpty());
        set("lumo.port.#6.name", "LUMO_DO.#0");
    }

    void fault_isInjectedAndTakenBack() {
        const QVector<QStringList> rows = {{"laser", "Laser not ready"},
                                           {"head", "Laser head faulty"},
                                           {"chiller", "Chiller faulty"},
                                           {"gas", "Gas pressure low"},
                                           {"temperature", "Temperature too high"}};
        const auto input = [this](int bit) { return robot()->input(QString("LUMO_DI.#%1").arg(bit)); };
        write("LUMO_DO", 1, 3);
        QVERIFY(!input(5));
        write("LUMO_AO_1", 10000);
        click("cellTab2");
        for (int bit = 0; bit < 5; ++bit) {
            auto* const button = find("fault_" + rows[bit][0]);
            test::click(button);
            QVERIFY2(!input(bit) && input(5) == (bit > 2), qPrintable(button->text()));
            QVERIFY2(button->text().startsWith("⚠ " + rows[bit][1]), qPrintable(button->text()));
            QVERIFY(button->toolTip().startsWith(QString("LUMO_DI.#%1 ").arg(bit)));
            QCOMPARE(find("cellTab2")->text(), "⚠ Faults (1)");
            click("btnClearFaults");
            QVERIFY2(input(bit) && input(5), qPrintable(button->text()));
            QCOMPARE(find("cellTab2")->text(), "Faults");
        }
        write("LUMO_DO", 0, 3);
        robot()->setPower(true);
        for (const char* expected : {"idle", "moving"}) {
            click("fault_slowState");  // on, then off again
            robot()->jog(sim::JogAxis::X, 0.001);
            QCOMPARE(wordOf("kord.r.state"), expected);
            settle();
        }
        click("failMotion");
        load("lumo.program", "[{'type':'moveL','speed':10,'point':{'trans':[0.5,0,0.31],'rot':[3.14,0,0]}}]");
        run(0, {});
        QCOMPARE(kordservice()->commandNode("move.l")->getInt(), -42);
        test::closeBoxes();
    }

    void notices_tellWhatIsWrongWithFilesUntilTheyAreDismissed() {
        test::writeFile("damaged.json", "[\n  {\"type\": \"moveL\" \"note\": \"\"}\n]\n");
        mendo::ModuleManager::readFromJson("damaged.json");
        const QString told = textOf("lblNotice");
        QVERIFY2(told.contains("damaged.json, line 2, column 20: this is no JSON"), qPrintable(told));
        QVERIFY(find<QWidget>("noticeBar")->isVisible() && find<QWidget>("whyLine")->isVisible());
        const QVector<QStringList> rows = {
            {"'a' is no number; faults in 2 more records", "'a': не число; ошибки и в других записях: 2"},
            {"Существующий файл «/x/a.json» защищён от записи", "файл защищён от записи"},  // in Qt's words
            {"Stale file handle", "Stale file handle"},
        };
        app::installLanguage("ru");
        for (const QStringList& row : rows) {
            notices_->report("/x/a.json", 0, 0, row[0]);
            QCOMPARE(textOf("lblNotice"), "⚠ /x/a.json: " + row[1]);
        }
        app::installLanguage("en");
        const QString folder = QString("/a_folder_with_a_long_name").repeated(8);
        for (int i = 0; i < 24; ++i)  // each twice
            notices_->report(QString(folder + "/%1.json").arg(i / 2), 0, 0, "Permission denied");
        QVERIFY(textOf("lblNotice").contains("/11.json") && !textOf("lblNotice").contains(folder));
        QCOMPARE(notices_->texts().size(), 10);
        QVERIFY(notices_->texts()[0].contains(folder + "/11.") && notices_->texts()[9].contains("/2."));
        click("btnNotices");
        QVERIFY(notices_->list()->isVisible() && window()->rect().contains(notices_->list()->geometry()));
        click("btnDismiss");
        QVERIFY(!notices_->isVisible() && !notices_->list()->isVisible());
        notices_->report("/x/0.json", 0, 0, "Permission denied");
        QVERIFY(notices_->isVisible() && notices_->texts().size() == 1);
    }

    void strip_isFoldedWhereItWouldSqueezeThePage() {
        QWidget* const page = window()->pages()->currentWidget();
        QWidget* const strip = find<QWidget>("cellStrip");
        const int before = page->minimumWidth(), room = 900 + strip->width();
        page->setMinimumWidth(900);
        for (const bool fits : {false, true}) {
            window()->resize(fits ? room : room - 1, 800);
            pass(10);
            QVERIFY(strip->isVisible() == fits && window()->pages()->width() == (fits ? 900 : room - 1));
        }
        page->setMinimumWidth(before);
        window()->resize(1280, 800);
        QSignalSpy chosen(panel_.get(), &app::Panel::speedChosen);
        click("speed2");
        QVERIFY(chosen.value(0).value(0) == 5.0 && find("btnCell")->text() == "Simulated cell 5x");
    }

    /// The last one: the process is about to quit from then on.
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
