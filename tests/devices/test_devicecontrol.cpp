// The device panel, worked by mouse and keyboard; what it does is read from the robot service.

#include "devices/devicecontrolwidget.h"
#include "devices/handlit.h"
#include "devices/ports.h"
#include "panel/pagebench.h"

#include <QDoubleSpinBox>

#include <algorithm>
#include <functional>

namespace {

const QString darkGray = QStringLiteral("background-color: darkgray;");
const QString red = QStringLiteral("background-color: red;");
const QString black = QStringLiteral("background-color: black;");

/// A weld of about a second.
const QByteArray oneWeld = R"([{"type":"open","index":0,"weldspeed":"20","execute":true},
    {"type":"moveL","speed":20,"zone":0,"execute":true,"point":{"trans":[0.5,0,0],"rot":[0,0,0]}},
    {"type":"close","execute":true}])";

}  // namespace

class TestDeviceControl : public QObject {
    Q_OBJECT

    static constexpr int refreshMs = 160;

    test::PageBench bench_;
    std::unique_ptr<QObject> insides_;

    DeviceControlWidget* panel() const { return bench_.page->findChild<DeviceControlWidget*>(); }
    QPushButton* button(const char* name) const {
        return panel()->findChild<QPushButton*>(QLatin1String(name));
    }
    QDoubleSpinBox* field(const char* name) const {
        return panel()->findChild<QDoubleSpinBox*>(QLatin1String(name));
    }

