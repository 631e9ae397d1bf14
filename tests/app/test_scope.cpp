#include "app/scope/scopeexport.h"
#include "app/scope/scopepage.h"
#include "app/scope/scopeplot.h"
#include "app/views/viewswindow.h"
#include "panelfixture.h"
#include "support/vcd.h"

#include <qwt_scale_map.h>
#include <QBuffer>
#include <QFileDialog>

using app::SignalRecord;
using app::SignalRecorder;
using Values = std::vector<double>;

/// What the scope keeps, shows and writes.
class AppScope : public test::PanelTest {
    Q_OBJECT

    const SignalRecorder& recorder_ = *panel_->recorder();
    app::ScopePage* const page_ = panel_->views()->findChild<app::ScopePage*>();
    app::ScopePlot* const plot_ = page_->findChild<app::ScopePlot*>();

    std::vector<app::Lane> lanes() const { return app::lanesOf(recorder_.cellSignals(), recorder_.record()); }
    int laneOf(const QString& name) const {
        const auto all = lanes();
        const auto isIt = [&name](const app::Lane& lane) { return lane.name == name; };
        const auto found = std::find_if(all.begin(), all.end(), isIt);
        return found == all.end() ? -1 : int(found - all.begin());
    }
    qint64 cursor() const { return plot_->cursorMs().value_or(-1); }

private slots:
    void initTestCase() { roots_ = {panel_->views()}; }
    void init() { panel_->views()->open(1, window()); }

    void record_knowsTheValuesUntilItForgets() {
        SignalRecord record({1, 7}, 10);
        for (const SignalRecord::Change& change : {SignalRecord::Change{20, 0, 2}, {20, 0, 3}, {30, 1, 8}})
            record.add(change);
        QVERIFY(record.before(5) == (Values{1, 7}) && record.before(20) == (Values{1, 7}));
        QVERIFY(record.at(20) == (Values{3, 7}) && record.before(30) == (Values{3, 7}));
        QVERIFY(record.at(30) == (Values{3, 8}) && record.at(99) == (Values{3, 8}));
        record.add({25 + SignalRecord::kKeptMs, 0, 4});  // too old
        QCOMPARE(record.changes().size(), size_t(2));
        QCOMPARE(record.beginMs(), qint64(25));
        QCOMPARE(record.before(0), (Values{3, 7}));
        for (int i = 0; i < SignalRecord::kMostChanges; ++i)  // too many
            record.add({26 + SignalRecord::kKeptMs, 0, 5.0 + i});
        QCOMPARE(record.changes().size(), size_t(SignalRecord::kMostChanges));
        QCOMPARE(record.before(0), (Values{4, 8}));
    }

    /// A minute, seen at 100 s and then at 150 s.
    void timeWindow_movesOnlyWhenItShould() {
        constexpr qint64 now = 100000, later = 150000;
        using Span = QPair<qint64, qint64>;
        const auto held = [](const std::function<void(app::TimeWindow&)>& change) {
            app::TimeWindow window;
            window.hold(now);
            change(window);
            return Span(window.span(later).fromMs, window.span(later).toMs);
        };
        QCOMPARE(held([](auto& w) { w.release(); }), Span(90000, later));
        QCOMPARE(held([](auto& w) { w.stretch(0.5, 70000); }), Span(55000, 85000));
        QCOMPARE(held([](auto& w) { w.stretch(1e-9, 70000); }), Span(69950, 70050));
        QCOMPARE(held([](auto& w) { w.stretch(1e9, now); }), Span(now - SignalRecord::kKeptMs, now));
        QCOMPARE(held([](auto& w) { w.reveal(90000, now); }), Span(40000, now));
        QCOMPARE(held([](auto& w) { w.reveal(30000, now); }), Span(0, 60000));
        QCOMPARE(held([](auto& w) { w.reveal(130000, now); }), Span(now, 160000));
    }

