#include "program/lasertiming.h"

#include <algorithm>

namespace prog {

namespace {

constexpr I_PORT lanePorts[] = {DO_GAS, DO_LASER_ENABLE, AO_LASER_POWER, DO_WIRE_ENABLE, DO_WIRE_PULLBACK};
/// Step of the ramps, in ms. A picture needs no finer one.
constexpr int rampStepMs = 20;
/// More pulses than these cannot be told apart in a picture.
constexpr int mostPulses = 200;

TimingLane* laneOf(TimingPart* part, I_PORT port) {
    const auto found = std::find_if(part->lanes.begin(), part->lanes.end(),
                                    [port](const TimingLane& lane) { return lane.port == port; });
    return found == part->lanes.end() ? nullptr : &*found;
}

void add(TimingPart* part, int ms, const PortStep& step) {
    if (TimingLane* const lane = laneOf(part, step.port)) {
        lane->steps.emplace_back(ms, step.value);
        part->ms = std::max(part->ms, ms);
    }
}

/// The steps of a plan on one clock. Returns when its pulses begin; -1 for none.
int layOut(TimingPart* part, const LaserPlan& plan) {
    int phaseMs = 0;
    int pulsesMs = -1;
    for (const LaserPhase& phase : plan) {
        for (const PortStep& step : phase.now) {
            add(part, phaseMs, step);
        }
        for (const TimedStep& step : phase.later) {
            add(part, phaseMs + step.ms, step.step);
        }
        if (phase.pulses == LaserPhase::Pulses::Start) {
            pulsesMs = phaseMs;
        }
        phaseMs += phase.waitMs;
    }
    part->goesOnMs = phaseMs;
    part->ms = std::max(part->ms, phaseMs);
    for (TimingLane& lane : part->lanes) {
        std::stable_sort(lane.steps.begin(), lane.steps.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
    }
    return pulsesMs;
}

/// Before them the laser goes on.
void addPulses(TimingPart* part, int beginMs, const LaserParams& params) {
    const int onMs = std::max(1, params.openMs);
    const qint64 periodMs = qint64(onMs) + params.openIntervalMs;
    TimingLane* const laser = laneOf(part, DO_LASER_ENABLE);
    for (int pulse = 0; pulse < mostPulses; ++pulse) {
        const qint64 offMs = beginMs + pulse * periodMs + onMs;
        if (offMs > part->ms) {
            break;
        }
        laser->steps.emplace_back(static_cast<int>(offMs), 0.0);
        laser->steps.emplace_back(static_cast<int>(offMs + params.openIntervalMs), 1.0);
    }
}

void addSpan(TimingPart* part, QLatin1String field, int fromMs, int ms) {
    if (ms > 0) {
        part->spans.push_back({field, fromMs, fromMs + ms});
    }
}

TimingPart openingOf(const LaserParams& params) {
    TimingPart part;
    for (const I_PORT port : lanePorts) {
        part.lanes.push_back({port, 0.0, {}});
    }
    const int pulsesMs = layOut(&part, openingPlan(params, rampStepMs));
    const int onMs = params.preFlowMs;
    addSpan(&part, "delay_before_blow"_l1, 0, params.preFlowMs);
    addSpan(&part, "stay_time"_l1, onMs, params.stayMs);
    addSpan(&part, "increase_time"_l1, onMs, params.increaseMs);
    if (params.openIntervalMs > 0) {
        part.ms = std::max(part.ms, pulsesMs + params.openMs + params.openIntervalMs);
        addPulses(&part, pulsesMs, params);
        addSpan(&part, "open_time"_l1, onMs, params.openMs);
        addSpan(&part, "open_interval"_l1, onMs + params.openMs, params.openIntervalMs);
    }
    return part;
}

TimingPart closingOf(const LaserParams& params) {
    TimingPart part;
    for (const I_PORT port : lanePorts) {
        const double before = port == AO_LASER_POWER ? params.power : port == DO_WIRE_PULLBACK ? 0.0 : 1.0;
        part.lanes.push_back({port, before, {}});
    }
    layOut(&part, closingPlan(params, rampStepMs, Closing::Awaited));
    const int offMs = params.decreaseMs;
    addSpan(&part, "decrease_time"_l1, 0, params.decreaseMs);
    addSpan(&part, "close_delay"_l1, offMs, params.closeDelayMs);
    addSpan(&part, "delay_after_blow"_l1, offMs + params.closeDelayMs, params.postFlowMs);
    addSpan(&part, "stop_wire_time"_l1, 0, params.refeedStartMs);
    addSpan(&part, "give_wire_time"_l1, 0, params.refeedEndMs);
    addSpan(&part, "move_wire_time"_l1, 0, params.pullbackEndMs);
    return part;
}

}  // namespace

LaserTiming laserTiming(const LaserParams& params) {
    return {openingOf(params), closingOf(params)};
}

}  // namespace prog
