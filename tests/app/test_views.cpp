#include "app/path/pathview.h"
#include "app/path/seamtrack.h"
#include "app/scope/scopepage.h"
#include "app/scope/scopeplot.h"
#include "panelfixture.h"
#include "support/runnerfolder.h"

#include <qwt_scale_map.h>
#include <QFileDialog>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>

/// The views: the path of a program with its seam, and the recorded signals.
class AppViews : public test::PanelTest {
    Q_OBJECT

    app::PathView* const path_ = docks()->content("path")->findChild<app::PathView*>();
    app::ScopePage* const scope_ = static_cast<app::ScopePage*>(docks()->content("signals"));
    app::ScopePlot* const plot_ = scope_->findChild<app::ScopePlot*>();
    const app::SignalRecorder& recorder_ = *panel_->recorder();
    double welded_ = 0;  ///< millimetres travelled with the laser on in the first run

    int rowOf(const QString& name) const {
        const auto all = app::rowsOf(recorder_.cellSignals(), recorder_.record());
        const auto isIt = [&name](const app::ScopeRow& row) { return row.name == name; };
        return int(std::find_if(all.begin(), all.end(), isIt) - all.begin());
    }
    /// The welded length below the path, mm.
    double seamShown() const {
        pass(50);
        return QRegularExpression("[0-9.]+").match(textOf("lblSeam")).captured().toDouble();
    }
    QAbstractItemView* table() const {
        return find<QWidget>("ProgramWidget")->findChild<QAbstractItemView*>("tableWidget");
    }
    void selectLine(int line) const { table()->setCurrentIndex(table()->model()->index(line, 1)); }
    /// Clicks, and waits until the run that it may start is over.
    void clickAndRun(const QString& name) const {
        click(name);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        waitUntilIdle();
    }

private slots:
    /// Welds the sample once, from home.
    void initTestCase() {
        init();
        pass(1234);
        const auto lit = [this](const QString& name, bool on) {
            if (name == "LUMO_DI.#5") {
                welded_ += (on ? -1000 : 1000) * robot()->travelled();
            }
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
        docks()->open("path");
        pass(10);
    }

    void weld_isRecordedAsByTheRunner() {
        test::writeFile("s.json", test::quoted("[{'at':15003,'do':'input','name':'DI3','value':true}]"));
        const QStringList arguments = {"seam.json", "--settings", ".", "--scenario", "s.json", "--quiet"};
        QCOMPARE(runIn(".", arguments + QStringList{"--vcd", "runner.vcd"}).status, 0);
        const QByteArray ours = test::contentOf("panel.vcd"), theirs = test::contentOf("runner.vcd");
        QVERIFY(theirs.size() > 10000 && ours == theirs);
    }

    void seam_staysUntilTheNextRun() {
        robot()->setInput("DI3", true);
        clickAndRun("btnStart");
        const double whole = seamShown();
        selectLine(0);
        clickAndRun("btnRunOnce");
        QCOMPARE(seamShown(), whole);
        click("btnReset");
        double shown = -1;
        QTimer::singleShot(6003, this, [this, &shown] {
            shown = QRegularExpression("[0-9.]+").match(textOf("lblSeam")).captured().toDouble();
            click("btnPause");
        });
        clickAndRun("btnStart");
        QVERIFY2(shown > 0 && seamShown() >= shown && seamShown() < whole, qPrintable(textOf("lblSeam")));
        m("lumo.program")->reorder(this, 0, 1);
        QVERIFY(seamShown() > 0);
        openSample();
        QCOMPARE(seamShown(), 0.0);
    }

    void path_followsSelectionAndEdits() {
        const auto moves = [this] {
            pass(10);
            return path_->moves();
        };
        selectLine(3);
        QCOMPARE(path_->selected(), QSet<int>{3});
        QCOMPARE(textOf("lblPathNumber") + " " + textOf("lblPathLine"), "4 Weld, 60.0 mm");
        QCOMPARE(textOf("lblPathSeam"), "Seam 1 of 1");
        const size_t count = moves().size();
        set("lumo.program.#3.point.trans.#1", 0.01);
        QVERIFY(moves().at(2).target.y == 0.01 && moves().at(2).weld);
        set("lumo.program.#2.execute", false);
        QVERIFY(!moves().at(2).weld);
        m("lumo.program.#3.point")->clear(this);
        m("lumo.program")->remove(this, "#0");
        QCOMPARE(moves().size(), count - 1);
        pass(1000);  // the program has been checked
        QVERIFY(moves().at(1).impossible && !moves().at(0).impossible);
    }

    /// What is kept of the picture and painted in parts looks as if it were drawn at once.
    void picture_keptInPartsIsTheWholeOne() {
        robot()->setInput("DI3", true);
        selectLine(0);
        path_->grab();
        clickAndRun("btnStart");
        for (const int line : {9, 3, 5}) {
            path_->grab();
            selectLine(line);
        }
        pass(100);
        const QImage parts = path_->grab().toImage();
        QEvent anew(QEvent::StyleChange);
        QCoreApplication::sendEvent(path_, &anew);
        const QImage whole = path_->grab().toImage();
        int others = 0;
        for (int y = 0; y < whole.height(); ++y) {
            for (int x = 0; x < whole.width(); ++x) {
                others += qAbs(qGray(whole.pixel(x, y)) - qGray(parts.pixel(x, y))) > 80 ? 1 : 0;
            }
        }
        QVERIFY2(seamShown() > 100 && others < 20, qPrintable(QString::number(others)));
    }

    void tap_choosesTheLineInTheTable() {
        const auto tap = [this](const app::Position& place) {
            QTest::mouseClick(path_, Qt::LeftButton, {}, path_->camera().seen(place).toPoint());
            return table()->currentIndex().row();
        };
        selectLine(0);
        const app::PathMove& weld = path_->moves().at(2);
        QCOMPARE(tap(prog::interpolated(weld.path.front(), weld.path.back(), 0.5)), weld.line);
        QCOMPARE(path_->selected(), QSet<int>{weld.line});
        // A drag turns the view and chooses nothing.
        const double turn = path_->camera().turn();
        QTest::mousePress(path_, Qt::LeftButton, {}, {100, 100});
        QMouseEvent move(QEvent::MouseMove, QPointF(200, 100), Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(path_, &move);
        QTest::mouseRelease(path_, Qt::LeftButton, {}, {200, 100});
        QVERIFY(path_->camera().turn() != turn && table()->currentIndex().row() == weld.line);
        // Its weld, then the line itself, are shown larger.
        const double all = path_->camera().pixelsPerMetre();
        click("btnPathNext");
        const double seam = path_->camera().pixelsPerMetre();
        click("btnPathNext");
        QVERIFY(path_->camera().pixelsPerMetre() > seam && seam >= all);
    }

    void scope_holdsReadsAndExports() {
        docks()->open("signals");
        const auto end = [this] { return plot_->axisInterval(QwtPlot::xBottom).maxValue(); };
        pass(30000);
        const double before = end();
        robot()->setInput("LUMO_DI.#2", false);
        const qint64 edge = app::SignalRecorder::nowMs();
        pass(20000);
        robot()->setInput("LUMO_DI.#2", true);
        pass(20000);
        click("btnHold");
        pass(2000);
        QCOMPARE(end(), before + 40000);
        const int signalRow = rowOf("LUMO_DI.#2");
        QVERIFY(rowOf("busy") == 0 && plot_->valueText(signalRow) == "1");
        // A click between the edges, then a key to the edge.
        const int x = qRound(plot_->canvasMap(QwtPlot::xBottom).transform(end() - 30000));
        QTest::mouseClick(plot_->canvas(), Qt::LeftButton, {}, {x, 40});
        QCOMPARE(plot_->valueText(signalRow), "0");
        QTest::keyClick(plot_, Qt::Key_Left);
        QCOMPARE(plot_->cursorMs(), edge);
        find<QComboBox>("cmbRange")->setCurrentIndex(0);
        scope_->exportTo("shown.csv");
        QByteArrayList rows;
        for (const QByteArray& row : test::contentOf("shown.csv").split('\n').mid(1)) {
            rows << row.split(',')[0] + ' ' + row.split(',').value(signalRow + 1);
        }
        QCOMPARE(rows.join(", "), "0.000 1, 20.000 0, 40.000 1,  ");
        pass(60000);
        QCOMPARE(plot_->cursorMs(), edge);
        click("btnHold");  // the cursor scrolls out of view
        QVERIFY(!plot_->cursorMs() && plot_->valueText(signalRow) == "1");
    }

    void export_writesFilesOrShowsTheReason() {
        docks()->open("signals");
        click("btn_png");
        auto* const dialog = scope_->findChild<QFileDialog*>();
        dialog->selectFile(QDir::current().absoluteFilePath("out.png"));
        QMetaObject::invokeMethod(dialog, "accept");
        QVERIFY(test::contentOf("out.png").startsWith("\x89PNG"));
        QCOMPARE(textOf("lblWritten"), "Saved: out.png");
        scope_->exportTo("/proc/nothing/signals.vcd");
        QVERIFY(test::boxes().value(0).contains("/proc/nothing/signals.vcd"));
        QCOMPARE(textOf("lblWritten"), "");
        test::closeBoxes();
    }

    /// A long path is drawn in bands, between which a stop has its turn. The picture is the same.
    void longPath_isDrawnInBands() {
        constexpr int lines = 2500;
        const auto moves = std::make_shared<std::vector<app::PathMove>>();
        app::Extent extent;
        app::Position from{0.4, 0, 0.3};
        for (int line = 0; line < lines; ++line) {
            const app::Position to{0.4 + 0.0001 * line, line % 2 * 0.2, 0.3};
            app::PathMove move;
            move.line = line;
            move.weld = line / 10 % 2 == 1;
            move.seam = move.weld ? line / 20 : -1;
            move.path = {from, to};
            move.target = from = to;
            moves->push_back(move);
            extent.add(to);
        }
        const auto* const seams = panel_->findChild<app::SeamTrack*>();
        app::PathSheet whole(seams), banded(seams);
        app::Camera camera;
        camera.setArea(QRectF(0, 0, 700, 501));
        camera.look(2, 0.5);
        camera.fit(extent, 20);
        app::PathSheet::Look look;
        look.size = {700, 501};
        look.ground = extent;
        look.title = "From above";
        look.barText = "20 mm";
        for (app::PathSheet* const sheet : {&whole, &banded}) {
            sheet->setMoves(moves);
            sheet->choose({7, 1234});
        }
        whole.draw(camera, look);
        banded.begin(camera, look);
        int bands = 0;
        while (!banded.drawBand().isEmpty()) {
            ++bands;
        }
        QVERIFY(whole.isLong() && bands > 4);
        const auto pictureOf = [&look](const app::PathSheet& sheet) {
            QImage image(look.size, QImage::Format_RGB32);
            QPainter painter(&image);
            sheet.paint(&painter);
            return image;
        };
        QVERIFY(pictureOf(whole) == pictureOf(banded));
    }
};

LUMO_TEST(AppViews)
#include "test_views.moc"
