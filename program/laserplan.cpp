#include "program/laserplan.h"

#include <algorithm>
#include <numeric>

namespace prog {

namespace {

using Role = PortStep::Role;
using Pulses = LaserPhase::Pulses;

/// Step of a ramp. A file can hold longer ramps than the page takes; they get wider steps, so that the plan
/// fits into memory.
int stepOf(int rampMs, int dtMs) {
    constexpr int mostSteps = 5000;
    return std::max(dtMs, rampMs / mostSteps);
}

std::vector<TimedStep> rampUp(const LaserParams& params, int dtMs) {
    std::vector<TimedStep> steps;
    const int stepMs = stepOf(params.increaseMs, dtMs);
    for (qint64 t = stepMs; t < params.increaseMs; t += stepMs) {
        const double power = static_cast<double>(t) * params.power / params.increaseMs;
        steps.push_back({static_cast<int>(t), {AO_LASER_POWER, power}});
    }
    steps.push_back({params.increaseMs, {AO_LASER_POWER, params.power}});
    steps.push_back({params.increaseMs, {DO_WIRE_ENABLE, 1.0}});
    return steps;
}

std::vector<TimedStep> wireBackAndRampDown(const LaserParams& params, int dtMs) {
    std::vector<TimedStep> steps;
    steps.push_back({params.pullbackEndMs, {DO_WIRE_PULLBACK, 0.0, Role::SwitchOff}});
    if (params.refeedEndMs >= params.refeedStartMs) {
        steps.push_back({params.refeedStartMs, {DO_WIRE_ENABLE, 1.0}});
    }
    steps.push_back({params.refeedEndMs, {DO_WIRE_ENABLE, 0.0, Role::SwitchOff}});
    const int stepMs = stepOf(params.decreaseMs, dtMs);
    for (qint64 t = stepMs; t < params.decreaseMs; t += stepMs) {
        const double left = static_cast<double>(params.decreaseMs - t);
        const double power = left * params.power / params.decreaseMs;
        steps.push_back({static_cast<int>(t), {AO_LASER_POWER, power, Role::RampDown}});
    }
    for (const I_PORT port : {AO_LASER_POWER, DO_LASER_ENABLE, AO_LASER_DUTY_CYCLE, AO_LASER_FREQUENCY}) {
        steps.push_back({params.decreaseMs, {port, 0.0, Role::SwitchOff}});
    }
    return steps;
}

LaserPhase waitOnly(QLatin1String wait, int ms) {
    LaserPhase phase;
    phase.wait = wait;
    phase.waitMs = ms;
    return phase;
}

}  // namespace

LaserPlan openingPlan(const LaserParams& params, int dtMs) {
    LaserPhase gas;
    gas.now = {{DO_GAS, 1.0}};
    LaserPhase enable;
    enable.isGroup = true;
    enable.now = {{AO_LASER_POWER, 0.0},
                  {DO_LASER_ENABLE, 1.0},
                  {AO_LASER_DUTY_CYCLE, params.ratio},
                  {AO_LASER_FREQUENCY, params.frequency}};
    LaserPhase ramp = waitOnly(waits::dwell, params.stayMs);
    ramp.later = rampUp(params, dtMs);
    ramp.pulses = Pulses::Start;
    return {gas, waitOnly(waits::preFlow, params.preFlowMs), enable, ramp};
}

int durationMs(const LaserPlan& plan) {
    return std::accumulate(plan.begin(), plan.end(), 0,
                           [](int ms, const LaserPhase& phase) { return ms + phase.waitMs; });
}

LaserPlan closingPlan(const LaserParams& params, int dtMs, Closing closing) {
    LaserPhase ramp;
    ramp.pulses = Pulses::Stop;
    ramp.now = {{DO_WIRE_PULLBACK, 1.0}};
    ramp.later = wireBackAndRampDown(params, dtMs);
    const auto gasOff = [](int ms) {
        LaserPhase phase;
        phase.later = {{ms, {DO_GAS, 0.0, Role::GasOff}}};
        return phase;
    };
    if (closing == Closing::Paused) {
        return {ramp, gasOff(std::max(params.postFlowMs, params.decreaseMs))};
    }
    if (closing == Closing::Unattended) {
        return {ramp, gasOff(params.decreaseMs + params.closeDelayMs + params.postFlowMs)};
    }
    ramp.wait = waits::rampDown;
    ramp.waitMs = params.decreaseMs;
    LaserPhase postFlow = gasOff(params.postFlowMs);
    postFlow.wait = waits::postFlow;
    postFlow.waitMs = params.postFlowMs;
    return {ramp, waitOnly(waits::closeDelay, params.closeDelayMs), postFlow};
}

const std::vector<PortStep>& shutdownSteps() {
    static const std::vector<PortStep> steps = [] {
        std::vector<PortStep> all;
        for (const ShutdownOutput& off : shutdownOrder) {
            if (off.endsRun) {
                all.push_back({off.output, 0.0, off.output == DO_GAS ? Role::GasOff : Role::SwitchOff});
            }
        }
        return all;
    }();
    return steps;
}

}  // namespace prog
