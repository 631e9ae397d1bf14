#include "app/results/seamprofile.h"

#include <algorithm>
#include <cmath>

namespace app {

namespace {

bool isSame(const ProfileSample& a, const ProfileSample& b) {
    constexpr double least = 0.05;  // mm/s and %
    return std::abs(a.speedMmPerS - b.speedMmPerS) < least && std::abs(a.powerPct - b.powerPct) < least;
}

/// Leaves out all but every `step`th and the ends, and with `keepJumps` what is before and behind a jump of
/// the power.
SeamProfile thinned(const SeamProfile& profile, std::size_t step, bool keepJumps) {
    constexpr double jumpPct = 2;
    const auto jumps = [&profile](std::size_t i) {
        return std::abs(profile[i].powerPct - profile[i - 1].powerPct) > jumpPct;
    };
    SeamProfile kept;
    for (std::size_t i = 0; i < profile.size(); ++i) {
        const bool isEnd = i == 0 || i + 1 == profile.size();
        if (isEnd || i % step == 0 || (keepJumps && (jumps(i) || jumps(i + 1)))) {
            kept.push_back(profile[i]);
        }
    }
    return kept;
}

double rounded(double value) {
    constexpr double parts = 100;
    return std::round(value * parts) / parts;
}

}  // namespace

void ProfileRecorder::add(const ProfileSample& sample) {
    if (!samples_.empty() && isSame(sample, samples_.back()) && sample.mm - samples_.back().mm < stepMm_) {
        return;
    }
    samples_.push_back(sample);
    if (samples_.size() > mostSamples) {
        const SeamProfile few = thinned(samples_, 2, true);
        const bool jumpsMuch = few.size() > mostSamples / 2 + mostSamples / 4;  // a pulsed laser
        samples_ = jumpsMuch ? thinned(samples_, 2, false) : few;
        stepMm_ *= 2;
    }
}

SeamProfile partOf(const SeamProfile& profile, double fromMm, double toMm, std::size_t most) {
    SeamProfile part;
    for (const ProfileSample& sample : profile) {
        if (sample.mm >= fromMm && sample.mm <= toMm) {
            part.push_back({sample.mm - fromMm, sample.speedMmPerS, sample.powerPct});
        }
    }
    if (part.size() <= most) {
        return part;
    }
    const std::size_t step = part.size() / most + 1;
    const SeamProfile few = thinned(part, step, true);
    return few.size() <= 2 * most ? few : thinned(part, step, false);
}

QJsonArray jsonOf(const SeamProfile& profile) {
    QJsonArray json;
    for (const ProfileSample& sample : profile) {
        for (const double value : {sample.mm, sample.speedMmPerS, sample.powerPct}) {
            json.append(rounded(value));
        }
    }
    return json;
}

SeamProfile profileFrom(const QJsonArray& json) {
    SeamProfile profile;
    for (int i = 0; i + 2 < json.size(); i += 3) {
        profile.push_back({json.at(i).toDouble(), json.at(i + 1).toDouble(), json.at(i + 2).toDouble()});
    }
    return profile;
}

}  // namespace app
