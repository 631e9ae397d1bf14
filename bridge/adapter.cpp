#include "bridge/adapter.h"

#include "bridge/adapterprivate.h"
#include "bridge/motionreader.h"
#include "bridge/nodes.h"
#include "bridge/registerwrite.h"
#include "bridge/words.h"
#include "kord/kordservice.h"
#include "mendo/modulemanager.h"

namespace bridge {

namespace {

const QLatin1String coordToolset("pel.coord.toolset");

}  // namespace

Adapter::Private::Private(Adapter* adapter, KordService* robotService, Controller* robot,
                          SignalPort* ioDevice, const Options& theOptions)
    : q(adapter),
      service(robotService),
      backend(robot),
      device(ioDevice),
      options(theOptions),
      abilities(robot->abilities()),
      bank(robotService, robot->signalPort(), ioDevice, adapter),
      results({theOptions.repair, !abilities.progress}, adapter),
      batch(robot, &results, abilities.refusals),
      link(ioDevice != nullptr) {}

void Adapter::Private::connectParts() {
    connect(service, &KordService::issued, q, [this](const KordCall& call) { handle(call); });
    connect(service, &KordService::handed, q,
            [this](const QString& path, const mendo::ModuleObject* node) { onHanded(path, node); });
    connect(&bank, &SignalBank::outputChanged, q, &Adapter::outputChanged);
    connect(&bank, &SignalBank::inputChanged, q, &Adapter::inputChanged);
    connect(&bank, &SignalBank::rejected, q, &Adapter::rejected);
    connect(&bank, &SignalBank::answered, q, &Adapter::caughtUp);
    connect(&results, &Results::violated, q, &Adapter::violated);
    connect(&results, &Results::happened, q, &Adapter::motion);
    connect(&results, &Results::due, q,
            [this](Motion::Kind kind, int id, int code) { onResult(kind, id, code); });
}

void Adapter::Private::connectBackend() {
    connect(backend, &Controller::finished, q, [this](int id, int code) { results.take(id, code); });
    connect(backend, &Controller::postureChanged, q, [this](const Posture& told) { onPosture(told); });
    connect(backend, &Controller::movingChanged, q, [this](bool on) { onMoving(on); });
    connect(backend, &Controller::powerChanged, q, [this](bool on) { onPower(on); });
    connect(backend, &Controller::modeChanged, q, [this](Mode told) { onMode(told); });
    connect(backend, &Controller::keyChanged, q,
            [this](const QString& name, bool pressed) { writeKey(q, name, pressed); });
    connect(backend, &Controller::linkChanged, q,
            [this](bool up, const LinkReason& reason) { onLink(LinkEnd::Robot, up, reason); });
    if (device) {
        connect(device, &SignalPort::linkChanged, q,
                [this](bool up, const LinkReason& reason) { onLink(LinkEnd::Device, up, reason); });
    }
    if (abilities.progress) {
        connect(backend, &Controller::motion, q, &Adapter::motion);
        connect(backend, &Controller::postureMoved, q, &Adapter::postureMoved);
        connect(backend, &Controller::cameToRest, q, &Adapter::cameToRest);
    }
}

// --- Commands ------------------------------------------------------------------------------------

void Adapter::Private::handle(const KordCall& call) {
    Motion::Kind kind;
    if (motionKind(call.name, &kind)) {
        orderMotion(call, kind);
        return;
    }
    if (call.name == word::registerWrite || call.name == word::registerWriteMulti ||
        call.name == word::outDo) {
        orderWrites(call);
        return;
    }
    if (call.name == word::enough) {
        release();
    } else if (call.name == word::stop || call.name == word::reset) {
        stop(call.name == word::reset);
    }
    answer(call.name, 0);
}

/// Writes a command's result: 0, or -1 when a write was rejected.
void Adapter::Private::answer(const QString& name, int code) {
    if (service->commandNode(QString())->hasCmobj(name)) {
        service->commandNode(name)->setValue(q, code);
    }
}

/// The call is valid now only; what it asks for may be carried out later.
void Adapter::Private::orderWrites(const KordCall& call) {
    if (call.name == word::outDo) {
        q->write(call.name, {{call.argument(QStringLiteral("name")).toString(), QString(),
                              call.argument(QStringLiteral("value"))}});
        return;
    }
    if (call.name == word::registerWriteMulti && !service->commandNode(QString())->hasCmobj(call.name)) {
        emit q->rejected(call.name, QStringLiteral("no such command"));
        return;
    }
    q->write(call.name, registerWrites(call));
}

void Adapter::Private::orderMotion(const KordCall& call, Motion::Kind kind) {
    const int id = results.add(kind);
    const Motion motion = readMotion(call, kind, id, backend->axes());
    emit q->motion(id, MotionEvent::Queued);
    results.beginCall();
    batch.add(motion);
    results.endCall();
}

void Adapter::Private::release() {
    if (!results.hasWaiting() && !abilities.refusals) {
        return;
    }
    const bool isOn = powered && !held && link.isUp();
    results.beginCall();
    results.release();
    if (options.repair && isOn) {
        refreshState();
    }
    batch.release(isOn);
    results.endCall();
}

void Adapter::Private::stop(bool isReset) {
    braking = options.repair && link.isUp(LinkEnd::Robot) && (moving || results.hasReleased());
    dropMotions();
    if (!link.isUp(LinkEnd::Robot)) {
        return;
    }
    results.beginCall();
    if (isReset) {
        backend->reset();
    } else {
        backend->stop();
    }
    results.endCall();
}

void Adapter::Private::dropMotions() {
    batch.clear();
    results.drop();
    if (options.repair) {
        refreshState();
    }
}

void Adapter::Private::onHanded(const QString& path, const mendo::ModuleObject* node) {
    if (path == coordToolset) {
        toolset = readToolset(node);
        sendToolset();
    }
}

void Adapter::Private::sendToolset() {
    if (toolset && link.isUp(LinkEnd::Robot)) {
        backend->setToolset(*toolset);
    }
}

JogAnswer Adapter::Private::jog(const JogMove& move, bool held_) {
    if (!powered || held || !link.isUp()) {
        return JogAnswer::DriveOff;
    }
    if (!q->standsStill() || results.hasWaiting()) {
        return JogAnswer::Moving;
    }
    return backend->startJog(move, held_);
}

// --- The adapter ---------------------------------------------------------------------------------

Adapter::Adapter(KordService* service, Controller* backend, SignalPort* device, const Options& options,
                 QObject* parent)
    : QObject(parent), d_(std::make_unique<Private>(this, service, backend, device, options)) {}

Adapter::~Adapter() = default;

void Adapter::start() {
    if (d_->started) {
        return;
    }
    d_->started = true;
    fillConstantNodes(this, d_->service, d_->backend->axes());
    d_->service->offerCommand(word::registerWriteMulti, d_->options.writeMulti);
    d_->connectBackend();
    d_->connectParts();
    d_->refreshState();
    if (d_->device) {
        d_->device->start();
    }
    d_->backend->signalPort()->start();
    d_->backend->start();
    if (!d_->link.isUp()) {
        d_->writePower();
        d_->writeMode();
    }
}

Abilities Adapter::abilities() const {
    return d_->abilities;
}

void Adapter::setPower(bool on) {
    d_->held = d_->held && !(on && d_->link.isUp());
    if (d_->link.isUp(LinkEnd::Robot)) {
        d_->backend->setPower(on);
    }
    if (d_->options.repair && d_->link.isUp()) {
        d_->writePower();  // of drives that stayed on
    }
}

bool Adapter::isPowerHeld() const {
    return d_->held && d_->powered && d_->link.isUp();
}

void Adapter::setMode(Mode mode) {
    d_->backend->setMode(mode);
}

JogAnswer Adapter::jog(const JogMove& move) {
    return d_->jog(move, false);
}

JogAnswer Adapter::startJog(const JogMove& move) {
    return d_->jog(move, true);
}

void Adapter::stopJog() {
    d_->backend->stopJog();
}

bool Adapter::isLinked() const {
    return d_->link.isUp();
}

LinkReason Adapter::linkReason() const {
    return linkReason(isLinked(LinkEnd::Robot) ? LinkEnd::Device : LinkEnd::Robot);
}

bool Adapter::isLinked(LinkEnd end) const {
    return d_->link.isUp(end);
}

LinkReason Adapter::linkReason(LinkEnd end) const {
    return d_->link.reason(end);
}

bool Adapter::hasDevice() const {
    return d_->device;
}

bool Adapter::input(const QString& name) const {
    return d_->bank.input(name);
}

QVariant Adapter::output(const QString& name) const {
    return d_->bank.output(name);
}

QStringList Adapter::inputNames() const {
    return d_->bank.inputNames();
}

QStringList Adapter::outputNames() const {
    return d_->bank.outputNames();
}

bool Adapter::standsStill() const {
    return !d_->moving && !d_->braking && !d_->results.hasReleased() && d_->bank.idle();
}

Posture Adapter::posture() const {
    return roundedPosture(d_->posture);
}

double Adapter::travelled() const {
    return d_->travelled;
}

double Adapter::postureMs() const {
    return d_->postureMs;
}

void Adapter::write(const QString& command, const std::vector<RegisterWrite>& records) {
    const auto answer = [this, command](bool accepted) { d_->answer(command, accepted ? 0 : -1); };
    if (command == word::outDo) {
        d_->bank.writeOutput(records.front().name, records.front().value, answer);
    } else {
        d_->bank.writeRegisters(records, answer);
    }
}

QString Adapter::resultCommand(Motion::Kind kind) const {
    return commandName(kind);
}

}  // namespace bridge
