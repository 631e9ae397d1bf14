#include "executor/script.h"
#include "module/qtloops.h"
#include "widgets/projectchooser.h"

#include <QContextMenuEvent>
#include <QDoubleSpinBox>
#include <QListView>
#include <QScrollBar>

namespace {

/// Something that happens inside a write or at the same instant as something else, and what is written then.
struct Moment {
    const char* fault;
    const char* program;
    QString script;
    const char* shown;  ///< what of the log is compared
    QString log;
};

const char* const weld = "open; moveL; close";
const QString inTheRamp = "set decrease_time 2000; 1000 pause; run; wait 50; ";
const QString everythingOff = "PULL 0, WIRE 0, POWER 0, LASER 0, DUTY 0, FREQ 0, GAS 0";
const QString zeros = "PULL 0, WIRE 1, WIRE 0, POWER 0, LASER 0, DUTY 0, FREQ 0, GAS 0";  // without a set

const Moment moments[] = {
    // In the ramp of a pause
    {"a pause while a start settles the last closing is lost", "open; delay 5000; close",
     inTheRamp + "when WIRE 0: pause; trigger start 1", "^(1050|3[04]50)",
     "1050 move.reset, PULL 0, WIRE 0, CUE, POWER 0, LASER 0, DUTY 0, FREQ 0, PULL 1 | "
     "3050 POWER 0, LASER 0, DUTY 0, FREQ 0 | 3450 GAS 0"},
    {"a pause from pendingChanged() of a second pause is lost", "open; delay 5000; close",
     inTheRamp + "when 0 pending: pause; pause", "^(1050|3[04]50)",
     "1050 PULL 0, WIRE 0, POWER 0, LASER 0, DUTY 0, FREQ 0, CUE, PULL 1 | "
     "3050 POWER 0, LASER 0, DUTY 0, FREQ 0 | 3450 GAS 0"},
    {"a pause from pendingChanged() of a power loss closes again", "open; delay 5000; close",
     inTheRamp + "when 0 pending: pause; power off", "^(1050|3[04]50)", "1050 " + everythingOff + ", CUE"},
    {"an opening that is not permitted any more leaves the gas on", "open; delay 5000; close",
     inTheRamp + "when LASER 0: mode manual; 4000 pause; run 1", "LASER|GAS|over",
     "0 move.reset, PULL 0, WIRE 0, POWER 0, LASER 0, CUE, DUTY 0, FREQ 0 | 1950 GAS 0 | "
     "4000 PULL 1, over 1 weld | 6000 POWER 0, LASER 0, DUTY 0, FREQ 0, GAS 0"},
    // In a loss of power
    {"a pause inside an emergency stop delays it", weld, "710 power off; when move.stop: pause; run",
     "^[7-9]1", "710 move.stop, CUE, " + everythingOff + ", over 1 weld"},
    {"a pause inside the stop of a pause's closing delays it", weld,
     "650 pause; 710 power off; when 710 POWER 0: pause; run", "^(7[1-9]|[89])",
     "710 PULL 0, WIRE 0, POWER 0, CUE, LASER 0, DUTY 0, FREQ 0, GAS 0"},
    {"an idle pause goes on with its ramp", "delay", "run; inForce 0; 100 power off; begin; pause",
     "^\\d\\d\\d", "100 " + everythingOff},
    {"an idle pause goes on with its close delay", "delay", "run; inForce 0; 300 power off; begin; pause",
     "^[3-9]\\d\\d", "300 " + everythingOff},
    {"the permission that goes while the robot is stopped begins a ramp", weld,
     "610 power off; when 610 move.stop: mode manual; run; wait 2000", "^[6-9]\\d\\d",
     "610 move.stop, CUE, " + everythingOff + ", over 1 weld"},
    {"the permission that goes in the shutdown begins a ramp", weld,
     "610 power off; when 610 POWER 0: mode manual; run; wait 2000", "^[6-9]\\d\\d",
     "610 move.stop, PULL 0, WIRE 0, POWER 0, CUE, LASER 0, DUTY 0, FREQ 0, GAS 0, over 1 weld"},
    {"a loss of power inside a pause leaves its closing running", weld,
     "when 600 move.stop: power off; 600 pause; run", "^[6-9]\\d\\d",
     "600 move.stop, CUE, move.stop, " + everythingOff + ", over 1 weld"},
    {"a loss of power after a run writes something", weld, "run; begin; power off; mode manual; wait 2000",
     ".", ""},
    // In other moments
    {"a listener that waits inside a write holds the ramp", "open; close", "when POWER 1638: wait 50; run",
     "^2[2-8]", "220 POWER 1638, CUE | 240 POWER 3277 | 260 POWER 4915 | 280 POWER 6553"},
    {"a lost permission while an opening settles the last closing is missed", "open; close; open; close",
     "set move_wire_time 900; when 1000 PULL 0: weld false; run", "^1\\d\\d\\d",
     "1000 GAS 0, PULL 0, CUE, over 3"},
    {"a start is taken while the application quits", "moveL; open; moveL; close",
     "1200 when lumo.execute.state: trigger start 0; 1210 quit; run; wait 1", "^1\\d\\d\\d",
     "1210 move.stop, " + everythingOff + ", CUE, over 2 weld"},
    {"a start is taken in the dwell of a paused opening", weld,
     "set stay_time 3000; 500 pause; 2000 trigger start 0; run", "move|over",
     "0 move.reset, SPEED 8192, GAS 1 | 3200 over 0 | 当前不是空闲状态"},
    {"a station's run reopens the weld of the hand program", weld, "500 pause; run; settle; station 1",
     "GAS 1|over", "1100 GAS 0, over 2"},
    {"a pause right after the poll that finds the zone is lost", "moveL zone=2 to=1,0,0; close",
     "lead 120; 360 in 40 pause; run", "over", "400 move.stop, PULL 1, over 0, " + zeros},
    {"a pause right before the poll that finds the zone is lost", "moveL zone=2 to=1,0,0; close",
     "lead 120; 340 in 60 pause; run", "over", "400 move.stop, PULL 1, over 0, " + zeros},
    {"a pause from the write of the state is lost", "setDO DO1; moveL", "when lumo.execute.state: pause; run",
     ".", "0 CUE, PULL 1, " + zeros + ", over 0"},
    {"a pause from the write of the type is lost", "setDO DO1; moveL",
     "when lumo.current.programtype: pause; run", ".", "0 move.reset, CUE, PULL 1, " + zeros + ", over 0"},
    // Results of motions that are awaited no more
    {"a result ends a delay", "delay 300", "100 result -7; run", ".", "0 move.reset | 300 over 0"},
    {"a result after a pause counts for the next run", "moveL; delay",
     "250 pause; run; result 0; begin; pause; run", ".",
     "0 move.reset, move.l 0 0, move.opr.enough | 500 over 1"},
    {"a result after a loss of power counts for the next step", "moveL; delay",
     "250 power off; run; result 0; power on; once 0", ".",
     "0 move.reset, move.l 0 0, move.opr.enough | 500 over 0"},
    {"a lost motion counts for the next run", "moveL zone=2 to=1,0,0; close; delay; moveL to=2,0,0 off",
     "lead 120; mode manual; run; lose; enable 3; run 3", ".",
     "0 move.reset, move.l 0 0, move.opr.enough | 500 over 3"},
    {"a lost motion counts for the next step", "moveL zone=2 to=1,0,0; close",
     "lead 120; mode manual; run; lose; once 0", ".",
     "0 move.reset, move.l 0 0.002, move.opr.enough | 500 over 1"},
};

/// Comes through every kind of wait. Ramps, delays and gas times are 200 ms, motions 500 ms, the tool is at
/// its target 100 ms before a motion's end.
const char* const everyWait = "moveL to=1,0,0; open; moveL zone=2 to=2,0,0; close; delay 300; waitDI DI1";
const QString undisturbed = "2400 over 5, laser 1500, gas 1900";

/// An instant in the middle of a wait, when the wait would end, and what the events that end or shorten it
/// do: when the run is over, the resume line, when laser and gas went off for good (-1: were never on). Null:
/// nothing.
struct Wait {
    const char* kind;
    int ms;
    int endMs;
    const char *pause, *power, *result, *permission;
};

const Wait waits[] = {
    {"move 0", 250, 500, "250 over 0, laser -1, gas -1", "250 over 0, laser -1, gas -1",
     "2350 over 5, laser 1250, gas 1650", "2400 over 5, laser -1, gas -1"},
    {"preflow 1", 600, 700, "600 over 1, laser -1, gas 800", "600 over 1, laser -1, gas 600", nullptr,
     "2400 over 5, laser -1, gas 1200"},
    {"dwell 1", 800, 900, "1400 over 1, laser 1000, gas 1400", "900 over 1, laser 800, gas 800", nullptr,
     "2400 over 5, laser 1000, gas 1400"},
    {"zone 2", 1010, 1100, "1010 over 2 weld, laser 1210, gas 1210", "1010 over 2 weld, laser 1010, gas 1010",
     "2410 over 5, laser 1210, gas 1610", "2400 over 5, laser 1210, gas 1610"},
    {"rampdown 3", 1310, 1500, "1310 over 3, laser 1310, gas 1510", "1310 over 3, laser 1310, gas 1310",
     nullptr, nullptr},
    {"closedelay 3", 1610, 1700, "1610 over 3, laser 1500, gas 1810", "1610 over 3, laser 1500, gas 1610",
     nullptr, nullptr},
    {"postflow 3", 1810, 1900, "1810 over 3, laser 1500, gas 2010", "1810 over 3, laser 1500, gas 1810",
     nullptr, nullptr},
    {"delay 4", 2010, 2200, "2010 over 4, laser 1500, gas 1900", "2010 over 4, laser 1500, gas 1900", nullptr,
     nullptr},
    {"input DI1", 2250, 2400, "2250 over 5, laser 1500, gas 1900", "2250 over 5, laser 1500, gas 1900",
     nullptr, nullptr},
};

void askForMenu(QWidget* widget) {
    const QPoint centre = widget->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, centre, widget->mapToGlobal(centre));
    widget->window()->show();
    QApplication::sendEvent(widget, &event);
    widget->window()->hide();
}

}  // namespace

