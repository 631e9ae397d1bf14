#include "app/state/statesign.h"

#include <QPainter>
#include <QPainterPath>

namespace app {

namespace {

constexpr double grid = 24;  // the signs are drawn on a grid of this many units

QPolygonF polygonOf(Sign sign) {
    switch (sign) {
        case Sign::Octagon:
            return {{{8, 2}, {16, 2}, {22, 8}, {22, 16}, {16, 22}, {8, 22}, {2, 16}, {2, 8}}};
        case Sign::Triangle:
            return {{{12, 2}, {23, 21}, {1, 21}}};
        case Sign::Diamond:
            return {{{12, 1}, {23, 12}, {12, 23}, {1, 12}}};
        case Sign::Arrow:
            return {{{5, 2}, {21, 12}, {5, 22}}};
        case Sign::Flag:
            return {{{6, 3}, {20, 3}, {16, 8}, {20, 13}, {6, 13}}};
        default:
            return {};
    }
}

QPainterPath linesOf(Sign sign) {
    constexpr double quarter = 90;
    QPainterPath path;
    switch (sign) {
        case Sign::Flag:
            path.moveTo(6, 3);
            path.lineTo(6, 22);
            break;
        case Sign::Waves:
            for (const double radius : {4.0, 9.0, 14.0}) {
                const QRectF circle(5 - radius, 12 - radius, 2 * radius, 2 * radius);
                path.arcMoveTo(circle, -quarter / 2);
                path.arcTo(circle, -quarter / 2, quarter);
            }
            break;
        case Sign::Power:
            path.moveTo(12, 2);
            path.lineTo(12, 11);
            path.arcMoveTo(QRectF(4, 5, 16, 16), quarter + 40);
            path.arcTo(QRectF(4, 5, 16, 16), quarter + 40, 280);
            break;
        case Sign::Ring:
            path.addEllipse(QRectF(4, 4, 16, 16));
            break;
        default:
            break;
    }
    return path;
}

}  // namespace

void paintSign(QPainter* painter, Sign sign, const QRectF& square, const QColor& colour) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(square.topLeft());
    painter->scale(square.width() / grid, square.height() / grid);
    painter->setPen(Qt::NoPen);
    painter->setBrush(colour);
    painter->drawPolygon(polygonOf(sign));
    if (sign == Sign::Bars) {
        painter->drawRect(QRectF(4, 3, 6, 18));
        painter->drawRect(QRectF(14, 3, 6, 18));
    }
    painter->setPen(QPen(colour, 3, Qt::SolidLine, Qt::RoundCap));
    painter->setBrush(Qt::NoBrush);
    painter->drawPath(linesOf(sign));
    painter->restore();
}

}  // namespace app
