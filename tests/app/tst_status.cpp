#include "app/language.h"
#include "app/noticebar.h"
#include "app/panel.h"
#include "app/why/whywatch.h"
#include "kord/kordservice.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "simulator/controller.h"
#include "simulator/virtualtime.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QJsonDocument>
#include <QLabel>
#include <QMessageBox>
#include <QProgressBar>
#include <QSet>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

/// The status line in the panel with the package behind it, on virtual time.
class AppStatus : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void permission_isToldAsItChanges();
    void port_thatDoesNothing_isNamed();
    void fault_isNamed();
    void emergencyStop_isTold_untilItIsReleased();
    void laserLitByHand_isTold();
    void pulsingLaser_isToldThroughItsGaps();
    void pause_isTold_untilResetOrAnotherStart();
    void failedMotion_isTold_untilTheNextStart();
    void stations_areListenedTo();
    void project_thatIsMade_unlocksEditing();
    void wait_isToldWhileItLasts();
    void ofStation_isSaid();
    void nothingIsTimed_whenNothingIsTold();
    void longText_isCutAndWhole();
    void progress_isShownWhileARunIsOn();
    void progress_ofAStationsProgram();
    void progress_ofOneStep();
    void notice_standsBesideTheLine();
    void speed_isToldBesideTheFoldedCell();
    void cleanupTestCase() { panel_.reset(); }

private:
    template <typename Widget = QLabel>
    Widget* find(const char* name) const {
        return panel_->window()->findChild<Widget*>(QLatin1String(name));
    }
    QString line() const {
        pass(0);
        return find("lblWhy")->text();
    }
    bool tells(const char* text) const { return line().contains(QLatin1String(text)); }
    bool isTicked() const {
        pass(0);
        return find("lblWhySign")->text() == QStringLiteral("✓");
    }
    static void pass(qint64 ms) { sim::VirtualTime::instance()->advance(ms); }
    static void set(const char* path, const QVariant& value) {
        m(QLatin1String(path))->setValue(nullptr, value);
    }
    static void load(const char* path, const char* program) {
        m(QLatin1String(path))
            ->loadJson(nullptr, QJsonDocument::fromJson(QByteArray(program).replace('\'', '"')).array());
    }
    /// Starts a program at a line, and does something in each of these moments of the run.
    void run(int atLine, const QVector<QPair<int, std::function<void()>>>& moments,
             const char* trigger = "lumo.execute.trigger.start");
    int* runMode() const;

    QTemporaryDir folder_;
    std::unique_ptr<app::Panel> panel_;
};

int* AppStatus::runMode() const {
    return const_cast<int*>(app::PackageFlags::find(QStringLiteral(LUMO_LIBRARY)).runMode);
}

void AppStatus::run(int atLine, const QVector<QPair<int, std::function<void()>>>& moments,
                    const char* trigger) {
    QObject scope;
    for (const auto& moment : moments)
        QTimer::singleShot(moment.first, Qt::PreciseTimer, &scope, moment.second);
    set(trigger, atLine);
    pass(0);
}

void AppStatus::initTestCase() {
    mendo::LogHub::instance()->setConsole(false);
    QVERIFY(QDir::setCurrent(folder_.path()));
    for (const char* name : {"lumo_port.json", "lumo_param.json", "seam.json"})
        QVERIFY(QFile::copy(QStringLiteral(":/app/sample/") + QLatin1String(name), QLatin1String(name)));
    app::installLanguage(QStringLiteral("en"));
    panel_ = std::make_unique<app::Panel>();
    QString error;
    QVERIFY2(panel_->open(QStringLiteral(LUMO_LIBRARY), &error), qPrintable(error));
    m(QStringLiteral("lumo"))->append(nullptr, QStringLiteral("signalbind_program"));
    panel_->window()->resize(1280, 800);
    panel_->window()->show();
    pass(100);
}

void AppStatus::init() {
    panel_->controller()->setPower(true);
    panel_->controller()->setMode(QStringLiteral("auto"));
    *runMode() = app::PackageFlags::ByHand;
}

