#pragma once

#include <QList>
#include <QRect>

#include <optional>

namespace app {

/// The rectangle moved into the room by the shortest distance. If it is too large, its top left corner stays
/// inside.
QRect movedInto(const QRect& rectangle, const QRect& room);

/// The nearest position in the room at which a dialog covers nothing of `keepFree`: its own where it
/// covers nothing already. Without such a position: std::nullopt.
std::optional<QPoint> placeClearOf(const QRect& dialog, const QList<QRect>& keepFree, const QRect& room);

}  // namespace app
