// The laser: opening, closing, pulsing and parameter changes, and what keeps them from overlapping.

#include "equipment/handlit.h"
#include "executor/lumoexecutor.h"
#include "program/words.h"

#include <algorithm>
#include <utility>

using namespace lumo;
using namespace prog;

namespace {

using Role = PortStep::Role;

qint64 nowMs() {
    return mendo::Clock::current().elapsedMs();
}

}  // namespace

bool LumoExecutor::weldingPermitted() {
    const bool weld = m(key::weldSwitch)->getBool(true);
    if (m(key::robotMode)->getString() == word::automatic) {
        return weld;
    }
    return weld && m(key::handWeldSwitch)->getBool(false);
}

int LumoExecutor::limitopenLaser(ModuleObject* stmt) {
    if (!weldingPermitted()) {
        return 0;
    }
    // The gas stays with the sequence before until this opening is certain: a listener of the settled
    // switch-offs may stop it or take the permission back, and somebody has to switch the gas off.
    const int mine = beginSequence(Gas::Left);
    if (mine != sequence_ || !weldingPermitted()) {
        return 0;
    }
    schedule_.takeSteps();
    weldCut_ = false;
    paramWaits_ = false;
    weld_ = Weld::Opening;
    changeAOParamUpdate(stmt);
    if (mine != sequence_) {
        return 0;
    }
    const int code = openLaser();
    if (mine != sequence_) {
        return 0;  // abandoned: what was open before counts as before
    }
    weld_ = Weld::Open;
    if (inStatement_ && run_->program.holds(stmt)) {
        resume_.weldOpened(run_->original(stmt->indexInPmobj()));
    }
    setWeldFlag(true);
    return code;
}

int LumoExecutor::limitcloseLaser() {
    settleCutWeld();
    if (!weldingPermitted()) {
        return 0;
    }
    if (weldCut_) {
        weldCut_ = false;  // closed already, when the permission was lost
        return 0;
    }
    const int code = closeLaser();
    // Also when interrupted: a resume must not reopen the laser at the seam's end.
    setWeldFlag(false);
    return code;
}

int LumoExecutor::openLaser() {
    const int mine = sequence_;
    laserOffsByHand_ = offsByHand(DO_LASER_ENABLE);
    wireOffsByHand_ = offsByHand(DO_WIRE_ENABLE);
    writePort({DO_GAS, 1.0, Role::Progress});
    if (mine != sequence_) {
        return 0;
    }
    // Ended by its time; a pause, an emergency stop or a lost permission abandon the opening.
    waitFor(WaitKind::PreFlow, nowMs() + LaserParams::from(paramNode()).preFlowMs);
    if (mine != sequence_) {
        return 0;
    }
    laserOn = true;
    const LaserParams params = LaserParams::from(paramNode());
    writeGroup({{AO_LASER_POWER, 0.0, Role::Progress},
                {DO_LASER_ENABLE, 1.0, Role::Progress},
                {AO_LASER_DUTY_CYCLE, params.ratio, Role::Progress},
                {AO_LASER_FREQUENCY, params.frequency, Role::Progress}});
    if (mine != sequence_) {
        return 0;
    }
    const qint64 enabledMs = nowMs();
    schedule_.add(enabledMs, openingPlan(params, rampStepMs()));
    if (mine != sequence_) {
        return 0;
    }
    pulseTimer.start(std::max(1, openTime));
    emit activityChanged();
    if (mine != sequence_) {
        return 0;
    }
    // Nothing but its time and the application's end shortens the dwell.
    if (waiter_.runPrivate(WaitKind::Dwell, QString::number(line_), enabledMs + std::max(0, stayTime)) ==
        WaitEnd::Quit) {
        quit();
    }
    return 0;
}

int LumoExecutor::closeLaser() {
    // Below a wait that a pause has just ended no other wait can run: all steps count from now.
    const bool waitless = waiter_.onStack();
    const int outer = std::exchange(closing_, sequence_ + 1);
    const int mine = beginSequence();
    if (mine == sequence_) {
        runClosing(mine, waitless);
    }
    closing_ = outer;
    return 0;
}

