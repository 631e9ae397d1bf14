#include "app/time/pacedtime.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolTip>
#include <QtTest>

#include <sys/socket.h>
#include <unistd.h>

#include <limits>
#include <thread>

namespace {

app::PacedTime* paced = nullptr;

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

/// Keeps the thread busy for that much of the wall clock.
void work(int ms) {
    QElapsedTimer wall;
    wall.start();
    while (wall.elapsed() < ms) {
    }
}

}  // namespace

/// What timers, sockets and loops do on the panel's paced clock. Nothing here asks how long something
/// takes at most: only the order, the clock's own times, and what the wall clock takes at least.
class AppPacedTime : public QObject {
    Q_OBJECT
private slots:
    void init() { paced->setFactor(1); }
    void timers_keepTheirTimesToEachOther_data();
    void timers_keepTheirTimesToEachOther();
    void slowHandler_shiftsNoOtherTimer();
    void stall_isNotCaughtUp();
    void clock_isNoFasterThanTheFactor_data();
    void clock_isNoFasterThanTheFactor();
    void armedTimer_keepsWhatIsLeftOfIt();
    void socket_isServedInASleep();
    void otherThread_endsASleep();
    void zeroTimer_stopsNoClock();
    void handlersOwnLoop_doesNotEnterItAgain();
    void timesOfDay_areAheadByWhatWasGained();
    void tooltip_staysAsLongAsEver();
    void fileDialog_isFilled();
};

void AppPacedTime::timers_keepTheirTimesToEachOther_data() {
    QTest::addColumn<double>("factor");
    for (const double factor : {1.0, 2.0, 10.0, 1000.0})
        QTest::addRow("%g", factor) << factor;
}

// A ramp of 20 ms steps, a tick that falls between them, a chain of single shots and the end.
void AppPacedTime::timers_keepTheirTimesToEachOther() {
    QFETCH(double, factor);
    paced->setFactor(factor);
    QStringList log;
    const qint64 start = nowMs();
    const auto note = [&](const char* what) {
        log << QLatin1String(what) + QString::number(nowMs() - start);
    };
    QEventLoop loop;
    QTimer ramp, tick, chain;
    ramp.setTimerType(Qt::CoarseTimer);
    connect(&ramp, &QTimer::timeout, this, [&] { note("r"); });
    connect(&tick, &QTimer::timeout, this, [&] { note("t"); });
    chain.setSingleShot(true);
    connect(&chain, &QTimer::timeout, this, [&] {
        note("c");
        chain.start(33);
    });
    ramp.start(20);
    tick.start(25);
    chain.start(7);
    QTimer::singleShot(101, &loop, &QEventLoop::quit);
    loop.exec();
    QCOMPARE(log.join(' '), QStringLiteral("c7 r20 t25 c40 r40 t50 r60 c73 t75 r80 t100 r100"));
    QCOMPARE(nowMs() - start, qint64(101));
}

void AppPacedTime::slowHandler_shiftsNoOtherTimer() {
    const qint64 start = nowMs();
    QVector<qint64> fired;
    QEventLoop loop;
    QTimer::singleShot(10, this, [] { work(60); });
    for (const int ms : {20, 30, 90})
        QTimer::singleShot(ms, this, [&fired, start] { fired << nowMs() - start; });
    QTimer::singleShot(95, &loop, &QEventLoop::quit);
    loop.exec();
    QCOMPARE(fired, QVector<qint64>({20, 30, 90}));
}

void AppPacedTime::stall_isNotCaughtUp() {
    QEventLoop loop;
    QElapsedTimer wall;
    QTimer::singleShot(10, this, [&wall] {
        work(400);
        wall.start();
    });
    QTimer::singleShot(20, this, [] {});
    QTimer::singleShot(120, &loop, &QEventLoop::quit);
    loop.exec();
    // Caught up, the rest would have come at once.
    QVERIFY2(wall.elapsed() >= 99, qPrintable(QString::number(wall.elapsed())));
}

void AppPacedTime::clock_isNoFasterThanTheFactor_data() {
    QTest::addColumn<double>("factor");
    QTest::addColumn<int>("ms");
    QTest::addRow("1") << 1.0 << 60;
    QTest::addRow("5") << 5.0 << 300;
    QTest::addRow("10") << 10.0 << 600;
}

void AppPacedTime::clock_isNoFasterThanTheFactor() {
    QFETCH(double, factor);
    QFETCH(int, ms);
    paced->setFactor(factor);
    QElapsedTimer wall;
    QEventLoop loop;
    wall.start();
    QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    QTimer::singleShot(ms / 7, this, [] {});
    loop.exec();
    const double wallMs = double(wall.nsecsElapsed()) / 1e6;
    QVERIFY2(wallMs >= ms / factor - 1, qPrintable(QString::number(wallMs)));
}

