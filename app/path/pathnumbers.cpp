#include "app/path/pathnumbers.h"

#include "look/scale.h"
#include "look/tokens.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace app {

namespace {

constexpr int mostNumbers = 200;
constexpr int mostTags = 50;

/// Puts numbers outside of the path, and none upon another.
class Numbers {
public:
    Numbers(QPainter* painter, const Camera& camera, const std::vector<PathMove>& moves)
        : painter_(painter), camera_(camera), metrics_(painter->font()) {
        Extent extent;
        for (const PathMove& move : moves) {
            if (camera.area().contains(camera.seen(move.target))) {
                extent.add(move.target);
            }
        }
        middle_ = camera.seen(interpolated(extent.least, extent.most, 0.5));
    }

    void add(const PathMove& move, bool isTag) {
        const QPointF point = camera_.seen(move.target);
        if (!camera_.area().contains(point)) {
            return;
        }
        const QString text = QString::number(move.line + 1);
        const QRectF place = placeOf(point, text, isTag);
        const bool isFree = std::none_of(taken_.begin(), taken_.end(),
                                         [&](const QRectF& other) { return other.intersects(place); });
        if (isTag || (isFree && int(taken_.size()) < mostNumbers)) {
            taken_.push_back(place);
            // Another number would belong to the same place on the screen.
            taken_.emplace_back(point - QPointF(4, 4), QSizeF(8, 8));
            draw(place, text, isTag);
        }
    }

private:
    QRectF placeOf(const QPointF& point, const QString& text, bool isTag) const {
        const double height = metrics_.height() + (isTag ? 4 : 0);
        const double width = metrics_.horizontalAdvance(text) + (isTag ? look::px(14) : 2);
        QPointF out = point - middle_;
        const double length = std::hypot(out.x(), out.y());
        out = length < 1 ? QPointF(0, 1) : out / length;
        const double away = look::px(isTag ? 16 : 10);
        const QPointF centre = point + QPointF(out.x() * (away + width / 2), out.y() * (away + height / 2));
        QRectF place(centre - QPointF(width, height) / 2, QSizeF(width, height));
        const QRectF& area = camera_.area();
        place.moveLeft(std::clamp(place.left(), area.left() + 2, area.right() - width - 2));
        place.moveTop(std::clamp(place.top(), area.top() + 2, area.bottom() - height - 2));
        return place;
    }

    void draw(const QRectF& place, const QString& text, bool isTag) const {
        if (isTag) {
            painter_->setPen(Qt::NoPen);
            painter_->setBrush(QColor(look::blue));
            painter_->drawRoundedRect(place, 4, 4);
        }
        painter_->setPen(QColor(isTag ? look::white : look::ink2));
        painter_->drawText(place, Qt::AlignCenter, text);
    }

    QPainter* painter_;
    const Camera& camera_;
    QFontMetricsF metrics_;
    QPointF middle_;
    std::vector<QRectF> taken_;
};

}  // namespace

void paintNumbers(QPainter* painter, const Camera& camera, const std::vector<PathMove>& moves,
                  const QSet<int>& selected) {
    Numbers numbers(painter, camera, moves);
    int tags = 0;
    for (const PathMove& move : moves) {
        if (selected.contains(move.line) && tags < mostTags) {
            numbers.add(move, true);
            ++tags;
        }
    }
    // The starts of welds first, then the others.
    for (std::size_t i = 0; i + 1 < moves.size(); ++i) {
        if (!moves[i].weld && moves[i + 1].weld && !selected.contains(moves[i].line)) {
            numbers.add(moves[i], false);
        }
    }
    for (const PathMove& move : moves) {
        if (!move.weld && !selected.contains(move.line)) {
            numbers.add(move, false);
        }
    }
}

}  // namespace app
