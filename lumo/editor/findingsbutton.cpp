#include "editor/findingsbutton.h"

#include "look/icon.h"
#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"
#include "widgets/findingtext.h"
#include "widgets/severitymark.h"

#include <QPainter>

#include <algorithm>

namespace {

// At factor 1.
constexpr int edge = 20;  // of a mark
constexpr int gap = 4;    // between a mark and its number
constexpr int air = 12;   // around each of the two
constexpr int tall = 48;

}  // namespace

FindingsButton::FindingsButton(QWidget* parent) : QAbstractButton(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setEnabled(false);
}

void FindingsButton::showCounts(int errors, int warnings, bool done) {
    errors_ = errors;
    warnings_ = warnings;
    wasChecked_ = wasChecked_ || done;
    setAccessibleName(hasFindings() ? lumo::countText(errors, warnings) : tr("已检查"));
    setEnabled(hasFindings());
    updateGeometry();
    update();
    emit countsShown();
}

void FindingsButton::setCompact(bool compact) {
    compact_ = compact;
    update();
}

int FindingsButton::widthOf(int count) const {
    const QFontMetrics metrics(look::font(look::Size::Text, look::Weight::Strong));
    return count > 0 ? look::px(edge + gap + air) + metrics.horizontalAdvance(QString::number(count)) : 0;
}

int FindingsButton::compactWidth() const {
    return hasFindings() ? look::px(air) + widthOf(errors_) + widthOf(warnings_) : look::px(edge);
}

int FindingsButton::fullWidth() const {
    const int word = QFontMetrics(look::font(look::Size::Text)).horizontalAdvance(tr("已检查"));
    return std::max(compactWidth(), look::px(edge + gap) + word);
}

QSize FindingsButton::sizeHint() const {
    return {compact_ ? compactWidth() : fullWidth(), look::px(tall)};
}

int FindingsButton::paintCount(QPainter* painter, int x, prog::Severity severity, int count) const {
    if (count == 0) {
        return x;
    }
    const int side = look::px(edge);
    lumo::paintMark(painter, QRectF(x, (height() - side) / 2.0, side, side), severity);
    const int text = x + side + look::px(gap);
    painter->drawText(QRect(text, 0, width() - text, height()), Qt::AlignLeft | Qt::AlignVCenter,
                      QString::number(count));
    return x + widthOf(count);
}

void FindingsButton::paintTick(QPainter* painter) const {
    const int side = look::px(edge);
    const QString word = compact_ ? QString() : tr("已检查");
    painter->setFont(look::font(look::Size::Text));
    painter->setPen(QColor(look::ink2));
    const int left = width() - side -
                     (word.isEmpty() ? 0 : look::px(gap) + painter->fontMetrics().horizontalAdvance(word));
    painter->drawPixmap(left, (height() - side) / 2,
                        look::picture(QStringLiteral("check"), side, look::green));
    painter->drawText(rect(), int(Qt::AlignRight | Qt::AlignVCenter), word);
}

void FindingsButton::paintFrame(QPainter* painter) const {
    constexpr int radius = 6;
    const bool focus = hasFocus();
    const double inset = focus ? 1.0 : 0.5;
    painter->setBrush(QColor(isDown() ? look::pressed : look::white));
    painter->setPen(QPen(QColor(focus ? look::blue : look::line), focus ? 2 : 1));
    painter->drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset), radius, radius);
}

void FindingsButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!hasFindings()) {
        if (wasChecked_) {
            paintTick(&painter);
        }
        return;
    }
    paintFrame(&painter);
    painter.setFont(look::font(look::Size::Text, look::Weight::Strong));
    painter.setPen(QColor(look::ink));
    const int x = (width() - widthOf(errors_) - widthOf(warnings_) + look::px(air)) / 2;
    paintCount(&painter, paintCount(&painter, x, prog::Severity::Error, errors_), prog::Severity::Warning,
               warnings_);
}
