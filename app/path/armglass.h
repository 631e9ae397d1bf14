#pragma once

#include "app/path/camera.h"

#include <vector>

class QPainter;

namespace app {

/// Draws the robot as glass, so that the path shows through: from its joints (see sim::Arm::skeleton), the
/// torch as far as it stands off the tool's place, and from there the beam while the laser is on.
void paintArm(QPainter* painter, const Camera& camera, const std::vector<Position>& skeleton, bool laser);

/// The part of the screen that it covers.
[[nodiscard]] QRectF armPlace(const Camera& camera, const std::vector<Position>& skeleton);

}  // namespace app