    void files_holdTheirSectionOfEnabledPortsAndWhatChanged() {
        QVERIFY(laneOf("busy") == 0 && laneOf("LUMO_DO.#3") > 0 && laneOf("DI6") < 0);
        set("lumo.port.#9.enable", false);
        QVERIFY(laneOf("LUMO_DO.#3") < 0);
        set("lumo.port.#0.tag", "Laser \"ok\"");
        write("LUMO_AO_1", 1000);
        pass(500);
        const qint64 begin = SignalRecorder::nowMs();
        robot()->setInput("LUMO_DI.#0", false);
        pass(20);
        write("LUMO_AO_1", 16384);
        robot()->setInput("LUMO_DI.#0", true);
        pass(10);
        const std::vector<app::Lane> two = {lanes()[size_t(laneOf("LUMO_DI.#0"))], lanes()[size_t(laneOf("LUMO_AO_1"))]};
        robot()->setInput("DI6", true);
        write("LUMO_DO", 1, 3);
        QVERIFY(laneOf("DI6") > laneOf("LUMO_AO_1") && laneOf("LUMO_DO.#3") > laneOf("LUMO_AO_1"));
        pass(70);
        write("LUMO_DO", 0, 3);
        write("LUMO_AO_1", 0);
        set("lumo.port.#9.enable", true);

        QString error;
        QBuffer csv;
        csv.open(QIODevice::WriteOnly);
        QVERIFY(app::writeCsv(&csv, recorder_, two, {begin, begin + 50}, &error));
        QCOMPARE(csv.data(), "time_s,\"LUMO_DI.#0 Laser \"\"ok\"\"\",\"LUMO_AO_1 " + two[1].label.toUtf8() +
                                 "\"\n0.000,0,1000\n0.020,1,16384\n");
        QFile dump("a.vcd"), full("/dev/full");
        QVERIFY(dump.open(QIODevice::WriteOnly) && full.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        QVERIFY(app::writeVcd(&dump, recorder_, {begin, begin + 50}, &error));
        dump.close();
        const auto changes = readDump("a.vcd");
        QCOMPARE(changes["LUMO_AO.LUMO_AO_1"], (QStringList{"0:1000", "20:16384"}));
        QCOMPARE(changes["LUMO_DO.bit3"], (QStringList{"0:0", "30:1"}));
        QVERIFY(test::contentOf("a.vcd").endsWith("\n#50\n"));
        QVERIFY(!app::writeVcd(&full, recorder_, recorder_.all(), &error) && error == "No space left on device");
        error.clear();
        QVERIFY(!app::writeCsv(&full, recorder_, two, recorder_.all(), &error) && !error.isEmpty());
    }

    void page_holdsTimeAndReadsValues() {
        const auto end = [this] { return plot_->axisInterval(QwtPlot::xBottom).maxValue(); };
        pass(1000);
        const double before = end();
        robot()->setInput("LUMO_DI.#2", false);
        const qint64 edge = SignalRecorder::nowMs();
        pass(20000);
        robot()->setInput("LUMO_DI.#2", true);
        pass(20000);
        QCOMPARE(end(), before + 40000);
        click("btnHold");
        pass(2000);
        QCOMPARE(end(), before + 40000);
        const int lane = laneOf("LUMO_DI.#2");
        QCOMPARE(plot_->valueText(lane), "1");
        // By the mouse between the edges, then from edge to edge.
        const int x = qRound(plot_->canvasMap(QwtPlot::xBottom).transform(end() - 30000));
        QTest::mouseClick(plot_->canvas(), Qt::LeftButton, {}, {x, 40});
        QCOMPARE(plot_->valueText(lane), "0");
        for (int i = 0; i < 2; ++i)  // the second time there is none
            QTest::keyClick(plot_, Qt::Key_Right);
        QCOMPARE(cursor(), edge + 20000);
        click("btnMark");
        QTest::keyClick(plot_, Qt::Key_Left);
        QCOMPARE(cursor(), edge);
        QVERIFY2(textOf("lblCursor").endsWith("-20.000 s"), qPrintable(textOf("lblCursor")));
        // Held the cursor stays; going on, time carries it off, and the values are those of now.
        pass(60000);
        QCOMPARE(cursor(), edge);
        click("btnHold");
        QVERIFY(!plot_->cursorMs() && plot_->valueText(lane) == "1");
    }

    void page_writesFilesOrSaysWhyNot() {
        const QVector<QPair<QString, QByteArray>> rows = {
            {"png", "\x89PNG"}, {"csv", "time_s,\"busy Program runs\""}, {"vcd", "$version"}};
        for (const auto& row : rows) {
            const QString file = "out." + row.first;
            click("btn_" + row.first);
            auto* const dialog = page_->findChild<QFileDialog*>();
            QVERIFY(dialog && dialog->isVisible());
            dialog->selectFile(QDir::current().absoluteFilePath(file));
            QMetaObject::invokeMethod(dialog, "accept");
            pass(10);
            QVERIFY2(test::contentOf(file).startsWith(row.second), test::contentOf(file).left(40));
            QCOMPARE(textOf("lblWritten"), file + " written");
        }
        page_->exportTo("/proc/nothing/signals.vcd");
        QVERIFY(test::boxes().value(0).contains("/proc/nothing/signals.vcd") && textOf("lblWritten").isEmpty());
        test::closeBoxes();
    }
};

LUMO_TEST(AppScope)
#include "test_scope.moc"
