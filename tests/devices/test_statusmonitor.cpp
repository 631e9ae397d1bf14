#include "devices/signlabel.h"
#include "devices/statusmonitorwidget.h"
#include "panel/pagebench.h"
#include "support/suite.h"

using namespace test;

/// The status monitor: the states of the equipment, the count of runs and their duration.
class TestStatusMonitor : public QObject {
    Q_OBJECT

    PageBench bench_;

    /// The texts of the labels, joined by spaces; "!" after one with the sign of a fault.
    QString shown(const char* labels) const {
        const auto* const monitor = bench_.page->findChild<StatusMonitorWidget*>();
        QStringList texts;
        for (const QByteArray& name : QByteArray(labels).split(' ')) {
            const auto* const label = child<QLabel>(monitor, "lbl" + name);
            const auto* const state = qobject_cast<const lumo::SignLabel*>(label);
            texts << label->text() + (state && state->sign() == lumo::Sign::Warning ? "!" : "");
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

    void inputsAndSetPoints_areReadBack_alsoBehindAnotherPage() {
        QCOMPARE(next(states, 159), "/ / / / / /");  // before the first read
        QCOMPARE(next(states, 1), "异常! 异常! 异常! 异常! 异常! 异常");
        set("LUMO_DI.#0", true);
        set("LUMO_DI.#4", true);
        bench_.enablePort(DI_LASER_HEAD_STATE, false);
        QCOMPARE(next(states), "正常 关闭 异常! 异常! 正常 异常");
        set("LUMO_DI.#2", true);
        set("LUMO_DI.#5", true);
        QCOMPARE(next(states), "正常 关闭 正常 异常! 正常 正常");
        set("LUMO_AO_1.#0", "983");
        set("LUMO_AO_2.#0", 16384);
        set("LUMO_AO_3.#0", 32767);
        QCOMPARE(next(setPoints), "50.00 100.00 3.00");
        bench_.click("btnDeviceControl");
        bench_.enablePort(AO_LASER_POWER, false);
        set("LUMO_AO_2.#0", QVariant());
        QCOMPARE(next(setPoints), "0.00 100.00 0.00");
    }

    void runs_areCountedWhenTheyReachTheLastLine() {
        const struct {
            QString event;
            const char* program;
            int from, atMs;
            QString counted;
        } rows[] = {
            {"to its end", three, 0, 0, "42 3"},
            {"from the last line", three, 2, 0, "42 0"},
            {"one line, nearly two seconds", one, 0, 0, "42 1"},
            {"empty", "[]", 0, 0, "41 0"},
            {"pause before the last line", three, 0, 1500, "41 0"},
            {"pause on the last line", three, 0, 3200, "42 3"},
            {"power lost", three, 0, 1500, "41 0"},
            {"clear", three, 0, 1500, "1 3"},
        };
        const QMap<QString, std::function<void()>> acts{
            {"pause", [] { PageBench::pause(); }},
            {"power", [this] { bench_.robot.setPower("off"); }},
            {"clear", [this] { bench_.click("btnClear"); }},
        };
        for (const auto& row : rows) {
            init();
            bench_.load(row.program);
            bench_.at(row.atMs, acts.value(row.event.section(' ', 0, 0), [] {}));
            bench_.run(row.from);
            bench_.waitUntilIdle();
            QCOMPARE(row.event + ": " + shown("Num Delay"), row.event + ": " + row.counted);
        }
        // After a pause the time counts from the last start.
        bench_.run(1);
        QCOMPARE(shown("Num Delay"), "2 2");
        bench_.click("btnClear");
        QCOMPARE(shown("Num Delay"), "0 0");
    }
};

LUMO_TEST(TestStatusMonitor)
#include "test_statusmonitor.moc"
