#pragma once

#include <algorithm>

namespace prog {

/// Speeds of a dry run in welds, % of the weld speed.
constexpr double leastDryPercent = 100.0;
constexpr double mostDryPercent = 1000.0;

/// A percentage as it is used: what is no number counts as 100 %.
[[nodiscard]] inline double drySpeedPercent(double percent) {
    return percent > leastDryPercent ? std::min(percent, mostDryPercent) : leastDryPercent;
}

/// The speed of a move in a weld of a dry run: that share of the weld speed, but not more than the move's own
/// speed. A move whose own speed is below the weld speed has the weld speed.
[[nodiscard]] inline double dryMmPerS(double weldMmPerS, double ownMmPerS, double percent) {
    return std::clamp(weldMmPerS * percent / 100.0, weldMmPerS, std::max(weldMmPerS, ownMmPerS));
}

}  // namespace prog
