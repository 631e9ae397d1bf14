#include "app/pendant/pendantwindow.h"
#include "kord/controllermanager.h"
#include "panelfixture.h"

#include <qpa/qwindowsysteminterface.h>
#include <QFileDialog>
#include <QtMath>

/// The pendant beside the panel. Clicks and keys come from the window system, so that what blocks a window
/// blocks them.
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
        return kord::ControllerManager::cmdItemMobj("endtool.keypad.state_change", "notify")->c(key)->getBool();
    }
    static double place(const QString& path) {
        return kordservice()->get(nullptr, "sys.posture", path)->getDouble();
    }
    static void setBusy(bool busy) { set("lumo.execute.state", busy ? "busy" : "idle"); }
    /// Opens something over the panel's window.
    void cover(const QString& kind) {
        QWidget* const page = window()->pages()->currentWidget();
        if (kind == "list")
            page->findChild<QComboBox*>()->showPopup();
        else if (kind != "nothing")
            dialog_ = kind == "file dialog" ? new QFileDialog(page) : new QDialog(page);
        if (dialog_) {
            if (kind == "frameless dialog")
                dialog_->setWindowFlags(Qt::Dialog | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
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
        settle();
        for (const char* home : {"pendantTab0", "jogFrame0", "step0", "speed1"})
            click(home);
    }
    void cleanupTestCase() { delete dialog_; }

    void stop_darkensTheWeldUnderAnyWindow() {
        for (const QString over : {"nothing", "file dialog", "frameless dialog", "modal to all", "list"}) {
            for (const bool byKey : {false, true}) {
                init();
                load("lumo.program", "[{'type':'open','index':0},{'type':'delay','delaytime':60000}]");
                bool before = false, after = true;
                const auto stop = [&] {
                    cover(over);
                    before = robot()->input("LUMO_DI.#5");
                    if (byKey)
                        key(Qt::Key_F12);
                    else
                        press("btnStop");  // acts when it is pressed
                    after = robot()->input("LUMO_DI.#5");
                };
                run(0, {{5000, stop}});
                QVERIFY2(before && !after, qPrintable(over));
                QCOMPARE(wordOf("kord.r.power") + " " + wordOf("lumo.execute.state"), "off idle");
                QVERIFY(!dialog_ || dialog_->isVisible());
                if (!byKey)
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
        const QVector<QStringList> rows = {{"power1", "kord.r.power", "on"},
                                           {"power0", "kord.r.power", "off"},
                                           {"mode1", "kord.r.mode", "manual"},
                                           {"mode0", "kord.r.mode", "auto"}};
        for (const QStringList& row : rows) {
            click(row[0]);
            QCOMPARE(wordOf(row[1]), row[2]);
            QVERIFY(find(row[0])->isChecked());
        }
        robot()->setMode("manual");
        QVERIFY(find("mode1")->isChecked());
    }

    void keys_areReportedAndLetGo() {
        click("pendantTab1");
        for (const QString name : {"next", "last", "center", "enter", "delete"}) {
            press("key_" + name);
            QVERIFY2(!isUp(name), qPrintable(name));
            release("key_" + name);
            QVERIFY2(isUp(name), qPrintable(name));
        }
        QTest::keyPress(window()->windowHandle(), Qt::Key_F4);
        QVERIFY(!isUp("enter"));
        QTest::keyRelease(window()->windowHandle(), Qt::Key_F4);
        QVERIFY(isUp("enter") && window()->isActiveWindow());  // else the page does not hear it
        press("key_next");
        cover("file dialog");
        QVERIFY(isUp("next"));
        release("key_next");
        press("key_next");
        QVERIFY(!isUp("next"));
        pendant_->setUnfolded(false);
        QVERIFY(isUp("next"));
    }

    void step_movesTheRobotOnce() {
        const double degree = qDegreesToRadians(1.0);
        const struct {
            const char *frame, *step, *key, *back, *path;
            double way;
        } rows[] = {{"jogFrame0", "step1", "jog1-", "jog1+", "trans.#1", -0.0001},
                    {"jogFrame0", "step2", "jog4+", "jog4-", "rot.#1", degree},
                    {"jogFrame1", "step3", "jog2+", "jog2-", "trans.#2", -0.01},  // the tool points down
                    {"jogFrame2", "step2", "jog5+", "jog5-", "near.#5", degree}};
        for (const auto& row : rows) {
            const double before = place(row.path);
            for (const char* button : {row.frame, row.step, row.key})
                click(button);
            QCOMPARE(textOf("lblJogAnswer"), "");
            settle();
            QVERIFY2(std::abs(place(row.path) - before - row.way) < 1e-7, row.key);
            click(row.back);
            settle();
            QVERIFY2(std::abs(place(row.path) - before) < 1e-7, row.key);
        }
        QCOMPARE(textOf("lblPosture5"), "0.00 °");
        click("jogFrame0");
        QCOMPARE(textOf("lblPosture0") + ", " + textOf("lblPosture3"), "500.00 mm, 180.00 °");
    }

    /// With 10 mm/s, after a second.
    void heldJog_endsWithTheHold() {
        const QVector<QPair<const char*, Step>> ways = {
            {"letting go", [this] { release("jog1+"); }},
            {"the finger leaving", [this] { QTest::mouseMove(handle(), QPoint(5, 5)); }},
            {"another window", [this] { cover("file dialog"); }},
            {"mode", [this] { robot()->setMode("manual"); }},
            {"power", [this] { robot()->setPower(false); }},
            {"stop", [this] { key(Qt::Key_F12); }},
            {"program", [] { setBusy(true); }},
            {"fold", [this] { pendant_->setUnfolded(false); }},
        };
        const QPoint finger = middleOf("jog1+");
        for (const auto& way : ways) {
            const double before = place("trans.#1");
            press("jog1+");
            pass(1000);
            way.second();
            pass(200);
            const double moved = place("trans.#1") - before;
            QVERIFY2(wordOf("kord.r.state") == "idle" && moved > 0.009 && moved < 0.011, way.first);
            delete dialog_;
            robot()->setPower(true);
            // A finger that comes back takes no hold again.
            QTest::mouseMove(handle(), QPoint(5, 5));
            QTest::mouseMove(handle(), finger);
            pass(500);
            QCOMPARE(place("trans.#1") - before, moved);
            QTest::mouseRelease(handle(), Qt::LeftButton, {}, finger);
            init();
            robot()->jog(sim::JogAxis::Y, -moved);
            settle();
        }
    }

    void jog_saysWhyNot() {
        for (const char* button : {"step3", "jog0+", "jog0+"})
            click(button);
        QCOMPARE(textOf("lblJogAnswer"), "The robot is moving");
        settle();
        robot()->jogOn({sim::JogFrame::Base, 0, 1, 0.5});
        settle();
        const double farthest = place("trans.#0");
        click("jog0+");
        QCOMPARE(textOf("lblJogAnswer"), "Out of reach");
        robot()->setPower(false);
        QCOMPARE(textOf("lblJogAnswer"), "The drives are off");
        click("jog0-");
        settle();
        QCOMPARE(place("trans.#0"), farthest);
        robot()->setPower(true);
        QCOMPARE(textOf("lblJogAnswer"), "");
        robot()->jog(sim::JogAxis::X, 0.5 - farthest);
        setBusy(true);
        QVERIFY(!find("jog0+")->isEnabled() && textOf("lblProgramState").contains("Running"));
        QCOMPARE(textOf("lblJogAnswer"), "A program is running");
    }

    void window_isNeitherCoveredNorClosedNorInTheWay() {
        for (const bool asked : {true, false}) {
            QCOMPARE(handle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus), asked);
            key(Qt::Key_F9);
            pass(10);
            QVERIFY(pendant_->isActiveWindow() == asked && window()->isActiveWindow() != asked);
        }
        QVERIFY(handle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
        pendant_->move(400, 100);
        cover("frameless dialog");
        dialog_->hide();
        dialog_->move(pendant_->pos() + QPoint(20, 20));
        dialog_->show();
        pass(10);
        QVERIFY(!dialog_->geometry().intersects(pendant_->frameGeometry()));
        pendant_->move(dialog_->pos() - QPoint(20, 20));
        pass(10);
        QVERIFY(!dialog_->geometry().intersects(pendant_->frameGeometry()));
        QWindowSystemInterface::handleCloseEvent(handle());
        QWindowSystemInterface::handleWindowStateChanged(handle(), Qt::WindowMinimized);
        pass(10);
        QVERIFY(pendant_->isVisible() && !pendant_->isMinimized());
    }

    void fold_keepsStopAndPowerAndThePlace() {
        handle()->setPosition(137, 51);  // as the window system tells of a drag
        QWindowSystemInterface::handleGeometryChange(handle(), QRect(QPoint(137, 51), pendant_->size()));
        pass(10);
        click("btnFold");
        const QPoint folded = pendant_->pos();
        QRegion taken;
        for (const char* name : {"btnStop", "power0", "power1", "btnFold"}) {
            const QRect place(find(name)->mapTo(pendant_, QPoint()), find(name)->size());
            QVERIFY2(pendant_->rect().contains(place) && !taken.intersects(place), name);
            taken += place;
        }
        pendant_->hide();
        pendant_->move(300, 300);
        pendant_->setUnfolded(true);
        pendant_->showBeside(window()->frameGeometry());
        QVERIFY(pendant_->pos() == folded && !pendant_->isUnfolded());
        for (const bool unfolded : {true, false}) {
            click("btnFold");
            QCOMPARE(find("mode0")->isVisible(), unfolded);
        }
        QCOMPARE(pendant_->pos(), folded);  // not over the line below it
    }
};

LUMO_TEST(AppPendant)
#include "test_pendant.moc"
