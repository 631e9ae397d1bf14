#include "app/noticebar.h"
#include "app/parts/partcounter.h"
#include "app/preferences.h"
#include "app/state/panelstate.h"
#include "app/state/stateblock.h"
#include "mendo/clock.h"
#include "panelfixture.h"
#include "program/words.h"

#include <qpa/qwindowsysteminterface.h>
#include <QLineEdit>
#include <QSignalSpy>

using app::CellStatus;
using app::PanelState;

/// What the frame of the panel shows and does on every page: state, Stop, counter of parts.
class AppFrame : public test::PanelTest {
    Q_OBJECT

    QPointer<QDialog> dialog_;

    const PanelState& shown() const {
        pass(0);
        return window()->header()->state()->state();
    }
    QString words() const { return shown().word + "|" + shown().detail; }
    /// A press as the window system delivers it, which a dialog can block.
    void press(const QString& name) const {
        const QWidget* const widget = find<QWidget>(name);
        const QPoint place = widget->mapTo(window(), widget->rect().center());
        const QPoint onScreen = window()->mapToGlobal(place);
        for (const bool down : {true, false}) {
            QWindowSystemInterface::handleMouseEvent(
                window()->windowHandle(), place, onScreen, down ? Qt::LeftButton : Qt::NoButton,
                Qt::LeftButton, down ? QEvent::MouseButtonPress : QEvent::MouseButtonRelease);
        }
        QWindowSystemInterface::sendWindowSystemEvents(QEventLoop::AllEvents);
        pass(0);
    }
    /// Opens a dialog over the panel as the package does.
    void cover() {
        dialog_ = new QDialog(window()->pages()->currentWidget());
        dialog_->setAttribute(Qt::WA_DeleteOnClose);
        dialog_->open();
        pass(10);
    }
    static app::PartCount counted() {
        return app::PartCounter(app::PartCounter::defaultFile())
            .of(QDir::current().absoluteFilePath("seam.json"));
    }

private slots:
    void initTestCase() {
        m("lumo")->append(nullptr, "signalbind_program");
        openSample();
    }
    void init() {
        delete dialog_;
        robot()->setEmergencyStop(false);
        robot()->setPower(true);
        setRunMode(prog::runmode::byHand);
        set("lumo.current.openmiddlecolse", false);
        m("lumo.current.pausepoint")->clear(nullptr);
        pass(3000);  // the closing of a stop
        openSample();
    }

    /// Each row adds a cause that comes before all of the rows above it.
    void states_haveAnOrder() {
        CellStatus status;
        status.project = "seam";
        status.lines = 9;
        const struct {
            std::function<void()> cause;
            QString word, detail;
            app::Place place;
            int line;
        } rows[] = {
            {[] {}, "READY", "seam, 9 lines", app::Place::Project, -1},
            {[&] { status.power = false; }, "DRIVES OFF", "seam, 9 lines", app::Place::Rail, -1},
            {[&] { status.ended = app::EndedRun{"finished", "Finished", {}, 20000, "3 of 3 mm", 0}; },
             "FINISHED", "seam, 3 of 3 mm", app::Place::Results, -1},
            {[&] { status.listening = true; }, "LISTENING", "no station waits", app::Place::Stations, -1},
            {[&] { status.waitingStations = 2; }, "LISTENING", "2 waiting", app::Place::Stations, -1},
            {[&] {
                 status.busy = true;
                 status.line = 3;
             },
             "RUNNING", "seam, line 4 of 9", app::Place::Project, 3},
            {[&] { status.dry = true; }, "RUNNING", "dry run, seam, line 4 of 9", app::Place::Project, 3},
            {[&] { status.station = true; }, "RUNNING", "dry run, station, seam, line 4 of 9",
             app::Place::Stations, -1},
            {[&] {
                 status.pausedLine = 5;
                 status.pausedInWeld = true;
             },
             "PAUSED", "seam, line 6 of 9, inside a weld", app::Place::Project, 5},
            {[&] {
                 status.dry = false;
                 status.laser = CellStatus::Laser::ByStation;
             },
             "LASER ON", "station, seam, line 4 of 9", app::Place::Stations, -1},
            {[&] {
                 status.busy = false;
                 status.laser = CellStatus::Laser::ByHand;
             },
             "LASER ON", "by hand", app::Place::Device, -1},
            {[&] { status.lastError = -42; }, "FAULT", "LASER ON, robot motion error -0x2a",
             app::Place::Project, 5},
            {[&] { status.faults = QStringList{"Water"}; }, "FAULT",
             "LASER ON, Water, robot motion error -0x2a", app::Place::Monitor, -1},
            {[&] { status.emergencyStop = true; }, "EMERGENCY STOP", "LASER ON, Release it, then drives on",
             app::Place::Rail, -1},
        };
        QVector<int> kinds;
        for (const auto& row : rows) {
            row.cause();
            const PanelState state = app::panelState(status);
            QCOMPARE(state.word + "|" + state.detail, row.word + "|" + row.detail);
            QVERIFY2(state.place == row.place && state.line == row.line, qPrintable(row.detail));
            kinds.prepend(int(state.kind));
        }
        QVERIFY(std::is_sorted(kinds.begin(), kinds.end()));
    }

