#include "kord/controllermanager.h"
#include "panelfixture.h"

#include <qpa/qwindowsysteminterface.h>
#include <QFileDialog>
#include <QLineEdit>

/// The rail and its docks. Clicks and keys go through the window system, so that modal windows block them as
/// in reality.
class AppRail : public test::PanelTest {
    Q_OBJECT

    QPointer<QWidget> dialog_;

    QWindow* handle() const { return window()->windowHandle(); }
    QPoint middleOf(const QString& name) const {
        QWidget* const button = find<QWidget>(name);
        return button->isVisible() ? button->mapTo(window(), button->rect().center()) : QPoint(-1, -1);
    }
    /// What the mouse does, as the window system tells it.
    void mouse(QEvent::Type type, const QPoint& place) const {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QWindowSystemInterface::handleMouseEvent(
            handle(), place, window()->mapToGlobal(place),
            type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, button, type);
        QWindowSystemInterface::sendWindowSystemEvents(QEventLoop::AllEvents);
    }
    void press(const QString& name) const { mouse(QEvent::MouseButtonPress, middleOf(name)); }
    void release(const QString& name) const { mouse(QEvent::MouseButtonRelease, middleOf(name)); }
    void click(const QString& name) const {
        press(name);
        release(name);
    }
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
    void init() {
        delete dialog_;
        setBusy(false);
        docks()->open("jog");
        robot()->setEmergencyStop(false);
        robot()->setPower(true);
        robot()->setMode("auto");
        window()->activateWindow();
        pass(50);
        waitUntilIdle();
        for (const char* home : {"jogFrame0", "step0", "speed1"}) {
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
        docks()->open("keys");
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
            {"the finger leaving", [this] { mouse(QEvent::MouseMove, QPoint(5, 5)); }},
            {"another window", [this] { cover("file dialog"); }},
            {"mode", [this] { robot()->setMode("manual"); }},
            {"power", [this] { robot()->setPower(false); }},
            {"stop", [this] { key(Qt::Key_F12); }},
            {"program", [] { setBusy(true); }},
            {"closing", [this] { click("btnJog"); }},
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
            mouse(QEvent::MouseMove, QPoint(5, 5));
            mouse(QEvent::MouseMove, finger);  // does not hold the key again
            pass(500);
            QCOMPARE(posture("trans.#1") - before, moved);
            mouse(QEvent::MouseButtonRelease, finger);
            init();
            robot()->jog(sim::JogAxis::Y, -moved);
            waitUntilIdle();
        }
    }

    /// With one finger on a jog key, a second one presses the emergency stop; a finger that is taken away by
    /// the window system lets go.
    void fingers_reachTheRailBesideADialog() {
        auto* const screen = QTest::createTouchDevice();
        const auto touch = [this, screen](const QVector<QPair<QString, Qt::TouchPointState>>& fingers) {
            QList<QWindowSystemInterface::TouchPoint> points;
            for (const auto& [name, state] : fingers) {
                QWindowSystemInterface::TouchPoint point;
                point.id = points.size();
                point.state = state;
                point.area = QRectF(0, 0, 1, 1);
                point.area.moveCenter(window()->mapToGlobal(middleOf(name)));
                points << point;
            }
            if (points.isEmpty()) {
                QWindowSystemInterface::handleTouchCancelEvent(handle(), screen);
            } else {
                QWindowSystemInterface::handleTouchEvent(handle(), screen, points);
            }
            QWindowSystemInterface::sendWindowSystemEvents(QEventLoop::AllEvents);
        };
        cover("file dialog");
        touch({{"jog1+", Qt::TouchPointPressed}});
        pass(500);
        QVERIFY(!robot()->standsStill());
        touch({});
        pass(500);
        QVERIFY(robot()->standsStill());
        touch({{"jog1-", Qt::TouchPointPressed}});
        pass(500);
        QVERIFY(!robot()->standsStill() && !robot()->emergencyStop());
        touch({{"jog1-", Qt::TouchPointStationary}, {"btnStop", Qt::TouchPointPressed}});
        QVERIFY(robot()->emergencyStop());
        touch({{"jog1-", Qt::TouchPointReleased}, {"btnStop", Qt::TouchPointReleased}});
    }

    /// A dialog blocks the window, but not the rail: its keys are used as without one.
    void jog_worksBesideADialog() {
        cover("file dialog");
        const double before = posture("trans.#1");
        press("jog1+");
        pass(1000);
        release("jog1+");
        pass(200);
        const double moved = posture("trans.#1") - before;
        QVERIFY2(moved > 0.009 && moved < 0.011, qPrintable(QString::number(moved)));
        click("power0");
        QVERIFY(wordOf("kord.r.power") == "off" && dialog_->isVisible());
    }

    void rail_isNotCovered_andTakesFocusByF9() {
        auto* const field = find<QComboBox>("toolCmb");
        field->setFocus();
        key(Qt::Key_F9);
        QVERIFY(find("power1")->hasFocus());
        key(Qt::Key_F9);
        QVERIFY(field->hasFocus());
        const QRect rail(find<QWidget>("rail")->mapToGlobal(QPoint()), find<QWidget>("rail")->size());
        for (const QString kind : {"frameless", "file dialog"}) {
            cover(kind);
            dialog_->move(rail.topLeft() + QPoint(-20, 20));
            pass(10);
            QVERIFY2(!dialog_->frameGeometry().intersects(rail), qPrintable(kind));
            delete dialog_;
        }
    }

    void docks_takePlaceOnlyWhereThereIsRoom() {
        const auto page = [this] { return window()->stage()->width(); };
        docks()->closeAll();
        const int alone = page();
        const auto shown = [this] {
            QStringList open;
            for (const QString id : {"path", "signals", "cell", "jog"}) {
                open << (docks()->isOpen(id) ? QStringList{id} : QStringList());
            }
            return open.join('+');
        };
        click("btnPath");
        QVERIFY(shown() == "path" && find("btnPath")->isChecked() && page() == alone - 400);
        click("btnCell");
        QVERIFY(shown() == "cell" && !find("btnPath")->isChecked());
        window()->resize(1920, 1080);
        click("btnPath");
        QVERIFY2(shown() == "path+cell" && page() > 900, qPrintable(shown()));
        click("btnSignals");
        QCOMPARE(shown(), "signals+cell");
        window()->resize(1280, 800);
        QCOMPARE(shown(), "signals");
        window()->resize(1920, 1080);
        QCOMPARE(shown(), "signals+cell");
        window()->resize(1280, 800);
        docks()->closeAll();
        pass(10);
        QCOMPARE(page(), alone);
    }

    void pageOfTheFrame_endsWithTheNextChoice() {
        docks()->open("path");
        docks()->open("log");
        QVERIFY(docks()->isOpen("path") && docks()->content("log")->isVisible());
        docks()->open("results");
        QVERIFY(docks()->isOpen("results") && !docks()->isOpen("log"));
        click("btnPort");
        QVERIFY(docks()->isOpen("path") && !docks()->isOpen("results"));
        click("btnProject");
    }

    void guest_givesThePlaceBack() {
        docks()->add("guest", new QLabel("guest"), "Guest", app::DockWidth::Narrow);
        docks()->setGuest("guest");
        docks()->open("path");
        docks()->open("guest");
        QVERIFY(docks()->isOpen("guest") && !docks()->isOpen("path"));
        QCOMPARE(docks()->columns(), QStringList{"path"});
        docks()->close("guest");
        QVERIFY(docks()->isOpen("path"));
    }
};

LUMO_TEST(AppRail)
#include "test_rail.moc"
