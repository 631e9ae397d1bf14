#pragma once

#include <QString>

class QWidget;

namespace pictures {

/// Object name, else the class, with its parent's.
QString nameOf(const QWidget& widget);

/// The text that does not fit into the widget; empty when all of it fits or the widget has no text. Widgets
/// that draw their texts themselves tell their least size by minimumSizeHint().
QString cutText(const QWidget& widget);

}  // namespace pictures
