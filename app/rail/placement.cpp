#include "app/rail/placement.h"

#include <algorithm>

namespace app {

namespace {

bool isClear(const QRect& dialog, const QList<QRect>& keepFree) {
    return std::none_of(keepFree.begin(), keepFree.end(),
                        [&dialog](const QRect& part) { return dialog.intersects(part); });
}

}  // namespace

QRect movedInto(const QRect& rectangle, const QRect& room) {
    QRect moved = rectangle;
    moved.moveLeft(std::max(std::min(moved.x(), room.x() + room.width() - moved.width()), room.x()));
    moved.moveTop(std::max(std::min(moved.y(), room.y() + room.height() - moved.height()), room.y()));
    return moved;
}

std::optional<QPoint> placeClearOf(const QRect& dialog, const QList<QRect>& keepFree, const QRect& room) {
    if (isClear(dialog, keepFree)) {
        return dialog.topLeft();
    }
    // The nearest place touches an edge of a part in each direction in which it moves.
    QList<int> lefts{dialog.x()}, tops{dialog.y()};
    for (const QRect& part : keepFree) {
        lefts << part.x() - dialog.width() << part.x() + part.width();
        tops << part.y() - dialog.height() << part.y() + part.height();
    }
    std::optional<QPoint> nearest;
    for (const int left : qAsConst(lefts)) {
        for (const int top : qAsConst(tops)) {
            const QRect moved = movedInto(QRect(QPoint(left, top), dialog.size()), room);
            const int distance = (moved.topLeft() - dialog.topLeft()).manhattanLength();
            if (room.contains(moved) && isClear(moved, keepFree) &&
                (!nearest || distance < (*nearest - dialog.topLeft()).manhattanLength())) {
                nearest = moved.topLeft();
            }
        }
    }
    return nearest;
}

}  // namespace app
