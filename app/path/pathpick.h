#pragma once

#include "app/path/camera.h"
#include "app/path/pathlayout.h"

#include <QPolygonF>

#include <optional>

namespace app {

/// A move on the screen, its corner included.
struct SeenMove {
    QPolygonF track;
    QRectF box;
    QPointF target;
};

[[nodiscard]] std::vector<SeenMove> seenMoves(const Camera& camera, const std::vector<PathMove>& moves);
/// Points nearer than a pixel or two to each other are left out: a long path has many.
[[nodiscard]] QPolygonF seenLine(const Camera& camera, const Polyline& line);
/// Appends to a line on the screen what was added to one in space behind its first `from` positions.
void extendSeen(const Camera& camera, const Polyline& line, std::size_t from, QPolygonF* seen);

/// The line of the move that is meant by a tap: the nearest one within `reach` px. Where several lie there,
/// one upon the other, the one behind `chosen` in the program, so that taps go through all of them.
[[nodiscard]] std::optional<int> lineAt(const std::vector<PathMove>& moves, const Camera& camera,
                                        const QPointF& place, double reach, int chosen = -1);

}  // namespace app
