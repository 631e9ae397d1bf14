#include "devices/devicecontrolwidget.h"
#include "devices/handlit.h"
#include "devices/ports.h"
#include "panel/pagebench.h"
#include "support/suite.h"
#include "support/text.h"

#include <QDoubleSpinBox>

using namespace test;

/// The device panel, worked by mouse and keyboard; what it does is read from the robot service.
class TestDeviceControl : public QObject {
    Q_OBJECT

    PageBench bench_;
    std::unique_ptr<QObject> insides_;

    DeviceControlWidget* panel() const { return bench_.page->findChild<DeviceControlWidget*>(); }
    QPushButton* button(const QString& name) const {
        return child<QPushButton>(panel(), "btn" + name.toLatin1());
    }
    QDoubleSpinBox* field(const char* name) const { return child<QDoubleSpinBox>(panel(), name); }
    void refresh() { bench_.time.advance(160); }
    /// Presses, each after the panel has followed the one before; "+" joins those that come at once.
    void press(const QString& names) {
        for (const QString& together : names.split(' ')) {
            refresh();
            for (const QString& name : together.split('+')) {
                click(button(name));
            }
        }
        refresh();
    }
    void type(const char* name, const QString& text) const {
        field(name)->setFocus();
        field(name)->selectAll();
        QTest::keyClicks(field(name), text);
    }
    /// What was sent, without the times.
    QString sent() const {
        QStringList result;
        for (const QString& line : bench_.robot.log()) {
            result << line.section(' ', 1);
        }
        return result.join(", ");
    }
    /// Whether exactly the devices whose outputs are on are recorded as lit by hand.
    bool recordIsRight() const {
        const QMap<I_PORT, QString> devices{
            {DO_LASER_ENABLE, "LASER"}, {DO_RED_LIGHT, "RED"}, {DO_WIRE_ENABLE, "WIRE"}, {DO_GAS, "GAS"}};
        return std::all_of(devices.keyBegin(), devices.keyEnd(), [&](I_PORT device) {
            return lumo::isLitByHand(device) == (bench_.robot.output(devices[device]) != 0.0);
        });
    }
    /// Does something inside the write that the log tells so.
    void inside(const QString& write, const std::function<void()>& action) {
        insides_ = std::make_unique<QObject>();
        connect(kordservice(), &KordService::issued, insides_.get(), [this, write, action] {
            if (bench_.robot.log().last().section(' ', 1) == write) {
                insides_.release()->deleteLater();
                action();
            }
        });
    }
    static void setOutput(I_PORT port, bool on) {
        kordservice()
            ->dataNode("register.values")
            ->set(nullptr, m("lumo.port")->c(port)->c("name")->getString(), on);
    }

private slots:
    void init() {
        bench_.renew();
        Q_UNUSED(lumo::takeLitByHand());
        bench_.robot.setPower("on");
        bench_.click("btnDeviceControl");
        bench_.robot.mark();
    }

    void cleanup() { bench_.closeBoxes(); }

    void presses_data() {
        QTest::addColumn<QString>("presses");
        QTest::addColumn<QString>("writes");
        const auto row = [](const char* what, const char* presses, const char* writes) {
            QTest::newRow(what) << presses << writes;
        };
        row("locked, nothing is written", "LaserTest RedLight WireTest BlowTest", "");
        row("laser", "LaserControl LaserTest LaserTest LaserControl",
            "LASERLOCK 1, LASER 1, FREQ 16384, POWER 4096, DUTY 32767, "
            "LASER 0, FREQ 16384, POWER 4096, DUTY 32767, LASER 0, LASERLOCK 0");
        row("laser lock released while it is on", "LaserControl LaserTest LaserControl LaserTest",
            "LASERLOCK 1, LASER 1, FREQ 16384, POWER 4096, DUTY 32767, LASER 0, LASERLOCK 0");
        row("laser pressed just after its release", "LaserControl LaserTest LaserControl+LaserTest",
            "LASERLOCK 1, LASER 1, FREQ 16384, POWER 4096, DUTY 32767, LASER 0, LASERLOCK 0");
        row("laser lock pressed twice at once", "LaserControl+LaserControl",
            "LASERLOCK 1, LASER 0, LASERLOCK 1");
        row("laser lock released twice at once", "LaserControl LaserControl+LaserControl",
            "LASERLOCK 1, LASER 0, LASERLOCK 0, LASERLOCK 0");
        row("red light stays when the lock is released",
            "LaserControl RedLight RedLight RedLight LaserControl",
            "LASERLOCK 1, RED 1, RED 0, RED 1, LASER 0, LASERLOCK 0");
        row("gas", "BlowControl BlowTest BlowTest BlowTest BlowControl BlowTest",
            "GASLOCK 1, GAS 1, GAS 0, GAS 1, GAS 0, GASLOCK 0");
        row("wire", "WireControl WireTest WireTest WireTest WireControl+WireTest",
            "WIRELOCK 1, WIRE 1, SPEED 9830, WIRE 0, SPEED 9830, WIRE 1, SPEED 9830, WIRE 0, WIRELOCK 0");
        row("locks are their device's alone", "BlowControl LaserTest WireTest BlowTest", "GASLOCK 1, GAS 1");
    }

