#include "executor/laser.h"

#include "equipment/handlit.h"
#include "equipment/ports.h"
#include "program/permission.h"
#include "program/words.h"

#include <QScopedValueRollback>

#include <algorithm>

using namespace prog;

ModuleObject* paramNode() {
    return m(key::param)->c(m(key::curParam)->getInt(-1));
}

namespace lumo {

namespace {

using Role = PortStep::Role;
using Pulses = LaserPhase::Pulses;

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

}  // namespace

bool weldingPermitted() {
    return prog::weldingPermitted(m(key::robotMode)->getString() == word::automatic,
                                  m(key::weldSwitch)->getBool(true), m(key::handWeldSwitch)->getBool(false));
}

int rampStepMs() {
    constexpr int defaultMs = 20;
    const int dtMs = m(key::executeDt)->getInt(defaultMs);
    return dtMs > 0 ? dtMs : defaultMs;
}

Laser::Laser(QObject* sender, Schedule& schedule, Waiter& waiter)
    : sender_(sender), schedule_(schedule), waiter_(waiter) {
    pulseTimer.setTimerType(Qt::PreciseTimer);
    connect(&pulseTimer, &QTimer::timeout, this, &Laser::pulseStep);
    schedule_.setPerformer([this](const PortStep& step) { writePort(step); });
    connect(&schedule_, &Schedule::pendingChanged, this, &Laser::pendingChanged);
}

// --- Openings and closings ------------------------------------------------------------------------

void Laser::openIfPermitted(const Statement* stmt) {
    if (!weldingPermitted()) {
        return;
    }
    // The planned gas-off stays until this opening is certain: a listener of the settled switch-offs may stop
    // it or take the permission back, and then nothing else would switch the gas off.
    const int mine = schedule_.begin(true);
    if (schedule_.isSuperseded(mine) || !weldingPermitted()) {
        return;
    }
    schedule_.drop();
    weldCut_ = false;
    paramWaits_ = false;
    weld_ = Weld::Opening;
    if (stmt) {
        takeOver(stmt->set);
    }
    if (!schedule_.isSuperseded(mine)) {
        open();
    }
    if (schedule_.isSuperseded(mine)) {
        return;  // abandoned: the weld flag stays as it was
    }
    weld_ = Weld::Open;
    emit opened();
    setWeldFlag(true);
}

void Laser::closeIfPermitted() {
    settleCutWeld();
    if (!weldingPermitted()) {
        return;
    }
    if (weldCut_) {
        weldCut_ = false;  // closed already, when the permission was lost
        return;
    }
    close();
    // Also when interrupted: a resume must not reopen the laser at the seam's end.
    setWeldFlag(false);
}

void Laser::open() {
    forgetOffByHand(sender_, DO_LASER_ENABLE);
    forgetOffByHand(sender_, DO_WIRE_ENABLE);
    carryOut(schedule_.newest(), openingPlan);
}

void Laser::close() {
    // Inside a wait that a pause has just ended no other wait can run: all steps count from now.
    const Closing closing = waiter_.onStack() ? Closing::Paused : Closing::Awaited;
    const QScopedValueRollback<int> onStack(closing_, schedule_.newest() + 1);
    carryOutClosing(schedule_.begin(), closing);
}

void Laser::carryOutClosing(int sequence, Closing closing) {
    if (schedule_.isSuperseded(sequence)) {
        return;
    }
    weld_ = Weld::Dark;
    carryOut(sequence,
             [closing](const LaserParams& params, int dtMs) { return closingPlan(params, dtMs, closing); });
}

/// The plan is made anew for each phase: the values that count are those of the moment in which they are
/// used.
void Laser::carryOut(int sequence, const MakePlan& makePlan) {
    for (std::size_t i = 0; !schedule_.isSuperseded(sequence); ++i) {
        LaserParams params = LaserParams::from(paramNode());
        params.stayMs = stayTime;
        const LaserPlan plan = makePlan(params, rampStepMs());
        if (i == plan.size()) {
            return;
        }
        const LaserPhase& phase = plan[i];
        const qint64 beganMs = nowMs();
        if (phase.pulses == Pulses::Stop) {
            stopPulses();
        }
        write(sequence, phase);
        schedule_.add(sequence, beganMs, phase.later);
        if (phase.pulses == Pulses::Start && !schedule_.isSuperseded(sequence)) {
            startPulses();
        }
        if (phase.wait.isEmpty() || schedule_.isSuperseded(sequence)) {
            continue;
        }
        if (phase.wait == waits::dwell) {
            // Ended by its time or the application's quit.
            waiter_.runPrivate(phase.wait, beganMs + phase.waitMs);
        } else {
            // Ended by its time, a pause or an emergency stop; the pre-flow also by a lost permission.
            waiter_.run(phase.wait, beganMs + phase.waitMs);
        }
    }
}

/// Writes what is due at the phase's begin, as one command where it is a group and the controller takes
/// those.
void Laser::write(int sequence, const LaserPhase& phase) {
    const bool takesGroups =
        kordservice()->commandNode(QString())->hasCmobj(command::registerWriteMulti, false);
    if (!phase.isGroup || !takesGroups) {
        for (const PortStep& step : phase.now) {
            schedule_.perform(sequence, step);
        }
        return;
    }
    if (schedule_.isSuperseded(sequence)) {
        return;
    }
    ModuleObject batch;
    for (const PortStep& step : phase.now) {
        writePort(step, &batch);
    }
    if (batch.cmobjCount() > 0) {
        kordservice()->command(sender_, command::registerWriteMulti, &batch);
    }
}

void Laser::settleBeforeMoving() {
    weldCut_ = false;
    schedule_.begin(true);
}

void Laser::settleCutWeld() {
    if (weld_ == Weld::Dark && schedule_.isPending(DO_LASER_ENABLE, Role::SwitchOff)) {
        schedule_.begin(true);
    }
}

void Laser::onPermission() {
    if (weld_ == Weld::Dark || weldingPermitted()) {
        return;
    }
    const bool wasOpen = weld_ == Weld::Open;
    const int mine = schedule_.begin();
    if (wasOpen) {  // an abandoned opening leaves the flag as it was
        weldCut_ = true;
        setWeldFlag(false);
    }
    if (waiter_.waitsFor(waits::preFlow)) {
        waiter_.end(WaitEnd::Permission);
    }
    carryOutClosing(mine, Closing::Unattended);
}

void Laser::shutDown() {
    schedule_.supersede();
    weld_ = Weld::Dark;
    stopPulses();
    schedule_.drop();
    const std::vector<I_PORT> byHand = takeLitByHand(sender_);
    for (const PortStep& off : shutdownSteps()) {
        writePort(off);
    }
    for (const I_PORT output : byHand) {
        const bool isWritten = std::any_of(shutdownSteps().begin(), shutdownSteps().end(),
                                           [output](const PortStep& off) { return off.port == output; });
        if (!isWritten) {
            writePort({output, 0.0, Role::SwitchOff});
        }
    }
    emit pendingChanged();
}

void Laser::switchOffByHand() {
    for (const I_PORT output : takeLitByHand(sender_)) {
        writePort({output, 0.0, Role::SwitchOff});
    }
}

// --- Parameters -----------------------------------------------------------------------------------

void Laser::takeOver(int set) {
    const int mine = schedule_.newest();
    m(key::curParam)->setValue(sender_, set);
    if (schedule_.isSuperseded(mine)) {
        return;
    }
    const LaserParams params = LaserParams::from(paramNode());
    openTime = params.openMs;
    openInterval = params.openIntervalMs;
    stayTime = params.stayMs;
    writeParameters();
}

void Laser::writeParameters() {
    const int mine = schedule_.newest();
    const LaserParams params = LaserParams::from(paramNode());
    const bool closing = schedule_.isPending(DO_LASER_ENABLE, Role::SwitchOff);
    if (isBetweenPulses()) {
        schedule_.dropProgress(AO_LASER_POWER);
        paramWaits_ = true;  // written with the next pulse
    } else if (portState(DO_LASER_ENABLE) && !closing) {
        schedule_.dropProgress(AO_LASER_POWER);
        writeSetPoints(mine, params);
    }
    schedule_.perform(mine, {AO_WIRE_SPEED, params.wireSpeed});
}

void Laser::writeSetPoints(int sequence, const LaserParams& params) {
    paramWaits_ = false;
    LaserPhase setPoints;
    setPoints.isGroup = true;
    setPoints.now = {{AO_LASER_POWER, params.power},
                     {AO_LASER_DUTY_CYCLE, params.ratio},
                     {AO_LASER_FREQUENCY, params.frequency}};
    write(sequence, setPoints);
}

// --- Pulses ---------------------------------------------------------------------------------------

void Laser::startPulses() {
    laserOn = true;
    pulseTimer.start(std::max(1, openTime));
    emit pendingChanged();
}

void Laser::stopPulses() {
    pulseTimer.stop();
    paramWaits_ = false;
    laserOn = false;
    stayTime = 0;
    emit pendingChanged();
}

void Laser::pulseStep() {
    schedule_.runDue();  // what was due before this timer comes first, also when both are late
    if (!pulseTimer.isActive() || (laserOn && openInterval == 0)) {
        return;
    }
    if (isOffByHand(DO_LASER_ENABLE)) {
        stopPulses();  // dark until the next opening
        return;
    }
    const int mine = schedule_.newest();
    if (!laserOn && paramWaits_) {
        writeSetPoints(mine, LaserParams::from(paramNode()));
    }
    if (schedule_.isSuperseded(mine)) {
        return;
    }
    laserOn = !laserOn;
    const double on = laserOn ? 1.0 : 0.0;
    schedule_.perform(mine, {DO_LASER_ENABLE, on});
    schedule_.perform(mine, {DO_WIRE_ENABLE, on});
    const bool isBusy = m(key::executeState)->getString() == word::busy;
    if (!schedule_.isSuperseded(mine) && isBusy) {
        pulseTimer.setInterval(std::max(1, laserOn ? openTime : openInterval));
    }
}

bool Laser::isBetweenPulses() const {
    return pulseTimer.isActive() && !laserOn && portEnabled(DO_LASER_ENABLE);
}

int Laser::pendingSteps() const {
    return schedule_.pendingSteps() + (pulseTimer.isActive() ? 1 : 0);
}

// --- Ports ----------------------------------------------------------------------------------------

bool Laser::isOffByHand(I_PORT port) const {
    return (port == DO_LASER_ENABLE || port == DO_WIRE_ENABLE) && lumo::isOffByHand(port);
}

void Laser::writePort(const PortStep& step, ModuleObject* batch) {
    if (step.value > 0.0 && isOffByHand(step.port)) {
        return;
    }
    switch (step.port) {
        case AO_LASER_POWER:
            // A closing must not raise the power that is out.
            lastPower_ = step.role == Role::RampDown ? std::min(step.value, lastPower_) : step.value;
            setPortAO(sender_, step.port, lastPower_, batch);
            break;
        case AO_WIRE_SPEED:
        case AO_LASER_FREQUENCY:
        case AO_LASER_DUTY_CYCLE:
            setPortAO(sender_, step.port, step.value, batch);
            break;
        default:
            setPortDO(sender_, step.port, step.value > 0.0, batch);
    }
}

void Laser::setWeldFlag(bool open) {
    m(key::weldOpen)->setValue(sender_, open);
}

}  // namespace lumo
