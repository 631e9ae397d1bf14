#include "simulator/controller.h"

#include "bridge/nodes.h"
#include "bridge/registerwrite.h"
#include "kord/kordservice.h"
#include "mendo/clock.h"
#include "simulator/projectnodes.h"

#include <iterator>
#include <utility>

namespace sim {

namespace {

constexpr const char* quirks[] = {"bunch",     "sync",      "late",     "double",
                                  "wrongKind", "slowState", "noResult", "failAtEnd"};

MotionCommand::Kind wrongKind(MotionCommand::Kind kind) {
    switch (kind) {
        case MotionCommand::Kind::Joint:
            return MotionCommand::Kind::Line;
        case MotionCommand::Kind::Line:
            return MotionCommand::Kind::Arc;
        case MotionCommand::Kind::Arc:
            break;
    }
    return MotionCommand::Kind::Joint;
}

}  // namespace

Controller::Controller(KordService* service, const Options& options, QObject* parent)
    : Controller(service, std::make_unique<Backend>(options.axes, options.latency), options, parent) {}

Controller::Controller(KordService* service, std::unique_ptr<Backend> backend, const Options& options,
                       QObject* parent)
    : bridge::Adapter(service, options.robot ? options.robot : backend.get(), options.device,
                      {options.writeMulti, options.robot || options.device}, parent),
      backend_(std::move(backend)),
      device_(options.device),
      inputs_((options.robot ? options.robot : backend_.get())->signalPort()),
      isOutside_(options.robot),
      writes_(options.latency.writeMs, nullptr) {
    const QVector<bridge::SignalRow> rows = device_ ? device_->rows() : QVector<bridge::SignalRow>();
    for (const bridge::SignalRow& row : rows) {
        deviceNames_.insert(row.name);
    }
    connect(&writes_, &DelayLine::emptied, this, &Controller::caughtUp);
    connect(backend_.get(), &Backend::caughtUp, this, &Controller::caughtUp);
    fillProjectNodes(this);
    start();
}

Controller::~Controller() = default;

void Controller::setPower(bool on) {
    if (!on || !emergencyStop_) {
        bridge::Adapter::setPower(on);
    }
}

void Controller::setEmergencyStop(bool pressed) {
    if (pressed == emergencyStop_) {
        return;
    }
    emergencyStop_ = pressed;
    if (pressed) {
        bridge::Adapter::setPower(false);
    }
    emit emergencyStopChanged(pressed);
}

void Controller::setMode(const QString& mode) {
    bridge::Adapter::setMode(mode == bridge::modeWord(bridge::Mode::Auto) ? bridge::Mode::Auto
                                                                          : bridge::Mode::Manual);
}

/// The device's, where it offers the name; else the robot's.
bridge::SignalPort* Controller::portOf(const QString& name) const {
    return deviceNames_.contains(name.section(QLatin1String(".#"), 0, 0)) ? device_ : inputs_;
}

bool Controller::takesInput(const QString& name) const {
    return portOf(name)->metaObject()->indexOfMethod("setInput(QString,bool)") >= 0;
}

bool Controller::setInput(const QString& name, bool value) {
    bool isSet = false;
    if (!takesInput(name)) {
        return false;
    }
    QMetaObject::invokeMethod(portOf(name), "setInput", Qt::DirectConnection, Q_RETURN_ARG(bool, isSet),
                              Q_ARG(QString, name), Q_ARG(bool, value));
    return isSet;
}

void Controller::failMotion(int code) {
    if (code < 0) {
        backend_->failMotion(code);
    }
}

JogAnswer Controller::jog(JogAxis axis, double step) {
    return jog(baseStep(axis, step));
}

JogAnswer Controller::checkPoseMove(const PoseMove& move) const {
    if (isOutside_) {
        return JogAnswer::NotOffered;
    }
    MotionCommand ignored;
    return backend_->planPoseMoveNow(move, &ignored);
}

JogAnswer Controller::moveToPose(const PoseMove& move) {
    if (isOutside_) {
        return JogAnswer::NotOffered;
    }
    MotionCommand motion;
    const JogAnswer answer = backend_->planPoseMoveNow(move, &motion);
    if (answer == JogAnswer::Moves) {
        backend_->orderJog(std::move(motion));
    }
    return answer;
}

void Controller::setQuirk(Quirk quirk, bool on) {
    if (quirk == Quirk::WrongKind) {
        wrongKind_ = on;
    } else {
        backend_->setQuirk(quirk, on);
    }
}

bool Controller::quirkFromName(const QString& name, Quirk* quirk) {
    for (size_t i = 0; i < std::size(quirks); ++i) {
        if (name == QLatin1String(quirks[i])) {
            *quirk = Quirk(i);
            return true;
        }
    }
    return false;
}

bool Controller::reportKey(const QString& name, bool value) {
    return bridge::writeKey(this, name, !value);
}

bool Controller::standsStill() const {
    return (isOutside_ ? bridge::Adapter::standsStill() : backend_->standsStill()) && writes_.idle();
}

MotionPlan::Posture Controller::posture() const {
    return isOutside_ ? bridge::Adapter::posture() : bridge::roundedPosture(backend_->posture());
}

double Controller::travelled() const {
    return isOutside_ ? bridge::Adapter::travelled() : backend_->travelled();
}

double Controller::postureMs() const {
    return isOutside_ ? bridge::Adapter::postureMs() : double(mendo::Clock::current().elapsedMs());
}

void Controller::write(const QString& command, const std::vector<bridge::RegisterWrite>& records) {
    // What the records name is checked when the write takes effect.
    writes_.run([this, command, records] { bridge::Adapter::write(command, records); });
}

QString Controller::resultCommand(bridge::Motion::Kind kind) const {
    return bridge::Adapter::resultCommand(wrongKind_ ? wrongKind(kind) : kind);
}

}  // namespace sim
