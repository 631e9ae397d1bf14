#include "simulator/time/pacedtime.h"
#include "support/suite.h"

#include <QThread>
#include <QTimer>

namespace {

sim::PacedTime* paced = nullptr;

void onPacedTime() {
    paced = sim::PacedTime::install();
}

qint64 nowMs() {
    return paced->elapsedMs();
}

}  // namespace

/// What timers and loops do on the panel's clock: order and the clock's own times. Of the wall clock only the
/// least that something takes is asked, which no slow machine can miss.
class AppPaced : public QObject {
    Q_OBJECT

    /// For so many milliseconds of the panel's time.
    static void runLoop(int ms) {
        const qint64 end = nowMs() + ms;
        QEventLoop loop;
        QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
        QCOMPARE(nowMs(), end);
    }

private slots:
    /// However late the wall clock makes them. The idle one is always due.
    void timers_keepTheirTimesToEachOther() {
        for (const double factor : {1.0, 10.0, 1000.0}) {
            paced->setFactor(factor);
            QStringList log;
            const qint64 start = nowMs();
            const auto note = [&](const char* what) { log << what + QString::number(nowMs() - start); };
            QTimer ramp, tick, idle;
            ramp.setTimerType(Qt::CoarseTimer);
            connect(&ramp, &QTimer::timeout, this, [&] { note("r"); });
            connect(&tick, &QTimer::timeout, this, [&] { note("t"); });
            ramp.start(20);
            tick.start(25);
            idle.start(0);
            QTimer::singleShot(47, this, [&] { note("s"); });
            runLoop(101);
            QCOMPARE(log.join(' '), "r20 t25 r40 s47 t50 r60 t75 r80 t100 r100");
        }
    }

    void clock_isNoFasterThanTheFactor() {
        QElapsedTimer wall;
        for (const int factor : {1, 10}) {
            paced->setFactor(factor);
            wall.start();
            runLoop(60 * factor);
            QVERIFY2(wall.nsecsElapsed() >= 59000000, qPrintable(QString::number(wall.nsecsElapsed())));
        }
        // What a busy handler has lost is not caught up from the next timer on.
        paced->setFactor(1);
        QTimer::singleShot(10, this, [&wall] {
            QThread::msleep(400);
            wall.start();
        });
        QTimer::singleShot(20, this, [] {});
        runLoop(120);
        QVERIFY2(wall.elapsed() >= 99, qPrintable(QString::number(wall.elapsed())));
        // Much faster: what is armed already goes along, and so does the time of day.
        constexpr int hourMs = 3600000;
        QTimer::singleShot(0, this, [] { paced->setFactor(hourMs); });
        runLoop(hourMs);
        QVERIFY(QDateTime::currentDateTime().msecsTo(paced->now()) > hourMs / 2);
    }
};

LUMO_TEST_ON(AppPaced, onPacedTime)
#include "test_paced.moc"
