#include "app/stop/runstopbutton.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/type.h"

#include <QPainter>

#include <algorithm>

namespace app {

namespace {

constexpr int widthPx = 104, heightPx = 48;  // for a finger in a glove
constexpr int squarePx = 20, gapPx = 8, paddingPx = 12;

}  // namespace

RunStopButton::RunStopButton(QWidget* parent) : QAbstractButton(parent) {
    setObjectName(QStringLiteral("btnRunStop"));
    setText(tr("停止"));
    setAccessibleName(tr("停止运行"));
    setAccessibleDescription(tr("停止正在运行的程序、工位或单步，与工程页面的停止相同"));
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize RunStopButton::sizeHint() const {
    const QFont word = look::font(look::Size::Text, look::Weight::Strong);
    const int needed = look::textWidth(word, text()) + look::px(squarePx + gapPx + 2 * paddingPx);
    return {std::max(look::px(widthPx), needed), look::px(heightPx)};
}

void RunStopButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int line = hasFocus() ? look::px(3) : 0;
    painter.setPen(line > 0 ? QPen(QColor(look::sky), line) : QPen(Qt::NoPen));
    painter.setBrush(QColor(isDown() ? look::laserFill : look::white));
    const double inset = line / 2.0;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), look::px(6), look::px(6));
    painter.setFont(look::font(look::Size::Text, look::Weight::Strong));
    const int square = look::px(squarePx), gap = look::px(gapPx);
    const int word = painter.fontMetrics().horizontalAdvance(text());
    const int left = (width() - square - gap - word) / 2;
    painter.drawPixmap(left, (height() - square) / 2,
                       look::picture(QStringLiteral("stop"), square, look::red));
    painter.setPen(QColor(look::ink));
    painter.drawText(QRect(left + square + gap, 0, word + 1, height()), Qt::AlignVCenter, text());
}

}  // namespace app
