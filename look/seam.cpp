#include "look/seam.h"

#include "look/tokens.h"

#include <QPainter>

#include <algorithm>

namespace look {

namespace {

constexpr qreal channelEdge = 1.5;  ///< px on either side of the hollow
constexpr qreal scaleStep = 0.42;   ///< of the width
constexpr qreal scalePen = 1.3;

QPen flatPen(QRgb colour, qreal width, Qt::PenCapStyle cap) {
    return {QColor(colour), width, Qt::SolidLine, cap, Qt::RoundJoin};
}

/// The first part of a path, as short lines that follow it.
QPainterPath firstPart(const QPainterPath& path, qreal length) {
    const qreal whole = path.length();
    QPainterPath part(path.pointAtPercent(0));
    constexpr qreal step = 2;
    for (qreal at = step; at < length; at += step) {
        part.lineTo(path.pointAtPercent(path.percentAtLength(at)));
    }
    part.lineTo(path.pointAtPercent(path.percentAtLength(std::min(length, whole))));
    return part;
}

/// One scale: an arc across the bead that bends towards where the seam goes.
QPainterPath scaleAt(const QPainterPath& path, qreal percent, qreal width) {
    const QPointF at = path.pointAtPercent(percent);
    const QLineF along = QLineF::fromPolar(1, path.angleAtPercent(percent));
    const QPointF ahead(along.dx(), along.dy());
    const QPointF across(-along.dy(), along.dx());
    const qreal half = width / 2 - channelEdge;
    QPainterPath arc(at + across * half);
    arc.quadTo(at + ahead * (width * 0.45), at - across * half);
    return arc;
}

}  // namespace

void paintSeam(QPainter* painter, const QPainterPath& path, qreal width, qreal welded, bool laserOn) {
    if (path.isEmpty()) {
        return;
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->strokePath(path, flatPen(steel, width, Qt::RoundCap));
    painter->strokePath(path, flatPen(white, width - 2 * channelEdge, Qt::RoundCap));
    const qreal whole = path.length();
    const qreal done = std::clamp(welded, 0.0, whole);
    if (done > 0) {
        const bool isWhole = done >= whole && !laserOn;
        const QPainterPath part = firstPart(path, done);
        painter->strokePath(part, flatPen(steel, width, isWhole ? Qt::RoundCap : Qt::FlatCap));
        // The round end at the start belongs to the welded part.
        painter->setPen(Qt::NoPen);
        painter->setBrush(QColor(steel));
        painter->drawEllipse(path.pointAtPercent(0), width / 2, width / 2);
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(QColor(bead), scalePen));
        for (qreal at = 0; at < done - width * 0.45; at += width * scaleStep) {
            painter->drawPath(scaleAt(path, path.percentAtLength(at), width));
        }
    }
    if (laserOn) {
        paintLaser(painter, path.pointAtPercent(path.percentAtLength(done)), width * 1.7);
    }
    painter->restore();
}

void paintSeamBar(QPainter* painter, const QRectF& place, qreal share, bool laserOn) {
    const qreal width = std::min(place.height() * 0.6, 14.0);
    const qreal margin = place.height() / 2;
    QPainterPath path(QPointF(place.left() + margin, place.center().y()));
    path.lineTo(place.right() - margin, place.center().y());
    paintSeam(painter, path, width, path.length() * share, laserOn);
}

void paintLaser(QPainter* painter, const QPointF& centre, qreal size) {
    const qreal half = size / 2;
    QPainterPath diamond(centre - QPointF(0, half));
    diamond.lineTo(centre + QPointF(half, 0));
    diamond.lineTo(centre + QPointF(0, half));
    diamond.lineTo(centre - QPointF(half, 0));
    diamond.closeSubpath();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(QColor(white), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
    painter->setBrush(QColor(red));
    painter->drawPath(diamond);
    painter->restore();
}

void paintWeldBar(QPainter* painter, const QRectF& row, Weld weld, bool isFirst, bool isLast) {
    if (weld == Weld::None) {
        return;
    }
    constexpr qreal margin = 6;
    const qreal radius = row.width() / 2;
    // Ends that are not the seam's lie outside of the row and are clipped.
    const QRectF bar = row.adjusted(0, isFirst ? margin : -row.width(), 0, isLast ? -margin : row.width());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setClipRect(row, Qt::IntersectClip);
    const bool hollow = weld == Weld::ToWeld;
    painter->setPen(hollow ? QPen(QColor(steel), 2) : QPen(Qt::NoPen));
    painter->setBrush(hollow ? QColor(white) : QColor(weld == Weld::Now ? red : steel));
    const qreal inset = hollow ? 1 : 0;
    painter->drawRoundedRect(bar.adjusted(inset, inset, -inset, -inset), radius, radius);
    painter->restore();
}

}  // namespace look
