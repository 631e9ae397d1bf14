#include "app/path/pathpick.h"

#include <QLineF>

#include <algorithm>
#include <cmath>
#include <utility>

namespace app {

namespace {

constexpr double leastStepPx = 1.5;

double squared(const QPointF& off) {
    return QPointF::dotProduct(off, off);
}

double distanceTo(const QPointF& from, const QPointF& to, const QPointF& place) {
    const QPointF along = to - from;
    const double whole = squared(along);
    const double share =
        whole > 0 ? std::clamp(QPointF::dotProduct(place - from, along) / whole, 0.0, 1.0) : 0.0;
    return std::sqrt(squared(place - from - along * share));
}

double distanceTo(const QPolygonF& line, const QPointF& place) {
    double nearest = QLineF(line.first(), place).length();
    for (int i = 1; i < line.size(); ++i) {
        nearest = std::min(nearest, distanceTo(line[i - 1], line[i], place));
    }
    return nearest;
}

}  // namespace

void extendSeen(const Camera& camera, const Polyline& line, std::size_t from, QPolygonF* seen) {
    for (std::size_t i = from; i < line.size(); ++i) {
        const QPointF point = camera.seen(line[i]);
        if (seen->isEmpty() || (point - seen->last()).manhattanLength() >= leastStepPx) {
            *seen << point;
        }
    }
}

QPolygonF seenLine(const Camera& camera, const Polyline& line) {
    QPolygonF points;
    extendSeen(camera, line, 0, &points);
    if (!line.empty() && points.last() != camera.seen(line.back())) {
        points << camera.seen(line.back());
    }
    return points;
}

std::vector<SeenMove> seenMoves(const Camera& camera, const std::vector<PathMove>& moves) {
    std::vector<SeenMove> seen;
    seen.reserve(moves.size());
    for (const PathMove& move : moves) {
        QPolygonF track = seenLine(camera, move.path);
        if (!move.corner.empty()) {
            track << seenLine(camera, move.corner);
        }
        const QRectF box = track.boundingRect();
        seen.push_back({std::move(track), box, camera.seen(move.target)});
    }
    return seen;
}

std::optional<int> lineAt(const std::vector<PathMove>& moves, const Camera& camera, const QPointF& place,
                          double reach, int chosen) {
    constexpr double samePlacePx = 2;
    std::vector<std::pair<double, int>> near;  // distance and line
    double nearest = reach;
    const std::vector<SeenMove> seen = seenMoves(camera, moves);
    for (std::size_t i = 0; i < moves.size(); ++i) {
        const double distance = distanceTo(seen[i].track, place);
        if (distance <= reach) {
            near.emplace_back(distance, moves[i].line);
            nearest = std::min(nearest, distance);
        }
    }
    std::optional<int> first, behind;
    for (const auto& [distance, line] : near) {  // in the order of the program
        if (distance > nearest + samePlacePx) {
            continue;
        }
        first = first ? first : line;
        if (line > chosen && !behind) {
            behind = line;
        }
    }
    const bool isThere = std::any_of(near.begin(), near.end(), [&](const auto& found) {
        return found.second == chosen && found.first <= nearest + samePlacePx;
    });
    return isThere && behind ? behind : first;
}

}  // namespace app
