// The status monitor: what it says of the equipment, which runs it counts and how long it finds them.

#include "devices/statusmonitorwidget.h"
#include "editor/language.h"
#include "panel/pagebench.h"

namespace {

const QString normal = QStringLiteral("正常");
const QString abnormal = QStringLiteral("异常");
const QString shutDown = QStringLiteral("关闭");

constexpr const char* stateLabels[] = {"lblLaserState", "lblLaserTopState", "lblCoolerState",
                                       "lblPressure",   "lblTemperatue",    "lblWelding"};

/// Three lines of 1, 2 and 0.5 s.
const QByteArray threeLines = R"([{"type":"delay","delaytime":1000,"execute":true},
                                  {"type":"delay","delaytime":2000,"execute":true},
                                  {"type":"delay","delaytime":500,"execute":true}])";
const QByteArray oneLine = R"([{"type":"delay","delaytime":1999,"execute":true}])";

}  // namespace

class TestStatusMonitor : public QObject {
    Q_OBJECT

    static constexpr int refreshMs = 160;

    test::PageBench bench_;

    StatusMonitorWidget* monitor() const { return bench_.page->findChild<StatusMonitorWidget*>(); }
    QLabel* label(const char* name) const { return monitor()->findChild<QLabel*>(QLatin1String(name)); }
    QString text(const char* name) const { return label(name)->text(); }
    void refresh() { bench_.time.advance(refreshMs); }
    QStringList states() const {
        QStringList texts;
        for (const char* name : stateLabels) {
            texts << text(name);
        }
        return texts;
    }
    QStringList setPoints() const {
        return {text("lblLaserFrequency"), text("lblLaserRatio"), text("lblLaserPower")};
    }
    static void setInput(int port, bool on) {
        kordservice()->dataNode("register.values")->set(nullptr, QStringLiteral("LUMO_DI.#%1").arg(port), on);
    }
    static void setRegister(const QString& name, const QVariant& value) {
        kordservice()->dataNode("register.values")->set(nullptr, name + ".#0", value);
    }
    static int count() { return m("lumo.count")->getInt(); }
    static int seconds() { return m("lumo.processTime")->getInt(); }

private slots:
    /// The first test has a page that was just made.
    void init() {
        for (const char* name : {"LUMO_AO_1", "LUMO_AO_2", "LUMO_AO_3"}) {
            setRegister(name, 0);
        }
        bench_.reset();
        bench_.page->show();
        m("lumo.count")->setValue(this, 0);
        m("lumo.processTime")->setValue(this, 0);
        bench_.click("btnMonitor");
        QVERIFY(monitor()->isVisible());
    }

    void cleanup() { QCOMPARE(bench_.boxes(), QStringList()); }

    void beforeTheFirstLook_nothingIsSaid() {
        QCOMPARE(states().join(""), "//////");
        QCOMPARE(setPoints().join(" "), "0 0 0");
        bench_.time.advance(refreshMs - 1);
        QCOMPARE(states().join(""), "//////");
        bench_.time.advance(1);
        QCOMPARE(states().count(abnormal), 6);
        QCOMPARE(setPoints().join(" "), "0.00 0.00 0.00");
    }

    void eachInput_hasItsLabel_data() {
        QTest::addColumn<int>("port");
        for (int port = DI_LASER_STATE; port <= DI_WELDING_STATE; ++port) {
            QTest::newRow(stateLabels[port]) << port;
        }
    }

    void eachInput_hasItsLabel() {
        QFETCH(int, port);
        setInput(port, true);
        refresh();
        QStringList expected{abnormal, abnormal, abnormal, abnormal, abnormal, abnormal};
        expected[port] = normal;
        QCOMPARE(states(), expected);

        bench_.enablePort(port, false);
        refresh();
        expected[port] = shutDown;
        QCOMPARE(states(), expected);
    }

