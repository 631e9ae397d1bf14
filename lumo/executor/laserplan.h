#pragma once

#include "executor/schedule.h"
#include "module/host.h"
#include "program/parameters.h"

using prog::LaserParams;

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
