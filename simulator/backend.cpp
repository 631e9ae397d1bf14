#include "simulator/backend.h"

#include "kinematics/jog.h"

#include <QTimer>

#include <utility>

namespace sim {

namespace {

constexpr int lateMs = 300;
constexpr int slowStateMs = 50;

}  // namespace

Backend::Backend(int axes, const Latency& latency, QObject* parent)
    : bridge::Controller(parent),
      arm_(axes),
      queue_(arm_, nullptr, latency),
      results_(latency.resultMs, nullptr),
      postures_(latency.postureMs, nullptr) {
    connect(&results_, &ResultSender::due, this, &Backend::finished);
    connect(&results_, &ResultSender::caughtUp, this, &Backend::caughtUp);
    connect(&postures_, &DelayLine::emptied, this, &Backend::caughtUp);
    connectQueue();
}

void Backend::connectQueue() {
    using bridge::MotionEvent;
    connect(&queue_, &MotionQueue::started, this, [this](int id) { announce(id, MotionEvent::Started); });
    connect(&queue_, &MotionQueue::passed, this, [this](int id) { announce(id, MotionEvent::Passed); });
    connect(&queue_, &MotionQueue::dropped, this, [this](int id) {
        answered_.remove(id);
        announce(id, MotionEvent::Dropped);
    });
    connect(&queue_, &MotionQueue::failed, this, [this](int id) { announce(id, MotionEvent::Failed); });
    connect(&queue_, &MotionQueue::stopped, this, &Backend::onStopped);
    connect(&queue_, &MotionQueue::finished, this,
            [this](int id, MotionCommand::Kind, int code) { onFinished(id, code); });
    connect(&queue_, &MotionQueue::braked, this, &Backend::onBraked);
    connect(&queue_, &MotionQueue::ticked, this, [this] {
        showPosture();
        emit postureMoved();
    });
}

void Backend::start() {
    emit postureChanged(queue_.posture());
    emit powerChanged(powered_);
    emit modeChanged(mode_);
    emit linkChanged(true, {});
}

// --- Orders --------------------------------------------------------------------------------------

void Backend::queue(const bridge::Motion& motion) {
    MotionCommand command{motion};
    const bool fails = std::exchange(nextFailsAtEnd_, false);
    const bool silent = std::exchange(nextWithoutResult_, false);
    if (fails) {
        command.endCode = FailedAtEnd;
    }
    if (silent) {
        answered_.insert(motion.id);
    }
    queue_.add(std::move(command));
    if (sync_ && !fails && !silent) {
        answered_.insert(motion.id);
        results_.deliver({motion.id, MotionDone}, true);
    }
}

void Backend::release() {
    if (!queue_.hasWaiting()) {
        return;
    }
    if (powered_) {
        setMoving(true);
    }
    queue_.release(powered_ ? MotionDone : DriveOff);
}

void Backend::stop() {
    results_.forgetHeld();
    queue_.stop();
    if (!queue_.moving() && pendingStates_ == 0) {
        emit movingChanged(false);
    }
}

void Backend::setPower(bool on) {
    if (!linked_) {
        return;
    }
    powered_ = on;
    if (!on) {
        stop();
    }
    emit powerChanged(on);
}

void Backend::setMode(bridge::Mode mode) {
    mode_ = mode;
    emit modeChanged(mode);
}

bool Backend::cutLink(bool cut) {
    if (cut == !linked_) {
        return true;
    }
    linked_ = !cut;
    if (cut) {
        powered_ = false;
        stop();
        emit linkChanged(false, {bridge::LinkReason::Kind::Cut, {}});
    } else {
        powered_ = true;
        start();
    }
    return true;
}

// --- Jogs ----------------------------------------------------------------------------------------

JogAnswer Backend::startJog(const JogMove& move, bool held) {
    if (!powered_) {
        return JogAnswer::DriveOff;
    }
    const MotionQueue::Posture from = queue_.posture();
    MotionCommand command;
    const JogMove whole = held ? kin::farthestJog(arm_, from, move) : move;
    const JogAnswer answer = kin::planJog(arm_, from, whole, &command);
    if (answer == JogAnswer::Moves) {
        orderJog(std::move(command));
    }
    return answer;
}

JogAnswer Backend::planPoseMoveNow(const PoseMove& move, MotionCommand* motion) const {
    if (!powered_) {
        return JogAnswer::DriveOff;
    }
    if (queue_.moving() || queue_.hasWaiting()) {
        return JogAnswer::Moving;
    }
    return planPoseMove(arm_, queue_.posture(), move, motion);
}

void Backend::orderJog(MotionCommand motion) {
    motion.id = jogId;
    queue_.add(std::move(motion));
    jogging_ = true;
    setMoving(true);
    queue_.release();
}

void Backend::stopJog() {
    if (jogging_) {
        queue_.stop();
    }
}

// --- What happens --------------------------------------------------------------------------------

void Backend::announce(int id, bridge::MotionEvent event) {
    if (id != jogId) {
        emit motion(id, event);
    }
}

void Backend::showPosture() {
    const MotionQueue::Posture now = queue_.posture();
    postures_.run([this, now] { emit postureChanged(now); });
}

void Backend::setMoving(bool moving) {
    if (moving == moving_) {
        return;
    }
    moving_ = moving;
    if (!slowState_ && pendingStates_ == 0) {
        emit movingChanged(moving);
        return;
    }
    ++pendingStates_;
    QTimer::singleShot(slowStateMs, Qt::PreciseTimer, this, [this, moving] {
        --pendingStates_;
        emit movingChanged(moving);
    });
}

void Backend::onFinished(int id, int code) {
    const bool last = !queue_.moving();
    showPosture();
    if (id == jogId) {
        jogging_ = false;
    }
    if (last) {
        emit cameToRest();
        setMoving(false);
    }
    if (id != jogId && !answered_.remove(id)) {
        results_.deliver({id, code}, last);
    } else if (last) {
        results_.deliverHeld();
    }
}

void Backend::onStopped(int id) {
    announce(id, bridge::MotionEvent::Stopped);
    if (id == jogId) {
        jogging_ = false;
    }
    results_.forgetHeld();
    if (id != jogId && !answered_.remove(id) && late_) {
        results_.deliverLater({id, MotionDone}, lateMs);
    }
}

void Backend::onBraked() {
    showPosture();
    if (!queue_.moving()) {
        emit cameToRest();
        setMoving(false);
    }
}

// --- Misbehaviour and state ----------------------------------------------------------------------

void Backend::setQuirk(Quirk quirk, bool on) {
    switch (quirk) {
        case Quirk::Bunch:
            results_.setBunch(on);
            break;
        case Quirk::Sync:
            sync_ = on;
            break;
        case Quirk::Late:
            late_ = on;
            break;
        case Quirk::Double:
            results_.setDouble(on);
            break;
        case Quirk::WrongKind:
            break;  // of the node, which a backend does not know
        case Quirk::SlowState:
            slowState_ = on;
            break;
        case Quirk::NoResult:
            nextWithoutResult_ = on;
            break;
        case Quirk::FailAtEnd:
            nextFailsAtEnd_ = on;
            break;
    }
}

bool Backend::standsStill() const {
    return !queue_.moving() && results_.idle() && pendingStates_ == 0 && postures_.idle();
}

}  // namespace sim