/// What stops, results, starts and lost permissions do in every wait and in every awkward moment.
class TestStops : public QObject {
    Q_OBJECT

    test::Script script_;
    test::ExecutorBench& bench_ = script_.bench;
    QString awaited_;

    /// Widgets whose menus Qt opens by itself, in an event loop of its own.
    QScrollBar bar_;
    QDoubleSpinBox box_;
    std::unique_ptr<QFileDialog> files_{new lumo::ProjectChooser(nullptr)};

private slots:
    void initTestCase() {
        script_.verbs["bar"] = [this](const auto&) { askForMenu(&bar_); };
        script_.verbs["box"] = [this](const auto&) { askForMenu(&box_); };
        script_.verbs["list"] = [this](const auto&) {
            askForMenu(files_->findChild<QListView*>("listView")->viewport());
        };
        script_.verbs["warning"] = [this](const auto&) {
            QMessageBox::warning(files_.get(), "title", "text");
        };
        script_.verbs["endLoops"] = [](const auto&) { lumo::endLoopsOfQt(); };
        script_.verbs["look"] = [this](const auto&) {
            const QVariantMap waiting = executor->waiting();
            awaited_ = waiting.value("kind").toString() + ' ' + waiting.value("detail").toString();
        };
    }

    void awkwardMoment_leavesNothingOnOrLost_data() {
        QTest::addColumn<int>("row");
        for (int row = 0; row < int(std::size(moments)); ++row) {
            QTest::newRow(moments[row].fault) << row;
        }
    }

