#include "executor/schedule.h"
#include "executor/wait.h"
#include "simulator/virtualtime.h"
#include "support/executorbench.h"

#include <QSignalSpy>
#include <QTest>

using Role = PortStep::Role;

namespace {

/// A clock behind the one that the timers run on, as a coarse timer makes it look.
class SlowClock : public mendo::Clock {
public:
    explicit SlowClock(const mendo::Clock& real) : real_(real) { install(this); }
    ~SlowClock() override { install(&real_); }
    QDateTime now() const override { return real_.now(); }
    qint64 elapsedMs() const override { return real_.elapsedMs() - lateMs; }

    qint64 lateMs = 0;

private:
    const mendo::Clock& real_;
};

}  // namespace

/// The list of timed steps and wakes, and the wait on top of it.
class TestSchedule : public QObject {
    Q_OBJECT

    sim::VirtualTime& time_ = *sim::VirtualTime::instance();
    QStringList done_;
    std::unique_ptr<Schedule> schedule_;
    qint64 start_ = 0;

    void note(const QString& what) { done_ << QStringLiteral("%1 %2").arg(time_.nowMs() - start_).arg(what); }

private slots:
    void init() {
        done_.clear();
        start_ = time_.nowMs();
        schedule_ = std::make_unique<Schedule>();
        schedule_->setPerformer(
            [this](const PortStep& step) { note(QStringLiteral("%1=%2").arg(step.port).arg(step.value)); });
    }

    void equalTimes_keepTheOrderInWhichTheyWereAdded() {
        schedule_->add(start_, {{20, {DO_WIRE_PULLBACK, 0, Role::SwitchOff}},
                                {20, {DO_WIRE_ENABLE, 1, Role::Progress}},
                                {10, {AO_LASER_POWER, 0.5, Role::Progress}}});
        schedule_->wakeAt(start_ + 20, [this] { note("wake"); });
        schedule_->add(start_, {{20, {DO_WIRE_ENABLE, 0, Role::SwitchOff}}});
        time_.advance(30);
        QCOMPARE(done_, QStringList({"10 16=0.5", "20 14=0", "20 8=1", "20 wake", "20 8=0"}));
    }

    void aNestedLoopInsideAStep_stillGetsTheNextStep() {
        schedule_->setPerformer([this](const PortStep& step) {
            note(QString::number(step.port));
            if (step.port == DO_GAS) {
                QEventLoop loop;
                schedule_->wakeAt(start_ + 50, [&loop] { loop.quit(); });
                loop.exec();
                note("nested loop over");
            }
        });
        schedule_->add(start_, {{10, {DO_GAS, 1, Role::Progress}},
                                {10, {DO_ALARM, 1, Role::Progress}},
                                {60, {DO_RED_LIGHT, 1, Role::Progress}}});
        time_.advance(100);
        QCOMPARE(done_, QStringList({"10 6", "10 10", "50 nested loop over", "60 7"}));
    }

    void takingSteps_leavesWakesAndNoTimerBehind() {
        const int before = time_.armedTimers();
        schedule_->add(start_, {{10, {DO_GAS, 0, Role::GasOff}}});
        const int wake = schedule_->wakeAt(start_ + 20, [this] { note("wake"); });
        QCOMPARE(schedule_->takeSteps().size(), std::size_t(1));
        QCOMPARE(schedule_->pendingSteps(), 0);
        time_.advance(15);
        schedule_->cancelWake(wake);
        QCOMPARE(time_.armedTimers(), before);
        time_.advance(20);
        QCOMPARE(done_, QStringList());
    }

    void aParamDuringTheRamp_dropsOnlyThePowerSteps() {
        schedule_->add(start_, {{10, {AO_LASER_POWER, 0.1, Role::Progress}},
                                {20, {AO_LASER_POWER, 0.2, Role::Progress}},
                                {20, {DO_WIRE_ENABLE, 1, Role::Progress}}});
        schedule_->dropProgress(AO_LASER_POWER);
        time_.advance(30);
        QCOMPARE(done_, QStringList({"20 8=1"}));
    }

    void aTimerThatFiresEarly_isArmedAgain() {
        SlowClock clock(time_);
        schedule_->add(start_, {{20, {DO_GAS, 1, Role::Progress}}});
        clock.lateMs = 3;
        time_.advance(40);
        QCOMPARE(done_, QStringList("23 6=1"));
    }

