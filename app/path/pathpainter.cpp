#include "app/path/pathpainter.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>
#include <functional>

namespace app {

namespace {

const QColor ink(0x2f, 0x41, 0x58);
const QColor faint(0x6b, 0x7a, 0x8b);
const QColor gridColour(0xee, 0xf1, 0xf5);
const QColor border(0xb9, 0xc4, 0xd0);
const QColor halo(0xa9, 0xcd, 0xf2);
const QColor tagColour(0x2f, 0x6f, 0xb0);
const QColor hot(0xe4, 0x57, 0x2e);
const QColor bad(0xb0, 0x1e, 0x1e);

// Pixels.
constexpr double pointRadius = 2.6;
constexpr double toolRadius = 8;
constexpr double seamStep = 1.5;
constexpr int smallPx = 13;

QPen penOf(PathSign sign) {
    switch (sign) {
        case PathSign::Weld:
            return {ink, 4.5, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin};
        case PathSign::Move:
            return {faint, 1.4, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin};
        case PathSign::JointMove: {
            QPen pen(faint, 1.4, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
            pen.setDashPattern({6, 4});
            return pen;
        }
        case PathSign::Impossible: {
            QPen pen(bad, 2, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
            pen.setDashPattern({1, 2});
            return pen;
        }
        case PathSign::Selected:
            return {halo, 13, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
        case PathSign::Gap:
            return {bad, 9, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin};
        case PathSign::Seam: {
            QPen pen(hot, 9, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
            pen.setDashPattern({0.33, 0.2});
            return pen;
        }
        default:
            return {ink, 1.4};
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
    painter->setPen(QPen(ink, 1.2));
    painter->setBrush(Qt::white);
    painter->drawEllipse(point, pointRadius, pointRadius);
}

void drawCross(QPainter* painter, const QPointF& point) {
    constexpr double arm = 5;
    painter->setPen(QPen(bad, 2));
    painter->drawLine(point + QPointF(-arm, -arm), point + QPointF(arm, arm));
    painter->drawLine(point + QPointF(-arm, arm), point + QPointF(arm, -arm));
}

/// A hollow bar.
void drawGap(QPainter* painter, const QPolygonF& gap) {
    QPen pen = penOf(PathSign::Gap);
    painter->setPen(pen);
    painter->drawPolyline(gap);
    constexpr double borders = 4;
    pen.setColor(Qt::white);
    pen.setWidthF(pen.widthF() - borders);
    painter->setPen(pen);
    painter->drawPolyline(gap);
}

/// The points of a line in a view. Points less than a pixel or two apart are left out: a long seam has many.
template <typename Project>
QPolygonF projected(const Polyline& line, const Project& project) {
    QPolygonF points;
    points << project(line.front());
    for (const Position& position : line) {
        const QPointF point = project(position);
        if ((point - points.last()).manhattanLength() >= seamStep) {
            points << point;
        }
    }
    return points << project(line.back());
}

/// A ring with cross hairs; with the laser on, a filled ring with rays.
void drawTool(QPainter* painter, const QPointF& point, bool laser) {
    painter->setPen(QPen(laser ? hot : ink, 2));
    painter->setBrush(laser ? QBrush(hot) : QBrush(Qt::NoBrush));
    painter->drawEllipse(point, laser ? toolRadius * 0.6 : toolRadius, laser ? toolRadius * 0.6 : toolRadius);
    constexpr int hairCount = 4, rayCount = 8;
    const int count = laser ? rayCount : hairCount;
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * M_PI * i / count;
        const QPointF out(std::cos(angle), std::sin(angle));
        painter->drawLine(point + out * (laser ? toolRadius * 0.9 : toolRadius * 0.5),
                          point + out * toolRadius * 1.6);
    }
}

/// The number of a line, beside its target.
void drawTag(QPainter* painter, const QPointF& point, const QString& text) {
    const double width = painter->fontMetrics().horizontalAdvance(text) + 10;
    const QRectF tag(point + QPointF(8, -26), QSizeF(std::max(width, 20.0), 20));
    painter->setPen(Qt::NoPen);
    painter->setBrush(tagColour);
    painter->drawRoundedRect(tag, 4, 4);
    painter->setPen(Qt::white);
    painter->drawText(tag, Qt::AlignCenter, text);
}

QFont smallFont(const QPainter* painter) {
    QFont font = painter->font();
    font.setPixelSize(smallPx);
    return font;
}

}  // namespace

/// Calls `draw` once for each view, clipped to it, with the projection of positions to points of the view.
template <typename Draw>
void PathPainter::inBothViews(Draw draw) {
    using Project = std::function<QPointF(const Position&)>;
    painter_->save();
    painter_->setRenderHint(QPainter::Antialiasing);
    painter_->setFont(smallFont(painter_));
    painter_->setClipRect(frame_.above());
    draw(Project([this](const Position& position) { return frame_.fromAbove(position); }));
    painter_->setClipRect(frame_.side());
    draw(Project([this](const Position& position) { return frame_.fromSide(position); }));
    painter_->restore();
}

void PathPainter::paintMoves(const std::vector<PathMove>& moves, const QSet<int>& selected) {
    inBothViews([&](const auto& project) {
        const auto drawPath = [&](const PathMove& move, const QPen& pen) {
            QPolygonF path;
            for (const Polyline* part : {&move.path, &move.corner}) {
                for (const Position& position : *part) {
                    path << project(position);
                }
            }
            painter_->setPen(pen);
            painter_->setBrush(Qt::NoBrush);
            painter_->drawPolyline(path);
        };
        for (const PathMove& move : moves) {
            if (selected.contains(move.line)) {
                drawPath(move, penOf(PathSign::Selected));
            }
        }
        for (const PathMove& move : moves) {
            drawPath(move, penOf(signOf(move)));
        }
        for (const PathMove& move : moves) {
            drawPoint(painter_, project(move.target));
            if (move.impossible) {
                drawCross(painter_, project(move.target));
            }
        }
        for (const PathMove& move : moves) {
            if (selected.contains(move.line)) {
                drawTag(painter_, project(move.target), QString::number(move.line + 1));
            }
        }
    });
}

void PathPainter::paintSeams(const std::deque<Polyline>& pieces) {
    inBothViews([&](const auto& project) {
        painter_->setPen(penOf(PathSign::Seam));
        for (const Polyline& piece : pieces) {
            painter_->drawPolyline(projected(piece, project));
        }
    });
}

void PathPainter::paintGaps(const std::vector<Polyline>& pieces) {
    inBothViews([&](const auto& project) {
        for (const Polyline& piece : pieces) {
            drawGap(painter_, projected(piece, project));
        }
    });
}

void PathPainter::paintTool(const Position& position, bool laser) {
    inBothViews([&](const auto& project) { drawTool(painter_, project(position), laser); });
}

void PathPainter::paintGrid(const QRectF& view, const QPointF& origin, double step) {
    painter_->setClipRect(view);
    painter_->setPen(QPen(gridColour, 1));
    for (double x = origin.x() + std::ceil((view.left() - origin.x()) / step) * step; x < view.right();
         x += step) {
        painter_->drawLine(QPointF(x, view.top()), QPointF(x, view.bottom()));
    }
    for (double y = origin.y() + std::ceil((view.top() - origin.y()) / step) * step; y < view.bottom();
         y += step) {
        painter_->drawLine(QPointF(view.left(), y), QPointF(view.right(), y));
    }
}

/// Arrows for x and the axis that points up, in the lower left corner.
void PathPainter::paintAxes(const QRectF& view, const QString& up) {
    constexpr double arrow = 30;
    const QPointF origin = view.bottomLeft() + QPointF(14, -14);
    painter_->setPen(QPen(faint, 1.4));
    painter_->drawLine(origin, origin + QPointF(arrow, 0));
    painter_->drawLine(origin, origin - QPointF(0, arrow));
    for (const QPointF& barb : {QPointF(-5, -4), QPointF(-5, 4)}) {
        painter_->drawLine(origin + QPointF(arrow, 0), origin + QPointF(arrow, 0) + barb);
    }
    for (const QPointF& barb : {QPointF(-4, 5), QPointF(4, 5)}) {
        painter_->drawLine(origin - QPointF(0, arrow), origin - QPointF(0, arrow) + barb);
    }
    painter_->drawText(origin + QPointF(arrow + 4, 4), QStringLiteral("X"));
    painter_->drawText(origin - QPointF(4, arrow + 4), up);
}

void PathPainter::paintSheet(const QString& above, const QString& side, const QString& barText) {
    const QRectF top = frame_.above(), bottom = frame_.side();
    painter_->save();
    painter_->setFont(smallFont(painter_));
    painter_->fillRect(top.united(bottom), Qt::white);
    const ScaleBar bar = frame_.scaleBar(barPixels);
    paintGrid(top, frame_.fromAbove({}), bar.pixels);
    paintGrid(bottom, frame_.fromSide({}), bar.pixels);
    painter_->setClipping(false);
    painter_->setPen(QPen(border, 1));
    painter_->drawLine(bottom.topLeft(), bottom.topRight());
    painter_->setPen(ink);
    painter_->drawText(top.adjusted(10, 8, -10, 0), Qt::AlignLeft | Qt::AlignTop, above);
    painter_->drawText(bottom.adjusted(10, 8, -10, 0), Qt::AlignLeft | Qt::AlignTop, side);
    paintAxes(top, QStringLiteral("Y"));
    paintAxes(bottom, QStringLiteral("Z"));

    const QPointF right = bottom.bottomRight() - QPointF(14, 14);
    const QPointF left = right - QPointF(bar.pixels, 0);
    painter_->setPen(QPen(ink, 2, Qt::SolidLine, Qt::FlatCap));
    painter_->drawPolyline(QPolygonF({left - QPointF(0, 6), left, right, right - QPointF(0, 6)}));
    painter_->drawText(QRectF(right - QPointF(barPixels * 2, 28), QSizeF(barPixels * 2, 20)),
                       Qt::AlignRight | Qt::AlignVCenter, barText);
    painter_->restore();
}

void PathPainter::paintSample(QPainter* painter, PathSign sign, const QRectF& area) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    const QPointF middle = area.center();
    switch (sign) {
        case PathSign::Point:
            drawPoint(painter, middle);
            break;
        case PathSign::Gap:
            drawGap(painter, QPolygonF() << QPointF(area.left() + area.height() / 2, middle.y())
                                         << QPointF(area.right() - area.height() / 2, middle.y()));
            break;
        case PathSign::Tool:
        case PathSign::ToolWithLaser:
            painter->translate(middle);
            painter->scale(0.7, 0.7);
            drawTool(painter, {}, sign == PathSign::ToolWithLaser);
            break;
        default:
            painter->setPen(penOf(sign));
            painter->drawLine(QPointF(area.left(), middle.y()), QPointF(area.right(), middle.y()));
    }
    painter->restore();
}

}  // namespace app
