#pragma once

#include "app/path/camera.h"
#include "app/path/pathlayout.h"

#include <QSet>

class QPainter;

namespace app {

/// Writes the numbers of lines beside their targets: those of moves without welding as far as there is room,
/// and a tag for each selected line. With the painter's font.
void paintNumbers(QPainter* painter, const Camera& camera, const std::vector<PathMove>& moves,
                  const QSet<int>& selected);

}  // namespace app
