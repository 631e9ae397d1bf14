#include "workcell/runrecord.h"

#include <cmath>
#include <numeric>

namespace workcell {

double rounded(double number) {
    constexpr double parts = 1e6;
    return std::round(number * parts) / parts + 0.0;  // no negative zero
}

double SeamRecord::darkMm() const {
    return rounded(std::accumulate(darkGaps.begin(), darkGaps.end(), 0.0,
                                   [](double mm, const DarkGap& gap) { return mm + gap.toMm - gap.fromMm; }));
}

std::optional<double> SeamRecord::weldedRatio() const {
    return programmedMm > 0.0 && !isEndless ? std::optional(rounded(weldedMm / programmedMm)) : std::nullopt;
}

}  // namespace workcell
