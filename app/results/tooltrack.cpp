#include "app/results/tooltrack.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

constexpr double mmPerM = prog::mmPerM;

/// Rounded to 0.01 mm, to keep files short.
double shortened(double mm) {
    constexpr double parts = 100;
    return std::round(mm * parts) / parts;
}

}  // namespace

void ToolTrack::add(const Position& place, double travelledMm) {
    if (isLit_) {
        lit_.back().toMm = travelledMm;
    }
    if (path_.empty() || travelledMm - atMm_.back() >= stepMm_) {
        append(place, travelledMm);
    }
}

void ToolTrack::setLit(bool lit, const Position& place, double travelledMm) {
    add(place, travelledMm);
    if (travelledMm > atMm_.back()) {
        append(place, travelledMm);
    }
    if (lit && (lit_.empty() || travelledMm - lit_.back().toMm > shortestGapMm_)) {
        lit_.push_back({travelledMm, travelledMm});
    }
    isLit_ = lit;
    while (int(lit_.size()) > mostSpans) {
        shortestGapMm_ *= 2;
        std::vector<Span> joined;
        for (const Span& span : lit_) {
            if (!joined.empty() && span.fromMm - joined.back().toMm <= shortestGapMm_) {
                joined.back().toMm = span.toMm;
            } else {
                joined.push_back(span);
            }
        }
        lit_ = std::move(joined);
    }
}

void ToolTrack::append(const Position& place, double travelledMm) {
    path_.push_back(place);
    atMm_.push_back(travelledMm);
    if (int(path_.size()) < mostPoints) {
        return;
    }
    stepMm_ *= 2;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < path_.size(); ++i) {
        if (i == 0 || i + 1 == path_.size() || atMm_[i] - atMm_[kept - 1] >= stepMm_) {
            path_[kept] = path_[i];
            atMm_[kept] = atMm_[i];
            ++kept;
        }
    }
    path_.resize(kept);
    atMm_.resize(kept);
}

Position ToolTrack::at(double mm) const {
    const auto next = std::lower_bound(atMm_.begin(), atMm_.end(), mm);
    if (next == atMm_.begin()) {
        return path_.front();
    }
    if (next == atMm_.end()) {
        return path_.back();
    }
    const auto i = std::size_t(next - atMm_.begin());
    return interpolated(path_[i - 1], path_[i], (mm - atMm_[i - 1]) / (atMm_[i] - atMm_[i - 1]));
}

Polyline ToolTrack::piece(double fromMm, double toMm) const {
    if (path_.empty()) {
        return {};
    }
    Polyline piece{at(fromMm)};
    const auto begin = std::upper_bound(atMm_.begin(), atMm_.end(), fromMm);
    for (auto mm = begin; mm != atMm_.end() && *mm < toMm; ++mm) {
        piece.push_back(path_[std::size_t(mm - atMm_.begin())]);
    }
    piece.push_back(at(toMm));
    return piece;
}

std::deque<Polyline> ToolTrack::litPieces() const {
    std::deque<Polyline> pieces;
    for (const Span& span : lit_) {
        pieces.push_back(piece(span.fromMm, span.toMm));
    }
    return pieces;
}

QJsonObject ToolTrack::json() const {
    QJsonArray points;
    for (std::size_t i = 0; i < path_.size(); ++i) {
        const Position mm = path_[i] * mmPerM;
        points.append(QJsonArray{shortened(atMm_[i]), shortened(mm.x), shortened(mm.y), shortened(mm.z)});
    }
    QJsonArray lit;
    for (const Span& span : lit_) {
        lit.append(QJsonArray{shortened(span.fromMm), shortened(span.toMm)});
    }
    return {{QStringLiteral("points"), points}, {QStringLiteral("lit"), lit}};
}

ToolTrack ToolTrack::from(const QJsonObject& json) {
    ToolTrack track;
    const QJsonArray points = json.value(QLatin1String("points")).toArray();
    for (const QJsonValue& value : points) {
        const QJsonArray point = value.toArray();
        track.atMm_.push_back(point.at(0).toDouble());
        track.path_.push_back(
            Position{point.at(1).toDouble(), point.at(2).toDouble(), point.at(3).toDouble()} / mmPerM);
    }
    const QJsonArray lit = json.value(QLatin1String("lit")).toArray();
    for (const QJsonValue& span : lit) {
        track.lit_.push_back({span.toArray().at(0).toDouble(), span.toArray().at(1).toDouble()});
    }
    return track;
}

}  // namespace app
