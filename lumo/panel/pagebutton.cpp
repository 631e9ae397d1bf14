#include "panel/pagebutton.h"

#include "look/scale.h"

#include <QPainter>

namespace lumo {

PageButton::PageButton(QWidget* parent) : WrapToolButton(parent) {}

void PageButton::setIconName(const QString& name) {
    setFace(name, ButtonFace::Place::Over, look::ink2, look::blue);
}

QSize PageButton::sizeHint() const {
    return {look::px(64), look::px(72)};
}

void PageButton::paintEvent(QPaintEvent* /*event*/) {
    constexpr int edge = 4, radius = 6;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF block = QRectF(rect()).adjusted(edge, 0, -edge, 0);
    if (isChecked() || isDown()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor(isDown() ? look::pressed : look::sel));
        painter.drawRoundedRect(block, radius, radius);
    }
    if (isChecked()) {
        const int inset = look::px(8);
        painter.fillRect(QRect(0, inset, edge, height() - 2 * inset), QColor(look::blue));
    }
    if (hasFocus()) {
        painter.setPen(QPen(QColor(look::blue), 2));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(block.adjusted(1, 1, -1, -1), radius, radius);
    }
    ButtonFace shown = face();
    shown.iconPx = look::px(28);
    shown.font = look::font(look::Size::Caption, isChecked() ? look::Weight::Strong : look::Weight::Plain);
    painter.setPen(QColor(isChecked() ? look::blue : look::ink2));
    shown.paint(&painter, rect().adjusted(0, edge, 0, -edge), this);
}

}  // namespace lumo
