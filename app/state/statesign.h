#pragma once

#include "app/state/panelstate.h"

class QPainter;
class QRectF;

namespace app {

/// Paints a sign into a square, in one colour.
void paintSign(QPainter* painter, Sign sign, const QRectF& square, const QColor& colour);

}  // namespace app
