#include "app/language.h"
#include "app/panel.h"
#include "app/pendant/pendantwindow.h"
#include "app/pendant/placement.h"
#include "app/preferences.h"
#include "kord/controllermanager.h"
#include "kord/kordservice.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "simulator/controller.h"
#include "simulator/virtualtime.h"

#include <qpa/qwindowsysteminterface.h>
#include <QAbstractButton>
#include <QComboBox>
#include <QFileDialog>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QMessageBox>
#include <QStackedWidget>
#include <QtTest>

/// The pendant beside the panel with the real package. Clicks and keys come from the window system, so that
/// what blocks a window blocks them.
class AppPendant : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();
    void stop_darkensTheWeld_data();
    void stop_darkensTheWeld();
    void stop_actsWhenPressed();
    void stop_latches();
    void powerAndMode_actOnTheRobot_data();
    void powerAndMode_actOnTheRobot();
    void key_isReported_data();
    void key_isReported();
    void key_tellsShortFromLong_data();
    void key_tellsShortFromLong();
    void functionKey_isAKeyOfTheTool();
    void keyThatGoesAway_isLetGo();
    void step_movesTheRobot_data();
    void step_movesTheRobot();
    void heldJog_ends_data();
    void heldJog_ends();
    void heldJog_takesNoHoldAgainByItself();
    void jog_saysWhyNot();
    void jog_isRefusedWhileTheProgramRuns();
    void click_leavesTheKeyboardWhereItIs();
    void dialog_doesNotLieOverIt();
    void place_isRemembered();
    void folded_showsStopAndPowerWhole();
    void closing_isRefused();
    void corner_data();
    void corner();
    void dialogsPlace_data();
    void dialogsPlace();

private:
    template <typename Widget = QAbstractButton>
    Widget* find(const QString& name) const {
        return panel_->pendant()->findChild<Widget*>(name);
    }
    void mouse(QTest::MouseAction action, const QString& name) {
        QWidget* button = find<QWidget>(name);
        QVERIFY2(button && button->isVisible(), qPrintable(name));
        QWindow* window = panel_->pendant()->windowHandle();
        const QPoint place = button->mapTo(panel_->pendant(), button->rect().center());
        if (action != QTest::MouseRelease)
            QTest::mousePress(window, Qt::LeftButton, {}, place);
        if (action != QTest::MousePress)
            QTest::mouseRelease(window, Qt::LeftButton, {}, place);
    }
    void press(const QString& name) { mouse(QTest::MousePress, name); }
    void release(const QString& name) { mouse(QTest::MouseRelease, name); }
    void click(const QString& name) { mouse(QTest::MouseClick, name); }
    QString text(const char* label) const { return find<QLabel>(QLatin1String(label))->text(); }
    static QString node(const char* path) { return m(QLatin1String(path))->getString(); }
    static mendo::ModuleObject* keyNode(const QString& key) {
        return kord::ControllerManager::cmdItemMobj(QStringLiteral("endtool.keypad.state_change"),
                                                    QStringLiteral("notify"))
            ->c(key);
    }
    static double place(const char* path) {
        return kordservice()->get(nullptr, QStringLiteral("sys.posture"), QLatin1String(path))->getDouble();
    }
    static void advance(int ms) { sim::VirtualTime::instance()->advance(ms); }
    void settle() {
        sim::VirtualTime::instance()->advanceUntil([this] { return panel_->controller()->standsStill(); },
                                                   20000);
    }
    bool welding() const { return panel_->controller()->input(QStringLiteral("LUMO_DI.#5")); }
    QWidget* page() const { return panel_->window()->pages()->currentWidget(); }
    void openDialog(const QString& kind);

    QTemporaryDir folder_;
    std::unique_ptr<app::Panel> panel_;
    QPointer<QWidget> dialog_;
};

void AppPendant::initTestCase() {
    mendo::LogHub::instance()->setConsole(false);
    QVERIFY(QDir::setCurrent(folder_.path()));
    for (const char* name : {"lumo_port.json", "lumo_param.json"}) {
        QVERIFY(QFile::copy(QStringLiteral(":/app/sample/") + QLatin1String(name), QLatin1String(name)));
        QFile::setPermissions(QLatin1String(name), QFile::ReadOwner | QFile::WriteOwner);
    }
    app::installLanguage(QStringLiteral("en"));
    panel_ = std::make_unique<app::Panel>();
    QString error;
    QVERIFY2(panel_->open(QStringLiteral(LUMO_LIBRARY), &error), qPrintable(error));
    panel_->window()->resize(1280, 800);
    panel_->window()->show();
    panel_->pendant()->showBeside(panel_->window()->frameGeometry());
    panel_->pendant()->setUnfolded(true);
    advance(100);
}

