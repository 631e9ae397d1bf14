#pragma once

#include "app/path/camera.h"
#include "app/path/pathlayout.h"

#include <QPointF>

class QPainter;

namespace app {

/// The middle of the targets in view: numbers stand on the other side of their targets.
[[nodiscard]] QPointF middleOf(const Camera& camera, const std::vector<PathMove>& moves);

/// Writes the numbers of the lines of moves without welding beside their targets, as far as there is room.
/// With the painter's font.
void paintNumbers(QPainter* painter, const Camera& camera, const std::vector<PathMove>& moves,
                  const QPointF& middle);

/// The number of a line as a tag beside its target.
void paintTag(QPainter* painter, const Camera& camera, const PathMove& move, const QPointF& middle);

}  // namespace app
