#include "app/language.h"
#include "app/panel.h"
#include "app/path/pathpage.h"
#include "app/path/pathview.h"
#include "app/path/seamtrack.h"
#include "app/scope/scopepage.h"
#include "app/scope/scopeplot.h"
#include "app/views/viewswindow.h"
#include "kord/kordservice.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "simulator/controller.h"
#include "simulator/virtualtime.h"

#include <qwt_scale_map.h>
#include <QAbstractItemView>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLibrary>
#include <QMessageBox>
#include <QPushButton>
#include <QtTest>

#include <sys/resource.h>

#include <csignal>

using app::Place;

Q_DECLARE_METATYPE(app::Place)

/// The views with the real package, and what they have recorded of a weld.
class AppViews : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void export_thatTheDiskRefuses_isTold();
    void dump_equalsTheRunners();
    void robot_staysOnThePathThatIsDrawn();
    void seam_isWhereTheLaserWas();
    void seam_isKeptUntilTheNextPass();
    void window_opensAndCloses_data();
    void window_opensAndCloses();
    void selectedRows_areShown();
    void edits_areFollowed_data();
    void edits_areFollowed();
    void otherProgram_clearsTheSeam();
    void stationsProgram_isShownWhileItRuns();
    void view_isMovedByHand();
    void hold_stopsTheTime();
    void cursor_tellsValues();
    void edges_areReachedByKeys();
    void export_writesFiles_data();
    void export_writesFiles();
    void fileThatCannotBeWritten_isTold();

private:
    template <typename Widget>
    Widget* find(const char* name = nullptr) const {
        const QString text = QLatin1String(name);
        auto* found = panel_->views()->findChild<Widget*>(text);
        return found ? found : panel_->window()->findChild<Widget*>(text);
    }
    /// With what it leaves to the event loop: a run, until it is idle.
    void click(const char* name) const {
        find<QAbstractButton>(name)->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    }
    static void pass(qint64 ms) { sim::VirtualTime::instance()->advance(ms); }
    void settle() {
        sim::VirtualTime::instance()->advanceUntil(
            [this] {
                return m(QStringLiteral("lumo.execute.state"))->getString() == QLatin1String("idle") &&
                       panel_->controller()->standsStill();
            },
            120000);
    }
    void openSample() {
        QVERIFY(panel_->openProject(QDir::current().absoluteFilePath(QStringLiteral("seam.json"))));
        pass(100);
    }
    app::PathView* path() const { return find<app::PathView>(); }
    app::ScopePlot* plot() const { return find<app::ScopePlot>(); }
    app::ScopePage* scope() const { return find<app::ScopePage>(); }
    double seamShown() const {
        return find<QLabel>("lblSeam")->text().section(QLatin1Char(' '), 1, 1).toDouble();
    }
    int laneOf(const char* name) const;

    QTemporaryDir folder_;
    std::unique_ptr<app::Panel> panel_;
    std::vector<Place> places_;     ///< where the tool was during the first run
    std::vector<double> emitting_;  ///< travelled where the laser went on, off, on…
    QByteArray dump_;               ///< of the first run
};

