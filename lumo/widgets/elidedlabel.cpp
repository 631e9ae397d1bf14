#include "widgets/elidedlabel.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace lumo {

QSize ElidedLabel::minimumSizeHint() const {
    return QSize(fontMetrics().averageCharWidth() * 6, QLabel::minimumSizeHint().height());
}

QString ElidedLabel::shownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && shownText() != text()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), text(), this);
        return true;
    }
    return QLabel::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(), isEnabled(),
                          shownText(), foregroundRole());
}

}  // namespace lumo
