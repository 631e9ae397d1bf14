#include "editor/findingsbutton.h"

#include "widgets/findingtext.h"
#include "widgets/severitymark.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int edge = 22;  // of a mark
constexpr int gap = 4;    // between a mark and its number
constexpr int air = 8;    // around each of the two
constexpr int tall = 40;
constexpr int leastWidth = 56;
constexpr QRgb pressedColour = qRgb(203, 222, 242);
constexpr QRgb focusColour = qRgb(47, 111, 176);

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
    }
}

int FindingsButton::widthOf(int count) const {
    return count > 0 ? edge + gap + fontMetrics().horizontalAdvance(QString::number(count)) + air : 0;
}

QSize FindingsButton::sizeHint() const {
    return {std::max(leastWidth, air + widthOf(errors_) + widthOf(warnings_)), tall};
}

int FindingsButton::paintCount(QPainter* painter, int x, prog::Severity severity, int count) const {
    if (count == 0) {
        return x;
    }
    lumo::paintMark(painter, QRectF(x, (height() - edge) / 2.0, edge, edge), severity);
    const int text = x + edge + gap;
    painter->drawText(QRect(text, 0, width() - text, height()), Qt::AlignLeft | Qt::AlignVCenter,
                      QString::number(count));
    return x + widthOf(count);
}

void FindingsButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isDown() || hasFocus()) {
        painter.setBrush(isDown() ? QBrush(QColor(pressedColour)) : Qt::NoBrush);
        painter.setPen(QColor(focusColour));
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 6, 6);
    }
    painter.setPen(palette().color(QPalette::WindowText));
    const int x = (width() - widthOf(errors_) - widthOf(warnings_) + air) / 2;
    paintCount(&painter, paintCount(&painter, x, prog::Severity::Error, errors_), prog::Severity::Warning,
               warnings_);
}
