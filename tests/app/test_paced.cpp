#include "simulator/time/pacedtime.h"
#include "support/suite.h"

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

/// Timers and loops on the panel's clock: their order and times. Of the wall clock only minimum durations are
/// tested, which hold on slow machines, too.
class AppPaced : public QObject {
    Q_OBJECT

    /// Runs a loop for `ms` of the panel's clock.
    static void runLoop(int ms) {
        const qint64 end = nowMs() + ms;
        QEventLoop loop;
        QTimer::singleShot(ms, Qt::PreciseTimer, &loop, &QEventLoop::quit);
        loop.exec();
        QCOMPARE(nowMs(), end);
    }

private slots:
    /// Also when the process is late; the idle timer is always due.
    void timers_fireAtTheirOwnMilliseconds() {
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
        // A new factor applies to armed timers and to the time of day.
        constexpr int hourMs = 3600000;
        QTimer::singleShot(0, this, [] { paced->setFactor(hourMs); });
        runLoop(hourMs);
        QVERIFY(QDateTime::currentDateTime().msecsTo(paced->now()) > hourMs / 2);
    }
};

LUMO_TEST_ON(AppPaced, onPacedTime)
#include "test_paced.moc"
