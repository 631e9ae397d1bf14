#pragma once

#include "look/tokens.h"

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace look {

/// An icon of look/icons by its file's name without ".svg", drawn in one colour, and in another while its
/// button is checked; disabled in `off`. Sizes follow the button's icon size. Empty if there is no such
/// icon.
QIcon icon(const QString& name, QRgb colour = ink2, QRgb checked = 0);

/// The same as a picture of `size` px (see look::px), for painters. Kept, so that painting costs nothing.
QPixmap picture(const QString& name, int size, QRgb colour = ink2);

}  // namespace look
