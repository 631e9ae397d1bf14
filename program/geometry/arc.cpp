#include "program/geometry/arc.h"

#include <algorithm>
#include <limits>

namespace prog {

namespace {

constexpr double turn = 2 * 3.14159265358979323846;

Position divided(const Position& a, double by) {
    return {a[0] / by, a[1] / by, a[2] / by};
}

Position sum(const Position& a, double times, const Position& b, double timesB) {
    return {times * a[0] + timesB * b[0], times * a[1] + timesB * b[1], times * a[2] + timesB * b[2]};
}

}  // namespace

/// The circumcentre of the triangle with the sides u and v from `start`, n = u × v:
/// start + (|u|²·(v × n) + |v|²·(n × u)) / 2|n|².
std::optional<Arc> Arc::through(const Position& start, const std::vector<Leg>& legs) {
    if (legs.empty()) {
        return std::nullopt;
    }
    const Position& middle = legs.size() == 1 ? legs[0].via : legs[0].end;
    const Position& last = legs.size() == 1 ? legs[0].end : legs[1].end;
    const Position u = between(start, middle);
    const Position v = between(start, last);
    const Position n = cross(u, v);
    const double nn = dot(n, n);
    constexpr double straight = 1e-6;  // sine of the angle between the chords
    if (!(nn > straight * straight * dot(u, u) * dot(v, v))) {
        return std::nullopt;
    }
    const Position toCentre = divided(sum(cross(v, n), dot(u, u), cross(n, u), dot(v, v)), 2 * nn);
    Arc arc;
    arc.centre_ = sum(start, 1.0, toCentre, 1.0);
    arc.radius_ = length(toCentre);
    arc.first_ = divided(toCentre, -arc.radius_);
    arc.second_ = cross(divided(n, length(n)), arc.first_);
    double reached = 0.0;
    for (const Leg& leg : legs) {
        const double angle = arc.rawAngle(leg.end);
        // The last leg of a circle ends where the first began.
        constexpr double atStart = 1e-6;
        reached = angle <= reached + atStart ? turn : angle;
        arc.ends_.push_back(reached);
    }
    return arc;
}

double Arc::rawAngle(const Position& p) const {
    const Position radius = between(centre_, p);
    const double angle = std::atan2(dot(radius, second_), dot(radius, first_));
    return angle < 0 ? angle + turn : angle;
}

double Arc::angleOnTheWay(const Position& p, double from, double expected) const {
    constexpr double cutCornerM = 0.01;
    constexpr double sameM = 0.0005;
    const double furthest = expected + std::min(cutCornerM / radius_, turn / 2);
    const double raw = rawAngle(p);
    double best = from;
    double bestMiss = std::numeric_limits<double>::infinity();
    for (const double candidate : {raw - turn, raw, raw + turn}) {
        const double angle = std::clamp(candidate, from, total());
        const double outside = std::abs(candidate - angle);
        const double miss = outside * radius_ < sameM ? 0.0 : outside;
        const bool isNearer = std::abs(angle - expected) < std::abs(best - expected);
        if (angle <= furthest && (miss < bestMiss || (miss == bestMiss && isNearer))) {
            best = angle;
            bestMiss = miss;
        }
    }
    return best;
}

double Arc::angleNear(const Position& p, double from, double reached) const {
    const double raw = rawAngle(p);
    return std::clamp(raw + turn * std::round((reached - raw) / turn), from, total());
}

Position Arc::at(double angle) const {
    const Position along = sum(centre_, 1.0, first_, radius_ * std::cos(angle));
    return sum(along, 1.0, second_, radius_ * std::sin(angle));
}

int Arc::legAt(double angle) const {
    const auto leg = std::find_if(ends_.begin(), ends_.end(), [angle](double end) { return angle < end; });
    return static_cast<int>(leg - ends_.begin());
}

}  // namespace prog
