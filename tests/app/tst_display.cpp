#include "app/language.h"
#include "app/look.h"
#include "app/panel.h"
#include "app/pendant/pendantwindow.h"
#include "app/scope/scopeexport.h"
#include "app/scope/signalrecorder.h"
#include "app/time/pacedtime.h"
#include "mendo/log.h"
#include "mendo/modulemanager.h"
#include "simulator/controller.h"

#include <QAbstractButton>
#include <QBuffer>
#include <QDeadlineTimer>
#include <QMessageBox>
#include <QtTest>

/// The panel on a real display (an X server without a screen), worked by the mouse through the window system:
/// a weld is stopped by the emergency stop and gone on with, and the cell sees what it sees when the runner
/// loses and gets back its power in the same weld.
class AppDisplay : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void weldIsStoppedAndResumed();
    void cellSawWhatTheRunnersSaw();
    void stopIsInReachUnderAMessage();
    void cleanupTestCase();

private:
    /// What the hand does next, and when it is time for that.
    struct Step {
        std::function<bool()> when;
        std::function<void()> then;
    };
    static bool work(const QVector<Step>& steps);
    static void point(const QWidget* widget, const QStringList& actions);
    static void click(const QWidget* widget) {
        point(widget, {QStringLiteral("click"), QStringLiteral("1")});
    }
    QWidget* inPanel(const char* name) const;
    QWidget* onPendant(const char* name) const;
    bool laser() const { return panel_->controller()->output(QStringLiteral("LUMO_DO.#3")).toBool(); }
    static QString state() { return m(QStringLiteral("lumo.execute.state"))->getString(); }
    static QStringList switchings(const QByteArray& dump);

    QTemporaryDir folder_;
    std::unique_ptr<app::Panel> panel_;
    qint64 startMs_ = 0, stopMs_ = 0, resumeMs_ = 0;  ///< of the first start, the stop, the second start
};

namespace {

constexpr int kPatienceMs = 60000;

bool waitFor(const std::function<bool()>& condition) {
    return QTest::qWaitFor(condition, kPatienceMs);
}

QString text(const char* node) {
    return m(QLatin1String(node))->getString();
}

}  // namespace

/// Does the steps one after another, each when it is time. A program runs inside the turn that starts it, so
/// nobody who waits outside of it would see it run.
bool AppDisplay::work(const QVector<Step>& steps) {
    int next = 0;
    QEventLoop loop;
    QTimer poll;
    const QDeadlineTimer patience(kPatienceMs);
    connect(&poll, &QTimer::timeout, &loop, [&] {
        if (next < steps.size() && steps[next].when())
            steps[next++].then();
        if (next == steps.size() || patience.hasExpired())
            loop.quit();
        if (patience.hasExpired())
            m(QStringLiteral("lumo.execute.trigger.pause"))->trigger();
    });
    poll.start(5);
    loop.exec();
    if (next < steps.size())
        qWarning("step %d was never due", next);
    return next == steps.size();
}

/// Mouse events as the window system gives them.
void AppDisplay::point(const QWidget* widget, const QStringList& actions) {
    QVERIFY(widget && widget->isVisible());
    const QPoint place = widget->mapToGlobal(widget->rect().center());
    const QStringList there = {QStringLiteral("mousemove"), QStringLiteral("--sync"),
                               QString::number(place.x()), QString::number(place.y())};
    if (QCursor::pos() != place)
        QCOMPARE(QProcess::execute(QStringLiteral("xdotool"), there), 0);
    QCOMPARE(QCursor::pos(), place);
    QCOMPARE(QProcess::execute(QStringLiteral("xdotool"), actions), 0);
}

QWidget* AppDisplay::inPanel(const char* name) const {
    const QList<QWidget*> all = panel_->window()->findChildren<QWidget*>(QLatin1String(name));
    const auto shown = std::find_if(all.begin(), all.end(), [](const QWidget* w) { return w->isVisible(); });
    return shown == all.end() ? nullptr : *shown;
}

QWidget* AppDisplay::onPendant(const char* name) const {
    return panel_->pendant()->findChild<QWidget*>(QLatin1String(name));
}