void AppPendant::init() {
    settle();
    panel_->controller()->setEmergencyStop(false);
    panel_->controller()->setPower(true);
    panel_->controller()->setMode(QStringLiteral("auto"));
    panel_->window()->activateWindow();
    for (const char* home : {"pendantTab0", "jogFrame0", "step0", "speed1"})
        click(QLatin1String(home));
}

void AppPendant::cleanup() {
    delete dialog_;
    advance(50);
}

// --- Emergency stop --------------------------------------------------------------------------------

/// Something over the panel's window. Those of the package are opened as it opens them.
void AppPendant::openDialog(const QString& kind) {
    if (kind == QLatin1String("message box")) {
        auto* box = new QMessageBox(QMessageBox::Warning, QStringLiteral("a"), QStringLiteral("b"),
                                    QMessageBox::Ok, page());
        box->open();
        dialog_ = box;
    } else if (kind == QLatin1String("file dialog")) {
        auto* dialog = new QFileDialog(page());
        dialog->open();
        dialog_ = dialog;
    } else if (kind == QLatin1String("frameless dialog")) {
        auto* dialog = new QDialog(page());
        dialog->setWindowFlags(dialog->windowFlags() | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
        dialog->open();
        dialog->activateWindow();
        dialog_ = dialog;
    } else if (kind == QLatin1String("modal to all")) {
        auto* box = new QMessageBox(page());
        box->setModal(true);
        box->show();
        dialog_ = box;
    } else if (kind == QLatin1String("list")) {
        page()->findChild<QComboBox*>()->showPopup();
    }
    advance(50);
}

void AppPendant::stop_darkensTheWeld_data() {
    QTest::addColumn<QString>("over");
    QTest::addColumn<bool>("byKey");
    for (const char* over :
         {"nothing", "message box", "file dialog", "frameless dialog", "modal to all", "list"}) {
        QTest::addRow("%s, mushroom", over) << QString::fromLatin1(over) << false;
        QTest::addRow("%s, key", over) << QString::fromLatin1(over) << true;
    }
}

void AppPendant::stop_darkensTheWeld() {
    QFETCH(QString, over);
    QFETCH(bool, byKey);
    m(QStringLiteral("lumo.program"))
        ->loadJson(this, QJsonArray{QJsonObject{{QStringLiteral("type"), QStringLiteral("open")},
                                                {QStringLiteral("execute"), true},
                                                {QStringLiteral("index"), 0}},
                                    QJsonObject{{QStringLiteral("type"), QStringLiteral("delay")},
                                                {QStringLiteral("execute"), true},
                                                {QStringLiteral("delaytime"), 60000}}});
    bool wasWelding = false, isWelding = true;
    qint64 pressedMs = 0, darkMs = -1;
    QTimer::singleShot(5000, this, [&] {
        openDialog(over);
        wasWelding = welding();
        pressedMs = sim::VirtualTime::instance()->nowMs();
        if (byKey)
            QTest::keyClick(QGuiApplication::focusWindow(), Qt::Key_F12);
        else
            press(QStringLiteral("btnStop"));
        isWelding = welding();
        darkMs = sim::VirtualTime::instance()->nowMs();
    });
    m(QStringLiteral("lumo.execute.trigger.start"))->setValue(this, 0);
    QVERIFY(wasWelding);
    QVERIFY(!isWelding);
    QCOMPARE(darkMs, pressedMs);
    QCOMPARE(node("kord.r.power"), QStringLiteral("off"));
    QCOMPARE(node("lumo.execute.state"), QStringLiteral("idle"));
    const bool isDialog = over != QLatin1String("nothing") && over != QLatin1String("list");
    QCOMPARE(dialog_ && dialog_->isVisible(), isDialog);
    if (!byKey)
        release(QStringLiteral("btnStop"));
}

void AppPendant::stop_actsWhenPressed() {
    press(QStringLiteral("btnStop"));
    QCOMPARE(node("kord.r.power"), QStringLiteral("off"));
    release(QStringLiteral("btnStop"));
    QVERIFY(panel_->controller()->emergencyStop());
}

void AppPendant::stop_latches() {
    click(QStringLiteral("btnStop"));
    QVERIFY(!find(QStringLiteral("power1"))->isVisible());
    click(QStringLiteral("btnStop"));
    QVERIFY(panel_->controller()->emergencyStop());
    click(QStringLiteral("btnRelease"));
    QCOMPARE(node("kord.r.power"), QStringLiteral("off"));
    QVERIFY(find(QStringLiteral("power0"))->isChecked());
    click(QStringLiteral("power1"));
    QCOMPARE(node("kord.r.power"), QStringLiteral("on"));
}

void AppPendant::powerAndMode_actOnTheRobot_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("value");
    QTest::newRow("off") << "power0"
                         << "kord.r.power"
                         << "off";
    QTest::newRow("on") << "power1"
                        << "kord.r.power"
                        << "on";
    QTest::newRow("manual") << "mode1"
                            << "kord.r.mode"
                            << "manual";
    QTest::newRow("auto") << "mode0"
                          << "kord.r.mode"
                          << "auto";
}

