#pragma once

class QColor;
class QPainter;
class QRectF;

namespace app {

/// Paints a padlock into a square, open or closed.
void paintPadlock(QPainter* painter, const QRectF& square, const QColor& colour, bool open);

}  // namespace app
