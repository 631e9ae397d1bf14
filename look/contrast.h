#pragma once

#include <QColor>

namespace look {

/// Contrast of two opaque colours, 1 to 21: (L1 + 0.05) / (L2 + 0.05) of their relative luminances
/// (https://www.w3.org/TR/WCAG21/#dfn-contrast-ratio).
double contrast(QRgb one, QRgb other);

}  // namespace look
