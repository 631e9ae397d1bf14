#include "panel/pagebutton.h"

#include "look/scale.h"

#include <QPainter>

#include <algorithm>

namespace lumo {

PageButton::PageButton(QWidget* parent) : WrapToolButton(parent) {}

void PageButton::setIconName(const QString& name) {
    setFace(name, ButtonFace::Place::Over, look::ink2, look::blue);
}

QSize PageButton::sizeHint() const {
    return {look::px(64), look::px(72)};
}

/// Strong on the chosen page, where the word then leaves air at its sides.
QFont PageButton::captionFont() const {
    const QFont strong = look::font(look::Size::Caption, look::Weight::Strong);
    const int room = width() - look::px(8);
    const QFontMetrics metrics(strong);
    const QStringList words = text().split(QLatin1Char(' '));
    const bool fits = std::all_of(words.begin(), words.end(), [&metrics, room](const QString& word) {
        return metrics.horizontalAdvance(word) <= room;
    });
    return isChecked() && fits ? strong : look::font(look::Size::Caption, look::Weight::Plain);
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
    shown.font = captionFont();
    painter.setPen(QColor(isChecked() ? look::blue : look::ink2));
    shown.paint(&painter, rect().adjusted(0, edge, 0, -edge), this);
}

}  // namespace lumo