void AppPendant::powerAndMode_actOnTheRobot() {
    QFETCH(QString, button);
    QFETCH(QString, path);
    // From the other state, in which the pendant follows the robot.
    const bool first = button.endsWith(QLatin1Char('0'));
    panel_->controller()->setPower(first);
    panel_->controller()->setMode(first ? QStringLiteral("manual") : QStringLiteral("auto"));
    QVERIFY(!find(button)->isChecked());
    click(button);
    QTEST(m(path)->getString(), "value");
    QVERIFY(find(button)->isChecked());
}

// --- Keys of the end tool --------------------------------------------------------------------------

void AppPendant::key_isReported_data() {
    QTest::addColumn<QString>("key");
    for (const char* key : {"next", "last", "center", "enter", "delete"})
        QTest::newRow(key) << QString::fromLatin1(key);
}

void AppPendant::key_isReported() {
    QFETCH(QString, key);
    click(QStringLiteral("pendantTab1"));
    press(QStringLiteral("key_") + key);
    QCOMPARE(keyNode(key)->getBool(true), false);
    release(QStringLiteral("key_") + key);
    QCOMPARE(keyNode(key)->getBool(false), true);
}

void AppPendant::key_tellsShortFromLong_data() {
    QTest::addColumn<int>("ms");
    QTest::addColumn<int>("clicks");
    QTest::addColumn<int>("longs");
    QTest::newRow("short") << 300 << 1 << 0;
    QTest::newRow("neither") << 1500 << 0 << 0;
    QTest::newRow("long") << 3200 << 0 << 1;
}

void AppPendant::key_tellsShortFromLong() {
    QFETCH(int, ms);
    click(QStringLiteral("pendantTab1"));
    QSignalSpy clicks(m(QStringLiteral("lumo.keypad.next.clicked")), &mendo::ModuleObject::changed);
    QSignalSpy longs(m(QStringLiteral("lumo.keypad.next.pressing")), &mendo::ModuleObject::changed);
    press(QStringLiteral("key_next"));
    advance(ms);
    release(QStringLiteral("key_next"));
    QTEST(clicks.count(), "clicks");
    QTEST(longs.count(), "longs");
}

/// From the panel's window; the page hears keys only while that is the active one.
void AppPendant::functionKey_isAKeyOfTheTool() {
    QWindow* window = panel_->window()->windowHandle();
    QTest::keyPress(window, Qt::Key_F4);
    QCOMPARE(keyNode(QStringLiteral("enter"))->getBool(true), false);
    QTest::keyRelease(window, Qt::Key_F4);
    QCOMPARE(keyNode(QStringLiteral("enter"))->getBool(false), true);
    QVERIFY(panel_->window()->isActiveWindow());
}

void AppPendant::keyThatGoesAway_isLetGo() {
    click(QStringLiteral("pendantTab1"));
    press(QStringLiteral("key_next"));
    panel_->pendant()->setUnfolded(false);
    QCOMPARE(keyNode(QStringLiteral("next"))->getBool(false), true);
    panel_->pendant()->setUnfolded(true);
    advance(10);
    release(QStringLiteral("key_next"));
}

// --- Jog -------------------------------------------------------------------------------------------

