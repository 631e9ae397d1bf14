#pragma once

#include <algorithm>
#include <limits>

namespace bridge::linuxcnc {

/// Translates times of the wall clock into the host's clock, which stands while this process is late and
/// catches up when it runs again.
class ClockGap {
public:
    /// How long ago `thenMs` of the wall clock was, by the host's clock; both clocks show `nowMs` and
    /// `hostMs`.
    double age(double thenMs, double nowMs, double hostMs) {
        // A host that was late for too long does not catch up: the gap follows it slowly, with each call.
        constexpr double creepMs = 0.05;
        gapMs_ = std::min(nowMs - hostMs, gapMs_ + creepMs);
        return std::max(0.0, hostMs + gapMs_ - thenMs);
    }

private:
    double gapMs_ = std::numeric_limits<double>::max();  ///< of a host that is in time
};

}  // namespace bridge::linuxcnc