void AppStatus::project_thatIsMade_unlocksEditing() {
    panel_->controller()->setPower(false);
    QVERIFY2(tells("Editing is locked: no project is open"), qPrintable(line()));
    QVERIFY(panel_->openProject(QDir::current().absoluteFilePath(QStringLiteral("seam.json"))));
    pass(100);
    QVERIFY2(!tells("Editing"), qPrintable(line()));
    panel_->controller()->setPower(true);
    QVERIFY(tells("Editing is locked: the drives are on"));
}

void AppStatus::permission_isToldAsItChanges() {
    QVERIFY(tells("Welding is permitted"));
    set("lumo.allWeldBtnstatus.weldbtn", false);
    QVERIFY(tells("No welding: the Weld switch is off"));
    set("lumo.allWeldBtnstatus.weldbtn", true);
    panel_->controller()->setMode(QStringLiteral("manual"));
    QVERIFY(tells("No welding: manual mode, and the Hand Weld switch is off"));
    set("lumo.allWeldBtnstatus.handweldbtn", true);
    QVERIFY(tells("Welding is permitted"));
    QVERIFY(isTicked());
    set("lumo.allWeldBtnstatus.handweldbtn", false);
    panel_->controller()->setMode(QStringLiteral("auto"));
    panel_->controller()->setPower(false);
    QVERIFY(tells("No welding: the drives are off"));
    QVERIFY(!isTicked());
}

void AppStatus::port_thatDoesNothing_isNamed() {
    const QVariant given = m(QStringLiteral("lumo.port.#9.name"))->value();
    set("lumo.port.#9.enable", false);
    QVERIFY2(tells("No welding: port \"Laser Enable\" is disabled"), qPrintable(line()));
    set("lumo.port.#9.enable", true);
    set("lumo.port.#9.name", "DO2_3");
    QVERIFY2(tells("No welding: port \"Laser Enable\" is assigned to DO2_3"), qPrintable(line()));
    set("lumo.port.#9.name", "");
    QVERIFY2(tells("No welding: port \"Laser Enable\" is not assigned"), qPrintable(line()));
    set("lumo.port.#9.name", given);
    QVERIFY(tells("Welding is permitted"));
    set("lumo.port.#6.enable", false);
    QVERIFY2(tells("Welding without gas: port \"Gas Enable\" is disabled"), qPrintable(line()));
    QVERIFY(!isTicked());
    set("lumo.port.#6.enable", true);
    // Another file of settings.
    const QJsonValue ports = m(QStringLiteral("lumo.port"))->exportToJson();
    load("lumo.port", "[]");
    QVERIFY(tells("No welding"));
    m(QStringLiteral("lumo.port"))->loadJson(nullptr, ports);
    QVERIFY(tells("Welding is permitted"));
    set("lumo.port.#16.enable", false);
    QVERIFY2(tells("No welding: port \"Laser Power"), qPrintable(line()));
    set("lumo.port.#16.enable", true);
}

void AppStatus::fault_isNamed() {
    panel_->controller()->setInput(QStringLiteral("LUMO_DI.#2"), false);
    QVERIFY2(line().startsWith(QLatin1String("Equipment not ready: Water Cooling State")),
             qPrintable(line()));
    QVERIFY(!tells("Welding is permitted") && !isTicked());
    set("lumo.port.#2.enable", false);
    QVERIFY(tells("Welding is permitted") && isTicked());
    set("lumo.port.#2.enable", true);
    panel_->controller()->setInput(QStringLiteral("LUMO_DI.#2"), true);
    QVERIFY(isTicked());
}

void AppStatus::emergencyStop_isTold_untilItIsReleased() {
    panel_->controller()->setEmergencyStop(true);
    QVERIFY2(line().startsWith(QLatin1String("Emergency stop is pressed")), qPrintable(line()));
    panel_->controller()->setEmergencyStop(false);
    QVERIFY(!tells("Emergency stop"));
}

