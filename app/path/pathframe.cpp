#include "app/path/pathframe.h"

#include <algorithm>
#include <cmath>

namespace app {

namespace {

constexpr double margin = 34;         // pixels around what is shown, where titles and lines' ends are
constexpr double leastExtent = 0.02;  // metres
constexpr double leastShare = 0.35;   // of the height, for either view

}  // namespace

void Extent::add(const Position& place) {
    if (empty) {
        least = most = place;
        empty = false;
        return;
    }
    least = {std::min(least.x, place.x), std::min(least.y, place.y), std::min(least.z, place.z)};
    most = {std::max(most.x, place.x), std::max(most.y, place.y), std::max(most.z, place.z)};
}

void PathFrame::setSize(const QSize& size) {
    const double share = heightAbove_ / height_;
    width_ = std::max(1, size.width());
    height_ = std::max(1, size.height());
    heightAbove_ = height_ * share;
}

void PathFrame::fit(const Extent& extent) {
    centre_ = interpolated(extent.least, extent.most, 0.5);
    const Position room = extent.most - extent.least;
    const double x = std::max(room.x, leastExtent);
    const double y = std::max(room.y, leastExtent), z = std::max(room.z, leastExtent);
    heightAbove_ = height_ * std::clamp(y / (y + z), leastShare, 1 - leastShare);
    const double scale = std::min({(width_ - 2 * margin) / x, (heightAbove_ - 2 * margin) / y,
                                   (height_ - heightAbove_ - 2 * margin) / z});
    scale_ = std::clamp(scale, leastScale, mostScale);
}

QPointF PathFrame::fromAbove(const Position& place) const {
    return above().center() + QPointF(place.x - centre_.x, centre_.y - place.y) * scale_;
}

QPointF PathFrame::fromSide(const Position& place) const {
    return side().center() + QPointF(place.x - centre_.x, centre_.z - place.z) * scale_;
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
