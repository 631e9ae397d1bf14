#include "widgets/switchbutton.h"

#include <QPainter>
#include <QPainterPath>
#include <QResizeEvent>

namespace {

constexpr int stepMs = 30;
constexpr int stepsPerWidth = 10;
/// The text may reach this far under the round edge of the knob.
constexpr int textOverlap = 5;
constexpr int smallestPixelSize = 8;

}  // namespace

SwitchButton::SwitchButton(QWidget* parent) : QWidget(parent), textOn_(tr("开启")), textOff_(tr("关闭")) {
    timer_.setInterval(stepMs);
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
    const int diameter = qMin(width(), height());
    QPainterPath ends, middle;
    ends.setFillRule(Qt::WindingFill);
    ends.addEllipse(0, 0, diameter, diameter);
    ends.addEllipse(width() - diameter, 0, diameter, diameter);
    middle.addRect(diameter / 2, 0, width() - diameter, height());
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPath(ends.united(middle));
}

/// The widget's font, made smaller if the knob would hide the ends of the text.
QFont SwitchButton::fittingFont(const QString& text) const {
    QFont font = this->font();
    const int free = width() - knobSize() - textOverlap - 2 * space_;
    const int needed = fontMetrics().horizontalAdvance(text);
    if (needed > free) {
        font.setPixelSize(qMax(smallestPixelSize, fontInfo().pixelSize() * qMax(0, free) / needed));
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
