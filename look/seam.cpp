#include "look/seam.h"

#include "look/tokens.h"

#include <QLineF>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>
#include <utility>

namespace look {

namespace {

constexpr qreal channelEdge = 1.5;  ///< px on either side of the hollow
constexpr qreal scaleStep = 0.42;   ///< of the width
constexpr qreal scaleDepth = 0.45;  ///< of the width: how far the control point lies ahead
constexpr qreal scalePen = 1.3;

QPen flatPen(QRgb colour, qreal width, Qt::PenCapStyle cap) {
    return {QColor(colour), width, Qt::SolidLine, cap, Qt::RoundJoin};
}

/// Walks along a line: places at lengths that never go back.
class Walker {
public:
    explicit Walker(const QPolygonF& track) : line_(track) {}

    /// The place at a length, the end for one beyond it.
    QPointF place(qreal length) {
        while (at_ + 2 < line_.size() && before_ + segment() < length) {
            before_ += segment();
            ++at_;
        }
        const qreal whole = segment();
        const qreal share = whole > 0 ? std::clamp((length - before_) / whole, 0.0, 1.0) : 0.0;
        return line_[at_] + (line_[at_ + 1] - line_[at_]) * share;
    }
    /// Where the track goes at the last place, 1 long.
    QPointF ahead() const {
        const QPointF along = line_[at_ + 1] - line_[at_];
        const qreal whole = segment();
        return whole > 0 ? along / whole : QPointF(1, 0);
    }
    /// The corner behind the last place.
    int corner() const { return at_ + 1; }

private:
    qreal segment() const { return QLineF(line_[at_], line_[at_ + 1]).length(); }

    const QPolygonF& line_;  ///< of two points or more
    int at_ = 0;
    qreal before_ = 0;  ///< length before the segment
};

/// The part of a line between two lengths.
QPolygonF partOf(const QPolygonF& track, qreal from, qreal to) {
    Walker walker(track);
    QPolygonF part;
    part << walker.place(from);
    const int first = walker.corner();
    const QPointF end = walker.place(to);
    for (int corner = first; corner < walker.corner(); ++corner) {
        part << track[corner];
    }
    return part << end;
}

/// One scale: an arc across the bead that bends towards where the seam goes.
QPainterPath scaleAt(const QPointF& at, const QPointF& ahead, qreal width) {
    const QPointF across(-ahead.y(), ahead.x());
    const qreal half = width / 2 - channelEdge;
    QPainterPath arc(at + across * half);
    arc.quadTo(at + ahead * (width * scaleDepth), at - across * half);
    return arc;
}

void paintEnd(QPainter* painter, const QPointF& centre, qreal width) {
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(steel));
    painter->drawEllipse(centre, width / 2, width / 2);
    painter->setBrush(Qt::NoBrush);
}

}  // namespace

qreal lengthOf(const QPolygonF& track) {
    qreal length = 0;
    for (int i = 1; i < track.size(); ++i) {
        length += QLineF(track[i - 1], track[i]).length();
    }
    return length;
}

void paintChannels(QPainter* painter, const QVector<QPolygonF>& lines, qreal width) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    for (const auto& [colour, size] :
         {std::pair(steel, width), {white, std::max(1.0, width - 2 * channelEdge)}}) {
        painter->setPen(flatPen(colour, size, Qt::RoundCap));
        for (const QPolygonF& track : lines) {
            painter->drawPolyline(track);
        }
    }
    painter->restore();
}

void paintBead(QPainter* painter, const QPolygonF& track, qreal width, qreal done, bool ended) {
    if (track.size() < 2) {
        return;
    }
    constexpr qreal overlap = 2;  // so that parts painted one after the other leave no slit
    const qreal length = lengthOf(track);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(flatPen(steel, width, Qt::FlatCap));
    painter->drawPolyline(partOf(track, std::max(0.0, done - overlap), length));
    if (done <= 0) {
        paintEnd(painter, track.first(), width);
    }
    if (ended) {
        paintEnd(painter, track.last(), width);
    }
    painter->setPen(QPen(QColor(bead), scalePen, Qt::SolidLine, Qt::RoundCap));
    // A scale is painted when the bead has covered all of it.
    const qreal step = width * scaleStep, margin = width * scaleDepth;
    const int first = done <= 0 ? 0 : int(std::floor((done - margin) / step)) + 1;
    Walker walker(track);
    for (int scale = std::max(0, first); scale * step <= length - margin; ++scale) {
        const QPointF at = walker.place(scale * step);
        painter->drawPath(scaleAt(at, walker.ahead(), width));
    }
    painter->restore();
}

void paintSeam(QPainter* painter, const QPainterPath& path, qreal width, qreal welded, bool laserOn) {
    const QList<QPolygonF> lines = path.toSubpathPolygons();
    if (lines.isEmpty() || lines.first().size() < 2) {
        return;
    }
    const QPolygonF& track = lines.first();
    paintChannels(painter, {track}, width);
    const qreal whole = lengthOf(track);
    const qreal done = std::clamp(welded, 0.0, whole);
    if (done > 0) {
        paintBead(painter, partOf(track, 0, done), width, 0, done >= whole && !laserOn);
    }
    if (laserOn) {
        paintLaser(painter, Walker(track).place(done), width * 1.7);
    }
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