    void awkwardMoment_leavesNothingOnOrLost() {
        QFETCH(int, row);
        const Moment& moment = moments[row];
        const QStringList log = script_.play(moment.program, moment.script);
        const QRegularExpression shown(QString("(%1)|left|[^\\x20-\\x7e]").arg(moment.shown));
        QVERIFY(test::sameLog(log.filter(shown), moment.log.split(" | ", Qt::SkipEmptyParts)));
    }

    void event_endsAWaitAsTheTableSays_data() {
        QTest::addColumn<QString>("awaited");
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("outcome");
        for (const Wait& wait : waits) {
            const auto add = [&wait](const char* event, const QString& outcome) {
                const QString script = "lead 100; 2350 input; 20000 endLoops; %1 look; %1 %2; run";
                QTest::addRow("%s in %s", event, wait.kind)
                    << QString(wait.kind) << script.arg(wait.ms).arg(event)
                    << (outcome.isNull() ? undisturbed : outcome);
            };
            add("pause", wait.pause);
            add("power off", wait.power);
            add("result 0", wait.result);
            add("mode manual", wait.permission);
            for (const char* refused : {"trigger start 0", "trigger once 0"}) {
                add(refused, undisturbed + ", 当前不是空闲状态");
            }
            for (const char* harmless : {"replace", "bar", "box", "list", "warning"}) {
                add(harmless, undisturbed);
            }
        }
    }

