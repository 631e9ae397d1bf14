#include "app/path/camera.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace app {

namespace {

constexpr double leastExtentM = 0.02;
constexpr double lowest = 0.05;  // of an orbit, rad: the ground stays a plane

std::array<Position, 8> cornersOf(const Extent& extent) {
    std::array<Position, 8> corners;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        corners[i] = {i & 1U ? extent.most.x : extent.least.x, i & 2U ? extent.most.y : extent.least.y,
                      i & 4U ? extent.most.z : extent.least.z};
    }
    return corners;
}

}  // namespace

void Extent::add(const Position& position) {
    if (empty) {
        least = most = position;
        empty = false;
        return;
    }
    least = {std::min(least.x, position.x), std::min(least.y, position.y), std::min(least.z, position.z)};
    most = {std::max(most.x, position.x), std::max(most.y, position.y), std::max(most.z, position.z)};
}

void Camera::look(double turn, double height) {
    turn_ = turn;
    height_ = std::clamp(height, 0.0, fromAbove);
    const Position ahead{-std::sin(turn_), std::cos(turn_), 0};
    right_ = {std::cos(turn_), std::sin(turn_), 0};
    up_ = ahead * std::sin(height_) + Position{0, 0, std::cos(height_)};
}

void Camera::orbit(double turn, double height) {
    look(turn_ + turn, std::clamp(height_ + height, lowest, fromAbove));
}

QPointF Camera::direction(const Position& vector) const {
    return {dot(vector, right_), -dot(vector, up_)};
}

QPointF Camera::seen(const Position& position) const {
    return area_.center() + direction(position - centre_) * scale_;
}

double Camera::nearness(const Position& position) const {
    return dot(position - centre_, cross(right_, up_));
}

void Camera::fit(const Extent& extent, double margin) {
    centre_ = interpolated(extent.least, extent.most, 0.5);
    double width = leastExtentM, height = leastExtentM;
    for (const Position& corner : cornersOf(extent)) {
        const QPointF off = direction(corner - centre_);
        width = std::max(width, 2 * std::abs(off.x()));
        height = std::max(height, 2 * std::abs(off.y()));
    }
    const double scale =
        std::min((area_.width() - 2 * margin) / width, (area_.height() - 2 * margin) / height);
    scale_ = std::clamp(scale, leastScale, mostScale);
}

void Camera::fitTurned(const Extent& extent, double margin) {
    constexpr double clearly = 1.02;
    look(0, height_);
    fit(extent, margin);
    const double straight = scale_;
    look(fromAbove, height_);
    fit(extent, margin);
    if (scale_ <= straight * clearly) {
        look(0, height_);
        fit(extent, margin);
    }
}

void Camera::zoom(double factor, const QPointF& fixed) {
    const QPointF off = fixed - area_.center();
    const double old = scale_;
    scale_ = std::clamp(scale_ * factor, leastScale, mostScale);
    const double shift = 1 / old - 1 / scale_;
    centre_ = centre_ + right_ * (off.x() * shift) - up_ * (off.y() * shift);
}

void Camera::pan(const QPointF& pixels) {
    centre_ = centre_ - right_ * (pixels.x() / scale_) + up_ * (pixels.y() / scale_);
}

ScaleBar Camera::scaleBar(double maxPixels) const {
    const double longest = maxPixels / scale_;
    const double power = std::pow(10, std::floor(std::log10(longest)));
    double metres = power;
    for (const double step : {2.0, 5.0}) {
        if (step * power <= longest) {
            metres = step * power;
        }
    }
    return {metres, metres * scale_};
}

}  // namespace app
