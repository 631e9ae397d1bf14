#include "devices/statusmonitorwidget.h"
#include "panel/pagebench.h"
#include "support/suite.h"
#include "support/text.h"

using namespace test;

/// The status monitor: what it says of the equipment, which runs it counts and how long it finds them.
class TestStatusMonitor : public QObject {
    Q_OBJECT

    static constexpr int refreshMs = 160;

    PageBench bench_;

    QLabel* label(const char* name) const {
        return child<QLabel>(bench_.page->findChild<StatusMonitorWidget*>(), name);
    }
    QString texts(std::initializer_list<const char*> names) const {
        QStringList shown;
        for (const char* const name : names) {
            shown << label(name)->text();
        }
        return shown.join(' ');
    }
    QString states() const {
        return texts({"lblLaserState", "lblLaserTopState", "lblCoolerState", "lblPressure", "lblTemperatue",
                      "lblWelding"});
    }
    QString setPoints() const { return texts({"lblLaserFrequency", "lblLaserRatio", "lblLaserPower"}); }
    QString counted() const { return texts({"lblNum", "lblDelay"}); }
    static void set(const QString& reg, const QVariant& value) {
        kordservice()->dataNode("register.values")->set(nullptr, reg, value);
    }
    void refresh() { bench_.time.advance(refreshMs); }

private slots:
    void init() {
        for (const char* const name : {"LUMO_AO_1.#0", "LUMO_AO_2.#0", "LUMO_AO_3.#0"}) {
            set(name, 0);
        }
        bench_.renew();
        m("lumo.count")->setValue(this, 0);
        m("lumo.processTime")->setValue(this, 0);
        bench_.click("btnMonitor");
    }

    void cleanup() { bench_.closeBoxes(); }

    void beforeTheFirstLook_nothingIsClaimed() {
        bench_.time.advance(refreshMs - 1);
        QCOMPARE(states() + ' ' + setPoints(), "/ / / / / / 0 0 0");
        bench_.time.advance(1);
        QCOMPARE(states() + ' ' + setPoints(), "异常 异常 异常 异常 异常 异常 0.00 0.00 0.00");
    }

    /// Faults stand out; the welding signal, which is off whenever the laser is, does not.
    void eachInput_hasItsLabel() {
        for (int port = DI_LASER_STATE; port <= DI_WELDING_STATE; ++port) {
            QStringList expected = QString("异常 异常 异常 异常 异常 异常").split(' ');
            set(QString("LUMO_DI.#%1").arg(port), true);
            refresh();
            expected[port] = "正常";
            QCOMPARE(states(), expected.join(' '));
            bench_.enablePort(port, false);
            refresh();
            expected[port] = "关闭";
            QCOMPARE(states(), expected.join(' '));
            bench_.enablePort(port, true);
            set(QString("LUMO_DI.#%1").arg(port), false);
        }
        set("LUMO_DI.#0", true);
        bench_.enablePort(DI_WATER_COOLING_STATE, false);
        refresh();
        QVERIFY(label("lblPressure")->styleSheet().contains("bold"));
        QVERIFY(!label("lblCoolerState")->styleSheet().contains("bold"));
        QCOMPARE(label("lblLaserState")->styleSheet() + label("lblWelding")->styleSheet(), "");
    }

    void setPoints_areReadBackInPercent() {
        set("LUMO_AO_2.#0", 16384);
        set("LUMO_AO_3.#0", 32767);
        set("LUMO_AO_1.#0", "983");
        set("LUMO_AO_0.#0", 9);
        refresh();
        QCOMPARE(setPoints(), "50.00 100.00 3.00");
        bench_.enablePort(AO_LASER_POWER, false);
        set("LUMO_AO_2.#0", QVariant());
        refresh();
        QCOMPARE(setPoints(), "0.00 100.00 0.00");
    }

