#pragma once

#include "program/finding.h"

#include <QIcon>

class QPainter;
class QRectF;

namespace lumo {

// The marks of findings: a red octagon for an error, an amber triangle for a warning, each with an
// exclamation mark. They differ in shape, for people who do not tell the colours apart.

/// Paints a mark as large as fits into the area, at its centre.
void paintMark(QPainter* painter, const QRectF& area, prog::Severity severity);
/// The mark as an icon.
[[nodiscard]] QIcon markIcon(prog::Severity severity);

}  // namespace lumo