void AppDisplay::initTestCase() {
    mendo::LogHub::instance()->setConsole(false);
    app::installLanguage(QStringLiteral("en"));
    app::installLook();
    const QDir example(QStringLiteral(EXAMPLES "/lap_seam"));
    QVERIFY(QDir::setCurrent(folder_.path()));
    for (const char* name : {"lap_seam.json", "lumo_port.json", "lumo_param.json"})
        QVERIFY(QFile::copy(example.filePath(QLatin1String(name)), QLatin1String(name)));
    panel_ = std::make_unique<app::Panel>();
    QString error;
    QVERIFY2(panel_->open(QStringLiteral(LUMO_LIBRARY), &error), qPrintable(error));
    panel_->window()->resize(1280, 800);
    panel_->window()->show();
    panel_->pendant()->showBeside(panel_->window()->frameGeometry());
    QVERIFY(QTest::qWaitForWindowExposed(panel_->window()));
    QVERIFY(QTest::qWaitForWindowExposed(panel_->pendant()));
    QVERIFY(panel_->openProject(folder_.filePath(QStringLiteral("lap_seam.json"))));
    QVERIFY(waitFor([] { return m(QStringLiteral("lumo.program"))->cmobjCount() > 0; }));
}

void AppDisplay::weldIsStoppedAndResumed() {
    const auto powered = [] { return text("kord.r.power") == QLatin1String("on"); };
    const auto busy = [] { return state() == QLatin1String("busy"); };
    const auto idle = [] { return state() == QLatin1String("idle"); };
    double begun = 0;
    bool darkAtOnce = false;
    connect(
        panel_->controller(), &sim::Controller::emergencyStopChanged, this,
        [&] {
            stopMs_ = app::SignalRecorder::nowMs();
            darkAtOnce = !laser();
        },
        Qt::QueuedConnection);
    constexpr double wayInSeam = 0.05;  // metres; no ramp is under way there
    const bool welded = work({
        {[] { return true; }, [this] { click(onPendant("power1")); }},
        {powered, [this] { click(inPanel("btnStart")); }},
        {busy, [this] { startMs_ = app::SignalRecorder::nowMs(); }},
        {[this] { return laser(); }, [&] { begun = panel_->controller()->travelled(); }},
        {[&] { return panel_->controller()->travelled() > begun + wayInSeam; },
         [this] {
             point(onPendant("btnStop"), {QStringLiteral("mousedown"), QStringLiteral("1")});
         }},
        {[this] { return panel_->controller()->emergencyStop(); },
         [this] {
             point(onPendant("btnStop"), {QStringLiteral("mouseup"), QStringLiteral("1")});
         }},
        {idle, [] {}},
    });
    QVERIFY(welded && darkAtOnce && !laser());
    QVERIFY(m(QStringLiteral("lumo.current.openmiddlecolse"))->getBool(false));
    panel_->controller()->disconnect(this);

    const bool resumed = work({
        {[] { return true; }, [this] { click(onPendant("btnRelease")); }},
        {[this] { return !panel_->controller()->emergencyStop(); }, [this] { click(onPendant("power1")); }},
        {powered, [this] { click(inPanel("btnStart")); }},
        {busy, [this] { resumeMs_ = app::SignalRecorder::nowMs(); }},
        {idle, [] {}},
    });
    QVERIFY(resumed && !laser());
    QVERIFY(!m(QStringLiteral("lumo.current.openmiddlecolse"))->getBool(true));
    QCOMPARE(m(QStringLiteral("lumo.execute.line"))->getInt(),
             m(QStringLiteral("lumo.program"))->cmobjCount() - 1);
}

/// The switchings of digital outputs in their order; times depend on the hand.
QStringList AppDisplay::switchings(const QByteArray& dump) {
    QHash<QString, QString> names;  // by identifier
    QString scope;
    QStringList all;
    bool begun = false;
    const QStringList lines = QString::fromUtf8(dump).split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        const QStringList words = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (words.value(0) == QLatin1String("$scope"))
            scope = words.value(2);
        if (words.value(0) == QLatin1String("$var") && scope == QLatin1String("LUMO_DO"))
            names.insert(words.value(3), words.value(4));
        begun = begun || (line.startsWith(QLatin1Char('#')) && line != QLatin1String("#0"));
        if (begun && names.contains(line.mid(1)))
            all << names.value(line.mid(1)) + QLatin1Char(' ') + line.at(0);
    }
    return all;
}

