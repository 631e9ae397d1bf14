#include "devices/statusmonitorwidget.h"
#include "panel/pagebench.h"
#include "support/suite.h"
#include "support/text.h"

using namespace test;

/// The status monitor: what it says of the equipment, which runs it counts and how long it finds them.
class TestStatusMonitor : public QObject {
    Q_OBJECT

    PageBench bench_;

    QLabel* label(const char* name) const {
        return child<QLabel>(bench_.page->findChild<StatusMonitorWidget*>(), name);
    }
    /// What the labels show, space between them.
    QString shown(const char* labels) const {
        QStringList texts;
        for (const QByteArray& name : QByteArray(labels).split(' ')) {
            texts << label("lbl" + name)->text();
        }
        return texts.join(' ');
    }
    static constexpr char states[] = "LaserState LaserTopState CoolerState Pressure Temperatue Welding";
    static constexpr char setPoints[] = "LaserFrequency LaserRatio LaserPower";
    static void set(const QString& reg, const QVariant& value) {
        kordservice()->dataNode("register.values")->set(nullptr, reg, value);
    }
    QString next(const char* labels, int ms = 160) {
        bench_.time.advance(ms);
        return shown(labels);
    }

    static constexpr char three[] = R"([{"type":"delay","delaytime":1000},{"type":"delay","delaytime":2000},
                                        {"type":"delay","delaytime":500}])";
    static constexpr char one[] = R"([{"type":"delay","delaytime":1999}])";

private slots:
    void init() {
        bench_.renew();
        bench_.robot.setPower("on");
        m("lumo.count")->setValue(this, 41);
        m("lumo.processTime")->setValue(this, 0);
        bench_.click("btnMonitor");
    }

    /// Faults stand out; the welding signal, which is off whenever the laser is, does not.
    void eachInput_hasItsLabel_andFaultsStandOut() {
        QCOMPARE(next(states, 159), "/ / / / / /");  // nothing is claimed before the first look
        QCOMPARE(next(states, 1), "异常 异常 异常 异常 异常 异常");
        set("LUMO_DI.#0", true);
        QCOMPARE(next(states), "正常 异常 异常 异常 异常 异常");
        set("LUMO_DI.#2", true);
        QCOMPARE(next(states), "正常 异常 正常 异常 异常 异常");
        set("LUMO_DI.#4", true);
        bench_.enablePort(DI_LASER_HEAD_STATE, false);
        QCOMPARE(next(states), "正常 关闭 正常 异常 正常 异常");
        bench_.enablePort(DI_WATER_COOLING_STATE, false);
        set("LUMO_DI.#5", true);
        QCOMPARE(next(states), "正常 关闭 关闭 异常 正常 正常");
        set("LUMO_DI.#5", false);
        m("lumo.port")->c(DI_TEMPERATURE_STATE)->set(this, "name", "NONE.#1");
        QVERIFY(next(states).endsWith("异常 异常") && label("lblPressure")->styleSheet().contains("bold"));
        QVERIFY(!label("lblCoolerState")->styleSheet().contains("bold"));
        QCOMPARE(label("lblLaserState")->styleSheet() + label("lblWelding")->styleSheet(), "");
    }

    /// Another page in front of the monitor's is its panel's as well; a panel that is hidden reads nothing.
    void registers_areReadAsLongAsThePanelIsShown() {
        set("LUMO_AO_1.#0", "983");
        set("LUMO_AO_2.#0", 16384);
        set("LUMO_AO_3.#0", 32767);
        QCOMPARE(shown(setPoints), "0 0 0");
        QCOMPARE(next(setPoints), "50.00 100.00 3.00");
        bench_.click("btnDeviceControl");
        bench_.enablePort(AO_LASER_POWER, false);
        set("LUMO_AO_2.#0", QVariant());
        QCOMPARE(next(setPoints), "0.00 100.00 0.00");
        bench_.page->hide();
        set("LUMO_AO_3.#0", 0);
        QCOMPARE(next(setPoints, 1600), "0.00 100.00 0.00");
        bench_.page->show();
        QCOMPARE(next(setPoints), "0.00 0.00 0.00");
    }

    void runs_areCountedWhenTheyReachTheLastLine_data() {
        QTest::addColumn<QByteArray>("program");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("atMs");
        QTest::addColumn<QString>("counted");
        const auto row = [](const char* event, const char* program, int from, int atMs, const char* counted) {
            QTest::newRow(event) << QByteArray(program) << from << atMs << counted;
        };
        row("to its end", three, 0, 0, "42 3");
        row("from the last line", three, 2, 0, "42 0");
        row("one line, nearly two seconds", one, 0, 0, "42 1");
        row("empty", "[]", 0, 0, "41 0");
        row("pause before the last line", three, 0, 1500, "41 0");
        row("pause on the last line", three, 0, 3200, "42 3");
        row("power lost", three, 0, 1500, "41 0");
        row("clear", three, 0, 1500, "1 3");
        row("hide the panel", three, 0, 1500, "42 3");
        row("shorten the program", three, 0, 1500, "41 0");
    }

    void runs_areCountedWhenTheyReachTheLastLine() {
        QFETCH(QByteArray, program);
        QFETCH(int, from);
        QFETCH(int, atMs);
        const QMap<QString, std::function<void()>> acts{
            {"pause", [] { PageBench::pause(); }},
            {"power", [this] { bench_.robot.setPower("off"); }},
            {"clear", [this] { bench_.click("btnClear"); }},
            {"leave", [this] { bench_.click("btnDeviceControl"); }},
            {"hide", [this] { bench_.page->hide(); }},
            {"shorten", [this] { bench_.load(one); }},
        };
        bench_.load(program);
        bench_.at(atMs, acts.value(QString(QTest::currentDataTag()).section(' ', 0, 0), [] {}));
        bench_.run(from);
        bench_.settle();
        QTEST(shown("Num Delay"), "counted");
        closeBoxes();
        // The time of a run that goes on after a pause begins with its last start.
        bench_.time.advance(60000);
        bench_.page->show();
        bench_.robot.setPower("on");
        bench_.load(three);
        bench_.run(1);
        QCOMPARE(shown("Num Delay").section(' ', 1), "2");
        QCOMPARE(m("lumo.count")->getString() + ' ' + m("lumo.processTime")->getString(), shown("Num Delay"));
    }
};

LUMO_TEST(TestStatusMonitor)
#include "test_statusmonitor.moc"
