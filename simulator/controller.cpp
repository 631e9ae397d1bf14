#include "simulator/controller.h"

#include "kord/kordservice.h"
#include "mendo/modulemanager.h"
#include "simulator/controllernodes.h"
#include "simulator/iobank.h"
#include "simulator/motionqueue.h"
#include "simulator/registerwrite.h"
#include "simulator/resultwriter.h"
#include "simulator/words.h"

#include <QSet>
#include <QTimer>

#include <algorithm>
#include <iterator>
#include <utility>

namespace sim {

namespace {

constexpr int lateMs = 300;
constexpr int slowStateMs = 50;

constexpr const char* quirks[] = {"bunch",     "sync",      "late",     "double",
                                  "wrongKind", "slowState", "noResult", "failAtEnd"};

const QString idleWord = QStringLiteral("idle");
const QString movingWord = QStringLiteral("moving");

}  // namespace

/// The controller's parts and the handlers of their signals.
struct Controller::Private {
    Private(Controller* controller, KordService* robotService, const Options& options);

    void handle(const KordCall& call);
    void write(const KordCall& call);
    void answer(const QString& name, int code);
    void showPosture();
    void orderMotion(const KordCall& call, MotionCommand::Kind kind);
    void release();
    void onFinished(int id, MotionCommand::Kind kind, int code);
    void onStopped(int id, MotionCommand::Kind kind);
    void announce(int id, MotionEvent event);
    void setPower(bool on);
    JogAnswer jog(const JogMove& move, bool held);
    JogAnswer planPoseMoveNow(const PoseMove& move, MotionCommand* motion) const;
    void orderJog(MotionCommand motion);
    void onBraked();
    void setState(const QString& state);
    void writeState(const QString& state);