    void inputsThatCannotBeRead_areAbnormal_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("not assigned") << QString();
        QTest::newRow("no such register") << QStringLiteral("OTHER.#1");
        QTest::newRow("no such bit") << QStringLiteral("LUMO_DI.#99");
        QTest::newRow("no bit") << QStringLiteral("DI2_4");
    }

    void inputsThatCannotBeRead_areAbnormal() {
        QFETCH(QString, name);
        setInput(DI_TEMPERATURE_STATE, true);
        m("lumo.port")->c(DI_TEMPERATURE_STATE)->set(this, "name", name);
        refresh();
        QCOMPARE(text("lblTemperatue"), abnormal);
    }

    void faultsStandOut_theWeldingSignalDoesNot() {
        setInput(DI_LASER_STATE, true);
        bench_.enablePort(DI_WATER_COOLING_STATE, false);
        refresh();
        QVERIFY(label("lblPressure")->styleSheet().contains("color"));
        QVERIFY(label("lblCoolerState")->styleSheet() != label("lblPressure")->styleSheet());
        QCOMPARE(label("lblLaserState")->styleSheet(), QString());
        QCOMPARE(label("lblWelding")->styleSheet(), QString());
    }

    void flag_isClearedByAFault_andSetByNothing_data() {
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<bool>("on");
        QTest::addColumn<bool>("before");
        QTest::addColumn<bool>("after");
        QTest::newRow("good stays good") << true << true << true << true;
        QTest::newRow("good clears nothing") << true << true << false << false;
        QTest::newRow("a fault") << true << false << true << false;
        QTest::newRow("out of use") << false << false << true << true;
        QTest::newRow("out of use clears nothing") << false << true << false << false;
    }

    void flag_isClearedByAFault_andSetByNothing() {
        QFETCH(bool, before);
        QFETCH(bool, enabled);
        QFETCH(bool, on);
        bench_.enablePort(DI_AIR_PRESSURE_STATE, enabled);
        setInput(DI_AIR_PRESSURE_STATE, on);
        QLabel shown;
        refreshTFLabel(before, &shown, DI_AIR_PRESSURE_STATE);
        QTEST(before, "after");
        QCOMPARE(shown.text(), !enabled ? shutDown : on ? normal : abnormal);
    }

    void setPoints_areReadBackInPercent_data() {
        QTest::addColumn<int>("port");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QString>("shown");
        QTest::newRow("half") << int(AO_LASER_FREQUENCY) << QVariant(16384) << "50.00 0.00 0.00";
        QTest::newRow("full") << int(AO_LASER_DUTY_CYCLE) << QVariant(32767) << "0.00 100.00 0.00";
        QTest::newRow("one step") << int(AO_LASER_POWER) << QVariant(1) << "0.00 0.00 0.00";
        QTest::newRow("three percent") << int(AO_LASER_POWER) << QVariant(983) << "0.00 0.00 3.00";
        QTest::newRow("text") << int(AO_LASER_POWER) << QVariant("16384") << "0.00 0.00 50.00";
        QTest::newRow("wire") << int(AO_WIRE_SPEED) << QVariant(16384) << "0.00 0.00 0.00";
        QTest::newRow("not readable") << int(AO_LASER_POWER) << QVariant() << "0.00 0.00 0.00";
    }

    void setPoints_areReadBackInPercent() {
        QFETCH(int, port);
        QFETCH(QVariant, value);
        QFETCH(QString, shown);
        setRegister(QStringLiteral("LUMO_AO_%1").arg(port - AO_WIRE_SPEED), value);
        refresh();
        QCOMPARE(setPoints().join(" "), shown);
        bench_.enablePort(port, false);
        refresh();
        QCOMPARE(setPoints().join(" "), "0.00 0.00 0.00");
    }

    void registers_areReadAsLongAsThePanelIsShown();

    void runs_areCounted_data();
    void runs_areCounted();
    void pauseOnTheLastLine_whileIdle_countsAgain();
    void timeBegins_withTheLastStart();

    void clearing_zeroesBoth_andSaysWho();

    void language_data();
    void language();

private:
    void act(const QString& what);
};

/// Another page in front of the monitor's is its panel's as well; a panel that is hidden reads nothing.
void TestStatusMonitor::registers_areReadAsLongAsThePanelIsShown() {
    refresh();
    bench_.click("btnDeviceControl");
    setInput(DI_LASER_STATE, true);
    refresh();
    QCOMPARE(text("lblLaserState"), normal);

    bench_.page->hide();
    setInput(DI_LASER_STATE, false);
    bench_.time.advance(10 * refreshMs);
    QCOMPARE(text("lblLaserState"), normal);

    bench_.page->show();
    refresh();
    QCOMPARE(text("lblLaserState"), abnormal);
}

