#include "app/cell/signalbutton.h"
#include "app/language.h"
#include "app/navigation.h"
#include "app/noticebar.h"
#include "app/panel.h"
#include "gantu/bmodule.h"
#include "gantu/panel.h"
#include "kord/controllermanager.h"
#include "kord/kordservice.h"
#include "mendo/creatormanager.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "pel/navo.h"
#include "simulator/controller.h"
#include "simulator/virtualtime.h"

#include <QAbstractButton>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QStackedWidget>
#include <QtTest>

using app::SignalButton;

/// The panel with the real package, as an operator finds it.
class AppPanel : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void packagesPage_isShown();
    void pageRegisteredLater_isReached();
    void powerAndMode_actOnTheRobot_data();
    void powerAndMode_actOnTheRobot();
    void input_isSwitched();
    void output_isShown();
    void signal_carriesThePortItIsAssignedTo();
    void key_isReported_data();
    void key_isReported();
    void keyThatGoesAway_isLetGo();
    void jog_movesTheTool_data();
    void jog_movesTheTool();
    void jog_saysWhyNot();
    void jog_isRefusedWhileTheProgramRuns();
    void damagedFile_isTold();
    void project_isOpenedByThePagesButton();
    void dialog_keepsTheKeyboard_data();
    void dialog_keepsTheKeyboard();
    void strip_isUnfoldedAtTheStartWhereItFits();
    void strip_neverSqueezesThePage();
    void cell_isWiredByThePortFile();
    void closing_switchesTheLaserOff();

private:
    template <typename Widget = QAbstractButton>
    Widget* find(const QString& name) const {
        return panel_->window()->findChild<Widget*>(name);
    }
    void click(const QString& name) {
        auto* button = find(name);
        QVERIFY2(button, qPrintable(name));
        QTest::mouseClick(button, Qt::LeftButton);
    }
    QString text(const char* label) const { return find<QLabel>(QLatin1String(label))->text(); }
    static mendo::ModuleObject* keyNode(const QString& key) {
        return kord::ControllerManager::cmdItemMobj(QStringLiteral("endtool.keypad.state_change"),
                                                    QStringLiteral("notify"))
            ->c(key);
    }
    double place(int axis) const {
        const QString list = axis < 3 ? QStringLiteral("trans") : QStringLiteral("rot");
        return kordservice()->get(nullptr, QStringLiteral("sys.posture"), list)->c(axis % 3)->getDouble();
    }
    void settle() {
        sim::VirtualTime::instance()->advanceUntil([this] { return panel_->controller()->standsStill(); },
                                                   10000);
    }
    void write(const char* name, const QVariant& value, int bias) {
        kordservice()->execCommand(this, QStringLiteral("register.write"),
                                   QVariantHash{{QStringLiteral("name"), QLatin1String(name)},
                                                {QStringLiteral("value"), value},
                                                {QStringLiteral("bias"), bias}});
    }

    QTemporaryDir folder_;
    std::unique_ptr<app::Panel> panel_;
};

void AppPanel::initTestCase() {
    mendo::LogHub::instance()->setConsole(false);
    QVERIFY(QDir::setCurrent(folder_.path()));
    for (const char* name : {"lumo_port.json", "lumo_param.json", "seam.json"}) {
        QVERIFY(QFile::copy(QStringLiteral(":/app/sample/") + QLatin1String(name), QLatin1String(name)));
        QFile::setPermissions(QLatin1String(name), QFile::ReadOwner | QFile::WriteOwner);
    }
    app::installLanguage(QStringLiteral("en"));
    panel_ = std::make_unique<app::Panel>();
    QString error;
    QVERIFY2(panel_->open(QStringLiteral(LUMO_LIBRARY), &error), qPrintable(error));
    panel_->window()->resize(1280, 800);
    panel_->window()->show();
    sim::VirtualTime::instance()->advance(100);
}

