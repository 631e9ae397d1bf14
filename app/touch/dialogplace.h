#pragma once

#include <QPoint>
#include <QRect>

namespace app {

/// Where a dialog and the keys for a field of it go, in coordinates of the screen.
struct DialogPlace {
    QRect keys;
    QPoint dialog;  ///< its upper left corner
};

/// Puts keys of a size beside a dialog, inside `room`. Where both have no room side by side, the keys lie
/// over the dialog, but not over `field`. The dialog is moved as little as possible.
DialogPlace keysBeside(const QRect& dialog, const QRect& field, const QSize& keys, const QRect& room);

/// Puts keys of a height along the bottom of `room` and the dialog above them; a higher dialog goes up until
/// its field is above them.
DialogPlace keysBelow(const QRect& dialog, const QRect& field, int height, const QRect& room);

}  // namespace app