void AppStatus::laserLitByHand_isTold() {
    for (const char* button : {"btnDeviceControl", "btnLaserControl", "btnLaserTest"}) {
        find<QAbstractButton>(button)->click();
        pass(200);
    }
    QVERIFY2(line().startsWith(QLatin1String("Laser on: by hand")), qPrintable(line()));
    QVERIFY(!isTicked());
    find<QAbstractButton>("btnLaserControl")->click();
    QVERIFY2(!tells("Laser on"), qPrintable(line()));
    find<QAbstractButton>("btnProject")->click();
}

/// 100 ms on, 100 ms off.
void AppStatus::pulsingLaser_isToldThroughItsGaps() {
    const QVariant interval = m(QStringLiteral("lumo.param.#0.open_interval"))->value();
    const QVariant time = m(QStringLiteral("lumo.param.#0.open_time"))->value();
    set("lumo.param.#0.open_interval", 100);
    set("lumo.param.#0.open_time", 100);
    load("lumo.program", "[{'type':'open','index':0},{'type':'delay','delaytime':1000},{'type':'close'}]");
    QSet<QString> told;
    QVector<QPair<int, std::function<void()>>> moments;
    for (int ms = 500; ms < 1300; ms += 40)
        moments.append({ms, [&] { told << line().section(QStringLiteral("  ·"), 0, 0); }});
    run(0, moments);
    QCOMPARE(told, QSet<QString>{"Laser on: by the program"});
    pass(2000);
    QVERIFY(!tells("Laser on"));
    set("lumo.param.#0.open_interval", interval);
    set("lumo.param.#0.open_time", time);
}

void AppStatus::pause_isTold_untilResetOrAnotherStart() {
    load("lumo.program",
         "[{'type':'delay','delaytime':100},{'type':'open','index':0},{'type':'delay','delaytime':2000},"
         "{'type':'close'}]");
    const auto pause = [] { m(QStringLiteral("lumo.execute.trigger.pause"))->trigger(); };
    const auto pauseInTheWeld = [&] {
        run(0, {{1500, pause}});
        pass(3000);
    };
    pauseInTheWeld();
    QVERIFY2(tells("Paused at line 3, inside a weld"), qPrintable(line()));
    m(QStringLiteral("lumo.current.pausepoint"))->clear(nullptr);
    set("lumo.current.openmiddlecolse", false);
    QVERIFY2(tells("No program runs"), qPrintable(line()));
    pauseInTheWeld();
    run(2, {});
    pass(3000);
    QVERIFY2(tells("No program runs"), qPrintable(line()));  // it went on to its end
    run(0, {{50, pause}});
    pass(1000);
    QVERIFY2(tells("Paused at line 1") && !tells("inside"), qPrintable(line()));
    run(0, {});
    pass(3000);
}

void AppStatus::failedMotion_isTold_untilTheNextStart() {
    load("lumo.program",
         "[{'type':'moveL','speed':10,'point':{'trans':[5,0,0.3],'rot':[3.141592653589793,0,0]}},"
         "{'type':'delay','delaytime':1000}]");
    run(0, {});
    pass(1000);
    QVERIFY2(line().startsWith(QLatin1String("The last run failed: robot motion error -0x1")),
             qPrintable(line()));
    for (QWidget* box : QApplication::topLevelWidgets()) {
        if (qobject_cast<QMessageBox*>(box))
            box->close();
    }
    bool during = true;
    run(1, {{500, [&] { during = tells("failed"); }}});
    QVERIFY(!during && !tells("failed"));
}

void AppStatus::stations_areListenedTo() {
    find<QAbstractButton>("btnBind")->click();
    pass(200);
    auto* listening = find<QWidget>("switchBtn");
    QTest::mouseClick(listening, Qt::LeftButton);
    QVERIFY2(tells("Listening to the stations"), qPrintable(line()));
    QTest::mouseClick(listening, Qt::LeftButton);
    QVERIFY(!tells("Listening"));
    find<QAbstractButton>("btnProject")->click();
}