void LumoExecutor::runClosing(int mine, bool waitless) {
    const LaserParams params = LaserParams::from(paramNode());
    const qint64 startMs = nowMs();
    if (!beginClosing(mine, startMs, params)) {
        return;
    }
    if (waitless) {
        // Not before the ramp has ended and the laser is off.
        schedule_.add(startMs, gasOffPlan(std::max(params.postFlowMs, params.decreaseMs)));
        return;
    }
    // These three are ended by their time; a pause or an emergency stop supersede the closing.
    waitFor(WaitKind::RampDown, startMs + params.decreaseMs);
    if (mine != sequence_) {
        return;
    }
    waitFor(WaitKind::CloseDelay, nowMs() + LaserParams::from(paramNode()).closeDelayMs);
    if (mine != sequence_) {
        return;
    }
    const qint64 flowEndMs = nowMs() + LaserParams::from(paramNode()).postFlowMs;
    schedule_.add(flowEndMs, gasOffPlan(0));
    if (mine == sequence_) {
        waitFor(WaitKind::PostFlow, flowEndMs);
    }
}

bool LumoExecutor::beginClosing(int mine, qint64 startMs, const LaserParams& params) {
    weld_ = Weld::Dark;
    stopPulsing();
    if (mine != sequence_) {
        return false;
    }
    writePort({DO_WIRE_PULLBACK, 1.0, Role::Progress});
    if (mine != sequence_) {
        return false;
    }
    schedule_.add(startMs, closingPlan(params, rampStepMs()));
    return mine == sequence_;
}

void LumoExecutor::onPermission() {
    if (weld_ == Weld::Dark || stopping_ || weldingPermitted()) {
        return;
    }
    const bool wasOpen = weld_ == Weld::Open;
    const int mine = beginSequence();
    if (wasOpen) {  // an abandoned opening leaves the flag as it was
        weldCut_ = true;
        setWeldFlag(false);
    }
    if (waiter_.waitsFor(WaitKind::PreFlow)) {
        waiter_.end(WaitEnd::Permission);
    }
    if (mine != sequence_) {
        return;
    }
    // The run goes on: nothing waits for this closing.
    const LaserParams params = LaserParams::from(paramNode());
    const qint64 startMs = nowMs();
    if (beginClosing(mine, startMs, params)) {
        schedule_.add(startMs, gasOffPlan(params.decreaseMs + params.closeDelayMs + params.postFlowMs));
    }
}

/// Nobody waits for the closing of a weld that lost its permission. At the seam's end what is left of its
/// ramp ends at once: the robot must not take it along.
void LumoExecutor::settleCutWeld() {
    if (weld_ == Weld::Dark && schedule_.isPending(DO_LASER_ENABLE, Role::SwitchOff)) {
        beginSequence(Gas::Left);
    }
}

void LumoExecutor::changeAOParamUpdate(ModuleObject* stmt) {
    if (!stmt) {
        return;
    }
    const int mine = sequence_;
    m(key::curParam)->setValue(this, stmt->c(field::index, false)->getInt(0));
    if (mine != sequence_) {
        return;
    }
    const LaserParams params = LaserParams::from(paramNode());
    openTime = params.openMs;
    openInterval = params.openIntervalMs;
    stayTime = params.stayMs;
    changeAOParam();
}

void LumoExecutor::changeAOParam() {
    const int mine = sequence_;
    const LaserParams params = LaserParams::from(paramNode());
    const bool closing = schedule_.isPending(DO_LASER_ENABLE, Role::SwitchOff);
    if (isBetweenPulses()) {
        schedule_.dropProgress(AO_LASER_POWER);
        paramWaits_ = true;  // written with the next pulse
    } else if (portState(DO_LASER_ENABLE) && !closing) {
        schedule_.dropProgress(AO_LASER_POWER);
        writeSetPoints(params);
    }
    if (mine == sequence_) {
        writePort({AO_WIRE_SPEED, params.wireSpeed, Role::Progress});
    }
}

bool LumoExecutor::isBetweenPulses() const {
    return pulseTimer.isActive() && !laserOn && portEnabled(DO_LASER_ENABLE);
}

void LumoExecutor::writeSetPoints(const LaserParams& params) {
    paramWaits_ = false;
    writeGroup({{AO_LASER_POWER, params.power, Role::Progress},
                {AO_LASER_DUTY_CYCLE, params.ratio, Role::Progress},
                {AO_LASER_FREQUENCY, params.frequency, Role::Progress}});
}

