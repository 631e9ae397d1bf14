#include "app/path/pathview.h"
#include "app/scope/scopeexport.h"
#include "app/scope/scopepage.h"
#include "app/scope/scopeplot.h"
#include "app/views/viewswindow.h"
#include "panelfixture.h"
#include "support/runnerfolder.h"

#include <qwt_scale_map.h>
#include <QFileDialog>

using app::SignalRecord;
using Values = std::vector<double>;

/// The views: the path of a program with its seam, and the signals that were recorded.
class AppViews : public test::PanelTest {
    Q_OBJECT

    app::PathView* const path_ = panel_->views()->findChild<app::PathView*>();
    app::ScopePage* const scope_ = panel_->views()->findChild<app::ScopePage*>();
    app::ScopePlot* const plot_ = scope_->findChild<app::ScopePlot*>();
    const app::SignalRecorder& recorder_ = *panel_->recorder();
    double welded_ = 0;  ///< millimetres travelled with the laser on in the first run

    int laneOf(const QString& name) const {
        const auto all = app::lanesOf(recorder_.cellSignals(), recorder_.record());
        const auto isIt = [&name](const app::Lane& lane) { return lane.name == name; };
        const auto found = std::find_if(all.begin(), all.end(), isIt);
        return found == all.end() ? -1 : int(found - all.begin());
    }
    double seamShown() const { return textOf("lblSeam").section(' ', 1, 1).toDouble(); }
    void selectLine(int line) const {
        auto* const table = find<QWidget>("ProgramWidget")->findChild<QAbstractItemView*>("tableWidget");
        table->setCurrentIndex(table->model()->index(line, 1));
    }
    /// With what it leaves to the event loop: a run, until it is idle.
    void clickAndRun(const QString& name) const {
        click(name);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        settle();
    }
    /// Paused in the weld; the seam that was shown then.
    double weldSome() {
        click("btnReset");
        double shown = -1;
        QTimer::singleShot(6003, this, [this, &shown] {
            shown = seamShown();
            click("btnPause");
        });
        clickAndRun("btnStart");
        return shown;
    }

private slots:
    /// Welds the sample once, from home.
    void initTestCase() {
        roots_ = {panel_->views(), window()};
        init();
        pass(1234);
        const auto lit = [this](const QString& name, bool on) {
            if (name == "LUMO_DI.#5")
                welded_ += (on ? -1000 : 1000) * robot()->travelled();
        };
        const auto following = connect(robot(), &sim::Controller::inputChanged, this, lit);
        QTimer::singleShot(15003, this, [this] { robot()->setInput("DI3", true); });
        clickAndRun("btnStart");
        disconnect(following);
        pass(5000);
        find<QComboBox>("cmbRange")->setCurrentIndex(1);
        scope_->exportTo("panel.vcd");
        QVERIFY2(welded_ > 100 && std::abs(seamShown() - welded_) < 0.2, qPrintable(textOf("lblSeam")));
    }
    void init() {
        robot()->setPower(false);
        openSample();
        robot()->setPower(true);
        panel_->views()->open(0, window());
        pass(10);
    }

    void weld_isRecordedAsTheRunnerRecordsIt() {
        test::writeFile("s.json", test::quoted("[{'at':15003,'do':'input','name':'DI3','value':true}]"));
        const QStringList arguments = {"seam.json", "--settings", ".", "--scenario", "s.json", "--quiet"};
        QCOMPARE(runIn(".", arguments + QStringList{"--vcd", "runner.vcd"}).status, 0);
        const QByteArray ours = test::contentOf("panel.vcd"), theirs = test::contentOf("runner.vcd");
        QVERIFY(theirs.size() > 10000);
        const auto differs = std::mismatch(ours.begin(), ours.end(), theirs.begin(), theirs.end());
        QVERIFY2(ours == theirs, ours.mid(int(differs.first - ours.begin()) - 100, 200));
    }