namespace {

constexpr int kInputMs = 15003;  // when the input comes that the sample waits for

double distance(const Place& place, const app::Polyline& line) {
    double least = app::norm(place - line.front());
    for (size_t i = 1; i < line.size(); ++i) {
        const Place step = line[i] - line[i - 1];
        const double square = app::dot(step, step);
        const double share = square > 0 ? app::dot(place - line[i - 1], step) / square : 0;
        least = std::min(least, app::norm(place - line[i - 1] - step * qBound(0.0, share, 1.0)));
    }
    return least;
}

QByteArray contentOf(const QString& file) {
    QFile in(file);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

}  // namespace

int AppViews::laneOf(const char* name) const {
    const auto& lanes = plot()->lanes();
    for (size_t i = 0; i < lanes.size(); ++i) {
        if (lanes[i].name == QLatin1String(name))
            return int(i);
    }
    return -1;
}

/// Welds the sample once, from home.
void AppViews::initTestCase() {
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
    pass(100);
    openSample();
    panel_->controller()->setPower(true);
    pass(1234);

    connect(panel_->controller(), &sim::Controller::postureMoved, this,
            [this] { places_.push_back(app::toolPlace()); });
    connect(panel_->controller(), &sim::Controller::inputChanged, this, [this](const QString& name) {
        if (name == QLatin1String("LUMO_DI.#5"))
            emitting_.push_back(panel_->controller()->travelled());
    });
    QTimer::singleShot(kInputMs, this,
                       [this] { panel_->controller()->setInput(QStringLiteral("DI3"), true); });
    click("btnStart");
    settle();
    disconnect(panel_->controller(), nullptr, this, nullptr);
    pass(5000);
    find<QComboBox>("cmbRange")->setCurrentIndex(1);
    scope()->exportTo(QStringLiteral("panel.vcd"));
    dump_ = contentOf(QStringLiteral("panel.vcd"));
}

void AppViews::init() {
    panel_->views()->open(0, panel_->window());
    pass(10);
}

/// Also what is short enough to be buffered until the end.
void AppViews::export_thatTheDiskRefuses_isTold() {
    const auto old = ::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    rlimit none = limit;
    none.rlim_cur = 0;
    ::setrlimit(RLIMIT_FSIZE, &none);
    scope()->exportTo(QStringLiteral("refused.png"));
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ::signal(SIGXFSZ, old);
    QVERIFY(!QFile::exists(QStringLiteral("refused.png")));
    const auto boxes = scope()->findChildren<QMessageBox*>();
    QCOMPARE(boxes.size(), 1);
    delete boxes.first();
}

void AppViews::dump_equalsTheRunners() {
    QFile scenario(QStringLiteral("scenario.json"));
    QVERIFY(scenario.open(QIODevice::WriteOnly));
    scenario.write(
        QStringLiteral(R"([{"at":%1,"do":"input","name":"DI3","value":true}])").arg(kInputMs).toUtf8());
    scenario.close();
    QCOMPARE(
        QProcess::execute(QStringLiteral(LUMO_RUN),
                          {QStringLiteral("seam.json"), QStringLiteral("--settings"), folder_.path(),
                           QStringLiteral("--scenario"), QStringLiteral("scenario.json"),
                           QStringLiteral("--vcd"), QStringLiteral("runner.vcd"), QStringLiteral("--quiet")}),
        0);
    const QByteArray runners = contentOf(QStringLiteral("runner.vcd"));
    QVERIFY(runners.size() > 10000);
    const QList<QByteArray> ours = dump_.split('\n'), theirs = runners.split('\n');
    for (int i = 0; i < std::min(ours.size(), theirs.size()); ++i)
        QVERIFY2(ours[i] == theirs[i],
                 ours.mid(i, 5).join('\n') + "\ninstead of\n" + theirs.mid(i, 5).join('\n'));
    QCOMPARE(ours.size(), theirs.size());
}

void AppViews::robot_staysOnThePathThatIsDrawn() {
    const auto& moves = path()->moves();
    app::Polyline drawn;
    for (const app::PathMove& move : moves) {
        drawn.insert(drawn.end(), move.way.begin(), move.way.end());
        drawn.insert(drawn.end(), move.corner.begin(), move.corner.end());
    }
    // The way to the first target, and how it is rounded off, is not drawn.
    const auto start = std::find_if(places_.begin(), places_.end(), [&moves](const Place& place) {
        return distance(place, moves[1].way) < 1e-6;
    });
    QVERIFY(places_.end() - start > 500);
    double farthest = 0;
    for (auto place = start; place != places_.end(); ++place)
        farthest = std::max(farthest, distance(*place, drawn));
    QVERIFY2(farthest < 2e-5, qPrintable(QString::number(farthest)));
    // And comes everywhere.
    farthest = 0;
    const app::Polyline walked(start, places_.end());
    for (size_t i = moves.front().way.size() + moves[1].way.size() - 1; i < drawn.size(); ++i)
        farthest = std::max(farthest, distance(drawn[i], walked));
    QVERIFY2(farthest < 1e-4, qPrintable(QString::number(farthest)));
}

void AppViews::seam_isWhereTheLaserWas() {
    QVERIFY(emitting_.size() >= 2 && emitting_.size() % 2 == 0);
    double welded = 0;
    for (size_t i = 0; i < emitting_.size(); i += 2)
        welded += emitting_[i + 1] - emitting_[i];
    QVERIFY2(std::abs(seamShown() - welded * 1000) < 0.2, qPrintable(find<QLabel>("lblSeam")->text()));
}

void AppViews::seam_isKeptUntilTheNextPass() {
    const double before = seamShown();
    auto* table =
        find<QWidget>("ProgramWidget")->findChild<QAbstractItemView*>(QStringLiteral("tableWidget"));
    table->setCurrentIndex(table->model()->index(1, 1));
    click("btnRunOnce");
    settle();
    QCOMPARE(seamShown(), before);
    click("btnReset");
    double welding = 0;
    QTimer::singleShot(6003, this, [this, &welding] {
        welding = seamShown();
        click("btnPause");
    });
    click("btnStart");
    settle();
    QVERIFY2(welding > 0 && welding < before, qPrintable(QString::number(welding)));
    QVERIFY(seamShown() >= welding);
    click("btnClearSeam");
    QCOMPARE(seamShown(), 0.0);
    click("btnReset");
}

void AppViews::window_opensAndCloses_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("scopeShown");
    QTest::newRow("header") << 0 << false;
    QTest::newRow("path") << int(Qt::Key_F6) << false;
    QTest::newRow("signals") << int(Qt::Key_F7) << true;
}

