#include "bridge/linuxcnc/axes.h"

#include <cmath>

namespace bridge::linuxcnc {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double mmPerM = 1000;
constexpr double gimbalLock = 1e-7;  // of the cosine of B

double degrees(double radians) {
    return radians * 180 / pi;
}

double radians(double degrees) {
    return degrees * pi / 180;
}

double nearestTurn(double angle, double before) {
    return angle + 360 * std::round((before - angle) / 360);
}

double squaredTurn(const Axes& a, const Axes& b) {
    double sum = 0;
    for (std::size_t i = 3; i < a.size(); ++i) {
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    }
    return sum;
}

}  // namespace

Axes jointWords(const kin::Joints& joints) {
    Axes words{};
    for (std::size_t i = 0; i < words.size(); ++i) {
        words[i] = degrees(joints[i]);
    }
    words[1] -= 90;
    words[5] = -words[5];
    return words;
}

kin::Joints jointsOf(const Axes& words) {
    kin::Joints joints;
    for (const double word : words) {
        joints.push_back(radians(word));
    }
    joints[1] += pi / 2;
    joints[5] = -joints[5];
    return joints;
}

Axes axesAnew(const KDL::Frame& torch) {
    double a = 0, b = 0, c = 0;
    (torch.M * KDL::Rotation::RotX(pi)).GetRPY(a, b, c);
    return {torch.p.x() * mmPerM, torch.p.y() * mmPerM, torch.p.z() * mmPerM,
            degrees(a),           degrees(b),           degrees(c)};
}

Axes axesNear(const KDL::Frame& torch, const Axes& before) {
    Axes first = axesAnew(torch);
    if (std::abs(std::cos(radians(first[4]))) < gimbalLock) {
        // Only C - A or C + A is determined there.
        const double sign = first[4] > 0 ? 1 : -1;
        first[5] += sign * (before[3] - first[3]);
        first[3] = before[3];
    }
    Axes second = first;
    second[3] = first[3] + 180;
    second[4] = 180 - first[4];
    second[5] = first[5] + 180;
    for (std::size_t i = 3; i < first.size(); ++i) {
        first[i] = nearestTurn(first[i], before[i]);
        second[i] = nearestTurn(second[i], before[i]);
    }
    return squaredTurn(second, before) < squaredTurn(first, before) ? second : first;
}

}  // namespace bridge::linuxcnc
