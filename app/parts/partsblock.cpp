#include "app/parts/partsblock.h"

#include <QPainter>

namespace app {

namespace {

constexpr int widthPx = 96, heightPx = 48;
constexpr int captionPx = 14, figurePx = 20, leastPx = 12;
const QColor white(0xff, 0xff, 0xff), fog(0xb9, 0xc8, 0xd8), raised(0x3b, 0x50, 0x70);
const QColor focusColour(0x9c, 0xc7, 0xf2);

}  // namespace

PartsBlock::PartsBlock(QWidget* parent) : QAbstractButton(parent) {
    setObjectName(QStringLiteral("partsBlock"));
    setFocusPolicy(Qt::TabFocus);
    setFixedSize(widthPx, heightPx);
    setCount({}, {});
}

QSize PartsBlock::sizeHint() const {
    return {widthPx, heightPx};
}

void PartsBlock::setCount(const QString& project, const PartCount& count) {
    const bool hasProject = !project.isEmpty();
    setEnabled(hasProject);
    isReached_ = count.target > 0 && count.made >= count.target;
    setText(hasProject ? count.figure() : QStringLiteral("–"));
    setAccessibleName(tr("零件") + QLatin1Char(' ') + text());
    setToolTip(hasProject ? tr("%1：已完成 %2").arg(project, text()) : QString());
    update();
}

void PartsBlock::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (isDown() || isReached_) {
        painter.fillRect(rect(), raised);
    }
    if (hasFocus()) {
        painter.setPen(QPen(focusColour, 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
    QFont plain = font();
    plain.setPixelSize(captionPx);
    painter.setFont(plain);
    painter.setPen(fog);
    painter.drawText(QRect(0, 2, width(), 18), Qt::AlignCenter, tr("零件"));
    QFont bold = font();
    bold.setBold(true);
    int px = figurePx;
    bold.setPixelSize(px);
    while (px > leastPx && QFontMetrics(bold).horizontalAdvance(text()) > width() - 4) {
        bold.setPixelSize(--px);
    }
    painter.setFont(bold);
    painter.setPen(isEnabled() ? white : fog);
    painter.drawText(QRect(0, 20, width(), 26), Qt::AlignCenter, text());
}

}  // namespace app
