#include "widgets/elided.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QToolTip>

namespace lumo {

namespace {

/// Shows the whole text as the tool tip if it is shortened and the event asks for one; whether it did.
template <typename Widget>
bool showWhole(Widget* widget, QEvent* event, QString (Widget::*shown)() const, const QString& whole) {
    if (event->type() != QEvent::ToolTip || (widget->*shown)() == whole) {
        return false;
    }
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), whole, widget);
    return true;
}

}  // namespace

QSize ElidedLabel::minimumSizeHint() const {
    return QSize(fontMetrics().averageCharWidth() * 6, QLabel::minimumSizeHint().height());
}

QString ElidedLabel::shownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}

bool ElidedLabel::event(QEvent* event) {
    return showWhole(this, event, &ElidedLabel::shownText, text()) || QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                          shownText(), foregroundRole());
}

QString ElidedCombo::shownText() const {
    constexpr int besideText = 2;
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect room =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    return fontMetrics().elidedText(currentText(), Qt::ElideMiddle, room.width() - besideText);
}

bool ElidedCombo::event(QEvent* event) {
    return showWhole(this, event, &ElidedCombo::shownText, currentText()) || QComboBox::event(event);
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