    /// Another page in front of the monitor's is its panel's as well; a panel that is hidden reads nothing.
    void registers_areReadAsLongAsThePanelIsShown() {
        bench_.click("btnDeviceControl");
        set("LUMO_DI.#0", true);
        refresh();
        QCOMPARE(label("lblLaserState")->text(), "正常");
        bench_.page->hide();
        set("LUMO_DI.#0", false);
        bench_.time.advance(10 * refreshMs);
        QCOMPARE(label("lblLaserState")->text(), "正常");
        bench_.page->show();
        refresh();
        QCOMPARE(label("lblLaserState")->text(), "异常");
    }

    void runs_areCountedWhenTheyReachTheLastLine_data() {
        QTest::addColumn<QString>("delays");  // the program
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("atMs");
        QTest::addColumn<QString>("event");
        QTest::addColumn<QString>("counted");
        const auto row = [](const char* name, const char* delays, int from, int atMs, const char* counted) {
            QTest::newRow(name) << delays << from << atMs << name << counted;
        };
        row("to its end", "1000 2000 500", 0, 0, "1 3");
        row("from the last line", "1000 2000 500", 2, 0, "1 0");
        row("one line, nearly two seconds", "1999", 0, 0, "1 1");
        row("empty", "", 0, 0, "0 0");
        row("pause before the last line", "1000 2000 500", 0, 1500, "0 0");
        row("pause on the last line", "1000 2000 500", 0, 3200, "1 3");
        row("power lost", "1000 2000 500", 0, 1500, "0 0");
        row("clear", "1000 2000 500", 0, 1500, "1 3");
        row("leave the page", "1000 2000 500", 0, 1500, "1 3");
        row("hide the panel", "1000 2000 500", 0, 1500, "1 3");
        row("shorten the program", "1000 2000 500", 0, 1500, "0 0");
    }

    void runs_areCountedWhenTheyReachTheLastLine() {
        QFETCH(QString, delays);
        QFETCH(int, from);
        QFETCH(int, atMs);
        QFETCH(QString, event);
        const auto load = [this](const QString& program) {
            QJsonArray lines;
            for (const QString& delay : program.split(' ', Qt::SkipEmptyParts)) {
                lines << QJsonObject{{"type", "delay"}, {"delaytime", delay.toInt()}};
            }
            m("lumo.program")->loadJson(this, lines);
        };
        const QMap<QString, std::function<void()>> acts{
            {"pause", [] { PageBench::pause(); }},
            {"power", [] { ScriptedRobot::setPower("off"); }},
            {"clear", [this] { bench_.click("btnClear"); }},
            {"leave", [this] { bench_.click("btnDeviceControl"); }},
            {"hide", [this] { bench_.page->hide(); }},
            {"shorten", [load] { load("1999"); }},
        };
        ScriptedRobot::setPower("on");
        load(delays);
        bench_.at(atMs, acts.value(event.section(' ', 0, 0), [] {}));
        bench_.run(from);
        bench_.settle();
        QTEST(counted(), "counted");
        QCOMPARE(QString("%1 %2").arg(m("lumo.count")->getInt()).arg(m("lumo.processTime")->getInt()),
                 counted());
    }

    void time_beginsWithTheLastStart_andClearingZeroesBoth() {
        ScriptedRobot::setPower("on");
        bench_.load(R"([{"type":"delay","delaytime":1000},{"type":"delay","delaytime":2500}])");
        bench_.at(2900, [] { PageBench::pause(); });
        m("lumo.count")->setValue(this, 41);
        bench_.run();
        bench_.settle();
        QCOMPARE(counted(), "?");
        bench_.time.advance(60000);
        bench_.run(bench_.resumeLine());
        QCOMPARE(counted(), "?");
        bench_.click("btnClear");
        QCOMPARE(counted(), "0 0");
        QCOMPARE(m("lumo.count")->value(), QVariant(0));
    }
};

LUMO_TEST(TestStatusMonitor)
#include "test_statusmonitor.moc"
