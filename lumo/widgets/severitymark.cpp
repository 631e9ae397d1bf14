#include "widgets/severitymark.h"

#include <QApplication>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <iterator>

namespace lumo {

namespace {

constexpr QRgb errorColour = qRgb(198, 40, 40);
constexpr QRgb warningColour = qRgb(245, 166, 35);
constexpr QRgb warningInk = qRgb(60, 40, 0);

/// An exclamation mark in a square of edge 1 whose middle is the origin.
void paintExclamation(QPainter* painter, const QColor& ink, double shift) {
    painter->setBrush(ink);
    painter->drawRoundedRect(QRectF(-0.07, -0.28 + shift, 0.14, 0.34), 0.05, 0.05);
    painter->drawEllipse(QPointF(0, 0.2 + shift), 0.085, 0.085);
}

}  // namespace

void paintMark(QPainter* painter, const QRectF& area, prog::Severity severity) {
    const double edge = std::min(area.width(), area.height());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(area.center());
    painter->scale(edge, edge);
    painter->setPen(Qt::NoPen);
    if (severity == prog::Severity::Error) {
        painter->setBrush(QColor(errorColour));
        painter->drawEllipse(QPointF(), 0.47, 0.47);
        paintExclamation(painter, Qt::white, 0.02);
    } else {
        constexpr double corner = 0.08;
        painter->setBrush(QColor(warningColour));
        painter->setPen(QPen(QColor(warningColour), corner, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
        const QPointF corners[] = {{0, -0.42}, {0.45, 0.4}, {-0.45, 0.4}};
        painter->drawPolygon(corners, int(std::size(corners)));
        painter->setPen(Qt::NoPen);
        paintExclamation(painter, QColor(warningInk), 0.1);
    }
    painter->restore();
}

QIcon markIcon(prog::Severity severity, int edge) {
    const double ratio = qApp->devicePixelRatio();
    QPixmap picture(QSize(edge, edge) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintMark(&painter, QRectF(0, 0, edge, edge), severity);
    painter.end();
    return QIcon(picture);
}

}  // namespace lumo
