#include "app/path/pathview.h"
#include "app/scope/scopepage.h"
#include "app/views/viewswindow.h"
#include "panelfixture.h"
#include "support/runnerfolder.h"

/// The window of the views, and what it shows of a program and its weld.
class AppViews : public test::PanelTest {
    Q_OBJECT

    app::PathView* const path_ = panel_->views()->findChild<app::PathView*>();
    app::ScopePage* const scope_ = panel_->views()->findChild<app::ScopePage*>();
    double welded_ = 0;  ///< millimetres travelled with the laser on in the first run

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
        auto* const header = find("btnViews");
        for (const int key : {0, int(Qt::Key_F6), int(Qt::Key_F7)}) {
            QTest::keyClick(panel_->views(), Qt::Key_Escape);
            QVERIFY(!panel_->views()->isVisible() && !header->isChecked());
            window()->activateWindow();
            pass(10);
            if (key)
                QTest::keyClick(window(), Qt::Key(key));
            else
                test::click(header);
            QVERIFY(panel_->views()->isVisible() && header->isChecked());
            QVERIFY(scope_->isVisible() == (key == Qt::Key_F7) && path_->isVisible() != scope_->isVisible());
        }
    }

    void path_followsSelectionEditsAndStations() {
        selectLine(3);
        QCOMPARE(path_->selected(), QSet<int>{3});
        QCOMPARE(textOf("lblPathLine"), "Line 4: weld, 60.0 mm");
        selectLine(2);
        QCOMPARE(textOf("lblPathLine"), "");
        set("lumo.program.#3.point.trans.#1", 0.01);
        pass(10);
        QCOMPARE(path_->moves().at(2).target.y, 0.01);
        QVERIFY(path_->moves().at(2).weld);
        set("lumo.program.#2.execute", false);
        pass(10);
        QVERIFY(!path_->moves().at(2).weld);
        const size_t count = path_->moves().size() - 1;
        m("lumo.program")->remove(this, "#0");
        pass(10);
        QCOMPARE(path_->moves().size(), count);
        m("lumo")->append(this, "signalbind_program");
        load("lumo.signalbind_program", "[{'type':'delay','delaytime':100}]");
        size_t shown = count;
        setRunMode(app::PackageFlags::ByStation);
        run(0, {{50, [&] { shown = path_->moves().size(); }}});
        setRunMode(app::PackageFlags::ByHand);
        QVERIFY(shown == 0 && path_->moves().size() == count);
    }

    void view_isMovedByHandUntilAllIsAskedFor() {
        const auto above = [this] { return path_->frame().fromAbove({0.5, 0, 0.3}); };
        const QPointF whole = above();
        QTest::mousePress(path_, Qt::LeftButton, {}, {100, 60});
        QMouseEvent drag(QEvent::MouseMove, QPointF(130, 40), Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(path_, &drag);
        QTest::mouseRelease(path_, Qt::LeftButton, {}, {130, 40});
        QCOMPARE(above() - whole, QPointF(30, -20));
        QTest::keyClick(path_, Qt::Key_Right);
        QCOMPARE(above() - whole, QPointF(-10, -20));
        set("lumo.program.#3.point.trans.#0", 0.9);
        pass(10);
        QCOMPARE(above() - whole, QPointF(-10, -20));
        QTest::keyClick(path_, Qt::Key_0);
        QVERIFY(path_->frame().above().contains(path_->frame().fromAbove({0.9, 0, 0.3})));
        openSample();
        QCOMPARE(above(), whole);
    }
};

LUMO_TEST(AppViews)
#include "test_views.moc"
