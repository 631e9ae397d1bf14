#include "virtualmain.h"

#include <qpa/qwindowsysteminterface.h>

#include <QDialog>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

#include <memory>

using sim::VirtualTime;

namespace {

VirtualTime& virtualTime() {
    return *VirtualTime::instance();
}

/// Notes what happens and when, counted from its own making.
class Diary {
public:
    void note(const QString& what) {
        lines_ << QStringLiteral("%1 %2").arg(virtualTime().nowMs() - start_).arg(what);
    }
    QString text() const { return lines_.join(QLatin1String(", ")); }

private:
    QStringList lines_;
    qint64 start_ = virtualTime().nowMs();
};

}  // namespace

class TestVirtualTime : public QObject {
    Q_OBJECT
private slots:
    /// Qt's own timers (the pixmap cache's) run out, nothing of a test is left over.
    void cleanup() {
        QVERIFY(virtualTime().advanceUntil([] { return virtualTime().armedTimers() == 0; }, 300000));
    }

    void timersDueTogether_fireInTheOrderTheyWereArmed() {
        Diary diary;
        QTimer repeating;
        connect(&repeating, &QTimer::timeout, this, [&] { diary.note(QStringLiteral("r")); });
        repeating.start(10);
        QTimer::singleShot(20, this, [&] { diary.note(QStringLiteral("a")); });
        QTimer::singleShot(10, this, [&] { diary.note(QStringLiteral("b")); });
        QTimer::singleShot(20, this, [&] { diary.note(QStringLiteral("c")); });
        virtualTime().advance(20);
        // The repeating timer was armed for 20 ms when it fired at 10 ms, after the others.
        QCOMPARE(diary.text(), QStringLiteral("10 r, 10 b, 20 a, 20 c, 20 r"));
    }

    void clock_standsExactlyWhereAdvanceEnds() {
        const qint64 start = virtualTime().nowMs();
        bool fired = false;
        QTimer timer;
        timer.setSingleShot(true);
        connect(&timer, &QTimer::timeout, this, [&] { fired = true; });
        timer.start(1000);
        virtualTime().advance(999);
        QVERIFY(!fired);
        QCOMPARE(timer.remainingTime(), 1);
        QCOMPARE(mendo::Clock::current().elapsedMs(), start + 999);
        virtualTime().advance(1);
        QVERIFY(fired);
        QCOMPARE(virtualTime().now(), QDateTime(QDate(2024, 1, 1), QTime(8, 0)).addMSecs(start + 1000));
    }

    void runningHandler_isNotEnteredAgain() {
        Diary diary;
        QTimer timer, other;
        int inside = 0;
        connect(&other, &QTimer::timeout, this, [&] { diary.note(QStringLiteral("o")); });
        connect(&timer, &QTimer::timeout, this, [&] {
            QCOMPARE(++inside, 1);
            diary.note(QStringLiteral("in"));
            QEventLoop loop;
            QTimer::singleShot(35, &loop, &QEventLoop::quit);
            loop.exec();
            diary.note(QStringLiteral("out"));
            --inside;
        });
        timer.start(10);
        other.start(20);
        virtualTime().advance(50);
        // The ticks at 20, 30 and 40 ms fell into the handler; the rhythm stays.
        QCOMPARE(diary.text(), QStringLiteral("10 in, 20 o, 40 o, 45 out, 50 in, 60 o, 80 o, 85 out"));
    }

    void zeroTimer_firesOnceAPassAndDoesNotStopTheClock() {
        QTimer zero;
        int zeros = 0;
        connect(&zero, &QTimer::timeout, this, [&] { ++zeros; });
        zero.start(0);
        QCoreApplication::processEvents();
        QCOMPARE(zeros, 1);
        bool fired = false;
        QTimer::singleShot(1000, this, [&] { fired = true; });
        QVERIFY(virtualTime().advanceUntil([&] { return fired; }, 2000));
        QVERIFY(zeros < 10);
    }