void AppPendant::step_movesTheRobot_data() {
    QTest::addColumn<QString>("frame");
    QTest::addColumn<QString>("step");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("path");
    QTest::addColumn<double>("way");
    const double degree = 3.14159265358979323846 / 180;
    QTest::newRow("base x") << "jogFrame0"
                            << "step3"
                            << "jog0+"
                            << "trans.#0" << 0.01;
    QTest::newRow("base y back") << "jogFrame0"
                                 << "step2"
                                 << "jog1-"
                                 << "trans.#1" << -0.001;
    QTest::newRow("base z") << "jogFrame0"
                            << "step1"
                            << "jog2+"
                            << "trans.#2" << 0.0001;
    QTest::newRow("base ry") << "jogFrame0"
                             << "step2"
                             << "jog4+"
                             << "rot.#1" << degree;
    // The tool points down.
    QTest::newRow("tool z") << "jogFrame1"
                            << "step3"
                            << "jog2+"
                            << "trans.#2" << -0.01;
    QTest::newRow("tool rz") << "jogFrame1"
                             << "step3"
                             << "jog5+"
                             << "rot.#2" << -10 * degree;
    QTest::newRow("joint 1") << "jogFrame2"
                             << "step3"
                             << "jog0-"
                             << "near.#0" << -10 * degree;
    QTest::newRow("joint 6") << "jogFrame2"
                             << "step2"
                             << "jog5+"
                             << "near.#5" << degree;
}

void AppPendant::step_movesTheRobot() {
    QFETCH(QString, frame);
    QFETCH(QString, step);
    QFETCH(QString, key);
    QFETCH(QString, path);
    QFETCH(double, way);
    const QByteArray node = path.toLatin1();
    const double before = place(node);
    click(frame);
    click(step);
    click(key);
    QCOMPARE(text("lblJogAnswer"), QString());
    settle();
    QVERIFY2(std::abs(place(node) - before - way) < 1e-7, qPrintable(QString::number(place(node) - before)));
    QString back = key;
    click(back.replace(key.size() - 1, 1, key.endsWith(QLatin1Char('+')) ? "-" : "+"));
    settle();
    QVERIFY(std::abs(place(node) - before) < 1e-7);
    click(QStringLiteral("jogFrame0"));
    QCOMPARE(text("lblPosture0"), QStringLiteral("500.00 mm"));
    QCOMPARE(text("lblPosture3"), QStringLiteral("180.00 °"));
}

void AppPendant::heldJog_ends_data() {
    QTest::addColumn<QString>("by");
    for (const char* by :
         {"letting go", "the finger leaving", "another window", "mode", "power", "stop", "program", "fold"})
        QTest::newRow(by) << QString::fromLatin1(by);
}

/// With 10 mm/s, after a second.
void AppPendant::heldJog_ends() {
    QFETCH(QString, by);
    const double before = place("trans.#1");
    press(QStringLiteral("jog1+"));
    advance(1000);
    QCOMPARE(node("kord.r.state"), QStringLiteral("moving"));
    if (by == QLatin1String("letting go"))
        release(QStringLiteral("jog1+"));
    else if (by == QLatin1String("the finger leaving"))
        QTest::mouseMove(panel_->pendant()->windowHandle(), QPoint(5, 5));
    else if (by == QLatin1String("another window"))
        openDialog(QStringLiteral("file dialog"));
    else if (by == QLatin1String("mode"))
        panel_->controller()->setMode(QStringLiteral("manual"));
    else if (by == QLatin1String("power"))
        panel_->controller()->setPower(false);
    else if (by == QLatin1String("stop"))
        QTest::keyClick(panel_->window()->windowHandle(), Qt::Key_F12);
    else if (by == QLatin1String("program"))
        m(QStringLiteral("lumo.execute.state"))->setValue(this, QStringLiteral("busy"));
    else
        panel_->pendant()->setUnfolded(false);
    advance(200);
    QCOMPARE(node("kord.r.state"), QStringLiteral("idle"));
    const double way = place("trans.#1") - before;
    QVERIFY2(way > 0.009 && way < 0.011, qPrintable(QString::number(way)));
    m(QStringLiteral("lumo.execute.state"))->setValue(this, QStringLiteral("idle"));
    panel_->pendant()->setUnfolded(true);
    advance(10);
    release(QStringLiteral("jog1+"));
    init();
    panel_->controller()->jog(sim::JogAxis::Y, before - place("trans.#1"));
    settle();
}