    /// One press, at once after what was before.
    void press(const QByteArray& name) const { QTest::mouseClick(button(name), Qt::LeftButton); }
    void refresh() { bench_.time.advance(refreshMs); }
    /// Presses, each after the panel has followed the one before; "+" joins those that come at once.
    void pressAll(const QByteArray& names) {
        for (const QByteArray& together : names.split(' ')) {
            refresh();
            for (const QByteArray& name : together.split('+')) {
                press(name);
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
    QStringList sent() const {
        QStringList result;
        for (const QString& line : bench_.robot.log()) {
            result << line.section(QLatin1Char(' '), 1);
        }
        return result;
    }
    /// Whether exactly the devices whose outputs are on are recorded as lit by hand.
    bool recordIsRight() const {
        const QPair<const char*, I_PORT> devices[] = {
            {"LASER", DO_LASER_ENABLE}, {"RED", DO_RED_LIGHT}, {"WIRE", DO_WIRE_ENABLE}, {"GAS", DO_GAS}};
        return std::all_of(std::begin(devices), std::end(devices), [this](const auto& device) {
            return lumo::isLitByHand(device.second) == (bench_.robot.output(device.first) != 0.0);
        });
    }
    /// Does something inside the first write that the log tells so.
    void inside(const QString& write, std::function<void()> action) {
        insides_ = std::make_unique<QObject>();
        connect(kordservice(), &KordService::issued, insides_.get(), [this, write, action] {
            if (sent().value(sent().size() - 1) == write) {
                insides_.release()->deleteLater();
                action();
            }
        });
    }
    static void setOutput(I_PORT port, bool on) {
        const QString name = m("lumo.port")->c(port)->c("name")->getString();
        kordservice()->dataNode("register.values")->set(nullptr, name, on);
    }

private slots:
    /// The first test has a page that was just made; the others find it locked and empty again.
    void init() {
        bench_.reset();
        Q_UNUSED(lumo::takeLitByHand());
        if (!bench_.page) {
            bench_.makePage();
        }
        bench_.click("btnDeviceControl");
        QVERIFY(panel()->isVisible());
        for (QDoubleSpinBox* box : panel()->findChildren<QDoubleSpinBox*>()) {
            box->setValue(0.0);
        }
        if (QByteArray(QTest::currentTestFunction()) != "atFirst_everythingIsLocked_andNothingWritten") {
            refresh();
        }
        bench_.robot.mark();
    }

    void cleanup() { QCOMPARE(bench_.boxes(), QStringList()); }

    void atFirst_everythingIsLocked_andNothingWritten() {
        for (const char* name : {"btnLaserControl", "btnBlowControl", "btnWireControl"}) {
            QVERIFY2(button(name)->isEnabled(), name);
        }
        for (const char* name : {"btnLaserTest", "btnRedLight", "btnWireTest", "btnBlowTest"}) {
            QVERIFY2(!button(name)->isEnabled(), name);
        }
        bench_.time.advance(10000);
        QCOMPARE(button("btnLaserTest")->styleSheet(), darkGray);
        QCOMPARE(button("btnRedLight")->styleSheet(), darkGray);
        pressAll("btnLaserTest btnRedLight btnWireTest btnBlowTest");
        QCOMPARE(sent(), QStringList());
        QVERIFY(panel()->findChild<QLabel*>("label")->hasFocus());
    }

    void presses_data() {
        QTest::addColumn<QByteArray>("presses");
        QTest::addColumn<QStringList>("writes");
        const auto row = [](const char* name, const char* presses, const char* writes) {
            QTest::newRow(name) << QByteArray(presses) << QString(writes).split(", ", Qt::SkipEmptyParts);
        };
        row("laser lock", "btnLaserControl", "LASERLOCK 1");
        row("laser lock and release", "btnLaserControl btnLaserControl", "LASERLOCK 1, LASER 0, LASERLOCK 0");
        row("laser", "btnLaserControl btnLaserTest",
            "LASERLOCK 1, LASER 1, FREQ 16384, POWER 4096, DUTY 32767");
        row("laser twice", "btnLaserControl btnLaserTest btnLaserTest",
            "LASERLOCK 1, LASER 1, FREQ 16384, POWER 4096, DUTY 32767, "
            "LASER 0, FREQ 16384, POWER 4096, DUTY 32767");
        row("laser lock released while it is on", "btnLaserControl btnLaserTest btnLaserControl btnLaserTest",
            "LASERLOCK 1, LASER 1, FREQ 16384, POWER 4096, DUTY 32767, LASER 0, LASERLOCK 0");
        row("laser pressed just after its release",
            "btnLaserControl btnLaserTest btnLaserControl+btnLaserTest",
            "LASERLOCK 1, LASER 1, FREQ 16384, POWER 4096, DUTY 32767, LASER 0, LASERLOCK 0");
        row("laser lock pressed twice at once", "btnLaserControl+btnLaserControl",
            "LASERLOCK 1, LASER 0, LASERLOCK 1");
        row("laser released twice at once", "btnLaserControl btnLaserTest btnLaserControl+btnLaserControl",
            "LASERLOCK 1, LASER 1, FREQ 16384, POWER 4096, DUTY 32767, LASER 0, LASERLOCK 0, LASERLOCK 0");
        row("red light", "btnLaserControl btnRedLight btnRedLight", "LASERLOCK 1, RED 1, RED 0");
        row("red light stays when the lock is released", "btnLaserControl btnRedLight btnLaserControl",
            "LASERLOCK 1, RED 1, LASER 0, LASERLOCK 0");
        row("gas", "btnBlowControl btnBlowTest btnBlowTest", "GASLOCK 1, GAS 1, GAS 0");
        row("gas lock released while it is on", "btnBlowControl btnBlowTest btnBlowControl btnBlowTest",
            "GASLOCK 1, GAS 1, GAS 0, GASLOCK 0");
        row("wire", "btnWireControl btnWireTest btnWireTest",
            "WIRELOCK 1, WIRE 1, SPEED 9830, WIRE 0, SPEED 9830");
        row("wire lock released while it is on", "btnWireControl btnWireTest btnWireControl+btnWireTest",
            "WIRELOCK 1, WIRE 1, SPEED 9830, WIRE 0, WIRELOCK 0");
        row("locks are their device's alone", "btnBlowControl btnLaserTest btnWireTest btnBlowTest",
            "GASLOCK 1, GAS 1");
    }

    void presses() {
        QFETCH(QByteArray, presses);
        QFETCH(QStringList, writes);
        type("dspnLaserFrequency", "50");
        type("dspnLaserRatio", "100");
        type("dspnLaserPower", "12.5");
        type("dspnWireSpeed", "30");
        pressAll(presses);
        QVERIFY(test::sameLog(sent(), writes));
        QVERIFY(recordIsRight());
        QCOMPARE(field("dspnLaserPower")->value(), 12.5);
    }

    void portOutOfUse_isNotWritten_data() {
        QTest::addColumn<QVector<int>>("ports");
        QTest::addColumn<QStringList>("writes");
        QTest::newRow("laser") << QVector<int>{DO_LASER_ENABLE}
                               << QStringList{"LASERLOCK 1", "FREQ 0",     "POWER 0", "DUTY 0",  "GASLOCK 1",
                                              "GAS 1",       "WIRELOCK 1", "WIRE 1",  "SPEED 0", "RED 1"};
        QTest::newRow("laser lock") << QVector<int>{DO_LASER_SAFETY_LOCK}
                                    << QStringList{"GASLOCK 1", "GAS 1", "WIRELOCK 1", "WIRE 1", "SPEED 0"};
        QTest::newRow("gas lock, wire") << QVector<int>{DO_GAS_SAFETY_LOCK, DO_WIRE_ENABLE}
                                        << QStringList{"LASERLOCK 1", "LASER 1",    "FREQ 0",  "POWER 0",
                                                       "DUTY 0",      "WIRELOCK 1", "SPEED 0", "RED 1"};
        QTest::newRow("set points, red light")
            << QVector<int>{AO_LASER_POWER, AO_LASER_FREQUENCY, AO_LASER_DUTY_CYCLE, AO_WIRE_SPEED,
                            DO_RED_LIGHT}
            << QStringList{"LASERLOCK 1", "LASER 1", "GASLOCK 1", "GAS 1", "WIRELOCK 1", "WIRE 1"};
    }

    void portOutOfUse_isNotWritten() {
        QFETCH(QVector<int>, ports);
        QFETCH(QStringList, writes);
        for (const int port : ports) {
            bench_.enablePort(port, false);
        }
        pressAll(
            "btnLaserControl btnLaserTest btnBlowControl btnBlowTest btnWireControl btnWireTest "
            "btnRedLight");
        QVERIFY(test::sameLog(sent(), writes));
        QVERIFY(recordIsRight());
    }

    void outputs_areShown_data() {
        QTest::addColumn<QVector<int>>("on");
        QTest::addColumn<QByteArray>("enabled");
        QTest::addColumn<QString>("laser");
        QTest::addColumn<QString>("light");
        const auto row = [](const char* name, const QVector<int>& on, const char* enabled,
                            const QString& laser, const QString& light) {
            QTest::newRow(name) << on << QByteArray(enabled) << laser << light;
        };
        row("laser lock", {DO_LASER_SAFETY_LOCK}, "btnLaserTest btnRedLight", black, black);
        row("laser", {DO_LASER_SAFETY_LOCK, DO_LASER_ENABLE}, "btnLaserTest btnRedLight", red, black);
        row("red light", {DO_LASER_SAFETY_LOCK, DO_RED_LIGHT}, "btnLaserTest btnRedLight", black, red);
        row("laser and red light without lock", {DO_LASER_ENABLE, DO_RED_LIGHT}, "", darkGray, darkGray);
        row("wire lock", {DO_WIRE_SAFETY_LOCK}, "btnWireTest", darkGray, darkGray);
        row("gas lock and gas", {DO_GAS_SAFETY_LOCK, DO_GAS}, "btnBlowTest", darkGray, darkGray);
    }

    void outputs_areShown() {
        QFETCH(QVector<int>, on);
        QFETCH(QByteArray, enabled);
        for (const int port : on) {
            setOutput(I_PORT(port), true);
        }
        refresh();
        for (const char* name : {"btnLaserTest", "btnRedLight", "btnWireTest", "btnBlowTest"}) {
            QVERIFY2(button(name)->isEnabled() == enabled.contains(name), name);
        }
        QTEST(button("btnLaserTest")->styleSheet(), "laser");
        QTEST(button("btnRedLight")->styleSheet(), "light");
        for (const char* name :
             {"btnLaserControl", "btnWireControl", "btnBlowControl", "btnWireTest", "btnBlowTest"}) {
            QVERIFY2(button(name)->styleSheet().isEmpty(), name);
        }
        QCOMPARE(sent(), QStringList());
    }

    void fields_data() {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<double>("value");
        for (const char* name : {"dspnLaserFrequency", "dspnLaserPower", "dspnWireSpeed"}) {
            QTest::addRow("%s full", name) << QByteArray(name) << "100" << 10.0;
            QTest::addRow("%s largest", name) << QByteArray(name) << "99.99" << 99.99;
        }
        QTest::newRow("duty cycle full") << QByteArray("dspnLaserRatio") << "100" << 100.0;
        QTest::newRow("duty cycle, too much") << QByteArray("dspnLaserRatio") << "100.01" << 100.0;
        QTest::newRow("comma") << QByteArray("dspnLaserPower") << "1,5" << 1.5;
        QTest::newRow("third decimal") << QByteArray("dspnLaserPower") << "1.255" << 1.25;
        QTest::newRow("minus") << QByteArray("dspnLaserPower") << "-7" << 0.0;
    }

    void fields() {
        QFETCH(QByteArray, name);
        QFETCH(QString, typed);
        QFETCH(double, value);
        QCOMPARE(field(name)->value(), 0.0);
        type(name, typed);
        QCOMPARE(field(name)->value(), value);
    }

    void arrowKeys_stepByOne_upToTheLimit() {
        type("dspnLaserPower", "98.5");
        QTest::keyClick(field("dspnLaserPower"), Qt::Key_Up);
        QCOMPARE(field("dspnLaserPower")->value(), 99.5);
        QTest::keyClick(field("dspnLaserPower"), Qt::Key_Up);
        QCOMPARE(field("dspnLaserPower")->value(), 99.99);
        QCOMPARE(sent(), QStringList());
    }

    void keyboard_reachesTheButtons() {
        pressAll("btnBlowControl");
        button("btnBlowControl")->setFocus();
        QTest::keyClick(button("btnBlowControl"), Qt::Key_Tab);
        QVERIFY(button("btnBlowTest")->hasFocus());
        QTest::keyClick(button("btnBlowTest"), Qt::Key_Space);
        QCOMPARE(sent(), (QStringList{"GASLOCK 1", "GAS 1"}));
    }

    void fingerOnTheButton_whenTheLockFalls_switchesNothing() {
        pressAll("btnLaserControl");
        QTest::mousePress(button("btnLaserTest"), Qt::LeftButton);
        setOutput(DO_LASER_SAFETY_LOCK, false);
        refresh();
        QTest::mouseRelease(button("btnLaserTest"), Qt::LeftButton);
        QCOMPARE(sent(), QStringList{"LASERLOCK 1"});
    }

    void deviceLeftOnWithoutItsLock_canBeSwitchedOff() {
        pressAll("btnLaserControl btnLaserTest");
        setOutput(DO_LASER_SAFETY_LOCK, false);
        bench_.robot.mark();
        press("btnLaserTest");
        QCOMPARE(sent().first(), QString("LASER 0"));
    }

    void pageLeft_keepsTheOutputs_andFollowsThem() {
        pressAll("btnLaserControl btnLaserTest btnBlowControl btnBlowTest");
        bench_.robot.mark();
        for (const char* other : {"btnProject", "btnMonitor", "btnParamCfg"}) {
            bench_.click(other);
            bench_.time.advance(1000);
        }
        QVERIFY(!panel()->isVisible());
        setOutput(DO_LASER_SAFETY_LOCK, false);
        refresh();
        QVERIFY(!button("btnLaserTest")->isEnabled());
        bench_.click("btnDeviceControl");
        QVERIFY(button("btnBlowTest")->isEnabled());
        QCOMPARE(sent(), QStringList());
    }

    void stopInsideAWrite_leavesNothingOn_data() {
        QTest::addColumn<QString>("write");
        QTest::addColumn<QStringList>("writes");
        const QStringList off{"POWER 0", "LASER 0", "DUTY 0", "FREQ 0"};
        QTest::newRow("laser") << "LASER 1" << QStringList{"LASER 1"} + off + off;
        QTest::newRow("power") << "POWER 13107"
                               << QStringList{"LASER 1", "FREQ 0", "POWER 13107"} + off + off;
    }

    /// The stop does as the executor does; what is written after it comes to nothing.
    void stopInsideAWrite_leavesNothingOn() {
        QFETCH(QString, write);
        pressAll("btnLaserControl");
        type("dspnLaserPower", "40");
        bench_.robot.mark();
        inside(write, [] {
            for (const I_PORT output : lumo::takeLitByHand()) {
                if (output == DO_LASER_ENABLE) {
                    setPortDO(nullptr, output, false);
                } else {
                    setPortAO(nullptr, output, 0.0);
                }
            }
        });
        press("btnLaserTest");
        QTEST(sent(), "writes");
    }

    void endOfThePage_forgetsNothing_data() {
        QTest::addColumn<QString>("write");  // inside which it ends; empty for later
        QTest::newRow("later") << "";
        QTest::newRow("while it lights the laser") << "LASER 1";
    }

    void endOfThePage_forgetsNothing() {
        QFETCH(QString, write);
        pressAll("btnLaserControl");
        inside(write, [this] { bench_.page.reset(); });
        button("btnLaserTest")->click();
        bench_.page.reset();
        QCOMPARE(bench_.robot.output("LASER"), 1.0);
        QCOMPARE(lumo::takeLitByHand(), (std::vector<I_PORT>{AO_LASER_POWER, DO_LASER_ENABLE,
                                                             AO_LASER_DUTY_CYCLE, AO_LASER_FREQUENCY}));
        QVERIFY(!lumo::isLitByHand());
    }

    void whatAHandLit_goesOff_data() {
        QTest::addColumn<bool>("quits");
        QTest::addColumn<bool>("withoutPage");
        QTest::newRow("quitting") << true << false;
        QTest::newRow("quitting, the page is gone") << true << true;
        QTest::newRow("power lost") << false << false;
        QTest::newRow("power lost, the page is gone") << false << true;
    }

    /// Once each, with their set points; the locks and what was typed stay.
    void whatAHandLit_goesOff() {
        QFETCH(bool, quits);
        QFETCH(bool, withoutPage);
        test::ScriptedRobot::setPower("on");
        type("dspnLaserPower", "40");
        pressAll(
            "btnLaserControl btnLaserTest btnRedLight btnBlowControl btnBlowTest btnWireControl btnWireTest");
        if (withoutPage) {
            bench_.page.reset();
        }
        bench_.robot.mark();
        if (quits) {
            QVERIFY(QMetaObject::invokeMethod(qApp, "aboutToQuit"));
        } else {
            test::ScriptedRobot::setPower("off");
        }
        for (const char* output : {"LASER", "POWER", "RED", "GAS", "WIRE"}) {
            QVERIFY2(sent().count(QLatin1String(output) + " 0") == 1, output);
            QCOMPARE(bench_.robot.output(output), 0.0);
        }
        QCOMPARE(bench_.robot.output("LASERLOCK"), 1.0);
        QVERIFY(!lumo::isLitByHand());
        if (!withoutPage) {
            QCOMPARE(field("dspnLaserPower")->value(), 40.0);
        }
    }

    void whatIsSwitchedOff_staysOff_data() {
        QTest::addColumn<QString>("how");
        for (const char* how : {"lock", "run", "pause", "power", "mode", "quit of the page"}) {
            QTest::newRow(how) << QString(how);
        }
    }

    void whatIsSwitchedOff_staysOff();

private:
    void switchOff(const QString& how);
};

/// Ends the laser test in one of the ways it can be ended; all but the first by a program with a weld.
void TestDeviceControl::switchOff(const QString& how) {
    if (how == "lock") {
        press("btnLaserControl");
        return;
    }
    bench_.load(oneWeld);
    constexpr int inTheWeldMs = 700;
    bench_.at(inTheWeldMs, [this, how] {
        QCOMPARE(bench_.robot.output("LASER"), 1.0);
        if (how == "pause") {
            bench_.pause();
        } else if (how == "power") {
            test::ScriptedRobot::setPower("off");
        } else if (how == "mode") {
            test::ScriptedRobot::setMode("manual");
        } else if (how == "quit of the page") {
            bench_.page.reset();
        }
    });
    bench_.run();
    bench_.settle();
}

/// The laser burns by hand, something else switches it off: the panel, shown or gone, never brings it back.
void TestDeviceControl::whatIsSwitchedOff_staysOff() {
    QFETCH(QString, how);
    pressAll("btnLaserControl btnLaserTest");
    QCOMPARE(bench_.robot.output("LASER"), 1.0);
    switchOff(how);
    QCOMPARE(bench_.robot.output("LASER"), 0.0);
    bench_.robot.mark();
    constexpr int longMs = 10000;
    bench_.time.advance(longMs);
    QCOMPARE(sent(), QStringList());
    if (bench_.page) {
        QCOMPARE(button("btnLaserTest")->styleSheet(), how == "lock" ? darkGray : black);
        bench_.click("btnProject");
        bench_.click("btnDeviceControl");
        refresh();
        QCOMPARE(sent(), QStringList());
    }
    bench_.closeBoxes();
}

LUMO_TEST_MAIN(TestDeviceControl)
#include "test_devicecontrol.moc"