    /// The laser's output, also where the port was assigned wrongly since the cell was wired.
    void laserOn_followsTheOutput() {
        QCOMPARE(words(), "READY|seam, 15 lines");
        const QVariant assigned = m("lumo.port.#9.name")->value();
        for (const QVariant& name : {assigned, QVariant("DO5")}) {
            set("lumo.port.#9.name", name);
            write("LUMO_DO", 1, 3);
            QCOMPARE(words(), "LASER ON|no program runs");
            write("LUMO_DO", 0, 3);
            QCOMPARE(words(), "READY|seam, 15 lines");
        }
        set("lumo.port.#9.name", assigned);
        QString welding;
        run(0, {{4000, [&] {
                     welding = words();
                     m("lumo.execute.trigger.pause")->trigger();
                 }}});
        QCOMPARE(welding, "LASER ON|seam, line 4 of 15");
        pass(3000);
        QCOMPARE(words(), "PAUSED|seam, line 4 of 15, inside a weld");
    }

    /// The frame and the package's page grow together.
    void size_followsTheWindowAndTheMenu() {
        const auto shown = [this] {
            pass(10);
            return QString("%1 %2 %3 %4")
                .arg(window()->header()->height())
                .arg(find<QWidget>("rail")->width())
                .arg(find<QWidget>("statusLine")->height())
                .arg(window()->pages()->currentWidget()->font().pixelSize());
        };
        const QPair<QSize, QString> rows[] = {{{1024, 768}, "56 80 40 16"},
                                              {{1920, 1080}, "64 112 40 18"},
                                              {{2560, 1440}, "88 144 56 24"},
                                              {{1280, 800}, "56 96 40 16"}};
        for (const auto& [size, measures] : rows) {
            window()->resize(size);
            QCOMPARE(shown(), measures);
            QCOMPARE(window()->size(), size);
        }
        click("btnMenu");
        QVERIFY(find("btnSize2")->isEnabled() && !find("btnSize3")->isEnabled());
        click("btnSize2");
        QCOMPARE(shown(), "64 96 40 18");
        QCOMPARE(app::Preferences::factor(), 1.125);
        window()->setChosenFactor(0);
        QCOMPARE(shown(), "56 96 40 16");
    }

    void state_leadsToItsPlace() {
        robot()->setInput("LUMO_DI.#2", false);
        pass(0);
        press("stateBlock");
        QVERIFY(find<QWidget>("stateSheet")->isVisible());
        press("btnStateWay");
        robot()->setInput("LUMO_DI.#2", true);
        QVERIFY(find("btnMonitor")->isChecked() && !find<QWidget>("ProgramWidget")->isVisible());
        click("btnProject");
    }

    void stop_reachesARunUnderADialog() {
        for (const bool byStation : {false, true}) {
            setRunMode(byStation ? prog::runmode::byStation : prog::runmode::byHand);
            load(byStation ? "lumo.signalbind_program" : "lumo.program",
                 "[{'type':'delay','delaytime':60000}]");
            const qint64 begun = mendo::Clock::current().elapsedMs();
            run(0, {{1000, [this] { cover(); }}, {2000, [this] { press("btnRunStop"); }}});
            QCOMPARE(mendo::Clock::current().elapsedMs() - begun, 2000);
            QVERIFY2(wordOf("lumo.execute.state") == "idle" && dialog_->isVisible(), byStation ? "1" : "0");
            delete dialog_;
        }
        setRunMode(prog::runmode::byHand);
    }

    void stop_whileIdleOnlySaysSo() {
        set("lumo.execute.line", m("lumo.program")->cmobjCount() - 1);
        const int before = m("lumo.count")->getInt();
        press("btnRunStop");
        QVERIFY2(textOf("lblWhy").contains("Nothing to stop"), qPrintable(textOf("lblWhy")));
        pass(6000);
        QVERIFY(textOf("lblWhy").contains("Welding is permitted") && m("lumo.count")->getInt() == before);
    }

    /// A part that was stopped and continued counts once, with the times of both runs.
    void parts_areCountedAndKept() {
        load("lumo.program", "[{'type':'delay','delaytime':1000},{'type':'delay','delaytime':9000}]");
        click("partsBlock");
        find<QLineEdit>("edtPartTarget")->setText("2");
        click("btnPartTarget");
        const int before = counted().made;
        run(0, {{3000, [] { m("lumo.execute.trigger.pause")->trigger(); }}});
        pass(100);
        run(1, {});
        pass(100);
        QCOMPARE(counted().made - before, 1);
        QCOMPARE(counted().lastMs / 100, 120);  // 3 s, and the second line anew
        run(0, {});
        pass(100);
        QCOMPARE(find("partsBlock")->text(), QString("%1 / 2").arg(before + 2));
        QCOMPARE(textOf("lblPartTimesLine"), "Last part 0:10  ·  mean 0:11");
        QVERIFY(window()->notices()->texts().value(0).contains("Target reached: seam, 2 parts"));
        run(1, {{500, [] { m("lumo.execute.trigger.pause")->trigger(); }}});
        pass(100);
        QCOMPARE(counted().made, before + 2);
        click("partsBlock");
        click("btnPartsReset");
        QCOMPARE(counted().made, before + 2);
        click("btnPartsReset");
        QVERIFY(counted().made == 0 && counted().target == 2);
    }

    void damagedCounter_isToldAndKept() {
        const QString file = app::PartCounter::defaultFile();
        test::writeFile(file, "{\"x\": 1");
        QSignalSpy told(m(), &mendo::ModuleManager::fileProblem);
        app::PartCounter counter(file);
        counter.addRun("/a.json", 1000, true, true);
        QVERIFY(counter.of("/a.json").made == 1 && !told.isEmpty() && QFile::exists(file + ".damaged"));
        test::writeFile(file, "{\"/a.json\": {\"made\": -5, \"target\": 1e300, \"total_ms\": \"x\"}}");
        QCOMPARE(app::PartCounter(file).of("/a.json").figure(), "0");
    }
};

LUMO_TEST(AppFrame)
#include "test_frame.moc"
