#include "app/pendant/pendantwindow.h"
#include "kord/controllermanager.h"
#include "panelfixture.h"

#include <qpa/qwindowsysteminterface.h>
#include <QFileDialog>

/// The pendant beside the panel. Clicks and keys go through the window system, so that modal windows block
/// them as in reality.
class AppPendant : public test::PanelTest {
    Q_OBJECT

    app::PendantWindow* const pendant_ = panel_->pendant();
    QPointer<QWidget> dialog_;

    QWindow* handle() const { return pendant_->windowHandle(); }
    QPoint middleOf(const QString& name) const {
        QWidget* const button = find<QWidget>(name);
        return button->isVisible() ? button->mapTo(pendant_, button->rect().center()) : QPoint(-1, -1);
    }
    void press(const QString& name) { QTest::mousePress(handle(), Qt::LeftButton, {}, middleOf(name)); }
    void release(const QString& name) { QTest::mouseRelease(handle(), Qt::LeftButton, {}, middleOf(name)); }
    void click(const QString& name) { QTest::mouseClick(handle(), Qt::LeftButton, {}, middleOf(name)); }
    void key(Qt::Key key) const { QTest::keyClick(QGuiApplication::focusWindow(), key); }
    static bool isUp(const QString& key) {
        using kord::ControllerManager;
        return ControllerManager::cmdItemMobj("endtool.keypad.state_change", "notify")->c(key)->getBool();
    }
    static double posture(const QString& path) {
        return kordservice()->get(nullptr, "sys.posture", path)->getDouble();
    }
    static void setBusy(bool busy) { set("lumo.execute.state", busy ? "busy" : "idle"); }
    /// Opens something over the panel's window.
    void cover(const QString& kind) {
        QWidget* const page = window()->pages()->currentWidget();
        if (kind == "list") {
            page->findChild<QComboBox*>()->showPopup();
        } else if (kind != "nothing") {
            dialog_ = kind == "file dialog" ? new QFileDialog(page) : new QDialog(page);
            if (kind == "frameless") {
                dialog_->setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
            }
            dialog_->setWindowModality(kind == "modal to all" ? Qt::ApplicationModal : Qt::WindowModal);
            dialog_->resize(200, 150);
            dialog_->show();
            dialog_->activateWindow();
        }
        pass(50);
    }

private slots:
    void initTestCase() {
        roots_ = {pendant_};
        pendant_->showBeside(window()->frameGeometry());
    }
    void init() {
        delete dialog_;
        setBusy(false);
        pendant_->setUnfolded(true);
        robot()->setEmergencyStop(false);
        robot()->setPower(true);
        robot()->setMode("auto");
        window()->activateWindow();
        pass(50);
        waitUntilIdle();
        for (const char* home : {"pendantTab0", "jogFrame0", "step0", "speed1"}) {
            click(home);
        }
    }

    void stop_switchesTheLaserOffUnderAnyWindow() {
        for (const QString over : {"nothing", "file dialog", "frameless", "modal to all", "list"}) {
            for (const bool byKey : {false, true}) {
                init();
                load("lumo.program", "[{'type':'open','index':0},{'type':'delay','delaytime':60000}]");
                QVector<bool> welding;
                const auto stop = [&] {
                    cover(over);
                    welding << robot()->input("LUMO_DI.#5");
                    byKey ? key(Qt::Key_F12) : press("btnStop");  // acts before it is released
                    welding << robot()->input("LUMO_DI.#5");
                };
                run(0, {{5000, stop}});
                QVERIFY2(welding == QVector<bool>({true, false}), qPrintable(over));
                QCOMPARE(wordOf("kord.r.power") + " " + wordOf("lumo.execute.state"), "off idle");
                QVERIFY(!dialog_ || dialog_->isVisible());
                release("btnStop");
            }
        }
    }

    void stop_latchesUntilItIsReleased() {
        click("btnStop");
        QVERIFY(!find("power1")->isVisible());
        click("btnStop");
        QVERIFY(robot()->emergencyStop());
        click("btnRelease");
        QVERIFY(!robot()->emergencyStop() && find("power0")->isChecked());
        const char* const rows[][2] = {
            {"power1", "on auto"}, {"mode1", "on manual"}, {"power0", "off manual"}, {"mode0", "off auto"}};
        for (const auto& row : rows) {
            click(row[0]);
            QCOMPARE(wordOf("kord.r.power") + " " + wordOf("kord.r.mode"), row[1]);
            QVERIFY(find(row[0])->isChecked());
        }
    }