void LumoExecutor::pulseStep() {
    schedule_.runDue();  // what was scheduled before this timer comes first, also when both are late
    if (!pulseTimer.isActive() || (laserOn && openInterval == 0)) {
        return;
    }
    if (isOffByHand(DO_LASER_ENABLE)) {
        stopPulsing();  // dark until the next opening
        return;
    }
    if (!laserOn && paramWaits_) {
        writeSetPoints(LaserParams::from(paramNode()));
        if (!pulseTimer.isActive()) {
            return;  // a listener of the write has stopped it
        }
    }
    laserOn = !laserOn;
    const double on = laserOn ? 1.0 : 0.0;
    writePort({DO_LASER_ENABLE, on, Role::Progress});
    if (!pulseTimer.isActive()) {
        return;  // a listener of the write has stopped it
    }
    writePort({DO_WIRE_ENABLE, on, Role::Progress});
    if (pulseTimer.isActive() && isBusy()) {
        pulseTimer.setInterval(std::max(1, laserOn ? openTime : openInterval));
    }
}

int LumoExecutor::beginSequence(Gas gas) {
    const int mine = ++sequence_;
    const std::vector<PortStep> pending = schedule_.takeSteps(gas == Gas::Own);
    for (const PortStep& off : shutdownSteps()) {
        const bool wasPending = std::any_of(pending.begin(), pending.end(), [&off](const PortStep& step) {
            return step.role == Role::SwitchOff && step.port == off.port;
        });
        if (wasPending) {
            settling_.push_back(off);
        }
    }
    // A list of its own: a sequence that somebody who hears of a write begins does the rest first.
    while (!settling_.empty()) {
        const PortStep off = settling_.front();
        settling_.pop_front();
        writePort(off);
    }
    if (!pending.empty()) {
        emit activityChanged();
    }
    return mine;
}

void LumoExecutor::shutDown() {
    ++sequence_;
    weld_ = Weld::Dark;
    stopPulsing();
    settling_.clear();
    schedule_.takeSteps();
    const std::vector<I_PORT> byHand = takeLitByHand();
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
    emit activityChanged();
}

void LumoExecutor::stopPulsing() {
    pulseTimer.stop();
    paramWaits_ = false;
    laserOn = false;
    stayTime = 0;
    emit activityChanged();
}

bool LumoExecutor::isOffByHand(I_PORT port) const {
    return (port == DO_LASER_ENABLE && offsByHand(port) != laserOffsByHand_) ||
           (port == DO_WIRE_ENABLE && offsByHand(port) != wireOffsByHand_);
}

void LumoExecutor::writePort(const PortStep& step, ModuleObject* batch) {
    if (step.value > 0.0 && isOffByHand(step.port)) {
        return;
    }
    switch (step.port) {
        case AO_LASER_POWER:
            // A closing must not raise the power that is out.
            lastPower_ = step.role == Role::RampDown ? std::min(step.value, lastPower_) : step.value;
            setPortAO(this, step.port, lastPower_, batch);
            break;
        case AO_WIRE_SPEED:
        case AO_LASER_FREQUENCY:
        case AO_LASER_DUTY_CYCLE:
            setPortAO(this, step.port, step.value, batch);
            break;
        default:
            setPortDO(this, step.port, step.value > 0.0, batch);
    }
}

void LumoExecutor::writeGroup(std::initializer_list<PortStep> steps) {
    if (kordservice()->commandNode(QString())->hasCmobj(command::registerWriteMulti, false)) {
        ModuleObject batch;
        for (const PortStep& step : steps) {
            writePort(step, &batch);
        }
        if (batch.cmobjCount() > 0) {
            kordservice()->command(this, command::registerWriteMulti, &batch);
        }
        return;
    }
    const int mine = sequence_;
    for (const PortStep& step : steps) {
        writePort(step);
        if (mine != sequence_) {
            return;
        }
    }
}

WaitEnd LumoExecutor::waitFor(WaitKind kind, qint64 dueMs) {
    const WaitEnd end = waiter_.run(kind, QString::number(line_), dueMs);
    if (end == WaitEnd::Quit) {
        quit();
    }
    return end;
}

void LumoExecutor::setWeldFlag(bool open) {
    m(key::weldOpen)->setValue(this, open);
}