    Controller* q;
    KordService* service;
    Arm arm;
    IoBank io;
    MotionQueue queue;
    ResultWriter results;
    DelayLine postures, writes;
    bool powered = true;
    bool emergencyStop = false;
    bool jogging = false;
    int motions = 0;     ///< ordered so far
    QSet<int> answered;  ///< motions that get no result when they end (Quirk::Sync, Quirk::NoResult)
    bool sync = false, late = false, slowState = false;
    bool nextWithoutResult = false, nextFailsAtEnd = false;
    QString state = idleWord;  ///< the true state; its node may follow later (Quirk::SlowState)
    int pendingStates = 0;
};

Controller::Private::Private(Controller* controller, KordService* robotService, const Options& options)
    : q(controller),
      service(robotService),
      arm(options.axes),
      io(robotService, controller),
      queue(arm, controller),
      results(robotService, options.latency.resultMs, controller),
      postures(options.latency.postureMs, controller),
      writes(options.latency.writeMs, controller) {
    fillControllerNodes(q, service, arm.axes());
    writePosture(q, service, queue.posture());
    service->offerCommand(word::registerWriteMulti, options.writeMulti);
    m(word::power)->setValue(q, QStringLiteral("on"));
    m(word::mode)->setValue(q, QStringLiteral("auto"));
    writeState(idleWord);

    connect(service, &KordService::issued, q, [this](const KordCall& call) { handle(call); });
    connect(&io, &IoBank::outputChanged, q, &Controller::outputChanged);
    connect(&io, &IoBank::inputChanged, q, &Controller::inputChanged);
    connect(&io, &IoBank::rejected, q, &Controller::rejected);
    connect(&results, &ResultWriter::result, q, &Controller::result);
    connect(&results, &ResultWriter::caughtUp, q, &Controller::caughtUp);
    connect(&postures, &DelayLine::emptied, q, &Controller::caughtUp);
    connect(&writes, &DelayLine::emptied, q, &Controller::caughtUp);
    connect(&queue, &MotionQueue::started, q, [this](int id) { announce(id, MotionEvent::Started); });
    connect(&queue, &MotionQueue::passed, q, [this](int id) { announce(id, MotionEvent::Passed); });
    connect(&queue, &MotionQueue::dropped, q, [this](int id) {
        answered.remove(id);
        announce(id, MotionEvent::Dropped);
    });
    connect(&queue, &MotionQueue::failed, q, [this](int id) { announce(id, MotionEvent::Failed); });
    connect(&queue, &MotionQueue::stopped, q,
            [this](int id, MotionCommand::Kind kind) { onStopped(id, kind); });
    connect(&queue, &MotionQueue::finished, q,
            [this](int id, MotionCommand::Kind kind, int code) { onFinished(id, kind, code); });
    connect(&queue, &MotionQueue::braked, q, [this] { onBraked(); });
    connect(&queue, &MotionQueue::ticked, q, [this] {
        showPosture();
        emit q->postureMoved();
    });
}

// --- Commands ------------------------------------------------------------------------------------

void Controller::Private::handle(const KordCall& call) {
    MotionCommand::Kind kind;
    if (motionKind(call.name, &kind)) {
        orderMotion(call, kind);
        return;
    }
    if (call.name == word::registerWrite || call.name == word::registerWriteMulti ||
        call.name == word::outDo) {
        write(call);
        return;
    }
    if (call.name == word::enough) {
        release();
    } else if (call.name == word::stop || call.name == word::reset) {
        results.forgetHeld();
        queue.stop();
    }
    answer(call.name, 0);
}

/// Writes a command's result: 0, or -1 when a write was rejected.
void Controller::Private::answer(const QString& name, int code) {
    if (service->commandNode(QString())->hasCmobj(name)) {
        service->commandNode(name)->setValue(q, code);
    }
}

/// The call is valid now only; what it asks for may be carried out later.
void Controller::Private::write(const KordCall& call) {
    const QString name = call.name;
    if (name == word::outDo) {
        const QString output = call.argument(QStringLiteral("name")).toString();
        const QVariant value = call.argument(QStringLiteral("value"));
        writes.run([this, name, output, value] { answer(name, io.writeOutput(output, value) ? 0 : -1); });
        return;
    }
    if (name == word::registerWriteMulti && !service->commandNode(QString())->hasCmobj(name)) {
        emit q->rejected(name, QStringLiteral("no such command"));
        return;
    }
    const std::vector<RegisterWrite> records = registerWrites(call);
    writes.run([this, name, records] {
        int code = 0;
        for (const RegisterWrite& record : records) {
            const bool isWritten = io.writeRegister(record.name, record.type, record.value, record.bias);
            code = isWritten ? code : -1;
        }
        answer(name, code);
    });
}

void Controller::Private::showPosture() {
    const MotionPlan::Posture posture = queue.posture();
    postures.run([this, posture] { writePosture(q, service, posture); });
}

void Controller::Private::orderMotion(const KordCall& call, MotionCommand::Kind kind) {
    const int id = ++motions;
    MotionCommand motion = readMotion(call, kind, id, arm.axes());
    const bool fails = std::exchange(nextFailsAtEnd, false);
    const bool silent = std::exchange(nextWithoutResult, false);
    if (fails) {
        motion.endCode = FailedAtEnd;
    }
    if (silent) {
        answered.insert(id);
    }
    queue.add(std::move(motion));
    emit q->motion(id, MotionEvent::Queued);
    if (sync && !fails && !silent) {
        answered.insert(id);
        results.deliver({kind, id, MotionDone}, true);
    }
}

void Controller::Private::release() {
    if (!queue.hasWaiting()) {
        return;
    }
    if (powered) {
        setState(movingWord);
    }
    queue.release(powered ? MotionDone : DriveOff);
}

// --- Motion --------------------------------------------------------------------------------------

void Controller::Private::announce(int id, MotionEvent event) {
    if (id != jogId) {
        emit q->motion(id, event);
    }
}

JogAnswer Controller::Private::jog(const JogMove& move, bool held) {
    if (!powered) {
        return JogAnswer::DriveOff;
    }
    if (!q->standsStill() || queue.hasWaiting()) {
        return JogAnswer::Moving;
    }
    const MotionQueue::Posture posture = queue.posture();
    MotionCommand motion;
    JogMove whole = held ? farthestJog(arm, posture, move) : move;
    if (whole.distance == 0) {
        whole.distance = move.distance;  // planJog() then gives the reason
    }
    const JogAnswer answer = planJog(arm, posture, whole, &motion);
    if (answer != JogAnswer::Moves) {
        return answer;
    }
    orderJog(std::move(motion));
    return JogAnswer::Moves;
}

/// Unlike jog(), does not wait for results that are still to be written.
JogAnswer Controller::Private::planPoseMoveNow(const PoseMove& move, MotionCommand* motion) const {
    if (!powered) {
        return JogAnswer::DriveOff;
    }
    if (queue.moving() || queue.hasWaiting()) {
        return JogAnswer::Moving;
    }
    return planPoseMove(arm, queue.posture(), move, motion);
}

void Controller::Private::orderJog(MotionCommand motion) {
    motion.id = jogId;
    queue.add(std::move(motion));
    jogging = true;
    setState(movingWord);
    queue.release();
}

void Controller::Private::onFinished(int id, MotionCommand::Kind kind, int code) {
    const bool last = !queue.moving();
    showPosture();
    if (id == jogId) {
        jogging = false;
    }
    if (last) {
        emit q->cameToRest();
        setState(idleWord);
    }
    if (id != jogId && !answered.remove(id)) {
        results.deliver({kind, id, code}, last);
    } else if (last) {
        results.deliverHeld();
    }
}

void Controller::Private::onStopped(int id, MotionCommand::Kind kind) {
    announce(id, MotionEvent::Stopped);
    if (id == jogId) {
        jogging = false;
    }
    results.forgetHeld();
    if (id != jogId && !answered.remove(id) && late) {
        results.deliverLater({kind, id, MotionDone}, lateMs);
    }
}

void Controller::Private::onBraked() {
    showPosture();
    if (!queue.moving()) {
        emit q->cameToRest();
        setState(idleWord);
    }
}

void Controller::Private::setState(const QString& newState) {
    if (state == newState) {
        return;
    }
    state = newState;
    if (!slowState && pendingStates == 0) {
        writeState(newState);
        return;
    }
    ++pendingStates;
    QTimer::singleShot(slowStateMs, Qt::PreciseTimer, q, [this, newState] {
        --pendingStates;
        writeState(newState);
    });
}

void Controller::Private::writeState(const QString& newState) {
    m(word::state)->setValue(q, newState);
}

void Controller::Private::setPower(bool on) {
    powered = on;
    if (!on) {
        results.forgetHeld();
        queue.stop();
    }
    m(word::power)->setValue(q, on ? QStringLiteral("on") : QStringLiteral("off"));
}

// --- The controller ------------------------------------------------------------------------------

Controller::Controller(KordService* service, const Options& options, QObject* parent)
    : QObject(parent), d_(std::make_unique<Private>(this, service, options)) {}

Controller::~Controller() = default;

void Controller::setPower(bool on) {
    if (!on || !d_->emergencyStop) {
        d_->setPower(on);
    }
}

void Controller::setEmergencyStop(bool pressed) {
    if (pressed == d_->emergencyStop) {
        return;
    }
    d_->emergencyStop = pressed;
    if (pressed) {
        d_->setPower(false);
    }
    emit emergencyStopChanged(pressed);
}

bool Controller::emergencyStop() const {
    return d_->emergencyStop;
}

void Controller::setMode(const QString& mode) {
    m(word::mode)->setValue(this, mode);
}

bool Controller::setInput(const QString& name, bool value) {
    return d_->io.setInput(name, value);
}

bool Controller::input(const QString& name) const {
    return d_->io.input(name);
}

QVariant Controller::output(const QString& name) const {
    return d_->io.output(name);
}

QStringList Controller::inputNames() const {
    return d_->io.inputNames();
}

QStringList Controller::outputNames() const {
    return d_->io.outputNames();
}

void Controller::failMotion(int code) {
    if (code < 0) {
        d_->queue.fail(code);
    }
}

JogAnswer Controller::jog(const JogMove& move) {
    return d_->jog(move, false);
}

JogAnswer Controller::jog(JogAxis axis, double step) {
    return jog(baseStep(axis, step));
}

JogAnswer Controller::startJog(const JogMove& move) {
    return d_->jog(move, true);
}

JogAnswer Controller::checkPoseMove(const PoseMove& move) const {
    MotionCommand ignored;
    return d_->planPoseMoveNow(move, &ignored);
}

JogAnswer Controller::moveToPose(const PoseMove& move) {
    MotionCommand motion;
    const JogAnswer answer = d_->planPoseMoveNow(move, &motion);
    if (answer == JogAnswer::Moves) {
        d_->orderJog(std::move(motion));
    }
    return answer;
}

void Controller::stopJog() {
    if (d_->jogging) {
        d_->queue.stop();
    }
}

void Controller::setQuirk(Quirk quirk, bool on) {
    switch (quirk) {
        case Quirk::Bunch:
            d_->results.setBunch(on);
            break;
        case Quirk::Sync:
            d_->sync = on;
            break;
        case Quirk::Late:
            d_->late = on;
            break;
        case Quirk::Double:
            d_->results.setDouble(on);
            break;
        case Quirk::WrongKind:
            d_->results.setWrongKind(on);
            break;
        case Quirk::SlowState:
            d_->slowState = on;
            break;
        case Quirk::NoResult:
            d_->nextWithoutResult = on;
            break;
        case Quirk::FailAtEnd:
            d_->nextFailsAtEnd = on;
            break;
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
    mendo::ModuleObject* keys = pendantKeys();
    if (!keys->hasCmobj(name)) {
        return false;
    }
    keys->c(name)->setValue(this, value);
    keys->trigger();
    return true;
}

bool Controller::standsStill() const {
    return !d_->queue.moving() && d_->results.idle() && d_->pendingStates == 0 && d_->postures.idle() &&
           d_->writes.idle();
}

MotionPlan::Posture Controller::posture() const {
    return roundedPosture(d_->queue.posture());
}

const Arm& Controller::arm() const {
    return d_->arm;
}

double Controller::travelled() const {
    return d_->queue.travelled();
}

}  // namespace sim
