#include "simulator/time/virtualtime.h"

#include "support/suite.h"

#include <QEventLoop>
#include <QPointer>
#include <QTimer>

class TestVirtualTime : public QObject {
    Q_OBJECT
private:
    sim::VirtualTime& time_ = *sim::VirtualTime::instance();
    QStringList log_;
    qint64 start_ = 0;

    void note(const QString& what) { log_ << QString("%1 %2").arg(time_.nowMs() - start_).arg(what); }
    void after(int ms, const std::function<void()>& what) {
        QTimer::singleShot(ms, Qt::PreciseTimer, this, what);
    }
    void noteTicks(const QTimer& timer, const char* name) {
        connect(&timer, &QTimer::timeout, this, [this, name] { note(name); });
    }
    QString advanced(qint64 ms) {
        time_.advance(ms);
        return log_.join(", ");
    }

private slots:
    void init() {
        log_.clear();
        start_ = time_.nowMs();
    }
    /// Qt's own timers run out; no timer of the test is left.
    void cleanup() {
        QVERIFY(time_.advanceUntil([&] { return time_.armedTimers() == 0; }, 300000));
    }

    void timersDueTogether_fireInTheOrderTheyWereArmed() {
        QTimer repeating;
        noteTicks(repeating, "r");
        repeating.start(10);
        after(20, [this] { note("a"); });
        after(10, [this] { note("b"); });
        after(20, [this] { note("c"); });
        // The repeating timer was armed for 20 ms when it fired at 10 ms, after the others.
        QCOMPARE(advanced(29), "10 r, 10 b, 20 a, 20 c, 20 r");
        QCoreApplication::processEvents();
        QCOMPARE(repeating.remainingTime(), 1);
        QCOMPARE(time_.now(), QDateTime(QDate(2024, 1, 1), QTime(8, 0)).addMSecs(start_ + 29));
    }

    void runningHandler_isNotReenteredAndKeepsItsPeriod() {
        QTimer timer, other;
        noteTicks(other, "o");
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

    void zeroTimers_fireFirstAndTakeNoTime() {
        int links = 0;
        const std::function<void()> chain = [&] { ++links < 500 ? after(0, chain) : note("chain"); };
        after(0, chain);
        after(1, [this] { note("late"); });
        QCOMPARE(advanced(1), "0 chain, 1 late");
    }

    void timersStoppedDeletedOrRestartedByAHandler_fireAccordingly() {
        QTimer stopped, restarted;
        auto *const deleted = new QTimer, *const own = new QTimer;
        const QPointer<QObject> doomed(new QObject);
        after(10, [&] {
            stopped.stop();
            delete deleted;
        });
        for (QTimer* timer : {&stopped, deleted, own, &restarted}) {
            noteTicks(*timer, timer == own ? "own" : timer == &restarted ? "restarted" : "wrong");
            timer->start(10);
        }
        connect(own, &QTimer::timeout, this, [own] { delete own; });
        connect(&restarted, &QTimer::timeout, this, [&] { restarted.start(restarted.interval() + 10); });
        doomed->deleteLater();
        QCOMPARE(advanced(65), "10 own, 10 restarted, 30 restarted, 60 restarted");
        QVERIFY(!doomed);
    }

    void stall_endsTheLoopsWithAWarning() {
        QTest::ignoreMessage(QtWarningMsg,
                             "Virtual time stands still: something is awaited and nothing is pending.");
        QCOMPARE(QEventLoop().exec(), 1);
    }
};

LUMO_TEST(TestVirtualTime)
#include "test_virtualtime.moc"