void AppPendant::heldJog_takesNoHoldAgainByItself() {
    const double before = place("trans.#1");
    QWindow* window = panel_->pendant()->windowHandle();
    QWidget* key = find<QWidget>(QStringLiteral("jog1+"));
    const QPoint center = key->mapTo(panel_->pendant(), key->rect().center());
    press(QStringLiteral("jog1+"));
    advance(500);
    panel_->controller()->setMode(QStringLiteral("manual"));
    settle();
    const double stopped = place("trans.#1");
    QVERIFY(stopped > before);
    QTest::mouseMove(window, center + QPoint(3, 3));
    QTest::mouseMove(window, QPoint(5, 5));
    QTest::mouseMove(window, center);
    advance(500);
    QCOMPARE(place("trans.#1"), stopped);
    release(QStringLiteral("jog1+"));
    panel_->controller()->jog(sim::JogAxis::Y, before - stopped);
}

void AppPendant::jog_saysWhyNot() {
    click(QStringLiteral("step3"));
    click(QStringLiteral("jog0+"));
    click(QStringLiteral("jog0+"));
    QCOMPARE(text("lblJogAnswer"), QStringLiteral("The robot is moving"));
    settle();
    QCOMPARE(panel_->controller()->jogOn({sim::JogFrame::Base, 0, 1, 0.5}), sim::JogAnswer::Moves);
    settle();
    const double farthest = place("trans.#0");
    click(QStringLiteral("jog0+"));
    QCOMPARE(text("lblJogAnswer"), QStringLiteral("Out of reach"));
    panel_->controller()->setPower(false);
    QCOMPARE(text("lblJogAnswer"), QStringLiteral("The drives are off"));
    click(QStringLiteral("jog0-"));
    settle();
    QCOMPARE(place("trans.#0"), farthest);
    panel_->controller()->setPower(true);
    QCOMPARE(text("lblJogAnswer"), QString());
    panel_->controller()->jog(sim::JogAxis::X, 0.5 - farthest);
}

void AppPendant::jog_isRefusedWhileTheProgramRuns() {
    m(QStringLiteral("lumo.execute.state"))->setValue(this, QStringLiteral("busy"));
    QVERIFY(!find(QStringLiteral("jog0+"))->isEnabled());
    QCOMPARE(text("lblJogAnswer"), QStringLiteral("A program is running"));
    QVERIFY(text("lblProgramState").contains(QLatin1String("Running")));
    m(QStringLiteral("lumo.execute.state"))->setValue(this, QStringLiteral("idle"));
    QVERIFY(find(QStringLiteral("jog0+"))->isEnabled());
}

// --- The window ------------------------------------------------------------------------------------

