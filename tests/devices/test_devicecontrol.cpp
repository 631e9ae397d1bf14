#include "devices/devicecard.h"
#include "devices/devicecontrolwidget.h"
#include "devices/devicestate.h"
#include "equipment/handlit.h"
#include "equipment/ports.h"
#include "panel/pagebench.h"
#include "support/suite.h"

#include <QDoubleSpinBox>

using namespace test;

/// The device page, operated by mouse and keyboard. Its effects are read from the robot service.
class TestDeviceControl : public QObject {
    Q_OBJECT

    PageBench bench_;
    std::unique_ptr<QObject> insides_;

    QPushButton* button(const QString& name) const {
        return child<QPushButton>(bench_.page.get(), "btn" + name.toLatin1());
    }
    QDoubleSpinBox* field(const char* name) const {
        return child<QDoubleSpinBox>(bench_.page.get(), QByteArray("dspn") + name);
    }
    void refresh() { bench_.time.advance(160); }
    /// Presses buttons and refreshes the page after each; "+" joins presses without a refresh in between.
    void press(const QString& names) {
        for (const QString& together : names.split(' ')) {
            for (const QString& name : together.split('+')) {
                click(button(name));
            }
            refresh();
        }
    }
    void type(const char* name, const QString& text) const {
        field(name)->setFocus();
        field(name)->selectAll();
        QTest::keyClicks(field(name), text);
    }
    /// The writes since the last call, without their times.
    QString sent() {
        QStringList lines;
        for (const QString& line : bench_.robot.log()) {
            lines << line.section(' ', 1);
        }
        bench_.robot.mark();
        return lines.join(", ");
    }
    void inside(const QString& write, const std::function<void()>& action) {
        insides_ = std::make_unique<QObject>();
        connect(kordservice(), &KordService::issued, insides_.get(), [this, write, action] {
            if (bench_.robot.log().last().section(' ', 1) == write) {
                insides_.release()->deleteLater();
                action();
            }
        });
    }
    static void dropLaserLock() {
        kordservice()->dataNode("register.values")->set(nullptr, "LUMO_DO.#5", false);
    }

private slots:
    void init() {
        bench_.renew();
        Q_UNUSED(lumo::takeLitByHand(nullptr));
        bench_.robot.setPower("on");
        bench_.click("btnDeviceControl");
        refresh();
        bench_.robot.mark();
    }

    /// A loss of power switches off what was switched on by hand, once. The fields keep their values.
    void presses_writeWhatTheyShould() {
        const char* const all = "LaserControl LaserTest BlowControl BlowTest WireControl WireTest RedLight";
        const struct {
            QString what, presses, writes;
            QString atPowerLoss = {};
            QVector<int> unused = {};
        } rows[] = {
            {"locked, nothing is written", "LaserTest RedLight WireTest BlowTest", ""},
            {"laser pressed just after the release of its lock",
             "LaserControl LaserTest LaserTest LaserTest LaserControl+LaserTest LaserTest",
             "LASERLOCK 1, LASER 1, FREQ 16384, POWER 4096, DUTY 32767, LASER 0, FREQ 16384, POWER 4096, "
             "DUTY 32767, LASER 1, FREQ 16384, POWER 4096, DUTY 32767, LASER 0, LASERLOCK 0"},
            {"laser lock pressed twice at once", "LaserControl+LaserControl LaserControl+LaserControl",
             "LASERLOCK 1, LASER 0, LASERLOCK 1, LASER 0, LASERLOCK 0, LASERLOCK 0"},
            {"red light stays when the lock is released",
             "LaserControl RedLight RedLight RedLight LaserControl",
             "LASERLOCK 1, RED 1, RED 0, RED 1, LASER 0, LASERLOCK 0", "RED 0"},
            {"gas lock released while it is on",
             "BlowControl BlowTest BlowTest BlowTest BlowControl BlowTest",
             "GASLOCK 1, GAS 1, GAS 0, GAS 1, GAS 0, GASLOCK 0"},
            {"wire lock released while it is on",
             "WireControl WireTest WireTest WireTest WireControl+WireTest",
             "WIRELOCK 1, WIRE 1, SPEED 9830, WIRE 0, SPEED 9830, WIRE 1, SPEED 9830, WIRE 0, WIRELOCK 0"},
            {"locks are their device's alone", "BlowControl LaserTest WireTest BlowTest", "GASLOCK 1, GAS 1",
             "GAS 0"},
            {"laser and gas lock out of use",
             all,
             "LASERLOCK 1, FREQ 16384, POWER 4096, DUTY 32767, WIRELOCK 1, WIRE 1, SPEED 9830, RED 1",
             "WIRE 0, SPEED 0, RED 0",
             {DO_LASER_ENABLE, DO_GAS_SAFETY_LOCK}},
            {"set points and red light out of use",
             all,
             "LASERLOCK 1, LASER 1, GASLOCK 1, GAS 1, WIRELOCK 1, WIRE 1",
             "WIRE 0, LASER 0, GAS 0",
             {AO_LASER_POWER, AO_LASER_FREQUENCY, AO_LASER_DUTY_CYCLE, AO_WIRE_SPEED, DO_RED_LIGHT}},
        };
        for (const auto& row : rows) {
            init();
            for (const int port : row.unused) {
                bench_.enablePort(port, false);
            }
            type("LaserFrequency", "50");
            type("LaserRatio", "100");
            type("LaserPower", "12,5");
            type("WireSpeed", "30");
            press(row.presses);
            QCOMPARE(row.what + ": " + sent(), row.what + ": " + row.writes);
            bench_.robot.setPower("off");
            bench_.time.advance(10000);
            QCOMPARE(row.what + ": " + sent(), row.what + ": " + row.atPowerLoss);
            QCOMPARE(field("LaserPower")->value(), 12.5);
        }
    }

