#pragma once

#include <QRect>

#include <optional>

namespace app {

/// Where the pendant of that size stands beside the panel: in the lower right corner of the screen, or
/// the left one; nothing where the panel leaves room for it in neither. Rectangles are with frames, `room` is
/// what the screen has to offer.
std::optional<QPoint> cornerBeside(const QRect& panel, const QSize& size, const QRect& room);

/// The rectangle moved by as little as possible into the room; its top left stays in it in any case.
QRect movedInto(const QRect& rectangle, const QRect& room);

/// The nearest place where a dialog leaves `keepFree` uncovered; nothing where the room has none.
std::optional<QPoint> placeClearOf(const QRect& dialog, const QRect& keepFree, const QRect& room);

}  // namespace app
