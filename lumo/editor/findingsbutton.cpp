#include "editor/findingsbutton.h"

#include "look/scale.h"
#include "look/tokens.h"
#include "widgets/findingtext.h"
#include "widgets/severitymark.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

using look::px;

namespace {

constexpr int edgePx = 24;  // of a mark
constexpr int gapPx = 4;    // between a mark and its number
constexpr int airPx = 8;    // around each of the two
constexpr int tall = 48;
constexpr int leastWidth = 64;

}  // namespace

FindingsButton::FindingsButton(QWidget* parent) : QAbstractButton(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    hide();
}

void FindingsButton::showCounts(int errors, int warnings) {
    errors_ = errors;
    warnings_ = warnings;
    describe();
    updateGeometry();
    update();
    setVisible(errors + warnings > 0);
}

void FindingsButton::describe() {
    const QString counts = lumo::countText(errors_, warnings_);
    setToolTip(counts);
    setAccessibleName(counts);
}

void FindingsButton::changeEvent(QEvent* event) {
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        describe();
    } else if (event->type() == QEvent::StyleChange) {
        updateGeometry();
    }
}

int FindingsButton::widthOf(int count) const {
    return count > 0
               ? px(edgePx) + px(gapPx) + fontMetrics().horizontalAdvance(QString::number(count)) + px(airPx)
               : 0;
}

QSize FindingsButton::sizeHint() const {
    return {std::max(px(leastWidth), px(airPx) + widthOf(errors_) + widthOf(warnings_)), px(tall)};
}

int FindingsButton::paintCount(QPainter* painter, int x, prog::Severity severity, int count) const {
    if (count == 0) {
        return x;
    }
    lumo::paintMark(painter, QRectF(x, (height() - px(edgePx)) / 2.0, px(edgePx), px(edgePx)), severity);
    const int text = x + px(edgePx) + px(gapPx);
    painter->drawText(QRect(text, 0, width() - text, height()), Qt::AlignLeft | Qt::AlignVCenter,
                      QString::number(count));
    return x + widthOf(count);
}

void FindingsButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isDown() || hasFocus()) {
        painter.setBrush(isDown() ? QBrush(QColor(look::pressed)) : Qt::NoBrush);
        painter.setPen(QPen(QColor(look::blue), 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 5, 5);
    }
    painter.setPen(palette().color(QPalette::WindowText));
    const int x = (width() - widthOf(errors_) - widthOf(warnings_) + px(airPx)) / 2;
    paintCount(&painter, paintCount(&painter, x, prog::Severity::Error, errors_), prog::Severity::Warning,
               warnings_);
}
