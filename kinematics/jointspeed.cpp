#include "kinematics/jointspeed.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kin {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double sampleM = 0.002;
constexpr int fewestSamples = 4;

/// °/s, base to flange: of six axes, and of seven with the roll of the upper arm.
constexpr std::array<double, 6> sixSpeeds = {200, 200, 220, 400, 400, 600};
constexpr std::array<double, 7> sevenSpeeds = {200, 200, 220, 220, 400, 400, 600};

}  // namespace

double jointSpeed(int axes, int axis) {
    const auto position = std::size_t(axis);
    const double degrees =
        axes == int(sevenSpeeds.size()) ? sevenSpeeds.at(position) : sixSpeeds.at(position);
    return degrees * pi / 180;
}

std::optional<FastJoint> fastestJoint(double lengthM, const std::function<Joints(double)>& joints, int axes,
                                      double speed) {
    const int samples = std::max(fewestSamples, int(std::ceil(lengthM / sampleM)));
    const double step = lengthM / samples;
    std::optional<FastJoint> worst;
    double most = 1.0;
    Joints before = joints(0);
    for (int i = 1; i <= samples && step > 0; ++i) {
        const Joints now = joints(step * i);
        for (int axis = 0; axis < axes; ++axis) {
            const auto position = std::size_t(axis);
            const double asked = std::abs(now[position] - before[position]) / step * speed;
            if (asked > most * jointSpeed(axes, axis)) {
                most = asked / jointSpeed(axes, axis);
                worst = FastJoint{axis, asked, step * i};
            }
        }
        before = now;
    }
    return worst;
}

}  // namespace kin
