#include "app/time/pacedtime.h"
#include "support/suite.h"

#include <QThread>
#include <QTimer>

namespace {

app::PacedTime* paced = nullptr;

void onPacedTime() {
    paced = app::PacedTime::install();
}

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

constexpr int kHourMs = 3600000;

}  // namespace

/// What timers and loops do on the panel's clock: order and the clock's own times. Of the wall clock only the
/// least that something takes is asked, which no slow machine can miss.
class AppPaced : public QObject {
    Q_OBJECT

    QEventLoop loop_;

    /// Runs the loop for so many milliseconds of the panel's time; whether nothing ended it before.
    bool loopFor(int ms) {
        const qint64 end = nowMs() + ms;
        QTimer limit;
        connect(&limit, &QTimer::timeout, &loop_, &QEventLoop::quit);
        limit.start(ms);
        loop_.exec();
        return nowMs() == end;
    }

private slots:
    void init() { paced->setFactor(1); }

    /// A ramp of 20 ms steps, a tick that falls between them, a single shot, and a timer that is always due.
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
            QVERIFY(loopFor(101));
            QCOMPARE(log.join(' '), "r20 t25 r40 s47 t50 r60 t75 r80 t100 r100");
        }
    }

    /// Whom a busy handler makes late fires at his own time all the same; and what was lost is not caught up.
    void slowHandler_shiftsNoOtherTimer() {
        QVector<qint64> fired;
        QElapsedTimer wall;
        const qint64 start = nowMs();
        QTimer::singleShot(10, this, [&wall] {
            QThread::msleep(400);
            wall.start();
        });
        for (const int ms : {20, 90})
            QTimer::singleShot(ms, this, [&fired, start] { fired << nowMs() - start; });
        QVERIFY(loopFor(120));
        QCOMPARE(fired, (QVector<qint64>{20, 90}));
        QVERIFY2(wall.elapsed() >= 99, qPrintable(QString::number(wall.elapsed())));
    }

    void clock_isNoFasterThanTheFactor() {
        for (const int factor : {1, 10}) {
            paced->setFactor(factor);
            QElapsedTimer wall;
            wall.start();
            QVERIFY(loopFor(60 * factor));
            QVERIFY2(wall.nsecsElapsed() >= 59000000, qPrintable(QString::number(wall.nsecsElapsed())));
        }
        // Much faster: what is armed already goes along, and so does the time of day.
        QTimer::singleShot(kHourMs, Qt::PreciseTimer, &loop_, &QEventLoop::quit);
        const qint64 due = nowMs() + kHourMs;
        paced->setFactor(kHourMs);
        loop_.exec();
        QCOMPARE(nowMs(), due);
        QVERIFY(QDateTime::currentDateTime().msecsTo(mendo::Clock::current().now()) > kHourMs / 2);
    }
};

LUMO_TEST_ON(AppPaced, onPacedTime)
#include "test_paced.moc"
