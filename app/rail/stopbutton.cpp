#include "app/rail/stopbutton.h"

#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace app {

namespace {

constexpr int widthPx = 80, heightPx = 100;
constexpr int headPx = 64, pressedPx = 56, topPx = 8;
constexpr int keyLinePx = 24;

/// Strong, and smaller where the word is wider than the head.
QFont wordFont(const QString& word, int room) {
    QFont font = look::font(look::Size::Text, look::Weight::State);
    return QFontMetrics(font).horizontalAdvance(word) <= room
               ? font
               : look::font(look::Size::Caption, look::Weight::State);
}

}  // namespace

StopButton::StopButton(QWidget* parent) : QAbstractButton(parent) {
    setObjectName(QStringLiteral("btnStop"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFocusPolicy(Qt::TabFocus);
    setText(tr("急停"));
    setAccessibleName(tr("紧急停止：F12 或 Pause，在任何窗口中有效"));
}

QSize StopButton::sizeHint() const {
    return {look::px(widthPx), look::px(heightPx)};
}

void StopButton::setLatched(bool latched) {
    latched_ = latched;
    setAccessibleDescription(latched ? tr("已按下") : QString());
    update();
}

void StopButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int line = hasFocus() ? look::px(3) : 0;
    painter.setPen(line > 0 ? QPen(QColor(look::blue), line) : QPen(Qt::NoPen));
    painter.setBrush(QColor(look::estop));
    const double inset = line / 2.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), look::px(8), look::px(8));
    const int whole = std::min(look::px(headPx), width() - look::px(4));
    const int side = latched_ || isDown() ? whole * pressedPx / headPx : whole;
    QRectF head(0, 0, side, side);
    head.moveCenter(QPointF(width() / 2.0, look::px(topPx) + whole / 2.0));
    paintHead(&painter, head);
    painter.setFont(look::font(look::Size::Caption, look::Weight::Strong));
    painter.setPen(QColor(look::ink));
    const int key = look::px(keyLinePx);
    painter.drawText(QRect(0, height() - key - look::px(1), width(), key), Qt::AlignCenter,
                     QStringLiteral("F12"));
}

/// Latched it has two arrows, which show the turn that releases it.
void StopButton::paintHead(QPainter* painter, const QRectF& head) const {
    painter->setPen(QPen(QColor(look::redDn), look::px(3)));
    painter->setBrush(QColor(latched_ ? look::redDn : look::red));
    const double half = look::px(3) / 2.0;
    painter->drawEllipse(head.adjusted(half, half, -half, -half));
    painter->setPen(QPen(QColor(look::white), look::px(2)));
    if (latched_) {
        constexpr int perDegree = 16;  // drawArc() takes sixteenths of a degree
        const double in = look::px(6);
        for (const int from : {50, 230}) {
            painter->drawArc(head.adjusted(in, in, -in, -in), from * perDegree, 80 * perDegree);
        }
    }
    painter->setFont(wordFont(text(), int(head.width()) - look::px(8)));
    painter->drawText(head, Qt::AlignCenter, text());
}

}  // namespace app
