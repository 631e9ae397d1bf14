#include "widgets/stylesheet.h"

#include <QWidget>

namespace lumo {

void setStyleSheetOnChange(QWidget* widget, const QString& sheet) {
    if (widget->styleSheet() != sheet) {
        widget->setStyleSheet(sheet);
    }
}

}  // namespace lumo