    /// The table of docs/executor.md; and what Qt opens is closed when the wait below it ends.
    void event_endsAWaitAsTheTableSays() {
        QFETCH(QString, script);
        const QStringList left =
            script_.play(everyWait, script).filter(QRegularExpression("left|DO9|[^\\x20-\\x7e]"));
        QStringList seen = bench_.robot.log().filter(" over ");
        seen << QString("laser %1").arg(bench_.robot.offSince("LASER"))
             << QString("gas %1").arg(bench_.robot.offSince("GAS"));
        QTEST((seen + left).join(", "), "outcome");
        QTEST(awaited_, "awaited");
        QVERIFY(!QApplication::activePopupWidget() && executor->waiting().isEmpty());
    }

    /// The request comes right before the wait's own end or right behind it; no loop has returned yet.
    void quitInTheTurnInWhichAWaitEnds_shutsDown() {
        for (const Wait& wait : waits) {
            for (const QString& exit :
                 {QString("%1 exit").arg(wait.endMs), QString("%1 in 1 exit").arg(wait.endMs - 1)}) {
                QStringList log;
                const QString script = "lead 100; 2350 input; " + exit + "; run";
                QTimer::singleShot(0, this, [&] { log = script_.play(everyWait, script); });
                QCoreApplication::exec();
                const QRegularExpression off(QString("^%1 .*%2, over").arg(wait.endMs).arg(everythingOff));
                QVERIFY2(log.last().contains(off), qPrintable(exit + ": " + log.last()));
                bench_.time.advance(1);  // the event loop goes on: starts are taken again
            }
        }
    }

    void stopInsideAnyAnnouncement_endsTheWeld_data() {
        QTest::addColumn<QString>("event");
        for (const char* event : {"pause", "power off", "mode manual"}) {
            QTest::newRow(event) << QString(event);
        }
    }

    /// A weld calls the robot, writes ports and announces its activity. One run for each of these moments, in
    /// which a listener stops the weld inside the notification: nothing comes on any more.
    void stopInsideAnyAnnouncement_endsTheWeld() {
        QFETCH(QString, event);
        const QString script = "set open_interval 50; set stay_time 50; when %1th: %2; run";
        const QRegularExpression on(event == "power off" ? " [A-Z]+ [1-9]|left" : " (LASER|GAS) 1|left");
        int runs = 0;
        for (script_.play("delay", "run"); !script_.hasCues(); ++runs) {
            const QStringList log = script_.play("moveL; open; delay 300; param; delay 100; close; moveL",
                                                 script.arg(runs + 1).arg(event));
            const QString after = log.join(" | ").section("CUE", 1);
            QVERIFY2(!after.contains(on) && test::boxes().isEmpty(), qPrintable(after));
            const bool goesOn = event == "mode manual" || script_.hasCues();
            QVERIFY2(goesOn || !after.contains("move.l"), qPrintable(after));
        }
        QVERIFY(runs > 50);
    }
};

LUMO_TEST(TestStops)
#include "test_stops.moc"