    void chainOfZeroTimers_isDoneBeforeTheClockGoesOn() {
        Diary diary;
        QTimer late;
        late.setSingleShot(true);
        connect(&late, &QTimer::timeout, this, [&] { diary.note(QStringLiteral("late")); });
        late.start(1);
        QTimer chain;
        chain.setSingleShot(true);
        int links = 0;
        connect(&chain, &QTimer::timeout, this, [&] {
            if (++links < 500)
                chain.start(0);
            else
                diary.note(QStringLiteral("chain"));
        });
        chain.start(0);
        virtualTime().advance(1);
        QCOMPARE(diary.text(), QStringLiteral("0 chain, 1 late"));
    }

    void endlessPostedEvents_doNotFreezeTheClock() {
        bool done = false;
        std::function<void()> again = [&] {
            if (!done)
                QMetaObject::invokeMethod(
                    this, [&] { again(); }, Qt::QueuedConnection);
        };
        again();
        QTimer::singleShot(5, this, [&] { done = true; });
        QVERIFY(virtualTime().advanceUntil([&] { return done; }, 5));
        virtualTime().settle();
    }

    void nestedLoops_endInsideOut() {
        Diary diary;
        QEventLoop outer, inner;
        QTimer::singleShot(10, this, [&] {
            QTimer::singleShot(30, &inner, &QEventLoop::quit);
            inner.exec();
            diary.note(QStringLiteral("inner"));
        });
        QTimer::singleShot(20, &outer, [&] {
            diary.note(QStringLiteral("quit outer"));
            outer.quit();
        });
        outer.exec();
        diary.note(QStringLiteral("outer"));
        QCOMPARE(diary.text(), QStringLiteral("20 quit outer, 40 inner, 40 outer"));
    }

    void modalDialog_isAnsweredByATimer() {
        QDialog dialog;
        QPushButton button(&dialog);
        connect(&button, &QPushButton::clicked, &dialog, &QDialog::accept);
        QTimer::singleShot(500, &dialog, [&] { QTest::mouseClick(&button, Qt::LeftButton); });
        const qint64 start = virtualTime().nowMs();
        QCOMPARE(dialog.exec(), int(QDialog::Accepted));
        // A click may animate the button, the rest is at once.
        QVERIFY(virtualTime().nowMs() - start >= 500);
        QVERIFY(virtualTime().nowMs() - start < 1000);
        virtualTime().advance(1000);
    }

    void nestedAdvance_goesOnInsideAHandler() {
        Diary diary;
        QTimer::singleShot(10, this, [&] {
            virtualTime().advance(100);
            diary.note(QStringLiteral("nested"));
        });
        QTimer::singleShot(50, this, [&] { diary.note(QStringLiteral("timer")); });
        virtualTime().advance(20);
        diary.note(QStringLiteral("end"));
        QCOMPARE(diary.text(), QStringLiteral("50 timer, 110 nested, 110 end"));
    }

    void timerStoppedOrDeletedByAnEarlierHandler_doesNotFire() {
        Diary diary;
        QTimer stopped;
        auto* deleted = new QTimer;
        QTimer::singleShot(10, this, [&] {
            stopped.stop();
            delete deleted;
        });
        connect(&stopped, &QTimer::timeout, this, [&] { diary.note(QStringLiteral("stopped")); });
        connect(deleted, &QTimer::timeout, this, [&] { diary.note(QStringLiteral("deleted")); });
        stopped.start(10);
        deleted->start(10);
        virtualTime().advance(30);
        QCOMPARE(diary.text(), QString());
    }

    void timerDeletedByItsOwnHandler_isGone() {
        auto* timer = new QTimer;
        int ticks = 0;
        connect(timer, &QTimer::timeout, this, [&] {
            ++ticks;
            delete timer;
        });
        timer->start(10);
        virtualTime().advance(50);
        QCOMPARE(ticks, 1);
    }

