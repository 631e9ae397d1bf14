#pragma once

#include "program/laserplan.h"

#include <QLatin1String>

#include <utility>
#include <vector>

namespace prog {

/// How an output goes in an opening or a closing.
struct TimingLane {
    I_PORT port = DO_GAS;
    double before = 0.0;                        ///< its value until the first step; as those of PortStep
    std::vector<std::pair<int, double>> steps;  ///< ms since the beginning, the value from then on; in order
};

/// A time of a parameter set.
struct TimingSpan {
    QLatin1String field;  ///< its name in the set
    int fromMs = 0, toMs = 0;
};

/// An opening or a closing, with gas, laser, power, wire and pull-back as lanes.
struct TimingPart {
    int ms = 0;        ///< until nothing changes any more, and the run goes on
    int goesOnMs = 0;  ///< until the run goes on
    std::vector<TimingLane> lanes;
    std::vector<TimingSpan> spans;  ///< without those of 0 ms
};

/// What a parameter set does over time: the plans of its opening and of its closing, in which a run waits.
struct LaserTiming {
    TimingPart opening, closing;
};

/// From the plans that a run carries out.
[[nodiscard]] LaserTiming laserTiming(const LaserParams& params);

}  // namespace prog
