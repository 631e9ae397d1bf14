#pragma once

#include "simulator/motionplan.h"

#include <QObject>
#include <QTimer>

#include <deque>
#include <optional>

namespace sim {

/// The motions of the arm, ordered and moved in time: batches that are blended within, followed by
/// each other, braked, refused.
///
/// Motions wait until they are released as a batch. A batch that is released while the arm moves
/// comes after the one before, from standstill. Results come one by one, never inside an order and at
/// least 1 ms apart, the last one when moving() is false already. Times are those of the host's clock.
class MotionQueue : public QObject {
    Q_OBJECT
public:
    using Stand = MotionPlan::Stand;

    /// `arm` must outlive the queue. The arm stands at home.
    MotionQueue(const Arm& arm, QObject* parent);
    ~MotionQueue() override;

    void add(MotionCommand motion);
    bool hasWaiting() const { return !waiting_.empty(); }
    /// Hands over what waits. A `refusal` other than MotionDone is what the first of it ends with.
    void release(int refusal = MotionDone);
    /// Brakes along the path with 4 m/s² and forgets all motions. Nothing is finished.
    void stop();
    /// The motion under way, else the first of the next release, ends with `code`: the arm brakes,
    /// then the motion is finished with it and the others are forgotten.
    void fail(int code);

    /// A motion is under way or braking, or a result is still to come.
    bool moving() const { return !batches_.empty(); }
    Stand stand() const;
    /// Tool path since construction, metres.
    double travelled() const;

signals:
    void started(int id);
    void passed(int id);
    void stopped(int id, sim::MotionCommand::Kind kind);
    void dropped(int id);
    void failed(int id);
    /// A result. The last thing that is done with a motion; anything may be called from it.
    void finished(int id, sim::MotionCommand::Kind kind, int code);
    /// The arm has come to rest after stop().
    void braked();
    /// Every 10 ms of motion.
    void ticked();

private:
    struct Batch {
        MotionPlan plan;
        qint64 startMs = 0;
        size_t next = 0;  ///< the mark to be passed next

        bool hasMarkToPass() const;
    };
    struct Brake {
        qint64 startMs = 0;
        double s = 0, speed = 0;
        std::optional<MotionPlan::Failure> failure;  ///< what to report at rest

        double seconds() const;
        double at(double time) const;
    };
    struct UnderWay {
        int id;
        MotionCommand::Kind kind;
    };
    std::optional<UnderWay> underWay() const;
    std::vector<int> takeQueued();
    Stand endStand() const;
    double position() const;
    void startBatch();
    void leaveFront(const Stand& stand, double s);
    void beginBrake(const std::optional<MotionPlan::Failure>& failure);
    std::optional<qint64> nextDue() const;
    void arm();
    void advance();
    void passMark();
    void endBrake();
    void endFailed();
    void report(const MotionPlan::Failure& failure, const std::vector<int>& queued);
    void drop(const std::vector<int>& ids);

    const Arm& arm_;
    std::vector<MotionCommand> waiting_;
    std::deque<Batch> batches_;
    std::optional<Brake> brake_;
    int nextCode_ = MotionDone;
    Stand stand_;
    double way_ = 0;  ///< of the batches behind
    qint64 lastResultMs_ = 0;
    QTimer tick_, event_;
};

}  // namespace sim