    void timerRestartedInItsHandler_countsFromThere() {
        Diary diary;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] {
            diary.note(QStringLiteral("t"));
            timer.start(timer.interval() + 10);
        });
        timer.start(10);
        virtualTime().advance(65);
        QCOMPARE(diary.text(), QStringLiteral("10 t, 30 t, 60 t"));
    }

    void deleteLater_outsideAnyLoopIsServed() {
        QPointer<QObject> doomed(new QObject);
        doomed->deleteLater();
        virtualTime().settle();
        QVERIFY(doomed.isNull());
    }

    void processEvents_withoutWaitingKeepsTheTime() {
        QTimer timer;
        timer.start(10);
        const qint64 start = virtualTime().nowMs();
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        QCOMPARE(virtualTime().nowMs(), start);
    }

    void excludedTimers_stayPending() {
        QTimer timer;
        int ticks = 0;
        connect(&timer, &QTimer::timeout, this, [&] { ++ticks; });
        timer.start(0);
        QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers);
        QCOMPARE(ticks, 0);
        QCoreApplication::processEvents();
        QCOMPARE(ticks, 1);
    }

    void excludedUserInput_isDeliveredLater() {
        QPushButton button;
        button.show();
        virtualTime().settle();
        const QPoint at(2, 2);
        QWindowSystemInterface::handleMouseEvent(button.windowHandle(), at, button.mapToGlobal(at),
                                                 Qt::LeftButton, Qt::LeftButton, QEvent::MouseButtonPress);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QVERIFY(!button.isDown());
        virtualTime().settle();
        QVERIFY(button.isDown());
    }

    void aboutToBlock_comesBeforeTheClockGoesOn_butNotInsideNestedAdvance() {
        QList<qint64> moments;
        const qint64 start = virtualTime().nowMs();
        const auto noting = connect(&virtualTime(), &VirtualTime::aboutToBlock, this,
                                    [&] { moments << virtualTime().nowMs() - start; });
        QTimer::singleShot(10, this, [&] {
            moments.clear();
            virtualTime().advance(100);
            QCOMPARE(moments, QList<qint64>());
        });
        virtualTime().advance(5);
        QVERIFY(moments.contains(0));
        virtualTime().advance(10);
        disconnect(noting);
    }

    void stall_callsTheHandlerOnce() {
        QEventLoop loop;
        int stalls = 0;
        virtualTime().setStallHandler([&] {
            ++stalls;
            loop.exit(7);
        });
        QTimer::singleShot(10, this, [] {});
        const qint64 start = virtualTime().nowMs();
        QCOMPARE(loop.exec(), 7);
        QCOMPARE(stalls, 1);
        QCOMPARE(virtualTime().nowMs() - start, 10);
        virtualTime().setStallHandler(nullptr);
    }

    void stall_insideATimersOwnHandler_isSeen() {
        QTimer repeating;
        QEventLoop loop;
        int stalls = 0;
        virtualTime().setStallHandler([&] {
            ++stalls;
            loop.quit();
        });
        connect(&repeating, &QTimer::timeout, this, [&] {
            loop.exec();
            repeating.stop();
        });
        repeating.start(10);
        virtualTime().advance(10);
        // Its own ticks cannot come while it waits.
        QCOMPARE(stalls, 1);
        virtualTime().setStallHandler(nullptr);
    }

    void armedTimers_leavesOutATree() {
        QObject root;
        auto* below = new QTimer(&root);
        QTimer other;
        below->start(10);
        other.start(10);
        QCOMPARE(virtualTime().armedTimers(), 2);
        QCOMPARE(virtualTime().armedTimers(&root), 1);
    }

    void registeredTimers_knowIntervalAndOwner() {
        QObject owner;
        const int id = owner.startTimer(25, Qt::PreciseTimer);
        const auto infos = virtualTime().registeredTimers(&owner);
        QCOMPARE(infos.size(), 1);
        QCOMPARE(infos.first().timerId, id);
        QCOMPARE(infos.first().interval, 25);
        QCOMPARE(virtualTime().remainingTime(id), 25);
        owner.killTimer(id);
        QCOMPARE(virtualTime().remainingTime(id), -1);
    }

    void anHourOfTicks_takesNoTime() {
        QTimer timer;
        int ticks = 0;
        connect(&timer, &QTimer::timeout, this, [&] { ++ticks; });
        timer.start(20);
        const qint64 start = virtualTime().nowMs();
        virtualTime().advance(3600 * 1000);
        QCOMPARE(ticks, 180000);
        QCOMPARE(virtualTime().nowMs() - start, qint64(3600 * 1000));
    }

    void pace_holdsBackToTheWallClock() {
        QElapsedTimer wall;
        wall.start();
        virtualTime().setPace(100.0);
        virtualTime().advance(2000);
        virtualTime().setPace(0);
        QVERIFY(wall.elapsed() >= 19);
    }
};

VIRTUAL_TIME_MAIN(TestVirtualTime)
#include "test_virtualtime.moc"
