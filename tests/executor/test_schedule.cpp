#include "executor/schedule.h"
#include "simulator/virtualtime.h"
#include "support/suite.h"

#include <QSignalSpy>

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

/// The list of timed steps and wakes.
class TestSchedule : public QObject {
    Q_OBJECT

    sim::VirtualTime& time_ = *sim::VirtualTime::instance();
    QStringList done_;
    std::unique_ptr<Schedule> schedule_;
    qint64 start_ = 0;

    void note(const QString& what) { done_ << QString("%1 %2").arg(time_.nowMs() - start_).arg(what); }

private slots:
    void init() {
        done_.clear();
        start_ = time_.nowMs();
        schedule_ = std::make_unique<Schedule>();
        schedule_->setPerformer(
            [this](const PortStep& step) { note(QString("%1=%2").arg(step.port).arg(step.value)); });
    }
    void cleanup() {
        schedule_.reset();
        QCOMPARE(time_.armedTimers(), 0);
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
        schedule_->wakeAt(start_ + 5, [] {});
        QCOMPARE(told.count(), 0);
        schedule_->add(
            start_, {{10, {DO_WIRE_ENABLE, 0, Role::SwitchOff}}, {20, {AO_LASER_POWER, 1, Role::Progress}}});
        QCOMPARE(told.count(), 1);
        QVERIFY(schedule_->isPending(DO_WIRE_ENABLE, Role::SwitchOff));
        QVERIFY(!schedule_->isPending(AO_LASER_POWER, Role::SwitchOff));
        QVERIFY(!schedule_->isPending(DO_WIRE_ENABLE, Role::Progress));
        QVERIFY(!schedule_->isPending(PortStep().port, PortStep().role));  // as a wake is made
        schedule_->dropProgress(AO_LASER_POWER);
        QCOMPARE(told.count(), 2);
        time_.advance(30);
        QCOMPARE(told.count(), 3);
    }
};

LUMO_TEST(TestSchedule)
#include "test_schedule.moc"
