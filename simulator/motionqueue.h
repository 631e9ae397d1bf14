#pragma once

#include "simulator/latency.h"
#include "simulator/motionplan.h"

#include <QObject>
#include <QTimer>

#include <deque>
#include <optional>

namespace sim {

/// Carries out the arm's motions in time.
///
/// Motions wait until they are released as a batch. Motions of a batch are blended; the next batch
/// starts from standstill after it. Results come one by one, at least 1 ms apart and never inside a
/// call of add() or release(). moving() is already false at the last one. Times are those of the host's
/// clock.
class MotionQueue : public QObject {
    Q_OBJECT
public:
    using Posture = MotionPlan::Posture;

    /// `arm` must outlive the queue. It starts at home. Of the latency, start, period and corners are its
    /// own.
    MotionQueue(const Arm& arm, QObject* parent, const Latency& latency = {});
    ~MotionQueue() override;

    void add(MotionCommand motion);
    bool hasWaiting() const { return !waiting_.empty(); }
    /// Starts the waiting motions as a batch. With a `refusal` the first one ends with that code.
    void release(int refusal = MotionDone);
    /// Brakes along the path with 4 m/s² and forgets all motions. No result follows.
    void stop();
    /// The arm brakes, the current motion ends with `code`, and the others are forgotten. Without a
    /// current motion, the first of the next release ends with it.
    void fail(int code);

    /// The arm moves or brakes, or a result is still to come.
    bool moving() const { return !batches_.empty(); }
    Posture posture() const;
    /// Tool path since construction, metres.
    double travelled() const;

signals:
    void started(int id);
    void passed(int id);
    void stopped(int id, sim::MotionCommand::Kind kind);
    void dropped(int id);
    void failed(int id);
    /// A motion's result, emitted last. The receiver may call any function of the queue.
    void finished(int id, sim::MotionCommand::Kind kind, int code);
    /// The arm has come to rest after stop().
    void braked();
    /// Every 10 ms of motion, or as often as the latency says.
    void ticked();

private:
    struct Batch {
        MotionPlan plan;
        qint64 startMs = 0;  ///< of its movement
        size_t next = 0;     ///< index of the next mark

        bool hasMarkToPass() const;
    };
    struct Brake {
        qint64 startMs = 0;
        double s = 0, speed = 0;
        std::optional<MotionPlan::Failure> failure;  ///< reported when the arm stands

        double seconds() const;
        double at(double time) const;
    };
    struct ActiveMotion {
        int id;
        MotionCommand::Kind kind;
    };
    std::optional<ActiveMotion> activeMotion() const;
    std::vector<int> takeQueued();
    Posture endPosture() const;
    double position() const;
    void startBatch();
    void finishFrontBatch(const Posture& posture, double s);
    void beginBrake(const std::optional<MotionPlan::Failure>& failure);
    std::optional<qint64> nextDue() const;
    void scheduleNext();
    void advance();
    void passMark();
    void endBrake();
    void endFailed();
    void report(const MotionPlan::Failure& failure, const std::vector<int>& queued);
    void drop(const std::vector<int>& ids);

    const Arm& arm_;
    const Latency latency_;
    std::vector<MotionCommand> waiting_;
    std::deque<Batch> batches_;
    std::optional<Brake> brake_;
    int nextCode_ = MotionDone;
    Posture posture_;
    double travelled_ = 0;  ///< in the finished batches
    qint64 lastResultMs_ = 0;
    QTimer tick_, event_;
};

}  // namespace sim