void AppPanel::init() {
    settle();
    panel_->controller()->setPower(true);
    panel_->controller()->setMode(QStringLiteral("auto"));
    panel_->window()->unfoldStrip(true);
    click(QStringLiteral("cellTab0"));
    click(QStringLiteral("step1"));
}

void AppPanel::packagesPage_isShown() {
    const auto* button = find(QStringLiteral("nav_rova.robot.pack.lumo"));
    QVERIFY(button);
    QCOMPARE(button->text(), QStringLiteral("Laser Welding"));
    QVERIFY(button->isChecked());
    QCOMPARE(instantiatedCenterWidget(), panel_->window()->pages());
    QWidget* page = instantiatedCenterWidget()->currentWidget();
    QCOMPARE(page->metaObject()->className(), "LumoWidget");
    QVERIFY(page->isVisible());
}

namespace {

class OtherModule : public gantu::BModule {
public:
    explicit OtherModule(QObject* parent) : BModule(parent) { page_.setObjectName(QStringLiteral("other")); }
    QWidget* wgt() override { return &page_; }

private:
    QWidget page_;
};

}  // namespace

void AppPanel::pageRegisteredLater_isReached() {
    bfactory().regist(QStringLiteral("other.page"), mendo::CreatorManager::ModuleCreator([](QObject* parent) {
                          return new OtherModule(parent);
                      }));
    pel::navo::registerPage(this, QStringLiteral("Other"), QStringLiteral("robot.other"), QString(), -1)
        ->set(this, QStringLiteral("nav"), QStringLiteral("other.page"));
    sim::VirtualTime::instance()->advance(10);
    click(QStringLiteral("nav_other.page"));
    QCOMPARE(panel_->window()->pages()->currentWidget()->objectName(), QStringLiteral("other"));
    QVERIFY(find(QStringLiteral("nav_other.page"))->isChecked());
    QVERIFY(!find(QStringLiteral("nav_rova.robot.pack.lumo"))->isChecked());
    click(QStringLiteral("nav_rova.robot.pack.lumo"));
    packagesPage_isShown();
    // Coming back shows the same page, not another one.
    QCOMPARE(panel_->window()->pages()->count(), 2);
}

