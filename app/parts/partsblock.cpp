#include "app/parts/partsblock.h"

#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QPainter>

#include <algorithm>

namespace app {

namespace {

constexpr int captionLinePx = 17, figureLinePx = 24;

}  // namespace

PartsBlock::PartsBlock(QWidget* parent) : QAbstractButton(parent) {
    setObjectName(QStringLiteral("partsBlock"));
    setFocusPolicy(Qt::TabFocus);
    setCount({}, {});
}

QSize PartsBlock::sizeHint() const {
    const int made = look::textWidth(look::font(look::Size::Title, look::Weight::State), made_);
    const int target = look::textWidth(look::font(look::Size::Text), target_);
    const int caption = look::textWidth(look::font(look::Size::Caption), tr("零件"));
    return {std::max(made + target, caption) + look::px(16), look::px(48)};
}

void PartsBlock::setCount(const QString& project, const PartCount& count) {
    const bool hasProject = !project.isEmpty();
    setEnabled(hasProject);
    isReached_ = count.target > 0 && count.made >= count.target;
    setText(hasProject ? count.figure() : QStringLiteral("–"));
    made_ = text().section(QLatin1Char('/'), 0, 0).trimmed();
    const QString target = text().section(QLatin1Char('/'), 1).trimmed();
    target_ = target.isEmpty() ? QString() : QStringLiteral(" / ") + target;
    setAccessibleName(tr("零件") + QLatin1Char(' ') + text());
    updateGeometry();
    update();
}

void PartsBlock::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isDown() || isReached_ || hasFocus()) {
        const int line = hasFocus() ? look::px(2) : 0;
        painter.setPen(line > 0 ? QPen(QColor(look::sky), line) : QPen(Qt::NoPen));
        painter.setBrush(isDown() || isReached_ ? QBrush(QColor(look::navy2)) : QBrush(Qt::NoBrush));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), look::px(6), look::px(6));
    }
    const int left = look::px(8), captionLine = look::px(captionLinePx), figureLine = look::px(figureLinePx);
    const int top = (height() - captionLine - figureLine) / 2 - 1;
    painter.setFont(look::font(look::Size::Caption));
    painter.setPen(QColor(look::fog));
    painter.drawText(QRect(left, top, width() - left, captionLine), Qt::AlignVCenter, tr("零件"));
    const QRect figures(left, top + captionLine, width() - left, figureLine);
    painter.setFont(look::font(look::Size::Title, look::Weight::State));
    const int madeWidth = painter.fontMetrics().horizontalAdvance(made_);
    painter.setPen(QColor(isEnabled() ? look::white : look::fog));
    painter.drawText(figures, Qt::AlignVCenter, made_);
    painter.setFont(look::font(look::Size::Text));
    painter.setPen(QColor(look::fog));
    painter.drawText(figures.adjusted(madeWidth, look::px(1), 0, look::px(1)), Qt::AlignVCenter, target_);
}

}  // namespace app