void AppStatus::wait_isToldWhileItLasts() {
    load("lumo.program",
         "[{'type':'open','index':0},{'type':'waitDI','DI_type':'IO','diName':'DI4','value1':'false'},"
         "{'type':'waitDI','DI_type':'register','DI_reg':{'name':'LUMO_DI','bias':9}},{'type':'close'},"
         "{'type':'delay','delaytime':70000}]");
    panel_->controller()->setInput(QStringLiteral("DI4"), true);
    panel_->controller()->setInput(QStringLiteral("LUMO_DI.#9"), false);
    QStringList told;
    const QString laserOn = QStringLiteral("Laser on: by the program  ·  ");
    const auto tell = [&] { told << line().remove(laserOn).section(QStringLiteral("  ·"), 0, 0); };
    const auto input = [this](const char* name, bool on) {
        return [this, name, on] { panel_->controller()->setInput(QLatin1String(name), on); };
    };
    // 300 ms of gas, 100 ms of dwell; then ramp 200 ms, 100 ms, gas 500 ms.
    run(0, {{100, tell},
            {310, tell},
            {3450, tell},
            {10000, input("DI4", false)},
            {11150, tell},
            {12000, input("LUMO_DI.#9", true)},
            {12150, tell},
            {12410, tell},
            {12610, tell},
            {20000, tell},
            {80000, [] { m(QStringLiteral("lumo.execute.trigger.pause"))->trigger(); }}});
    QCOMPARE(told,
             QStringList({"Line 1: gas flows before the weld, 200 ms left",
                          "Line 1: the laser is on, the robot stays, 100 ms left",
                          "Line 2 waits for DI4 = false, 3 s", "Line 3 waits for LUMO_DI.#9 = true, 1 s",
                          "Line 4: laser power ramps down, 50 ms left",
                          "Line 4: gas flows after the weld, 400 ms left",
                          "Line 4: gas flows after the weld, 200 ms left", "Line 5: delay, 1:02 min left"}));
    QVERIFY(tells("Laser, gas and wire are being switched off"));
    pass(1000);
    QVERIFY(tells("Paused at line 5"));
}

void AppStatus::ofStation_isSaid() {
    *runMode() = app::PackageFlags::ByStation;
    load("lumo.program", "[]");
    load("lumo.signalbind_program", "[{'type':'waitDI','DI_type':'IO','diName':'DI5','value1':'true'}]");
    QString told;
    run(0, {{2300, [&] { told = line(); }},
            {2500, [this] { panel_->controller()->setInput(QStringLiteral("DI5"), true); }}});
    QVERIFY2(told.startsWith(QLatin1String("Station, line 1 waits for DI5 = true, 2 s")), qPrintable(told));
}

void AppStatus::nothingIsTimed_whenNothingIsTold() {
    const app::WhyWatch* watch = panel_->findChild<app::WhyWatch*>();
    load("lumo.program", "[{'type':'delay','delaytime':500}]");
    QVERIFY(!watch->isTiming());
    bool during = false;
    run(0, {{200, [&] { during = watch->isTiming(); }}});
    QVERIFY(during);
    QVERIFY(!watch->isTiming());
}

void AppStatus::longText_isCutAndWhole() {
    set("lumo.allWeldBtnstatus.weldbtn", false);
    panel_->controller()->setMode(QStringLiteral("manual"));
    panel_->controller()->setPower(false);
    set("lumo.port.#9.enable", false);
    set("lumo.port.#16.enable", false);
    panel_->window()->notices()->report(QStringLiteral("a.json"), 0, 0, QStringLiteral("Is a directory"));
    const QString text = line();
    const QLabel* label = find("lblWhy");
    QVERIFY2(text.endsWith(QStringLiteral("…")), qPrintable(text));
    QVERIFY(label->heightForWidth(label->width()) <= label->height());
    QVERIFY(find<QWidget>("whyLine")->toolTip().contains(QLatin1String("port \"Laser Power")));
    panel_->window()->notices()->dismiss();
    set("lumo.port.#9.enable", true);
    set("lumo.port.#16.enable", true);
    set("lumo.allWeldBtnstatus.weldbtn", true);
}

