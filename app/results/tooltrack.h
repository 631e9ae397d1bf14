#pragma once

#include "app/path/polyline.h"

#include <QJsonObject>

#include <deque>
#include <vector>

namespace app {

/// The path of the tool in one run, and where on it the laser emitted. Long paths are thinned, so that the
/// memory is bounded.
class ToolTrack {
public:
    static constexpr int mostPoints = 4000;
    static constexpr int mostSpans = 1000;

    /// The tool is at a place, `travelledMm` from the beginning.
    void add(const Position& place, double travelledMm);
    /// The laser goes on or off there.
    void setLit(bool lit, const Position& place, double travelledMm);

    [[nodiscard]] const Polyline& path() const { return path_; }
    /// The parts on which the laser emitted.
    [[nodiscard]] std::deque<Polyline> litPieces() const;
    /// A part of the path, by lengths from its beginning.
    [[nodiscard]] Polyline piece(double fromMm, double toMm) const;

    [[nodiscard]] QJsonObject json() const;
    [[nodiscard]] static ToolTrack from(const QJsonObject& json);

private:
    struct Span {
        double fromMm, toMm;
    };
    void append(const Position& place, double travelledMm);
    [[nodiscard]] Position at(double mm) const;

    Polyline path_;
    std::vector<double> atMm_;  ///< how far the tool had come at each point
    double stepMm_ = 0.5;       ///< least distance between two points
    std::vector<Span> lit_;
    double shortestGapMm_ = 0.05;  ///< shorter dark parts are not kept
    bool isLit_ = false;
};

}  // namespace app