    void seam_isKeptUntilTheNextPass() {
        robot()->setInput("DI3", true);
        clickAndRun("btnStart");
        const double whole = seamShown();
        selectLine(0);
        clickAndRun("btnRunOnce");
        QCOMPARE(seamShown(), whole);
        const double shown = weldSome();
        QVERIFY2(shown > 0 && seamShown() >= shown && seamShown() < whole, qPrintable(textOf("lblSeam")));
        m("lumo.program")->reorder(this, 0, 1);
        QVERIFY(seamShown() > 0);
        const QImage before = path_->grab().toImage();
        click("btnClearSeam");
        QCOMPARE(seamShown(), 0.0);
        QVERIFY(path_->grab().toImage() != before);
        openSample();
        QVERIFY(weldSome() > 0);
        openSample();
        QCOMPARE(seamShown(), 0.0);
    }

    void window_opensByButtonAndKeys() {
        for (const int key : {0, int(Qt::Key_F6), int(Qt::Key_F7)}) {
            QTest::keyClick(panel_->views(), Qt::Key_Escape);
            QVERIFY(!panel_->views()->isVisible() && !find("btnViews")->isChecked());
            key ? QTest::keyClick(window(), Qt::Key(key)) : click("btnViews");
            QVERIFY(panel_->views()->isVisible() && find("btnViews")->isChecked());
            QVERIFY(scope_->isVisible() == (key == Qt::Key_F7) && path_->isVisible() != scope_->isVisible());
        }
    }

    void path_followsSelectionEditsAndStations() {
        const auto moves = [this] {
            pass(10);
            return path_->moves();
        };
        selectLine(3);
        QCOMPARE(path_->selected(), QSet<int>{3});
        QCOMPARE(textOf("lblPathLine"), "Line 4: weld, 60.0 mm");
        const size_t count = moves().size();
        set("lumo.program.#3.point.trans.#1", 0.01);
        QVERIFY(moves().at(2).target.y == 0.01 && moves().at(2).weld);
        set("lumo.program.#2.execute", false);
        QVERIFY(!moves().at(2).weld);
        m("lumo.program")->remove(this, "#0");
        QCOMPARE(moves().size(), count - 1);
        const QPointF shown0 = path_->frame().fromAbove({});
        QTest::keyClick(path_, Qt::Key_Right);  // what was moved by hand stays
        set("lumo.program.#3.point.trans.#0", 0.9);
        QVERIFY(moves().size() && path_->frame().fromAbove({}) - shown0 == QPointF(-40, 0));
        m("lumo")->append(this, "signalbind_program");
        load("lumo.signalbind_program", "[{'type':'delay','delaytime':100}]");
        size_t shown = count;
        setRunMode(app::PackageFlags::ByStation);
        run(0, {{50, [&] { shown = path_->moves().size(); }}});
        setRunMode(app::PackageFlags::ByHand);
        QVERIFY(shown == 0 && moves().size() == count - 1);
    }

    void record_forgetsWhatIsOldOrTooMuch() {
        SignalRecord record({1, 7}, 10);
        record.add({20, 0, 3});
        record.add({30, 1, 8});
        record.add({25 + SignalRecord::kKeptMs, 0, 4});
        QVERIFY(record.changes().size() == 2 && record.beginMs() == 25 && record.before(0) == (Values{3, 7}));
        for (int i = 0; i < SignalRecord::kMostChanges; ++i)
            record.add({26 + SignalRecord::kKeptMs, 0, 5.0 + i});
        QVERIFY(record.changes().size() == SignalRecord::kMostChanges && record.before(0) == (Values{4, 8}));
    }

