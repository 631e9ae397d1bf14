#include "app/path/pathframe.h"

#include <algorithm>
#include <cmath>

namespace app {

namespace {

constexpr double marginPx = 34;  // around the extent, for titles and the ends of lines
constexpr double leastExtentM = 0.02;
constexpr double leastPart = 0.35;  // of the height, for either view

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

void PathFrame::setSize(const QSize& size) {
    const double part = heightAbove_ / height_;
    width_ = std::max(1, size.width());
    height_ = std::max(1, size.height());
    heightAbove_ = height_ * part;
}

void PathFrame::fit(const Extent& extent) {
    centre_ = interpolated(extent.least, extent.most, 0.5);
    const Position size = extent.most - extent.least;
    const double x = std::max(size.x, leastExtentM);
    const double y = std::max(size.y, leastExtentM), z = std::max(size.z, leastExtentM);
    heightAbove_ = height_ * std::clamp(y / (y + z), leastPart, 1 - leastPart);
    const double scale = std::min({(width_ - 2 * marginPx) / x, (heightAbove_ - 2 * marginPx) / y,
                                   (height_ - heightAbove_ - 2 * marginPx) / z});
    scale_ = std::clamp(scale, leastScale, mostScale);
}

QPointF PathFrame::fromAbove(const Position& position) const {
    return above().center() + QPointF(position.x - centre_.x, centre_.y - position.y) * scale_;
}

QPointF PathFrame::fromSide(const Position& position) const {
    return side().center() + QPointF(position.x - centre_.x, centre_.z - position.z) * scale_;
}

void PathFrame::zoom(double factor, const QPointF& fixed) {
    const bool seenFromSide = side().contains(fixed);
    const QPointF off = fixed - (seenFromSide ? side() : above()).center();
    const double old = scale_;
    scale_ = std::clamp(scale_ * factor, leastScale, mostScale);
    const double shift = 1 / old - 1 / scale_;
    centre_.x += off.x() * shift;
    (seenFromSide ? centre_.z : centre_.y) -= off.y() * shift;
}

void PathFrame::pan(const QPointF& pixels, const QPointF& grip) {
    centre_.x -= pixels.x() / scale_;
    (side().contains(grip) ? centre_.z : centre_.y) += pixels.y() / scale_;
}

ScaleBar PathFrame::scaleBar(double maxPixels) const {
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
