#include "app/path/armglass.h"

#include "look/scale.h"
#include "look/tokens.h"

#include <QLineF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

constexpr double standOffM = 0.02;  // of the nozzle
constexpr int mostWidth = 110;      // px of a part, however near it is
constexpr int mostTorch = 72, mostNozzle = 22;
constexpr double partWidthsM[] = {0.15, 0.14, 0.12, 0.10, 0.08};  // from the base to the torch
constexpr double torchWidthM = 0.06, nozzleWidthM = 0.012;

QColor glass(QRgb colour, double alpha) {
    QColor mixed(colour);
    mixed.setAlphaF(alpha);
    return mixed;
}

double widthPx(const Camera& camera, double metres, int least, int most) {
    return std::clamp(metres * camera.pixelsPerMetre(), double(look::px(least)), double(look::px(most)));
}

/// A part of the arm with round ends.
QPainterPath part(const QPointF& from, const QPointF& to, double width) {
    constexpr double half = 180;
    const QPointF corner(width / 2, width / 2);
    const QLineF along(from, to);
    QPainterPath path;
    if (along.length() < 1) {
        path.addEllipse(from, width / 2, width / 2);
        return path;
    }
    const double side = along.angle() + half / 2;  // degrees, as the arcs have them
    const QRectF begin(from - corner, QSizeF(width, width)), end(to - corner, QSizeF(width, width));
    path.arcMoveTo(begin, side);
    path.arcTo(begin, side, half);
    path.arcTo(end, side + half, half);
    path.closeSubpath();
    return path;
}

/// From the flange to the nozzle: straight, then narrowing.
QPolygonF torch(const QPointF& flange, const QPointF& nozzle, double wide, double narrow) {
    constexpr double shoulder = 0.5;
    const QPointF along = nozzle - flange;
    const double length = std::hypot(along.x(), along.y());
    if (length < 1) {
        return {};
    }
    const QPointF across = QPointF(-along.y(), along.x()) / length;
    const QPointF bend = flange + along * shoulder;
    return QPolygonF({flange + across * wide / 2, bend + across * wide / 2, nozzle + across * narrow / 2,
                      nozzle - across * narrow / 2, bend - across * wide / 2, flange - across * wide / 2});
}

/// The end of the torch, the nozzle, and the place of the tool.
struct TorchPlaces {
    QPointF flange, nozzle, tool;
};

TorchPlaces torchPlaces(const Camera& camera, const std::vector<Position>& skeleton) {
    const Position& tool = skeleton.back();
    const Position& flange = skeleton[skeleton.size() - 2];
    const double whole = distance(flange, tool);
    const double share = whole > 0 ? std::max(0.0, 1 - standOffM / whole) : 1;
    return {camera.seen(flange), camera.seen(interpolated(flange, tool, share)), camera.seen(tool)};
}

void paintParts(QPainter* painter, const Camera& camera, const std::vector<Position>& skeleton) {
    constexpr double fill = 0.1, line = 0.3;
    for (std::size_t i = 0; i + 2 < skeleton.size() && i < std::size(partWidthsM); ++i) {
        painter->setPen(QPen(glass(look::ink3, line), 1.2));
        painter->setBrush(glass(look::steel, fill));
        const QPainterPath outline = part(camera.seen(skeleton[i]), camera.seen(skeleton[i + 1]),
                                          widthPx(camera, partWidthsM[i], 10, mostWidth));
        if (outline.controlPointRect().intersects(camera.area())) {
            painter->drawPath(outline);
        }
    }
    painter->setPen(QPen(glass(look::ink3, 0.5), 1.4));
    painter->setBrush(glass(look::white, 0.8));
    for (std::size_t i = 2; i + 2 < skeleton.size(); ++i) {
        const QPointF joint = camera.seen(skeleton[i]);
        painter->drawEllipse(joint, look::px(5), look::px(5));
    }
}

}  // namespace

void paintArm(QPainter* painter, const Camera& camera, const std::vector<Position>& skeleton, bool laser) {
    if (skeleton.size() < 3) {
        return;
    }
    painter->save();
    painter->setClipRect(camera.area(), Qt::IntersectClip);
    painter->setRenderHint(QPainter::Antialiasing);
    paintParts(painter, camera, skeleton);
    const TorchPlaces places = torchPlaces(camera, skeleton);
    painter->setPen(QPen(glass(look::ink3, 0.6), 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->setBrush(glass(look::steel, 0.22));
    painter->drawPolygon(torch(places.flange, places.nozzle, widthPx(camera, torchWidthM, 14, mostTorch),
                               widthPx(camera, nozzleWidthM, 6, mostNozzle)));
    if (laser) {
        painter->setPen(QPen(QColor(look::red), 2.5, Qt::SolidLine, Qt::FlatCap));
        painter->drawLine(places.nozzle, places.tool);
    }
    painter->restore();
}

QRectF armPlace(const Camera& camera, const std::vector<Position>& skeleton) {
    QPolygonF joints;
    for (const Position& joint : skeleton) {
        joints << camera.seen(joint);
    }
    const double margin = look::px(mostWidth) / 2.0 + 2;
    return joints.boundingRect().adjusted(-margin, -margin, margin, margin).intersected(camera.area());
}

}  // namespace app
