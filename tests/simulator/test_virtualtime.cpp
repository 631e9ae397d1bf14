#include "simulator/virtualtime.h"

#include "support/suite.h"

#include <qpa/qwindowsysteminterface.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

using sim::VirtualTime;

class TestVirtualTime : public QObject {
    Q_OBJECT
private:
    QStringList diary_;
    qint64 start_ = 0;

    static VirtualTime& time() { return *VirtualTime::instance(); }
    qint64 now() const { return time().nowMs() - start_; }
    void note(const QString& what) { diary_ << QString("%1 %2").arg(now()).arg(what); }
    void after(int ms, const std::function<void()>& what) {
        QTimer::singleShot(ms, Qt::PreciseTimer, this, what);
    }
    void noteOn(QTimer& timer, const char* name) {
        connect(&timer, &QTimer::timeout, this, [this, name] { note(name); });
    }
    QString advanced(qint64 ms) {
        time().advance(ms);
        return diary_.join(", ");
    }

private slots:
    void init() {
        diary_.clear();
        start_ = time().nowMs();
    }
    /// Qt's own timers run out, nothing of a test is left over.
    void cleanup() {
        QVERIFY(time().advanceUntil([] { return time().armedTimers() == 0; }, 300000));
    }

    void timersDueTogether_fireInTheOrderTheyWereArmed() {
        QTimer repeating;
        noteOn(repeating, "r");
        repeating.start(10);
        after(20, [this] { note("a"); });
        after(10, [this] { note("b"); });
        after(20, [this] { note("c"); });
        // The repeating one was armed for 20 ms when it fired at 10 ms, after the others.
        QCOMPARE(advanced(20), "10 r, 10 b, 20 a, 20 c, 20 r");
        QCOMPARE(time().armedTimers() - time().armedTimers(&repeating), 1);
        QCOMPARE(time().registeredTimers(&repeating).first().interval, 10);
        QCOMPARE(advanced(9).section(' ', -1), "r");
        QCOMPARE(repeating.remainingTime(), 1);
        QCOMPARE(mendo::Clock::current().elapsedMs(), start_ + 29);
        QCOMPARE(time().now(), QDateTime(QDate(2024, 1, 1), QTime(8, 0)).addMSecs(start_ + 29));
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        QCOMPARE(now(), 29);
        QCOMPARE(time().remainingTime(-1), -1);
    }

    void runningHandler_isNotEnteredAgainAndKeepsItsRhythm() {
        QTimer timer, other;
        noteOn(other, "o");
        connect(&timer, &QTimer::timeout, this, [&] {
            note("in");
            QEventLoop loop;
            QTimer::singleShot(35, &loop, &QEventLoop::quit);
            loop.exec();
            note("out");
        });
        timer.start(10);
        other.start(20);
        QCOMPARE(advanced(50), "10 in, 20 o, 40 o, 45 out, 50 in, 60 o, 80 o, 85 out");
    }

    void zeroTimers_fireOnceAPassAndDoNotStopTheClock() {
        QTimer zero;
        int zeros = 0, links = 0;
        connect(&zero, &QTimer::timeout, this, [&] { ++zeros; });
        zero.start(0);
        QCoreApplication::processEvents(QEventLoop::X11ExcludeTimers);
        QCOMPARE(zeros, 0);
        QCoreApplication::processEvents();
        QCOMPARE(zeros, 1);
        time().advance(1000);
        QVERIFY(zeros < 10);
        zero.stop();
        // A chain of them is done before the clock goes on; posted events without end do not hold it.
        init();
        const std::function<void()> chain = [&] { ++links < 500 ? after(0, chain) : note("chain"); };
        after(0, chain);
        after(1, [this] { note("late"); });
        QCOMPARE(advanced(1), "0 chain, 1 late");
        bool done = false;
        const std::function<void()> post = [&] {
            if (!done)
                QMetaObject::invokeMethod(this, post, Qt::QueuedConnection);
        };
        post();
        after(5, [&] { done = true; });
        QVERIFY(time().advanceUntil([&] { return done; }, 5));
        time().settle();
    }

    void nestedLoopsAndAdvances_endInsideOut() {
        QEventLoop outer, inner;
        after(10, [&] {
            QTimer::singleShot(30, &inner, &QEventLoop::quit);
            inner.exec();
            note("inner");
        });
        after(20, [&] { outer.quit(); });
        outer.exec();
        note("outer");
        after(10, [this] {
            time().advance(100);
            note("nested");
        });
        after(50, [this] { note("timer"); });
        QCOMPARE(advanced(20), "40 inner, 40 outer, 90 timer, 150 nested");
    }

    void timerStoppedDeletedOrRestarted_firesAccordingly() {
        QTimer stopped, restarted;
        auto *const deleted = new QTimer, *const own = new QTimer;
        noteOn(stopped, "stopped");
        noteOn(*deleted, "deleted");
        noteOn(*own, "own");
        noteOn(restarted, "restarted");
        after(10, [&] {
            stopped.stop();
            delete deleted;
        });
        connect(own, &QTimer::timeout, this, [own] { delete own; });
        connect(&restarted, &QTimer::timeout, this, [&] { restarted.start(restarted.interval() + 10); });
        for (QTimer* timer : {&stopped, deleted, own, &restarted})
            timer->start(10);
        QCOMPARE(advanced(65), "10 own, 10 restarted, 30 restarted, 60 restarted");
        const QPointer<QObject> doomed(new QObject);
        doomed->deleteLater();
        time().settle();
        QVERIFY(!doomed);
    }

    void excludedUserInput_isDeliveredLater() {
        QPushButton button;
        button.show();
        time().settle();
        const QPoint at(2, 2);
        QWindowSystemInterface::handleMouseEvent(button.windowHandle(), at, button.mapToGlobal(at),
                                                 Qt::LeftButton, Qt::LeftButton, QEvent::MouseButtonPress);
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        QVERIFY(!button.isDown());
        time().settle();
        QVERIFY(button.isDown());
    }

    void aboutToBlock_comesBeforeTheClockGoesOnButNotInANestedAdvance() {
        const auto noting = connect(&time(), &VirtualTime::aboutToBlock, this, [this] { note("block"); });
        after(10, [this] {
            diary_.clear();
            QCOMPARE(advanced(100), "");
        });
        QVERIFY(advanced(5).startsWith("0 block"));
        time().advance(10);
        disconnect(noting);
    }

    void standstill_isHandledOnceOrEndsTheLoops() {
        QTimer repeating;
        QEventLoop loop;
        time().setStallHandler([&] {
            note("stall");
            loop.exit(7);
        });
        after(10, [] {});
        QCOMPARE(loop.exec(), 7);
        // A timer's own ticks cannot come while its handler waits.
        connect(&repeating, &QTimer::timeout, this, [&] {
            loop.exec();
            repeating.stop();
        });
        repeating.start(10);
        QCOMPARE(advanced(10), "10 stall, 20 stall");
        time().setStallHandler(nullptr);
        QTest::ignoreMessage(QtWarningMsg,
                             "Virtual time stands still: something is awaited and nothing is pending.");
        QCOMPARE(loop.exec(), 1);
    }

    void pace_holdsBackToTheWallClock() {
        QElapsedTimer wall;
        wall.start();
        time().setPace(100.0);
        time().advance(2000);
        time().setPace(0);
        QVERIFY(wall.elapsed() >= 19);
    }
};

LUMO_TEST(TestVirtualTime)
#include "test_virtualtime.moc"