void AppPanel::powerAndMode_actOnTheRobot_data() {
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

void AppPanel::powerAndMode_actOnTheRobot() {
    QFETCH(QString, button);
    QFETCH(QString, path);
    // From the other state, in which the strip follows the robot.
    const bool first = button.endsWith(QLatin1Char('0'));
    panel_->controller()->setPower(first);
    panel_->controller()->setMode(first ? QStringLiteral("manual") : QStringLiteral("auto"));
    QVERIFY(!find(button)->isChecked());
    click(button);
    QTEST(m(path)->getString(), "value");
    QVERIFY(find(button)->isChecked());
}

void AppPanel::input_isSwitched() {
    click(QStringLiteral("cellTab1"));
    auto* input = find<SignalButton>(QStringLiteral("DI3"));
    QVERIFY(input->isVisible());
    QTest::mouseClick(input, Qt::LeftButton);
    QVERIFY(kordservice()->get(nullptr, QStringLiteral("device.io"), QStringLiteral("DI.DI3"))->getBool());
    QVERIFY(input->isOn());
    panel_->controller()->setInput(QStringLiteral("DI3"), false);
    QVERIFY(!input->isOn());
}

void AppPanel::output_isShown() {
    click(QStringLiteral("cellTab2"));
    const auto* lamp = find<SignalButton>(QStringLiteral("LUMO_DO.#7"));
    const auto* power = find<SignalButton>(QStringLiteral("LUMO_AO_5"));
    QCOMPARE(lamp->valueText(), QStringLiteral("0"));
    write("LUMO_DO", 1, 7);
    write("LUMO_AO_5", 16384, 0);
    QCOMPARE(lamp->valueText(), QStringLiteral("1"));
    QCOMPARE(power->valueText(), QStringLiteral("50.0 %"));
    QTest::mouseClick(find(QStringLiteral("LUMO_DO.#7")), Qt::LeftButton);
    QCOMPARE(lamp->valueText(), QStringLiteral("1"));
    write("LUMO_DO", 0, 7);
    QVERIFY(!lamp->isOn());
}

void AppPanel::signal_carriesThePortItIsAssignedTo() {
    click(QStringLiteral("cellTab2"));
    QCOMPARE(find<SignalButton>(QStringLiteral("LUMO_DO.#0"))->label(), QStringLiteral("Gas Enable"));
    m(QStringLiteral("lumo.port.#6.name"))->setValue(this, QStringLiteral("LUMO_DO.#12"));
    click(QStringLiteral("cellTab0"));
    click(QStringLiteral("cellTab2"));
    QVERIFY(find<SignalButton>(QStringLiteral("LUMO_DO.#0"))->label().isEmpty());
    QCOMPARE(find<SignalButton>(QStringLiteral("LUMO_DO.#12"))->label(), QStringLiteral("Gas Enable"));
    m(QStringLiteral("lumo.port.#6.name"))->setValue(this, QStringLiteral("LUMO_DO.#0"));
}

void AppPanel::key_isReported_data() {
    QTest::addColumn<QString>("key");
    for (const char* key : {"next", "last", "center", "enter", "delete"})
        QTest::newRow(key) << QString::fromLatin1(key);
}

void AppPanel::key_isReported() {
    QFETCH(QString, key);
    auto* button = find(QStringLiteral("key_") + key);
    QTest::mousePress(button, Qt::LeftButton);
    QCOMPARE(keyNode(key)->getBool(true), false);
    QTest::mouseRelease(button, Qt::LeftButton);
    QCOMPARE(keyNode(key)->getBool(false), true);
    QTest::keyPress(button, Qt::Key_Space);
    QCOMPARE(keyNode(key)->getBool(true), false);
    QTest::keyRelease(button, Qt::Key_Space);
    QCOMPARE(keyNode(key)->getBool(false), true);
}

void AppPanel::keyThatGoesAway_isLetGo() {
    QTest::mousePress(find(QStringLiteral("key_next")), Qt::LeftButton);
    panel_->window()->unfoldStrip(false);
    QCOMPARE(keyNode(QStringLiteral("next"))->getBool(false), true);
    panel_->window()->unfoldStrip(true);
    QTest::mouseRelease(find(QStringLiteral("key_next")), Qt::LeftButton);
}

void AppPanel::jog_movesTheTool_data() {
    QTest::addColumn<QString>("step");
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("axis");
    QTest::addColumn<double>("way");
    QTest::newRow("x") << "step2"
                       << "jogX+" << 0 << 0.01;
    QTest::newRow("y") << "step1"
                       << "jogY-" << 1 << -0.001;
    QTest::newRow("z") << "step0"
                       << "jogZ+" << 2 << 0.0001;
    QTest::newRow("rx") << "step2"
                        << "jogRX-" << 3 << -0.17453292;
    QTest::newRow("ry") << "step1"
                        << "jogRY+" << 4 << 0.017453292;
    QTest::newRow("rz") << "step1"
                        << "jogRZ-" << 5 << -0.017453292;
}

void AppPanel::jog_movesTheTool() {
    QFETCH(QString, step);
    QFETCH(QString, key);
    QFETCH(int, axis);
    QFETCH(double, way);
    const double before = place(axis);
    click(step);
    click(key);
    QCOMPARE(text("lblJogAnswer"), QString());
    settle();
    QVERIFY2(std::abs(place(axis) - before - way) < 1e-7, qPrintable(QString::number(place(axis) - before)));
    QString back = key;
    click(back.replace(key.size() - 1, 1, key.endsWith(QLatin1Char('+')) ? "-" : "+"));
    settle();
    QVERIFY(std::abs(place(axis) - before) < 1e-7);
    QCOMPARE(text("lblX"), QStringLiteral("500.00 mm"));
    QCOMPARE(text("lblRX"), QStringLiteral("180.00 °"));
}

void AppPanel::jog_saysWhyNot() {
    click(QStringLiteral("step2"));
    click(QStringLiteral("jogX+"));
    click(QStringLiteral("jogX+"));
    QCOMPARE(text("lblJogAnswer"), QStringLiteral("The robot is moving"));
    settle();
    int steps = 1;
    for (; steps < 100 && text("lblJogAnswer") != QLatin1String("Out of reach"); ++steps) {
        click(QStringLiteral("jogX+"));
        settle();
    }
    QVERIFY2(place(0) > 0.9, qPrintable(QString::number(place(0))));
    QVERIFY(steps < 100);
    const double farthest = place(0);
    panel_->controller()->setPower(false);
    QCOMPARE(text("lblJogAnswer"), QStringLiteral("The drives are off"));
    click(QStringLiteral("jogX-"));
    settle();
    QCOMPARE(place(0), farthest);
    panel_->controller()->setPower(true);
    QCOMPARE(text("lblJogAnswer"), QString());
    QCOMPARE(panel_->controller()->jog(sim::JogAxis::X, 0.5 - farthest), sim::JogAnswer::Moves);
}

void AppPanel::jog_isRefusedWhileTheProgramRuns() {
    m(QStringLiteral("lumo.execute.state"))->setValue(this, QStringLiteral("busy"));
    QVERIFY(!find(QStringLiteral("jogX+"))->isEnabled());
    QCOMPARE(text("lblJogAnswer"), QStringLiteral("A program is running"));
    QVERIFY(text("lblProgramState").contains(QLatin1String("Running")));
    const double before = place(0);
    click(QStringLiteral("jogX+"));
    settle();
    QCOMPARE(place(0), before);
    m(QStringLiteral("lumo.execute.state"))->setValue(this, QStringLiteral("idle"));
    QVERIFY(find(QStringLiteral("jogX+"))->isEnabled());
}

void AppPanel::damagedFile_isTold() {
    QFile file(QStringLiteral("damaged.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[\n  {\"type\": \"moveL\" \"note\": \"\"}\n]\n");
    file.close();
    mendo::ModuleManager::readFromJson(file.fileName());
    const QString told = panel_->window()->notices()->texts().value(0);
    QVERIFY2(told.contains(QFileInfo(file).absoluteFilePath() + QStringLiteral(", line 2, column 20: ")),
             qPrintable(told));
    QVERIFY(panel_->window()->notices()->isVisible());
    click(QStringLiteral("btnDismiss"));
}

void AppPanel::project_isOpenedByThePagesButton() {
    panel_->controller()->setPower(false);
    QVERIFY(panel_->openProject(QDir::current().absoluteFilePath(QStringLiteral("seam.json"))));
    sim::VirtualTime::instance()->advance(100);
    QCOMPARE(m(QStringLiteral("lumo.program"))->cmobjCount(), 15);
    QCOMPARE(m(QStringLiteral("lumo.toolset.end.name"))->getString(), QStringLiteral("laser_head"));
    QCOMPARE(text("lblProject"), QStringLiteral("seam"));
    QVERIFY(!QApplication::activeModalWidget());
}

void AppPanel::dialog_keepsTheKeyboard_data() {
    QTest::addColumn<QString>("button");
    QTest::newRow("a dialog that no window manager knows") << "btnNew";
    QTest::newRow("a file dialog") << "btnOpen";
}

/// A click beside a dialog activates the window below it, which hears no key.
void AppPanel::dialog_keepsTheKeyboard() {
    QFETCH(QString, button);
    click(button);
    sim::VirtualTime::instance()->advance(50);
    QPointer<QWidget> dialog = QApplication::activeModalWidget();
    QVERIFY(dialog);
    panel_->window()->activateWindow();
    sim::VirtualTime::instance()->advance(50);
    QCOMPARE(QApplication::activeWindow(), dialog.data());
    QTest::keyPress(QGuiApplication::focusWindow(), Qt::Key_Escape);  // the window ends with it
    sim::VirtualTime::instance()->advance(50);
    QVERIFY(!dialog || !dialog->isVisible());
    panel_->window()->activateWindow();
    sim::VirtualTime::instance()->advance(50);
    QVERIFY(panel_->window()->isActiveWindow());
}

void AppPanel::strip_isUnfoldedAtTheStartWhereItFits() {
    for (const int width : {1024, 1280}) {
        app::PanelWindow window;
        auto* page = new QWidget;
        page->setMinimumWidth(900);
        window.pages()->addWidget(page);
        auto* strip = new QWidget;
        strip->setFixedWidth(280);
        window.setStrip(strip);
        window.resize(width, 768);
        window.show();
        sim::VirtualTime::instance()->advance(10);
        QCOMPARE(strip->isVisible(), width == 1280);
    }
}

void AppPanel::strip_neverSqueezesThePage() {
    app::PanelWindow* window = panel_->window();
    QWidget* page = window->pages()->currentWidget();
    QWidget* strip = find<QWidget>(QStringLiteral("cellStrip"));
    const int before = page->minimumWidth();
    const int least = 900;
    page->setMinimumWidth(least);
    const auto resize = [window](int width) {
        window->resize(width, 800);
        sim::VirtualTime::instance()->advance(10);
    };
    resize(least + strip->width() - 1);
    QVERIFY(!strip->isVisible());
    QCOMPARE(window->pages()->width(), window->width());
    resize(least + strip->width());
    QVERIFY(strip->isVisible());
    QCOMPARE(window->pages()->geometry().right() + 1, strip->x());
    // What the operator has chosen stays.
    click(QStringLiteral("btnCell"));
    QVERIFY(!strip->isVisible());
    resize(least + strip->width() - 1);
    click(QStringLiteral("btnCell"));
    QVERIFY(strip->isVisible());
    QCOMPARE(window->pages()->width(), window->width());
    resize(least);
    QVERIFY(strip->isVisible());
    QCOMPARE(window->pages()->width(), least);
    page->setMinimumWidth(before);
    resize(1280);
}

void AppPanel::cell_isWiredByThePortFile() {
    const auto* welding = find<SignalButton>(QStringLiteral("LUMO_DI.#5"));
    write("LUMO_DO", 1, 3);
    QVERIFY(!welding->isOn());
    write("LUMO_AO_1", 10000, 0);
    QVERIFY(welding->isOn());
    write("LUMO_AO_1", 0, 0);
    write("LUMO_DO", 0, 3);
    QVERIFY(!welding->isOn());
}

/// The last one: the process is about to quit from then on.
void AppPanel::closing_switchesTheLaserOff() {
    m(QStringLiteral("lumo.program"))
        ->loadJson(this, QJsonArray{QJsonObject{{QStringLiteral("type"), QStringLiteral("open")},
                                                {QStringLiteral("execute"), true},
                                                {QStringLiteral("index"), 0}},
                                    QJsonObject{{QStringLiteral("type"), QStringLiteral("delay")},
                                                {QStringLiteral("execute"), true},
                                                {QStringLiteral("delaytime"), 60000}}});
    bool welding = false;
    QTimer::singleShot(0, this,
                       [this] { m(QStringLiteral("lumo.execute.trigger.start"))->setValue(this, 0); });
    QTimer::singleShot(5000, this, [this, &welding] {
        welding = panel_->controller()->input(QStringLiteral("LUMO_DI.#5"));
        panel_->window()->close();
    });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(welding);
    QCOMPARE(panel_->controller()->output(QStringLiteral("LUMO_DO.#3")).toBool(), false);
    QCOMPARE(panel_->controller()->output(QStringLiteral("LUMO_AO_1")).toInt(), 0);
}

int main(int argc, char** argv) {
    const QTemporaryDir configuration;  // file dialogs remember their look there
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(configuration.path()));
    sim::VirtualTime::install();
    QApplication application(argc, argv);
    AppPanel test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_panel.moc"
