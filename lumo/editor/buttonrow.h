#pragma once

#include <QList>
#include <QRect>
#include <QVector>

class WrapButton;

namespace lumo {

/// The places of buttons of equal width in a row, from left to right; closer together where there are many.
[[nodiscard]] QVector<QRect> equalPlaces(const QRect& row, int count);

/// The places of buttons with their icons over their words, in groups, one list for all: as wide as their
/// words, of which the widest take two lines first; what is left goes to the gaps between the groups and to
/// the buttons.
[[nodiscard]] QVector<QRect> groupPlaces(const QRect& row, const QList<QList<WrapButton*>>& groups);

}  // namespace lumo
