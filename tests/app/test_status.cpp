#include "app/header/header.h"
#include "app/state/stateblock.h"
#include "app/status/statuswatcher.h"
#include "panelfixture.h"
#include "program/motionerror.h"
#include "program/words.h"
#include "simulator/motioncommand.h"

#include <QProgressBar>

/// The status line and the progress of a run.
class AppStatus : public test::PanelTest {
    Q_OBJECT

    /// The sign and the sentences (or the first ones), separated by "|".
    QString line() const {
        pass(0);
        const QHash<QString, QString> signs = {{"check", "✓"}, {"warn", "⚠"}, {"ring", "○"}};
        return signs.value(find<QLabel>("lblWhySign")->accessibleName()) + " " +
               textOf("lblWhy").replace("  ·  ", "|");
    }
    QString line(int sentences) const { return line().section('|', 0, sentences - 1); }
    QString progress() const { return textOf("lblProgressElapsed") + "/" + textOf("lblProgressLeft"); }
    Step input(const QString& name, bool on) const {
        return [this, name, on] { robot()->setInput(name, on); };
    }
    static void pause() { m("lumo.execute.trigger.pause")->trigger(); }
    /// As a reset does.
    static void forgetPause() {
        m("lumo.current.pausepoint")->clear(nullptr);
        set("lumo.current.openmiddlecolse", false);
    }

private slots:
    void initTestCase() { m("lumo")->append(nullptr, "signalbind_program"); }
    void init() {
        robot()->setPower(true);
        setRunMode(prog::runmode::byHand);
        forgetPause();
        load("lumo.program", "[{'type':'delay','delaytime':100}]");
        pass(500);
        QCOMPARE(line(2), "✓ Welding is permitted|No program runs");
    }

    void sentences_followTheCell() {
        const QString no = "⚠ No welding: ", off = "○ No welding: ";
        const struct {
            QString path;
            QVariant value;
            QString shown;
        } rows[] = {
            {"lumo.allWeldBtnstatus.weldbtn", false, off + "the Weld switch is off"},
            {"lumo.port.#9.name", "DO2_3",
             no + "port \"Laser Enable\" is assigned to DO2_3, which does not exist"},
            {"lumo.port.#9.name", "", no + "port \"Laser Enable\" is not assigned"},
            {"lumo.port.#16.enable", false, no + "port \"Laser Power\" is out of use"},
            {"lumo.port.#6.enable", false, "⚠ Welding without gas: port \"Gas Enable\" is out of use"},
        };
        for (const auto& row : rows) {
            const QVariant before = m(row.path)->value();
            set(row.path, row.value);
            QCOMPARE(line(1), row.shown);
            set(row.path, before);
            QCOMPARE(line(1), "✓ Welding is permitted");
        }
        input("LUMO_DI.#2", false)();
        QCOMPARE(line(2), "⚠ Equipment not ready: Water Cooling State|No program runs");
        input("LUMO_DI.#2", true)();
        robot()->setMode("manual");
        QCOMPARE(line(1), off + "manual mode, and the Hand Weld switch is off");
        set("lumo.allWeldBtnstatus.handweldbtn", true);
        QCOMPARE(line(1), "✓ Welding is permitted");
        robot()->setMode("auto");
        robot()->setEmergencyStop(true);
        QCOMPARE(line(2), "⚠ Emergency stop is pressed|No welding: the drives are off");
        robot()->setEmergencyStop(false);
        QCOMPARE(line(), off + "the drives are off|No program runs|Editing is locked: no project is open");
        openSample();
        QCOMPARE(line(), off + "the drives are off|No program runs");
        robot()->setPower(true);
        QCOMPARE(line(), "✓ Welding is permitted|No program runs|Editing is locked: the drives are on");
        load("lumo.program", "[]");
        pass(500);
        QCOMPARE(line(1), "○ Welding is permitted");
    }

    void aLostLink_isToldWithItsReason_andTheDrivesStayOff() {
        robot()->cutLink(true);
        QCOMPARE(line(1), "⚠ The controller cannot be reached: the cable is cut");
        QCOMPARE(window()->header()->state()->state().detail,
                 "The controller cannot be reached: the cable is cut");
        robot()->cutLink(false);
        pass(100);
        QCOMPARE(line(1), "○ No welding: the drives are off");
        robot()->setPower(true);
        QCOMPARE(line(1), "✓ Welding is permitted");
    }

    void laserByHandAndListening_areShown() {
        for (const char* button : {"btnDeviceControl", "btnLaserControl", "btnLaserTest"}) {
            click(button);
            pass(200);
        }
        QCOMPARE(line(1), "⚠ Laser on: by hand");
        click("btnLaserControl");
        QVERIFY2(!line().contains("Laser on"), qPrintable(line()));
        click("btnBind");
        pass(200);
        for (const bool listens : {true, false}) {
            click("switchBtn");
            QCOMPARE(line().contains("|Listening to the stations"), listens);
        }
        click("btnProject");
    }