    void keys_reportPressAndRelease() {
        click("pendantTab1");
        for (const QString name : {"next", "last", "center", "enter", "delete"}) {
            press("key_" + name);
            const bool down = !isUp(name);
            release("key_" + name);
            QVERIFY2(down && isUp(name), qPrintable(name));
        }
        QTest::keyPress(window()->windowHandle(), Qt::Key_F4);
        QVERIFY(!isUp("enter") && window()->isActiveWindow());  // an inactive page ignores the key
        QTest::keyRelease(window()->windowHandle(), Qt::Key_F4);
        QVERIFY(isUp("enter"));
    }

    void step_movesTheRobotOnce() {
        const QVector<QStringList> rows = {
            // frame, step, key, opposite key, value that changes, by how much
            {"jogFrame0", "step1", "jog1-", "jog1+", "trans.#1", "-0.0001"},
            {"jogFrame1", "step3", "jog2+", "jog2-", "trans.#2", "-0.01"},  // the tool points down
            {"jogFrame2", "step2", "jog5+", "jog5-", "near.#5", "0.0174532925199433"},
        };
        for (const QStringList& row : rows) {
            const double before = posture(row[4]);
            for (const double distance : {row[5].toDouble(), 0.0}) {
                for (const QString& button : {row[0], row[1], distance != 0 ? row[2] : row[3]}) {
                    click(button);
                }
                waitUntilIdle();
                QVERIFY2(std::abs(posture(row[4]) - before - distance) < 1e-7, qPrintable(row.join(' ')));
            }
        }
        for (const char* button : {"jogFrame0", "step3", "jog0+", "jog0+"}) {
            click(button);
        }
        QCOMPARE(textOf("lblJogAnswer"), "The robot is moving");
        waitUntilIdle();
        click("jog0-");
        QCOMPARE(textOf("lblJogAnswer"), "");
    }

    /// One second at 10 mm/s.
    void heldJog_endsWhenTheKeyIsNoLongerHeld() {
        const QVector<QPair<const char*, Step>> causes = {
            {"release", [this] { release("jog1+"); }},
            {"the finger leaving", [this] { QTest::mouseMove(handle(), QPoint(5, 5)); }},
            {"another window", [this] { cover("file dialog"); }},
            {"mode", [this] { robot()->setMode("manual"); }},
            {"power", [this] { robot()->setPower(false); }},
            {"stop", [this] { key(Qt::Key_F12); }},
            {"program", [] { setBusy(true); }},
            {"fold", [this] { pendant_->setUnfolded(false); }},
        };
        const QPoint finger = middleOf("jog1+");
        for (const auto& cause : causes) {
            const double before = posture("trans.#1");
            press("jog1+");
            pass(1000);
            cause.second();
            pass(200);
            const double moved = posture("trans.#1") - before;
            QVERIFY2(moved > 0.009 && moved < 0.011, cause.first);
            delete dialog_;
            robot()->setPower(true);
            QTest::mouseMove(handle(), QPoint(5, 5));
            QTest::mouseMove(handle(), finger);  // does not hold the key again
            pass(500);
            QCOMPARE(posture("trans.#1") - before, moved);
            QTest::mouseRelease(handle(), Qt::LeftButton, {}, finger);
            init();
            robot()->jog(sim::JogAxis::Y, -moved);
            waitUntilIdle();
        }
    }

    void window_isNotCoveredOrClosed_andTakesFocusOnlyByF9() {
        QVERIFY(handle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
        key(Qt::Key_F9);
        QVERIFY(pendant_->isActiveWindow());
        key(Qt::Key_F9);
        QVERIFY(window()->isActiveWindow());
        cover("frameless");
        dialog_->hide();
        dialog_->move(pendant_->pos() + QPoint(-20, 20));
        dialog_->show();
        pass(10);
        QVERIFY(!dialog_->geometry().intersects(pendant_->frameGeometry()));
        QWindowSystemInterface::handleCloseEvent(handle());
        QWindowSystemInterface::handleWindowStateChanged(handle(), Qt::WindowMinimized);
        pass(10);
        QVERIFY(pendant_->isVisible() && !pendant_->isMinimized());
        click("btnFold");
        QVERIFY(find("btnStop")->isVisible() && find("power1")->isVisible() && !find("mode0")->isVisible());
    }
};

LUMO_TEST(AppPendant)
#include "test_pendant.moc"
