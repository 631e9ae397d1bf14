#include "executor/arc.h"

#include "module/keys.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace lumo {

namespace {

constexpr double turn = 2 * 3.14159265358979323846;

using Matrix = std::array<std::array<double, 3>, 3>;

Matrix rotation(const ModuleObject* rot) {
    const double cx = std::cos(rot->c(0)->getDouble(0.0)), sx = std::sin(rot->c(0)->getDouble(0.0));
    const double cy = std::cos(rot->c(1)->getDouble(0.0)), sy = std::sin(rot->c(1)->getDouble(0.0));
    const double cz = std::cos(rot->c(2)->getDouble(0.0)), sz = std::sin(rot->c(2)->getDouble(0.0));
    return {{{cz * cy, cz * sy * sx - sz * cx, cz * sy * cx + sz * sx},
             {sz * cy, sz * sy * sx + cz * cx, sz * sy * cx - cz * sx},
             {-sy, cy * sx, cy * cx}}};
}

constexpr QLatin1String path = "path"_l1;
constexpr QLatin1String aux = "aux"_l1;

Position placeIn(const ModuleObject* record, QLatin1String name) {
    return Position::of(record->c(name)->c(field::trans));
}

Arc::Leg legIn(const ModuleObject* record) {
    return {placeIn(record, aux), placeIn(record, field::point)};
}

}  // namespace

Position Position::of(const ModuleObject* trans) {
    return {trans->c(0)->getDouble(0.0), trans->c(1)->getDouble(0.0), trans->c(2)->getDouble(0.0)};
}

double distance(const Position& a, const Position& b) {
    return std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) + (a.z - b.z) * (a.z - b.z));
}

/// The trace of the one rotation against the other is 1 + 2·cos of the angle between them.
double turnBetween(const ModuleObject* a, const ModuleObject* b) {
    const Matrix first = rotation(a);
    const Matrix second = rotation(b);
    double trace = 0.0;
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column) {
            trace += first[row][column] * second[row][column];
        }
    }
    return std::acos(std::clamp((trace - 1.0) / 2.0, -1.0, 1.0));
}

Arc::Vector Arc::between(const Position& from, const Position& to) {
    return {to.x - from.x, to.y - from.y, to.z - from.z};
}

double Arc::dot(const Vector& a, const Vector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

Arc::Vector Arc::cross(const Vector& a, const Vector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// The circumcentre of the triangle with the sides u and v from `start`, n = u × v:
/// start + (|u|²·(v × n) + |v|²·(n × u)) / 2|n|².
std::optional<Arc> Arc::through(const Position& start, const std::vector<Leg>& legs) {
    if (legs.empty()) {
        return std::nullopt;
    }
    const Position& middle = legs.size() == 1 ? legs[0].via : legs[0].end;
    const Position& last = legs.size() == 1 ? legs[0].end : legs[1].end;
    const Vector u = between(start, middle);
    const Vector v = between(start, last);
    const Vector n = cross(u, v);
    const double nn = dot(n, n);
    constexpr double straight = 1e-6;  // sine of the angle between the chords
    if (!(nn > straight * straight * dot(u, u) * dot(v, v))) {
        return std::nullopt;
    }
    const Vector uAlong = cross(n, u);
    const Vector vAlong = cross(v, n);
    const double uu = dot(u, u), vv = dot(v, v);
    const Vector toCentre{(vAlong.x * uu + uAlong.x * vv) / (2 * nn),
                          (vAlong.y * uu + uAlong.y * vv) / (2 * nn),
                          (vAlong.z * uu + uAlong.z * vv) / (2 * nn)};
    Arc arc;
    arc.centre_ = {start.x + toCentre.x, start.y + toCentre.y, start.z + toCentre.z};
    arc.radius_ = std::sqrt(dot(toCentre, toCentre));
    arc.first_ = {-toCentre.x / arc.radius_, -toCentre.y / arc.radius_, -toCentre.z / arc.radius_};
    const double size = std::sqrt(nn);
    arc.second_ = cross({n.x / size, n.y / size, n.z / size}, arc.first_);
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
    const Vector radius = between(centre_, p);
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
    const double c = radius_ * std::cos(angle);
    const double s = radius_ * std::sin(angle);
    return {centre_.x + c * first_.x + s * second_.x, centre_.y + c * first_.y + s * second_.y,
            centre_.z + c * first_.z + s * second_.z};
}

int Arc::legAt(double angle) const {
    const auto leg = std::find_if(ends_.begin(), ends_.end(), [angle](double end) { return angle < end; });
    return static_cast<int>(leg - ends_.begin());
}

std::optional<Arc> QueuedArc::arc() const {
    std::vector<Arc::Leg> legs;
    if (command->hasCmobj(path)) {
        for (const ModuleObject* element : command->c(path)->cmobjs()) {
            legs.push_back(legIn(element));
        }
    } else {
        legs.push_back(legIn(command.get()));
    }
    return Arc::through(start, legs);
}

double QueuedArc::speedMPerS() const {
    return command->r(QStringLiteral("traj.speed"))->getDouble(0.0);
}

bool QueuedArc::fillRest(ModuleObject* args, const Arc& arc, double angle) const {
    constexpr double doneM = 0.00005;
    const int leg = arc.legAt(angle + doneM / arc.radiusM());
    if (leg == arc.legCount()) {
        return false;
    }
    args->copyFrom(nullptr, command.get());
    ModuleObject* first = args;
    if (args->hasCmobj(path)) {
        for (int done = 0; done < leg; ++done) {
            args->c(path)->remove(nullptr, mIndex(0));
        }
        first = args->c(path)->c(0);
    }
    const Position half = arc.at((angle + arc.legEnd(leg)) / 2);
    ModuleObject* const via = first->c(aux)->c(field::trans);
    via->set(nullptr, mIndex(0), half.x)->set(nullptr, mIndex(1), half.y)->set(nullptr, mIndex(2), half.z);
    return true;
}

}  // namespace lumo
