#include "panel/navigationcolumn.h"

#include "look/scale.h"

#include <QLayout>

namespace lumo {

NavigationColumn::NavigationColumn(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_StyledBackground);
}

void NavigationColumn::fit() {
    constexpr int usual = 96, small = 80, smallBelow = 1200, mediumPx = 112;
    const bool medium = look::factor() > 1 && look::factor() < 1.5;
    constexpr int line = 1;  // beside it
    const int wanted = (medium ? mediumPx : look::px(window()->width() < smallBelow ? small : usual)) - line;
    if (maximumWidth() != wanted) {
        setFixedWidth(wanted);
        const int gap = look::px(8);
        layout()->setContentsMargins(0, gap, 0, gap);
        layout()->setSpacing(gap);
    }
}

}  // namespace lumo
