#include "app/pendant/placement.h"

#include <algorithm>

namespace app {

std::optional<QPoint> cornerBeside(const QRect& panel, const QSize& size, const QRect& room) {
    const int top = room.y() + room.height() - size.height();
    const int lefts[] = {room.x() + room.width() - size.width(), room.x()};
    for (const int left : lefts) {
        const QRect candidate(QPoint(left, top), size);
        if (room.contains(candidate) && !candidate.intersects(panel)) {
            return candidate.topLeft();
        }
    }
    return {};
}

QRect movedInto(const QRect& rectangle, const QRect& room) {
    QRect moved = rectangle;
    moved.moveLeft(std::max(std::min(moved.x(), room.x() + room.width() - moved.width()), room.x()));
    moved.moveTop(std::max(std::min(moved.y(), room.y() + room.height() - moved.height()), room.y()));
    return moved;
}

std::optional<QPoint> placeClearOf(const QRect& dialog, const QRect& keepFree, const QRect& room) {
    const QPoint candidates[] = {{keepFree.x() - dialog.width(), dialog.y()},
                                 {keepFree.x() + keepFree.width(), dialog.y()},
                                 {dialog.x(), keepFree.y() - dialog.height()},
                                 {dialog.x(), keepFree.y() + keepFree.height()}};
    std::optional<QPoint> nearest;
    for (const QPoint& candidate : candidates) {
        const QPoint inside = movedInto(QRect(candidate, dialog.size()), room).topLeft();
        const QRect moved(inside, dialog.size());
        if (!room.contains(moved) || moved.intersects(keepFree)) {
            continue;
        }
        if (!nearest ||
            (inside - dialog.topLeft()).manhattanLength() < (*nearest - dialog.topLeft()).manhattanLength()) {
            nearest = inside;
        }
    }
    return nearest;
}

}  // namespace app
