#include "bridge/linuxcnc/linuxcnc.h"

#include <QJsonArray>

#include <utility>

namespace bridge {

using linuxcnc::MachineState;
using linuxcnc::Place;
using linuxcnc::Progress;

namespace {

constexpr int stateSilenceMs = 500;  // of the state, which comes each 10 ms
constexpr int mostBatches = 30000;   // LinuxCNC's motion keeps the number as a float

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
    connect(&commands_, &linuxcnc::JsonLink::received, this, &LinuxCnc::onAnswer);
    connect(&states_, &linuxcnc::JsonLink::received, this,
            [this](const QJsonObject& line) { onState(MachineState::read(line)); });
}

Abilities LinuxCnc::abilities() const {
    Abilities abilities;
    abilities.power = abilities.mode = true;
    return abilities;
}

void LinuxCnc::start() {
    commands_.open();
    states_.open();
}

QJsonObject LinuxCnc::order(const char* name) {
    return {{QStringLiteral("op"), QLatin1String(name)}, {QStringLiteral("id"), ++orders_}};
}

// --- The link ------------------------------------------------------------------------------------

void LinuxCnc::onOpened() {
    state_.reset();
    validFrom_ = 0;
    stopOrder_ = 0;
    powerOrder_ = 0;
    isMissed_ = false;
}

/// One lost connection takes the others down: rio.py then switches everything off, motion.py stops the arm.
void LinuxCnc::onClosed(const QString& reason) {
    const bool wasLinked = std::exchange(linked_, false);
    state_.reset();
    forgetMotions();
    commands_.close(reason);
    states_.close(reason);
    signals_.close(reason);
    if (wasLinked) {
        moving_ = on_ = false;
        emit linkChanged(false, reason);
    }
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
    emit linkChanged(
        false, QStringLiteral("LinuxCNC has switched the outputs off: no heartbeat for 80 ms (here for %1)")
                   .arg(busyMs));
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
    commands_.send(message);
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
    if (stopOrder_ != 0 || !state_ || state_->clock < validFrom_) {
        held_.push_back(std::move(motions));
    } else {
        sendBatch(motions);
    }
}

void LinuxCnc::stop() {
    const bool stands = sent_.empty() && !moving_ && stopOrder_ == 0;
    forgetMotions();
    if (stands) {
        emit movingChanged(false);
        return;
    }
    const QJsonObject message = order("stop");
    stopOrder_ = orders_;
    commands_.send(message);
}

void LinuxCnc::forgetMotions() {
    waiting_.clear();
    held_.clear();
    sent_.clear();
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
        commands_.send(message);
    }
    sent_.emplace_back(number_, std::move(batch));
}

void LinuxCnc::onAnswer(const QJsonObject& answer) {
    const QString name = answer[QLatin1String("op")].toString();
    const int id = answer[QLatin1String("ack")].toInt();
    const bool isDone = answer[QLatin1String("ok")].toBool();
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

void LinuxCnc::onState(const MachineState& state) {
    const bool isNew = !state_ || state.joints != state_->joints || state.homed != state_->homed;
    state_ = state;
    tellLink();
    if (!linked_) {
        return;
    }
    if (isNew) {
        tellPosture();
    }
    tellPower();
    if (stopOrder_ != 0 || state.clock < validFrom_) {
        return;
    }
    if (!state.errors.isEmpty() && !sent_.empty()) {
        failByError(state.errors);
        return;
    }
    tellEnded();
    if (sent_.empty() && stopOrder_ == 0 && state.idle) {
        tellMoving(false);
        settle();
    }
}

void LinuxCnc::tellPosture() {
    const kin::Joints joints = state_->homed ? linuxcnc::jointsOf(state_->joints) : arm_.home();
    emit postureChanged({poseOf(kin::toFrame(arm_.forward(joints))), joints});
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

void LinuxCnc::tellMoving(bool moving) {
    if (moving != moving_) {
        moving_ = moving;
        emit movingChanged(moving);
    }
}

/// Whether the arm stands and nothing follows on the batch under way.
bool LinuxCnc::standsBehindLast() const {
    return sent_.size() == 1 && state_->idle && sent_.front().isDone(*state_);
}

/// Tells the motions that have ended; a receiver may order, stop or lose anything meanwhile.
void LinuxCnc::tellEnded() {
    while (!sent_.empty() && state_) {
        Progress& progress = sent_.front();
        if (progress.hasBegun(*state_) && !state_->idle) {
            tellMoving(true);
        }
        const kin::Joints joints = linuxcnc::jointsOf(state_->joints);
        const int before = progress.told();
        const int ended = progress.ended(*state_, kin::toFrame(arm_.forward(joints)).p);
        const int count = int(progress.batch().targets.size());
        const bool isLast = ended == count;
        // The last motion ends when the arm stands, or when the next batch begins.
        const bool waits = isLast && sent_.size() == 1 && !state_->idle;
        if (before < ended - (waits ? 1 : 0)) {
            const int id = progress.tell();
            if (before + 1 == count && standsBehindLast() && progress.batch().failedId == 0) {
                tellMoving(false);
            }
            emit finished(id, MotionDone);
            continue;
        }
        if (waits || !isLast || !progress.isDone(*state_)) {
            return;
        }
        const int failedId = progress.batch().failedId, failure = progress.batch().failure;
        if (failedId == 0) {
            sent_.pop_front();
            continue;
        }
        if (!state_->idle) {
            return;
        }
        tellMoving(false);
        fail(failedId, failure);
        return;
    }
}

/// The motion fails; all behind it is dropped.
void LinuxCnc::fail(int id, int code) {
    forgetMotions();
    emit finished(id, code);
}

/// LinuxCNC finds an error when it reads ahead, and breaks the motion under way off.
void LinuxCnc::failByError(const QStringList& errors) {
    const int id = sent_.front().currentId();
    const int code = linuxcnc::errorCode(errors.first());
    qWarning("LinuxCNC: %s", qUtf8Printable(errors.join(QStringLiteral("; "))));
    stop();
    emit finished(id, code);
}

/// The arm stands and nothing is under way: what was released during a stop is sent.
void LinuxCnc::settle() {
    const std::vector<Motions> held = std::exchange(held_, {});
    for (const Motions& motions : held) {
        sendBatch(motions);
    }
}

}  // namespace bridge
