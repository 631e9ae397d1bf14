#include "program/pathpiece.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace prog {

PathPiece PathPiece::line(const Pose& start, const Pose& end) {
    PathPiece piece;
    piece.start_ = start.trans;
    piece.end_ = end.trans;
    piece.turns_ = {start.rot, end.rot};
    return piece;
}

PathPiece PathPiece::arc(const Arc& arc, std::vector<Orientation> turns) {
    PathPiece piece;
    piece.arc_ = arc;
    piece.turns_ = std::move(turns);
    return piece;
}

double PathPiece::lengthM() const {
    return arc_ ? arc_->lengthM() : distance(start_, end_);
}

Pose PathPiece::at(double alongM) const {
    const double length = lengthM();
    const double along = std::clamp(alongM, 0.0, length);
    if (!arc_) {
        const double fraction = length > 0.0 ? along / length : 0.0;
        return {interpolated(start_, end_, fraction), interpolated(turns_[0], turns_[1], fraction)};
    }
    const double angle = along / arc_->radiusM();
    const int leg = std::min(arc_->legAt(angle), arc_->legCount() - 1);
    const double from = leg > 0 ? arc_->legEnd(leg - 1) : 0.0;
    const double fraction = (angle - from) / (arc_->legEnd(leg) - from);
    const auto turn = static_cast<std::size_t>(leg);
    return {arc_->at(angle), interpolated(turns_[turn], turns_[turn + 1], fraction)};
}

double PathPiece::nearestM(const Position& position, double nearM) const {
    if (arc_) {
        return arc_->angleNear(position, 0.0, nearM / arc_->radiusM()) * arc_->radiusM();
    }
    const Position whole = end_ - start_;
    const double squared = dot(whole, whole);
    const double fraction = squared > 0.0 ? dot(position - start_, whole) / squared : 0.0;
    return std::clamp(fraction, 0.0, 1.0) * std::sqrt(squared);
}

std::vector<WayBack> wayBack(const PathPiece& piece, double fromM, double toM) {
    if (!piece.arc()) {
        return {{piece.at(toM), std::nullopt}};
    }
    constexpr double halfTurn = 3.14159265358979323846;
    const double turned = (fromM - toM) / piece.arc()->radiusM();
    const int count = std::max(1, static_cast<int>(std::ceil(turned / halfTurn)));
    const double step = (fromM - toM) / count;
    std::vector<WayBack> way;
    for (int i = 1; i <= count; ++i) {
        const double endM = i == count ? toM : fromM - step * i;
        way.push_back({piece.at(endM), piece.at(fromM - step * (i - 0.5))});
    }
    return way;
}

}  // namespace prog
