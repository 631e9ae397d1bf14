#include "app/path/pathnumbers.h"

#include "look/scale.h"
#include "look/tokens.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

constexpr std::size_t mostNumbers = 200;

/// Where a text of this size stands: away from the middle, within the area.
QRectF placeBeside(const QPointF& point, const QSizeF& size, double away, const Camera& camera,
                   const QPointF& middle) {
    QPointF out = point - middle;
    const double length = std::hypot(out.x(), out.y());
    out = length < 1 ? QPointF(0, 1) : out / length;
    const QPointF centre =
        point + QPointF(out.x() * (away + size.width() / 2), out.y() * (away + size.height() / 2));
    QRectF place(centre - QPointF(size.width(), size.height()) / 2, size);
    const QRectF inside = camera.area().adjusted(2, 2, -2, -2);
    place.moveLeft(std::max(inside.left(), std::min(place.left(), inside.right() - size.width())));
    place.moveTop(std::max(inside.top(), std::min(place.top(), inside.bottom() - size.height())));
    return place;
}

/// Writes numbers, none upon another.
class Numbers {
public:
    Numbers(QPainter* painter, const Camera& camera, const QPointF& middle)
        : painter_(painter), camera_(camera), middle_(middle), metrics_(painter->font()) {}

    void add(const PathMove& move) {
        const QPointF point = camera_.seen(move.target);
        if (!camera_.area().contains(point) || taken_.size() >= 2 * mostNumbers) {
            return;
        }
        const QString text = QString::number(move.line + 1);
        const QSizeF size(metrics_.horizontalAdvance(text) + 2, metrics_.height());
        const QRectF place = placeBeside(point, size, look::px(10), camera_, middle_);
        if (std::any_of(taken_.begin(), taken_.end(),
                        [&](const QRectF& other) { return other.intersects(place); })) {
            return;
        }
        taken_.push_back(place);
        taken_.emplace_back(point - QPointF(4, 4), QSizeF(8, 8));  // the target itself
        painter_->drawText(place, Qt::AlignCenter, text);
    }

private:
    QPainter* painter_;
    const Camera& camera_;
    QPointF middle_;
    QFontMetricsF metrics_;
    std::vector<QRectF> taken_;
};

}  // namespace

QPointF middleOf(const Camera& camera, const std::vector<PathMove>& moves) {
    Extent extent;
    for (const PathMove& move : moves) {
        if (camera.area().contains(camera.seen(move.target))) {
            extent.add(move.target);
        }
    }
    return camera.seen(interpolated(extent.least, extent.most, 0.5));
}

void paintNumbers(QPainter* painter, const Camera& camera, const std::vector<PathMove>& moves,
                  const QPointF& middle) {
    painter->setPen(QColor(look::ink2));
    Numbers numbers(painter, camera, middle);
    // The starts of welds first, then the others.
    for (std::size_t i = 0; i + 1 < moves.size(); ++i) {
        if (!moves[i].weld && moves[i + 1].weld) {
            numbers.add(moves[i]);
        }
    }
    for (std::size_t i = 0; i < moves.size(); ++i) {
        if (!moves[i].weld && !(i + 1 < moves.size() && moves[i + 1].weld)) {
            numbers.add(moves[i]);
        }
    }
}

void paintTag(QPainter* painter, const Camera& camera, const PathMove& move, const QPointF& middle) {
    const QPointF point = camera.seen(move.target);
    if (!camera.area().contains(point)) {
        return;
    }
    const QFontMetricsF metrics(painter->font());
    const QString text = QString::number(move.line + 1);
    const QSizeF size(metrics.horizontalAdvance(text) + look::px(14), metrics.height() + 4);
    const QRectF place = placeBeside(point, size, look::px(14), camera, middle);
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(look::blue));
    painter->drawRoundedRect(place, 4, 4);
    painter->setPen(QColor(look::white));
    painter->drawText(place, Qt::AlignCenter, text);
}

}  // namespace app