    /// Neither 15 for 150, nor what stood there before; but a device that is on goes off.
    void fieldThatIsNotTaken_switchesNothingOn() {
        press("LaserControl LaserTest");
        sent();
        type("LaserPower", "150");
        press("LaserTest");
        QVERIFY(sent().startsWith("LASER 0"));
        press("LaserTest");
        QCOMPARE(boxes().size(), 1);
        QCOMPARE(sent(), "");
        press("RedLight");
        QCOMPARE(sent(), "RED 1");
    }

    void devicesOnByHand_goOffAtQuitAndWithoutThePage() {
        for (const QString how : {"quit", "quit without page", "power without page"}) {
            init();
            press("BlowControl WireControl WireTest LaserControl");
            inside("LASER 1", [this, how] {  // in the middle of the press
                if (how.endsWith("page")) {
                    bench_.page.reset();
                }
            });
            button("LaserTest")->click();
            bench_.robot.mark();
            if (how.startsWith("quit")) {
                QMetaObject::invokeMethod(qApp, "aboutToQuit");
            }
            bench_.robot.setPower("off");
            QCOMPARE(sent(), "WIRE 0, SPEED 0, POWER 0, LASER 0, DUTY 0, FREQ 0");
        }
    }

    void pressDuringLockRelease_switchesOffButNotOn() {
        press("LaserControl");
        QTest::mousePress(button("LaserTest"), Qt::LeftButton);
        dropLaserLock();
        refresh();
        QTest::mouseRelease(button("LaserTest"), Qt::LeftButton);
        QCOMPARE(sent(), "LASERLOCK 1");
        press("LaserControl LaserTest");
        QVERIFY(button("LaserTest")->styleSheet().contains("red"));
        dropLaserLock();
        bench_.robot.mark();
        click(button("LaserTest"));
        QCOMPARE(sent(), "LASER 0, FREQ 0, POWER 0, DUTY 0");
    }

    void states_standInWords() {
        const auto states = [this] {
            QStringList texts;
            for (const auto* state : bench_.page->findChildren<lumo::DeviceState*>()) {
                texts << state->text();
            }
            return texts.join(' ');
        };
        const auto cards = [this] {
            QStringList texts;
            for (const auto* card : bench_.page->findChildren<lumo::DeviceCard*>()) {
                texts << child<QLabel>(card, "cardState")->text() + child<QLabel>(card, "cardDetail")->text();
            }
            return texts.join(' ');
        };
        QCOMPARE(states(), "保护已锁定 已锁定 已锁定 保护已锁定 已锁定 保护已锁定 已锁定");
        QCOMPARE(cards(), "已锁定 已锁定 已锁定");
        press("LaserControl LaserTest RedLight BlowControl");
        bench_.enablePort(DO_WIRE_ENABLE, false);
        bench_.time.advance(61000);
        QCOMPARE(states(),
                 "已解锁，再按即锁定 已打开，再按即关闭 已打开，再按即关闭 已解锁，再按即锁定 关 保护已锁定 "
                 "端口未启用");
        QCOMPARE(cards(), "激光已打开手动打开，已 1:01 关 未启用端口“送丝使能”未启用。");
    }

    /// What stands below a field while its value can be sent, and while it cannot.
    void fields_tellTheOutputOrTheRange() {
        const auto note = [this](const char* name) {
            return field(name)->parentWidget()->findChild<lumo::SignLabel*>()->text();
        };
        kordservice()->dataNode("register.values")->set(nullptr, "LUMO_AO_1.#0", 4096);
        refresh();
        QCOMPARE(note("LaserPower"), "当前输出 12.5 %");
        type("LaserPower", "150");
        QCOMPARE(note("LaserPower"), "允许：0 至 99.99 %");
        bench_.enablePort(AO_LASER_FREQUENCY, false);
        refresh();
        QCOMPARE(note("LaserFrequency"), "端口未启用");
    }

    /// Every width of a page: what does not fit stands below, nothing is wider than the page.
    void cards_foldToThePage() {
        auto* const page = bench_.find<DeviceControlWidget>();
        page->setParent(nullptr);
        page->show();
        for (const int width : {464, 688, 864, 1088, 1696}) {
            page->resize(width, 672);
            bench_.time.settle();
            for (const QAbstractButton* one : page->findChildren<QAbstractButton*>()) {
                if (one->isVisible()) {
                    const int right = one->mapTo(page, one->rect().topRight()).x();
                    QVERIFY2(right < width, qPrintable(one->text() + QString::number(width)));
                }
            }
            const bool isBeside = width >= 864;
            const int title = child(page, "label")->mapTo(page, QPoint()).y();
            const int caption = child(page, "label_3")->mapTo(page, QPoint()).y();
            QCOMPARE(qAbs(title - caption) < 24, isBeside);
        }
        delete page;
    }

    /// The stop switches off as the executor does. What the page writes after it has no effect.
    void stopInsideAWrite_leavesNothingOn() {
        const QString off = ", POWER 0, LASER 0, DUTY 0, FREQ 0";
        for (const QString write : {"LASER 1", "LASER 1, FREQ 0, POWER 13107"}) {
            init();
            press("LaserControl");
            type("LaserPower", "40");
            bench_.robot.mark();
            inside(write.section(", ", -1), [] {
                for (const I_PORT output : lumo::takeLitByHand(nullptr)) {
                    clearPort(nullptr, output);
                }
            });
            click(button("LaserTest"));
            QCOMPARE(sent(), write + off + off);
        }
    }
};

LUMO_TEST(TestDeviceControl)
#include "test_devicecontrol.moc"