    void presses() {
        QFETCH(QString, presses);
        QFETCH(QString, writes);
        type("dspnLaserFrequency", "50");
        type("dspnLaserRatio", "100");
        type("dspnLaserPower", "12.5");
        type("dspnWireSpeed", "30");
        press(presses);
        QCOMPARE(sent(), writes);
        QVERIFY(recordIsRight());
        QCOMPARE(field("dspnLaserPower")->value(), 12.5);
    }

    void portOutOfUse_isNotWritten_data() {
        QTest::addColumn<QVector<int>>("ports");
        QTest::addColumn<QString>("writes");
        QTest::newRow("laser")
            << QVector<int>{DO_LASER_ENABLE}
            << "LASERLOCK 1, FREQ 0, POWER 0, DUTY 0, GASLOCK 1, GAS 1, WIRELOCK 1, WIRE 1, SPEED 0, RED 1";
        QTest::newRow("laser lock") << QVector<int>{DO_LASER_SAFETY_LOCK}
                                    << "GASLOCK 1, GAS 1, WIRELOCK 1, WIRE 1, SPEED 0";
        QTest::newRow("set points, red light")
            << QVector<int>{AO_LASER_POWER, AO_LASER_FREQUENCY, AO_LASER_DUTY_CYCLE, AO_WIRE_SPEED,
                            DO_RED_LIGHT}
            << "LASERLOCK 1, LASER 1, GASLOCK 1, GAS 1, WIRELOCK 1, WIRE 1";
    }

    void portOutOfUse_isNotWritten() {
        QFETCH(QVector<int>, ports);
        QFETCH(QString, writes);
        for (const int port : ports) {
            bench_.enablePort(port, false);
        }
        press("LaserControl LaserTest BlowControl BlowTest WireControl WireTest RedLight");
        QCOMPARE(sent(), writes);
        QVERIFY(recordIsRight());
    }

    void outputs_areShownAndFollowed() {
        const struct {
            QVector<I_PORT> on;
            const char *enabled, *laser, *light;
        } rows[] = {
            {{}, "", "darkgray", "darkgray"},
            {{DO_LASER_SAFETY_LOCK}, "LaserTest RedLight", "black", "black"},
            {{DO_LASER_SAFETY_LOCK, DO_LASER_ENABLE}, "LaserTest RedLight", "red", "black"},
            {{DO_LASER_SAFETY_LOCK, DO_RED_LIGHT}, "LaserTest RedLight", "black", "red"},
            {{DO_LASER_ENABLE, DO_RED_LIGHT}, "", "darkgray", "darkgray"},
            {{DO_WIRE_SAFETY_LOCK, DO_WIRE_ENABLE}, "WireTest", "darkgray", "darkgray"},
            {{DO_GAS_SAFETY_LOCK, DO_GAS}, "BlowTest", "darkgray", "darkgray"},
        };
        bench_.click("btnProject");  // the panel follows behind another page too
        for (const auto& row : rows) {
            for (int port = DO_GAS; port < AO_WIRE_SPEED; ++port) {
                setOutput(I_PORT(port), row.on.contains(I_PORT(port)));
            }
            refresh();
            QString enabled;
            for (const char* const name : {"LaserTest", "RedLight", "WireTest", "BlowTest"}) {
                enabled += button(name)->isEnabled() ? QString(' ') + name : QString();
            }
            QCOMPARE(enabled.trimmed(), row.enabled);
            QVERIFY(button("LaserTest")->styleSheet().contains(QString(row.laser) + ';'));
            QVERIFY(button("RedLight")->styleSheet().contains(QString(row.light) + ';'));
        }
        QCOMPARE(sent(), "");
    }

    void fields_takeWhatIsTyped() {
        const struct {
            const char *name, *typed;
            double value;
        } rows[] = {{"dspnLaserFrequency", "100", 10.0}, {"dspnWireSpeed", "99.99", 99.99},
                    {"dspnLaserRatio", "100", 100.0},    {"dspnLaserRatio", "100.01", 100.0},
                    {"dspnLaserPower", "1,5", 1.5},      {"dspnLaserPower", "1.255", 1.25},
                    {"dspnLaserPower", "-7", 7.0},       {"dspnLaserPower", "98.5", 98.5}};
        for (const auto& row : rows) {
            type(row.name, row.typed);
            QCOMPARE(field(row.name)->value(), row.value);
        }
        QTest::keyClick(field("dspnLaserPower"), Qt::Key_Up);
        QTest::keyClick(field("dspnLaserPower"), Qt::Key_Up);
        QCOMPARE(field("dspnLaserPower")->value(), 99.99);
        QCOMPARE(sent(), "");
    }