void AppPendant::click_leavesTheKeyboardWhereItIs() {
    const app::PendantWindow* pendant = panel_->pendant();
    QVERIFY(pendant->windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
    QTest::keyClick(panel_->window()->windowHandle(), Qt::Key_F9);
    advance(10);
    QVERIFY(pendant->isActiveWindow());
    QVERIFY(pendant->focusWidget());
    QTest::keyClick(pendant->windowHandle(), Qt::Key_F9);
    advance(10);
    QVERIFY(panel_->window()->isActiveWindow());
    QVERIFY(pendant->windowHandle()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
}

void AppPendant::dialog_doesNotLieOverIt() {
    panel_->pendant()->move(400, 100);
    auto* dialog = new QDialog(page());
    dialog_ = dialog;
    dialog->setWindowFlags(dialog->windowFlags() | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    dialog->resize(200, 150);
    dialog->open();
    dialog->move(420, 120);
    advance(10);
    QVERIFY(!dialog->geometry().intersects(panel_->pendant()->frameGeometry()));
    // Nor when the pendant is put below it.
    panel_->pendant()->move(dialog->pos() - QPoint(20, 20));
    advance(10);
    QVERIFY(!dialog->geometry().intersects(panel_->pendant()->frameGeometry()));
}

void AppPendant::place_isRemembered() {
    app::PendantWindow* pendant = panel_->pendant();
    pendant->windowHandle()->setPosition(37, 51);  // as the window system tells of a drag
    QWindowSystemInterface::handleGeometryChange(pendant->windowHandle(),
                                                 QRect(QPoint(37, 51), pendant->size()));
    advance(10);
    QVERIFY(app::Preferences::pendantPlace().has_value());
    pendant->setUnfolded(false);
    const QPoint left = pendant->pos();
    pendant->hide();
    pendant->move(300, 300);
    pendant->setUnfolded(true);
    pendant->showBeside(panel_->window()->frameGeometry());
    QCOMPARE(pendant->pos(), left);
    QVERIFY(!pendant->isUnfolded());
    pendant->setUnfolded(true);
    advance(10);
}

void AppPendant::folded_showsStopAndPowerWhole() {
    app::PendantWindow* pendant = panel_->pendant();
    pendant->setUnfolded(false);
    advance(10);
    QRegion taken;
    for (const char* name : {"btnStop", "power0", "power1", "btnFold"}) {
        const auto* button = find(QLatin1String(name));
        const QRect place(button->mapTo(pendant, QPoint()), button->size());
        QVERIFY2(pendant->rect().contains(place) && !taken.intersects(place), name);
        taken += place;
    }
    const QPoint folded = pendant->pos();
    click(QStringLiteral("btnFold"));
    QVERIFY(find(QStringLiteral("mode0"))->isVisible());
    advance(10);
    click(QStringLiteral("btnFold"));
    advance(10);
    QCOMPARE(pendant->pos(), folded);  // not over the status line below it
    click(QStringLiteral("btnFold"));
}

void AppPendant::closing_isRefused() {
    QWindowSystemInterface::handleCloseEvent(panel_->pendant()->windowHandle());
    advance(10);
    QVERIFY(panel_->pendant()->isVisible());
    QWindowSystemInterface::handleWindowStateChanged(panel_->pendant()->windowHandle(), Qt::WindowMinimized);
    advance(10);
    QVERIFY(!panel_->pendant()->isMinimized());
}

void AppPendant::corner_data() {
    QTest::addColumn<QRect>("panel");
    QTest::addColumn<QRect>("room");
    QTest::addColumn<QPoint>("place");
    const QPoint none(-1, -1);
    QTest::newRow("wide, panel left")
        << QRect(0, 0, 1280, 830) << QRect(0, 0, 1920, 1080) << QPoint(1620, 380);
    QTest::newRow("wide, panel right")
        << QRect(640, 0, 1280, 830) << QRect(0, 0, 1920, 1080) << QPoint(0, 380);
    QTest::newRow("second screen") << QRect(1920, 40, 1280, 830) << QRect(1920, 40, 1920, 1040)
                                   << QPoint(3540, 380);
    QTest::newRow("no room") << QRect(0, 0, 1280, 800) << QRect(0, 0, 1280, 800) << none;
    QTest::newRow("too low") << QRect(0, 0, 1280, 600) << QRect(0, 0, 1920, 600) << none;
}

void AppPendant::corner() {
    QFETCH(QRect, panel);
    QFETCH(QRect, room);
    QTEST(app::cornerBeside(panel, QSize(300, 700), room).value_or(QPoint(-1, -1)), "place");
}

void AppPendant::dialogsPlace_data() {
    QTest::addColumn<QRect>("dialog");
    QTest::addColumn<QRect>("pendant");
    QTest::addColumn<QPoint>("place");
    QTest::newRow("to the left") << QRect(900, 300, 300, 200) << QRect(1000, 100, 280, 700)
                                 << QPoint(700, 300);
    QTest::newRow("to the right") << QRect(100, 300, 300, 200) << QRect(0, 100, 280, 700) << QPoint(280, 300);
    QTest::newRow("up") << QRect(900, 500, 300, 150) << QRect(900, 600, 380, 200) << QPoint(900, 450);
    QTest::newRow("nowhere") << QRect(0, 0, 1280, 700) << QRect(600, 100, 280, 600) << QPoint(-1, -1);
}

void AppPendant::dialogsPlace() {
    QFETCH(QRect, dialog);
    QFETCH(QRect, pendant);
    QTEST(app::placeClearOf(dialog, pendant, QRect(0, 0, 1280, 800)).value_or(QPoint(-1, -1)), "place");
}

int main(int argc, char** argv) {
    const QTemporaryDir configuration;  // the pendant's place is remembered there
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(configuration.path()));
    sim::VirtualTime::install();
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("lumo"));
    QCoreApplication::setApplicationName(QStringLiteral("pendant"));
    AppPendant test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_pendant.moc"
