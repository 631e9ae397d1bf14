#include "app/touch/dialogplace.h"

#include <algorithm>

namespace app {

namespace {

constexpr int gap = 8;

}  // namespace

DialogPlace keysBeside(const QRect& dialog, const QRect& field, const QSize& keys, const QRect& room) {
    const int lastTop = std::max(room.top(), room.bottom() + 1 - keys.height());
    const int top = qBound(room.top(), dialog.center().y() - keys.height() / 2, lastTop);
    const int lastLeft = room.right() + 1 - keys.width();
    DialogPlace place{{QPoint(dialog.right() + 1 + gap, top), keys}, dialog.topLeft()};
    if (place.keys.right() <= room.right()) {
        return place;
    }
    place.keys.moveLeft(lastLeft);
    if (dialog.width() + gap + keys.width() <= room.width()) {
        place.dialog.setX(lastLeft - gap - dialog.width());
        return place;
    }
    // Over the dialog: at the right, with the field left of the keys, else above or below them.
    const int inDialog = field.right() - dialog.left();
    place.dialog.setX(std::max(room.left(), std::min(dialog.left(), lastLeft - gap - inDialog)));
    const QRect moved = field.translated(place.dialog - dialog.topLeft());
    if (place.keys.intersects(moved)) {
        place.keys.moveLeft(std::max(room.left(), moved.left() - gap - keys.width()));
    }
    return place;
}

DialogPlace keysBelow(const QRect& dialog, const QRect& field, int height, const QRect& room) {
    DialogPlace place{{room.left(), room.bottom() + 1 - height, room.width(), height}, dialog.topLeft()};
    const int free = place.keys.top() - gap;
    if (dialog.bottom() < free) {
        return place;
    }
    if (dialog.height() <= free - room.top()) {
        place.dialog.setY(free - dialog.height());
    } else {
        place.dialog.setY(std::min(room.top(), dialog.top() - std::max(0, field.bottom() + 1 - free)));
    }
    return place;
}

}  // namespace app
