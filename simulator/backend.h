#pragma once

#include "bridge/controller.h"
#include "simulator/jog.h"
#include "simulator/latency.h"
#include "simulator/motionqueue.h"
#include "simulator/quirk.h"
#include "simulator/resultsender.h"
#include "simulator/signalboard.h"

#include <QSet>

namespace sim {

/// A simulated robot controller: an arm that moves through a motion queue, and signals. It knows nothing of
/// the robot service and of packages. Time comes from Qt timers and the host's clock only.
///
/// Results are those of MotionCode. The motions before one that cannot be made are carried out, up to
/// their exact target. reset() and stop() both empty the queue and brake a moving arm. Speeds
/// are those of the tool, in joint motions too; for a motion that mostly turns the tool see turnRadius.
class Backend : public bridge::Controller {
    Q_OBJECT
public:
    Backend(int axes, const Latency& latency, QObject* parent = nullptr);

    int axes() const override { return arm_.axes(); }
    bridge::Abilities abilities() const override { return {true, true, true, true, true}; }
    SignalBoard* signalPort() override { return &signals_; }
    void start() override;
    void queue(const bridge::Motion& motion) override;
    void release() override;
    void stop() override;
    void setPower(bool on) override;
    void setMode(bridge::Mode mode) override;
    bridge::JogAnswer startJog(const bridge::JogMove& move, bool held) override;
    void stopJog() override;

    bool isOn() const { return powered_; }
    /// The next motion fails, or the one under way; see MotionQueue::fail().
    void failMotion(int code) { queue_.fail(code); }
    /// A jog to a pose; does not wait for results that are still to be sent.
    JogAnswer planPoseMoveNow(const PoseMove& move, MotionCommand* motion) const;
    void orderJog(MotionCommand motion);
    void setQuirk(Quirk quirk, bool on);
    /// Cuts or restores the link to it, as a broken cable does; the arm stops by itself.
    Q_INVOKABLE bool cutLink(bool cut);

    /// No motion, no braking, and nothing still to be told.
    bool standsStill() const;
    MotionQueue::Posture posture() const { return queue_.posture(); }
    double travelled() const { return queue_.travelled(); }
    const Arm& arm() const { return arm_; }

signals:
    /// What a latency had delayed has been told.
    void caughtUp();

private:
    void connectQueue();
    void announce(int id, bridge::MotionEvent event);
    void showPosture();
    void setMoving(bool moving);
    void onFinished(int id, int code);
    void onStopped(int id);
    void onBraked();

    Arm arm_;
    SignalBoard signals_;
    MotionQueue queue_;
    ResultSender results_;
    DelayLine postures_;
    bool powered_ = true;
    bool linked_ = true;
    bool jogging_ = false;
    QSet<int> answered_;  ///< motions that get no result when they end (Quirk::Sync, Quirk::NoResult)
    bool sync_ = false, late_ = false, slowState_ = false;
    bool nextWithoutResult_ = false, nextFailsAtEnd_ = false;
    bool moving_ = false;  ///< the true state; it may be told later (Quirk::SlowState)
    int pendingStates_ = 0;
    bridge::Mode mode_ = bridge::Mode::Auto;
};

}  // namespace sim