    void keyboardAndFinger_switchOnlyWhatIsUnlocked() {
        press("BlowControl LaserControl");
        QTest::keyClick(button("BlowControl"), Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
        QTest::mousePress(button("LaserTest"), Qt::LeftButton);
        setOutput(DO_LASER_SAFETY_LOCK, false);
        refresh();
        QTest::mouseRelease(button("LaserTest"), Qt::LeftButton);
        QCOMPARE(sent(), "GASLOCK 1, LASERLOCK 1, GAS 1");
    }

    void deviceLeftOnWithoutItsLock_canBeSwitchedOff() {
        press("LaserControl LaserTest");
        setOutput(DO_LASER_SAFETY_LOCK, false);
        bench_.robot.mark();
        click(button("LaserTest"));
        QCOMPARE(sent(), "LASER 0, FREQ 0, POWER 0, DUTY 0");
    }

    /// The stop does as the executor does; what is written after it comes to nothing.
    void stopInsideAWrite_leavesNothingOn() {
        const QString off = ", POWER 0, LASER 0, DUTY 0, FREQ 0";
        for (const QString write : {"LASER 1", "POWER 13107"}) {
            init();
            press("LaserControl");
            type("dspnLaserPower", "40");
            bench_.robot.mark();
            inside(write, [] {
                for (const I_PORT output : lumo::takeLitByHand()) {
                    output < AO_WIRE_SPEED ? setPortDO(nullptr, output, false)
                                           : setPortAO(nullptr, output, 0.0);
                }
            });
            click(button("LaserTest"));
            QCOMPARE(sent(), (write == "LASER 1" ? write : "LASER 1, FREQ 0, POWER 13107") + off + off);
        }
    }

    void endOfThePageWhileItLightsTheLaser_forgetsNothing() {
        press("LaserControl");
        inside("LASER 1", [this] { bench_.page.reset(); });
        button("LaserTest")->click();
        QVERIFY(!bench_.page);
        QCOMPARE(lumo::takeLitByHand(), (std::vector<I_PORT>{AO_LASER_POWER, DO_LASER_ENABLE,
                                                             AO_LASER_DUTY_CYCLE, AO_LASER_FREQUENCY}));
        QVERIFY(!lumo::isLitByHand());
    }

    void whatAHandLit_goesOffOnce_whateverEndsIt_data() {
        QTest::addColumn<bool>("quits");
        QTest::addColumn<bool>("withoutPage");
        QTest::newRow("quitting") << true << false;
        QTest::newRow("quitting, the page is gone") << true << true;
        QTest::newRow("power lost") << false << false;
        QTest::newRow("power lost, the page is gone") << false << true;
    }

    /// With the set points; the locks and what was typed stay.
    void whatAHandLit_goesOffOnce_whateverEndsIt() {
        QFETCH(bool, quits);
        QFETCH(bool, withoutPage);
        type("dspnLaserPower", "40");
        press("LaserControl LaserTest RedLight BlowControl BlowTest WireControl WireTest");
        if (withoutPage) {
            bench_.page.reset();
        }
        bench_.robot.mark();
        if (quits) {
            QVERIFY(QMetaObject::invokeMethod(qApp, "aboutToQuit"));
        } else {
            bench_.robot.setPower("off");
        }
        QCOMPARE(sent(), "?");
        QVERIFY(!lumo::isLitByHand());
        QVERIFY(withoutPage || field("dspnLaserPower")->value() == 40.0);
    }

    void whatIsSwitchedOff_staysOff_data() {
        QTest::addColumn<QString>("how");
        for (const char* const how : {"lock", "run", "pause", "power", "mode", "page"}) {
            QTest::newRow(how) << how;
        }
    }

    /// The laser burns by hand; its lock, or the end of a program with a weld, switches it off: the panel,
    /// shown or gone, never brings it back.
    void whatIsSwitchedOff_staysOff() {
        QFETCH(QString, how);
        press("LaserControl LaserTest");
        const QMap<QString, std::function<void()>> acts{
            {"pause", [] { PageBench::pause(); }},
            {"power", [this] { bench_.robot.setPower("off"); }},
            {"mode", [this] { bench_.robot.setMode("manual"); }},
            {"page", [this] { bench_.page.reset(); }},
        };
        bench_.load(R"([{"type":"open","index":0},{"type":"delay","delaytime":1000},{"type":"close"}])");
        bench_.at(700, [this, how, acts] {
            QCOMPARE(bench_.robot.output("LASER"), 1.0);
            acts.value(how, [] {})();
        });
        if (how == "lock") {
            click(button("LaserControl"));
        } else {
            bench_.run();
            bench_.settle();
        }
        QCOMPARE(bench_.robot.output("LASER"), 0.0);
        bench_.closeBoxes();
        bench_.robot.mark();
        bench_.time.advance(10000);
        if (bench_.page) {
            bench_.click("btnProject");
            bench_.click("btnDeviceControl");
            refresh();
            QVERIFY(!button("LaserTest")->styleSheet().contains("red"));
        }
        QCOMPARE(sent(), "");
    }
};

LUMO_TEST(TestDeviceControl)
#include "test_devicecontrol.moc"
