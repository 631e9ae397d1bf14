#include "app/stop/runstopbutton.h"

#include <QPainter>

namespace app {

namespace {

constexpr int widthPx = 104, heightPx = 48;  // for a finger in a glove
constexpr int squarePx = 22, gapPx = 8, textPx = 16;
const QColor red(0xc5, 0x22, 0x1b);
const QColor ink(0x17, 0x27, 0x3a);
const QColor ground(0xff, 0xff, 0xff), downGround(0xf6, 0xcf, 0xcb);
const QColor focusColour(0x1b, 0x5c, 0x9c), edge(0xaf, 0xbc, 0xc9);

}  // namespace

RunStopButton::RunStopButton(QWidget* parent) : QAbstractButton(parent) {
    setObjectName(QStringLiteral("btnRunStop"));
    setText(tr("停止"));
    setAccessibleName(tr("停止运行"));
    setToolTip(tr("停止正在运行的程序、工位或单步，与工程页面的停止相同"));
    setFocusPolicy(Qt::TabFocus);
    setMinimumSize(widthPx, heightPx);
}

QSize RunStopButton::sizeHint() const {
    return {widthPx, heightPx};
}

void RunStopButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int line = hasFocus() ? 3 : 1;
    painter.setPen(QPen(hasFocus() ? focusColour : edge, line));
    painter.setBrush(isDown() ? downGround : ground);
    const double inset = line / 2.0 + 1;
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), 6, 6);
    QFont bold = font();
    bold.setBold(true);
    bold.setPixelSize(textPx);
    const int textWidth = QFontMetrics(bold).horizontalAdvance(text());
    const int left = (width() - squarePx - gapPx - textWidth) / 2;
    painter.fillRect(QRect(left, (height() - squarePx) / 2, squarePx, squarePx), red);
    painter.setFont(bold);
    painter.setPen(ink);
    painter.drawText(QRect(left + squarePx + gapPx, 0, textWidth + 1, height()), Qt::AlignVCenter, text());
}

}  // namespace app