    /// Until a reset or the next run.
    void endOfTheLastRun_isShown() {
        load("lumo.program",
             "[{'type':'delay','delaytime':100},{'type':'open','index':0},{'type':'delay','delaytime':2000},"
             "{'type':'close'},{'type':'moveL','speed':10,'point':{'trans':[5,0,0.3],'rot':[3.14,0,0]}}]");
        const auto shown = [this](int from, const Moments& moments) {
            run(from, moments);
            pass(3000);
            return line(2).section(' ', 1);
        };
        const QString well = "Welding is permitted|";
        QCOMPARE(shown(0, {{1500, pause}}), well + "Paused at line 3, inside a weld, 0.0 mm welded");
        QCOMPARE(shown(2, {}),
                 "The last run failed: robot motion error -0x1 (a point of the path is out of the robot's "
                 "reach)|Welding is permitted");
        for (const int code : {sim::OutOfReach, sim::JointLimit, sim::NoCircle, sim::DriveOff, sim::NoSpeed,
                               sim::NoTarget, sim::FailedAtEnd}) {
            QCOMPARE(prog::motionError(code).code, code);
        }
        test::closeBoxes();
        QCOMPARE(shown(0, {{50, pause}}), well + "Paused at line 1");
        forgetPause();
        load("lumo.program", "[{'type':'moveX'}]");
        pass(500);
        QCOMPARE(line(3), "⚠ " + well + "No program runs|Program: 1 error");
    }

    /// Opening: 300 ms of gas, 100 ms of dwell. Closing: 200 ms of ramp, 100 ms of delay, 500 ms of gas. The
    /// forecast counts 100 ms for an input. The laser pulses, 100 ms on and 100 ms off, which counts as on.
    void waitAndProgress_areShownDuringARun() {
        for (const char* field : {"open_interval", "open_time"}) {
            set(QString("lumo.param.#0.") + field, 100);
        }
        load("lumo.program",
             "[{'type':'open','index':0},{'type':'waitDI','DI_type':'IO','diName':'DI4','value1':'false'},"
             "{'type':'waitDI','DI_type':'register','DI_reg':{'name':'LUMO_DI','bias':9}},{'type':'close'},"
             "{'type':'delay','delaytime':70000}]");
        input("DI4", true)();
        input("LUMO_DI.#9", false)();
        const auto* const watch = panel_->findChild<app::StatusWatcher*>();
        const auto* const bar = find<QProgressBar>("barProgress");
        const QString lit = "✓ Laser on: by the program|";
        const QString waits = "waits for an input, then 1:11";
        const QVector<QPair<int, QString>> rows = {
            {100, "✓ Line 1: gas pre-flow, 200 ms left, 0:00/1:12 left + inputs"},
            {350, lit + "Line 1: the laser is on, the robot dwells, 60 ms left, 0:00/1:12 left + inputs"},
            {3420, lit + "Line 2 waits for DI4 = false, 3 s, 0:03/" + waits},
            {3520, lit + "Line 2 waits for DI4 = false, 3 s, 0:03/" + waits},
            {11150, lit + "Line 3 waits for LUMO_DI.#9 = true, 1 s, 0:11/" + waits},
            {12150, lit + "Line 4: laser power ramps down, 50 ms left, 0:12/1:11 left"},
            {12410, "✓ Line 4: gas post-flow, 400 ms left, 0:12/1:11 left"},
            {20000, "✓ Line 5: delay, 1:02 min left, 0:19/1:03 left"},
        };
        Moments moments = {{10000, input("DI4", false)}, {12000, input("LUMO_DI.#9", true)}, {80000, pause}};
        int shown = 0;
        const auto record = [&] {
            QCOMPARE(line(2).section("|Welding", 0, 0) + ", " + progress(), rows[shown++].second);
            QVERIFY(bar->isVisible() && watch->isTiming());
        };
        for (const auto& row : rows) {
            moments.append({row.first, record});
        }
        run(0, moments);
        QVERIFY(shown == rows.size() && line(1) == "✓ Laser, gas and wire are being switched off");
        pass(1000);
        QVERIFY(!watch->isTiming() && !bar->isVisible() && line().contains("Paused at line 5"));
    }

    void startOutsideTheOpenWeld_countsNoOpening() {
        load("lumo.program",
             "[{'type':'open','index':0},{'type':'close'},{'type':'delay','delaytime':5000}]");
        set("lumo.current.openmiddlecolse", true);
        QString told;
        run(2, {{1, [&] { told = progress(); }}});
        QCOMPARE(told, "0:00/0:05 left");
    }

    void stationProgram_isNamed() {
        setRunMode(prog::runmode::byStation);
        load("lumo.signalbind_program",
             "[{'type':'waitDI','DI_type':'IO','diName':'DI5','value1':'true'},"
             "{'type':'delay','delaytime':5000}]");
        QString shown;
        const auto record = [&] { shown = line(1) + ", " + progress(); };
        run(0, {{2300, record}, {2500, input("DI5", true)}});
        QCOMPARE(shown, "✓ Station, line 1 waits for DI5 = true, 2 s, 0:02/waits for an input, then 0:05");
    }
};

LUMO_TEST(AppStatus)
#include "test_status.moc"
