#include "app/roles/padlock.h"

#include <QPainter>
#include <QPainterPath>

namespace app {

void paintPadlock(QPainter* painter, const QRectF& square, const QColor& colour, bool open) {
    constexpr double grid = 24;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(square.topLeft());
    painter->scale(square.width() / grid, square.height() / grid);
    painter->setPen(QPen(colour, 2.5, Qt::SolidLine, Qt::RoundCap));
    QPainterPath shackle;
    shackle.moveTo(8, 11);
    shackle.lineTo(8, 7);
    shackle.arcTo(QRectF(8, 2, 8, 9), 180, -180);
    shackle.lineTo(16, open ? 7 : 11);
    painter->drawPath(open ? shackle.translated(6, 0) : shackle);
    painter->setPen(Qt::NoPen);
    painter->setBrush(colour);
    painter->drawRoundedRect(QRectF(4, 11, 16, 11), 2, 2);
    painter->restore();
}

}  // namespace app