    void whatIsPending_isToldAndAskedByPortAndRole() {
        QSignalSpy told(schedule_.get(), &Schedule::pendingChanged);
        schedule_->add(start_, {});
        schedule_->dropProgress(AO_LASER_POWER);
        QCOMPARE(told.count(), 0);
        schedule_->wakeAt(start_ + 5, [] {});
        schedule_->add(start_, {{10, {DO_WIRE_ENABLE, 0, Role::SwitchOff}},
                                {10, {DO_LASER_ENABLE, 1, Role::Progress}},
                                {20, {AO_LASER_POWER, 1, Role::Progress}}});
        QCOMPARE(told.count(), 1);
        QCOMPARE(schedule_->pendingSteps(), 3);
        QVERIFY(schedule_->isPending(DO_WIRE_ENABLE, Role::SwitchOff));
        QVERIFY(!schedule_->isPending(DO_LASER_ENABLE, Role::SwitchOff));
        QVERIFY(!schedule_->isPending(DO_WIRE_ENABLE, Role::Progress));
        QVERIFY(!schedule_->isPending(PortStep().port, PortStep().role));  // as a wake is made
        schedule_->dropProgress(AO_LASER_POWER);
        QCOMPARE(told.count(), 2);
        time_.advance(30);
        QCOMPARE(told.count(), 4);
    }

    void aWait_endsOnceAndItsTimeCannotEndTheNext() {
        QEventLoop loop;
        Waiter waiter(loop, *schedule_);
        QTimer::singleShot(10, this, [&waiter] {
            waiter.end(WaitEnd::Result, -42);
            waiter.end(WaitEnd::Abort);
        });
        QCOMPARE(waiter.run(WaitKind::Move, "0", start_ + 15), WaitEnd::Result);
        QCOMPARE(waiter.resultCode(), -42);
        QCOMPARE(waiter.run(WaitKind::Delay, "1", start_ + 40), WaitEnd::Time);
        QCOMPARE(time_.nowMs() - start_, qint64(40));
        QVERIFY(waiter.waiting().isEmpty());
    }

    void aWaitBelowAnEndedOne_returnsAtOnce() {
        QEventLoop loop;
        Waiter waiter(loop, *schedule_);
        WaitEnd nested = WaitEnd::Time;
        QTimer::singleShot(10, this, [&] {
            waiter.end(WaitEnd::Abort);
            nested = waiter.run(WaitKind::RampDown, "1", start_ + 500);
            note("nested returned");
        });
        QCOMPARE(waiter.run(WaitKind::Move, "0", -1), WaitEnd::Abort);
        QCOMPARE(nested, WaitEnd::Nested);
        QCOMPARE(done_, QStringList({"10 nested returned"}));
    }

    void aWaitThatIsDueFromTheBeginning_endsByItsTime() {
        QEventLoop loop;
        Waiter waiter(loop, *schedule_);
        QTimer::singleShot(50, this, [&waiter] { waiter.end(WaitEnd::Abort); });
        QCOMPARE(waiter.run(WaitKind::Delay, "0", 0), WaitEnd::Time);
        QCOMPARE(time_.nowMs() - start_, qint64(0));
        time_.advance(60);
    }

    void anOpenEndedWait_leavesOtherWakesAlone() {
        QEventLoop loop;
        Waiter waiter(loop, *schedule_);
        schedule_->wakeAt(start_ + 50, [this] { note("wake"); });
        QTimer::singleShot(10, this, [&waiter] { waiter.end(WaitEnd::Result); });
        QCOMPARE(waiter.run(WaitKind::Move, "0", -1), WaitEnd::Result);
        time_.advance(60);
        QCOMPARE(done_, QStringList("50 wake"));
    }

    void aPrivateWaitThatTheApplicationsEndEnds_leavesNothingBehind() {
        QEventLoop loop;
        Waiter waiter(loop, *schedule_);
        WaitEnd end = WaitEnd::Time;
        QTimer::singleShot(0, this, [&] {
            QTimer::singleShot(10, this, [] { QCoreApplication::quit(); });
            end = waiter.runPrivate(WaitKind::Dwell, "0", start_ + 40);
        });
        QCoreApplication::exec();
        QCOMPARE(end, WaitEnd::Quit);
        QVERIFY(waiter.waiting().isEmpty());
        QCOMPARE(time_.armedTimers(), 0);
    }

    void aPrivateWait_isEndedByTimeOnly() {
        QEventLoop loop;
        Waiter waiter(loop, *schedule_);
        QTimer::singleShot(10, this, [&waiter] { waiter.end(WaitEnd::Abort); });
        QCOMPARE(waiter.runPrivate(WaitKind::Dwell, "0", start_ + 40), WaitEnd::Time);
        QCOMPARE(time_.nowMs() - start_, qint64(40));
    }
};

LUMO_TEST_MAIN(TestSchedule)
#include "test_schedule.moc"
