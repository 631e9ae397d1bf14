#include "bridge/linuxcnc/linuxcnc.h"

#include "mendo/clock.h"

#include <QJsonArray>

#include <chrono>
#include <utility>

namespace bridge {

using linuxcnc::jogId;
using linuxcnc::MachineState;
using linuxcnc::Place;
using linuxcnc::Progress;

namespace {

constexpr int resultGapMs = 1;
constexpr int stateSilenceMs = 500;  // of the state, which comes at least each 4 ms
constexpr double msPerS = 1000;
constexpr int mostBatches = 30000;  // LinuxCNC's motion keeps the number as a float
/// So long an order may go without an answer; homing with the first power on takes longest.
constexpr int answerMs = 10000, powerAnswerMs = 45000;

/// motion.py's clock, on the same machine.
double monotonicS() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

Pose poseOf(const KDL::Frame& frame) {
    const kin::Pose pose = kin::toPose(frame);
    return {pose.trans, pose.rot};
}

}  // namespace

LinuxCnc::LinuxCnc(quint16 port, QObject* parent)
    : Controller(parent),
      arm_(6),
      signals_(quint16(port + 1), this),
      commands_(port, 0, this),
      states_(quint16(port + 2), stateSilenceMs, this) {
    connect(&signals_, &linuxcnc::HalPort::opened, this, &LinuxCnc::onOpened);
    connect(&signals_, &linuxcnc::HalPort::closed, this, &LinuxCnc::onClosed);
    connect(&signals_, &linuxcnc::HalPort::heartbeatMissed, this, &LinuxCnc::onHeartbeatMissed);
    for (linuxcnc::JsonLink* link : {&commands_, &states_}) {
        connect(link, &linuxcnc::JsonLink::opened, this, &LinuxCnc::onOpened);
        connect(link, &linuxcnc::JsonLink::closed, this, &LinuxCnc::onClosed);
    }
    connect(&commands_, &linuxcnc::JsonLink::refused, this, &LinuxCnc::onRefused);
    next_.setSingleShot(true);
    next_.setInterval(resultGapMs);
    next_.setTimerType(Qt::PreciseTimer);
    connect(&next_, &QTimer::timeout, this, &LinuxCnc::tellDue);
    connect(&commands_, &linuxcnc::JsonLink::received, this, &LinuxCnc::onAnswer);
    connect(&states_, &linuxcnc::JsonLink::received, this,
            [this](const QJsonObject& line) { onStateLine(line); });
    unanswered_.setSingleShot(true);
    connect(&unanswered_, &QTimer::timeout, this, [this] {
        onClosed({LinkReason::Kind::NoAnswer, QStringLiteral("LinuxCNC")});
    });
}

Abilities LinuxCnc::abilities() const {
    Abilities abilities;
    abilities.jog = abilities.power = abilities.mode = true;
    return abilities;
}

void LinuxCnc::start() {
    commands_.open();
    states_.open();
}

QJsonObject LinuxCnc::order(const char* name) {
    return {{QStringLiteral("op"), QLatin1String(name)}, {QStringLiteral("id"), ++orders_}};
}

/// An order must be answered in time: where a stop is not carried out the arm moves on, and only the signals'
/// heartbeat can hold it.
void LinuxCnc::send(const QJsonObject& message) {
    commands_.send(message);
    if (!unanswered_.isActive()) {
        awaitAnswer();
    }
}

void LinuxCnc::awaitAnswer() {
    unanswered_.start(powerOrder_ != 0 ? powerAnswerMs : answerMs);
}

// --- The link ------------------------------------------------------------------------------------

void LinuxCnc::onOpened() {
    state_.reset();
    validFrom_ = 0;
    stopOrder_ = 0;
    powerOrder_ = 0;
    isMissed_ = false;
    isStopping_ = false;
    unanswered_.stop();
}

/// One lost connection takes the others down: rio.py then switches everything off, motion.py stops the arm.
void LinuxCnc::onClosed(const LinkReason& reason) {
    const bool wasLinked = std::exchange(linked_, false);
    state_.reset();
    isStopping_ = false;
    unanswered_.stop();
    forgetMotions();
    commands_.close(reason);
    states_.close(reason);
    signals_.close(reason);
    if (wasLinked) {
        moving_ = on_ = false;
        told_ = reason;
        emit linkChanged(false, reason);
    }
}

void LinuxCnc::onRefused(const LinkReason& reason) {
    if (!linked_ && reason.kind != told_.kind) {
        told_ = reason;
        emit linkChanged(false, reason);
    }
}

bool LinuxCnc::cutLink(bool cut) {
    if (cut) {
        commands_.rest();
        states_.rest();
        signals_.rest();
    } else {
        signals_.start();
        start();
    }
    return true;
}

/// The outputs are off and the arm holds. The drives go off, so that only the operator goes on from here.
/// Where nothing was on and nothing moved, nothing was lost.
void LinuxCnc::onHeartbeatMissed(int busyMs, bool wasOn) {
    if (!linked_) {
        return;
    }
    if (!wasOn && sent_.empty() && !moving_) {
        signals_.arm();
        return;
    }
    linked_ = false;
    isMissed_ = true;
    told_ = {LinkReason::Kind::NoHeartbeat, QStringLiteral("LinuxCNC"), {}, busyMs};
    emit linkChanged(false, told_);
    stop();
    setPower(false);
}

/// Up once all three connections stand and tell.
void LinuxCnc::tellLink() {
    isMissed_ = isMissed_ && state_->on;
    if (linked_ || isMissed_ || !commands_.isOpen() || !states_.isOpen() || !signals_.isOpen()) {
        return;
    }
    linked_ = true;
    number_ = state_->batch;  // of another client's last batch
    on_ = state_->on && state_->homed;
    emit powerChanged(on_);
    emit modeChanged(mode_);
    tellPosture();
    told_ = {};
    emit linkChanged(true, {});
}

// --- Orders --------------------------------------------------------------------------------------

void LinuxCnc::setPower(bool on) {
    if (on) {
        signals_.arm();
    }
    QJsonObject message = order("power");
    message[QStringLiteral("on")] = on;
    powerOrder_ = orders_;
    send(message);
}

void LinuxCnc::setMode(Mode mode) {
    mode_ = mode;
    emit modeChanged(mode);
}

void LinuxCnc::release() {
    if (waiting_.empty()) {
        return;
    }
    Motions motions = std::exchange(waiting_, {});
    stopJog();
    if (stopOrder_ != 0 || !state_ || state_->clock < validFrom_) {
        held_.push_back(std::move(motions));
    } else {
        sendBatch(motions);
    }
}

void LinuxCnc::stop() {
    dropTold();
    const bool stands = standsStill();
    forgetMotions();
    if (stands) {
        emit movingChanged(false);
        return;
    }
    const QJsonObject message = order("stop");
    stopOrder_ = orders_;
    isStopping_ = true;
    send(message);
}

void LinuxCnc::forgetMotions() {
    waiting_.clear();
    held_.clear();
    sent_.clear();
    heldJog_.reset();
    end_.reset();
}

/// Where the next batch begins.
Place LinuxCnc::place() const {
    if (end_) {
        return *end_;
    }
    const kin::Joints joints = state_->homed ? linuxcnc::jointsOf(state_->joints) : arm_.home();
    Place place = linuxcnc::placeAt(arm_, joints);
    if (state_->homed && !state_->jointMode) {
        place.axes = linuxcnc::axesNear(place.torch, state_->axes);
    }
    return place;
}

void LinuxCnc::sendBatch(const Motions& motions) {
    Place end = place();
    linuxcnc::Batch batch = linuxcnc::writeBatch(arm_, motions, &end);
    end_ = end;
    number_ = number_ % mostBatches + 1;
    if (!batch.lines.isEmpty()) {
        QJsonObject message = order("batch");
        message[QStringLiteral("b")] = number_;
        message[QStringLiteral("lines")] = QJsonArray::fromStringList(batch.lines);
        send(message);
    }
    hasMoved_ = hasMoved_ && !sent_.empty();
    sent_.emplace_back(number_, std::move(batch));
}

void LinuxCnc::onAnswer(const QJsonObject& answer) {
    const QString name = answer[QLatin1String("op")].toString();
    const int id = answer[QLatin1String("ack")].toInt();
    const bool isDone = answer[QLatin1String("ok")].toBool();
    if (id == orders_) {
        unanswered_.stop();
    } else {
        awaitAnswer();
    }
    if (name == QLatin1String("power")) {
        powerOrder_ = id == powerOrder_ ? 0 : powerOrder_;
        validFrom_ = answer[QLatin1String("t")].toDouble();
        if (!isDone) {
            emit powerChanged(on_);
        }
    } else if (name == QLatin1String("stop") && id == stopOrder_) {
        stopOrder_ = 0;
        validFrom_ = answer[QLatin1String("t")].toDouble();
    } else if (name == QLatin1String("batch") && !isDone && !sent_.empty()) {
        fail(sent_.front().currentId(), DriveOff);
    }
}

// --- State ---------------------------------------------------------------------------------------

/// A line without a position, as of a joint that has none, is no state: the arm is not at home then.
void LinuxCnc::onStateLine(const QJsonObject& line) {
    if (const std::optional<MachineState> state = MachineState::read(line)) {
        onState(*state);
    } else {
        states_.close(
            {LinkReason::Kind::Lost, QStringLiteral("LinuxCNC"), QStringLiteral("it tells no position")});
    }
}

/// A slot connected to a signal that is emitted here may end the link.
void LinuxCnc::onState(const MachineState& state) {
    const bool isNew = !state_ || state.joints != state_->joints || state.homed != state_->homed;
    state_ = state;
    tellLink();
    if (!linked_) {
        return;
    }
    // Also while the arm still stands before a batch: it shows when it begins to move. Then the same posture
    // again means that LinuxCNC was held up.
    const bool isBefore = !sent_.empty() && !hasMoved_;
    hasMoved_ = hasMoved_ || isNew;
    if (isNew || isBefore) {
        tellPosture();
    }
    if (linked_) {
        tellPower();
    }
    if (!linked_ || stopOrder_ != 0 || state.clock < validFrom_) {
        return;
    }
    if (!state.errors.isEmpty() && !sent_.empty()) {
        failByError(state.errors);
        return;
    }
    follow();
    tellDue();
}

void LinuxCnc::tellPosture() {
    const kin::Joints joints = state_->homed ? linuxcnc::jointsOf(state_->joints) : arm_.home();
    hasPosture_ = true;
    const double hostMs = double(mendo::Clock::current().elapsedMs());
    const double ageMs = clockGap_.age(state_->clock * msPerS, monotonicS() * msPerS, hostMs);
    emit postureChanged({poseOf(kin::toFrame(arm_.forward(joints))), joints, ageMs});
}

void LinuxCnc::tellPower() {
    const bool isOn = state_->on && state_->homed;
    if (isOn == on_ || (isOn && powerOrder_ != 0)) {
        return;
    }
    on_ = isOn;
    if (!isOn) {
        forgetMotions();
    }
    emit powerChanged(isOn);
}

/// Behind each stop the standstill, also where the arm had not begun to move.
void LinuxCnc::tellMoving(bool moving) {
    const bool endsStop = !moving && std::exchange(isStopping_, false);
    if (std::exchange(moving_, moving) != moving || endsStop) {
        emit movingChanged(moving);
    }
}

/// Which motions have ended; the batch behind one that has ended comes next.
void LinuxCnc::follow() {
    const KDL::Vector tool = kin::toFrame(arm_.forward(linuxcnc::jointsOf(state_->joints))).p;
    bool isUnderWay = false;
    for (Progress& progress : sent_) {
        isUnderWay = isUnderWay || (progress.hasBegun(*state_) && !state_->idle);
        progress.follow(*state_, tool);
    }
    if (isUnderWay) {
        tellMoving(true);
    }
}

/// Tells what is due, one result at a time: the posture before each, and a millisecond between two. A
/// receiver may order, stop or lose anything meanwhile.
void LinuxCnc::tellDue() {
    if (next_.isActive() || !linked_ || !state_ || stopOrder_ != 0 || state_->clock < validFrom_) {
        return;
    }
    dropTold();
    if (sent_.empty()) {
        if (state_->idle) {
            tellMoving(false);
            settle();
        }
        return;
    }
    Progress& progress = sent_.front();
    // The last motion ends when the arm stands, or when the next batch begins.
    const bool isLast = sent_.size() == 1 && progress.untold() == 1;
    if (progress.isTold() ? !state_->idle : progress.due() == 0 || (isLast && !state_->idle)) {
        return;
    }
    next_.start();
    const bool stands = progress.isTold() || (isLast && progress.batch().failedId == 0 && !progress.isJog());
    if (!tellBefore(stands)) {
        return;
    }
    if (progress.isTold()) {
        fail(progress.batch().failedId, progress.batch().failure);
        return;
    }
    if (progress.isJog()) {
        endJog();
        return;
    }
    hasPosture_ = false;
    emit finished(progress.tell(), MotionDone);
}

/// Batches whose motions are all told.
void LinuxCnc::dropTold() {
    while (!sent_.empty() && sent_.front().isTold() && sent_.front().batch().failedId == 0) {
        sent_.pop_front();
    }
}

/// What comes before a result of the first batch. False where a receiver of it has stopped or lost that
/// batch.
bool LinuxCnc::tellBefore(bool stands) {
    const int number = sent_.front().number();
    const auto isThere = [this, number] { return !sent_.empty() && sent_.front().number() == number; };
    if (!hasPosture_) {
        tellPosture();
    }
    if (stands && isThere()) {
        tellMoving(false);
    }
    return isThere();
}

/// The motion fails; all behind it is dropped.
void LinuxCnc::fail(int id, int code) {
    forgetMotions();
    hasPosture_ = false;
    if (id != jogId) {
        emit finished(id, code);
    }
}

/// LinuxCNC finds an error when it reads ahead, and breaks the motion under way off.
void LinuxCnc::failByError(const QStringList& errors) {
    const int id = sent_.front().currentId();
    const int code = linuxcnc::errorCode(errors.first());
    qWarning("LinuxCNC: %s", qUtf8Printable(errors.join(QStringLiteral("; "))));
    stop();
    if (id != jogId) {
        emit finished(id, code);
    }
}

/// The arm stands and nothing is under way: what was released during a stop is sent.
void LinuxCnc::settle() {
    const std::vector<Motions> held = std::exchange(held_, {});
    for (const Motions& motions : held) {
        sendBatch(motions);
    }
}

}  // namespace bridge