    void csv_hasARowForEachTimeOfItsSection() {
        set("lumo.port.#0.tag", "Laser \"ok\"");
        write("LUMO_AO_1", 1000);
        pass(500);
        const qint64 begin = app::SignalRecorder::nowMs();
        robot()->setInput("LUMO_DI.#0", false);
        pass(20);
        write("LUMO_AO_1", 16384);
        robot()->setInput("LUMO_DI.#0", true);
        pass(10);
        write("LUMO_DO", 1, 3);  // not among the two
        pass(70);
        write("LUMO_AO_1", 0);
        write("LUMO_DO", 0, 3);
        const auto lanes = app::lanesOf(recorder_.cellSignals(), recorder_.record());
        const auto lane = [&](const QString& name) { return lanes[size_t(laneOf(name))]; };
        const std::vector<app::Lane> two = {lane("LUMO_DI.#0"), lane("LUMO_AO_1")};
        QString error;
        QFile csv("a.csv"), full("/dev/full");
        QVERIFY(csv.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        QVERIFY(app::writeCsv(&csv, recorder_, two, {begin, begin + 50}, &error));
        QCOMPARE(test::contentOf("a.csv"), "time_s,\"LUMO_DI.#0 Laser \"\"ok\"\"\",\"LUMO_AO_1 " +
                                               two[1].label.toUtf8() + "\"\n0.000,0,1000\n0.020,1,16384\n");
        QVERIFY(full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        QVERIFY(!app::writeVcd(&full, recorder_, recorder_.all(), &error) && error.startsWith("No space"));
        error.clear();
        QVERIFY(!app::writeCsv(&full, recorder_, two, recorder_.all(), &error) &&
                error.startsWith("No space"));
    }

    void scope_holdsTimeAndReadsValues() {
        panel_->views()->open(1, window());
        set("lumo.port.#9.enable", false);
        robot()->setInput("DI6", true);
        const auto end = [this] { return plot_->axisInterval(QwtPlot::xBottom).maxValue(); };
        pass(1000);
        const double before = end();
        robot()->setInput("LUMO_DI.#2", false);
        const qint64 edge = app::SignalRecorder::nowMs();
        pass(20000);
        robot()->setInput("LUMO_DI.#2", true);
        pass(20000);
        QCOMPARE(end(), before + 40000);
        click("btnHold");
        pass(2000);
        QCOMPARE(end(), before + 40000);
        // Ports that are enabled come first, then what has changed.
        const int lane = laneOf("LUMO_DI.#2");
        QVERIFY(laneOf("busy") == 0 && lane > 0 && laneOf("DI6") > lane && laneOf("DI7") < 0);
        QVERIFY(laneOf("LUMO_DO.#3") > laneOf("LUMO_AO_3"));
        QCOMPARE(plot_->valueText(lane), "1");
        click("btnShorter");
        QCOMPARE(textOf("lblLength"), "30 s");
        click("btnLonger");
        // By the mouse between the edges, then from edge to edge.
        const int x = qRound(plot_->canvasMap(QwtPlot::xBottom).transform(end() - 30000));
        QTest::mouseClick(plot_->canvas(), Qt::LeftButton, {}, {x, 40});
        QCOMPARE(plot_->valueText(lane), "0");
        for (int i = 0; i < 2; ++i)  // the second time there is none
            QTest::keyClick(plot_, Qt::Key_Right);
        QCOMPARE(plot_->cursorMs(), edge + 20000);
        click("btnMark");
        QTest::keyClick(plot_, Qt::Key_Left);
        QVERIFY2(textOf("lblCursor").endsWith("-20.000 s"), qPrintable(textOf("lblCursor")));
        // Held the cursor stays; going on, time carries it off, and the values are those of now.
        pass(60000);
        QCOMPARE(plot_->cursorMs(), edge);
        click("btnHold");
        QVERIFY(!plot_->cursorMs() && plot_->valueText(lane) == "1");
    }

    void export_writesFilesOrSaysWhyNot() {
        panel_->views()->open(1, window());
        const QVector<QPair<QString, QByteArray>> rows = {
            {"png", "\x89PNG"}, {"csv", "time_s,"}, {"vcd", "$version"}};
        for (const auto& row : rows) {
            click("btn_" + row.first);
            auto* const dialog = scope_->findChild<QFileDialog*>();
            dialog->selectFile(QDir::current().absoluteFilePath("out." + row.first));
            QMetaObject::invokeMethod(dialog, "accept");
            pass(10);
            QVERIFY2(test::contentOf("out." + row.first).startsWith(row.second), qPrintable(row.first));
            QCOMPARE(textOf("lblWritten"), "out." + row.first + " written");
        }
        scope_->exportTo("/proc/nothing/signals.vcd");
        QVERIFY(test::boxes().value(0).contains("/proc/nothing/signals.vcd"));
        QCOMPARE(textOf("lblWritten"), "");
        test::closeBoxes();
    }
};

LUMO_TEST(AppViews)
#include "test_views.moc"