void AppDisplay::cellSawWhatTheRunnersSaw() {
    QFile scenario(QStringLiteral("scenario.json"));
    QVERIFY(scenario.open(QIODevice::WriteOnly));
    const qint64 stop = stopMs_ - startMs_, resume = resumeMs_ - startMs_;
    scenario.write(
        QStringLiteral(R"([{"at":%1,"do":"power","value":"off"},{"at":%2,"do":"power","value":"on"},)"
                       R"({"at":%3,"do":"resume"}])")
            .arg(stop)
            .arg(resume - 1)
            .arg(resume)
            .toUtf8());
    scenario.close();
    QProcess runner;
    runner.setProcessChannelMode(QProcess::MergedChannels);
    runner.start(QStringLiteral(LUMO_RUN), {QStringLiteral("lap_seam.json"), QStringLiteral("--scenario"),
                                            QStringLiteral("scenario.json"), QStringLiteral("--vcd"),
                                            QStringLiteral("runner.vcd"), QStringLiteral("--quiet")});
    QVERIFY(runner.waitForFinished(kPatienceMs));
    QVERIFY2(runner.exitCode() == 0, runner.readAll());
    QFile theirs(QStringLiteral("runner.vcd"));
    QVERIFY(theirs.open(QIODevice::ReadOnly));
    QBuffer ours;
    QVERIFY(ours.open(QIODevice::WriteOnly));
    QString error;
    const app::SignalRecorder* recorder = panel_->recorder();
    QVERIFY(app::writeVcd(&ours, *recorder, recorder->all(), &error));
    const QStringList seen = switchings(ours.data()), expected = switchings(theirs.readAll());
    QVERIFY(seen.count(QStringLiteral("bit3 1")) == 2);
    QVERIFY2(seen == expected, qPrintable(seen.join(QStringLiteral(", ")) + QStringLiteral("\ninstead of\n") +
                                          expected.join(QStringLiteral(", "))));
}

void AppDisplay::stopIsInReachUnderAMessage() {
    QPointer<QWidget> box;
    const bool stopped = work({
        {[] { return true; }, [this] { click(onPendant("power0")); }},
        {[] { return text("kord.r.power") == QLatin1String("off"); }, [this] { click(inPanel("btnStart")); }},
        {[] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()) != nullptr; },
         [&box] { box = QApplication::activeModalWidget(); }},
        {[&box] { return box && box->windowHandle()->isExposed(); }, [this] { click(onPendant("btnStop")); }},
        {[this] { return panel_->controller()->emergencyStop(); }, [] {}},
    });
    QVERIFY(stopped && box && box->isVisible());
    box->close();
}

void AppDisplay::cleanupTestCase() {
    panel_.reset();
}

/// Starts an X server of its own; its number is told by itself. Empty when it does not come up.
static QByteArray startDisplay(QProcess* server) {
    server->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    server->start(
        QStringLiteral("Xvfb"),
        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
         QStringLiteral("1920x1080x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    while (server->state() != QProcess::NotRunning && !server->canReadLine()) {
        if (!server->waitForReadyRead(kPatienceMs))
            return {};
    }
    const QByteArray number = server->readLine().trimmed();
    return number.isEmpty() ? number : ':' + number;
}

int main(int argc, char** argv) {
    QProcess server;
    const QByteArray display = startDisplay(&server);
    if (display.isEmpty())
        qFatal("no display: is Xvfb installed?");
    qputenv("DISPLAY", display);
    qputenv("QT_QPA_PLATFORM", "xcb");
    // The rest of a desktop is not tried: its libraries leave memory behind.
    qputenv("QT_XCB_GL_INTEGRATION", "none");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    app::PacedTime* const time = app::PacedTime::install();
    int status = 0;
    {
        const QApplication application(argc, argv);
        time->setFactor(5);
        AppDisplay test;
        status = QTest::qExec(&test, argc, argv);
    }
    server.kill();
    server.waitForFinished();
    return status;
}

#include "tst_display.moc"
