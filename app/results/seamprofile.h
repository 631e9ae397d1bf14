#pragma once

#include <QJsonArray>

#include <cstddef>
#include <vector>

namespace app {

/// Speed and laser power at a place of a path.
struct ProfileSample {
    double mm = 0;  ///< from the beginning of the path
    double speedMmPerS = 0;
    double powerPct = 0;
};

/// Along a seam, from its opening.
using SeamProfile = std::vector<ProfileSample>;

/// Speed and power along the welds of a run. Long runs are thinned, so that the memory is bounded.
class ProfileRecorder {
public:
    static constexpr std::size_t mostSamples = 20000;

    /// In the order of the path.
    void add(const ProfileSample& sample);
    [[nodiscard]] const SeamProfile& samples() const { return samples_; }

private:
    SeamProfile samples_;
    double stepMm_ = 0.1;  ///< least distance of samples with the same values
};

/// The part between two lengths, its samples counted from the first one, thinned to about `most`.
[[nodiscard]] SeamProfile partOf(const SeamProfile& profile, double fromMm, double toMm,
                                 std::size_t most = 400);

/// Three numbers a sample, rounded to a hundredth.
[[nodiscard]] QJsonArray jsonOf(const SeamProfile& profile);
[[nodiscard]] SeamProfile profileFrom(const QJsonArray& json);

}  // namespace app
