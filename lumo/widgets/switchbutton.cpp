#include "widgets/switchbutton.h"

#include "look/scale.h"
#include "look/tokens.h"
#include "look/type.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QResizeEvent>

namespace {

constexpr int stepMs = 30;
constexpr int stepsPerWidth = 10;
/// The text may reach this far under the round edge of the knob.
constexpr int textOverlap = 5;
constexpr int smallestPixelSize = 8;
constexpr int ringPx = 2;

/// A darker edge sets strong colours off from the page.
QColor ringOf(const QColor& track) {
    constexpr int leastSaturation = 40, mostRedHue = 20;
    if (track.hsvSaturation() < leastSaturation) {
        return QColor(look::steel);
    }
    return track.hsvHue() <= mostRedHue ? QColor(look::redDn) : QColor(look::blueDn);
}

}  // namespace

SwitchButton::SwitchButton(QWidget* parent) : QWidget(parent), textOn_(tr("开启")), textOff_(tr("关闭")) {
    timer_.setInterval(stepMs);
    setFocusPolicy(Qt::TabFocus);
    connect(&timer_, &QTimer::timeout, this, &SwitchButton::UpdateValue);
}

void SwitchButton::setSpace(int space) {
    assign(space_, space);
}

void SwitchButton::setRadius(int radius) {
    assign(radius_, radius);
}

void SwitchButton::setChecked(bool checked) {
    assign(checked_, checked);
}

void SwitchButton::setShowText(bool show) {
    assign(showText_, show);
}

void SwitchButton::setShowCircle(bool show) {
    assign(showCircle_, show);
}

void SwitchButton::setAnimation(bool animation) {
    assign(animation_, animation);
}

void SwitchButton::setBgColorOn(const QColor& color) {
    assign(bgColorOn_, color);
}

void SwitchButton::setBgColorOff(const QColor& color) {
    assign(bgColorOff_, color);
}

void SwitchButton::setSliderColorOn(const QColor& color) {
    assign(sliderColorOn_, color);
}

void SwitchButton::setSliderColorOff(const QColor& color) {
    assign(sliderColorOff_, color);
}

void SwitchButton::setTextColor(const QColor& color) {
    assign(textColor_, color);
}

void SwitchButton::setTextOn(const QString& text) {
    assign(textOn_, text);
}

void SwitchButton::setTextOff(const QString& text) {
    assign(textOff_, text);
}

int SwitchButton::knobSize() const {
    return qMin(width(), height()) - 2 * space_;
}

int SwitchButton::restingX() const {
    return checked_ ? width() - height() : 0;
}

void SwitchButton::rest() {
    timer_.stop();
    startX_ = restingX();
    update();
}

void SwitchButton::UpdateValue() {
    if (checked_ && startX_ < endX_) {
        startX_ += step_;
    } else if (!checked_ && startX_ > endX_) {
        startX_ -= step_;
    } else {
        startX_ = endX_;
        timer_.stop();
    }
    update();
}

void SwitchButton::mousePressEvent(QMouseEvent*) {
    toggle();
}

void SwitchButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        toggle();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void SwitchButton::toggle() {
    checked_ = !checked_;
    emit statusChanged(checked_);
    // At least 1, or a narrow switch would not move.
    step_ = qMax(1, width() / stepsPerWidth);
    endX_ = restingX();
    if (animation_) {
        timer_.start();
    } else {
        startX_ = endX_;
    }
    update();
}

void SwitchButton::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!timer_.isActive()) {
        startX_ = restingX();
    }
}

void SwitchButton::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int oldEnd = event->oldSize().width() - event->oldSize().height();
    if (isVisible() && !timer_.isActive() && startX_ == oldEnd) {
        startX_ = restingX();
    }
}

void SwitchButton::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    drawTrack(painter);
    drawText(painter);
    drawKnob(painter);
}

void SwitchButton::drawTrack(QPainter& painter) const {
    QColor color = checked_ ? bgColorOn_ : bgColorOff_;
    if (isEnabled()) {
        color.setAlpha(255);
    }
    const qreal half = ringPx / 2.0;
    const QRectF track = QRectF(rect()).adjusted(half, half, -half, -half);
    painter.setPen(QPen(hasFocus() ? QColor(look::ink) : ringOf(color), ringPx));
    painter.setBrush(color);
    painter.drawRoundedRect(track, track.height() / 2, track.height() / 2);
    if (hasFocus()) {
        painter.setPen(QPen(QColor(look::white), 1));
        painter.setBrush(Qt::NoBrush);
        const QRectF inner = track.adjusted(ringPx, ringPx, -ringPx, -ringPx);
        painter.drawRoundedRect(inner, inner.height() / 2, inner.height() / 2);
    }
}

/// Strong type, made smaller if the knob would hide the ends of the text.
QFont SwitchButton::fittingFont(const QString& text) const {
    const bool large = height() >= look::px(44);
    QFont font = look::font(large ? look::Size::Text : look::Size::Caption, look::Weight::Strong);
    const int free = width() - knobSize() - textOverlap - 2 * space_;
    const int needed = QFontMetrics(font).horizontalAdvance(text);
    if (needed > free) {
        font.setPixelSize(qMax(smallestPixelSize, font.pixelSize() * qMax(0, free) / needed));
    }
    return font;
}

void SwitchButton::drawText(QPainter& painter) const {
    const int knob = knobSize();
    painter.setFont(fittingFont(checked_ ? textOn_ : textOff_));
    painter.setPen(textColor_);
    if (checked_) {
        painter.drawText(QRect(0, 0, width() - knob + textOverlap, height()), Qt::AlignCenter, textOn_);
    } else {
        const int left = knob - textOverlap;
        painter.drawText(QRect(left, 0, width() - left, height()), Qt::AlignCenter, textOff_);
    }
}

void SwitchButton::drawKnob(QPainter& painter) const {
    const int knob = knobSize();
    painter.setPen(Qt::NoPen);
    painter.setBrush(checked_ ? sliderColorOn_ : sliderColorOff_);
    painter.drawEllipse(space_ + startX_, space_, knob, knob);
}
