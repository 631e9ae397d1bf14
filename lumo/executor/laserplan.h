#pragma once

#include "executor/schedule.h"
#include "module/host.h"

/// Values of a parameter set as the laser sequences use them: percentages as fractions of full
/// scale, times in ms, negative times as 0. A null node gives zeros.
struct LaserParams {
    double power = 0.0, frequency = 0.0, ratio = 0.0, wireSpeed = 0.0;
    int increaseMs = 0, decreaseMs = 0, stayMs = 0, closeDelayMs = 0;
    int openMs = 0, openIntervalMs = 0;
    int preFlowMs = 0, postFlowMs = 0;
    int pullbackEndMs = 0, refeedStartMs = 0, refeedEndMs = 0;

    static LaserParams from(const ModuleObject* set);
};

/// The parameter set in force: the element of `lumo.param` at `lumo.cur_param`, the null node for
/// an index that names none.
ModuleObject* paramNode();

/// The step of power ramps from "lumo.execute.dt"; 20 ms where that is no positive number.
int rampStepMs();

/// The laser comes on: power from 0 in equal time steps (longer ones where there would be more than 5,000),
/// full power at the end of the ramp, then the wire. Times count from the moment the laser was enabled.
Sequence openingPlan(const LaserParams& params, int dtMs);

/// The laser goes off: wire pull-back and re-feed, power ramp, then power, enable, duty cycle and
/// frequency off. Times count from the beginning of the closing. A re-feed that would end before it
/// starts is left out, its switching off stays.
Sequence closingPlan(const LaserParams& params, int dtMs);

/// The gas goes off, `ms` after the beginning of the sequence.
Sequence gasOffPlan(int ms);

/// All equipment off, in the order of an immediate shutdown.
const std::vector<PortStep>& shutdownSteps();
