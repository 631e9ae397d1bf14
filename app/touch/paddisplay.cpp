#include "app/touch/paddisplay.h"

#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QPainter>

namespace app {

PadDisplay::PadDisplay(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("padDisplay"));
}

bool PadDisplay::Shown::operator==(const Shown& other) const {
    return text == other.text && unit == other.unit && cursor == other.cursor && selected == other.selected &&
           taken == other.taken;
}

void PadDisplay::show(const Shown& shown) {
    if (!(shown == shown_)) {
        shown_ = shown;
        setAccessibleName(shown.text + QLatin1Char(' ') + shown.unit);
        update();
    }
}

void PadDisplay::paintEvent(QPaintEvent*) {
    constexpr int frame = 2, gap = 12, caret = 2;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(shown_.taken ? look::blue : look::red), frame));
    painter.setBrush(QColor(look::white));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), look::px(6), look::px(6));

    QRect room = rect().adjusted(look::px(gap), 0, -look::px(gap), 0);
    painter.setFont(look::font(look::Size::Text));
    painter.setPen(QColor(look::ink3));
    painter.drawText(room, Qt::AlignRight | Qt::AlignVCenter, shown_.unit);
    if (!shown_.unit.isEmpty()) {
        room.setRight(room.right() - painter.fontMetrics().horizontalAdvance(shown_.unit) - look::px(gap));
    }
    painter.setFont(look::font(look::Size::Figure, look::Weight::Strong));
    const QFontMetrics metrics = painter.fontMetrics();
    const auto widthOf = [&metrics, this](int letters) {
        return metrics.horizontalAdvance(shown_.text.left(letters));
    };
    const int left = room.right() - widthOf(shown_.text.size());
    const QRect line(left, rect().center().y() - metrics.height() / 2, room.right() - left, metrics.height());
    painter.setClipRect(room.adjusted(-caret, 0, caret + look::px(2), 0));
    if (shown_.selected > 0) {
        painter.fillRect(QRect(left, line.top(), widthOf(shown_.selected), line.height()),
                         QColor(look::halo));
    }
    painter.setPen(QColor(look::ink));
    painter.drawText(QPoint(left, line.top() + metrics.ascent()), shown_.text);
    if (shown_.selected == 0) {
        painter.fillRect(left + widthOf(shown_.cursor) + 1, line.top(), caret, line.height(),
                         QColor(look::ink));
    }
}

}  // namespace app
