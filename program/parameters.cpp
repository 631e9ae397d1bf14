#include "program/parameters.h"

#include "program/words.h"

#include <algorithm>

namespace prog {

namespace {

/// The sum of a closing's times has to fit into an int.
constexpr int longestMs = 500'000'000;

}  // namespace

int ParameterRow::most() const {
    constexpr int fullScale = 100;
    constexpr int longestOnPageMs = 5000;
    return isPercentage() ? fullScale : longestOnPageMs;
}

EntryRange ParameterRow::range() const {
    return {0, double(most()), isPercentage() ? "%" : "ms"};
}

const std::vector<ParameterRow>& parameterRows() {
    using Group = ParameterGroup;
    using Params = LaserParams;
    static const std::vector<ParameterRow> rows = {
        {field::power, Group::Power, 50, &Params::power, nullptr, "laser power"},
        {"frequency"_l1, Group::Power, 50, &Params::frequency, nullptr,
         "pulse frequency of the laser source"},
        {field::ratio, Group::Power, 50, &Params::ratio, nullptr, "duty cycle of the laser source"},
        {"increase_time"_l1, Group::Process, 200, nullptr, &Params::increaseMs, "power ramp at the opening"},
        {"decrease_time"_l1, Group::Process, 200, nullptr, &Params::decreaseMs, "power ramp at the closing"},
        {"stay_time"_l1, Group::Process, 200, nullptr, &Params::stayMs,
         "the laser is on for so long before the robot moves"},
        {"close_delay"_l1, Group::Process, 200, nullptr, &Params::closeDelayMs,
         "wait between ramp and post-flow"},
        {"open_time"_l1, Group::Process, 200, nullptr, &Params::openMs, "length of a pulse"},
        {"open_interval"_l1, Group::Process, 0, nullptr, &Params::openIntervalMs,
         "time between two pulses; 0: no pulses"},
        {"delay_before_blow"_l1, Group::Process, 200, nullptr, &Params::preFlowMs, "gas before the laser"},
        {"delay_after_blow"_l1, Group::Process, 200, nullptr, &Params::postFlowMs, "gas after the closing"},
        {field::speed, Group::Wire, 0, &Params::wireSpeed, nullptr, "speed of the wire feeder"},
        {"move_wire_time"_l1, Group::Wire, 200, nullptr, &Params::pullbackEndMs,
         "the wire is pulled back until then, counted from the closing"},
        {"stop_wire_time"_l1, Group::Wire, 200, nullptr, &Params::refeedStartMs,
         "the wire is fed again from then, counted from the closing"},
        {"give_wire_time"_l1, Group::Wire, 200, nullptr, &Params::refeedEndMs, "and until then"},
    };
    return rows;
}

const ParameterRow* parameterRow(const QString& name) {
    const std::vector<ParameterRow>& rows = parameterRows();
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&name](const ParameterRow& row) { return name == row.name; });
    return found == rows.end() ? nullptr : &*found;
}

LaserParams LaserParams::from(const Record& set) {
    constexpr double percent = 100.0;
    LaserParams params;
    for (const ParameterRow& row : parameterRows()) {
        const Record value = set.at(row.name);
        if (row.isPercentage()) {
            params.*row.fraction = value.number() / percent;
        } else {
            params.*row.milliseconds = std::clamp(value.integer(), 0, longestMs);
        }
    }
    return params;
}

std::vector<LaserParams> LaserParams::allFrom(const Record& sets) {
    std::vector<LaserParams> all;
    all.reserve(static_cast<std::size_t>(sets.size()));
    for (int i = 0; i < sets.size(); ++i) {
        all.push_back(from(sets.at(i)));
    }
    return all;
}

}  // namespace prog