void AppViews::window_opensAndCloses() {
    QFETCH(int, key);
    QFETCH(bool, scopeShown);
    auto* header = find<QAbstractButton>("btnViews");
    QVERIFY(header->isChecked());
    QTest::keyClick(path(), Qt::Key_Escape);
    QVERIFY(!panel_->views()->isVisible());
    QVERIFY(!header->isChecked());
    panel_->window()->activateWindow();
    pass(10);
    if (key)
        QTest::keyClick(panel_->window(), Qt::Key(key));
    else
        QTest::mouseClick(header, Qt::LeftButton);
    QVERIFY(panel_->views()->isVisible() && header->isChecked());
    QCOMPARE(scope()->isVisible(), scopeShown);
    panel_->views()->close();
    QVERIFY(!header->isChecked());
}

void AppViews::selectedRows_areShown() {
    auto* table =
        find<QWidget>("ProgramWidget")->findChild<QAbstractItemView*>(QStringLiteral("tableWidget"));
    table->setCurrentIndex(table->model()->index(3, 1));
    QCOMPARE(path()->selected(), QSet<int>{3});
    QCOMPARE(find<QLabel>("lblPathLine")->text(), QStringLiteral("Line 4: weld, 60.0 mm"));
    table->setCurrentIndex(table->model()->index(2, 1));
    QCOMPARE(find<QLabel>("lblPathLine")->text(), QString());
}

void AppViews::edits_areFollowed_data() {
    QTest::addColumn<QString>("node");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<Place>("target");
    QTest::addColumn<bool>("weld");
    QTest::newRow("a coordinate") << "#3.point.trans.#1" << QVariant(0.01) << Place{0.5, 0.01, 0.3} << true;
    QTest::newRow("the weld's start is skipped")
        << "#2.execute" << QVariant(false) << Place{0.5, 0, 0.3} << false;
    QTest::newRow("the move is skipped")
        << "#3.execute" << QVariant(false) << Place{0.50586, 0.01414, 0.3} << true;
}

/// The third move that is drawn shows it.
void AppViews::edits_areFollowed() {
    QFETCH(QString, node);
    QFETCH(QVariant, value);
    QFETCH(Place, target);
    QFETCH(bool, weld);
    openSample();
    m(QStringLiteral("lumo.program"))->r(node)->setValue(this, value);
    pass(10);
    const app::PathMove move = path()->moves().at(2);
    QVERIFY(app::norm(move.target - target) < 1e-6);
    QCOMPARE(move.weld, weld);
    const size_t count = path()->moves().size();
    m(QStringLiteral("lumo.program"))->remove(this, QStringLiteral("#0"));
    pass(10);
    QCOMPARE(path()->moves().size(), count - 1);
}