void TestStatusMonitor::runs_areCounted_data() {
    QTest::addColumn<QByteArray>("program");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("atMs");
    QTest::addColumn<QString>("event");
    QTest::addColumn<int>("runs");
    QTest::addColumn<int>("lastSeconds");
    QTest::newRow("to its end") << threeLines << 0 << 0 << "" << 1 << 3;
    QTest::newRow("from the last line") << threeLines << 2 << 0 << "" << 1 << 0;
    QTest::newRow("one line, nearly two seconds") << oneLine << 0 << 0 << "" << 1 << 1;
    QTest::newRow("empty") << QByteArray("[]") << 0 << 0 << "" << 0 << 0;
    QTest::newRow("paused before the last line") << threeLines << 0 << 1500 << "pause" << 0 << 0;
    QTest::newRow("paused on the last line") << threeLines << 0 << 3200 << "pause" << 1 << 3;
    QTest::newRow("power lost") << threeLines << 0 << 1500 << "power" << 0 << 0;
    QTest::newRow("cleared meanwhile") << threeLines << 0 << 1500 << "clear" << 1 << 3;
    QTest::newRow("page left") << threeLines << 0 << 1500 << "leave" << 1 << 3;
    QTest::newRow("panel hidden") << threeLines << 0 << 1500 << "hide" << 1 << 3;
    QTest::newRow("program shortened meanwhile") << threeLines << 0 << 1500 << "shorten" << 0 << 0;
}

void TestStatusMonitor::act(const QString& what) {
    if (what == "pause") {
        bench_.pause();
    } else if (what == "power") {
        test::ScriptedRobot::setPower("off");
    } else if (what == "clear") {
        bench_.click("btnClear");
    } else if (what == "leave") {
        bench_.click("btnDeviceControl");
    } else if (what == "hide") {
        bench_.page->hide();
    } else if (what == "shorten") {
        bench_.load(oneLine);
    }
}

void TestStatusMonitor::runs_areCounted() {
    QFETCH(QByteArray, program);
    QFETCH(int, from);
    QFETCH(int, atMs);
    QFETCH(QString, event);
    bench_.load(program);
    bench_.at(atMs, [this, event] { act(event); });
    bench_.run(from);
    bench_.settle();
    bench_.closeBoxes();
    QTEST(count(), "runs");
    QTEST(seconds(), "lastSeconds");
    QCOMPARE(text("lblNum"), QString::number(count()));
    QCOMPARE(text("lblDelay"), QString::number(seconds()));
}

void TestStatusMonitor::pauseOnTheLastLine_whileIdle_countsAgain() {
    bench_.load(oneLine);
    bench_.run();
    bench_.pause();
    bench_.settle();
    QCOMPARE(count(), 2);
    bench_.run();
    bench_.settle();
    QCOMPARE(text("lblNum"), "3");
}

void TestStatusMonitor::timeBegins_withTheLastStart() {
    bench_.load(threeLines);
    bench_.at(2900, [] { test::ExecutorBench::pause(); });
    bench_.run();
    bench_.settle();
    QCOMPARE(count(), 0);
    bench_.time.advance(60000);
    bench_.run(bench_.resumeLine());
    QCOMPARE(text("lblNum"), "1");
    QCOMPARE(text("lblDelay"), "2");
}

void TestStatusMonitor::clearing_zeroesBoth_andSaysWho() {
    m("lumo.count")->setValue(this, 41);
    m("lumo.processTime")->setValue(this, 17);
    QCOMPARE(text("lblNum") + ' ' + text("lblDelay"), "41 17");
    QStringList written;
    QObject listening;
    for (const char* name : {"count", "processTime"}) {
        connect(m("lumo")->c(name), &ModuleObject::changed, &listening,
                [&written, name, this](const QVariant& value, const QVariant&, const QObject* by) {
                    written << QStringLiteral("%1 %2 %3").arg(name, value.toString()).arg(by == monitor());
                });
    }
    bench_.click("btnClear");
    bench_.click("btnClear");
    QCOMPARE(written, (QStringList{"count 0 1", "processTime 0 1", "count 0 1", "processTime 0 1"}));
    QCOMPARE(text("lblNum") + ' ' + text("lblDelay"), "0 0");
    QCOMPARE(m("lumo.count")->value().type(), QVariant::Int);
}

void TestStatusMonitor::language_data() {
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("title");
    QTest::newRow("Chinese") << "cn" << QStringList{normal, abnormal, shutDown} << "加工统计";
    QTest::newRow("English") << "en" << QStringList{"Normal", "Abnormal", "Shut down"}
                             << "Processing Information";
    QTest::newRow("Russian") << "ru" << QStringList{"В норме", "Не в норме", "Отключено"}
                             << "Статистика обработки";
}

void TestStatusMonitor::language() {
    QFETCH(QString, language);
    const Language shown(language);
    bench_.renew();
    bench_.click("btnMonitor");
    setInput(DI_LASER_STATE, true);
    bench_.enablePort(DI_WATER_COOLING_STATE, false);
    refresh();
    QTEST(QStringList(states().mid(0, 3)), "texts");
    QTEST(text("label_15"), "title");
}

LUMO_TEST_MAIN(TestStatusMonitor)
#include "test_statusmonitor.moc"
