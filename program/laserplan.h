#pragma once

#include "program/parameters.h"
#include "program/ports.h"

#include <QLatin1String>

#include <vector>

namespace prog {

/// One write to a logical output port.
struct PortStep {
    /// What becomes of a step that is still to come when a new sequence begins.
    enum class Role {
        Progress,   ///< ramp steps, wire on: dropped
        RampDown,   ///< dropped; written as min(value, last power), so that it never raises the power
        SwitchOff,  ///< done at once
        GasOff,     ///< dropped: the new sequence owns the gas
    };

    I_PORT port = DO_GAS;
    double value = 0.0;  ///< digital: 0 or 1; analogue: fraction of full scale
    Role role = Role::Progress;
};

struct TimedStep {
    int ms = 0;  ///< since the phase began
    PortStep step;
};

/// One phase of an opening or a closing. It stops the pulses, writes what is due at once, plans what is due
/// later, starts the pulses and waits, in this order; each only where the phase says so.
struct LaserPhase {
    enum class Pulses { Keep, Stop, Start };

    Pulses pulses = Pulses::Keep;
    bool isGroup = false;  ///< `now` is sent as one batch where the controller takes batches
    std::vector<PortStep> now;
    std::vector<TimedStep> later;
    QLatin1String wait;  ///< what the phase waits for (prog::waits); empty: the next phase begins at once
    int waitMs = 0;      ///< since the phase began
};

/// A whole opening or closing.
using LaserPlan = std::vector<LaserPhase>;

/// Gas and pre-flow; power 0, enable, duty cycle and frequency; the power ramp from 0 (every `dtMs`, wider
/// where that would be more than 5,000 steps), then full power and the wire; meanwhile pulses and the dwell.
[[nodiscard]] LaserPlan openingPlan(const LaserParams& params, int dtMs);

/// How long it makes a run wait, in ms.
[[nodiscard]] int durationMs(const LaserPlan& plan);

/// Who waits for a closing, which decides when the gas goes off.
enum class Closing {
    Awaited,     ///< a "close" or the program's end: after ramp, close delay and post-flow, each awaited
    Paused,      ///< a pause inside a wait: post-flow after the pause, but not before the ramp has ended
    Unattended,  ///< a lost permission, the robot goes on: after ramp, close delay and post-flow
};

/// Pulses off, wire pull-back and re-feed, power ramp, then power, enable, duty cycle and frequency off, then
/// the gas. A re-feed that would end before it starts is left out, its switching off stays.
[[nodiscard]] LaserPlan closingPlan(const LaserParams& params, int dtMs, Closing closing);

/// All equipment off, in the order of an immediate shutdown.
[[nodiscard]] const std::vector<PortStep>& shutdownSteps();

}  // namespace prog