void AppViews::otherProgram_clearsTheSeam() {
    openSample();
    click("btnReset");
    QTimer::singleShot(6003, this, [this] { click("btnPause"); });
    click("btnStart");
    settle();
    QVERIFY(seamShown() > 0);
    m(QStringLiteral("lumo.program"))->reorder(this, 0, 1);
    QVERIFY(seamShown() > 0);
    openSample();
    QCOMPARE(seamShown(), 0.0);
}

void AppViews::stationsProgram_isShownWhileItRuns() {
    auto* runMode =
        reinterpret_cast<int*>(QLibrary(QStringLiteral(LUMO_LIBRARY)).resolve("hand_or_signalbing"));
    QVERIFY(runMode);
    const auto statements = m(QStringLiteral("lumo.program"))->exportToJson().toArray();
    m(QStringLiteral("lumo"))
        ->append(this, QStringLiteral("signalbind_program"))
        ->loadJson(this, QJsonArray{statements.at(0), statements.at(1)});
    const size_t edited = path()->moves().size();
    size_t shown = 0;
    const QObject running;
    connect(m(QStringLiteral("lumo.current.startpoint")), &mendo::ModuleObject::changed, &running,
            [this, &shown] { shown = path()->moves().size(); });
    *runMode = 1;
    m(QStringLiteral("lumo.execute.trigger.start"))->setValue(this, 0);
    settle();
    *runMode = 0;
    QCOMPARE(shown, size_t(2));
    QCOMPARE(path()->moves().size(), edited);
}

void AppViews::view_isMovedByHand() {
    app::PathView* view = path();
    const Place place{0.5, 0, 0.3};
    const auto above = [view, &place] { return view->frame().fromAbove(place); };
    const QPointF whole = above();
    QTest::mousePress(view, Qt::LeftButton, {}, {100, 60});
    QMouseEvent drag(QEvent::MouseMove, QPointF(130, 40), Qt::LeftButton, Qt::LeftButton, {});
    QApplication::sendEvent(view, &drag);
    QTest::mouseRelease(view, Qt::LeftButton, {}, {130, 40});
    QCOMPARE(above() - whole, QPointF(30, -20));
    QTest::keyClick(view, Qt::Key_Right);
    QCOMPARE(above() - whole, QPointF(-10, -20));
    // What was moved by hand stays when the program changes.
    const double scale = view->frame().pixelsPerMetre();
    QTest::keyClick(view, Qt::Key_Plus);
    const QPointF moved = above();
    m(QStringLiteral("lumo.program.#3.point.trans.#0"))->setValue(this, 0.9);
    pass(10);
    QCOMPARE(above(), moved);
    QVERIFY(view->frame().pixelsPerMetre() > scale);
    // And shows all again when asked.
    QTest::keyClick(view, Qt::Key_0);
    QVERIFY(view->frame().above().contains(view->frame().fromAbove({0.9, 0, 0.3})));
    openSample();
    QCOMPARE(above(), whole);
}

void AppViews::hold_stopsTheTime() {
    panel_->views()->open(1, panel_->window());
    const auto end = [this] { return plot()->axisInterval(QwtPlot::xBottom).maxValue(); };
    pass(1000);
    const double before = end();
    pass(1000);
    QCOMPARE(end(), before + 1000);
    click("btnHold");
    const double held = end();
    pass(2000);
    QCOMPARE(end(), held);
    click("btnHold");
    QCOMPARE(end(), held + 2000);
}

