#include "executor/laserplan.h"

#include "program/words.h"

#include <algorithm>

namespace {

using Role = PortStep::Role;

/// Step of a ramp. One that is longer than any that the page takes, out of a file that somebody typed,
/// keeps its length with wider steps: they must fit into memory.
int stepOf(int rampMs, int dtMs) {
    constexpr int mostSteps = 5000;
    return std::max(dtMs, rampMs / mostSteps);
}

}  // namespace

ModuleObject* paramNode() {
    return m(prog::key::param)->c(m(prog::key::curParam)->getInt(-1));
}

int rampStepMs() {
    constexpr int defaultMs = 20;
    const int dtMs = m(prog::key::executeDt)->getInt(defaultMs);
    return dtMs > 0 ? dtMs : defaultMs;
}

Sequence openingPlan(const LaserParams& params, int dtMs) {
    Sequence plan;
    const int stepMs = stepOf(params.increaseMs, dtMs);
    for (qint64 t = stepMs; t < params.increaseMs; t += stepMs) {
        plan.push_back(
            {static_cast<int>(t),
             {AO_LASER_POWER, static_cast<double>(t) * params.power / params.increaseMs, Role::Progress}});
    }
    plan.push_back({params.increaseMs, {AO_LASER_POWER, params.power, Role::Progress}});
    plan.push_back({params.increaseMs, {DO_WIRE_ENABLE, 1.0, Role::Progress}});
    return plan;
}

Sequence closingPlan(const LaserParams& params, int dtMs) {
    Sequence plan;
    plan.push_back({params.pullbackEndMs, {DO_WIRE_PULLBACK, 0.0, Role::SwitchOff}});
    if (params.refeedEndMs >= params.refeedStartMs) {
        plan.push_back({params.refeedStartMs, {DO_WIRE_ENABLE, 1.0, Role::Progress}});
    }
    plan.push_back({params.refeedEndMs, {DO_WIRE_ENABLE, 0.0, Role::SwitchOff}});
    const int stepMs = stepOf(params.decreaseMs, dtMs);
    for (qint64 t = stepMs; t < params.decreaseMs; t += stepMs) {
        const double left = static_cast<double>(params.decreaseMs - t);
        plan.push_back(
            {static_cast<int>(t), {AO_LASER_POWER, left * params.power / params.decreaseMs, Role::RampDown}});
    }
    for (const I_PORT port : {AO_LASER_POWER, DO_LASER_ENABLE, AO_LASER_DUTY_CYCLE, AO_LASER_FREQUENCY}) {
        plan.push_back({params.decreaseMs, {port, 0.0, Role::SwitchOff}});
    }
    return plan;
}

Sequence gasOffPlan(int ms) {
    return {{ms, {DO_GAS, 0.0, Role::GasOff}}};
}

const std::vector<PortStep>& shutdownSteps() {
    static const std::vector<PortStep> steps{
        {DO_WIRE_PULLBACK, 0.0, Role::SwitchOff},
        {DO_WIRE_ENABLE, 0.0, Role::SwitchOff},
        {AO_LASER_POWER, 0.0, Role::SwitchOff},
        {DO_LASER_ENABLE, 0.0, Role::SwitchOff},
        {AO_LASER_DUTY_CYCLE, 0.0, Role::SwitchOff},
        {AO_LASER_FREQUENCY, 0.0, Role::SwitchOff},
        {DO_GAS, 0.0, Role::GasOff},
    };
    return steps;
}
