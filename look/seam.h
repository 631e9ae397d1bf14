#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QVector>

class QPainter;

/// The sign of a seam, the same wherever one is shown: a hollow channel is to weld, filled with scales it is
/// welded, a red diamond is the laser.
namespace look {

/// Draws the channel along a path, `width` px wide, with its first part filled: `welded` is a length in the
/// units of the path. The laser's diamond stands at the end of that part while the laser is on.
void paintSeam(QPainter* painter, const QPainterPath& path, qreal width, qreal welded, bool laserOn);

/// The same on a straight line from left to right through the middle of a place, with a share (0 to 1) that
/// is welded: a progress bar.
void paintSeamBar(QPainter* painter, const QRectF& place, qreal share, bool laserOn);

/// Hollow channels along lines, one channel where they meet.
void paintChannels(QPainter* painter, const QVector<QPolygonF>& lines, qreal width);

/// A bead along a line that may grow: of it, what lies behind its first `done` px. Called again with the same
/// line grown longer it paints only what came to it. `ended`: the laser is off, and the end is round.
void paintBead(QPainter* painter, const QPolygonF& track, qreal width, qreal done, bool ended);

/// The length of a line, px.
[[nodiscard]] qreal lengthOf(const QPolygonF& track);

/// The red diamond with a white edge.
void paintLaser(QPainter* painter, const QPointF& centre, qreal size);

/// How a line of a program stands to its seam.
enum class Weld { None, ToWeld, Welded, Now };

/// The bar at the edge of a row: `row` is the row's part of the bar (8 px wide). Its ends are round at the
/// first and the last row of a seam.
void paintWeldBar(QPainter* painter, const QRectF& row, Weld weld, bool isFirst, bool isLast);

}  // namespace look