void AppPacedTime::armedTimer_keepsWhatIsLeftOfIt() {
    QTimer timer;
    timer.start(500);
    paced->setFactor(10);
    const qint64 start = nowMs();
    const int left = timer.remainingTime();
    QVERIFY(left > 0);
    QElapsedTimer wall;
    wall.start();
    QEventLoop loop;
    connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    loop.exec();
    QCOMPARE(nowMs() - start, qint64(left));
    // A tenth of the wall clock; the timer it was armed as would have taken all of it.
    QVERIFY2(wall.elapsed() >= left / 10 - 1, qPrintable(QString::number(wall.elapsed())));
    QCOMPARE(timer.interval(), 500);
}

void AppPacedTime::socket_isServedInASleep() {
    int ends[2];
    QCOMPARE(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    QSocketNotifier notifier(ends[0], QSocketNotifier::Read);
    QEventLoop loop;
    bool read = false;
    connect(&notifier, &QSocketNotifier::activated, this, [&] {
        char byte = 0;
        read = ::read(ends[0], &byte, 1) == 1 && byte == 'x';
        loop.quit();
    });
    QTimer::singleShot(10, this, [&ends] { QCOMPARE(::write(ends[1], "x", 1), ssize_t(1)); });
    QTimer::singleShot(60000, &loop, &QEventLoop::quit);
    loop.exec();
    QVERIFY(read);
    ::close(ends[0]);
    ::close(ends[1]);
}

void AppPacedTime::otherThread_endsASleep() {
    QEventLoop loop;
    bool late = false;
    const QTimer guard;
    QTimer::singleShot(60000, &loop, [&] {
        late = true;
        loop.quit();
    });
    std::thread other([&loop] { QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection); });
    loop.exec();
    other.join();
    QVERIFY(!late);
}

void AppPacedTime::zeroTimer_stopsNoClock() {
    QTimer idle;
    int idles = 0;
    connect(&idle, &QTimer::timeout, this, [&idles] { ++idles; });
    idle.start(0);
    QEventLoop loop;
    QTimer::singleShot(30, &loop, &QEventLoop::quit);
    const qint64 start = nowMs();
    loop.exec();
    QCOMPARE(nowMs() - start, qint64(30));
    QVERIFY(idles > 1);
}

void AppPacedTime::handlersOwnLoop_doesNotEnterItAgain() {
    paced->setFactor(10);
    QStringList log;
    const qint64 start = nowMs();
    int depth = 0, deepest = 0;
    QEventLoop outer;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        deepest = qMax(deepest, ++depth);
        log << QString::number(nowMs() - start);
        QEventLoop inner;
        QTimer::singleShot(45, &inner, &QEventLoop::quit);
        inner.exec();
        --depth;
    });
    timer.start(20);
    QTimer::singleShot(110, &outer, &QEventLoop::quit);
    outer.exec();
    QCOMPARE(deepest, 1);
    // The ticks at 40, 60, 100 and so on fell into the loop of the one before.
    QCOMPARE(log, QStringList({"20", "80"}));
}

void AppPacedTime::timesOfDay_areAheadByWhatWasGained() {
    // The two clocks are not read at once: the least of many is what they differ by.
    const auto ahead = [] {
        qint64 least = std::numeric_limits<qint64>::max();
        for (int i = 0; i < 100; ++i)
            least = qMin(least, QDateTime::currentDateTime().msecsTo(mendo::Clock::current().now()));
        return least;
    };
    const qint64 before = ahead();
    QElapsedTimer around;
    around.start();
    paced->setFactor(10);
    QEventLoop loop;
    QTimer::singleShot(1000, &loop, &QEventLoop::quit);
    loop.exec();
    paced->setFactor(1);
    const qint64 aroundMs = around.elapsed() + 1;
    const qint64 gained = ahead() - before;
    QVERIFY2(gained >= 998 - aroundMs && gained <= 9 * aroundMs + 2, qPrintable(QString::number(gained)));
}

// Ten seconds and more, which would be over in a hundredth of one.
void AppPacedTime::tooltip_staysAsLongAsEver() {
    paced->setFactor(1000);
    QWidget window;
    window.show();
    QCoreApplication::processEvents();  // a window that is activated takes tips away
    QToolTip::showText(window.mapToGlobal(QPoint(5, 5)), QStringLiteral("tip"), &window);
    QEventLoop loop;
    QTimer::singleShot(30000, &loop, &QEventLoop::quit);
    loop.exec();
    QVERIFY(QToolTip::isVisible());
    QToolTip::hideText();
}

// By a thread of its own.
void AppPacedTime::fileDialog_isFilled() {
    paced->setFactor(10);
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("seam.json")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QFileDialog dialog(nullptr, QString(), folder.path());
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    auto* files = dialog.findChild<QFileSystemModel*>();
    QVERIFY(files);
    QEventLoop loop;
    connect(files, &QFileSystemModel::directoryLoaded, &loop, &QEventLoop::quit);
    QTimer::singleShot(600000, &loop, &QEventLoop::quit);
    dialog.open();
    loop.exec();
    const QModelIndex root = files->index(folder.path());
    QCOMPARE(files->rowCount(root), 1);
    QCOMPARE(files->index(0, 0, root).data().toString(), QStringLiteral("seam.json"));
}

int main(int argc, char** argv) {
    paced = app::PacedTime::install();
    QApplication application(argc, argv);
    AppPacedTime test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_pacedtime.moc"
