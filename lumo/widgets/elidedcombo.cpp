#include "widgets/elidedcombo.h"

#include <QHelpEvent>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QToolTip>

namespace lumo {

QString ElidedCombo::shownText() const {
    constexpr int besideText = 2;
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect room =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return fontMetrics().elidedText(currentText(), Qt::ElideMiddle, room.width() - besideText);
}

bool ElidedCombo::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && shownText() != currentText()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), currentText(), this);
        return true;
    }
    return QComboBox::event(event);
}

void ElidedCombo::paintEvent(QPaintEvent* /*event*/) {
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText = shownText();
    QStylePainter painter(this);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

}  // namespace lumo