void AppStatus::progress_isShownWhileARunIsOn() {
    load("lumo.program",
         "[{'type':'delay','delaytime':9000,'execute':false},{'type':'delay','delaytime':3000},"
         "{'type':'waitDI','DI_type':'IO','diName':'DI6'},{'type':'delay','delaytime':60000}]");
    panel_->controller()->setInput(QStringLiteral("DI6"), false);
    QStringList told;
    QVector<int> steps;
    const auto tell = [&] {
        told << find("lblProgressGone")->text() + QLatin1Char('/') + find("lblProgressLeft")->text();
        steps << find<QProgressBar>("barProgress")->value();
    };
    const auto* view = find<QWidget>("runProgress");
    QVERIFY(!view->isVisible());
    bool during = false;
    run(0, {{1000, [&] { during = view->isVisible(); }},
            {1400, tell},
            {9100, tell},
            {10000, [this] { panel_->controller()->setInput(QStringLiteral("DI6"), true); }},
            {40050, tell}});
    QVERIFY(during);
    QVERIFY(!view->isVisible());
    QCOMPARE(told, QStringList(
                       {"0:01/1:02 left + inputs", "0:09/waits for an input, then 1:00", "0:40/0:30 left"}));
    QVERIFY(steps[0] > 0 && steps[0] < steps[1] && steps[1] < steps[2] && steps[2] < 1000);
}

void AppStatus::progress_ofAStationsProgram() {
    *runMode() = app::PackageFlags::ByStation;
    load("lumo.program", "[{'type':'delay','delaytime':1000}]");
    load("lumo.signalbind_program", "[{'type':'delay','delaytime':20000},{'type':'delay','delaytime':5000}]");
    QString told;
    run(0, {{22100, [&] { told = find("lblProgressLeft")->text(); }}});
    QCOMPARE(told, QStringLiteral("0:03 left"));
}

void AppStatus::progress_ofOneStep() {
    *runMode() = app::PackageFlags::SingleStep;
    load("lumo.program",
         "[{'type':'delay','delaytime':90000},{'type':'moveL','speed':10,'point':{'trans':[0.5,0,0.3],"
         "'rot':[3.141592653589793,0,0]}},{'type':'delay','delaytime':90000}]");
    QString told;
    run(1, {{4300, [&] { told = find("lblProgressLeft")->text(); }}}, "lumo.execute.trigger.once");
    QCOMPARE(told, QStringLiteral("0:06 left"));
}

void AppStatus::notice_standsBesideTheLine() {
    QFile file(QStringLiteral("damaged.json"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[\n  {\"type\": \"moveL\" \"note\": \"\"}\n]\n");
    file.close();
    mendo::ModuleManager::readFromJson(file.fileName());
    pass(10);
    const auto* notice = find<QWidget>("noticeBar");
    const auto* why = find<QWidget>("whyLine");
    QVERIFY(notice->isVisible() && why->isVisible());
    QCOMPARE(notice->parentWidget(), why->parentWidget());
    QVERIFY(notice->width() > 300 && why->width() > 300);
    QTest::mouseClick(find<QWidget>("btnDismiss"), Qt::LeftButton);
    QVERIFY(!notice->isVisible());
}

void AppStatus::speed_isToldBesideTheFoldedCell() {
    QSignalSpy chosen(panel_.get(), &app::Panel::speedChosen);
    const auto* button = find<QAbstractButton>("btnCell");
    panel_->window()->unfoldStrip(true);
    QTest::mouseClick(find<QWidget>("speed2"), Qt::LeftButton);
    QCOMPARE(chosen.takeFirst().first().toDouble(), 5.0);
    QVERIFY(find<QAbstractButton>("speed2")->isChecked());
    QCOMPARE(button->text(), QStringLiteral("Simulated cell 5x"));
    QTest::keyClick(find<QWidget>("speed0"), Qt::Key_Space);
    QCOMPARE(chosen.takeFirst().first().toDouble(), 1.0);
    QCOMPARE(button->text(), QStringLiteral("Simulated cell"));
}

int main(int argc, char** argv) {
    const QTemporaryDir configuration;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(configuration.path()));
    sim::VirtualTime::install();
    QApplication application(argc, argv);
    AppStatus test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_status.moc"