void AppViews::cursor_tellsValues() {
    panel_->views()->open(1, panel_->window());
    auto* input = panel_->controller();
    input->setInput(QStringLiteral("LUMO_DI.#2"), false);
    pass(20000);
    input->setInput(QStringLiteral("LUMO_DI.#2"), true);
    pass(20000);
    click("btnHold");
    const int lane = laneOf("LUMO_DI.#2");
    QCOMPARE(plot()->valueText(lane), QStringLiteral("1"));
    const QwtScaleMap time = plot()->canvasMap(QwtPlot::xBottom);
    const int x = qRound(time.transform(time.s2() - 30000));
    QTest::mouseClick(plot()->canvas(), Qt::LeftButton, {}, {x, 40});
    QCOMPARE(plot()->valueText(lane), QStringLiteral("0"));
    QVERIFY(find<QLabel>("lblCursor")->text().startsWith(QLatin1String("Cursor ")));
    emit plot()->cursorAsked(-1);  // before anything is known
    QCOMPARE(plot()->cursorMs().value(), panel_->recorder()->record().beginMs());
    // Held it stays; going on, time carries it off, and the values are those of now.
    pass(1000);
    QCOMPARE(plot()->valueText(lane), QStringLiteral("1"));
    QVERIFY(plot()->cursorMs());
    click("btnHold");
    QVERIFY(!plot()->cursorMs());
}

void AppViews::edges_areReachedByKeys() {
    panel_->views()->open(1, panel_->window());
    auto* input = panel_->controller();
    input->setInput(QStringLiteral("LUMO_DI.#3"), false);
    const qint64 edge = app::SignalRecorder::nowMs();
    pass(350);
    input->setInput(QStringLiteral("LUMO_DI.#3"), true);
    pass(400);
    plot()->setCursor(app::SignalRecorder::nowMs());
    QTest::keyClick(plot(), Qt::Key_Left);
    QCOMPARE(plot()->cursorMs().value(), edge + 350);
    click("btnMark");
    QTest::keyClick(plot(), Qt::Key_Left);
    QCOMPARE(plot()->cursorMs().value(), edge);
    QVERIFY2(find<QLabel>("lblCursor")->text().endsWith(QLatin1String("-0.350 s")),
             qPrintable(find<QLabel>("lblCursor")->text()));
    QTest::keyClick(plot(), Qt::Key_Right);
    QCOMPARE(plot()->cursorMs().value(), edge + 350);
    QTest::keyClick(plot(), Qt::Key_Right);  // there is none
    QCOMPARE(plot()->cursorMs().value(), edge + 350);
    click("btnMark");
    click("btnHold");
}

void AppViews::export_writesFiles_data() {
    QTest::addColumn<QString>("ending");
    QTest::addColumn<QByteArray>("begin");
    QTest::newRow("png") << "png" << QByteArray("\x89PNG");
    QTest::newRow("csv") << "csv" << QByteArray("time_s,\"busy Program runs\"");
    QTest::newRow("vcd") << "vcd" << QByteArray("$version");
}

void AppViews::export_writesFiles() {
    QFETCH(QString, ending);
    QFETCH(QByteArray, begin);
    panel_->views()->open(1, panel_->window());
    find<QComboBox>("cmbRange")->setCurrentIndex(0);
    const QString file = QStringLiteral("out.") + ending;
    click(qPrintable(QStringLiteral("btn_") + ending));
    auto* dialog = scope()->findChild<QFileDialog*>();
    QVERIFY(dialog && dialog->isVisible());
    dialog->selectFile(QDir::current().absoluteFilePath(file));
    QMetaObject::invokeMethod(dialog, "accept");
    pass(10);
    QVERIFY2(contentOf(file).startsWith(begin), contentOf(file).left(40));
    QCOMPARE(find<QLabel>("lblWritten")->text(), file + QStringLiteral(" written"));
}

void AppViews::fileThatCannotBeWritten_isTold() {
    panel_->views()->open(1, panel_->window());
    scope()->exportTo(QStringLiteral("/proc/nothing/signals.vcd"));
    auto* message = scope()->findChild<QMessageBox*>();
    QVERIFY(message && message->isVisible());
    QVERIFY2(message->text().contains(QLatin1String("/proc/nothing/signals.vcd")),
             qPrintable(message->text()));
    message->accept();
}

int main(int argc, char** argv) {
    const QTemporaryDir configuration;  // file dialogs remember their look there
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(configuration.path()));
    sim::VirtualTime::install();
    QApplication application(argc, argv);
    AppViews test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_views.moc"
