#pragma once

#include <QString>

class QWidget;

namespace lumo {

/// Sets a widget's style sheet unless it has it already: setting one polishes the widget and everything
/// in it anew, also when it is the same.
void setStyleSheetOnChange(QWidget* widget, const QString& sheet);

}  // namespace lumo
