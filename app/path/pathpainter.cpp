#include "app/path/pathpainter.h"

#include "app/path/pathnumbers.h"
#include "app/path/pathpick.h"
#include "look/scale.h"
#include "look/seam.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

double pointRadius() {
    return look::px(3) + 0.2;
}

QPen penOf(PathSign sign) {
    switch (sign) {
        case PathSign::JointMove: {
            QPen pen(QColor(look::ink3), 1.6, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
            pen.setDashPattern({4, 3});
            return pen;
        }
        case PathSign::Impossible: {
            QPen pen(QColor(look::amberLine), 2.4, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
            pen.setDashPattern({1, 1.6});
            return pen;
        }
        default:
            return {QColor(look::ink3), 1.6, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin};
    }
}

PathSign signOf(const PathMove& move) {
    if (move.impossible) {
        return PathSign::Impossible;
    }
    if (move.weld) {
        return PathSign::Weld;
    }
    return move.shape == PathMove::Shape::Joint ? PathSign::JointMove : PathSign::Move;
}

void drawPoint(QPainter* painter, const QPointF& point) {
    painter->setPen(QPen(QColor(look::ink2), 1.6));
    painter->setBrush(QColor(look::white));
    painter->drawEllipse(point, pointRadius(), pointRadius());
}

void drawCross(QPainter* painter, const QPointF& point) {
    constexpr double arm = 6;
    painter->setPen(QPen(QColor(look::amberLine), 2.4));
    painter->drawLine(point + QPointF(-arm, -arm), point + QPointF(arm, arm));
    painter->drawLine(point + QPointF(-arm, arm), point + QPointF(arm, -arm));
}

/// A hollow bar with an edge of warning.
void drawGap(QPainter* painter, const QPolygonF& gap, double width) {
    constexpr double edges = 4;
    for (const auto& [colour, size] : {std::pair(look::amberLine, width), {look::white, width - edges}}) {
        painter->setPen(QPen(QColor(colour), size, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin));
        painter->drawPolyline(gap);
    }
}

}  // namespace

double PathPainter::seamWidth(const Camera& camera) {
    constexpr double metres = 0.025;
    return std::clamp(camera.pixelsPerMetre() * metres, double(look::px(6)), double(look::px(14)));
}

double PathPainter::barPixels() {
    return look::px(100);
}

bool PathPainter::isOut(const QRectF& box) const {
    constexpr double margin = 24;
    return !box.adjusted(-margin, -margin, margin, margin).intersects(part_);
}

// --- Sheet ------------------------------------------------------------------------------------------

void PathPainter::paintGround(const Extent& extent) {
    constexpr double slope = 0.02;  // rad; nearer to a plane it is seen as one
    painter_->save();
    painter_->fillRect(part_, QColor(look::white));
    painter_->setClipRect(part_, Qt::IntersectClip);
    painter_->setRenderHint(QPainter::Antialiasing, false);
    painter_->setPen(QPen(QColor(look::rule), 1));
    if (camera_.height() < slope || camera_.height() > Camera::fromAbove - slope) {
        paintPlaneGrid();
    } else {
        painter_->setRenderHint(QPainter::Antialiasing);
        paintGroundGrid(extent);
    }
    painter_->restore();
}

/// Its lines go through the origin of the base.
void PathPainter::paintPlaneGrid() {
    const double step = camera_.scaleBar(barPixels()).pixels;
    const QPointF origin = camera_.seen({});
    const QRectF& area = camera_.area();
    for (double x = origin.x() + std::ceil((area.left() - origin.x()) / step) * step; x < area.right();
         x += step) {
        painter_->drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    }
    for (double y = origin.y() + std::ceil((area.top() - origin.y()) / step) * step; y < area.bottom();
         y += step) {
        painter_->drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
    }
}

/// Around the extent, at the height of its lowest point.
void PathPainter::paintGroundGrid(const Extent& extent) {
    constexpr double beyond = 0.35, most = 40;
    const double z = extent.least.z;
    const double side =
        std::max({extent.most.x - extent.least.x, extent.most.y - extent.least.y, 0.05}) * beyond;
    double step = camera_.scaleBar(barPixels()).metres;
    while ((extent.most.x - extent.least.x + 2 * side) / step > most ||
           (extent.most.y - extent.least.y + 2 * side) / step > most) {
        step *= 2;
    }
    const auto down = [step](double value) { return std::floor(value / step) * step; };
    const auto up = [step](double value) { return std::ceil(value / step) * step; };
    const double left = down(extent.least.x - side), right = up(extent.most.x + side);
    const double near = down(extent.least.y - side), far = up(extent.most.y + side);
    for (double x = left; x < right + step / 2; x += step) {
        painter_->drawLine(camera_.seen({x, near, z}), camera_.seen({x, far, z}));
    }
    for (double y = near; y < far + step / 2; y += step) {
        painter_->drawLine(camera_.seen({left, y, z}), camera_.seen({right, y, z}));
    }
}

void PathPainter::paintAxes() {
    const double length = look::px(34), margin = look::px(16), least = look::px(8), away = look::px(11);
    const std::pair<Position, QString> axes[] = {
        {{1, 0, 0}, QStringLiteral("X")}, {{0, 1, 0}, QStringLiteral("Y")}, {{0, 0, 1}, QStringLiteral("Z")}};
    QRectF needed(0, 0, 1, 1);  // of the ends with their names, from where they meet
    for (const auto& axis : axes) {
        const QPointF end = camera_.direction(axis.first) * (length + 2 * away);
        needed = needed.united(QRectF(end, QPointF()).normalized());
    }
    const QPointF corner =
        camera_.area().bottomLeft() + QPointF(margin - needed.left(), -margin - needed.bottom());
    painter_->setPen(QPen(QColor(look::ink2), 1.6, Qt::SolidLine, Qt::RoundCap));
    for (const auto& [axis, name] : axes) {
        const QPointF end = camera_.direction(axis) * length;
        const double shown = std::hypot(end.x(), end.y());
        if (shown < least) {
            continue;  // it points at the eye
        }
        painter_->drawLine(corner, corner + end);
        const QPointF middle = corner + end + end / shown * away;
        painter_->drawText(QRectF(middle - QPointF(away, away), QSizeF(2 * away, 2 * away)), Qt::AlignCenter,
                           name);
    }
}

void PathPainter::paintFrame(const QString& title, const QString& barText) {
    const QRectF& area = camera_.area();
    const double margin = look::px(16), tick = look::px(6);
    painter_->save();
    painter_->setRenderHint(QPainter::Antialiasing);
    painter_->setFont(look::font(look::Size::Caption));
    paintAxes();
    painter_->setPen(QColor(look::ink2));
    painter_->drawText(area.adjusted(margin, look::px(12), -margin, 0), Qt::AlignLeft | Qt::AlignTop, title);
    painter_->setRenderHint(QPainter::Antialiasing, false);
    const double bar = camera_.scaleBar(barPixels()).pixels;
    const QPointF right = area.bottomRight() - QPointF(margin + 4, margin + 2);
    const QPointF left = right - QPointF(bar, 0);
    painter_->setPen(QPen(QColor(look::ink2), 1.6, Qt::SolidLine, Qt::FlatCap));
    painter_->drawPolyline(QPolygonF({left - QPointF(0, tick), left, right, right - QPointF(0, tick)}));
    const double height = look::px(20);
    painter_->drawText(QRectF(right.x() - area.width(), right.y() - height - 2, area.width(), height),
                       Qt::AlignRight | Qt::AlignVCenter, barText);
    painter_->restore();
}

// --- Path -------------------------------------------------------------------------------------------

/// A line for each weld, of moves that follow each other. Those that are out of the part are left out: the
/// ends that this makes are not seen.
QVector<QPolygonF> PathPainter::channels(const std::vector<PathMove>& moves,
                                         const std::vector<SeenMove>& seen) const {
    QVector<QPolygonF> lines;
    const PathMove* before = nullptr;
    for (std::size_t i = 0; i < moves.size(); ++i) {
        const bool isThere = signOf(moves[i]) == PathSign::Weld && !isOut(seen[i].box);
        if (isThere && before && before->seam == moves[i].seam) {
            lines.last() << seen[i].track;
        } else if (isThere) {
            lines << seen[i].track;
        }
        before = isThere ? &moves[i] : nullptr;
    }
    return lines;
}

void PathPainter::paintMoves(const std::vector<PathMove>& moves, const std::vector<SeenMove>& seen,
                             const std::vector<std::size_t>& chosen) {
    painter_->save();
    painter_->setClipRect(part_, Qt::IntersectClip);
    painter_->setRenderHint(QPainter::Antialiasing, !draft_);
    painter_->setBrush(Qt::NoBrush);
    const double width = seamWidth(camera_);
    for (const std::size_t i : chosen) {
        const double bare = moves[i].weld ? width : 2;
        painter_->setPen(QPen(QColor(look::halo), bare + 2 * haloBeyond * look::factor(), Qt::SolidLine,
                              Qt::RoundCap, Qt::RoundJoin));
        painter_->drawPolyline(seen[i].track);
    }
    for (std::size_t i = 0; i < moves.size(); ++i) {
        const PathSign sign = signOf(moves[i]);
        const bool isChannel = sign == PathSign::Weld;
        if (!isOut(seen[i].box) && (draft_ || !isChannel)) {
            painter_->setPen(draft_ && isChannel ? QPen(QColor(look::steel), 3) : penOf(sign));
            painter_->drawPolyline(seen[i].track);
        }
    }
    if (!draft_) {
        look::paintChannels(painter_, channels(moves, seen), width);
    }
    painter_->restore();
}

void PathPainter::paintSeams(const std::deque<Polyline>& pieces) {
    painter_->save();
    painter_->setClipRect(camera_.area(), Qt::IntersectClip);
    for (const Polyline& piece : pieces) {
        const QPolygonF line = seenLine(camera_, piece);
        if (!isOut(line.boundingRect())) {
            look::paintBead(painter_, line, seamWidth(camera_), 0, true);
        }
    }
    painter_->restore();
}

void PathPainter::paintGaps(const std::vector<Polyline>& pieces) {
    painter_->save();
    painter_->setClipRect(camera_.area(), Qt::IntersectClip);
    painter_->setRenderHint(QPainter::Antialiasing);
    for (const Polyline& piece : pieces) {
        drawGap(painter_, seenLine(camera_, piece), seamWidth(camera_));
    }
    painter_->restore();
}

void PathPainter::paintPoints(const std::vector<PathMove>& moves, const std::vector<SeenMove>& seen) {
    painter_->save();
    painter_->setClipRect(part_, Qt::IntersectClip);
    painter_->setRenderHint(QPainter::Antialiasing);
    constexpr double roomPx = 200;  // square, of a point; where they have less they would cover all
    const auto count = std::count_if(seen.begin(), seen.end(),
                                     [this](const SeenMove& move) { return part_.contains(move.target); });
    const bool areMany = double(count) * roomPx > part_.width() * part_.height();
    QPointF last(-1e6, -1e6);
    for (std::size_t i = 0; i < moves.size(); ++i) {
        const QPointF& point = seen[i].target;
        if (!part_.contains(point) || (point - last).manhattanLength() < 1) {
            continue;
        }
        last = point;
        if (!areMany) {
            drawPoint(painter_, point);
        }
        if (moves[i].impossible) {
            drawCross(painter_, point);
        }
    }
    painter_->restore();
}

void PathPainter::paintWelded(const std::vector<PathMove>& moves, const Extent& extent,
                              const std::vector<Polyline>& gaps, const std::deque<Polyline>& pieces) {
    const std::vector<SeenMove> seen = seenMoves(camera_, moves);
    paintGround(extent);
    paintMoves(moves, seen);
    paintGaps(gaps);
    paintSeams(pieces);
    paintPoints(moves, seen);
    painter_->save();
    painter_->setRenderHint(QPainter::Antialiasing);
    painter_->setFont(look::font(look::Size::Caption));
    paintNumbers(painter_, camera_, moves, middleOf(camera_, moves));
    painter_->restore();
}

void PathPainter::paintTool(const Position& position, bool laser) {
    const QPointF place = camera_.seen(position);
    const double size = std::max(seamWidth(camera_) * 1.7, double(look::px(20)));
    painter_->save();
    painter_->setClipRect(camera_.area(), Qt::IntersectClip);
    if (laser) {
        look::paintLaser(painter_, place, size);
    } else {
        const double half = size / 2 - 2;
        painter_->setRenderHint(QPainter::Antialiasing);
        painter_->setPen(QPen(QColor(look::steel), 2, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
        painter_->setBrush(QColor(look::white));
        painter_->drawPolygon(QPolygonF({place - QPointF(0, half), place + QPointF(half, 0),
                                         place + QPointF(0, half), place - QPointF(half, 0)}));
    }
    painter_->restore();
}

void PathPainter::paintSample(QPainter* painter, PathSign sign, const QRectF& area) {
    const QPointF middle = area.center();
    const double half = area.height() / 2;
    const QPolygonF line(
        QVector<QPointF>{{area.left() + half, middle.y()}, {area.right() - half, middle.y()}});
    const double width = std::min(area.height(), 12.0);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    switch (sign) {
        case PathSign::Point:
            drawPoint(painter, middle);
            break;
        case PathSign::Gap:
            drawGap(painter, line, width);
            break;
        case PathSign::Weld:
            look::paintChannels(painter, {line}, width);
            break;
        case PathSign::Seam:
            look::paintBead(painter, line, width, 0, true);
            break;
        default:
            painter->setPen(penOf(sign));
            painter->drawLine(QPointF(area.left(), middle.y()), QPointF(area.right(), middle.y()));
    }
    painter->restore();
}

}  // namespace app
