#pragma once

#include <QRect>

#include <optional>

namespace app {

/// Position for the pendant in the lower right or lower left corner of the screen, clear of the panel;
/// nothing when the panel covers both. Rectangles include window frames; `room` is the screen's available
/// geometry.
std::optional<QPoint> cornerBeside(const QRect& panel, const QSize& size, const QRect& room);

/// The rectangle moved into the room by the shortest distance. If it is too large, its top left corner stays
/// inside.
QRect movedInto(const QRect& rectangle, const QRect& room);

/// The nearest position at which a dialog does not cover `keepFree`; nothing when there is none.
std::optional<QPoint> placeClearOf(const QRect& dialog, const QRect& keepFree, const QRect& room);

}  // namespace app
